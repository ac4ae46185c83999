// Conversions against VOLK in the same binary -- its dispatched kernel and
// its SSE kernel picked by name -- and the binary16 conversions against plain
// scalar loops built here with -O3 -msse4.2. Pairs compute the same values:
//   Convert_32f16s_Sfs (nearest, sf -15)  vs volk_32f_s32f_convert_16i (x 32768)
//   Convert_16s32f_Sfs (sf 15)           vs volk_16i_s32f_convert_32f (/ 32768)
//   Convert_32f8s_Sfs  (nearest, sf -7)   vs volk_32f_s32f_convert_8i  (x 128)
//   Convert_32f16f (nearest), Convert_16f32f vs plain loops.
// Bytes processed count the source and the destination.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "zvps.h"

#ifdef ZVP_HAVE_VOLK
#include <volk/volk.h>
#endif

namespace {

const std::vector<int64_t> kSizes = {256, 4096, 1 << 20};

std::vector<float> unitFloats(std::size_t n) {
    std::mt19937 g(1);
    std::uniform_real_distribution<float> u(-1.0f, 1.0f);
    std::vector<float> v(n);
    for (auto& x : v) x = u(g);
    return v;
}
std::vector<Zvp16s> shorts(std::size_t n) {
    std::mt19937 g(2);
    std::vector<Zvp16s> v(n);
    for (auto& x : v) x = Zvp16s(g());
    return v;
}

template <class S, class D, class F>
void loop(benchmark::State& st, const std::vector<S>& src, F f) {
    const int n = int(st.range(0));
    std::vector<D> d(n);
    for (auto _ : st) {
        f(src.data(), d.data(), n);
        benchmark::DoNotOptimize(d.data());
        benchmark::ClobberMemory();
    }
    st.SetBytesProcessed(st.iterations() * n * int64_t(sizeof(S) + sizeof(D)));
}

// ---- Plain binary16 loops (round to nearest even) -------------------------------

__attribute__((noinline)) void plainToHalf(const float* s, Zvp16f* d, int n) {
    for (int i = 0; i < n; ++i) {
        std::uint32_t u;
        std::memcpy(&u, &s[i], 4);
        const std::uint32_t sign = (u >> 16) & 0x8000, a = u & 0x7FFFFFFF;
        std::uint32_t h;
        if (a > 0x7F800000) {
            h = 0x7E00 | ((a >> 13) & 0x3FF);
        } else if (a >= 0x477FF000) {
            h = 0x7C00;
        } else if (a >= 0x38800000) {
            h = (a - 0x38000000 + 0x0FFF + ((a >> 13) & 1)) >> 13;
        } else {
            float f;
            std::memcpy(&f, &a, 4);
            h = std::uint32_t(__builtin_rintf(f * 16777216.0f));
        }
        d[i] = Zvp16f(sign | h);
    }
}

__attribute__((noinline)) void plainFromHalf(const Zvp16f* s, float* d, int n) {
    for (int i = 0; i < n; ++i) {
        const std::uint32_t h = s[i], a = h & 0x7FFF, sign = (h & 0x8000) << 16;
        std::uint32_t u;
        if (a >= 0x7C00) {
            u = (a << 13) + 0x70000000;
        } else if (a >= 0x0400) {
            u = (a << 13) + 0x38000000;
        } else {
            const float f = float(a) * 5.9604644775390625e-8f;
            std::memcpy(&u, &f, 4);
        }
        u |= sign;
        std::memcpy(&d[i], &u, 4);
    }
}

// ---- 32f -> 16s -----------------------------------------------------------------------

void BM_32f16s_Library(benchmark::State& st) {
    loop<float, Zvp16s>(st, unitFloats(st.range(0)), [](const float* s, Zvp16s* d, int n) {
        zvpsConvert_32f16s_Sfs(s, d, n, zvpRndNear, -15);
    });
}
void BM_32f16s_LibrarySf0(benchmark::State& st) {
    loop<float, Zvp16s>(st, unitFloats(st.range(0)), [](const float* s, Zvp16s* d, int n) {
        zvpsConvert_32f16s_Sfs(s, d, n, zvpRndNear, 0);
    });
}

// ---- 16s -> 32f -----------------------------------------------------------------------

void BM_16s32f_Library(benchmark::State& st) {
    loop<Zvp16s, float>(st, shorts(st.range(0)), [](const Zvp16s* s, float* d, int n) {
        zvpsConvert_16s32f_Sfs(s, d, n, 15);
    });
}

// ---- 32f -> 8s ------------------------------------------------------------------------

void BM_32f8s_Library(benchmark::State& st) {
    loop<float, Zvp8s>(st, unitFloats(st.range(0)), [](const float* s, Zvp8s* d, int n) {
        zvpsConvert_32f8s_Sfs(s, d, n, zvpRndNear, -7);
    });
}

// ---- binary16 ---------------------------------------------------------------------------

std::vector<Zvp16f> halves(std::size_t n) {
    auto f = unitFloats(n);
    std::vector<Zvp16f> h(n);
    plainToHalf(f.data(), h.data(), int(n));
    return h;
}
void BM_32f16f_Library(benchmark::State& st) {
    loop<float, Zvp16f>(st, unitFloats(st.range(0)), [](const float* s, Zvp16f* d, int n) {
        zvpsConvert_32f16f(s, d, n, zvpRndNear);
    });
}
void BM_32f16f_PlainLoop(benchmark::State& st) { loop<float, Zvp16f>(st, unitFloats(st.range(0)), plainToHalf); }
void BM_16f32f_Library(benchmark::State& st) {
    loop<Zvp16f, float>(st, halves(st.range(0)), [](const Zvp16f* s, float* d, int n) { zvpsConvert_16f32f(s, d, n); });
}
void BM_16f32f_PlainLoop(benchmark::State& st) { loop<Zvp16f, float>(st, halves(st.range(0)), plainFromHalf); }

BENCHMARK(BM_32f16s_Library)->ArgsProduct({kSizes});
BENCHMARK(BM_32f16s_LibrarySf0)->ArgsProduct({kSizes});
BENCHMARK(BM_16s32f_Library)->ArgsProduct({kSizes});
BENCHMARK(BM_32f8s_Library)->ArgsProduct({kSizes});
BENCHMARK(BM_32f16f_Library)->ArgsProduct({kSizes});
BENCHMARK(BM_32f16f_PlainLoop)->ArgsProduct({kSizes});
BENCHMARK(BM_16f32f_Library)->ArgsProduct({kSizes});
BENCHMARK(BM_16f32f_PlainLoop)->ArgsProduct({kSizes});

#ifdef ZVP_HAVE_VOLK
void BM_32f16s_VolkSse(benchmark::State& st) {
    loop<float, Zvp16s>(st, unitFloats(st.range(0)), [](const float* s, Zvp16s* d, int n) {
        volk_32f_s32f_convert_16i_manual(d, s, 32768.0f, unsigned(n), "u_sse2");
    });
}
void BM_32f16s_VolkDispatched(benchmark::State& st) {
    loop<float, Zvp16s>(st, unitFloats(st.range(0)), [](const float* s, Zvp16s* d, int n) {
        volk_32f_s32f_convert_16i(d, s, 32768.0f, unsigned(n));
    });
}
void BM_16s32f_VolkSse(benchmark::State& st) {
    loop<Zvp16s, float>(st, shorts(st.range(0)), [](const Zvp16s* s, float* d, int n) {
        volk_16i_s32f_convert_32f_manual(d, s, 32768.0f, unsigned(n), "u_sse4_1");
    });
}
void BM_16s32f_VolkDispatched(benchmark::State& st) {
    loop<Zvp16s, float>(st, shorts(st.range(0)), [](const Zvp16s* s, float* d, int n) {
        volk_16i_s32f_convert_32f(d, s, 32768.0f, unsigned(n));
    });
}
void BM_32f8s_VolkSse(benchmark::State& st) {
    loop<float, Zvp8s>(st, unitFloats(st.range(0)), [](const float* s, Zvp8s* d, int n) {
        volk_32f_s32f_convert_8i_manual(d, s, 128.0f, unsigned(n), "u_sse2");
    });
}
void BM_32f8s_VolkDispatched(benchmark::State& st) {
    loop<float, Zvp8s>(st, unitFloats(st.range(0)), [](const float* s, Zvp8s* d, int n) {
        volk_32f_s32f_convert_8i(d, s, 128.0f, unsigned(n));
    });
}
BENCHMARK(BM_32f16s_VolkSse)->ArgsProduct({kSizes});
BENCHMARK(BM_32f16s_VolkDispatched)->ArgsProduct({kSizes});
BENCHMARK(BM_16s32f_VolkSse)->ArgsProduct({kSizes});
BENCHMARK(BM_16s32f_VolkDispatched)->ArgsProduct({kSizes});
BENCHMARK(BM_32f8s_VolkSse)->ArgsProduct({kSizes});
BENCHMARK(BM_32f8s_VolkDispatched)->ArgsProduct({kSizes});
#endif

}  // namespace
