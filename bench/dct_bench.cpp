// DCT-II (forward) and DCT-III (inverse), single precision, against FFTW's
// REDFT10 and REDFT01 plans (FFTW_MEASURE, out of place, plans made outside
// the timed loop) at N = 8, 64, 100, 1000, 4096, 100000, in the same binary.
// FFTW's transforms are unnormalised: REDFT10 gives 2 sum x cos(..), REDFT01
// X[0] + 2 sum_{k>=1} X[k] cos(..). Times compare as they are; the error
// counter ("err") scales FFTW's forward output by f_k / 2 and feeds its
// inverse f_0 X[0], f_1 X[k] / 2, outside the timed loop, so both libraries
// are judged against the same orthonormal definition (long double, on up to
// 512 sampled outputs).
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <utility>
#include <random>
#include <vector>

#include "zvps.h"

namespace {

std::vector<float> signal(int n) {
    std::mt19937 rng(99u + unsigned(n));
    std::uniform_real_distribution<float> d(-1.f, 1.f);
    std::vector<float> v(n);
    for (auto& x : v) x = d(rng);
    return v;
}

std::vector<int> sampled(int n) {
    std::vector<int> ks;
    const int step = std::max(1, n / 512);
    for (int k = 0; k < n; k += step) ks.push_back(k);
    return ks;
}

// The orthonormal DCT-II (forward) or DCT-III (inverse) of signal(n) at the
// sampled outputs, in long double from a table of cos(pi j / 2N); made once
// per length and direction, for both libraries and every repetition.
const std::vector<long double>& reference(int n, bool inverse) {
    static std::map<std::pair<int, bool>, std::vector<long double>> cache;
    const auto key = std::make_pair(n, inverse);
    if (auto it = cache.find(key); it != cache.end()) return it->second;
    const long double pi = 3.14159265358979323846264338327950288L;
    const long double f0 = 1 / std::sqrt((long double)n), f1 = std::sqrt(2.0L / n);
    std::vector<long double> c(4 * std::size_t(n));
    for (std::size_t j = 0; j < c.size(); ++j) c[j] = std::cos(pi * (long double)j / (2.0L * n));
    const auto x = signal(n);
    std::vector<long double> out;
    for (int k : sampled(n)) {
        long double s = 0;
        for (int i = 0; i < n; ++i) {
            const int a = inverse ? k : i, b = inverse ? i : k;  // cos(pi (2a + 1) b / 2N)
            s += (inverse ? (i == 0 ? f0 : f1) : 1.0L) * x[i] * c[(std::int64_t(2 * a + 1) * b) % (4 * n)];
        }
        out.push_back(inverse ? s : (k == 0 ? f0 : f1) * s);
    }
    return cache.emplace(key, std::move(out)).first->second;
}

// Relative L2 error of y at the sampled outputs.
double error(int n, const float* y, bool inverse) {
    const auto& want = reference(n, inverse);
    const auto ks = sampled(n);
    long double num = 0, den = 0;
    for (std::size_t j = 0; j < ks.size(); ++j) {
        num += (y[ks[j]] - want[j]) * (y[ks[j]] - want[j]);
        den += want[j] * want[j];
    }
    return double(std::sqrt(num / den));
}

void BM_zvpDct(benchmark::State& st, bool inverse) {
    const int n = int(st.range(0));
    ZvpsDCTFwdSpec_32f* fwd = nullptr;
    ZvpsDCTInvSpec_32f* inv = nullptr;
    int bytes = 0;
    if (inverse ? zvpsDCTInvInitAlloc_32f(&inv, n, zvpAlgHintNone) : zvpsDCTFwdInitAlloc_32f(&fwd, n, zvpAlgHintNone)) {
        st.SkipWithError("spec");
        return;
    }
    inverse ? zvpsDCTInvGetBufSize_32f(inv, &bytes) : zvpsDCTFwdGetBufSize_32f(fwd, &bytes);
    Zvp8u* work = bytes > 0 ? zvpsMalloc_8u(bytes) : nullptr;
    float* src = zvpsMalloc_32f(n);
    float* dst = zvpsMalloc_32f(n);
    const auto x = signal(n);
    std::copy(x.begin(), x.end(), src);
    auto run = [&] { inverse ? zvpsDCTInv_32f(src, dst, inv, work) : zvpsDCTFwd_32f(src, dst, fwd, work); };
    for (auto _ : st) {
        run();
        benchmark::ClobberMemory();
    }
    run();
    st.counters["err"] = error(n, dst, inverse);
    zvpsFree(src);
    zvpsFree(dst);
    zvpsFree(work);
    inverse ? zvpsDCTInvFree_32f(inv) : zvpsDCTFwdFree_32f(fwd);
}

void BM_fftwDct(benchmark::State& st, bool inverse) {
    const int n = int(st.range(0));
    float* src = fftwf_alloc_real(n);
    float* dst = fftwf_alloc_real(n);
    fftwf_plan p = fftwf_plan_r2r_1d(n, src, dst, inverse ? FFTW_REDFT01 : FFTW_REDFT10, FFTW_MEASURE);
    const auto x = signal(n);
    std::copy(x.begin(), x.end(), src);
    for (auto _ : st) {
        fftwf_execute(p);
        benchmark::ClobberMemory();
    }
    const float f0 = float(1 / std::sqrt(double(n))), f1 = float(std::sqrt(2.0 / n));
    if (inverse) {
        src[0] = x[0] * f0;
        for (int k = 1; k < n; ++k) src[k] = x[k] * f1 * 0.5f;
        fftwf_execute(p);
    } else {
        std::copy(x.begin(), x.end(), src);
        fftwf_execute(p);
        dst[0] *= f0 * 0.5f;
        for (int k = 1; k < n; ++k) dst[k] *= f1 * 0.5f;
    }
    st.counters["err"] = error(n, dst, inverse);
    fftwf_destroy_plan(p);
    fftwf_free(src);
    fftwf_free(dst);
}

void BM_zvpDctFwd32f(benchmark::State& st) { BM_zvpDct(st, false); }
void BM_fftwDctFwd32f(benchmark::State& st) { BM_fftwDct(st, false); }
void BM_zvpDctInv32f(benchmark::State& st) { BM_zvpDct(st, true); }
void BM_fftwDctInv32f(benchmark::State& st) { BM_fftwDct(st, true); }

// Ours next to FFTW's at each length, so both see the same machine state.
const int registered = [] {
    for (int n : {8, 64, 100, 1000, 4096, 100000}) {
        benchmark::RegisterBenchmark("BM_zvpDctFwd32f", BM_zvpDctFwd32f)->Arg(n);
        benchmark::RegisterBenchmark("BM_fftwDctFwd32f", BM_fftwDctFwd32f)->Arg(n);
        benchmark::RegisterBenchmark("BM_zvpDctInv32f", BM_zvpDctInv32f)->Arg(n);
        benchmark::RegisterBenchmark("BM_fftwDctInv32f", BM_fftwDctInv32f)->Arg(n);
    }
    return 0;
}();

}  // namespace
