// Every entry of the quarter-wave sine tables the FFT records read their
// roots from, against sines taken here in long double and rounded by each
// table's own rule. The tables are built by polynomials with a fallback next
// to rounding boundaries, so an error in a coefficient, an error bound or the
// fallback's argument shows up as an entry off by a unit; the records' roots
// are these entries with signs, so a table that passes gives records with
// the same bits.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "../../src/transform/fftbase.h"

namespace {

using namespace zvp::p8::fft;

const long double kTwoPiL = 6.283185307179586476925286766559L;
const double kTwoPi = 6.283185307179586;

// A long-double value v within rel * |v| of the true one (rel well below
// half a unit of T), rounded to T: the unique T when the whole interval
// rounds to one value; otherwise either neighbour of the one boundary inside
// it is a correct rounding.
template <class T>
bool roundsTo(long double v, long double rel, T got) {
    const long double d = std::fabs(v) * rel;
    return got == T(v - d) || got == T(v + d);
}

template <class T>
bool sameBits(T a, T b) {
    return std::memcmp(&a, &b, sizeof(T)) == 0;
}

enum class Angle {
    Exact,         // 2 pi k / N in long double
    SingleOfDouble,  // 2 pi (double) / N times k in double, rounded to single
    Double,        // 2 pi (double) / N times k in double
    Long,          // 2 pi (long double) / N times k in long double
};

// The angle of entry j (j <= N/8) of an order-m table under rule a.
long double angle(Angle a, int m, std::int64_t j) {
    const std::int64_t n = std::int64_t(1) << m;
    switch (a) {
        case Angle::Exact: return kTwoPiL * static_cast<long double>(j) / static_cast<long double>(n);
        case Angle::SingleOfDouble: return double(float(double(j) * (kTwoPi / double(n))));
        case Angle::Double: return double(j) * (kTwoPi / double(n));
        default: return static_cast<long double>(j) * (kTwoPiL / static_cast<long double>(n));
    }
}

// Checks b[0 .. N/4]: b[k] is the sine of angle k up to N/8 and the cosine
// of angle N/4 - k beyond (for Angle::Exact the sine of angle k throughout:
// the same value, the same rounding), rounded to T. `rel` bounds the long
// double value's error plus, when the rule names a double function, that
// function's error, so only entries whose rounding the rule leaves open
// may take either neighbour; `exact` asks for the bits of double(sinl).
template <class T>
void checkTable(const T* b, int m, Angle a, long double rel, bool exact, const char* what) {
    const std::int64_t q = (std::int64_t(1) << m) / 4;
    int bad = 0;
    for (std::int64_t k = 0; k <= q && bad < 5; ++k) {
        const bool low = 2 * k <= q || a == Angle::Exact;
        const long double x = angle(a, m, low ? k : q - k);
        const long double v = k == q ? 1.0L : low ? sinl(x) : cosl(x);
        const bool ok = exact ? sameBits(b[k], T(v)) : roundsTo(v, rel, b[k]);
        if (!ok) {
            ++bad;
            ADD_FAILURE() << what << " order " << m << " entry " << k << ": " << double(b[k])
                          << " against " << double(v);
        }
    }
}

// Error of sinl/cosl on these arguments (a few units of 2^-64); of the
// double functions for a single result (under a unit of 2^-52); and for a
// double result, the part of a unit by which the double functions may miss
// the correct rounding (they round correctly but next to a boundary).
constexpr long double kLongErr = 0x1p-61L;
constexpr long double kDoubleErr = 0x1p-52L;
constexpr long double kDoubleRoundErr = 0x1p-57L;

TEST(FftSineTables, FixedTablesAreCorrectlyRounded) {
    checkTable(fixedSin32f(), 10, Angle::Exact, kLongErr, false, "fixed single");
    checkTable(fixedSin64f(), 10, Angle::Exact, kLongErr, false, "fixed double");
}

struct Case {
    const char* what;
    bool single;
    bool complex;
    int from, to;
    Angle angle;
    long double rel;
    bool exact;
};

// Orders 1 .. 16 of every builder (the complex builders start where the
// fixed table ends).
const Case kCases[] = {
    {"complex single", true, true, 11, 16, Angle::SingleOfDouble, kDoubleErr, false},
    {"complex double", false, true, 11, 16, Angle::Long, 0, true},
    {"real single, fixed", true, false, 2, 10, Angle::Exact, kLongErr, false},
    {"real single", true, false, 11, 16, Angle::SingleOfDouble, kDoubleErr, false},
    {"real double", false, false, 2, 16, Angle::Double, kDoubleRoundErr, false},
};

TEST(FftSineTables, EveryEntryFollowsItsRoundingRule) {
    for (const Case& c : kCases)
        for (int m = c.from; m <= c.to; ++m) {
            const std::size_t count = (std::size_t(1) << m) / 4 + 1;
            if (c.single) {
                std::vector<float> b(count, -2.0f);
                c.complex ? complexBase(b.data(), m) : realBase(b.data(), m);
                checkTable(b.data(), m, c.angle, c.rel, c.exact, c.what);
            } else {
                std::vector<double> b(count, -2.0);
                c.complex ? complexBase(b.data(), m) : realBase(b.data(), m);
                checkTable(b.data(), m, c.angle, c.rel, c.exact, c.what);
            }
        }
}

}  // namespace
