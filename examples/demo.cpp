// zvpSP demo: what the library is, what the processor offers, and a short
// signal chain built from the library's operations.
#include <cmath>
#include <cstdio>
#include <cstring>

#include "zvpcore.h"
#include "zvps.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

void section(const char* title) { std::printf("\n== %s ==\n", title); }

void showVersion() {
    section("Library");
    const ZvpLibraryVersion* v = zvpsGetLibVersion();
    std::printf("%s\nversion %d.%d.%d, revision %d (\"%s\"), built %s, target %s\n", v->name,
                v->major, v->minor, v->patch, v->revision, v->versionText, v->buildDate,
                v->targetCpu);
}

void showCpu() {
    section("Processor");
    Zvp64u mask = 0;
    Zvp32u regs[4] = {};
    zvpGetCpuFeatures(&mask, regs);
    static const struct { Zvp64u bit; const char* name; } names[] = {
        {zvpCPUID_MMX, "MMX"},       {zvpCPUID_SSE, "SSE"},         {zvpCPUID_SSE2, "SSE2"},
        {zvpCPUID_SSE3, "SSE3"},     {zvpCPUID_SSSE3, "SSSE3"},     {zvpCPUID_SSE41, "SSE4.1"},
        {zvpCPUID_SSE42, "SSE4.2"},  {zvpCPUID_AVX, "AVX"},         {zvpCPUID_AVX2, "AVX2"},
        {zvpCPUID_AVX512F, "AVX-512F"}, {zvpCPUID_FMA, "FMA"},      {zvpCPUID_F16C, "F16C"},
        {zvpCPUID_POPCNT, "POPCNT"}, {zvpCPUID_AES, "AES"},         {zvpCPUID_CLMUL, "CLMUL"},
        {zvpCPUID_BMI2, "BMI2"},
    };
    std::printf("feature mask 0x%llx:", static_cast<unsigned long long>(mask));
    for (const auto& n : names)
        if (mask & n.bit) std::printf(" %s", n.name);
    std::printf("\nCPUID leaf 1: eax=%08x ebx=%08x ecx=%08x edx=%08x\n", regs[0], regs[1], regs[2],
                regs[3]);
    std::printf("the p8 code needs SSE4.2: %s\n", ownGetFeature(zvpCPUID_SSE42) ? "present" : "MISSING");
}

void showStatuses() {
    section("Status codes");
    const ZvpStatus codes[] = {zvpStsNoErr,     zvpStsDivByZero,    zvpStsSizeErr,
                               zvpStsNullPtrErr, zvpStsFftOrderErr, zvpStsContextMatchErr};
    for (ZvpStatus s : codes) std::printf("%5d  %s\n", static_cast<int>(s), zvpGetStatusString(s));
    // Checks come in a fixed order: pointers before lengths.
    std::printf("zvpsZero_32f(NULL, 0) -> %s\n", zvpGetStatusString(zvpsZero_32f(nullptr, 0)));
    Zvp32f one = 0;
    std::printf("zvpsZero_32f(&x, 0)   -> %s\n", zvpGetStatusString(zvpsZero_32f(&one, 0)));
}

void showCopies() {
    section("Vectors and bit strings");
    Zvp32f* v = zvpsMalloc_32f(8);
    Zvp32f* r = zvpsMalloc_32f(8);
    if (!v || !r) {
        std::printf("allocation failed\n");
        zvpsFree(v);
        zvpsFree(r);
        return;
    }
    zvpsSet_32f(0.25f, v, 8);
    for (int i = 0; i < 8; ++i) v[i] += static_cast<Zvp32f>(i);
    zvpsFlip_32f(v, r, 8);
    std::printf("ramp   :");
    for (int i = 0; i < 8; ++i) std::printf(" %5.2f", v[i]);
    std::printf("\nflipped:");
    for (int i = 0; i < 8; ++i) std::printf(" %5.2f", r[i]);
    zvpsMove_32f(v, v + 2, 6);  // overlapping move to the right
    std::printf("\nmoved  :");
    for (int i = 0; i < 8; ++i) std::printf(" %5.2f", v[i]);
    std::printf("\n");
    zvpsFree(v);
    zvpsFree(r);

    const Zvp8u src[2] = {0x03, 0x80};  // bits 6, 7 of byte 0 and bit 0 of byte 1 set
    Zvp8u dst = 0x15;
    zvpsCopy_1u(src, 6, &dst, 0, 3);
    std::printf("3 bits from offset 6 into 0x15 -> 0x%02x\n", dst);
}

// Mixes two loud 16-bit signals: at scale factor 0 the sum saturates, at
// scale factor 1 it is halved (rounded to nearest, ties to even) and fits.
void showMixing() {
    section("Mixing two 16-bit signals");
    constexpr int n = 48;
    Zvp16s a[n], b[n], mix0[n], mix1[n];
    for (int i = 0; i < n; ++i) {
        a[i] = static_cast<Zvp16s>(29000.0 * std::sin(2 * kPi * i / 16.0));
        b[i] = static_cast<Zvp16s>(i % 12 < 6 ? 26000 : -26000);
    }
    zvpsAdd_16s_Sfs(a, b, mix0, n, 0);
    zvpsAdd_16s_Sfs(a, b, mix1, n, 1);
    int clipped = 0;
    for (int i = 0; i < n; ++i) clipped += (mix0[i] == 32767 || mix0[i] == -32768);
    std::printf("   a      b    a+b (sf 0)  (a+b)/2 (sf 1)\n");
    for (int i = 0; i < 6; ++i)
        std::printf("%6d %6d %10d %14d\n", a[i], b[i], mix0[i], mix1[i]);
    std::printf("samples clipped at scale factor 0: %d of %d; at scale factor 1: none\n", clipped, n);
}

// The magnitude spectrum of a two-tone signal through the real FFT.
void showSpectrum() {
    section("Spectrum");
    constexpr int order = 10, n = 1 << order;
    constexpr double fs = 8000.0;
    ZvpsFFTSpec_R_32f* spec = nullptr;
    if (zvpsFFTInitAlloc_R_32f(&spec, order, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone) != zvpStsNoErr) {
        std::printf("no FFT specification\n");
        return;
    }
    int bufSize = 0;
    zvpsFFTGetBufSize_R_32f(spec, &bufSize);
    Zvp8u* buf = bufSize > 0 ? zvpsMalloc_8u(bufSize) : nullptr;
    Zvp32f* x = zvpsMalloc_32f(n);
    Zvp32f* ccs = zvpsMalloc_32f(n + 2);
    if (x && ccs) {
        for (int i = 0; i < n; ++i)
            x[i] = static_cast<Zvp32f>(std::sin(2 * kPi * 1000.0 * i / fs) +
                                       0.25 * std::cos(2 * kPi * 2500.0 * i / fs));
        zvpsFFTFwd_RToCCS_32f(x, ccs, spec, buf);
        // Single-sided amplitude: |X[k]| * 2 / N.
        Zvp32f mag[n / 2 + 1];
        for (int k = 0; k <= n / 2; ++k)
            mag[k] = std::sqrt(ccs[2 * k] * ccs[2 * k] + ccs[2 * k + 1] * ccs[2 * k + 1]) * 2.0f / n;
        std::printf("%d-point real FFT at %.0f Hz; the bins within 60 dB of the strongest:\n", n, fs);
        float top = 0;
        for (int peak = 0; peak < 4; ++peak) {
            int best = 0;
            for (int k = 1; k <= n / 2; ++k)
                if (mag[k] > mag[best]) best = k;
            if (peak == 0) top = mag[best];
            if (mag[best] < top * 1e-3f) {
                // What is left is rounding noise of the transform.
                std::printf("  everything else at or below %.1f dB\n",
                            20.0 * std::log10(mag[best] > 1e-12f ? mag[best] : 1e-12f));
                break;
            }
            std::printf("  bin %4d  %7.1f Hz  amplitude %.4f  (%6.1f dB)\n", best, best * fs / n,
                        mag[best], 20.0 * std::log10(mag[best]));
            mag[best] = 0;
        }
    }
    zvpsFree(ccs);
    zvpsFree(x);
    zvpsFree(buf);
    zvpsFFTFree_R_32f(spec);
}

// A float signal to 16-bit samples and to mu-law codes and back: the error
// of each round trip against the original.
void showConversion() {
    section("16-bit and mu-law");
    constexpr int n = 4000;
    static Zvp32f x[n], back16[n], backMu[n];
    static Zvp16s pcm[n];
    static Zvp8u mu[n];
    for (int i = 0; i < n; ++i)
        x[i] = static_cast<Zvp32f>(0.6 * std::sin(2 * kPi * 440.0 * i / 8000.0) +
                                   0.05 * std::sin(2 * kPi * 3100.0 * i / 8000.0));
    // Full scale 1.0 = 2^15: scale factor -15, rounded to nearest.
    zvpsConvert_32f16s_Sfs(x, pcm, n, zvpRndNear, -15);
    zvpsConvert_16s32f_Sfs(pcm, back16, n, 15);
    zvpsLinToMuLaw_32f8u(x, mu, n);
    zvpsMuLawToLin_8u32f(mu, backMu, n);
    double e16 = 0, eMu = 0, p = 0, m16 = 0, mMu = 0;
    for (int i = 0; i < n; ++i) {
        const double d16 = back16[i] - x[i], dMu = backMu[i] - x[i];
        p += double(x[i]) * x[i];
        e16 += d16 * d16;
        eMu += dMu * dMu;
        m16 = std::fmax(m16, std::fabs(d16));
        mMu = std::fmax(mMu, std::fabs(dMu));
    }
    std::printf("%d samples of 440 Hz at 0.6 and 3100 Hz at 0.05 of full scale, 8 kHz\n", n);
    std::printf("  16-bit : largest error %.3g, signal to error %.1f dB\n", m16, 10 * std::log10(p / e16));
    std::printf("  mu-law : largest error %.3g, signal to error %.1f dB (8 bits a sample)\n", mMu,
                10 * std::log10(p / eMu));
    // The signal's statistics and its peak, from the library's reductions.
    Zvp32f mean = 0, sd = 0, peak = 0;
    int at = -1;
    zvpsMeanStdDev_32f(x, n, &mean, &sd);
    zvpsMaxIndx_32f(x, n, &peak, &at);
    std::printf("  signal : mean %.3g, standard deviation %.4f, peak %.4f at sample %d\n", mean, sd, peak, at);
    std::printf("  first codes:");
    for (int i = 0; i < 8; ++i) std::printf(" 0x%02x", mu[i]);
    std::printf("\n");
}

// Leakage of an off-bin tone with and without a Hann window, through the
// real FFT: the level of the bins far from the tone.
void showWindow() {
    section("Window");
    constexpr int order = 10, n = 1 << order;
    ZvpsFFTSpec_R_32f* spec = nullptr;
    if (zvpsFFTInitAlloc_R_32f(&spec, order, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone) != zvpStsNoErr) return;
    int bufSize = 0;
    zvpsFFTGetBufSize_R_32f(spec, &bufSize);
    Zvp8u* buf = bufSize > 0 ? zvpsMalloc_8u(bufSize) : nullptr;
    static Zvp32f x[n], w[n], ccs[n + 2];
    // 100.37 cycles in the frame: the tone falls between bins 100 and 101.
    for (int i = 0; i < n; ++i) x[i] = static_cast<Zvp32f>(std::sin(2 * kPi * 100.37 * i / n));
    zvpsWinHann_32f(x, w, n);
    auto levels = [&](const Zvp32f* s, const char* name, double gain) {
        zvpsFFTFwd_RToCCS_32f(s, ccs, spec, buf);
        auto db = [&](int k) {
            const double m = std::hypot(ccs[2 * k], ccs[2 * k + 1]) * 2.0 / (n * gain);
            return 20.0 * std::log10(m > 1e-12 ? m : 1e-12);
        };
        double far = -300;
        for (int k = 120; k <= n / 2; ++k) far = std::fmax(far, db(k));
        std::printf("  %-10s peak bin %6.1f dB, 10 bins away %6.1f dB, 20+ bins away at most %6.1f dB\n",
                    name, db(100), db(110), far);
    };
    std::printf("a tone of 100.37 cycles in %d samples, between two bins:\n", n);
    levels(x, "no window", 1.0);
    levels(w, "Hann", 0.5);
    zvpsFree(buf);
    zvpsFFTFree_R_32f(spec);
}

// Gaussian noise from the library's generator, and its measured statistics.
void showNoise() {
    section("Gaussian noise");
    constexpr int n = 100000;
    static Zvp32f v[n];
    ZvpsRandGaussState_32f* state = nullptr;
    if (zvpsRandGaussInitAlloc_32f(&state, 1.5f, 0.25f, 2026u) != zvpStsNoErr) return;
    // Two calls continue one sequence.
    zvpsRandGauss_32f(v, n / 2, state);
    zvpsRandGauss_32f(v + n / 2, n - n / 2, state);
    zvpsRandGaussFree_32f(state);
    Zvp32f mean = 0, sd = 0;
    zvpsMeanStdDev_32f(v, n, &mean, &sd);
    int within = 0;
    for (int i = 0; i < n; ++i) within += std::fabs(v[i] - 1.5f) <= 0.25f;
    std::printf("%d samples, asked for mean 1.5 and deviation 0.25, seed 2026:\n", n);
    std::printf("  measured mean %.4f, deviation %.4f, %.1f%% within one deviation (68.3%% expected)\n",
                mean, sd, 100.0 * within / n);
}

// DTMF digits: each key is the sum of a row and a column tone; Goertzel at
// the eight tone frequencies over 205 samples at 8 kHz finds both.
void showDtmf() {
    section("DTMF detection");
    static const double rows[4] = {697, 770, 852, 941}, cols[4] = {1209, 1336, 1477, 1633};
    static const char keys[4][5] = {"123A", "456B", "789C", "*0#D"};
    constexpr double fs = 8000.0;
    constexpr int n = 205;
    const char* dialled = "2026#11*23";
    std::printf("dialled  %s\ndetected ", dialled);
    for (const char* k = dialled; *k; ++k) {
        int r = 0, c = 0;
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j)
                if (keys[i][j] == *k) r = i, c = j;
        // The key's two tones, generated by the library, continuing phase.
        static Zvp32f lo[n], hi[n], x[n];
        Zvp32f p1 = 0, p2 = 0;
        zvpsTone_Direct_32f(lo, n, 0.5f, static_cast<Zvp32f>(rows[r] / fs), &p1, zvpAlgHintNone);
        zvpsTone_Direct_32f(hi, n, 0.5f, static_cast<Zvp32f>(cols[c] / fs), &p2, zvpAlgHintNone);
        zvpsAdd_32f(lo, hi, x, n);
        auto power = [&](double f) {
            Zvp32fc v{};
            zvpsGoertz_32f(x, n, &v, static_cast<Zvp32f>(f / fs));
            return double(v.re) * v.re + double(v.im) * v.im;
        };
        int br = 0, bc = 0;
        for (int i = 1; i < 4; ++i) {
            if (power(rows[i]) > power(rows[br])) br = i;
            if (power(cols[i]) > power(cols[bc])) bc = i;
        }
        std::printf("%c", keys[br][bc]);
    }
    std::printf("\n");
}

// A 129-tap windowed-sinc low-pass (cut-off 4 kHz at 48 kHz) run over a
// two-tone signal in blocks of 1000 samples: the 1 kHz tone passes, the
// 12 kHz tone is removed. The state carries the history from block to block,
// so the blocks give the output of one long call.
void showFir() {
    section("FIR low-pass");
    constexpr int taps = 129, block = 1000, blocks = 20, n = block * blocks;
    constexpr double fs = 48000.0, cut = 4000.0 / fs, f1 = 1000.0, f2 = 12000.0;
    static Zvp32f h[taps], x[n], y[n], t[n], one[n];
    for (int k = 0; k < taps; ++k) {
        const double m = k - (taps - 1) / 2.0;
        h[k] = static_cast<Zvp32f>(m == 0 ? 2 * cut : std::sin(2 * kPi * cut * m) / (kPi * m));
    }
    zvpsWinBlackmanOpt_32f_I(h, taps);
    Zvp32f p1 = 0, p2 = 0;
    zvpsTone_Direct_32f(x, n, 0.5f, static_cast<Zvp32f>(f1 / fs), &p1, zvpAlgHintNone);
    zvpsTone_Direct_32f(t, n, 0.5f, static_cast<Zvp32f>(f2 / fs), &p2, zvpAlgHintNone);
    zvpsAdd_32f_I(t, x, n);
    ZvpsFIRState_32f* st = nullptr;
    if (zvpsFIRInitAlloc_32f(&st, h, taps, nullptr) != zvpStsNoErr) return;
    for (int b = 0; b < blocks; ++b) zvpsFIR_32f(x + b * block, y + b * block, block, st);
    zvpsFIRSetDlyLine_32f(st, nullptr);
    zvpsFIR_32f(x, one, n, st);
    zvpsFIRFree_32f(st);
    // Levels over the last 19200 samples (whole periods of both tones), past
    // the filter's start-up.
    constexpr int m = 19200;
    auto level = [&](const Zvp32f* s, double f) {
        Zvp32fc v{};
        zvpsGoertz_32f(s + n - m, m, &v, static_cast<Zvp32f>(f / fs));
        const double a = 2.0 * std::hypot(double(v.re), double(v.im)) / m;
        return 20.0 * std::log10(a > 1e-12 ? a : 1e-12);
    };
    double diff = 0;
    for (int i = 0; i < n; ++i) diff = std::fmax(diff, std::fabs(double(y[i]) - one[i]));
    std::printf("%d taps, cut-off %.0f Hz, %d blocks of %d samples at %.0f Hz\n", taps, cut * fs, blocks, block,
                fs);
    std::printf("  %5.0f Hz tone: %7.1f dB before, %7.1f dB after\n", f1, level(x, f1), level(y, f1));
    std::printf("  %5.0f Hz tone: %7.1f dB before, %7.1f dB after\n", f2, level(x, f2), level(y, f2));
    std::printf("  blocks against one call of %d samples: largest difference %.2g\n", n, diff);
}

}  // namespace

int main() {
    std::printf("zvpSP demo\n");
    showVersion();
    showCpu();
    showStatuses();
    showCopies();
    showMixing();
    showSpectrum();
    showConversion();
    showWindow();
    showNoise();
    showDtmf();
    showFir();
    return 0;
}
