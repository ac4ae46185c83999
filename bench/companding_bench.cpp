// The G.711 encoders and decoders against the telephony library's: its
// per-sample inline coder in a plain -O3 -msse4.2 loop, and its block calls
// g711_encode / g711_decode, at 256, 4096 and 1048576 samples, in the same run;
// and the A-law decoder against a plain table lookup.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "zvps.h"
#ifdef ZVP_HAVE_SPANDSP
#include <spandsp/telephony.h>
#include <spandsp/bit_operations.h>
#include <spandsp/g711.h>
#endif

namespace {

struct Buffers {
    explicit Buffers(int n) : n(n), lin(zvpsMalloc_16s(n)), codes(zvpsMalloc_8u(n)) {
        std::mt19937 rng(1);
        for (int i = 0; i < n; ++i) lin[i] = Zvp16s(rng()), codes[i] = Zvp8u(rng());
    }
    ~Buffers() {
        zvpsFree(lin);
        zvpsFree(codes);
    }
    int n;
    Zvp16s* lin;
    Zvp8u* codes;
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

void BM_zvpLinToALaw(benchmark::State& st) { run(st, [](Buffers& m) { zvpsLinToALaw_16s8u(m.lin, m.codes, m.n); }); }
void BM_zvpLinToMuLaw(benchmark::State& st) { run(st, [](Buffers& m) { zvpsLinToMuLaw_16s8u(m.lin, m.codes, m.n); }); }
void BM_zvpALawToLin(benchmark::State& st) { run(st, [](Buffers& m) { zvpsALawToLin_8u16s(m.codes, m.lin, m.n); }); }
void BM_zvpMuLawToLin(benchmark::State& st) { run(st, [](Buffers& m) { zvpsMuLawToLin_8u16s(m.codes, m.lin, m.n); }); }
BENCHMARK(BM_zvpLinToALaw)->Apply(sizes);
BENCHMARK(BM_zvpLinToMuLaw)->Apply(sizes);
BENCHMARK(BM_zvpALawToLin)->Apply(sizes);
BENCHMARK(BM_zvpMuLawToLin)->Apply(sizes);

// The alternative to the lane decoder: a 256-entry table gathered one sample
// at a time (a plain -O3 loop; the table is our decoder's output).
void BM_tableALawToLin(benchmark::State& st) {
    Zvp8u codes[256];
    Zvp16s table[256];
    for (int i = 0; i < 256; ++i) codes[i] = Zvp8u(i);
    zvpsALawToLin_8u16s(codes, table, 256);
    run(st, [&table](Buffers& m) { for (int i = 0; i < m.n; ++i) m.lin[i] = table[m.codes[i]]; });
}
BENCHMARK(BM_tableALawToLin)->Apply(sizes);

#ifdef ZVP_HAVE_SPANDSP
void BM_inlineLinToALaw(benchmark::State& st) {
    run(st, [](Buffers& m) { for (int i = 0; i < m.n; ++i) m.codes[i] = linear_to_alaw(m.lin[i]); });
}
void BM_inlineLinToMuLaw(benchmark::State& st) {
    run(st, [](Buffers& m) { for (int i = 0; i < m.n; ++i) m.codes[i] = linear_to_ulaw(m.lin[i]); });
}
void BM_inlineALawToLin(benchmark::State& st) {
    run(st, [](Buffers& m) { for (int i = 0; i < m.n; ++i) m.lin[i] = alaw_to_linear(m.codes[i]); });
}
void BM_inlineMuLawToLin(benchmark::State& st) {
    run(st, [](Buffers& m) { for (int i = 0; i < m.n; ++i) m.lin[i] = ulaw_to_linear(m.codes[i]); });
}
template <int Mode, bool Encode>
void block(benchmark::State& st) {
    g711_state_t* s = g711_init(nullptr, Mode);
    run(st, [s](Buffers& m) {
        if (Encode) g711_encode(s, m.codes, m.lin, m.n);
        else g711_decode(s, m.lin, m.codes, m.n);
    });
    g711_free(s);
}
void BM_blockLinToALaw(benchmark::State& st) { block<G711_ALAW, true>(st); }
void BM_blockLinToMuLaw(benchmark::State& st) { block<G711_ULAW, true>(st); }
void BM_blockALawToLin(benchmark::State& st) { block<G711_ALAW, false>(st); }
void BM_blockMuLawToLin(benchmark::State& st) { block<G711_ULAW, false>(st); }
BENCHMARK(BM_inlineLinToALaw)->Apply(sizes);
BENCHMARK(BM_inlineLinToMuLaw)->Apply(sizes);
BENCHMARK(BM_inlineALawToLin)->Apply(sizes);
BENCHMARK(BM_inlineMuLawToLin)->Apply(sizes);
BENCHMARK(BM_blockLinToALaw)->Apply(sizes);
BENCHMARK(BM_blockLinToMuLaw)->Apply(sizes);
BENCHMARK(BM_blockALawToLin)->Apply(sizes);
BENCHMARK(BM_blockMuLawToLin)->Apply(sizes);
#endif

}  // namespace
