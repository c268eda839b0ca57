// Runs a fuzz target over damaged copies of a file, or of those of a folder: mutations PLACE [COUNT [FIRST]]
// Every mutation follows from its number alone: "mutations PLACE 1 4711" runs number 4711 again.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;
using Clock = std::chrono::steady_clock;

class Mutator {
public:
    Mutator(Bytes bytes, std::uint64_t number) : bytes_(std::move(bytes)), random_(number) {}

    Bytes mutated() {
        for (std::size_t count = 1 + below(below(4) == 0 ? 16 : 3); count > 0; --count)
            mutate();
        return bytes_;
    }

private:
    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : static_cast<std::size_t>(random_() % limit); }

    // Half of them in the beginning, where the sizes stand.
    std::size_t place() { return below(below(2) == 0 ? std::min<std::size_t>(bytes_.size(), 512) : bytes_.size()); }

    void mutate() {
        if (bytes_.empty())
            return;
        switch (below(8)) {
            case 0:
                return flip_bit();
            case 1:
                return fill_run();
            case 2:
                return below(4) == 0 ? cut_end() : flip_bit();
            case 3:
                return copy_block();
            case 4:
                return swap_blocks();
            case 5:
                return remove_block();
            case 6:
                return insert_block();
            default:
                return set_number();
        }
    }

    void flip_bit() { bytes_[place()] ^= static_cast<std::uint8_t>(1U << below(8)); }

    void fill_run() {
        const bool same = below(2) == 0;
        const auto value = static_cast<std::uint8_t>(random_());
        const std::size_t begin = place();
        for (std::size_t i = begin; i < std::min(bytes_.size(), begin + 1 + below(64)); ++i)
            bytes_[i] = same ? value : static_cast<std::uint8_t>(random_());
    }

    void cut_end() { bytes_.resize(place()); }

    void copy_block() {
        const std::size_t length = block(), from = below(bytes_.size() - length), to = below(bytes_.size() - length);
        const Bytes copy(at(from), at(from + length));
        std::copy(copy.begin(), copy.end(), at(to));
    }

    void swap_blocks() {
        const std::size_t length = block() / 2, first = below(bytes_.size() - 2 * length);
        const std::size_t second = first + length + below(bytes_.size() - first - 2 * length);
        std::swap_ranges(at(first), at(first + length), at(second));
    }

    void remove_block() {
        const std::size_t length = block(), begin = below(bytes_.size() - length);
        bytes_.erase(at(begin), at(begin + length));
    }

    void insert_block() {
        const std::size_t length = block(), from = below(bytes_.size() - length);
        const Bytes copy(at(from), at(from + length));
        bytes_.insert(at(place()), copy.begin(), copy.end());
    }

    // 16, 32 or 64 bits at the edges of what a size can be, or a little beside what stands there.
    void set_number() {
        static constexpr std::uint64_t EDGES[]{0,          1,          2,           0x7FFF,     0x8000,
                                               0xFFFF,     0x10000,    0x1000000,   0x7FFFFFFF, 0x80000000,
                                               0xFFFFFFFF, 0xFFFFFFFE, 0x100000000, ~0ULL >> 1, ~0ULL};
        const std::size_t size = std::size_t{2} << below(3);
        const std::size_t begin = below(2) == 0 ? place() & ~std::size_t{3} : place();
        const std::uint64_t value = EDGES[below(std::size(EDGES))] + below(2) * (below(64) - 32);
        for (std::size_t i = 0; i < size && begin + i < bytes_.size(); ++i)
            bytes_[begin + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }

    std::size_t block() { return below(std::min<std::size_t>(bytes_.size(), below(2) == 0 ? 16 : 4096)); }
    Bytes::iterator at(std::size_t i) { return bytes_.begin() + static_cast<std::ptrdiff_t>(i); }

    Bytes bytes_;
    std::mt19937_64 random_;
};

std::vector<Bytes> files_of(const std::filesystem::path& place) {
    std::vector<std::filesystem::path> paths;
    if (std::filesystem::is_directory(place)) {
        for (const auto& entry : std::filesystem::directory_iterator(place))
            paths.push_back(entry.path());
    } else {
        paths.push_back(place);
    }
    std::sort(paths.begin(), paths.end());
    std::vector<Bytes> files;
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        files.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return files;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<Bytes> files = files_of(argc > 1 ? argv[1] : ".");
    const std::uint64_t count = argc > 2 ? std::stoull(argv[2]) : 500;
    const std::uint64_t first = argc > 3 ? std::stoull(argv[3]) : 0;
    if (files.empty() || count == 0)
        return 1;
    const auto start = Clock::now();
    Clock::duration slowest{};
    std::uint64_t slowest_number = 0;
    for (std::uint64_t number = first; number < first + count; ++number) {
        if ((number - first) % 100 == 0)
            std::cout << "\rfrom " << number << std::flush;  // a failure lies behind the last one shown
        const Bytes bytes = Mutator(files[number % files.size()], number).mutated();
        const auto begin = Clock::now();
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        if (const auto time = Clock::now() - begin; time > slowest) {
            slowest = time;
            slowest_number = number;
        }
    }
    const auto seconds = [](Clock::duration d) { return std::chrono::duration<double>(d).count(); };
    std::cout << '\n'
              << count << " mutations in " << seconds(Clock::now() - start) << " s, slowest number " << slowest_number
              << " with " << seconds(slowest) << " s\n";
    return 0;
}
