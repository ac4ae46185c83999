// CountInRange: the number of elements within an inclusive range. A range
// whose lower bound lies above its upper one holds no element.
#include "forms.h"
#include "p8/extremes.h"

namespace zvp::p8 {
namespace {

// All ones in the lanes of v within [lo, hi].
template <class L>
typename L::R inRange(typename L::R v, typename L::R lo, typename L::R hi) {
    return L::not_(L::or_(L::gt(lo, v), L::gt(v, hi)));
}

std::ptrdiff_t countInRange(const Zvp32s* p, std::ptrdiff_t n, Zvp32s lo, Zvp32s hi) {
    using F = Full<Zvp32s>;
    using S = One<Zvp32s>;
    constexpr std::ptrdiff_t V = F::N;
    const auto flo = F::set1(lo), fhi = F::set1(hi);
    // Each lane counts down by one per element in range; a lane sees at
    // most a quarter of 2^31 elements, so it cannot wrap.
    auto c0 = F::zero(), c1 = F::zero();
    std::ptrdiff_t i = 0;
    for (; i + 2 * V <= n; i += 2 * V) {
        c0 = F::add(c0, inRange<F>(F::load(p + i), flo, fhi));
        c1 = F::add(c1, inRange<F>(F::load(p + i + V), flo, fhi));
    }
    for (; i + V <= n; i += V) c0 = F::add(c0, inRange<F>(F::load(p + i), flo, fhi));
    alignas(16) Zvp32s t[V];
    F::storea(t, F::add(c0, c1));
    std::ptrdiff_t count = 0;
    for (std::ptrdiff_t k = 0; k < V; ++k) count -= t[k];
    const auto slo = S::set1(lo), shi = S::set1(hi);
    for (; i < n; ++i) count += S::anyOf(inRange<S>(S::load(p + i), slo, shi));
    return count;
}

}  // namespace

ZvpStatus zvpsCountInRange_32s(const Zvp32s* pSrc, int len, int* pCounts, Zvp32s lowerBound, Zvp32s upperBound) {
    ZVP_CHECK_PTRS(pSrc, pCounts);
    ZVP_CHECK_LENS(len);
    *pCounts = int(countInRange(pSrc, len, lowerBound, upperBound));
    return zvpStsNoErr;
}

}  // namespace zvp::p8
