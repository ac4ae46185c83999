// Window functions against the plain loop a user would write: one cos per
// element (two for Blackman) in double, the window applied in the data's
// precision; Kaiser against a loop that evaluates the same I0 polynomial
// approximations per element, the normaliser once. Built -O3 -msse4.2 like
// every benchmark. Out of place, source and destination of N elements.
#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "zvps.h"

namespace {

template <class T>
std::vector<T> randomVec(std::size_t n) {
    std::mt19937 rng(7);
    std::vector<T> v(n);
    for (auto& x : v) x = T(int(rng() % 2001) - 1000) / T(1000);
    return v;
}

template <class T, class F>
void run(benchmark::State& st, F body) {
    const int n = int(st.range(0));
    const auto s = randomVec<T>(n);
    std::vector<T> d(n);
    for (auto _ : st) {
        body(s.data(), d.data(), n);
        benchmark::DoNotOptimize(d.data());
        benchmark::ClobberMemory();
    }
    st.SetItemsProcessed(st.iterations() * n);
}

// The plain loops.
template <class T>
void plainCosine(const T* s, T* d, int n, double a0, double a1, double a2) {
    const double t = 2 * std::numbers::pi / (n - 1);
    for (int i = 0; i < n; ++i) {
        double w = a0 - a1 * std::cos(t * i);
        if (a2 != 0) w -= a2 * std::cos(2 * t * i);
        d[i] = s[i] * T(w);
    }
}
double i0(double x) {
    const double t = x / 3.75;
    if (x <= 3.75) {
        const double y = t * t;
        return 1 + y * (3.5156229 + y * (3.0899424 + y * (1.2067492 + y * (0.2659732 + y * (0.0360768 + y * 0.0045813)))));
    }
    const double u = 1 / t;
    return std::exp(x) / std::sqrt(x) *
           (0.39894228 + u * (0.01328592 + u * (0.00225319 + u * (-0.00157565 + u * (0.00916281 + u * (-0.02057706 +
            u * (0.02635537 + u * (-0.01647633 + u * 0.00392377))))))));
}
template <class T>
void plainKaiser(const T* s, T* d, int n, double alpha) {
    const double h = (n - 1) / 2.0, norm = 1 / i0(alpha * h);
    for (int i = 0; i < n; ++i) d[i] = s[i] * T(i0(alpha * std::sqrt(h * h - (i - h) * (i - h))) * norm);
}

constexpr double kAlpha = -0.16, kKaiser = 0.02;  // Kaiser: alpha H = 10 at 1024 points

#define PAIR(name, T, ours, plain)                                                                     \
    void BM_##name##_##T(benchmark::State& st) { run<T>(st, [](const T* s, T* d, int n) { ours; }); }  \
    void BM_Plain##name##_##T(benchmark::State& st) { run<T>(st, [](const T* s, T* d, int n) { plain; }); }
#define TYPES(name, ours32, ours64, plain)                   \
    PAIR(name, float, ours32, plain)                         \
    PAIR(name, double, ours64, plain)

TYPES(Hann, zvpsWinHann_32f(s, d, n), zvpsWinHann_64f(s, d, n), plainCosine(s, d, n, 0.5, 0.5, 0))
TYPES(Hamming, zvpsWinHamming_32f(s, d, n), zvpsWinHamming_64f(s, d, n), plainCosine(s, d, n, 0.54, 0.46, 0))
TYPES(Blackman, zvpsWinBlackman_32f(s, d, n, float(kAlpha)), zvpsWinBlackman_64f(s, d, n, kAlpha),
      plainCosine(s, d, n, (kAlpha + 1) / 2, 0.5, kAlpha / 2))
TYPES(Kaiser, zvpsWinKaiser_32f(s, d, n, float(kKaiser * 1024 / n)), zvpsWinKaiser_64f(s, d, n, kKaiser * 1024 / n),
      plainKaiser(s, d, n, kKaiser * 1024 / n))

#define SIZES ->Arg(256)->Arg(4096)->Arg(1 << 20)
#define BOTH(name, T) BENCHMARK(BM_##name##_##T) SIZES; BENCHMARK(BM_Plain##name##_##T) SIZES;
BOTH(Hann, float)
BOTH(Hann, double)
BOTH(Hamming, float)
BOTH(Hamming, double)
BOTH(Blackman, float)
BOTH(Blackman, double)
BOTH(Kaiser, float)
BOTH(Kaiser, double)

}  // namespace
