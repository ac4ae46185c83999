// Kernels of the multiply and divide families, tested below the public
// interface: the vector rounding and saturation steps against scaleRule
// lane by lane at every scale factor they serve, the floating-point quotient
// kernels against exact integer quotients where their exactness is tightest,
// and the exact 128-bit quotient against an independent wide oracle.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <random>
#include <vector>

#include "../../src/arith/div_kernel.h"
#include "../../src/arith/muldiv_kernel.h"
#include "scale.h"
#include "wide_int.h"

namespace {

using namespace zvp;
using muldiv::Path;

// Lane values: extremes of the lane and random values of every magnitude.
template <class W>
std::vector<W> laneValues(unsigned seed, int n = 4000) {
    std::mt19937_64 g(seed);
    using L = std::numeric_limits<W>;
    std::vector<W> v = {0, 1, 2, 3, L::max(), W(L::max() - 1), L::min(), W(L::min() + 1)};
    if constexpr (std::is_signed_v<W>)
        for (W x : {W(-1), W(-2), W(-3)}) v.push_back(x);
    while (int(v.size()) < n) {
        const std::uint64_t r = g();
        v.push_back(W(r >> (r % 64)));
    }
    return v;
}

// Runs a lane set over R values, N results a step (`load` makes them from
// the R values at a position), and compares every result with scaleRule.
template <class D, int N, class LS, class W, class Load>
void lanes(int sf, const std::vector<W>& r, Load load) {
    const LS ls(sf);
    for (std::size_t i = 0; i + N <= r.size(); i += N) {
        alignas(16) D out[N];
        simd::store(out, load(ls, r.data() + i));
        for (int k = 0; k < N; ++k) ASSERT_EQ(out[k], scaleRule<D>(std::int64_t(r[i + k]), sf)) << "R " << +r[i + k] << " sf " << sf;
    }
}
const auto kPair = [](const auto& ls, const auto* p) { return ls.finish(ls.pre(simd::loadu(p)), ls.pre(simd::loadu(p + 4))); };
template <class D, class LS, class W>
void check32(int sf, const std::vector<W>& r) { lanes<D, 8, LS>(sf, r, kPair); }

TEST(MulDivKernels, SignedLanesTo16Bit) {
    const auto r = laneValues<std::int32_t>(1);
    check32<Zvp16s, muldiv::Lanes32to16<Zvp16s, Path::Plain>>(0, r);
    check32<Zvp16s, muldiv::Lanes32to16<Zvp16s, Path::One>>(1, r);
    for (int sf = 2; sf <= 31; ++sf) check32<Zvp16s, muldiv::Lanes32to16<Zvp16s, Path::Pos>>(sf, r);
    for (int sf = -15; sf <= -1; ++sf) check32<Zvp16s, muldiv::Lanes32to16<Zvp16s, Path::Neg>>(sf, r);
    for (int sf : {-16, -17, -40, INT_MIN})
        check32<Zvp16s, muldiv::Lanes32to16<Zvp16s, Path::Bound>>(sf, r);
}

// Products of two 16s values (|R| <= 2^30) take the shorter rounding.
TEST(MulDivKernels, SignedLanesWithHeadroom) {
    std::vector<std::int32_t> r;
    for (std::int32_t v : laneValues<std::int32_t>(4)) r.push_back(v >> 1);  // within +-2^30
    for (std::int32_t v : {1 << 30, -(1 << 30), (1 << 30) - 1, -(1 << 30) + 1}) r.push_back(v);
    while (r.size() % 8) r.push_back(0);
    check32<Zvp16s, muldiv::Lanes32to16<Zvp16s, Path::One, true>>(1, r);
    for (int sf = 2; sf <= 30; ++sf) check32<Zvp16s, muldiv::Lanes32to16<Zvp16s, Path::Pos, true>>(sf, r);
}

TEST(MulDivKernels, UnsignedLanesTo16u) {
    const auto r = laneValues<std::uint32_t>(2);
    const auto check = [&](auto tag, int sf) { lanes<Zvp16u, 8, decltype(tag)>(sf, r, kPair); };
    check(muldiv::LanesU32to16u<Path::Plain>(0), 0);
    check(muldiv::LanesU32to16u<Path::One>(1), 1);
    for (int sf = 2; sf <= 32; ++sf) check(muldiv::LanesU32to16u<Path::Pos>(sf), sf);
    for (int sf = -15; sf <= -1; ++sf) check(muldiv::LanesU32to16u<Path::Neg>(sf), sf);
    check(muldiv::LanesU32to16u<Path::Bound>(-16), -16);
}

TEST(MulDivKernels, SixtyFourBitLanesTo32s) {
    const auto r = laneValues<std::int64_t>(3);
    const auto check = [&](auto tag, int sf) {
        lanes<Zvp32s, 4, decltype(tag)>(sf, r, [](const auto& ls, const std::int64_t* p) {
            return ls.finish(_mm_set_epi64x(p[2], p[0]), _mm_set_epi64x(p[3], p[1]));
        });
    };
    check(muldiv::Lanes64to32<Path::Plain>(0), 0);
    check(muldiv::Lanes64to32<Path::One>(1), 1);
    for (int sf = 2; sf <= 63; ++sf) check(muldiv::Lanes64to32<Path::Pos>(sf), sf);
    for (int sf = -31; sf <= -1; ++sf) check(muldiv::Lanes64to32<Path::Neg>(sf), sf);
    check(muldiv::Lanes64to32<Path::Bound>(-32), -32);
}

TEST(MulDivKernels, EightBitLanes) {
    std::vector<std::uint16_t> r;
    for (int v = 0; v < 65536; v += 7) r.push_back(std::uint16_t(v));
    for (int v : {0, 1, 32767, 32768, 32769, 65024, 65025, 65535}) r.push_back(std::uint16_t(v));
    while (r.size() % 16) r.push_back(0);
    const auto check = [&](auto tag, int sf) {
        lanes<Zvp8u, 16, decltype(tag)>(sf, r, [](const auto& ls, const std::uint16_t* p) {
            return ls.finish(simd::loadu(p), simd::loadu(p + 8));
        });
    };
    check(muldiv::LanesU16to8u<Path::Plain>(0), 0);
    check(muldiv::LanesU16to8u<Path::One>(1), 1);
    for (int sf = 2; sf <= 16; ++sf) check(muldiv::LanesU16to8u<Path::Pos>(sf), sf);
    for (int sf = -7; sf <= -1; ++sf) check(muldiv::LanesU16to8u<Path::Neg>(sf), sf);
    check(muldiv::LanesU16to8u<Path::Bound>(-8), -8);
}

// The floating-point quotient kernels are exact while |dividend| * 2^-sf
// stays below 2^23 (single) or 2^52 (double). Every dividend of 16s and 16u
// against divisors near the extremes and random ones, at the factors where
// the margin is smallest, in every rounding mode.
template <class T, divk::Rnd R>
void quotientsExact(const std::vector<int>& sfs) {
    std::vector<T> num(65536 >> (8 * (sizeof(T) == 1)));
    for (std::size_t i = 0; i < num.size(); ++i) num[i] = T(i);
    std::vector<T> dens = {1, 2, 3, 5, 7, std::numeric_limits<T>::max(), T(std::numeric_limits<T>::max() - 1)};
    if constexpr (std::is_signed_v<T>)
        for (T x : {T(-1), T(-2), T(-3), T(-32768), T(-32767), T(12345), T(-255)}) dens.push_back(x);
    std::mt19937 g(7);
    for (int k = 0; k < 6; ++k) {
        const T x = T(g());
        dens.push_back(x ? x : T(1));
    }
    std::vector<T> out(num.size());
    for (int sf : sfs)
        for (T den : dens) {
            const MxcsrGuard guard(divk::guardMode(R));
            divk::divKernel<T, R>(divk::Vec<T>{num.data()}, divk::Const<T>(den), out.data(), int(num.size()), sf);
            for (std::size_t i = 0; i < num.size(); ++i)
                ASSERT_EQ(out[i], divk::quotientRule<T>(num[i], den, sf, R))
                    << +num[i] << " / " << +den << " sf " << sf << " mode " << int(R);
        }
}

TEST(MulDivKernels, FloatingQuotientsAreExact) {
    const std::vector<int> s16 = {-30, -9, -8, -7, -1, 0, 1, 14, 15, 16};
    quotientsExact<Zvp16s, divk::Rnd::Zero>(s16);
    quotientsExact<Zvp16s, divk::Rnd::Near>(s16);
    quotientsExact<Zvp16s, divk::Rnd::Fin>(s16);
    const std::vector<int> su = {-31, -8, -7, 0, 16, 17};
    quotientsExact<Zvp16u, divk::Rnd::Near>(su);
    quotientsExact<Zvp16u, divk::Rnd::Fin>(su);
    quotientsExact<Zvp16u, divk::Rnd::Zero>(su);
    const std::vector<int> s8 = {-15, -14, 0, 8, 9};
    quotientsExact<Zvp8u, divk::Rnd::Near>(s8);
    quotientsExact<Zvp8u, divk::Rnd::Fin>(s8);
    quotientsExact<Zvp8u, divk::Rnd::Zero>(s8);
}

TEST(MulDivKernels, ExactQuotientAgainstWideOracle) {
    using test::Mode;
    using test::Wide;
    std::mt19937_64 g(11);
    const Mode modes[] = {Mode::TowardZero, Mode::NearestEven, Mode::HalfAway};
    for (int i = 0; i < 20000; ++i) {
        std::int64_t n = std::int64_t(g()) >> (g() % 64), d = std::int64_t(g()) >> (g() % 64);
        if (i < 9) n = (i % 3 == 0) ? INT64_MIN : (i % 3 == 1 ? INT64_MAX : -1);
        if (i % 9 < 3) d = i % 2 ? INT64_MIN : 1;
        if (d == 0) d = 3;
        const int sf = int(g() % 300) - 150;
        for (int m = 0; m < 3; ++m)
            ASSERT_EQ(divk::quotientRule<Zvp64s>(n, d, sf, divk::Rnd(m)),
                      test::quotient<Zvp64s>(Wide::of(n), Wide::of(d), sf, modes[m]))
                << n << " / " << d << " sf " << sf << " mode " << m;
    }
}

}  // namespace
