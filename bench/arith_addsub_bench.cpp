// Add_32f and Add_16s_Sfs against plain C++ loops built in this binary
// (-O3 -msse4.2, so the float loop is auto-vectorised) and against memcpy.
// Bytes processed count every byte read and written: an add moves two
// sources and one destination, memcpy one source and one destination.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "zvps.h"

namespace {

const std::vector<int64_t> kSizes = {256, 4096, 1 << 20};

template <class T>
std::vector<T> randomVec(std::size_t n, unsigned seed) {
    std::mt19937 rng(seed);
    std::vector<T> v(n);
    for (auto& x : v) {
        if constexpr (std::is_floating_point_v<T>)
            x = T(int(rng() % 2001) - 1000) / T(7);
        else
            x = T(rng());
    }
    return v;
}

void setBytes(benchmark::State& st, int64_t n, std::size_t elem, int streams) {
    st.SetBytesProcessed(st.iterations() * n * int64_t(elem) * streams);
}

// ---- Add_32f -------------------------------------------------------------------

void BM_Add32f_Library(benchmark::State& st) {
    const int n = int(st.range(0));
    auto a = randomVec<float>(n, 1), b = randomVec<float>(n, 2);
    std::vector<float> d(n);
    for (auto _ : st) {
        zvpsAdd_32f(a.data(), b.data(), d.data(), n);
        benchmark::DoNotOptimize(d.data());
        benchmark::ClobberMemory();
    }
    setBytes(st, n, sizeof(float), 3);
}

__attribute__((noinline)) void plainAdd32f(const float* a, const float* b, float* d, int n) {
    for (int i = 0; i < n; ++i) d[i] = a[i] + b[i];
}

void BM_Add32f_PlainLoop(benchmark::State& st) {
    const int n = int(st.range(0));
    auto a = randomVec<float>(n, 1), b = randomVec<float>(n, 2);
    std::vector<float> d(n);
    for (auto _ : st) {
        plainAdd32f(a.data(), b.data(), d.data(), n);
        benchmark::DoNotOptimize(d.data());
        benchmark::ClobberMemory();
    }
    setBytes(st, n, sizeof(float), 3);
}

void BM_Memcpy32f(benchmark::State& st) {
    const int n = int(st.range(0));
    auto a = randomVec<float>(n, 1);
    std::vector<float> d(n);
    for (auto _ : st) {
        std::memcpy(d.data(), a.data(), std::size_t(n) * sizeof(float));
        benchmark::DoNotOptimize(d.data());
        benchmark::ClobberMemory();
    }
    setBytes(st, n, sizeof(float), 2);
}

// ---- Add_16s_Sfs -----------------------------------------------------------------

void BM_Add16sSfs_Library(benchmark::State& st) {
    const int n = int(st.range(0)), sf = int(st.range(1));
    auto a = randomVec<int16_t>(n, 3), b = randomVec<int16_t>(n, 4);
    std::vector<int16_t> d(n);
    for (auto _ : st) {
        zvpsAdd_16s_Sfs(a.data(), b.data(), d.data(), n, sf);
        benchmark::DoNotOptimize(d.data());
        benchmark::ClobberMemory();
    }
    setBytes(st, n, sizeof(int16_t), 3);
}

// The rule written per element in plain C++: exact sum, round half to even
// by the scale factor, saturate.
__attribute__((noinline)) void plainAdd16sSfs(const int16_t* a, const int16_t* b, int16_t* d,
                                              int n, int sf) {
    for (int i = 0; i < n; ++i) {
        int r = int(a[i]) + int(b[i]);
        if (sf > 0) r = (r + (1 << (sf - 1)) - 1 + ((r >> sf) & 1)) >> sf;
        d[i] = int16_t(r > 32767 ? 32767 : (r < -32768 ? -32768 : r));
    }
}

void BM_Add16sSfs_PlainLoop(benchmark::State& st) {
    const int n = int(st.range(0)), sf = int(st.range(1));
    auto a = randomVec<int16_t>(n, 3), b = randomVec<int16_t>(n, 4);
    std::vector<int16_t> d(n);
    for (auto _ : st) {
        plainAdd16sSfs(a.data(), b.data(), d.data(), n, sf);
        benchmark::DoNotOptimize(d.data());
        benchmark::ClobberMemory();
    }
    setBytes(st, n, sizeof(int16_t), 3);
}

void sizes(benchmark::internal::Benchmark* b) {
    for (auto n : kSizes) b->Arg(n);
}
void sizesAndFactors(benchmark::internal::Benchmark* b) {
    for (int sf : {0, 1, 3})
        for (auto n : kSizes) b->Args({n, sf});
}

}  // namespace

BENCHMARK(BM_Add32f_Library)->Apply(sizes);
BENCHMARK(BM_Add32f_PlainLoop)->Apply(sizes);
BENCHMARK(BM_Memcpy32f)->Apply(sizes);
BENCHMARK(BM_Add16sSfs_Library)->Apply(sizesAndFactors);
BENCHMARK(BM_Add16sSfs_PlainLoop)->Apply(sizesAndFactors);
