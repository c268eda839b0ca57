#pragma once
// A disk in memory on which a rewrite is stopped, or refused, at any of its steps.

#include <filesystem>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "core/file_system.h"

namespace tavo::crash {

namespace fs = std::filesystem;

inline constexpr int NEVER = std::numeric_limits<int>::max();
inline constexpr std::size_t CHUNK = 5;  // bytes that one step writes

/// The process was killed or the power went; no handler of the program runs any more.
struct Stopped {};

/// What had reached the disk when the power went, of all that was not synced.
enum class Kept { Everything, Nothing, NothingAndFilesBack, Truncation, EvenWrites, OddWrites };
inline constexpr Kept ALL_KEPT[]{Kept::Everything, Kept::Nothing,    Kept::NothingAndFilesBack,
                                 Kept::Truncation, Kept::EvenWrites, Kept::OddWrites};

/// A disk in memory that can stop the program or refuse at any step. Every call is a step; a write has one per CHUNK.
class TestDisk final : public FileSystem {
public:
    int stop_at = NEVER;              // step that does not happen, nor any after it
    int refuse_from = NEVER;          // first step that ends with an error
    int refuse_until = NEVER;         // first one after it that does not
    bool refuse_only_writes = false;  // as a full disk does
    std::size_t capacity = std::numeric_limits<std::size_t>::max();
    std::uintmax_t reported = std::numeric_limits<std::uintmax_t>::max();  // free space as the system tells it

    int steps() const { return step_; }
    std::string content(const fs::path& path) const { return files_.at(path).content; }
    bool has(const fs::path& path) const { return files_.count(path) > 0; }
    void put(const fs::path& path, const std::string& bytes) { files_[path] = {bytes, bytes}; }

    /// The disk as the next start finds it.
    void restart(Kept kept) {
        if (kept == Kept::NothingAndFilesBack) {
            for (const auto& [path, bytes] : removed_)
                put(path, bytes);
        }
        if (kept != Kept::Everything) {
            for (auto& [path, file] : files_)
                lose(file, kept);
        }
        removed_.clear();
        stop_at = refuse_from = refuse_until = NEVER;
        step_ = 0;
    }

    bool exists(const fs::path& path) override {
        step(path, false);
        return has(path);
    }
    std::string read(const fs::path& path) override {
        step(path, false);
        return at(path).content;
    }
    std::unique_ptr<OutputFile> create_exclusive(const fs::path& path) override {
        step(path, false);
        if (has(path))
            refuse(path, std::errc::file_exists);
        put(path, "");
        return std::make_unique<Open>(*this, path);
    }
    std::unique_ptr<OutputFile> truncate(const fs::path& path) override {
        step(path, false);
        File& file = at(path);
        file = {"", file.durable, true};
        return std::make_unique<Open>(*this, path);
    }
    void check_writable(const fs::path& path) override { step(path, false); }
    std::uintmax_t available(const fs::path& path) override {
        step(path, false);
        return reported;
    }
    void remove(const fs::path& path) override {
        step(path, false);
        removed_[path] = at(path).durable;
        files_.erase(path);
    }

private:
    struct Write {
        std::size_t offset;
        std::string bytes;
    };
    struct File {
        std::string content;
        std::string durable;
        bool truncated = false;       // since it was last synced
        std::vector<Write> writes{};  // since then
    };

    class Open final : public OutputFile {
    public:
        Open(TestDisk& disk, fs::path path) : disk_(disk), path_(std::move(path)) {}
        void write_at(std::uint64_t offset, std::string_view bytes) override {
            for (std::size_t i = 0; i < bytes.size(); i += CHUNK)
                disk_.write(path_, static_cast<std::size_t>(offset) + i, bytes.substr(i, CHUNK));
        }
        void sync() override {
            disk_.step(path_, false);
            File& file = disk_.at(path_);
            file = {file.content, file.content};
        }
        void close() override { disk_.step(path_, false); }

    private:
        TestDisk& disk_;
        fs::path path_;
    };

    void step(const fs::path& path, bool writes) {
        if (step_ >= stop_at)
            throw Stopped{};
        const int now = step_++;
        if (now >= refuse_from && now < refuse_until && (writes || !refuse_only_writes))
            refuse(path, std::errc::no_space_on_device);
    }
    void write(const fs::path& path, std::size_t offset, std::string_view bytes) {
        step(path, true);
        std::string& content = at(path).content;
        std::size_t used = 0;
        for (const auto& [name, file] : files_)
            used += file.content.size();
        if (used + std::max(offset + bytes.size(), content.size()) - content.size() > capacity)
            refuse(path, std::errc::no_space_on_device);
        content.resize(std::max(content.size(), offset + bytes.size()));
        content.replace(offset, bytes.size(), bytes);
        at(path).writes.push_back({offset, std::string(bytes)});
    }
    File& at(const fs::path& path) {
        if (!has(path))
            refuse(path, std::errc::no_such_file_or_directory);
        return files_.at(path);
    }
    [[noreturn]] static void refuse(const fs::path& path, std::errc why) {
        throw fs::filesystem_error("test", path, std::make_error_code(why));
    }
    static void lose(File& file, Kept kept) {
        std::string content = kept == Kept::Truncation && file.truncated ? "" : file.durable;
        if (kept == Kept::EvenWrites || kept == Kept::OddWrites) {
            content = (file.truncated ? std::string() : file.durable).substr(0, file.content.size());
            content.resize(file.content.size(), '\0');
            for (std::size_t i = kept == Kept::OddWrites; i < file.writes.size(); i += 2)
                content.replace(file.writes[i].offset, file.writes[i].bytes.size(), file.writes[i].bytes);
        }
        file = {content, content};
    }

    std::map<fs::path, File> files_;
    std::map<fs::path, std::string> removed_;
    int step_ = 0;
};

}  // namespace tavo::crash
