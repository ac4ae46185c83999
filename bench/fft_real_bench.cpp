// Real forward FFT (N real samples to N/2 + 1 complex values, the CCS
// layout) against FFTW's r2c plans (FFTW_MEASURE, out of place, plans made
// outside the timed loop), single and double precision, N = 2^4 .. 2^22, in
// the same binary. Each benchmark also reports the benchFFT figure
// 2.5 N log2 N / us ("mflops") and its relative L2 error against the same
// reference transform ("err").
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <map>
#include <utility>
#include <random>
#include <vector>

#include "oracle_dft.h"
#include "zvps.h"

namespace {

using Cd = std::complex<double>;

std::vector<float> signal(int m, int seed = 0) {
    std::mt19937 rng(77u + 1000u * seed + m);
    std::uniform_real_distribution<float> d(-1.f, 1.f);
    std::vector<float> v(std::size_t(1) << m);
    for (auto& x : v) x = d(rng);
    return v;
}

// X[0 .. N/2] of signal(m, seed): a long-double DFT up to 1024 points, a
// long-double radix-2 FFT above (a double-precision reference would carry
// errors as large as those of the double transforms it measures); kept for
// the other library and repetitions.
const std::vector<Cd>& reference(int m, int seed) {
    static std::map<std::pair<int, int>, std::vector<Cd>> cache;
    const auto key = std::make_pair(m, seed);
    if (auto it = cache.find(key); it != cache.end()) return it->second;
    const auto x = signal(m, seed);
    std::vector<Cd> X;
    if (m <= 10) {
        std::vector<zvp::test::cld> c(x.begin(), x.end());
        for (const auto& v : zvp::test::naiveDft(c, -1)) X.emplace_back(double(v.real()), double(v.imag()));
    } else {
        std::vector<zvp::test::cld> c(x.begin(), x.end());
        zvp::test::longDoubleFft(c, -1);
        for (const auto& v : c) X.emplace_back(double(v.real()), double(v.imag()));
    }
    X.resize(x.size() / 2 + 1);
    return cache.emplace(key, std::move(X)).first->second;
}

// Mean relative L2 error of a transform over enough signals to make the
// figure stable (at least 4096 samples in all). `transform` loads a signal
// into the benchmark's own source, runs it and returns the N/2 + 1 pairs.
template <class T, class Fn>
double meanError(int m, Fn transform) {
    const int n = 1 << m, signals = std::max(1, 4096 / n);
    double sum = 0;
    for (int s = 0; s < signals; ++s) {
        const T* y = transform(signal(m, s));
        const auto& want = reference(m, s);
        std::vector<Cd> got(want.size());
        for (std::size_t k = 0; k < want.size(); ++k) got[k] = {double(y[2 * k]), double(y[2 * k + 1])};
        sum += zvp::test::relativeL2(got, want);
    }
    return sum / signals;
}

void report(benchmark::State& st, int m, double err) {
    const double n = double(std::int64_t(1) << m);
    st.counters["mflops"] = benchmark::Counter(2.5 * n * m * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
    st.counters["err"] = err;
}

template <class T>
struct Zvp;
template <>
struct Zvp<float> {
    using Spec = ZvpsFFTSpec_R_32f;
    static ZvpStatus initAlloc(Spec** p, int m) { return zvpsFFTInitAlloc_R_32f(p, m, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone); }
    static ZvpStatus bufSize(const Spec* s, int* n) { return zvpsFFTGetBufSize_R_32f(s, n); }
    static ZvpStatus fwd(const float* s, float* d, const Spec* p, Zvp8u* w) { return zvpsFFTFwd_RToCCS_32f(s, d, p, w); }
    static void release(Spec* s) { zvpsFFTFree_R_32f(s); }
};
template <>
struct Zvp<double> {
    using Spec = ZvpsFFTSpec_R_64f;
    static ZvpStatus initAlloc(Spec** p, int m) { return zvpsFFTInitAlloc_R_64f(p, m, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone); }
    static ZvpStatus bufSize(const Spec* s, int* n) { return zvpsFFTGetBufSize_R_64f(s, n); }
    static ZvpStatus fwd(const double* s, double* d, const Spec* p, Zvp8u* w) { return zvpsFFTFwd_RToCCS_64f(s, d, p, w); }
    static void release(Spec* s) { zvpsFFTFree_R_64f(s); }
};

template <class T>
void BM_zvpReal(benchmark::State& st) {
    const int m = int(st.range(0)), n = 1 << m;
    typename Zvp<T>::Spec* spec = nullptr;
    if (Zvp<T>::initAlloc(&spec, m) != zvpStsNoErr) {
        st.SkipWithError("spec");
        return;
    }
    int bytes = 0;
    Zvp<T>::bufSize(spec, &bytes);
    Zvp8u* work = bytes > 0 ? zvpsMalloc_8u(bytes) : nullptr;
    T* src = reinterpret_cast<T*>(zvpsMalloc_8u(int(sizeof(T)) * n));
    T* dst = reinterpret_cast<T*>(zvpsMalloc_8u(int(sizeof(T)) * (n + 2)));
    const auto x = signal(m);
    std::copy(x.begin(), x.end(), src);
    for (auto _ : st) {
        Zvp<T>::fwd(src, dst, spec, work);
        benchmark::ClobberMemory();
    }
    report(st, m, meanError<T>(m, [&](const std::vector<float>& v) {
               std::copy(v.begin(), v.end(), src);
               Zvp<T>::fwd(src, dst, spec, work);
               return dst;
           }));
    zvpsFree(src);
    zvpsFree(dst);
    zvpsFree(work);
    Zvp<T>::release(spec);
}

void BM_fftwReal32f(benchmark::State& st) {
    const int m = int(st.range(0)), n = 1 << m;
    float* src = fftwf_alloc_real(n);
    fftwf_complex* dst = fftwf_alloc_complex(n / 2 + 1);
    fftwf_plan p = fftwf_plan_dft_r2c_1d(n, src, dst, FFTW_MEASURE);
    const auto x = signal(m);
    std::copy(x.begin(), x.end(), src);
    for (auto _ : st) {
        fftwf_execute(p);
        benchmark::ClobberMemory();
    }
    report(st, m, meanError<float>(m, [&](const std::vector<float>& v) {
               std::copy(v.begin(), v.end(), src);
               fftwf_execute(p);
               return reinterpret_cast<const float*>(dst);
           }));
    fftwf_destroy_plan(p);
    fftwf_free(src);
    fftwf_free(dst);
}

void BM_fftwReal64f(benchmark::State& st) {
    const int m = int(st.range(0)), n = 1 << m;
    double* src = fftw_alloc_real(n);
    fftw_complex* dst = fftw_alloc_complex(n / 2 + 1);
    fftw_plan p = fftw_plan_dft_r2c_1d(n, src, dst, FFTW_MEASURE);
    const auto x = signal(m);
    std::copy(x.begin(), x.end(), src);
    for (auto _ : st) {
        fftw_execute(p);
        benchmark::ClobberMemory();
    }
    report(st, m, meanError<double>(m, [&](const std::vector<float>& v) {
               std::copy(v.begin(), v.end(), src);
               fftw_execute(p);
               return reinterpret_cast<const double*>(dst);
           }));
    fftw_destroy_plan(p);
    fftw_free(src);
    fftw_free(dst);
}

void BM_zvpReal32f(benchmark::State& st) { BM_zvpReal<float>(st); }
void BM_zvpReal64f(benchmark::State& st) { BM_zvpReal<double>(st); }

// Registered order by order, ours next to FFTW's, so both see the same
// machine state.
const int registered = [] {
    for (int m = 4; m <= 22; ++m) {
        benchmark::RegisterBenchmark("BM_zvpReal32f", BM_zvpReal32f)->Arg(m);
        benchmark::RegisterBenchmark("BM_fftwReal32f", BM_fftwReal32f)->Arg(m);
    }
    for (int m = 4; m <= 22; ++m) {
        benchmark::RegisterBenchmark("BM_zvpReal64f", BM_zvpReal64f)->Arg(m);
        benchmark::RegisterBenchmark("BM_fftwReal64f", BM_fftwReal64f)->Arg(m);
    }
    return 0;
}();

}  // namespace
