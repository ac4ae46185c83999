// Complex FFT (32fc and 64fc, forward, out of place, with a work buffer)
// against FFTW 3 in the same binary, N = 2^4 .. 2^22. FFTW plans are made with
// FFTW_MEASURE outside the timed loop. Counters:
//   mflops  the benchFFT figure 5 N log2 N / (time in microseconds)
//   err     relative L2 error of the same transform of the same inputs against
//           a long-double reference (naive DFT up to 4096 points, a
//           long-double radix-2 FFT above); below 4096 points the RMS over
//           several inputs (64 at 2^4 .. 2 at 2^11)
// bench/fft_table.py turns the JSON report into the table of fft_complex.md.
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <cmath>
#include <complex>
#include <algorithm>
#include <map>
#include <utility>
#include <random>
#include <vector>

#include "oracle_dft.h"
#include "zvps.h"

namespace {

using cld = std::complex<long double>;

std::vector<cld> input(int order, unsigned seed = 0) {
    std::mt19937 rng(1234u + unsigned(order) + 7919u * seed);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    std::vector<cld> x(std::size_t(1) << order);
    for (auto& v : x) v = {u(rng), u(rng)};
    return x;
}

// Reference spectrum of input(order, seed), computed once.
const std::vector<cld>& reference(int order, unsigned seed) {
    static std::map<std::pair<int, unsigned>, std::vector<cld>> cache;
    auto it = cache.find({order, seed});
    if (it != cache.end()) return it->second;
    std::vector<cld> x = input(order, seed);
    if (order <= 12) {
        x = zvp::test::naiveDft(x, -1);
    } else {
        zvp::test::longDoubleFft(x, -1);
    }
    return cache.emplace(std::make_pair(order, seed), std::move(x)).first->second;
}

// Inputs over which the error is averaged: one error of one input says
// little at small N, so small sizes take the RMS over several inputs.
int errorInputs(int order) { return order >= 12 ? 1 : 1 << std::min(6, 12 - order); }

// run(x, y) transforms input x (as cld) into y (as cld); the RMS of the
// relative L2 errors over errorInputs(order) inputs.
template <class Run>
double rmsError(Run run, int order) {
    const int k = errorInputs(order);
    double sum = 0;
    for (int s = 0; s < k; ++s) {
        const auto& ref = reference(order, unsigned(s));
        std::vector<cld> got(ref.size());
        run(input(order, unsigned(s)), got);
        const double e = zvp::test::relativeL2(got, ref);
        sum += e * e;
    }
    return std::sqrt(sum / k);
}

void finish(benchmark::State& st, int order, double err) {
    const double n = double(std::size_t(1) << order);
    st.counters["mflops"] = benchmark::Counter(5.0 * n * order * 1e-6 * double(st.iterations()),
                                               benchmark::Counter::kIsRate);
    st.counters["err"] = err;
}

// ---- zvpSP ---------------------------------------------------------------

template <class T>
struct Zvp;
template <>
struct Zvp<float> {
    using C = Zvp32fc;
    using S = ZvpsFFTSpec_C_32fc;
    static C* alloc(int n) { return zvpsMalloc_32fc(n); }
    static void init(S** s, int o) { zvpsFFTInitAlloc_C_32fc(s, o, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone); }
    static int bufSize(const S* s) {
        int b = 0;
        zvpsFFTGetBufSize_C_32fc(s, &b);
        return b;
    }
    static void fwd(const C* x, C* y, const S* s, Zvp8u* b) { zvpsFFTFwd_CToC_32fc(x, y, s, b); }
    static void release(S* s) { zvpsFFTFree_C_32fc(s); }
};
template <>
struct Zvp<double> {
    using C = Zvp64fc;
    using S = ZvpsFFTSpec_C_64fc;
    static C* alloc(int n) { return zvpsMalloc_64fc(n); }
    static void init(S** s, int o) { zvpsFFTInitAlloc_C_64fc(s, o, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone); }
    static int bufSize(const S* s) {
        int b = 0;
        zvpsFFTGetBufSize_C_64fc(s, &b);
        return b;
    }
    static void fwd(const C* x, C* y, const S* s, Zvp8u* b) { zvpsFFTFwd_CToC_64fc(x, y, s, b); }
    static void release(S* s) { zvpsFFTFree_C_64fc(s); }
};

template <class T>
void BM_zvp(benchmark::State& st) {
    using Z = Zvp<T>;
    const int order = int(st.range(0));
    const int n = 1 << order;
    typename Z::C* x = Z::alloc(n);
    typename Z::C* y = Z::alloc(n);
    const auto in = input(order);
    for (int i = 0; i < n; ++i) x[i] = {T(in[i].real()), T(in[i].imag())};
    typename Z::S* spec = nullptr;
    Z::init(&spec, order);
    const int bs = Z::bufSize(spec);
    Zvp8u* buf = bs > 0 ? zvpsMalloc_8u(bs) : nullptr;
    for (auto _ : st) {
        Z::fwd(x, y, spec, buf);
        benchmark::ClobberMemory();
    }
    finish(st, order, rmsError([&](const std::vector<cld>& in, std::vector<cld>& out) {
        for (int i = 0; i < n; ++i) x[i] = {T(in[i].real()), T(in[i].imag())};
        Z::fwd(x, y, spec, buf);
        for (int i = 0; i < n; ++i) out[i] = {y[i].re, y[i].im};
    }, order));
    zvpsFree(buf);
    Z::release(spec);
    zvpsFree(x);
    zvpsFree(y);
}

// ---- FFTW ----------------------------------------------------------------

void BM_fftwf(benchmark::State& st) {
    const int order = int(st.range(0));
    const int n = 1 << order;
    auto* x = fftwf_alloc_complex(n);
    auto* y = fftwf_alloc_complex(n);
    fftwf_plan p = fftwf_plan_dft_1d(n, x, y, FFTW_FORWARD, FFTW_MEASURE);
    const auto in = input(order);
    for (int i = 0; i < n; ++i) {
        x[i][0] = float(in[i].real());
        x[i][1] = float(in[i].imag());
    }
    for (auto _ : st) {
        fftwf_execute(p);
        benchmark::ClobberMemory();
    }
    finish(st, order, rmsError([&](const std::vector<cld>& in, std::vector<cld>& out) {
        for (int i = 0; i < n; ++i) {
            x[i][0] = float(in[i].real());
            x[i][1] = float(in[i].imag());
        }
        fftwf_execute(p);
        for (int i = 0; i < n; ++i) out[i] = {y[i][0], y[i][1]};
    }, order));
    fftwf_destroy_plan(p);
    fftwf_free(x);
    fftwf_free(y);
}

void BM_fftw(benchmark::State& st) {
    const int order = int(st.range(0));
    const int n = 1 << order;
    auto* x = fftw_alloc_complex(n);
    auto* y = fftw_alloc_complex(n);
    fftw_plan p = fftw_plan_dft_1d(n, x, y, FFTW_FORWARD, FFTW_MEASURE);
    const auto in = input(order);
    for (int i = 0; i < n; ++i) {
        x[i][0] = double(in[i].real());
        x[i][1] = double(in[i].imag());
    }
    for (auto _ : st) {
        fftw_execute(p);
        benchmark::ClobberMemory();
    }
    finish(st, order, rmsError([&](const std::vector<cld>& in, std::vector<cld>& out) {
        for (int i = 0; i < n; ++i) {
            x[i][0] = in[i].real();
            x[i][1] = in[i].imag();
        }
        fftw_execute(p);
        for (int i = 0; i < n; ++i) out[i] = {y[i][0], y[i][1]};
    }, order));
    fftw_destroy_plan(p);
    fftw_free(x);
    fftw_free(y);
}

void orders(benchmark::internal::Benchmark* b) {
    for (int o = 4; o <= 22; ++o) b->Arg(o);
}

BENCHMARK(BM_zvp<float>)->Name("BM_zvp_32fc")->Apply(orders);
BENCHMARK(BM_fftwf)->Name("BM_fftw_32fc")->Apply(orders);
BENCHMARK(BM_zvp<double>)->Name("BM_zvp_64fc")->Apply(orders);
BENCHMARK(BM_fftw)->Name("BM_fftw_64fc")->Apply(orders);

}  // namespace
