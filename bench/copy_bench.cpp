// Copy, Set, Zero and Move of 32f vectors against memcpy, memset and
// memmove, 1 KiB to 64 MiB, in the same run.
#include <benchmark/benchmark.h>

#include <cstring>

#include "zvps.h"

namespace {

struct Buffers {
    explicit Buffers(std::size_t bytes)
        : n(int(bytes / sizeof(Zvp32f))), a(zvpsMalloc_32f(n + 16)), b(zvpsMalloc_32f(n + 16)) {
        std::memset(a, 1, bytes);
        std::memset(b, 2, bytes);
    }
    ~Buffers() {
        zvpsFree(a);
        zvpsFree(b);
    }
    int n;
    Zvp32f* a;
    Zvp32f* b;
};

void sizes(benchmark::internal::Benchmark* b) {
    for (long kib = 1; kib <= 64 * 1024; kib *= 4) b->Arg(kib * 1024);
}

void finish(benchmark::State& st, std::size_t bytesPerIter) {
    st.SetBytesProcessed(static_cast<int64_t>(st.iterations() * bytesPerIter));
}

void BM_zvpCopy(benchmark::State& st) {
    Buffers m(st.range(0));
    for (auto _ : st) {
        zvpsCopy_32f(m.a, m.b, m.n);
        benchmark::ClobberMemory();
    }
    finish(st, st.range(0));
}
void BM_memcpy(benchmark::State& st) {
    Buffers m(st.range(0));
    for (auto _ : st) {
        std::memcpy(m.b, m.a, st.range(0));
        benchmark::ClobberMemory();
    }
    finish(st, st.range(0));
}
void BM_zvpSet(benchmark::State& st) {
    Buffers m(st.range(0));
    for (auto _ : st) {
        zvpsSet_32f(1.5f, m.b, m.n);
        benchmark::ClobberMemory();
    }
    finish(st, st.range(0));
}
void BM_memset(benchmark::State& st) {
    Buffers m(st.range(0));
    for (auto _ : st) {
        std::memset(m.b, 0x3f, st.range(0));
        benchmark::ClobberMemory();
    }
    finish(st, st.range(0));
}
void BM_zvpZero(benchmark::State& st) {
    Buffers m(st.range(0));
    for (auto _ : st) {
        zvpsZero_32f(m.b, m.n);
        benchmark::ClobberMemory();
    }
    finish(st, st.range(0));
}
void BM_memsetZero(benchmark::State& st) {
    Buffers m(st.range(0));
    for (auto _ : st) {
        std::memset(m.b, 0, st.range(0));
        benchmark::ClobberMemory();
    }
    finish(st, st.range(0));
}
// Overlapping move by 16 elements to the right.
void BM_zvpMove(benchmark::State& st) {
    Buffers m(st.range(0));
    for (auto _ : st) {
        zvpsMove_32f(m.a, m.a + 16, m.n);
        benchmark::ClobberMemory();
    }
    finish(st, st.range(0));
}
void BM_memmove(benchmark::State& st) {
    Buffers m(st.range(0));
    for (auto _ : st) {
        std::memmove(m.a + 16, m.a, st.range(0));
        benchmark::ClobberMemory();
    }
    finish(st, st.range(0));
}

BENCHMARK(BM_zvpCopy)->Apply(sizes);
BENCHMARK(BM_memcpy)->Apply(sizes);
BENCHMARK(BM_zvpSet)->Apply(sizes);
BENCHMARK(BM_memset)->Apply(sizes);
BENCHMARK(BM_zvpZero)->Apply(sizes);
BENCHMARK(BM_memsetZero)->Apply(sizes);
BENCHMARK(BM_zvpMove)->Apply(sizes);
BENCHMARK(BM_memmove)->Apply(sizes);

}  // namespace
