// Kernels of the divide family, tested below the public interface: the
// floating-point quotient kernels against exact integer quotients where their
// exactness is tightest, and the exact 128-bit quotient against an
// independent wide oracle. (The multiply lane sets are covered through the
// exports by the shape table's oracle at every scale factor.)
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

#include "../../src/arith/div_kernel.h"
#include "scale.h"
#include "wide_int.h"

namespace {

using namespace zvp;
using namespace zvp::p8;

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
