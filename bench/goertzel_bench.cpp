// Goertzel against the plain second-order recurrence written out here (the
// loop a user writes, built -O3 -msse4.2 like every benchmark): one serial
// chain per part, its coefficient and final rotation from libm per call, in
// single precision (the usual loop) and in double (the one that matches our
// accuracy). N = 205 is the length of a telephone-tone detector block.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "zvps.h"

namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr float kFreq = 0.1093f;  // 1209 Hz at 11025 Hz... any bin off the grid

std::vector<float> randomVec(std::size_t n, unsigned seed) {
    std::mt19937 rng(seed);
    std::vector<float> v(n);
    for (auto& x : v) x = float(int(rng() % 2001) - 1000) / 1000.0f;
    return v;
}

// X(f) from the recurrence s[n] = x[n] + c s[n-1] - s[n-2] and the rotation
// by exp(-i w (N-1)).
template <class A>
Zvp32fc loopReal(const float* x, int n, float f) {
    const double w = kTwoPi * f;
    const A c = A(2 * std::cos(w));
    A s1 = 0, s2 = 0;
    for (int i = 0; i < n; ++i) {
        const A s = x[i] + c * s1 - s2;
        s2 = s1;
        s1 = s;
    }
    const double yr = s1 - s2 * std::cos(w), yi = s2 * std::sin(w);
    const double a = -w * (n - 1), cr = std::cos(a), ci = std::sin(a);
    return {float(yr * cr - yi * ci), float(yr * ci + yi * cr)};
}
template <class A>
Zvp32fc loopComplex(const Zvp32fc* x, int n, float f) {
    const double w = kTwoPi * f;
    const A c = A(2 * std::cos(w));
    A r1 = 0, r2 = 0, i1 = 0, i2 = 0;
    for (int i = 0; i < n; ++i) {
        const A r = x[i].re + c * r1 - r2, m = x[i].im + c * i1 - i2;
        r2 = r1, r1 = r, i2 = i1, i1 = m;
    }
    // y = s1 - e^{-iw} s2 for the complex state s = r + i m
    const double cw = std::cos(w), sw = std::sin(w);
    const double yr = r1 - (cw * r2 + sw * i2), yi = i1 - (cw * i2 - sw * r2);
    const double a = -w * (n - 1), cr = std::cos(a), ci = std::sin(a);
    return {float(yr * cr - yi * ci), float(yr * ci + yi * cr)};
}

template <class F>
void loop(benchmark::State& st, std::size_t bytes, F body) {
    for (auto _ : st) {
        auto r = body();
        benchmark::DoNotOptimize(r);
    }
    st.SetBytesProcessed(st.iterations() * st.range(0) * int64_t(bytes));
}
#define N int(st.range(0))

void BM_Goertz32f(benchmark::State& st) {
    const auto a = randomVec(N, 1);
    loop(st, 4, [&] { Zvp32fc r; zvpsGoertz_32f(a.data(), N, &r, kFreq); return r; });
}
void BM_LoopFloat32f(benchmark::State& st) {
    const auto a = randomVec(N, 1);
    loop(st, 4, [&] { return loopReal<float>(a.data(), N, kFreq); });
}
void BM_LoopDouble32f(benchmark::State& st) {
    const auto a = randomVec(N, 1);
    loop(st, 4, [&] { return loopReal<double>(a.data(), N, kFreq); });
}
void BM_Goertz32fc(benchmark::State& st) {
    const auto a = randomVec(2 * std::size_t(N), 2);
    const auto* c = reinterpret_cast<const Zvp32fc*>(a.data());
    loop(st, 8, [&] { Zvp32fc r; zvpsGoertz_32fc(c, N, &r, kFreq); return r; });
}
void BM_LoopFloat32fc(benchmark::State& st) {
    const auto a = randomVec(2 * std::size_t(N), 2);
    const auto* c = reinterpret_cast<const Zvp32fc*>(a.data());
    loop(st, 8, [&] { return loopComplex<float>(c, N, kFreq); });
}
void BM_LoopDouble32fc(benchmark::State& st) {
    const auto a = randomVec(2 * std::size_t(N), 2);
    const auto* c = reinterpret_cast<const Zvp32fc*>(a.data());
    loop(st, 8, [&] { return loopComplex<double>(c, N, kFreq); });
}
void BM_GoertzTwo32f(benchmark::State& st) {
    const auto a = randomVec(N, 3);
    const float f[2] = {kFreq, 0.1545f};
    loop(st, 4, [&] {
        Zvp32fc r[2];
        zvpsGoertzTwo_32f(a.data(), N, r, f);
        return r[0];
    });
}
void BM_TwoLoopsFloat32f(benchmark::State& st) {
    const auto a = randomVec(N, 3);
    loop(st, 4, [&] {
        Zvp32fc r[2] = {loopReal<float>(a.data(), N, kFreq), loopReal<float>(a.data(), N, 0.1545f)};
        return r[0];
    });
}

#define SIZES ->Arg(205)->Arg(4096)
BENCHMARK(BM_Goertz32f) SIZES;
BENCHMARK(BM_LoopFloat32f) SIZES;
BENCHMARK(BM_LoopDouble32f) SIZES;
BENCHMARK(BM_Goertz32fc) SIZES;
BENCHMARK(BM_LoopFloat32fc) SIZES;
BENCHMARK(BM_LoopDouble32fc) SIZES;
BENCHMARK(BM_GoertzTwo32f) SIZES;
BENCHMARK(BM_TwoLoopsFloat32f) SIZES;

}  // namespace
