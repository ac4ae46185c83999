// The shared FIR kernel over both 32f layouts against a long-double direct
// sum at every tap count 1..70 and output count 1..40, reading nothing past
// x and writing nothing past y. (Split-independence, misaligned pointers and
// the other types are checked through FIRSR.)
#include <gtest/gtest.h>

#include "../../src/filter/fir_kernel.h"
#include "conv_oracle.h"

namespace {

namespace firk = zvp::p8::firk;
using zvp::test::conv::randomVec;

struct Layout {
    const char* name;
    std::ptrdiff_t (*len)(std::ptrdiff_t);
    void (*prep)(const float*, std::ptrdiff_t, float*);
    void (*run)(const float*, std::ptrdiff_t, const float*, float*, std::ptrdiff_t);
};
const Layout kLayouts[] = {
    {"staggered", [](std::ptrdiff_t L) { return firk::staggeredLen(L); }, firk::prepareStaggered, firk::filterStaggered},
    {"broadcast", [](std::ptrdiff_t L) { return firk::broadcastLen(L); }, firk::prepareBroadcast, firk::filterBroadcast}};

TEST(FirKernel, EveryShapeAgainstOracle) {
    for (const auto& lay : kLayouts) {
        for (int L = 1; L <= 70; ++L) {
            const auto h = randomVec<float>(L, L);
            std::vector<float> p(lay.len(L) + 1);
            lay.prep(h.data(), L, p.data() + 1);  // taps off the vector alignment too
            for (int n = 1; n <= 40; ++n) {
                // A NaN right behind x: an over-read, even against a zero
                // tap, would carry it into an output.
                auto x = randomVec<float>(n + L - 1, 7 * n + L);
                x.push_back(NAN);
                std::vector<float> y(n + 1, -9.f);
                lay.run(p.data() + 1, L, x.data(), y.data(), n);
                ASSERT_EQ(y[n], -9.f) << "written past n";
                // (L + 2) u sum |h||x|: L rounded products, L - 1 additions.
                for (int i = 0; i < n; ++i) {
                    long double s = 0, a = 0;
                    for (int j = 0; j < L; ++j) s += (long double)h[j] * x[i + L - 1 - j], a += std::fabs(h[j] * x[i + L - 1 - j]);
                    ASSERT_LE(std::fabs(y[i] - s), (L + 2) * 0x1p-24L * a) << lay.name << " L=" << L << " n=" << n << " i=" << i;
                }
            }
        }
    }
}

}  // namespace
