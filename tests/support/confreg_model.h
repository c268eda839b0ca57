#pragma once
// The settings-file operations once more, written down as slowly and literally as they can be: one pass over the lines,
// a temporary text, a copy back. What the program's own implementation is compared with.

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/encoding.h"
#include "core/errors.h"

namespace tavo::model {

/// Windows-1252 only. Lines without their ends.
inline std::vector<std::string> lines_of(std::string_view bytes) {
    std::vector<std::string> lines;
    std::string line;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        const std::size_t past_run = bytes.find_first_not_of('\r', i);
        if (c == '\r' && past_run != std::string_view::npos && bytes[past_run] == '\n')
            i = past_run;
        if (c == '\r' || c == '\n')
            lines.push_back(std::exchange(line, {}));
        else
            line += c;
    }
    if (!line.empty())
        lines.push_back(line);
    return lines;
}

inline std::string copied(const std::vector<std::string>& lines) {
    std::string bytes;
    for (const std::string& line : lines)
        bytes += line + "\r\n";
    return bytes;
}

inline bool same(std::string_view a, std::string_view b) {
    return a.size() == b.size() && lower(utf8_from_windows1252(a)) == lower(utf8_from_windows1252(b));
}

inline bool is_header_of(const std::string& line, std::string_view section) {
    if (!line.starts_with('['))
        return false;
    if (line.size() < 2)
        throw Overflow("short header");
    return same(line.substr(1, line.size() - 2), section);
}

inline bool holds_key(const std::string& line, std::string_view key) {
    if (line.find('=') == std::string::npos)
        throw InvalidArgument("no =");
    return same(line.substr(0, line.find('=')), key);
}

inline int lineaseccion(const std::string& bytes, std::string_view section) {
    int number = 0;
    for (const std::string& line : lines_of(bytes)) {
        ++number;
        if (is_header_of(line, section))
            return number;
    }
    return 0;
}

inline std::string leerclave(const std::string& bytes, std::string_view section, std::string_view key) {
    bool inside = false;
    for (const std::string& line : lines_of(bytes)) {
        if (!inside) {
            inside = is_header_of(line, section);
        } else if (line.starts_with('[')) {
            return {};
        } else if (!line.empty() && holds_key(line, key)) {
            const std::string rest = line.substr(line.find('=') + 1);
            const std::size_t first = rest.find_first_not_of(' ');
            return first == std::string::npos ? "" : rest.substr(first, rest.find_last_not_of(' ') + 1 - first);
        }
    }
    return {};
}

inline void refuse_line_breaks(const std::string& text) {
    if (text.find('\r') != std::string::npos || text.find('\n') != std::string::npos)
        throw InvalidArgument("line break");
}

inline void asegurarseccion(std::string& bytes, const std::string& section) {
    refuse_line_breaks(section);
    if (lineaseccion(bytes, section) == 0)
        bytes += "\r\r\n[" + section + "]\r\n";
}

inline void escribirclave(std::string& bytes, const std::string& section, const std::string& key,
                          const std::string& value) {
    refuse_line_breaks(section + key + value);
    std::string settings = bytes;
    asegurarseccion(settings, section);
    const std::string new_line = key + "=" + value;
    const std::vector<std::string> lines = lines_of(settings);
    std::string temporary;
    bool found = false;
    std::size_t i = 0;
    const auto search = [&] {  // from the line after the section's header
        for (; i < lines.size(); ++i) {
            const std::string& line = lines[i];
            if (line.empty())
                continue;
            if (line.starts_with('[')) {
                temporary += new_line + "\r\n" + "\r\r\n" + line + "\r\n";
                ++i;
                return;
            }
            if (holds_key(line, key)) {
                temporary += new_line + "\r\n";
                found = true;
                ++i;
                return;
            }
            temporary += line + "\r\n";
        }
    };
    while (i < lines.size()) {
        const bool inside = is_header_of(lines[i], section);
        temporary += lines[i++] + "\r\n";
        if (!inside)
            continue;
        search();
        if (i == lines.size() && !found) {
            const bool open = !settings.empty() && settings.back() != '\n' && settings.back() != '\r';
            bytes = settings + (open ? "\r\n" : "") + new_line + "\r\n";
            return;
        }
    }
    bytes = copied(lines_of(temporary));
}

inline bool borrarseccion(std::string& bytes, std::string_view section) {
    const int header = lineaseccion(bytes, section);
    if (header == 0)
        return false;
    std::vector<std::string> lines = lines_of(bytes);
    const auto first = lines.begin() + header - 1;
    lines.erase(first, std::find_if(first + 1, lines.end(), [](const auto& line) { return line.starts_with('['); }));
    bytes = copied(lines);
    return true;
}

inline int reemplazarlinea(std::string& bytes, std::string_view old_line, const std::string& new_line) {
    refuse_line_breaks(new_line);
    std::vector<std::string> lines = lines_of(bytes);
    int last = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!same(lines[i], old_line))
            continue;
        lines[i] = new_line;
        last = static_cast<int>(i) + 1;
    }
    bytes = copied(lines);
    return last;
}

}  // namespace tavo::model
