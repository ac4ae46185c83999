// The shared FIR kernel over its prepared layouts against a long-double
// direct sum, at every tap count 1..70 and output count 1..40, and the
// property the FIR filters rely on: an output does not depend on where it
// falls in a call, so a stream split anywhere equals one call bit for bit.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <random>
#include <vector>

#include "../../src/filter/fir_kernel.h"

namespace {

namespace firk = zvp::p8::firk;
using cld = std::complex<long double>;

template <class T> cld toC(const T& v) {
    if constexpr (std::is_same_v<T, Zvp32fc> || std::is_same_v<T, Zvp64fc>) return {v.re, v.im};
    else return {(long double)v, 0};
}

template <class T> std::vector<T> rnd(std::size_t n, unsigned seed) {
    std::mt19937 g(seed);
    std::uniform_real_distribution<double> d(-1, 1);
    std::vector<T> v(n);
    for (auto& e : v) {
        if constexpr (std::is_same_v<T, Zvp32fc> || std::is_same_v<T, Zvp64fc>) e = {decltype(e.re)(d(g)), decltype(e.re)(d(g))};
        else e = T(d(g));
    }
    return v;
}

// |y - ref| <= (L + 2) u sum |h||x|: L rounded products and L - 1 additions
// in any order, each adding at most u times a partial sum bounded by
// sum |h||x| (complex: a factor 2 more for the two-term products).
template <class T> void expectOracle(const std::vector<T>& h, const std::vector<T>& x, const T* y, std::ptrdiff_t n,
                                     long double u, const char* what) {
    const std::ptrdiff_t L = h.size();
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        cld s = 0;
        long double a = 0;
        for (std::ptrdiff_t j = 0; j < L; ++j) {
            s += toC(h[j]) * toC(x[i + L - 1 - j]);
            a += std::abs(toC(h[j])) * std::abs(toC(x[i + L - 1 - j]));
        }
        ASSERT_LE(std::abs(toC(y[i]) - s), 2 * (L + 2) * u * a + 1e-300L) << what << " L=" << L << " i=" << i << " n=" << n;
    }
}

using Kernel = void (*)(const float*, std::ptrdiff_t, const float*, float*, std::ptrdiff_t);
struct Layout32f {
    const char* name;
    std::ptrdiff_t (*len)(std::ptrdiff_t);
    void (*prep)(const float*, std::ptrdiff_t, float*);
    Kernel run;
};
std::ptrdiff_t stagLen(std::ptrdiff_t L) { return firk::staggeredLen(L); }
std::ptrdiff_t bcLen(std::ptrdiff_t L) { return firk::broadcastLen(L); }
const Layout32f kLayouts[] = {{"staggered", stagLen, firk::prepareStaggered, firk::filterStaggered},
                              {"broadcast", bcLen, firk::prepareBroadcast, firk::filterBroadcast}};

TEST(FirKernel, Layouts32fEveryShapeAgainstOracle) {
    for (const auto& lay : kLayouts) {
        for (int L = 1; L <= 70; ++L) {
            const auto h = rnd<float>(L, L);
            std::vector<float> p(lay.len(L) + 1);
            lay.prep(h.data(), L, p.data() + 1);  // taps off the vector alignment too
            for (int n = 1; n <= 40; ++n) {
                // A NaN right behind x: an over-read, even against a zero
                // tap, would carry it into an output.
                auto x = rnd<float>(n + L - 1, 7 * n + L);
                x.push_back(NAN);  // a NaN behind x reaches no output
                std::vector<float> y(n + 1, -9.f);
                lay.run(p.data() + 1, L, x.data(), y.data(), n);
                x.pop_back();
                expectOracle(h, x, y.data(), n, 0x1p-24L, lay.name);
                ASSERT_EQ(y[n], -9.f) << "written past n";
            }
        }
    }
}

TEST(FirKernel, OutputIndependentOfSplitAndAlignment) {
    // 67 outputs filtered in one call, then in every split point a|rest at
    // every misalignment of x: identical bits.
    for (int L : {5, 31, 32, 33, 64, 70}) {
        for (const auto& lay : kLayouts) {
            const auto h = rnd<float>(L, 3 * L);
            std::vector<float> p(lay.len(L));
            lay.prep(h.data(), L, p.data());
            const int n = 67;
            auto xs = rnd<float>(n + L - 1 + 3, 11 * L);
            std::vector<float> one(n);
            lay.run(p.data(), L, xs.data(), one.data(), n);
            for (int off = 0; off < 4; ++off) {
                std::vector<float> xv(xs.begin(), xs.begin() + n + L - 1);
                std::vector<float> buf(off + xv.size());
                std::copy(xv.begin(), xv.end(), buf.begin() + off);
                for (int a = 1; a < n; a += 5) {
                    std::vector<float> y(n);
                    lay.run(p.data(), L, buf.data() + off, y.data(), a);
                    lay.run(p.data(), L, buf.data() + off + a, y.data() + a, n - a);
                    ASSERT_EQ(0, std::memcmp(y.data(), one.data(), n * sizeof(float)))
                        << lay.name << " L=" << L << " split=" << a << " off=" << off;
                }
            }
        }
    }
}

template <class T> void otherTypes(long double u) {
    for (int L = 1; L <= 70; L += 3) {
        const auto h = rnd<T>(L, L + 100);
        std::vector<T> p(firk::preparedLen<T>(L));
        firk::prepare(h.data(), L, p.data());
        for (int n = 1; n <= 40; n += 3) {
            const auto x = rnd<T>(n + L - 1, n + 5 * L);
            std::vector<T> y(n);
            firk::filter(p.data(), L, x.data(), y.data(), n);
            expectOracle(h, x, y.data(), n, u, "typed");
        }
    }
}

TEST(FirKernel, OtherTypesAgainstOracle) {
    otherTypes<double>(0x1p-53L);
    otherTypes<Zvp32fc>(0x1p-24L);
    otherTypes<Zvp64fc>(0x1p-53L);
}

}  // namespace
