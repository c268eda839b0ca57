#pragma once
// The equations of state in reduced form, each as a loop for coexistence.h: v is the molar volume in units of the
// co-volume b (b/4 for Dieterici-Sadus), p the pressure in units of RT over that volume, alpha the reduced attraction,
// which grows as the gas cools. A loop exists where alpha exceeds the critical value of the family.

#include <optional>
#include <span>

#include "core/coexistence.h"

namespace tavo::calcnum {

/// Critical point of a one-parameter family, and polynomials in s = 1 - alpha_c/alpha that estimate coexistence for
/// s <= 0.74: half = sqrt(s)/(1 - s) half_fit(s), middle = middle_fit(s)/(1 - s), within 1e-4. They
/// were fitted to 30-digit solutions; Newton's method makes the result independent of them.
struct Family {
    double critical_attraction;
    double critical_volume;
    std::span<const double> half_fit;
    std::span<const double> middle_fit;
};

/// p = 1/(v - 1) - alpha / ((v + d1)(v + d2)): van der Waals and Berthelot (0, 0), Redlich-Kwong and Soave (0, 1),
/// Peng-Robinson (1 - sqrt 2, 1 + sqrt 2).
struct CubicFamily {
    double d1, d2;
    Family family;
};
extern const CubicFamily VAN_DER_WAALS_FAMILY;
extern const CubicFamily REDLICH_KWONG_FAMILY;
extern const CubicFamily PENG_ROBINSON_FAMILY;

class CubicLoop {
public:
    static constexpr bool LOGARITHMIC = false;

    CubicLoop(const CubicFamily& family, double alpha) : k_(family), alpha_(alpha) {}
    bool rises() const;
    double interior() const;
    double liquid_end() const { return -coexistence::LIMIT; }
    double gas_end() const { return coexistence::LIMIT; }
    double level(double t) const;
    double slope(double t) const;
    double pressure(double t) const { return level(t); }
    coexistence::Imbalance imbalance(const coexistence::Pair& pair) const;
    std::optional<coexistence::Pair> estimate() const;

private:
    const CubicFamily& k_;
    double alpha_;
};

/// p = 1/(v - 1) - alpha / v^mu. It has a loop for mu > 1 only.
class PowerLoop {
public:
    static constexpr bool LOGARITHMIC = false;

    /// Of the family with exponent mu > 1.
    static double critical_attraction(double mu);
    static double critical_volume(double mu) { return (mu + 1.0) / (mu - 1.0); }

    PowerLoop(double mu, double alpha);
    bool rises() const;
    double interior() const;
    double liquid_end() const { return -coexistence::LIMIT; }
    double gas_end() const { return coexistence::LIMIT; }
    double level(double t) const;
    double slope(double t) const;
    double pressure(double t) const { return level(t); }
    coexistence::Imbalance imbalance(const coexistence::Pair& pair) const;
    std::optional<coexistence::Pair> estimate() const;

private:
    double mu_, alpha_, critical_;
};

extern const Family DIETERICI_FAMILY;
extern const Family DIETERICI_SADUS_FAMILY;

/// Dieterici: p = exp(-alpha/v) / (v - 1). The level is ln p.
class DietericiLoop {
public:
    static constexpr bool LOGARITHMIC = true;

    explicit DietericiLoop(double alpha) : alpha_(alpha) {}
    bool rises() const;
    double interior() const;
    double liquid_end() const { return -1e300; }
    double gas_end() const { return coexistence::LIMIT; }
    double level(double t) const;
    double slope(double t) const;
    double pressure(double t) const;
    coexistence::Imbalance imbalance(const coexistence::Pair& pair) const;
    std::optional<coexistence::Pair> estimate() const;

private:
    double alpha_;
};

/// Dieterici-Sadus: p = (1 + y + y^2 - y^3) / (v (1 - y)^3) exp(-alpha y), y = 1/v. The level is ln p.
class DietericiSadusLoop {
public:
    static constexpr bool LOGARITHMIC = true;

    explicit DietericiSadusLoop(double alpha) : alpha_(alpha) {}
    bool rises() const;
    double interior() const;
    double liquid_end() const { return -1e300; }
    double gas_end() const { return coexistence::LIMIT; }
    double level(double t) const;
    double slope(double t) const;
    double pressure(double t) const;
    coexistence::Imbalance imbalance(const coexistence::Pair& pair) const;
    std::optional<coexistence::Pair> estimate() const;

private:
    double alpha_;
};

/// p = A r + B r^2 + C r^3 + D r^4 with the density r = 1/v, in units where the density of the middle of the loop is 1.
class VirialLoop {
public:
    static constexpr bool LOGARITHMIC = false;

    /// From coefficients in l/mol; scale() is the molar volume of v = 1 [l/mol].
    VirialLoop(double a, double b, double c, double d);
    double scale() const { return scale_; }
    bool rises() const { return rises_; }
    double interior() const { return 0.0; }
    double liquid_end() const { return liquid_end_; }
    double gas_end() const { return gas_end_; }
    double level(double t) const;
    double slope(double t) const;
    double pressure(double t) const { return level(t); }
    coexistence::Imbalance imbalance(const coexistence::Pair& pair) const;
    std::optional<coexistence::Pair> estimate() const;

private:
    double compressibility_slope(double r) const;

    double a_, b_, c_, d_;
    double scale_ = 1.0;
    bool rises_ = false;
    double liquid_end_ = -coexistence::LIMIT;
    double gas_end_ = coexistence::LIMIT;
};

}  // namespace tavo::calcnum
