// Random generators against the standard library in the same binary:
// std::mt19937 with std::uniform_real_distribution<float> and
// std::normal_distribution<float>, filling the same vectors. Both sides keep
// their generator across iterations, so each iteration continues a sequence.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "zvps.h"

namespace {

#define N int(st.range(0))

template <class F>
void loop(benchmark::State& st, std::vector<float>& v, F body) {
    for (auto _ : st) {
        body();
        benchmark::DoNotOptimize(v.data());
        benchmark::ClobberMemory();
    }
    st.SetItemsProcessed(st.iterations() * st.range(0));
}

void BM_RandUniform32f(benchmark::State& st) {
    std::vector<float> v(N);
    ZvpsRandUniState_32f* s = nullptr;
    zvpsRandUniformInitAlloc_32f(&s, -1.0f, 1.0f, 2024u);
    loop(st, v, [&] { zvpsRandUniform_32f(v.data(), N, s); });
    zvpsRandUniformFree_32f(s);
}
void BM_StdUniform32f(benchmark::State& st) {
    std::vector<float> v(N);
    std::mt19937 rng(2024u);
    std::uniform_real_distribution<float> d(-1.0f, 1.0f);
    loop(st, v, [&] {
        for (float& x : v) x = d(rng);
    });
}
void BM_RandGauss32f(benchmark::State& st) {
    std::vector<float> v(N);
    ZvpsRandGaussState_32f* s = nullptr;
    zvpsRandGaussInitAlloc_32f(&s, 0.0f, 1.0f, 2024u);
    loop(st, v, [&] { zvpsRandGauss_32f(v.data(), N, s); });
    zvpsRandGaussFree_32f(s);
}
void BM_StdGauss32f(benchmark::State& st) {
    std::vector<float> v(N);
    std::mt19937 rng(2024u);
    std::normal_distribution<float> d(0.0f, 1.0f);
    loop(st, v, [&] {
        for (float& x : v) x = d(rng);
    });
}
void BM_RandGaussDirect32f(benchmark::State& st) {
    std::vector<float> v(N);
    unsigned seed = 2024u;
    loop(st, v, [&] { zvpsRandGauss_Direct_32f(v.data(), N, 0.0f, 1.0f, &seed); });
}

#define SIZES ->Arg(64)->Arg(1024)->Arg(65536)
BENCHMARK(BM_RandUniform32f) SIZES;
BENCHMARK(BM_StdUniform32f) SIZES;
BENCHMARK(BM_RandGauss32f) SIZES;
BENCHMARK(BM_StdGauss32f) SIZES;
BENCHMARK(BM_RandGaussDirect32f) SIZES;

}  // namespace
