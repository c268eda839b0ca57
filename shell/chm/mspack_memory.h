#pragma once
// Memory in place of files for libmspack. Nothing here throws: the callers are C.

#include <mspack.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace tavo::chm {

/// Any name opened for reading is the source, any name opened for writing appends to the target.
struct MemorySystem : mspack_system {
    /// Bytes that the library gets at a time, of all its work in one thread together.
    static constexpr std::size_t ALLOWANCE = std::size_t{32} << 20U;

    explicit MemorySystem(std::string_view source);
    MemorySystem(const MemorySystem&) = delete;
    MemorySystem& operator=(const MemorySystem&) = delete;

    std::string_view source;
    std::string target;
    std::size_t target_size = 0;  // writing beyond is refused
};

}  // namespace tavo::chm
