// Mul_32fc, MulC_32f, Mul_16s_Sfs and Div_16s_Sfs against plain C++ loops
// built in this binary (-O3 -msse4.2: the float loops are auto-vectorised,
// the integer loops compute the same exact rule per element; gcc vectorises
// the Mul_16s_Sfs loop as well, so a copy with vectorisation switched off is
// measured too), and against memcpy of the same number of elements. Bytes processed count every byte read and written: a two-source
// operation moves two sources and a destination, MulC and memcpy one source
// and a destination.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "zvps.h"

namespace {

const std::vector<int64_t> kSizes = {256, 4096, 1 << 20};

template <class T>
std::vector<T> randomVec(std::size_t n, unsigned seed, bool nonZero = false) {
    std::mt19937 rng(seed);
    std::vector<T> v(n);
    for (auto& x : v) {
        if constexpr (std::is_floating_point_v<T>)
            x = T(int(rng() % 2001) - 1000) / T(7);
        else
            x = T(rng());
        if (nonZero && x == T(0)) x = T(1);
    }
    return v;
}

void setBytes(benchmark::State& st, int64_t n, std::size_t elem, int streams) {
    st.SetBytesProcessed(st.iterations() * n * int64_t(elem) * streams);
}

template <class F>
void loop(benchmark::State& st, void* out, F f) {
    for (auto _ : st) {
        f();
        benchmark::DoNotOptimize(out);
        benchmark::ClobberMemory();
    }
}

// ---- memcpy of n elements of 4 and of 8 bytes: the bandwidth references --------

void BM_Memcpy32(benchmark::State& st) {
    const int n = int(st.range(0));
    auto a = randomVec<float>(n, 1);
    std::vector<float> d(n);
    loop(st, d.data(), [&] { std::memcpy(d.data(), a.data(), std::size_t(n) * sizeof(float)); });
    setBytes(st, n, sizeof(float), 2);
}

void BM_Memcpy64(benchmark::State& st) {
    const int n = int(st.range(0));
    auto a = randomVec<double>(n, 1);
    std::vector<double> d(n);
    loop(st, d.data(), [&] { std::memcpy(d.data(), a.data(), std::size_t(n) * sizeof(double)); });
    setBytes(st, n, sizeof(double), 2);
}

// ---- Mul_32fc ----------------------------------------------------------------------

void BM_Mul32fc_Library(benchmark::State& st) {
    const int n = int(st.range(0));
    auto a = randomVec<float>(2 * n, 1), b = randomVec<float>(2 * n, 2);
    std::vector<float> d(2 * n);
    const auto* ca = reinterpret_cast<const Zvp32fc*>(a.data());
    const auto* cb = reinterpret_cast<const Zvp32fc*>(b.data());
    auto* cd = reinterpret_cast<Zvp32fc*>(d.data());
    loop(st, d.data(), [&] { zvpsMul_32fc(ca, cb, cd, n); });
    setBytes(st, n, sizeof(Zvp32fc), 3);
}

__attribute__((noinline)) void plainMul32fc(const Zvp32fc* a, const Zvp32fc* b, Zvp32fc* d, int n) {
    for (int i = 0; i < n; ++i) {
        const float re = a[i].re * b[i].re - a[i].im * b[i].im;
        const float im = a[i].re * b[i].im + a[i].im * b[i].re;
        d[i].re = re;
        d[i].im = im;
    }
}

void BM_Mul32fc_PlainLoop(benchmark::State& st) {
    const int n = int(st.range(0));
    auto a = randomVec<float>(2 * n, 1), b = randomVec<float>(2 * n, 2);
    std::vector<float> d(2 * n);
    const auto* ca = reinterpret_cast<const Zvp32fc*>(a.data());
    const auto* cb = reinterpret_cast<const Zvp32fc*>(b.data());
    auto* cd = reinterpret_cast<Zvp32fc*>(d.data());
    loop(st, d.data(), [&] { plainMul32fc(ca, cb, cd, n); });
    setBytes(st, n, sizeof(Zvp32fc), 3);
}

// ---- MulC_32f ----------------------------------------------------------------------

void BM_MulC32f_Library(benchmark::State& st) {
    const int n = int(st.range(0));
    auto a = randomVec<float>(n, 3);
    std::vector<float> d(n);
    loop(st, d.data(), [&] { zvpsMulC_32f(a.data(), 1.25f, d.data(), n); });
    setBytes(st, n, sizeof(float), 2);
}

__attribute__((noinline)) void plainMulC32f(const float* a, float c, float* d, int n) {
    for (int i = 0; i < n; ++i) d[i] = a[i] * c;
}

void BM_MulC32f_PlainLoop(benchmark::State& st) {
    const int n = int(st.range(0));
    auto a = randomVec<float>(n, 3);
    std::vector<float> d(n);
    loop(st, d.data(), [&] { plainMulC32f(a.data(), 1.25f, d.data(), n); });
    setBytes(st, n, sizeof(float), 2);
}

// ---- Mul_16s_Sfs -------------------------------------------------------------------

void BM_Mul16sSfs_Library(benchmark::State& st) {
    const int n = int(st.range(0)), sf = int(st.range(1));
    auto a = randomVec<int16_t>(n, 4), b = randomVec<int16_t>(n, 5);
    std::vector<int16_t> d(n);
    loop(st, d.data(), [&] { zvpsMul_16s_Sfs(a.data(), b.data(), d.data(), n, sf); });
    setBytes(st, n, sizeof(int16_t), 3);
}

// The rule per element: exact product, round half to even by the scale
// factor (|R| <= 2^30, so no overflow for 0 <= sf <= 30), saturate.
__attribute__((noinline)) void plainMul16sSfs(const int16_t* a, const int16_t* b, int16_t* d, int n, int sf) {
    for (int i = 0; i < n; ++i) {
        int r = int(a[i]) * int(b[i]);
        if (sf > 0) r = (r + (1 << (sf - 1)) - 1 + ((r >> sf) & 1)) >> sf;
        d[i] = int16_t(r > 32767 ? 32767 : (r < -32768 ? -32768 : r));
    }
}

// The same loop with auto-vectorisation switched off: one element at a time.
__attribute__((noinline, optimize("no-tree-vectorize"))) void scalarMul16sSfs(const int16_t* a, const int16_t* b,
                                                                               int16_t* d, int n, int sf) {
    for (int i = 0; i < n; ++i) {
        int r = int(a[i]) * int(b[i]);
        if (sf > 0) r = (r + (1 << (sf - 1)) - 1 + ((r >> sf) & 1)) >> sf;
        d[i] = int16_t(r > 32767 ? 32767 : (r < -32768 ? -32768 : r));
    }
}

void BM_Mul16sSfs_ScalarLoop(benchmark::State& st) {
    const int n = int(st.range(0)), sf = int(st.range(1));
    auto a = randomVec<int16_t>(n, 4), b = randomVec<int16_t>(n, 5);
    std::vector<int16_t> d(n);
    loop(st, d.data(), [&] { scalarMul16sSfs(a.data(), b.data(), d.data(), n, sf); });
    setBytes(st, n, sizeof(int16_t), 3);
}

void BM_Mul16sSfs_PlainLoop(benchmark::State& st) {
    const int n = int(st.range(0)), sf = int(st.range(1));
    auto a = randomVec<int16_t>(n, 4), b = randomVec<int16_t>(n, 5);
    std::vector<int16_t> d(n);
    loop(st, d.data(), [&] { plainMul16sSfs(a.data(), b.data(), d.data(), n, sf); });
    setBytes(st, n, sizeof(int16_t), 3);
}

// ---- Div_16s_Sfs -------------------------------------------------------------------

void BM_Div16sSfs_Library(benchmark::State& st) {
    const int n = int(st.range(0)), sf = int(st.range(1));
    auto a = randomVec<int16_t>(n, 6, true), b = randomVec<int16_t>(n, 7);
    std::vector<int16_t> d(n);
    loop(st, d.data(), [&] { zvpsDiv_16s_Sfs(a.data(), b.data(), d.data(), n, sf); });
    setBytes(st, n, sizeof(int16_t), 3);
}

// The rule per element in integers: q = b / (a * 2^sf) (or b * 2^-sf / a)
// rounded to nearest with ties to even, saturated; a zero divisor gives the
// substitute.
__attribute__((noinline)) void plainDiv16sSfs(const int16_t* a, const int16_t* b, int16_t* d, int n, int sf) {
    for (int i = 0; i < n; ++i) {
        if (a[i] == 0) {
            d[i] = int16_t(b[i] > 0 ? 32767 : (b[i] < 0 ? -32768 : 0));
            continue;
        }
        int64_t num = b[i], den = a[i];
        if (sf >= 0) den *= int64_t(1) << sf;
        else num *= int64_t(1) << -sf;
        if (den < 0) {
            num = -num;
            den = -den;
        }
        int64_t q = num / den, r = num % den;
        if (r < 0) {  // floor
            q -= 1;
            r += den;
        }
        if (2 * r > den || (2 * r == den && (q & 1))) q += 1;
        d[i] = int16_t(q > 32767 ? 32767 : (q < -32768 ? -32768 : q));
    }
}

void BM_Div16sSfs_PlainLoop(benchmark::State& st) {
    const int n = int(st.range(0)), sf = int(st.range(1));
    auto a = randomVec<int16_t>(n, 6, true), b = randomVec<int16_t>(n, 7);
    std::vector<int16_t> d(n);
    loop(st, d.data(), [&] { plainDiv16sSfs(a.data(), b.data(), d.data(), n, sf); });
    setBytes(st, n, sizeof(int16_t), 3);
}

void sizes(benchmark::internal::Benchmark* b) {
    for (auto n : kSizes) b->Arg(n);
}
void sizesAndFactors(benchmark::internal::Benchmark* b) {
    for (int sf : {0, 3})
        for (auto n : kSizes) b->Args({n, sf});
}
void sizesAndDivFactors(benchmark::internal::Benchmark* b) {
    for (int sf : {0, -10})
        for (auto n : kSizes) b->Args({n, sf});
}

}  // namespace

BENCHMARK(BM_Memcpy32)->Apply(sizes);
BENCHMARK(BM_Memcpy64)->Apply(sizes);
BENCHMARK(BM_Mul32fc_Library)->Apply(sizes);
BENCHMARK(BM_Mul32fc_PlainLoop)->Apply(sizes);
BENCHMARK(BM_MulC32f_Library)->Apply(sizes);
BENCHMARK(BM_MulC32f_PlainLoop)->Apply(sizes);
BENCHMARK(BM_Mul16sSfs_Library)->Apply(sizesAndFactors);
BENCHMARK(BM_Mul16sSfs_PlainLoop)->Apply(sizesAndFactors);
BENCHMARK(BM_Mul16sSfs_ScalarLoop)->Apply(sizesAndFactors);
BENCHMARK(BM_Div16sSfs_Library)->Apply(sizesAndDivFactors);
BENCHMARK(BM_Div16sSfs_PlainLoop)->Apply(sizesAndDivFactors);
