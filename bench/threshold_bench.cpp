// Threshold_LT_32f against the plain loop a user would write,
// d[i] = s[i] < level ? level : s[i], built -O3 -msse4.2, at 256, 4096 and
// 1048576 elements, in the same run. Half the elements lie below the level.
#include <benchmark/benchmark.h>

#include <random>

#include "zvps.h"

namespace {

constexpr float kLevel = 0.0f;

struct Buffers {
    explicit Buffers(int n) : n(n), src(zvpsMalloc_32f(n)), dst(zvpsMalloc_32f(n)) {
        std::mt19937 rng(1);
        std::uniform_real_distribution<float> dist(-1.0f, 1.0f);
        for (int i = 0; i < n; ++i) src[i] = dist(rng), dst[i] = 0.0f;
    }
    ~Buffers() {
        zvpsFree(src);
        zvpsFree(dst);
    }
    int n;
    Zvp32f* src;
    Zvp32f* dst;
};

void sizes(benchmark::internal::Benchmark* b) {
    for (long n : {256L, 4096L, 1048576L}) b->Arg(n);
}

void BM_zvpThreshold_LT_32f(benchmark::State& st) {
    Buffers m(int(st.range(0)));
    for (auto _ : st) {
        zvpsThreshold_LT_32f(m.src, m.dst, m.n, kLevel);
        benchmark::ClobberMemory();
    }
    st.SetItemsProcessed(st.iterations() * st.range(0));
}

void BM_loopThreshold_LT(benchmark::State& st) {
    Buffers m(int(st.range(0)));
    for (auto _ : st) {
        const Zvp32f* s = m.src;
        Zvp32f* d = m.dst;
        const float level = kLevel;
        benchmark::DoNotOptimize(level);
        for (int i = 0; i < m.n; ++i) d[i] = s[i] < level ? level : s[i];
        benchmark::ClobberMemory();
    }
    st.SetItemsProcessed(st.iterations() * st.range(0));
}

BENCHMARK(BM_zvpThreshold_LT_32f)->Apply(sizes);
BENCHMARK(BM_loopThreshold_LT)->Apply(sizes);

}  // namespace
