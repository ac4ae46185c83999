// Two builds of the library side by side in one process: each is loaded into
// its own link namespace (dlmopen), the same transforms run on the same
// input, interleaved, and the time ratio B / A is printed per size (median of
// five rounds, each round the fastest of seven timings). Used to show that a
// change to the kernels does not slow them, on a machine too noisy for two
// separate benchmark runs to be compared.
//
//   zvp_lib_ab path/to/A/libzvpsp8.so.8 path/to/B/libzvpsp8.so.8
//
// Copy each library with its libzvpcore.so.8 into a directory of its own.
#include <dlfcn.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "zvps.h"

namespace {

struct Lib {
    decltype(&zvpsFFTInitAlloc_C_32fc) initC32;
    decltype(&zvpsFFTFwd_CToC_32fc) fwdC32;
    decltype(&zvpsFFTInitAlloc_C_64fc) initC64;
    decltype(&zvpsFFTFwd_CToC_64fc) fwdC64;
    decltype(&zvpsFFTInitAlloc_R_32f) initR32;
    decltype(&zvpsFFTFwd_RToPack_32f) fwdR32;
};

template <class F>
void bind(void* h, F& f, const char* name) {
    f = reinterpret_cast<F>(dlsym(h, name));
    if (!f) {
        std::fprintf(stderr, "%s: not found\n", name);
        std::exit(1);
    }
}

Lib load(const char* path) {
    void* h = dlmopen(LM_ID_NEWLM, path, RTLD_NOW);
    if (!h) {
        std::fprintf(stderr, "%s\n", dlerror());
        std::exit(1);
    }
    Lib l;
    bind(h, l.initC32, "zvpsFFTInitAlloc_C_32fc");
    bind(h, l.fwdC32, "zvpsFFTFwd_CToC_32fc");
    bind(h, l.initC64, "zvpsFFTInitAlloc_C_64fc");
    bind(h, l.fwdC64, "zvpsFFTFwd_CToC_64fc");
    bind(h, l.initR32, "zvpsFFTInitAlloc_R_32f");
    bind(h, l.fwdR32, "zvpsFFTFwd_RToPack_32f");
    return l;
}

template <class F>
double fastest(F f, int reps) {
    double best = 1e30;
    for (int r = 0; r < 7; ++r) {
        const auto t0 = std::chrono::steady_clock::now();
        for (int i = 0; i < reps; ++i) f();
        best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count());
    }
    return best / reps;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s libA libB\n", argv[0]);
        return 2;
    }
    const Lib a = load(argv[1]), b = load(argv[2]);
    std::printf("order  C_32fc B/A  C_64fc B/A  R_32f B/A\n");
    for (int m = 4; m <= 20; m += 2) {
        const int n = 1 << m;
        const int reps = std::max(3, (1 << 22) / (n * (m + 1)));
        std::vector<Zvp32fc> x(n), y(n);
        std::vector<Zvp64fc> xd(n), yd(n);
        std::vector<Zvp32f> xr(n), yr(n + 2);
        for (int i = 0; i < n; ++i) {
            x[i] = {Zvp32f(i % 7), Zvp32f(i % 5)};
            xd[i] = {Zvp64f(i % 7), Zvp64f(i % 3)};
            xr[i] = Zvp32f(i % 11);
        }
        ZvpsFFTSpec_C_32fc *ca, *cb;
        ZvpsFFTSpec_C_64fc *da, *db;
        ZvpsFFTSpec_R_32f *ra, *rb;
        if (a.initC32(&ca, m, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone) || b.initC32(&cb, m, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone) ||
            a.initC64(&da, m, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone) || b.initC64(&db, m, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone) ||
            a.initR32(&ra, m, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone) || b.initR32(&rb, m, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone))
            return 1;
        std::vector<double> r[3];
        for (int round = 0; round < 5; ++round) {
            r[0].push_back(fastest([&] { b.fwdC32(x.data(), y.data(), cb, nullptr); }, reps) /
                           fastest([&] { a.fwdC32(x.data(), y.data(), ca, nullptr); }, reps));
            r[1].push_back(fastest([&] { b.fwdC64(xd.data(), yd.data(), db, nullptr); }, reps) /
                           fastest([&] { a.fwdC64(xd.data(), yd.data(), da, nullptr); }, reps));
            r[2].push_back(fastest([&] { b.fwdR32(xr.data(), yr.data(), rb, nullptr); }, reps) /
                           fastest([&] { a.fwdR32(xr.data(), yr.data(), ra, nullptr); }, reps));
        }
        for (auto& v : r) std::sort(v.begin(), v.end());
        std::printf("%5d  %10.3f  %10.3f  %9.3f\n", m, r[0][2], r[1][2], r[2][2]);
    }
    return 0;
}
