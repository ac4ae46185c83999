// MaxIndx_32f against the vector-kernel library's index search (its SSE4.1
// kernel by name, and its dispatched best), and MinMaxIndx_16s against a
// plain -O3 -msse4.2 loop, at 256, 4096 and 1048576 elements, in one run.
// A third MaxIndx_32f peer is the other design the search could have used:
// index lanes carried beside the running maxima in one pass (written here).
#include <benchmark/benchmark.h>
#include <immintrin.h>

#include <cstdint>
#include <random>

#include "zvps.h"

#ifdef ZVP_HAVE_VOLK
#include <volk/volk.h>
#endif

namespace {

template <class T>
struct Buffer {
    // Random values, or rising ones: then every block of the search holds a
    // new maximum and is scanned twice (its worst case).
    Buffer(int n, bool rising) : n(n), p(reinterpret_cast<T*>(zvpsMalloc_8u(int(n * sizeof(T))))) {
        std::mt19937 g(1);
        for (int i = 0; i < n; ++i) {
            if (rising) p[i] = T(i);
            else if constexpr (sizeof(T) == 2) p[i] = T(int(g() % 65536) - 32768);
            else p[i] = T(std::uniform_real_distribution<float>(-1000.0f, 1000.0f)(g));
        }
    }
    ~Buffer() { zvpsFree(p); }
    int n;
    T* p;
};

void sizes(benchmark::internal::Benchmark* b) {
    for (long rising : {0L, 1L})
        for (long n : {256L, 4096L, 1048576L}) b->Args({n, rising});
}

template <class T, class F>
void run(benchmark::State& st, F f) {
    Buffer<T> m(int(st.range(0)), st.range(1) != 0);
    for (auto _ : st) {
        benchmark::DoNotOptimize(f(m.p, m.n));
        benchmark::ClobberMemory();
    }
    st.SetItemsProcessed(st.iterations() * st.range(0));
}

void BM_zvpMaxIndx_32f(benchmark::State& st) {
    run<float>(st, [](const float* p, int n) {
        float v;
        int i;
        zvpsMaxIndx_32f(p, n, &v, &i);
        return i;
    });
}

// One pass: two vectors in flight, each with its maxima and their indices
// (as floats, exact below 2^24); the lowest index among equal lane maxima.
int indexLanes(const float* p, int n) {
    __m128 m0 = _mm_set1_ps(-INFINITY), m1 = m0, i0 = _mm_setzero_ps(), i1 = i0;
    __m128 at0 = _mm_setr_ps(0, 1, 2, 3), at1 = _mm_setr_ps(4, 5, 6, 7);
    const __m128 step = _mm_set1_ps(8);
    int k = 0;
    for (; k + 8 <= n; k += 8) {
        const __m128 x0 = _mm_loadu_ps(p + k), x1 = _mm_loadu_ps(p + k + 4);
        const __m128 g0 = _mm_cmpgt_ps(x0, m0), g1 = _mm_cmpgt_ps(x1, m1);
        m0 = _mm_blendv_ps(m0, x0, g0), i0 = _mm_blendv_ps(i0, at0, g0);
        m1 = _mm_blendv_ps(m1, x1, g1), i1 = _mm_blendv_ps(i1, at1, g1);
        at0 = _mm_add_ps(at0, step), at1 = _mm_add_ps(at1, step);
    }
    alignas(16) float mv[8], iv[8];
    _mm_store_ps(mv, m0), _mm_store_ps(mv + 4, m1), _mm_store_ps(iv, i0), _mm_store_ps(iv + 4, i1);
    float best = -INFINITY;
    int at = 0;
    for (int j = 0; j < 8; ++j)
        if (mv[j] > best || (mv[j] == best && int(iv[j]) < at)) best = mv[j], at = int(iv[j]);
    for (; k < n; ++k)
        if (p[k] > best) best = p[k], at = k;
    return at;
}
void BM_indexLanesMaxIndx_32f(benchmark::State& st) { run<float>(st, indexLanes); }

#ifdef ZVP_HAVE_VOLK
void BM_volkSseIndexMax_32f(benchmark::State& st) {
    run<float>(st, [](const float* p, int n) {
        std::uint32_t i;
        volk_32f_index_max_32u_manual(&i, p, std::uint32_t(n), "a_sse4_1");
        return i;
    });
}
void BM_volkIndexMax_32f(benchmark::State& st) {
    run<float>(st, [](const float* p, int n) {
        std::uint32_t i;
        volk_32f_index_max_32u(&i, p, std::uint32_t(n));
        return i;
    });
}
BENCHMARK(BM_volkSseIndexMax_32f)->Apply(sizes);
BENCHMARK(BM_volkIndexMax_32f)->Apply(sizes);
#endif

void BM_zvpMinMaxIndx_16s(benchmark::State& st) {
    run<std::int16_t>(st, [](const std::int16_t* p, int n) {
        std::int16_t lo, hi;
        int a, b;
        zvpsMinMaxIndx_16s(p, n, &lo, &a, &hi, &b);
        return a + b;
    });
}
void BM_loopMinMaxIndx_16s(benchmark::State& st) {
    run<std::int16_t>(st, [](const std::int16_t* p, int n) {
        std::int16_t lo = p[0], hi = p[0];
        int a = 0, b = 0;
        for (int i = 1; i < n; ++i) {
            if (p[i] < lo) lo = p[i], a = i;
            if (p[i] > hi) hi = p[i], b = i;
        }
        return a + b + lo + hi;
    });
}

BENCHMARK(BM_zvpMaxIndx_32f)->Apply(sizes);
BENCHMARK(BM_indexLanesMaxIndx_32f)->Apply(sizes);
BENCHMARK(BM_zvpMinMaxIndx_16s)->Apply(sizes);
BENCHMARK(BM_loopMinMaxIndx_16s)->Apply(sizes);

}  // namespace
