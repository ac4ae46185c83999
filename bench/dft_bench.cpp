// DFT of any length (32fc, 64fc complex; 32f real to CCS), forward, out of
// place, with a caller work buffer, against FFTW 3 in the same binary. FFTW
// plans are made with FFTW_MEASURE outside the timed loop. Counter:
//   err  relative L2 error of the same transform of the same input against a
//        long-double reference (direct sums up to 4096 points, Bluestein's
//        identity through a long-double radix-2 FFT above)
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <cmath>
#include <complex>
#include <map>
#include <random>
#include <vector>

#include "oracle_dft.h"
#include "zvps.h"

namespace {

using cld = std::complex<long double>;
const long double kTwoPi = 6.283185307179586476925286766559L;

std::vector<cld> input(int n, bool real) {
    std::mt19937 rng(1234u + unsigned(n));
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    std::vector<cld> x(static_cast<std::size_t>(n));
    for (auto& v : x) {
        const double re = u(rng), im = u(rng);
        v = {float(re), real ? 0.0f : float(im)};
    }
    return x;
}

std::vector<cld> dftRef(const std::vector<cld>& x) {
    const std::int64_t L = std::int64_t(x.size());
    std::vector<cld> X(x.size());
    if (L <= 4096) {
        std::vector<cld> w(x.size());
        for (std::int64_t j = 0; j < L; ++j) w[std::size_t(j)] = std::polar(1.0L, -kTwoPi * j / L);
        for (std::int64_t k = 0; k < L; ++k)
            for (std::int64_t n = 0, e = 0; n < L; ++n, e = (e + k) % L) X[std::size_t(k)] += x[std::size_t(n)] * w[std::size_t(e)];
        return X;
    }
    std::size_t M = 1;
    while (M < std::size_t(2 * L - 1)) M *= 2;
    std::vector<cld> c(x.size()), a(M), b(M);
    for (std::int64_t n = 0; n < L; ++n)
        c[std::size_t(n)] = std::polar(1.0L, -kTwoPi / 2 * static_cast<long double>((n * n) % (2 * L)) / L);
    for (std::int64_t n = 0; n < L; ++n) a[std::size_t(n)] = x[std::size_t(n)] * c[std::size_t(n)];
    for (std::int64_t n = 0; n < L; ++n) b[std::size_t(n)] = std::conj(c[std::size_t(n)]);
    for (std::int64_t n = 1; n < L; ++n) b[M - std::size_t(n)] = std::conj(c[std::size_t(n)]);
    zvp::test::longDoubleFft(a, -1);
    zvp::test::longDoubleFft(b, -1);
    for (std::size_t i = 0; i < M; ++i) a[i] *= b[i];
    zvp::test::longDoubleFft(a, 1);
    for (std::int64_t k = 0; k < L; ++k) X[std::size_t(k)] = c[std::size_t(k)] * a[std::size_t(k)] / static_cast<long double>(M);
    return X;
}

const std::vector<cld>& reference(int n, bool real) {
    static std::map<std::pair<int, bool>, std::vector<cld>> cache;
    auto it = cache.find({n, real});
    if (it == cache.end()) it = cache.emplace(std::make_pair(n, real), dftRef(input(n, real))).first;
    return it->second;
}

// Error over the spectrum, or over X[0..L/2] for a real input.
double err(const std::vector<cld>& got, int n, bool real) {
    const auto& ref = reference(n, real);
    if (!real) return zvp::test::relativeL2(got, ref);
    std::vector<cld> half(ref.begin(), ref.begin() + n / 2 + 1);
    return zvp::test::relativeL2(got, half);
}

template <class T>
struct Zvp;
template <>
struct Zvp<float> {
    using C = Zvp32fc;
    using S = ZvpsDFTSpec_C_32fc;
    static void init(S** s, int n) { zvpsDFTInitAlloc_C_32fc(s, n, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone); }
    static int bufSize(const S* s) {
        int b = 0;
        zvpsDFTGetBufSize_C_32fc(s, &b);
        return b;
    }
    static void fwd(const C* x, C* y, const S* s, Zvp8u* b) { zvpsDFTFwd_CToC_32fc(x, y, s, b); }
    static void release(S* s) { zvpsDFTFree_C_32fc(s); }
};
template <>
struct Zvp<double> {
    using C = Zvp64fc;
    using S = ZvpsDFTSpec_C_64fc;
    static void init(S** s, int n) { zvpsDFTInitAlloc_C_64fc(s, n, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone); }
    static int bufSize(const S* s) {
        int b = 0;
        zvpsDFTGetBufSize_C_64fc(s, &b);
        return b;
    }
    static void fwd(const C* x, C* y, const S* s, Zvp8u* b) { zvpsDFTFwd_CToC_64fc(x, y, s, b); }
    static void release(S* s) { zvpsDFTFree_C_64fc(s); }
};

template <class T>
void BM_zvp(benchmark::State& st) {
    using Z = Zvp<T>;
    const int n = int(st.range(0));
    std::vector<typename Z::C> x(static_cast<std::size_t>(n)), y(static_cast<std::size_t>(n));
    const auto in = input(n, false);
    for (int i = 0; i < n; ++i) x[std::size_t(i)] = {T(in[std::size_t(i)].real()), T(in[std::size_t(i)].imag())};
    typename Z::S* spec = nullptr;
    Z::init(&spec, n);
    const int bs = Z::bufSize(spec);
    Zvp8u* buf = bs > 0 ? zvpsMalloc_8u(bs) : nullptr;
    for (auto _ : st) {
        Z::fwd(x.data(), y.data(), spec, buf);
        benchmark::ClobberMemory();
    }
    std::vector<cld> got(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) got[std::size_t(i)] = {y[std::size_t(i)].re, y[std::size_t(i)].im};
    st.counters["err"] = err(got, n, false);
    zvpsFree(buf);
    Z::release(spec);
}

void BM_zvp_r32f(benchmark::State& st) {
    const int n = int(st.range(0));
    std::vector<float> x(static_cast<std::size_t>(n)), y(std::size_t(n) + 2);
    const auto in = input(n, true);
    for (int i = 0; i < n; ++i) x[std::size_t(i)] = float(in[std::size_t(i)].real());
    ZvpsDFTSpec_R_32f* spec = nullptr;
    zvpsDFTInitAlloc_R_32f(&spec, n, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone);
    int bs = 0;
    zvpsDFTGetBufSize_R_32f(spec, &bs);
    Zvp8u* buf = bs > 0 ? zvpsMalloc_8u(bs) : nullptr;
    for (auto _ : st) {
        zvpsDFTFwd_RToCCS_32f(x.data(), y.data(), spec, buf);
        benchmark::ClobberMemory();
    }
    std::vector<cld> got(std::size_t(n / 2 + 1));
    for (int k = 0; k <= n / 2; ++k) got[std::size_t(k)] = {y[2 * std::size_t(k)], y[2 * std::size_t(k) + 1]};
    st.counters["err"] = err(got, n, true);
    zvpsFree(buf);
    zvpsDFTFree_R_32f(spec);
}

void BM_fftwf(benchmark::State& st) {
    const int n = int(st.range(0));
    auto* x = fftwf_alloc_complex(std::size_t(n));
    auto* y = fftwf_alloc_complex(std::size_t(n));
    fftwf_plan p = fftwf_plan_dft_1d(n, x, y, FFTW_FORWARD, FFTW_MEASURE);
    const auto in = input(n, false);
    for (int i = 0; i < n; ++i) {
        x[i][0] = float(in[std::size_t(i)].real());
        x[i][1] = float(in[std::size_t(i)].imag());
    }
    for (auto _ : st) {
        fftwf_execute(p);
        benchmark::ClobberMemory();
    }
    std::vector<cld> got(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) got[std::size_t(i)] = {y[i][0], y[i][1]};
    st.counters["err"] = err(got, n, false);
    fftwf_destroy_plan(p);
    fftwf_free(x);
    fftwf_free(y);
}

void BM_fftw(benchmark::State& st) {
    const int n = int(st.range(0));
    auto* x = fftw_alloc_complex(std::size_t(n));
    auto* y = fftw_alloc_complex(std::size_t(n));
    fftw_plan p = fftw_plan_dft_1d(n, x, y, FFTW_FORWARD, FFTW_MEASURE);
    const auto in = input(n, false);
    for (int i = 0; i < n; ++i) {
        x[i][0] = double(in[std::size_t(i)].real());
        x[i][1] = double(in[std::size_t(i)].imag());
    }
    for (auto _ : st) {
        fftw_execute(p);
        benchmark::ClobberMemory();
    }
    std::vector<cld> got(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) got[std::size_t(i)] = {y[i][0], y[i][1]};
    st.counters["err"] = err(got, n, false);
    fftw_destroy_plan(p);
    fftw_free(x);
    fftw_free(y);
}

void BM_fftwf_r2c(benchmark::State& st) {
    const int n = int(st.range(0));
    auto* x = fftwf_alloc_real(std::size_t(n));
    auto* y = fftwf_alloc_complex(std::size_t(n / 2 + 1));
    fftwf_plan p = fftwf_plan_dft_r2c_1d(n, x, y, FFTW_MEASURE);
    const auto in = input(n, true);
    for (int i = 0; i < n; ++i) x[i] = float(in[std::size_t(i)].real());
    for (auto _ : st) {
        fftwf_execute(p);
        benchmark::ClobberMemory();
    }
    std::vector<cld> got(std::size_t(n / 2 + 1));
    for (int k = 0; k <= n / 2; ++k) got[std::size_t(k)] = {y[k][0], y[k][1]};
    st.counters["err"] = err(got, n, true);
    fftwf_destroy_plan(p);
    fftwf_free(x);
    fftwf_free(y);
}

const int kComposite[] = {12, 15, 60, 100, 240, 1000, 1536, 3000, 10000, 46080, 100000, 1000000};
const int kPrime[] = {17, 53, 101, 1009, 10007, 100003};

void complexLengths(benchmark::internal::Benchmark* b) {
    for (int n : kComposite) b->Arg(n);
    for (int n : kPrime) b->Arg(n);
}
void realLengths(benchmark::internal::Benchmark* b) {
    for (int n : kComposite) b->Arg(n);
}

BENCHMARK(BM_zvp<float>)->Name("BM_zvp_32fc")->Apply(complexLengths);
BENCHMARK(BM_fftwf)->Name("BM_fftw_32fc")->Apply(complexLengths);
BENCHMARK(BM_zvp<double>)->Name("BM_zvp_64fc")->Apply(complexLengths);
BENCHMARK(BM_fftw)->Name("BM_fftw_64fc")->Apply(complexLengths);
BENCHMARK(BM_zvp_r32f)->Name("BM_zvp_r32f")->Apply(realLengths);
BENCHMARK(BM_fftwf_r2c)->Name("BM_fftw_r32f")->Apply(realLengths);

}  // namespace
