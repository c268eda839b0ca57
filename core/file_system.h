#pragma once
// The few file-system steps that reading and rewriting settings files are made of, behind an interface so that
// tests can stop the program at each of them.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tavo {

/// An open file. The destructor closes without a check; close() reports what the system says.
class OutputFile {
public:
    virtual ~OutputFile() = default;
    virtual void write_at(std::uint64_t offset, std::string_view bytes) = 0;
    virtual void sync() = 0;  // to the disk, not just to the system
    virtual void close() = 0;
};

/// Every operation throws std::filesystem::filesystem_error where the system refuses. Removing a file that is not there
/// is no error.
class FileSystem {
public:
    virtual ~FileSystem() = default;
    virtual bool exists(const std::filesystem::path& path) = 0;
    virtual std::string read(const std::filesystem::path& path) = 0;
    virtual std::unique_ptr<OutputFile> create_exclusive(const std::filesystem::path& path) = 0;
    virtual std::unique_ptr<OutputFile> truncate(const std::filesystem::path& path) = 0;
    virtual void check_writable(const std::filesystem::path& path) = 0;
    virtual std::uintmax_t available(const std::filesystem::path& path) = 0;  // bytes free on its disk
    virtual void remove(const std::filesystem::path& path) = 0;
};

/// The real one. Stateless.
FileSystem& real_file_system();

/// What tells one state of a file from another.
struct FileStamp {
    std::int64_t time = 0;  // of the last change, ns
    std::uintmax_t size = 0;
    std::uintmax_t identity = 0;  // 0 where the system gives none
    bool settled = false;         // old enough that a change from now on cannot bear the same time

    bool operator==(const FileStamp& other) const {
        return time == other.time && size == other.size && identity == other.identity;
    }
};
/// Empty when the file is missing.
std::optional<FileStamp> file_stamp(const std::filesystem::path& path);

}  // namespace tavo
