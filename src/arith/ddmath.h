// Double-double arithmetic (about 106 significant bits) and the correctly
// rounded integer results of e^x * 2^-sf and ln(x) * 2^-sf that the scaled
// integer Exp and Ln operations deliver.
//
// How the rounding is made correct: the value is first computed in double
// precision from libm (relative error below 2^-51). e^x for an integer
// x != 0 and ln(x) for an integer x >= 2 are transcendental, so the scaled
// value is never exactly halfway between two integers. When the double
// estimate lies farther than 2^-44 (relative) from the nearest half-integer,
// the estimate decides. Otherwise, and whenever the value is too large for
// a double to resolve its fraction, the value is recomputed in double-double
// (relative error below 2^-98) and that decides.
//
// The error-free transformations below need round-to-nearest arithmetic:
// callers hold a MxcsrGuard(kNearest) while they use them.
#pragma once

#include <cmath>
#include <cstdint>
#include "level.h"

namespace zvp::ZVP_LEVEL::dd {

struct DD {
    double hi;
    double lo;
};

inline DD twoSum(double a, double b) {
    const double s = a + b;
    const double bb = s - a;
    return {s, (a - (s - bb)) + (b - bb)};
}
inline DD quickTwoSum(double a, double b) {  // |a| >= |b|
    const double s = a + b;
    return {s, b - (s - a)};
}
inline void split(double a, double& hi, double& lo) {
    const double c = 134217729.0 * a;  // 2^27 + 1
    hi = c - (c - a);
    lo = a - hi;
}
inline DD twoProd(double a, double b) {
    const double p = a * b;
    double ah, al, bh, bl;
    split(a, ah, al);
    split(b, bh, bl);
    return {p, ((ah * bh - p) + ah * bl + al * bh) + al * bl};
}
inline DD add(DD a, DD b) {
    DD s = twoSum(a.hi, b.hi);
    const DD t = twoSum(a.lo, b.lo);
    s.lo += t.hi;
    s = quickTwoSum(s.hi, s.lo);
    s.lo += t.lo;
    return quickTwoSum(s.hi, s.lo);
}
inline DD neg(DD a) { return {-a.hi, -a.lo}; }
inline DD mul(DD a, DD b) {
    DD p = twoProd(a.hi, b.hi);
    p.lo += a.hi * b.lo + a.lo * b.hi;
    return quickTwoSum(p.hi, p.lo);
}
inline DD mulD(DD a, double b) {
    DD p = twoProd(a.hi, b);
    p.lo += a.lo * b;
    return quickTwoSum(p.hi, p.lo);
}
inline DD divD(DD a, double b) {
    const double q1 = a.hi / b;
    const DD r = add(a, neg(twoProd(q1, b)));
    return quickTwoSum(q1, r.hi / b);
}
inline DD scale2(DD a, int k) { return {std::ldexp(a.hi, k), std::ldexp(a.lo, k)}; }

// ln 2 in three parts (hi + mid + lo, about 160 bits).
constexpr double kLn2Hi = 6.93147180559945286227e-01;
constexpr double kLn2Mid = 2.31904681384629955842e-17;
constexpr double kLn2Lo = 5.70770843841621207588e-34;

// n * ln 2 for an integer n with |n| < 2^53, to about 2^-105 relative.
inline DD nLn2(double n) {
    DD s = twoProd(n, kLn2Hi);
    s = add(s, twoProd(n, kLn2Mid));
    s.lo += n * kLn2Lo;
    return quickTwoSum(s.hi, s.lo);
}

// e^y for |y| <= 700.
inline DD expDD(DD y) {
    const double k = std::floor(y.hi * 1.4426950408889634 + 0.5);
    const DD r = add(y, neg(nLn2(k)));  // |r| <= 0.35
    // e^r = (e^(r/16))^16, with s = r/16, |s| <= 0.022:
    //   e^s - 1 = s (1 + s/2 (1 + s/3 (1 + ... (1 + s/14)))).
    const DD s = scale2(r, -4);
    DD u{1.0, 0.0};
    for (int n = 14; n >= 2; --n) u = add(DD{1.0, 0.0}, divD(mul(s, u), double(n)));
    DD e1 = mul(s, u);
    for (int i = 0; i < 4; ++i) e1 = add(add(e1, e1), mul(e1, e1));  // (1 + e1)^2 - 1
    return scale2(add(DD{1.0, 0.0}, e1), int(k));
}

// ln x for a positive double x, by one Newton step on e^y = x from libm's
// estimate: y1 = y0 + x e^-y0 - 1.
inline DD lnDD(double x) {
    const double y0 = std::log(x);
    const DD t = add(mulD(expDD(DD{-y0, 0.0}), x), DD{-1.0, 0.0});
    return add(DD{y0, 0.0}, t);
}

// The nearest integer to a positive value held in double-double that is
// known not to be a half-integer, saturated to maxOut (<= 2^63 - 1). The
// first guesses n and m may be off by one; the final comparison settles it.
inline std::int64_t roundDD(DD w, std::int64_t maxOut) {
    if (w.hi >= 9223372036854775808.0) return maxOut;
    const double n = std::floor(w.hi + 0.5);
    // w - n = (w.hi - n) + w.lo; w.hi - n is exact, and the sum is small
    // (below 2^10 for w < 2^63), so its own nearest integer is exact too.
    const DD rem = add(DD{w.hi - n, 0.0}, DD{w.lo, 0.0});
    const double m = std::floor(rem.hi + 0.5);
    const DD frac = add(DD{rem.hi - m, 0.0}, DD{rem.lo, 0.0});
    std::int64_t r = std::int64_t(n) + std::int64_t(m);
    // Compare the whole double-double with +-1/2 (hi can be exactly 1/2).
    if (frac.hi > 0.5 || (frac.hi == 0.5 && frac.lo > 0)) ++r;
    if (frac.hi < -0.5 || (frac.hi == -0.5 && frac.lo < 0)) --r;
    return r > maxOut ? maxOut : r;
}

// Rounds the positive value v (a double estimate of an irrational number
// with relative error below 2^-51) to the nearest integer, saturated to
// maxOut; the exact value is recomputed by accurate() when the estimate
// cannot decide.
template <class Accurate>
inline std::int64_t roundIrrational(double v, std::int64_t maxOut, Accurate accurate) {
    if (v < 4503599627370496.0) {  // 2^52: v still has a fraction
        const double fl = std::floor(v);
        const double d = v - (fl + 0.5);  // exact
        if (std::fabs(d) > v * 0x1p-44) {
            const std::int64_t r = std::int64_t(fl) + (d > 0 ? 1 : 0);
            return r > maxOut ? maxOut : r;
        }
    }
    return roundDD(accurate(), maxOut);
}

// round(e^x * 2^-sf), ties to even, saturated to [0, maxOut]
// (maxOut <= 2^63 - 1), for integers x; the factor's part is set up once.
class ExpScaled {
public:
    ExpScaled(int sf, std::int64_t maxOut)
        : sf_(sf), maxOut_(maxOut), sfLn2_(nLn2(double(sf))), top_(std::log(double(maxOut)) + 1.0) {}

    std::int64_t operator()(std::int64_t x) const {
        if (x == 0) {  // 2^-sf: rational, and 1/2 rounds to 0
            if (sf_ > 0) return 0;
            if (sf_ <= -63) return maxOut_;
            const std::int64_t p = std::int64_t(1) << -sf_;
            return p < maxOut_ ? p : maxOut_;
        }
        // |sf| < 2^31 and ln 2 < 0.7, so beyond 2^32 the sign of x decides.
        if (x > (std::int64_t(1) << 32)) return maxOut_;
        if (x < -(std::int64_t(1) << 32)) return 0;
        const DD y = add(DD{double(x), 0.0}, neg(sfLn2_));  // x - sf ln 2
        if (y.hi < -1.0) return 0;                          // e^y < 0.37
        if (y.hi > top_) return maxOut_;
        const double v = std::exp(y.hi) * (1.0 + y.lo);
        return roundIrrational(v, maxOut_, [&] { return expDD(y); });
    }

private:
    int sf_;
    std::int64_t maxOut_;
    DD sfLn2_;
    double top_;
};

// round(ln(x) * 2^-sf), ties to even, saturated to [0, maxOut], for x >= 1.
inline std::int64_t lnScaled(std::int64_t x, int sf, std::int64_t maxOut) {
    if (x == 1) return 0;
    // 0.69 <= ln x < 44: far beyond these factors every result is 0 or saturates.
    if (sf > 8) return 0;
    if (sf < -80) return maxOut;
    const double v = std::ldexp(std::log(double(x)), -sf);
    return roundIrrational(v, maxOut, [&] { return scale2(lnDD(double(x)), -sf); });
}

}  // namespace zvp::ZVP_LEVEL::dd
