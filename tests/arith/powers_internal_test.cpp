// Kernels of the powers family tested directly: the single-precision
// exp/ln/arctan polynomials over a dense strided sweep of every float (the
// full 2^32 sweep is a disabled test), the double-double helpers and the
// correct-rounding fallbacks, and the exact integer roots.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "../../src/arith/ddmath.h"
#include "fpguard.h"
#include "../../src/arith/introot.h"
#include "../../src/arith/mathpoly.h"

namespace {

// ---- Single-precision kernels -------------------------------------------------

// Error of a float result in ulps of the exact value ref (double libm
// references are exact to ~2^-52, far below the float ulp); gradual
// underflow counts in ulps of the smallest denormal.
double ulpError(float got, double ref) {
    if (std::isnan(ref)) return std::isnan(got) ? 0.0 : 1e30;
    const float rounded = float(ref);
    if (std::isinf(rounded)) return got == rounded ? 0.0 : 1e30;
    int e = 0;
    std::frexp(std::fabs(ref), &e);
    const double ulp = std::ldexp(1.0, e - 24 < -149 ? -149 : e - 24);
    return std::fabs(double(got) - ref) / ulp;
}

struct SweepResult {
    double worstUlps = 0;
    float worstX = 0;
    double worstRel = 0;  // among normal results
};

// Runs kernel over every float whose bit pattern is a multiple of stride
// (plus an offset), 65536 at a time, against the double reference.
template <class Kernel, class Ref>
SweepResult sweep(Kernel kernel, Ref ref, std::uint32_t stride, std::uint32_t offset) {
    constexpr int kChunk = 1 << 16;
    std::vector<float> in(kChunk), out(kChunk);
    SweepResult r;
    std::uint64_t bits = offset;
    while (bits < (std::uint64_t(1) << 32)) {
        int n = 0;
        for (; n < kChunk && bits < (std::uint64_t(1) << 32); ++n, bits += stride) {
            const std::uint32_t b = std::uint32_t(bits);
            std::memcpy(&in[n], &b, 4);
        }
        kernel(in.data(), out.data(), n);
        for (int i = 0; i < n; ++i) {
            const double x = in[i], want = ref(x);
            const double u = ulpError(out[i], want);
            if (u > r.worstUlps) r.worstUlps = u, r.worstX = in[i];
            if (std::isfinite(want) && std::fabs(want) >= 1.1754943508222875e-38 && std::isfinite(out[i])) {
                const double rel = std::fabs(out[i] - want) / std::fabs(want);
                if (rel > r.worstRel) r.worstRel = rel;
            }
        }
    }
    return r;
}

double refExp(double x) { return std::exp(x); }
double refLn(double x) { return std::log(x); }
double refAtan(double x) { return std::atan(x); }

// A relative error of 2^-21 is at most 4 ulps; the kernels do far better.
// The stride is odd so every exponent and many mantissa patterns are met.
TEST(PowersKernels, StridedSweepWithinTheA21Bound) {
    const std::uint32_t stride = 251;
    const SweepResult e = sweep(zvp::p8::mathpoly::ownsExp_32f_A21, refExp, stride, 7);
    const SweepResult l = sweep(zvp::p8::mathpoly::ownsLn_32f_A21, refLn, stride, 11);
    const SweepResult a = sweep(zvp::p8::mathpoly::ownsArctan_32f_A21, refAtan, stride, 3);
    RecordProperty("exp_worst_ulps", std::to_string(e.worstUlps));
    RecordProperty("ln_worst_ulps", std::to_string(l.worstUlps));
    RecordProperty("atan_worst_ulps", std::to_string(a.worstUlps));
    EXPECT_LE(e.worstUlps, 2.0) << "at " << e.worstX;
    EXPECT_LE(l.worstUlps, 2.5) << "at " << l.worstX;
    EXPECT_LE(a.worstUlps, 2.5) << "at " << a.worstX;
    EXPECT_LE(e.worstRel, std::ldexp(1.0, -21));
    EXPECT_LE(l.worstRel, std::ldexp(1.0, -21));
    EXPECT_LE(a.worstRel, std::ldexp(1.0, -21));
}

// ---- Double-double ---------------------------------------------------------------

using zvp::p8::dd::DD;

long double value(DD a) { return static_cast<long double>(a.hi) + a.lo; }

// Long double carries 64 bits, so agreement to 2^-62 (relative) is the most
// it can confirm of the ~2^-100 double-double results.
TEST(PowersDoubleDouble, ExpAndLnAgreeWithLongDouble) {
    const zvp::p8::MxcsrGuard nearest(zvp::p8::MxcsrGuard::kNearest);
    std::mt19937 rng(17);
    std::uniform_real_distribution<double> dist(-30.0, 45.0);
    for (int i = 0; i < 2000; ++i) {
        const double y = dist(rng);
        const long double want = std::exp(static_cast<long double>(y));
        EXPECT_LE(std::fabs(value(zvp::p8::dd::expDD(DD{y, 0.0})) - want), want * 0x1p-62L) << y;
    }
    for (std::int64_t x : {2LL, 3LL, 10LL, 12345LL, 2147483647LL, 4294967311LL}) {
        const long double want = std::log(static_cast<long double>(x));
        EXPECT_LE(std::fabs(value(zvp::p8::dd::lnDD(double(x))) - want), want * 0x1p-62L) << x;
    }
}

TEST(PowersDoubleDouble, UndecidedEstimatesAreSettledAccurately) {
    const zvp::p8::MxcsrGuard nearest(zvp::p8::MxcsrGuard::kNearest);
    using zvp::p8::dd::roundIrrational;
    // An estimate sitting on the half-integer defers to the accurate value.
    EXPECT_EQ(roundIrrational(2.5, 100, [] { return DD{2.5, 1e-20}; }), 3);
    EXPECT_EQ(roundIrrational(2.5, 100, [] { return DD{2.5, -1e-20}; }), 2);
    EXPECT_EQ(roundIrrational(7.5 + 1e-14, 100, [] { return DD{7.5, -1e-25}; }), 7);
    // A decided estimate does not call it.
    EXPECT_EQ(roundIrrational(2.4, 100, []() -> DD { ADD_FAILURE(); return DD{0, 0}; }), 2);
    // Saturation, also from the accurate path, and values past 2^52.
    EXPECT_EQ(roundIrrational(250.5, 250, [] { return DD{250.5, 1e-20}; }), 250);
    EXPECT_EQ(roundIrrational(0x1p60, INT64_MAX, [] { return DD{0x1p60, 700.4}; }), (std::int64_t(1) << 60) + 700);
    EXPECT_EQ(roundIrrational(0x1p63, INT64_MAX, [] { return DD{0x1p63, -1.0}; }), INT64_MAX);
}

// The accurate path agrees with the estimate wherever both apply: ln and
// exp of many integers with the fallback forced.
TEST(PowersDoubleDouble, AccuratePathMatchesTheEstimate) {
    const zvp::p8::MxcsrGuard nearest(zvp::p8::MxcsrGuard::kNearest);
    for (std::int64_t x = 2; x < 3000; x += 7) {
        for (int sf = -20; sf <= 2; sf += 3) {
            const std::int64_t fast = zvp::p8::dd::lnScaled(x, sf, INT32_MAX);
            const std::int64_t slow = zvp::p8::dd::roundDD(zvp::p8::dd::scale2(zvp::p8::dd::lnDD(double(x)), -sf), INT32_MAX);
            ASSERT_EQ(fast, slow) << x << " " << sf;
        }
    }
    for (std::int64_t x = -40; x <= 40; ++x) {
        for (int sf = -10; sf <= 50; sf += 4) {
            const zvp::p8::dd::ExpScaled f(sf, INT64_MAX);
            const DD y = zvp::p8::dd::add(DD{double(x), 0.0}, zvp::p8::dd::neg(zvp::p8::dd::nLn2(double(sf))));
            if (y.hi < -1.0 || y.hi > 44.0 || x == 0) continue;
            ASSERT_EQ(f(x), zvp::p8::dd::roundDD(zvp::p8::dd::expDD(y), INT64_MAX)) << x << " " << sf;
        }
    }
}

// ---- Integer roots -----------------------------------------------------------------

TEST(PowersIntRoots, FloorRootsAtPowerBoundaries) {
    using namespace zvp::p8::introot;
    for (std::uint64_t r : {1ull, 2ull, 3ull, 65535ull, 65536ull, 3037000499ull, 4294967295ull}) {
        const std::uint64_t sq = r * r;
        EXPECT_EQ(isqrt64(sq), r);
        EXPECT_EQ(isqrt64(sq - 1), r - 1);
        if (r < 4294967295ull) {
            EXPECT_EQ(isqrt64(sq + 1), r);
        }
    }
    EXPECT_EQ(isqrt64(~std::uint64_t(0)), 4294967295ull);
    for (std::uint64_t c : {1ull, 2ull, 1290ull, 1625ull, 2097151ull}) {
        EXPECT_EQ(icbrt64(c * c * c), c);
        EXPECT_EQ(icbrt64(c * c * c - 1), c - 1);
    }
    // 128-bit roots: (2^62 + k)^2 and neighbours.
    for (std::uint64_t r : {(1ull << 62) + 12345, (1ull << 63) - 1, 3037000499ull * 1000}) {
        const U128 sq = mul64(r, r);
        EXPECT_EQ(isqrt128(sq), r);
        EXPECT_EQ(isqrt128(add64(sq, 2 * r)), r);          // (r+1)^2 - 1
        EXPECT_EQ(isqrt128(add64(sq, 2 * r + 1)), r + 1);  // (r+1)^2
    }
}

}  // namespace
