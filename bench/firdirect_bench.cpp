// Stateless FIR over a doubled delay line: blocks of 4096 samples with 16,
// 64 and 256 taps against peers in the same binary:
//   - a plain loop written here (built -O3), the same double accumulation
//     for 32f and 64f, over a linear history buffer moved after each block;
//   - VOLK's 32f dot product once per output over reversed taps (single-
//     precision accumulation, so it does less work per tap than we do);
//   - spandsp's inline fir16 (Q15 taps, result >> 15) and fir_float
//     (single-precision taps on 16-bit samples, truncated), one sample per
//     call, against our 16s forms with the matching scale factor.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#ifdef ZVP_HAVE_VOLK
#include <volk/volk.h>
#endif
#ifdef ZVP_HAVE_SPANDSP
#include <cstdlib>
#include <spandsp/telephony.h>
#include <spandsp/fir.h>
#endif

#include "zvps.h"

namespace {

constexpr int kN = 4096;

template <class T>
std::vector<T> signal(int n, int seed, double scale) {
    std::mt19937 g(seed + n);
    std::uniform_real_distribution<double> d(-1, 1);
    std::vector<T> v(n);
    for (auto& x : v) x = T(d(g) * scale);
    return v;
}

void args(benchmark::internal::Benchmark* b) {
    b->Arg(16)->Arg(64)->Arg(256)->Unit(benchmark::kMicrosecond);
}

template <class T>
void zvpBlock(benchmark::State& st, ZvpStatus (*f)(const T*, T*, int, const T*, int, T*, int*)) {
    const int L = int(st.range(0));
    const auto h = signal<T>(L, 1, 1.0 / L), x = signal<T>(kN, 2, 1.0);
    std::vector<T> y(kN), dly(2 * L);
    int idx = 0;
    for (auto _ : st) {
        f(x.data(), y.data(), kN, h.data(), L, dly.data(), &idx);
        benchmark::DoNotOptimize(y.data());
    }
    st.SetItemsProcessed(st.iterations() * kN);
}
void BM_zvpFIRDirect32f(benchmark::State& st) { zvpBlock<Zvp32f>(st, zvpsFIR_Direct_32f); }
void BM_zvpFIRDirect64f(benchmark::State& st) { zvpBlock<Zvp64f>(st, zvpsFIR_Direct_64f); }

void BM_zvpFIROneDirect32f(benchmark::State& st) {
    const int L = int(st.range(0));
    const auto h = signal<float>(L, 1, 1.0 / L), x = signal<float>(kN, 2, 1.0);
    std::vector<float> y(kN), dly(2 * L);
    int idx = 0;
    for (auto _ : st) {
        for (int n = 0; n < kN; ++n) zvpsFIROne_Direct_32f(x[n], &y[n], h.data(), L, dly.data(), &idx);
        benchmark::DoNotOptimize(y.data());
    }
    st.SetItemsProcessed(st.iterations() * kN);
}

// The user's loop: history and block in one linear buffer, a double sum.
template <class T>
void loopBlock(benchmark::State& st) {
    const int L = int(st.range(0));
    const auto h = signal<T>(L, 1, 1.0 / L), x = signal<T>(kN, 2, 1.0);
    std::vector<T> y(kN), buf(L - 1 + kN);
    for (auto _ : st) {
        std::memcpy(buf.data() + L - 1, x.data(), kN * sizeof(T));
        for (int n = 0; n < kN; ++n) {
            double s = 0;
            const T* w = buf.data() + n + L - 1;
            for (int k = 0; k < L; ++k) s += double(h[k]) * double(w[-k]);
            y[n] = T(s);
        }
        std::memmove(buf.data(), buf.data() + kN, (L - 1) * sizeof(T));
        benchmark::DoNotOptimize(y.data());
    }
    st.SetItemsProcessed(st.iterations() * kN);
}
void BM_loopFIR32f(benchmark::State& st) { loopBlock<float>(st); }
void BM_loopFIR64f(benchmark::State& st) { loopBlock<double>(st); }

BENCHMARK(BM_zvpFIRDirect32f)->Apply(args);
BENCHMARK(BM_zvpFIROneDirect32f)->Apply(args);
BENCHMARK(BM_loopFIR32f)->Apply(args);
BENCHMARK(BM_zvpFIRDirect64f)->Apply(args);
BENCHMARK(BM_loopFIR64f)->Apply(args);

#ifdef ZVP_HAVE_VOLK
void BM_volkFIR32f(benchmark::State& st) {
    const int L = int(st.range(0));
    const auto h = signal<float>(L, 1, 1.0 / L), x = signal<float>(kN, 2, 1.0);
    std::vector<float> hr(h.rbegin(), h.rend()), y(kN), buf(L - 1 + kN);
    for (auto _ : st) {
        std::memcpy(buf.data() + L - 1, x.data(), kN * sizeof(float));
        for (int n = 0; n < kN; ++n) volk_32f_x2_dot_prod_32f(&y[n], buf.data() + n, hr.data(), unsigned(L));
        std::memmove(buf.data(), buf.data() + kN, (L - 1) * sizeof(float));
        benchmark::DoNotOptimize(y.data());
    }
    st.SetItemsProcessed(st.iterations() * kN);
}
BENCHMARK(BM_volkFIR32f)->Apply(args);
#endif

void BM_zvpFIRDirect16s(benchmark::State& st) {
    const int L = int(st.range(0));
    const auto h = signal<Zvp16s>(L, 1, 32767.0 / L), x = signal<Zvp16s>(kN, 2, 32767.0);
    std::vector<Zvp16s> y(kN), dly(2 * L);
    int idx = 0;
    for (auto _ : st) {
        zvpsFIR_Direct_16s_Sfs(x.data(), y.data(), kN, h.data(), L, dly.data(), &idx, 15);
        benchmark::DoNotOptimize(y.data());
    }
    st.SetItemsProcessed(st.iterations() * kN);
}
void BM_zvpFIR32fDirect16s(benchmark::State& st) {
    const int L = int(st.range(0));
    const auto h = signal<float>(L, 1, 1.0 / L);
    const auto x = signal<Zvp16s>(kN, 2, 32767.0);
    std::vector<Zvp16s> y(kN), dly(2 * L);
    int idx = 0;
    for (auto _ : st) {
        zvpsFIR32f_Direct_16s_Sfs(x.data(), y.data(), kN, h.data(), L, dly.data(), &idx, 0);
        benchmark::DoNotOptimize(y.data());
    }
    st.SetItemsProcessed(st.iterations() * kN);
}
BENCHMARK(BM_zvpFIRDirect16s)->Apply(args);
BENCHMARK(BM_zvpFIR32fDirect16s)->Apply(args);

#ifdef ZVP_HAVE_SPANDSP
void BM_spandspFir16(benchmark::State& st) {
    const int L = int(st.range(0));
    const auto h = signal<std::int16_t>(L, 1, 32767.0 / L), x = signal<std::int16_t>(kN, 2, 32767.0);
    std::vector<std::int16_t> y(kN);
    fir16_state_t f;
    fir16_create(&f, h.data(), L);
    for (auto _ : st) {
        for (int n = 0; n < kN; ++n) y[n] = fir16(&f, x[n]);
        benchmark::DoNotOptimize(y.data());
    }
    fir16_free(&f);
    st.SetItemsProcessed(st.iterations() * kN);
}
void BM_spandspFirFloat(benchmark::State& st) {
    const int L = int(st.range(0));
    const auto h = signal<float>(L, 1, 1.0 / L);
    const auto x = signal<std::int16_t>(kN, 2, 32767.0);
    std::vector<std::int16_t> y(kN);
    fir_float_state_t f;
    fir_float_create(&f, h.data(), L);
    for (auto _ : st) {
        for (int n = 0; n < kN; ++n) y[n] = fir_float(&f, x[n]);
        benchmark::DoNotOptimize(y.data());
    }
    fir_float_free(&f);
    st.SetItemsProcessed(st.iterations() * kN);
}
BENCHMARK(BM_spandspFir16)->Apply(args);
BENCHMARK(BM_spandspFirFloat)->Apply(args);
#endif

}  // namespace
