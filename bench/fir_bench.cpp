// FIR filtering of a stream, one block per iteration with the history
// carried on: FIRSR_32f / FIRSR_32fc and the state-based FIR_32f / FIR_32fc
// against liquid-dsp's firfilt execute_block and an overlap-save filter
// through FFTW written here, and FIR32s_16s_Sfs against a plain fixed-point
// loop, at 8 .. 2048 taps and blocks of 4096 and 65536 samples. The direct kernels
// (staggered and broadcast layouts, and the general multiply-accumulate
// kernel) are also timed alone on the same data, to choose between them.
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <algorithm>
#include <complex>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

#ifdef ZVP_HAVE_LIQUID
#include <liquid/liquid.h>
#endif

#include "fir_kernel.h"
#include "zvps.h"

namespace {

template <class T>
std::vector<T> signal(std::size_t n, int seed) {
    std::mt19937 g(seed + unsigned(n));
    std::uniform_real_distribution<float> d(-1.f, 1.f);
    std::vector<T> v(n);
    for (auto& x : v) {
        if constexpr (std::is_same_v<T, Zvp32fc>) x = {d(g), d(g)};
        else x = d(g);
    }
    return v;
}

void args(benchmark::internal::Benchmark* b) {
    for (int taps : {8, 32, 64, 128, 512, 2048})
        for (int block : {4096, 65536}) b->Args({taps, block});
    b->Unit(benchmark::kMicrosecond);
}
void longArgs(benchmark::internal::Benchmark* b) {
    for (int taps : {128, 512, 2048})
        for (int block : {4096, 65536}) b->Args({taps, block});
    b->Unit(benchmark::kMicrosecond);
}

template <class T, class Spec, class Init, class Run>
void firsr(benchmark::State& st, ZvpDataType dt, int alg, Init init, Run run) {
    const int L = int(st.range(0)), n = int(st.range(1));
    const auto h = signal<T>(L, 1), x = signal<T>(n, 2);
    int ss = 0, bs = 0;
    zvpsFIRSRGetSize(L, dt, &ss, &bs);
    std::vector<Zvp8u> spec(ss), buf(bs);
    Spec* s = reinterpret_cast<Spec*>(spec.data());
    init(h.data(), L, ZvpAlgType(alg), s);
    std::vector<T> y(n), dly(L);
    for (auto _ : st) {
        run(x.data(), y.data(), n, s, dly.data(), dly.data(), buf.data());
        benchmark::DoNotOptimize(y.data());
    }
    st.SetItemsProcessed(st.iterations() * n);
}

void BM_zvpFIRSR32f(benchmark::State& st) {
    firsr<float, ZvpsFIRSpec_32f>(st, zvp32f, zvpAlgAuto, zvpsFIRSRInit_32f, zvpsFIRSR_32f);
}
void BM_zvpFIRSR32fDirect(benchmark::State& st) {
    firsr<float, ZvpsFIRSpec_32f>(st, zvp32f, zvpAlgDirect, zvpsFIRSRInit_32f, zvpsFIRSR_32f);
}
void BM_zvpFIRSR32fFFT(benchmark::State& st) {
    firsr<float, ZvpsFIRSpec_32f>(st, zvp32f, zvpAlgFFT, zvpsFIRSRInit_32f, zvpsFIRSR_32f);
}
void BM_zvpFIRSR32fc(benchmark::State& st) {
    firsr<Zvp32fc, ZvpsFIRSpec_32fc>(st, zvp32fc, zvpAlgAuto, zvpsFIRSRInit_32fc, zvpsFIRSR_32fc);
}
void BM_zvpFIRSR32fcDirect(benchmark::State& st) {
    firsr<Zvp32fc, ZvpsFIRSpec_32fc>(st, zvp32fc, zvpAlgDirect, zvpsFIRSRInit_32fc, zvpsFIRSR_32fc);
}
void BM_zvpFIRSR64f(benchmark::State& st) {
    firsr<double, ZvpsFIRSpec_64f>(st, zvp64f, zvpAlgAuto, zvpsFIRSRInit_64f, zvpsFIRSR_64f);
}
void BM_zvpFIRSR64fDirect(benchmark::State& st) {
    firsr<double, ZvpsFIRSpec_64f>(st, zvp64f, zvpAlgDirect, zvpsFIRSRInit_64f, zvpsFIRSR_64f);
}

// The state-based filters: the state keeps the history between blocks.
void BM_zvpFIR32f(benchmark::State& st) {
    const int L = int(st.range(0)), n = int(st.range(1));
    const auto h = signal<float>(L, 1), x = signal<float>(n, 2);
    std::vector<float> y(n);
    ZvpsFIRState_32f* s = nullptr;
    zvpsFIRInitAlloc_32f(&s, h.data(), L, nullptr);
    for (auto _ : st) {
        zvpsFIR_32f(x.data(), y.data(), n, s);
        benchmark::DoNotOptimize(y.data());
    }
    zvpsFIRFree_32f(s);
    st.SetItemsProcessed(st.iterations() * n);
}
void BM_zvpFIR32fc(benchmark::State& st) {
    const int L = int(st.range(0)), n = int(st.range(1));
    const auto h = signal<Zvp32fc>(L, 1), x = signal<Zvp32fc>(n, 2);
    std::vector<Zvp32fc> y(n);
    ZvpsFIRState_32fc* s = nullptr;
    zvpsFIRInitAlloc_32fc(&s, h.data(), L, nullptr);
    for (auto _ : st) {
        zvpsFIR_32fc(x.data(), y.data(), n, s);
        benchmark::DoNotOptimize(y.data());
    }
    zvpsFIRFree_32fc(s);
    st.SetItemsProcessed(st.iterations() * n);
}

// Q15 taps (tapsFactor 15) on 16-bit data, scale factor 1.
std::vector<Zvp32s> q15Taps(int L) {
    const auto h = signal<float>(L, 1);
    std::vector<Zvp32s> t(L);
    for (int i = 0; i < L; ++i) t[i] = Zvp32s(h[i] * 32767.f / float(L));
    return t;
}
std::vector<Zvp16s> samples16(int n) {
    const auto x = signal<float>(n, 2);
    std::vector<Zvp16s> v(n);
    for (int i = 0; i < n; ++i) v[i] = Zvp16s(x[i] * 32000.f);
    return v;
}
void BM_zvpFIR32s16s(benchmark::State& st) {
    const int L = int(st.range(0)), n = int(st.range(1));
    const auto t = q15Taps(L);
    const auto x = samples16(n);
    std::vector<Zvp16s> y(n);
    ZvpsFIRState32s_16s* s = nullptr;
    zvpsFIRInitAlloc32s_16s(&s, t.data(), L, 15, nullptr);
    for (auto _ : st) {
        zvpsFIR32s_16s_Sfs(x.data(), y.data(), n, s, 1);
        benchmark::DoNotOptimize(y.data());
    }
    zvpsFIRFree32s_16s(s);
    st.SetItemsProcessed(st.iterations() * n);
}
// The plain loop: history and block end to end, 64-bit sums of exact
// products, rounded half up by the shift (the usual fixed-point idiom) and
// saturated.
void BM_loopFIR32s16s(benchmark::State& st) {
    const int L = int(st.range(0)), n = int(st.range(1));
    const auto t = q15Taps(L);
    const auto x = samples16(n);
    std::vector<Zvp16s> y(n), xx(n + L - 1, 0);
    for (auto _ : st) {
        std::copy(x.begin(), x.end(), xx.begin() + (L - 1));
        for (int i = 0; i < n; ++i) {
            long long acc = 0;
            const Zvp16s* p = xx.data() + i + L - 1;
            for (int j = 0; j < L; ++j) acc += (long long)t[j] * p[-j];
            acc = (acc + (1LL << 15)) >> 16;
            y[i] = Zvp16s(std::clamp<long long>(acc, -32768, 32767));
        }
        std::copy(xx.end() - (L - 1), xx.end(), xx.begin());
        benchmark::DoNotOptimize(y.data());
    }
    st.SetItemsProcessed(st.iterations() * n);
}

// The direct kernels alone over one contiguous x (history + block).
template <int Which>
void kernel32f(benchmark::State& st) {
    namespace firk = zvp::p8::firk;
    const int L = int(st.range(0)), n = int(st.range(1));
    const auto h = signal<float>(L, 1), x = signal<float>(n + L - 1, 2);
    std::vector<float> p(firk::staggeredLen(L) + firk::broadcastLen(L)), y(n);
    if (Which == 0) firk::prepareStaggered(h.data(), L, p.data());
    if (Which == 1) firk::prepareBroadcast(h.data(), L, p.data());
    for (auto _ : st) {
        if (Which == 0) firk::filterStaggered(p.data(), L, x.data(), y.data(), n);
        else if (Which == 1) firk::filterBroadcast(p.data(), L, x.data(), y.data(), n);
        else firk::firBlock(h.data(), L, x.data(), y.data(), n);
        benchmark::DoNotOptimize(y.data());
    }
    st.SetItemsProcessed(st.iterations() * n);
}
void BM_kernelStaggered(benchmark::State& st) { kernel32f<0>(st); }
void BM_kernelBroadcast(benchmark::State& st) { kernel32f<1>(st); }
void BM_kernelMac(benchmark::State& st) { kernel32f<2>(st); }

#ifdef ZVP_HAVE_LIQUID
void BM_liquidRRRF(benchmark::State& st) {
    const int L = int(st.range(0)), n = int(st.range(1));
    auto h = signal<float>(L, 1), x = signal<float>(n, 2);
    std::vector<float> y(n);
    firfilt_rrrf q = firfilt_rrrf_create(h.data(), unsigned(L));
    for (auto _ : st) {
        firfilt_rrrf_execute_block(q, x.data(), unsigned(n), y.data());
        benchmark::DoNotOptimize(y.data());
    }
    firfilt_rrrf_destroy(q);
    st.SetItemsProcessed(st.iterations() * n);
}
// Complex taps on complex data: the same work as FIRSR_32fc.
void BM_liquidCCCF(benchmark::State& st) {
    const int L = int(st.range(0)), n = int(st.range(1));
    auto h = signal<Zvp32fc>(L, 1), x = signal<Zvp32fc>(n, 2);
    std::vector<std::complex<float>> hc(L), xc(n), y(n);
    for (int i = 0; i < L; ++i) hc[i] = {h[i].re, h[i].im};
    for (int i = 0; i < n; ++i) xc[i] = {x[i].re, x[i].im};
    firfilt_cccf q = firfilt_cccf_create(hc.data(), unsigned(L));
    for (auto _ : st) {
        firfilt_cccf_execute_block(q, xc.data(), unsigned(n), y.data());
        benchmark::DoNotOptimize(y.data());
    }
    firfilt_cccf_destroy(q);
    st.SetItemsProcessed(st.iterations() * n);
}
// Real taps on complex data (half the multiplies of the complex-tap forms).
void BM_liquidCRCF(benchmark::State& st) {
    const int L = int(st.range(0)), n = int(st.range(1));
    auto h = signal<float>(L, 1);
    auto x = signal<Zvp32fc>(n, 2);
    std::vector<std::complex<float>> xc(n), y(n);
    for (int i = 0; i < n; ++i) xc[i] = {x[i].re, x[i].im};
    firfilt_crcf q = firfilt_crcf_create(h.data(), unsigned(L));
    for (auto _ : st) {
        firfilt_crcf_execute_block(q, xc.data(), unsigned(n), y.data());
        benchmark::DoNotOptimize(y.data());
    }
    firfilt_crcf_destroy(q);
    st.SetItemsProcessed(st.iterations() * n);
}
#endif

// Overlap-save through FFTW: transforms of M = 2^k >= 8 L points, at most
// 8192 and at least 4 L (the best of 2 L .. 32 L on this machine: 8 L up to
// 512 taps, 4 L = 8192 at 2048), taps spectrum made once, history
// carried in a block of M samples; r2c / c2r plans FFTW_MEASURE, made
// outside the timed loop.
void BM_fftwOLS32f(benchmark::State& st) {
    const int L = int(st.range(0)), n = int(st.range(1));
    // FIR_OLS_FACTOR=f sets M >= f L instead (for finding the best size).
    const char* fac = std::getenv("FIR_OLS_FACTOR");
    const int f = fac ? std::atoi(fac) : 8;
    int m = 1;
    while (m < f * L) m *= 2;
    if (!fac) {
        while (m > 8192 && m >= 8 * L) m /= 2;
    }
    const int step = m - L + 1;
    const auto h = signal<float>(L, 1), x = signal<float>(n, 2);
    float* seg = fftwf_alloc_real(m);
    fftwf_complex* spec = fftwf_alloc_complex(m / 2 + 1);
    fftwf_complex* hs = fftwf_alloc_complex(m / 2 + 1);
    fftwf_plan fwd = fftwf_plan_dft_r2c_1d(m, seg, spec, FFTW_MEASURE);
    fftwf_plan inv = fftwf_plan_dft_c2r_1d(m, spec, seg, FFTW_MEASURE);
    std::fill(seg, seg + m, 0.f);
    std::copy(h.begin(), h.end(), seg);
    fftwf_execute(fwd);
    std::memcpy(hs, spec, sizeof(fftwf_complex) * (m / 2 + 1));
    const float scale = 1.f / float(m);
    for (int i = 0; i <= m / 2; ++i) hs[i][0] *= scale, hs[i][1] *= scale;
    std::vector<float> hist(L - 1, 0.f), y(n), xin(m);
    for (auto _ : st) {
        for (int q = 0; q < n; q += step) {
            const int cnt = std::min(step, n - q);
            // Segment: L - 1 samples before q (history at the start), then cnt inputs.
            if (q == 0) std::copy(hist.begin(), hist.end(), xin.begin());
            else std::copy(x.begin() + (q - (L - 1)), x.begin() + q, xin.begin());
            std::copy(x.begin() + q, x.begin() + q + cnt, xin.begin() + (L - 1));
            std::fill(xin.begin() + (L - 1) + cnt, xin.end(), 0.f);
            std::copy(xin.begin(), xin.end(), seg);
            fftwf_execute(fwd);
            for (int i = 0; i <= m / 2; ++i) {
                const float re = spec[i][0] * hs[i][0] - spec[i][1] * hs[i][1];
                const float im = spec[i][0] * hs[i][1] + spec[i][1] * hs[i][0];
                spec[i][0] = re, spec[i][1] = im;
            }
            fftwf_execute(inv);
            std::copy(seg + (L - 1), seg + (L - 1) + cnt, y.begin() + q);
        }
        std::copy(x.end() - (L - 1), x.end(), hist.begin());
        benchmark::DoNotOptimize(y.data());
    }
    fftwf_destroy_plan(fwd);
    fftwf_destroy_plan(inv);
    fftwf_free(seg);
    fftwf_free(spec);
    fftwf_free(hs);
    st.SetItemsProcessed(st.iterations() * n);
}

}  // namespace

BENCHMARK(BM_zvpFIRSR32f)->Apply(args);
BENCHMARK(BM_zvpFIRSR32fDirect)->Apply(args);
BENCHMARK(BM_zvpFIRSR32fFFT)->Apply(args);
BENCHMARK(BM_zvpFIRSR32fc)->Apply(args);
BENCHMARK(BM_zvpFIRSR32fcDirect)->Apply(args);
BENCHMARK(BM_zvpFIRSR64f)->Apply(args);
BENCHMARK(BM_zvpFIRSR64fDirect)->Apply(args);
BENCHMARK(BM_zvpFIR32f)->Apply(args);
BENCHMARK(BM_zvpFIR32fc)->Apply(args);
BENCHMARK(BM_zvpFIR32s16s)->Apply(args);
BENCHMARK(BM_loopFIR32s16s)->Apply(args);
BENCHMARK(BM_kernelStaggered)->Apply(args);
BENCHMARK(BM_kernelBroadcast)->Apply(args);
BENCHMARK(BM_kernelMac)->Apply(args);
#ifdef ZVP_HAVE_LIQUID
BENCHMARK(BM_liquidRRRF)->Apply(args);
BENCHMARK(BM_liquidCCCF)->Apply(args);
BENCHMARK(BM_liquidCRCF)->Apply(args);
#endif
BENCHMARK(BM_fftwOLS32f)->Apply(longArgs);
