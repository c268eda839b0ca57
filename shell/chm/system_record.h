#pragma once
// The entry "/#SYSTEM" of a compiled help file.

#include <string>
#include <string_view>

namespace tavo::chm {

/// Empty where the file does not say.
struct SystemRecord {
    std::string contents_file, index_file, default_page, title;
};

/// Reads as many records as the bytes hold whole.
SystemRecord read_system_record(std::string_view bytes);

}  // namespace tavo::chm
