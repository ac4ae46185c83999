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
#include <map>
#include <utility>
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

// The buffers of a benchmark: the library and its peers read and write the
// very same arrays (slot, size), so placement effects cancel in the ratios.
template <class T>
T* shared(int slot, std::size_t n, unsigned seed, bool nonZero = false) {
    static std::map<std::pair<int, std::size_t>, std::vector<T>> pool;
    auto& v = pool[{slot, n}];
    if (v.size() != n) v = randomVec<T>(n, seed, nonZero);
    return v.data();
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
    float* a = shared<float>(0, n, 1);
    float* d = shared<float>(1, n, 2);
    loop(st, d, [&] { std::memcpy(d, a, std::size_t(n) * sizeof(float)); });
    setBytes(st, n, sizeof(float), 2);
}

void BM_Memcpy64(benchmark::State& st) {
    const int n = int(st.range(0));
    double* a = shared<double>(0, n, 1);
    double* d = shared<double>(1, n, 2);
    loop(st, d, [&] { std::memcpy(d, a, std::size_t(n) * sizeof(double)); });
    setBytes(st, n, sizeof(double), 2);
}

// ---- Mul_32fc ----------------------------------------------------------------------

void BM_Mul32fc_Library(benchmark::State& st) {
    const int n = int(st.range(0));
    const auto* ca = reinterpret_cast<const Zvp32fc*>(shared<float>(2, 2 * n, 1));
    const auto* cb = reinterpret_cast<const Zvp32fc*>(shared<float>(3, 2 * n, 2));
    auto* cd = reinterpret_cast<Zvp32fc*>(shared<float>(4, 2 * n, 3));
    loop(st, cd, [&] { zvpsMul_32fc(ca, cb, cd, n); });
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
    const auto* ca = reinterpret_cast<const Zvp32fc*>(shared<float>(2, 2 * n, 1));
    const auto* cb = reinterpret_cast<const Zvp32fc*>(shared<float>(3, 2 * n, 2));
    auto* cd = reinterpret_cast<Zvp32fc*>(shared<float>(4, 2 * n, 3));
    loop(st, cd, [&] { plainMul32fc(ca, cb, cd, n); });
    setBytes(st, n, sizeof(Zvp32fc), 3);
}

// ---- MulC_32f ----------------------------------------------------------------------

void BM_MulC32f_Library(benchmark::State& st) {
    const int n = int(st.range(0));
    float* a = shared<float>(5, n, 3);
    float* d = shared<float>(6, n, 4);
    loop(st, d, [&] { zvpsMulC_32f(a, 1.25f, d, n); });
    setBytes(st, n, sizeof(float), 2);
}

__attribute__((noinline)) void plainMulC32f(const float* a, float c, float* d, int n) {
    for (int i = 0; i < n; ++i) d[i] = a[i] * c;
}

void BM_MulC32f_PlainLoop(benchmark::State& st) {
    const int n = int(st.range(0));
    float* a = shared<float>(5, n, 3);
    float* d = shared<float>(6, n, 4);
    loop(st, d, [&] { plainMulC32f(a, 1.25f, d, n); });
    setBytes(st, n, sizeof(float), 2);
}

// ---- Mul_16s_Sfs -------------------------------------------------------------------

void BM_Mul16sSfs_Library(benchmark::State& st) {
    const int n = int(st.range(0)), sf = int(st.range(1));
    int16_t* a = shared<int16_t>(7, n, 4);
    int16_t* b = shared<int16_t>(8, n, 5);
    int16_t* d = shared<int16_t>(9, n, 6);
    loop(st, d, [&] { zvpsMul_16s_Sfs(a, b, d, n, sf); });
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
    int16_t* a = shared<int16_t>(7, n, 4);
    int16_t* b = shared<int16_t>(8, n, 5);
    int16_t* d = shared<int16_t>(9, n, 6);
    loop(st, d, [&] { scalarMul16sSfs(a, b, d, n, sf); });
    setBytes(st, n, sizeof(int16_t), 3);
}

void BM_Mul16sSfs_PlainLoop(benchmark::State& st) {
    const int n = int(st.range(0)), sf = int(st.range(1));
    int16_t* a = shared<int16_t>(7, n, 4);
    int16_t* b = shared<int16_t>(8, n, 5);
    int16_t* d = shared<int16_t>(9, n, 6);
    loop(st, d, [&] { plainMul16sSfs(a, b, d, n, sf); });
    setBytes(st, n, sizeof(int16_t), 3);
}

// ---- Div_16s_Sfs -------------------------------------------------------------------

void BM_Div16sSfs_Library(benchmark::State& st) {
    const int n = int(st.range(0)), sf = int(st.range(1));
    int16_t* a = shared<int16_t>(10, n, 6, true);
    int16_t* b = shared<int16_t>(11, n, 7);
    int16_t* d = shared<int16_t>(12, n, 8);
    loop(st, d, [&] { zvpsDiv_16s_Sfs(a, b, d, n, sf); });
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
    int16_t* a = shared<int16_t>(10, n, 6, true);
    int16_t* b = shared<int16_t>(11, n, 7);
    int16_t* d = shared<int16_t>(12, n, 8);
    loop(st, d, [&] { plainDiv16sSfs(a, b, d, n, sf); });
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
