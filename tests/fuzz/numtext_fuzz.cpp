// Numbers as anybody may type them, and any double as a number text.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "core/numtext.h"

namespace {

void demand(bool condition) {
    if (!condition)
        std::abort();
}

void demand_that_texts_read_back(double x) {
    demand(tavo::Val(tavo::to_text17(x)) == x);
    const double shown = tavo::Val(tavo::to_text(x));
    demand(std::fabs(shown - x) <= 1e-14 * std::fabs(x));
    for (const std::string_view pattern : {"####0.0000", "##0.00", "###", "0", "0.0##", "#.##"}) {
        const std::string text = tavo::Format(x, pattern);
        demand(text.find_first_not_of("-0123456789.") == std::string::npos);
        demand(!text.starts_with('-') || text.find_first_of("123456789") != std::string::npos);
        demand(std::fabs(tavo::Val(text) - x) <= 0.5 + 1e-14 * std::fabs(x));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const double read = tavo::Val(std::string_view(reinterpret_cast<const char*>(data), size));
    demand(std::isfinite(read));
    demand_that_texts_read_back(read);

    double x = 0.0;
    std::memcpy(&x, data, std::min(size, sizeof x));
    if (std::isfinite(x))
        demand_that_texts_read_back(x);
    else
        demand(tavo::Format(x, "0.00").empty());
    return 0;
}
