// Conv_32f and CrossCorr_32f (all src1Len + src2Len - 1 lags) against a
// direct loop written here (built -O3 like every benchmark) and a product
// through FFTW (r2c of both zero-padded operands, spectral product, c2r;
// FFTW_MEASURE plans made outside the timed loop), at 256 x 256, 1000 x 64
// and 100000 x 1000.
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <complex>
#include <cstring>
#include <random>
#include <vector>

#include "zvps.h"

namespace {

std::vector<float> signal(int n, int seed) {
    std::mt19937 g(seed + n);
    std::uniform_real_distribution<float> d(-1.f, 1.f);
    std::vector<float> v(n);
    for (auto& x : v) x = d(g);
    return v;
}

void args(benchmark::internal::Benchmark* b) {
    b->Args({256, 256})->Args({1000, 64})->Args({100000, 1000})->Unit(benchmark::kMicrosecond);
}

void BM_zvpConv32f(benchmark::State& st) {
    const int n1 = int(st.range(0)), n2 = int(st.range(1));
    const auto a = signal(n1, 1), b = signal(n2, 2);
    std::vector<float> y(n1 + n2 - 1);
    for (auto _ : st) {
        zvpsConv_32f(a.data(), n1, b.data(), n2, y.data());
        benchmark::DoNotOptimize(y.data());
    }
}

void BM_loopConv32f(benchmark::State& st) {
    const int n1 = int(st.range(0)), n2 = int(st.range(1));
    const auto a = signal(n1, 1), b = signal(n2, 2);
    std::vector<float> y(n1 + n2 - 1);
    for (auto _ : st) {
        std::fill(y.begin(), y.end(), 0.0f);
        float* __restrict yp = y.data();
        const float* __restrict ap = a.data();
        for (int k = 0; k < n2; ++k) {
            const float bk = b[k];
            for (int i = 0; i < n1; ++i) yp[i + k] += ap[i] * bk;
        }
        benchmark::DoNotOptimize(y.data());
    }
}

void BM_loopCorr32f(benchmark::State& st) {
    const int n1 = int(st.range(0)), n2 = int(st.range(1));
    const auto a = signal(n1, 1), b = signal(n2, 2);
    std::vector<float> y(n1 + n2 - 1);
    for (auto _ : st) {
        // y[l + n1 - 1] = sum_k a[k] b[k + l]: for each k, an axpy of b.
        std::fill(y.begin(), y.end(), 0.0f);
        float* __restrict yp = y.data();
        const float* __restrict bp = b.data();
        for (int k = 0; k < n1; ++k) {
            const float ak = a[k];
            float* yk = yp + (n1 - 1 - k);
            for (int j = 0; j < n2; ++j) yk[j] += ak * bp[j];
        }
        benchmark::DoNotOptimize(y.data());
    }
}

void BM_zvpCorr32f(benchmark::State& st) {
    const int n1 = int(st.range(0)), n2 = int(st.range(1));
    const auto a = signal(n1, 1), b = signal(n2, 2);
    std::vector<float> y(n1 + n2 - 1);
    for (auto _ : st) {
        zvpsCrossCorr_32f(a.data(), n1, b.data(), n2, y.data(), n1 + n2 - 1, -(n1 - 1));
        benchmark::DoNotOptimize(y.data());
    }
}

// FFTW product over one transform of the smallest power of two holding the
// whole result. corr: b placed after n1 - 1 zeros and a's spectrum
// conjugated, so lag l lands at l + n1 - 1.
void fftwProduct(benchmark::State& st, bool corr) {
    const int n1 = int(st.range(0)), n2 = int(st.range(1));
    const int n = n1 + n2 - 1;
    int m = 1;
    while (m < n) m *= 2;
    const auto a = signal(n1, 1), b = signal(n2, 2);
    float* x = fftwf_alloc_real(m);
    float* z = fftwf_alloc_real(m);
    fftwf_complex* X = fftwf_alloc_complex(m / 2 + 1);
    fftwf_complex* Z = fftwf_alloc_complex(m / 2 + 1);
    fftwf_plan fx = fftwf_plan_dft_r2c_1d(m, x, X, FFTW_MEASURE);
    fftwf_plan fz = fftwf_plan_dft_r2c_1d(m, z, Z, FFTW_MEASURE);
    fftwf_plan inv = fftwf_plan_dft_c2r_1d(m, Z, z, FFTW_MEASURE);
    std::vector<float> y(n);
    const float scale = 1.0f / float(m);
    for (auto _ : st) {
        std::memset(x, 0, sizeof(float) * m);
        std::memset(z, 0, sizeof(float) * m);
        std::memcpy(x, a.data(), sizeof(float) * n1);
        std::memcpy(z + (corr ? n1 - 1 : 0), b.data(), sizeof(float) * n2);
        fftwf_execute(fx);
        fftwf_execute(fz);
        for (int i = 0; i <= m / 2; ++i) {
            const float xr = X[i][0], xi = corr ? -X[i][1] : X[i][1];
            const float zr = Z[i][0], zi = Z[i][1];
            Z[i][0] = (xr * zr - xi * zi) * scale;
            Z[i][1] = (xr * zi + xi * zr) * scale;
        }
        fftwf_execute(inv);
        std::memcpy(y.data(), z, sizeof(float) * n);
        benchmark::DoNotOptimize(y.data());
    }
    fftwf_destroy_plan(fx);
    fftwf_destroy_plan(fz);
    fftwf_destroy_plan(inv);
    fftwf_free(x);
    fftwf_free(z);
    fftwf_free(X);
    fftwf_free(Z);
}

void BM_fftwConv32f(benchmark::State& st) { fftwProduct(st, false); }
void BM_fftwCorr32f(benchmark::State& st) { fftwProduct(st, true); }

BENCHMARK(BM_zvpConv32f)->Apply(args);
BENCHMARK(BM_loopConv32f)->Apply(args);
BENCHMARK(BM_fftwConv32f)->Apply(args);
BENCHMARK(BM_zvpCorr32f)->Apply(args);
BENCHMARK(BM_loopCorr32f)->Apply(args);
BENCHMARK(BM_fftwCorr32f)->Apply(args);

}  // namespace

// Building an FFT record into memory reserved once, outside the timed loop:
// the part of every FFT-method call above that no transform does.
template <class Spec, class GetSize, class Init>
void fftInit(benchmark::State& st, GetSize getSize, Init init) {
    const int order = int(st.range(0));
    int specSize = 0, initSize = 0, workSize = 0;
    getSize(order, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone, &specSize, &initSize, &workSize);
    std::vector<Zvp8u> spec(specSize + 64), initMem(initSize + 64);
    for (auto _ : st) {
        Spec* p = nullptr;
        init(&p, order, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone, spec.data(), initMem.data());
        benchmark::DoNotOptimize(p);
    }
}

void BM_fftInitR32f(benchmark::State& st) {
    fftInit<ZvpsFFTSpec_R_32f>(st, zvpsFFTGetSize_R_32f, zvpsFFTInit_R_32f);
}
void BM_fftInitR64f(benchmark::State& st) {
    fftInit<ZvpsFFTSpec_R_64f>(st, zvpsFFTGetSize_R_64f, zvpsFFTInit_R_64f);
}
void BM_fftInitC32fc(benchmark::State& st) {
    fftInit<ZvpsFFTSpec_C_32fc>(st, zvpsFFTGetSize_C_32fc, zvpsFFTInit_C_32fc);
}
void BM_fftInitC64fc(benchmark::State& st) {
    fftInit<ZvpsFFTSpec_C_64fc>(st, zvpsFFTGetSize_C_64fc, zvpsFFTInit_C_64fc);
}

BENCHMARK(BM_fftInitR32f)->DenseRange(6, 16, 1)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_fftInitR64f)->DenseRange(6, 16, 1)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_fftInitC32fc)->DenseRange(6, 16, 1)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_fftInitC64fc)->DenseRange(6, 16, 1)->Unit(benchmark::kMicrosecond);
