// Tones and ramps against the plain loops a user would write (built here
// with -O3 -msse4.2 like every benchmark): cos per element for the tone,
// offset + slope * n for the ramp. Bytes processed count the bytes written.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "zvps.h"

namespace {

constexpr double kTwoPi = 6.283185307179586;

template <class T, class F>
void loop(benchmark::State& st, F body) {
    std::vector<T> d(st.range(0));
    for (auto _ : st) {
        body(d.data(), int(st.range(0)));
        benchmark::DoNotOptimize(d.data());
        benchmark::ClobberMemory();
    }
    st.SetBytesProcessed(st.iterations() * st.range(0) * int64_t(sizeof(T)));
}

void BM_Tone32f(benchmark::State& st) {
    loop<float>(st, [](float* d, int n) {
        float ph = 0.5f;
        zvpsTone_Direct_32f(d, n, 1.0f, 0.0123f, &ph, zvpAlgHintNone);
    });
}
void BM_LoopCos32f(benchmark::State& st) {
    loop<float>(st, [](float* d, int n) {
        const float w = float(kTwoPi) * 0.0123f;
        for (int i = 0; i < n; ++i) d[i] = std::cos(w * float(i) + 0.5f);
    });
}
void BM_LoopCos32fDouble(benchmark::State& st) {
    loop<float>(st, [](float* d, int n) {
        const double w = kTwoPi * 0.0123;
        for (int i = 0; i < n; ++i) d[i] = float(std::cos(w * i + 0.5));
    });
}
void BM_Tone64f(benchmark::State& st) {
    loop<double>(st, [](double* d, int n) {
        double ph = 0.5;
        zvpsTone_Direct_64f(d, n, 1.0, 0.0123, &ph, zvpAlgHintNone);
    });
}
void BM_LoopCos64f(benchmark::State& st) {
    loop<double>(st, [](double* d, int n) {
        const double w = kTwoPi * 0.0123;
        for (int i = 0; i < n; ++i) d[i] = std::cos(w * i + 0.5);
    });
}
void BM_Ramp32f(benchmark::State& st) {
    loop<float>(st, [](float* d, int n) { zvpsVectorRamp_32f(d, n, 0.25f, 0.5f); });
}
void BM_LoopRamp32f(benchmark::State& st) {
    loop<float>(st, [](float* d, int n) {
        for (int i = 0; i < n; ++i) d[i] = 0.25f + 0.5f * float(i);
    });
}

#define SIZES ->Arg(64)->Arg(1024)->Arg(16384)->Arg(1 << 20)
BENCHMARK(BM_Tone32f) SIZES;
BENCHMARK(BM_LoopCos32f) SIZES;
BENCHMARK(BM_LoopCos32fDouble) SIZES;
BENCHMARK(BM_Tone64f) SIZES;
BENCHMARK(BM_LoopCos64f) SIZES;
BENCHMARK(BM_Ramp32f) SIZES;
BENCHMARK(BM_LoopRamp32f) SIZES;

}  // namespace
