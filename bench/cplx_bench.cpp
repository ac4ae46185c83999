// Magnitude_32fc and PowerSpectr_32fc against the vector-kernel library's
// magnitude and squared-magnitude kernels (its dispatched choice, and its SSE3
// kernel picked by name), and Phase_32fc against a plain -O3 -msse4.2 loop of
// atan2f, at 256, 4096 and 1048576 elements, in the same run.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "zvps.h"
#ifdef ZVP_HAVE_VOLK
#include <volk/volk.h>
#endif

namespace {

struct Buffers {
    explicit Buffers(int n) : n(n), src(zvpsMalloc_32fc(n)), dst(zvpsMalloc_32f(n)) {
        std::mt19937 rng(1);
        std::uniform_real_distribution<float> dist(-100.0f, 100.0f);
        for (int i = 0; i < n; ++i) src[i] = {dist(rng), dist(rng)}, dst[i] = 0.0f;
    }
    ~Buffers() {
        zvpsFree(src);
        zvpsFree(dst);
    }
    int n;
    Zvp32fc* src;
    Zvp32f* dst;
};

void sizes(benchmark::internal::Benchmark* b) {
    for (long n : {256L, 4096L, 1048576L}) b->Arg(n);
}

template <class F>
void run(benchmark::State& st, F f) {
    Buffers m(int(st.range(0)));
    for (auto _ : st) {
        f(m);
        benchmark::ClobberMemory();
    }
    st.SetItemsProcessed(st.iterations() * st.range(0));
}

void BM_zvpMagnitude_32fc(benchmark::State& st) { run(st, [](Buffers& m) { zvpsMagnitude_32fc(m.src, m.dst, m.n); }); }
void BM_zvpPowerSpectr_32fc(benchmark::State& st) { run(st, [](Buffers& m) { zvpsPowerSpectr_32fc(m.src, m.dst, m.n); }); }
void BM_zvpPhase_32fc(benchmark::State& st) { run(st, [](Buffers& m) { zvpsPhase_32fc(m.src, m.dst, m.n); }); }
void BM_loopAtan2f(benchmark::State& st) {
    run(st, [](Buffers& m) {
        const Zvp32fc* s = m.src;
        Zvp32f* d = m.dst;
        for (int i = 0; i < m.n; ++i) d[i] = atan2f(s[i].im, s[i].re);
    });
}
BENCHMARK(BM_zvpMagnitude_32fc)->Apply(sizes);
BENCHMARK(BM_zvpPowerSpectr_32fc)->Apply(sizes);
BENCHMARK(BM_zvpPhase_32fc)->Apply(sizes);
BENCHMARK(BM_loopAtan2f)->Apply(sizes);

#ifdef ZVP_HAVE_VOLK
lv_32fc_t* asVolk(Zvp32fc* p) { return reinterpret_cast<lv_32fc_t*>(p); }
void BM_volkMagnitude(benchmark::State& st) {
    run(st, [](Buffers& m) { volk_32fc_magnitude_32f(m.dst, asVolk(m.src), unsigned(m.n)); });
}
void BM_volkMagnitudeSse3(benchmark::State& st) {
    run(st, [](Buffers& m) { volk_32fc_magnitude_32f_manual(m.dst, asVolk(m.src), unsigned(m.n), "u_sse3"); });
}
void BM_volkMagnitudeSquared(benchmark::State& st) {
    run(st, [](Buffers& m) { volk_32fc_magnitude_squared_32f(m.dst, asVolk(m.src), unsigned(m.n)); });
}
void BM_volkMagnitudeSquaredSse3(benchmark::State& st) {
    run(st, [](Buffers& m) { volk_32fc_magnitude_squared_32f_manual(m.dst, asVolk(m.src), unsigned(m.n), "u_sse3"); });
}
BENCHMARK(BM_volkMagnitude)->Apply(sizes);
BENCHMARK(BM_volkMagnitudeSse3)->Apply(sizes);
BENCHMARK(BM_volkMagnitudeSquared)->Apply(sizes);
BENCHMARK(BM_volkMagnitudeSquaredSse3)->Apply(sizes);
#endif

}  // namespace
