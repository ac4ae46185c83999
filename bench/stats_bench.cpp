// Sums, dot products, norms and deviations against their peers in the same
// binary: VOLK (dispatched, and its SSE kernel by name), Eigen (built here
// with -O3 -msse4.2, like every benchmark), plain loops and memcpy.
// Bytes processed count the bytes read.
#include <benchmark/benchmark.h>

#include <complex>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "zvps.h"

#ifdef ZVP_HAVE_VOLK
#include <volk/volk.h>
#endif
#ifdef ZVP_HAVE_EIGEN
#include <Eigen/Core>
#endif

namespace {

template <class T>
std::vector<T> randomVec(std::size_t n, unsigned seed) {
    std::mt19937 rng(seed);
    std::vector<T> v(n);
    for (auto& x : v) x = T(int(rng() % 2001) - 1000) / T(1000);
    return v;
}
std::vector<Zvp16s> random16s(std::size_t n, unsigned seed) {
    std::mt19937 rng(seed);
    std::vector<Zvp16s> v(n);
    for (auto& x : v) x = Zvp16s(rng());
    return v;
}

// Runs body() per iteration over n elements of `bytes` read bytes each.
template <class F>
void loop(benchmark::State& st, std::size_t bytes, F body) {
    for (auto _ : st) {
        auto r = body();
        benchmark::DoNotOptimize(r);
    }
    st.SetBytesProcessed(st.iterations() * st.range(0) * int64_t(bytes));
}

#define N int(st.range(0))

// ---- Sum_32f ------------------------------------------------------------------------

void BM_Sum32f_Fast(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1);
    loop(st, 4, [&] { float s; zvpsSum_32f(a.data(), N, &s, zvpAlgHintFast); return s; });
}
void BM_Sum32f_Accurate(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1);
    loop(st, 4, [&] { float s; zvpsSum_32f(a.data(), N, &s, zvpAlgHintAccurate); return s; });
}
void BM_Memcpy32f(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1);
    std::vector<float> d(N);
    loop(st, 4, [&] { std::memcpy(d.data(), a.data(), a.size() * 4); benchmark::ClobberMemory(); return d[0]; });
}
void BM_Memcpy32fx2(benchmark::State& st) {  // the bytes two sources read
    const auto a = randomVec<float>(2 * N, 1);
    std::vector<float> d(2 * N);
    loop(st, 8, [&] { std::memcpy(d.data(), a.data(), a.size() * 4); benchmark::ClobberMemory(); return d[0]; });
}
#ifdef ZVP_HAVE_VOLK
void BM_VolkAccumulator(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1);
    loop(st, 4, [&] { float s; volk_32f_accumulator_s32f(&s, a.data(), N); return s; });
}
void BM_VolkAccumulatorSSE(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1);
    loop(st, 4, [&] { float s; volk_32f_accumulator_s32f_manual(&s, a.data(), N, "u_sse"); return s; });
}
#endif
#ifdef ZVP_HAVE_EIGEN
void BM_EigenSum(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1);
    const Eigen::Map<const Eigen::VectorXf> v(a.data(), N);
    loop(st, 4, [&] { return v.sum(); });
}
#endif

// ---- DotProd_32f, DotProd_32fc, Norm_L2_32f -------------------------------------------

void BM_Dot32f(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1), b = randomVec<float>(N, 2);
    loop(st, 8, [&] { float s; zvpsDotProd_32f(a.data(), b.data(), N, &s); return s; });
}
void BM_Dot32fc(benchmark::State& st) {
    const auto a = randomVec<float>(2 * N, 1), b = randomVec<float>(2 * N, 2);
    loop(st, 16, [&] {
        Zvp32fc s;
        zvpsDotProd_32fc(reinterpret_cast<const Zvp32fc*>(a.data()), reinterpret_cast<const Zvp32fc*>(b.data()), N, &s);
        return s.re;
    });
}
void BM_NormL2_32f(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1);
    loop(st, 4, [&] { float s; zvpsNorm_L2_32f(a.data(), N, &s); return s; });
}
#ifdef ZVP_HAVE_VOLK
void BM_VolkDot(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1), b = randomVec<float>(N, 2);
    loop(st, 8, [&] { float s; volk_32f_x2_dot_prod_32f(&s, a.data(), b.data(), N); return s; });
}
void BM_VolkDotSSE(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1), b = randomVec<float>(N, 2);
    loop(st, 8, [&] { float s; volk_32f_x2_dot_prod_32f_manual(&s, a.data(), b.data(), N, "u_sse"); return s; });
}
void BM_VolkDotc(benchmark::State& st) {
    const auto a = randomVec<float>(2 * N, 1), b = randomVec<float>(2 * N, 2);
    loop(st, 16, [&] {
        lv_32fc_t s;
        volk_32fc_x2_dot_prod_32fc(&s, reinterpret_cast<const lv_32fc_t*>(a.data()), reinterpret_cast<const lv_32fc_t*>(b.data()), N);
        return s;
    });
}
void BM_VolkDotcSSE3(benchmark::State& st) {
    const auto a = randomVec<float>(2 * N, 1), b = randomVec<float>(2 * N, 2);
    loop(st, 16, [&] {
        lv_32fc_t s;
        volk_32fc_x2_dot_prod_32fc_manual(&s, reinterpret_cast<const lv_32fc_t*>(a.data()),
                                          reinterpret_cast<const lv_32fc_t*>(b.data()), N, "u_sse3");
        return s;
    });
}
#endif
#ifdef ZVP_HAVE_EIGEN
void BM_EigenDot(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1), b = randomVec<float>(N, 2);
    const Eigen::Map<const Eigen::VectorXf> x(a.data(), N), y(b.data(), N);
    loop(st, 8, [&] { return x.dot(y); });
}
// Eigen's dot() conjugates its first operand; the plain product is the
// element-wise product summed.
void BM_EigenDotc(benchmark::State& st) {
    const auto a = randomVec<float>(2 * N, 1), b = randomVec<float>(2 * N, 2);
    const Eigen::Map<const Eigen::VectorXcf> x(reinterpret_cast<const std::complex<float>*>(a.data()), N),
        y(reinterpret_cast<const std::complex<float>*>(b.data()), N);
    loop(st, 16, [&] { return x.cwiseProduct(y).sum(); });
}
void BM_EigenNorm(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1);
    const Eigen::Map<const Eigen::VectorXf> v(a.data(), N);
    loop(st, 4, [&] { return v.norm(); });
}
#endif

// ---- MeanStdDev_32f ----------------------------------------------------------------------

void BM_MeanStdDev32f(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1);
    loop(st, 4, [&] { float m, s; zvpsMeanStdDev_32f(a.data(), N, &m, &s); return m + s; });
}
void BM_StdDev32f_Fast(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1);
    loop(st, 4, [&] { float s; zvpsStdDev_32f(a.data(), N, &s, zvpAlgHintFast); return s; });
}
#ifdef ZVP_HAVE_VOLK
void BM_VolkStdDevMean(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1);
    loop(st, 4, [&] { float m, s; volk_32f_stddev_and_mean_32f_x2(&s, &m, a.data(), N); return m + s; });
}
void BM_VolkStdDevMeanSSE(benchmark::State& st) {
    const auto a = randomVec<float>(N, 1);
    loop(st, 4, [&] { float m, s; volk_32f_stddev_and_mean_32f_x2_manual(&s, &m, a.data(), N, "u_sse"); return m + s; });
}
#endif

// ---- DotProd_16s32s_Sfs ---------------------------------------------------------------------

void BM_Dot16s32sSfs(benchmark::State& st) {
    const auto a = random16s(N, 1), b = random16s(N, 2);
    loop(st, 4, [&] { Zvp32s s; zvpsDotProd_16s32s_Sfs(a.data(), b.data(), N, &s, 8); return s; });
}
__attribute__((noinline)) std::int64_t plainDot16s(const Zvp16s* a, const Zvp16s* b, int n) {
    std::int64_t s = 0;
    for (int i = 0; i < n; ++i) s += std::int32_t(a[i]) * b[i];
    return s;
}
void BM_PlainDot16s(benchmark::State& st) {
    const auto a = random16s(N, 1), b = random16s(N, 2);
    loop(st, 4, [&] { return plainDot16s(a.data(), b.data(), N); });
}

#undef N

#define SIZES ->Arg(256)->Arg(4096)->Arg(1 << 20)
BENCHMARK(BM_Sum32f_Fast) SIZES;
BENCHMARK(BM_Sum32f_Accurate) SIZES;
BENCHMARK(BM_Memcpy32f) SIZES;
BENCHMARK(BM_Memcpy32fx2) SIZES;
BENCHMARK(BM_Dot32f) SIZES;
BENCHMARK(BM_Dot32fc) SIZES;
BENCHMARK(BM_NormL2_32f) SIZES;
BENCHMARK(BM_MeanStdDev32f) SIZES;
BENCHMARK(BM_StdDev32f_Fast) SIZES;
BENCHMARK(BM_Dot16s32sSfs) SIZES;
BENCHMARK(BM_PlainDot16s) SIZES;
#ifdef ZVP_HAVE_VOLK
BENCHMARK(BM_VolkAccumulator) SIZES;
BENCHMARK(BM_VolkAccumulatorSSE) SIZES;
BENCHMARK(BM_VolkDot) SIZES;
BENCHMARK(BM_VolkDotSSE) SIZES;
BENCHMARK(BM_VolkDotc) SIZES;
BENCHMARK(BM_VolkDotcSSE3) SIZES;
BENCHMARK(BM_VolkStdDevMean) SIZES;
BENCHMARK(BM_VolkStdDevMeanSSE) SIZES;
#endif
#ifdef ZVP_HAVE_EIGEN
BENCHMARK(BM_EigenSum) SIZES;
BENCHMARK(BM_EigenDot) SIZES;
BENCHMARK(BM_EigenDotc) SIZES;
BENCHMARK(BM_EigenNorm) SIZES;
#endif

}  // namespace
