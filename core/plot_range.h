#pragma once
// The rectangle of the P-V plane that a plot shows.

namespace tavo {

/// Plot range in litres and atm; all zero means not set yet.
struct PlotRange {
    double vmin = 0.0, pmin = 0.0, vmax = 0.0, pmax = 0.0;

    friend bool operator==(const PlotRange&, const PlotRange&) = default;
};

}  // namespace tavo
