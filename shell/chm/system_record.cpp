#include "shell/chm/system_record.h"

#include <cstdint>

#include "shell/chm/names.h"

namespace tavo::chm {

namespace {

constexpr std::size_t VERSION_BYTES = 4;
constexpr std::size_t HEAD_BYTES = 4;  // of a record: code and length, 16 bits each, little-endian

std::size_t number_at(std::string_view bytes, std::size_t offset) {
    return static_cast<std::uint8_t>(bytes[offset]) + std::size_t{256} * static_cast<std::uint8_t>(bytes[offset + 1]);
}

std::string* field_of(SystemRecord& record, std::size_t code) {
    switch (code) {
        case 0:
            return &record.contents_file;
        case 1:
            return &record.index_file;
        case 2:
            return &record.default_page;
        case 3:
            return &record.title;
        default:
            return nullptr;
    }
}

}  // namespace

SystemRecord read_system_record(std::string_view bytes) {
    SystemRecord record;
    bytes.remove_prefix(std::min(VERSION_BYTES, bytes.size()));
    while (bytes.size() >= HEAD_BYTES) {
        const std::size_t code = number_at(bytes, 0), length = number_at(bytes, 2);
        if (length > bytes.size() - HEAD_BYTES)
            break;
        const std::string_view text = bytes.substr(HEAD_BYTES, length);
        if (std::string* field = field_of(record, code))
            *field = text_of(text.substr(0, text.find('\0')));
        bytes.remove_prefix(HEAD_BYTES + length);
    }
    return record;
}

}  // namespace tavo::chm
