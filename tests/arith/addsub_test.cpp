// Add, AddC, Sub, SubC and SubCRev: every integer form against the exact
// scale rule over every scale-factor path, in and out of place; float forms
// against the same IEEE expression evaluated here. Check order, lengths and
// alignment are the shape table's (tests/shapes).
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "sentinel.h"
#include "wide_int.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;

// The scale rule (wide_int.h) on R given as a 64-bit value.
template <class D>
D refScale(std::int64_t r, int sf) {
    return zvp::test::scaled<D>(zvp::test::Wide::of(r), sf);
}

// ---- Test data ----------------------------------------------------------------

template <class T>
std::vector<T> boundaryValues() {
    using L = std::numeric_limits<T>;
    std::vector<T> v = {L::min(), T(L::min() + 1), T(0), T(1), T(2), T(3), L::max(), T(L::max() - 1)};
    if constexpr (std::is_signed_v<T>) {
        v.push_back(T(-1));
        v.push_back(T(-2));
        v.push_back(T(-3));
    }
    constexpr int bits = std::numeric_limits<T>::digits;
    for (int k = 1; k < bits; ++k) {
        const T p = T(T(1) << k);
        v.push_back(p);
        v.push_back(T(p - 1));
        v.push_back(T(p + 1));
        if constexpr (std::is_signed_v<T>) {
            v.push_back(T(-p));
            v.push_back(T(-p + 1));
            v.push_back(T(-p - 1));
        }
    }
    return v;
}

// Random values with a third drawn from the boundary set.
template <class T>
std::vector<T> testData(std::size_t n, std::mt19937& rng) {
    static const std::vector<T> b = boundaryValues<T>();
    std::vector<T> v(n);
    for (auto& x : v) {
        if (rng() % 3 == 0) {
            x = b[rng() % b.size()];
        } else {
            std::uint64_t r = (std::uint64_t(rng()) << 32) | rng();
            std::memcpy(&x, &r, sizeof(T));
        }
    }
    return v;
}

// The scale factors every integer form is tried with: every path, every
// threshold and its neighbours, and the extremes.
std::vector<int> allScaleFactors() {
    std::vector<int> v;
    for (int sf = -70; sf <= 70; ++sf) v.push_back(sf);
    for (int sf : {100, -100, 1000, -1000, INT_MAX, INT_MIN, INT_MIN + 1}) v.push_back(sf);
    return v;
}

// ---- Integer forms -------------------------------------------------------------

enum Kind { kVecVec, kVecConst, kConstVec };

// One exported form, seen as an operation on reals of type T. Complex forms
// have two reals per element and a constant pair (re, im).
template <class T>
struct IntForm {
    const char* name;
    int reals;        // reals per element (1 or 2)
    Kind kind;
    bool sub;         // R = y - x (vector-vector) or x - c / c - x; else a sum
    bool scaled;      // has a scale factor
    bool lenFirst;    // checks its length before its pointers
    // Out of place (null for in-place-only forms). x: first source (vector
    // forms) or the source; y: second source, or the constant pair.
    ZvpStatus (*oop)(const T* x, const T* y, T* d, int len, int sf);
    // In place. x: the source or the constant pair; sd: source and destination.
    ZvpStatus (*inp)(const T* x, T* sd, int len, int sf);
};

// The exact R of real i: in place, sd holds y for vector-vector forms and x
// for constant forms.
template <class T>
std::int64_t exactR(const IntForm<T>& f, std::int64_t x, std::int64_t y) {
    switch (f.kind) {
        case kVecVec: return f.sub ? y - x : x + y;
        case kVecConst: return f.sub ? x - y : x + y;
        case kConstVec: return y - x;  // y is the constant
    }
    return 0;
}

#define VV(T, NAME, SUB, REALS, LENFIRST, CT)                                                       \
    IntForm<T> {                                                                                    \
        #NAME "_Sfs", REALS, kVecVec, SUB, true, LENFIRST,                                          \
            [](const T* x, const T* y, T* d, int n, int sf) {                                       \
                return zvps##NAME##_Sfs((const CT*)x, (const CT*)y, (CT*)d, n, sf);                 \
            },                                                                                      \
            [](const T* x, T* sd, int n, int sf) {                                                  \
                return zvps##NAME##_ISfs((const CT*)x, (CT*)sd, n, sf);                             \
            }                                                                                       \
    }
#define VC_REAL(T, NAME, KIND, SUB)                                                                 \
    IntForm<T> {                                                                                    \
        #NAME "_Sfs", 1, KIND, SUB, true, false,                                                    \
            [](const T* x, const T* c, T* d, int n, int sf) {                                       \
                return zvps##NAME##_Sfs(x, c[0], d, n, sf);                                         \
            },                                                                                      \
            [](const T* c, T* sd, int n, int sf) { return zvps##NAME##_ISfs(c[0], sd, n, sf); }      \
    }
#define VC_CPLX(T, NAME, KIND, SUB, CT)                                                             \
    IntForm<T> {                                                                                    \
        #NAME "_Sfs", 2, KIND, SUB, true, false,                                                    \
            [](const T* x, const T* c, T* d, int n, int sf) {                                       \
                return zvps##NAME##_Sfs((const CT*)x, CT{c[0], c[1]}, (CT*)d, n, sf);               \
            },                                                                                      \
            [](const T* c, T* sd, int n, int sf) {                                                  \
                return zvps##NAME##_ISfs(CT{c[0], c[1]}, (CT*)sd, n, sf);                           \
            }                                                                                       \
    }

std::vector<IntForm<Zvp16s>> forms16s() {
    using T = Zvp16s;
    return {
        VV(T, Add_16s, false, 1, false, Zvp16s),
        VV(T, Sub_16s, true, 1, false, Zvp16s),
        VV(T, Add_16sc, false, 2, true, Zvp16sc),
        VV(T, Sub_16sc, true, 2, true, Zvp16sc),
        VC_REAL(T, AddC_16s, kVecConst, false),
        VC_REAL(T, SubC_16s, kVecConst, true),
        VC_REAL(T, SubCRev_16s, kConstVec, true),
        VC_CPLX(T, AddC_16sc, kVecConst, false, Zvp16sc),
        VC_CPLX(T, SubC_16sc, kVecConst, true, Zvp16sc),
        VC_CPLX(T, SubCRev_16sc, kConstVec, true, Zvp16sc),
        // Plain forms: sf is always 0 for these.
        {"Add_16s", 1, kVecVec, false, false, false,
         [](const T* x, const T* y, T* d, int n, int) { return zvpsAdd_16s(x, y, d, n); },
         [](const T* x, T* sd, int n, int) { return zvpsAdd_16s_I(x, sd, n); }},
        {"Sub_16s", 1, kVecVec, true, false, false,
         [](const T* x, const T* y, T* d, int n, int) { return zvpsSub_16s(x, y, d, n); },
         [](const T* x, T* sd, int n, int) { return zvpsSub_16s_I(x, sd, n); }},
        {"AddC_16s_I", 1, kVecConst, false, false, false, nullptr,
         [](const T* c, T* sd, int n, int) { return zvpsAddC_16s_I(c[0], sd, n); }},
        {"SubC_16s_I", 1, kVecConst, true, false, false, nullptr,
         [](const T* c, T* sd, int n, int) { return zvpsSubC_16s_I(c[0], sd, n); }},
    };
}

std::vector<IntForm<Zvp16u>> forms16u() {
    using T = Zvp16u;
    return {
        VV(T, Add_16u, false, 1, false, Zvp16u),
        VV(T, Sub_16u, true, 1, false, Zvp16u),
        VC_REAL(T, AddC_16u, kVecConst, false),
        VC_REAL(T, SubC_16u, kVecConst, true),
        VC_REAL(T, SubCRev_16u, kConstVec, true),
        {"Add_16u", 1, kVecVec, false, false, false,
         [](const T* x, const T* y, T* d, int n, int) { return zvpsAdd_16u(x, y, d, n); },
         [](const T* x, T* sd, int n, int) { return zvpsAdd_16u_I(x, sd, n); }},
    };
}

std::vector<IntForm<Zvp32s>> forms32s() {
    using T = Zvp32s;
    return {
        VV(T, Add_32s, false, 1, false, Zvp32s),
        VV(T, Sub_32s, true, 1, false, Zvp32s),
        VV(T, Add_32sc, false, 2, true, Zvp32sc),
        VV(T, Sub_32sc, true, 2, true, Zvp32sc),
        VC_REAL(T, AddC_32s, kVecConst, false),
        VC_REAL(T, SubC_32s, kVecConst, true),
        VC_REAL(T, SubCRev_32s, kConstVec, true),
        VC_CPLX(T, AddC_32sc, kVecConst, false, Zvp32sc),
        VC_CPLX(T, SubC_32sc, kVecConst, true, Zvp32sc),
        VC_CPLX(T, SubCRev_32sc, kConstVec, true, Zvp32sc),
    };
}

std::vector<IntForm<Zvp8u>> forms8u() {
    using T = Zvp8u;
    return {
        VV(T, Add_8u, false, 1, false, Zvp8u),
        VV(T, Sub_8u, true, 1, false, Zvp8u),
        VC_REAL(T, AddC_8u, kVecConst, false),
        VC_REAL(T, SubC_8u, kVecConst, true),
        VC_REAL(T, SubCRev_8u, kConstVec, true),
    };
}

// Runs a form on n elements at element offset `mis` from a 64-byte boundary,
// out of place and in place, and compares every real with the oracle. The
// destinations are guarded: nothing outside them may change.
template <class T>
void checkForm(const IntForm<T>& f, int n, int sf, std::size_t mis, std::mt19937& rng) {
    const int reals = n * f.reals;
    const std::size_t bytes = std::size_t(reals) * sizeof(T);
    std::vector<T> x = testData<T>(reals, rng);
    std::vector<T> y = testData<T>(f.kind == kVecVec ? reals : 2, rng);
    // Pairs of extremes, where rounding meets saturation, at a quarter of
    // the places (and often as the constant).
    using L = std::numeric_limits<T>;
    const T extremes[] = {L::min(), T(L::min() + 1), T(-1), T(0), T(1), T(L::max() - 1), L::max()};
    for (int i = 0; i < reals; ++i)
        if (rng() % 4 == 0) x[i] = extremes[rng() % 7];
    for (auto& v : y)
        if (rng() % (f.kind == kVecVec ? 4 : 2) == 0) v = extremes[rng() % 7];
    GuardedBuffer bx(bytes, mis * sizeof(T)), by(std::size_t(y.size()) * sizeof(T), mis * sizeof(T));
    std::memcpy(bx.data(), x.data(), bytes);
    std::memcpy(by.data(), y.data(), y.size() * sizeof(T));

    auto yAt = [&](int i) -> std::int64_t {
        return f.kind == kVecVec ? y[i] : y[i % 2 == 0 || f.reals == 1 ? 0 : 1];
    };
    auto expected = [&](int i) {
        // Constant-vector forms: R = c - x, with the constant passed as y.
        return refScale<T>(exactR(f, x[i], yAt(i)), f.scaled ? sf : 0);
    };

    if (f.oop) {
        GuardedBuffer d(bytes, mis * sizeof(T));
        ASSERT_EQ(f.oop(bx.as<T>(), by.as<T>(), d.as<T>(), n, sf), zvpStsNoErr);
        ASSERT_TRUE(d.guardsIntact());
        for (int i = 0; i < reals; ++i) {
            ASSERT_EQ(d.as<T>()[i], expected(i))
                << f.name << " n=" << n << " sf=" << sf << " i=" << i << " x=" << +x[i]
                << " y=" << +yAt(i);
        }
    }
    // In place: the vector that is also the destination holds y for
    // vector-vector forms (x is the other source), x for constant forms.
    GuardedBuffer sd(bytes, mis * sizeof(T));
    if (f.kind == kVecVec) {
        std::memcpy(sd.data(), y.data(), bytes);
        ASSERT_EQ(f.inp(bx.as<T>(), sd.as<T>(), n, sf), zvpStsNoErr);
    } else {
        std::memcpy(sd.data(), x.data(), bytes);
        ASSERT_EQ(f.inp(by.as<T>(), sd.as<T>(), n, sf), zvpStsNoErr);
    }
    ASSERT_TRUE(sd.guardsIntact());
    for (int i = 0; i < reals; ++i)
        ASSERT_EQ(sd.as<T>()[i], expected(i)) << f.name << "_I n=" << n << " sf=" << sf << " i=" << i;
}

template <class T>
void checkAllForms(const std::vector<IntForm<T>>& forms, std::uint32_t seed) {
    std::mt19937 rng(seed);
    for (const auto& f : forms) {
        SCOPED_TRACE(f.name);
        const std::vector<int> sfs = f.scaled ? allScaleFactors() : std::vector<int>{0};
        // Every scale factor on a length with a body and a tail.
        for (int sf : sfs) {
            checkForm(f, 67, sf, 1, rng);
            if (::testing::Test::HasFatalFailure()) return;
        }
    }
}

TEST(AddSubInteger, Forms16sMatchTheExactRule) { checkAllForms(forms16s(), 101); }
TEST(AddSubInteger, Forms16uMatchTheExactRule) { checkAllForms(forms16u(), 102); }
TEST(AddSubInteger, Forms32sMatchTheExactRule) { checkAllForms(forms32s(), 103); }
TEST(AddSubInteger, Forms8uMatchTheExactRule) { checkAllForms(forms8u(), 104); }

// Every pair of 8-bit operands under every scale factor -40..40, out of place
// and in place; the constant forms take every constant over every source value.
TEST(AddSubInteger, EightBitFormsExhaustive) {
    constexpr int kSfLo = -40, kSfHi = 40;
    // Oracle table by R in [-255, 510].
    std::vector<Zvp8u> table((kSfHi - kSfLo + 1) * 766);
    auto ref = [&](int r, int sf) -> Zvp8u& { return table[(sf - kSfLo) * 766 + (r + 255)]; };
    for (int sf = kSfLo; sf <= kSfHi; ++sf)
        for (int r = -255; r <= 510; ++r) ref(r, sf) = refScale<Zvp8u>(r, sf);

    std::vector<Zvp8u> a(65536), b(65536), d(65536), sd(65536);
    for (int i = 0; i < 65536; ++i) {
        a[i] = Zvp8u(i & 255);
        b[i] = Zvp8u(i >> 8);
    }
    std::vector<Zvp8u> src(256), dc(256), sdc(256);
    for (int i = 0; i < 256; ++i) src[i] = Zvp8u(i);

    for (int sf = kSfLo; sf <= kSfHi; ++sf) {
        ASSERT_EQ(zvpsAdd_8u_Sfs(a.data(), b.data(), d.data(), 65536, sf), zvpStsNoErr);
        sd = b;
        ASSERT_EQ(zvpsAdd_8u_ISfs(a.data(), sd.data(), 65536, sf), zvpStsNoErr);
        for (int i = 0; i < 65536; ++i) {
            ASSERT_EQ(d[i], ref(a[i] + b[i], sf)) << "Add a=" << +a[i] << " b=" << +b[i] << " sf=" << sf;
            ASSERT_EQ(sd[i], d[i]);
        }
        ASSERT_EQ(zvpsSub_8u_Sfs(a.data(), b.data(), d.data(), 65536, sf), zvpStsNoErr);
        sd = b;
        ASSERT_EQ(zvpsSub_8u_ISfs(a.data(), sd.data(), 65536, sf), zvpStsNoErr);
        for (int i = 0; i < 65536; ++i) {
            ASSERT_EQ(d[i], ref(b[i] - a[i], sf)) << "Sub a=" << +a[i] << " b=" << +b[i] << " sf=" << sf;
            ASSERT_EQ(sd[i], d[i]);
        }
        for (int c = 0; c < 256; ++c) {
            const Zvp8u cv = Zvp8u(c);
            struct {
                ZvpStatus (*oop)(const Zvp8u*, Zvp8u, Zvp8u*, int, int);
                ZvpStatus (*inp)(Zvp8u, Zvp8u*, int, int);
                int sign;  // R = x + c (0), x - c (1), c - x (2)
            } const cases[] = {{zvpsAddC_8u_Sfs, zvpsAddC_8u_ISfs, 0},
                               {zvpsSubC_8u_Sfs, zvpsSubC_8u_ISfs, 1},
                               {zvpsSubCRev_8u_Sfs, zvpsSubCRev_8u_ISfs, 2}};
            for (const auto& k : cases) {
                ASSERT_EQ(k.oop(src.data(), cv, dc.data(), 256, sf), zvpStsNoErr);
                sdc = src;
                ASSERT_EQ(k.inp(cv, sdc.data(), 256, sf), zvpStsNoErr);
                for (int x = 0; x < 256; ++x) {
                    const int r = k.sign == 0 ? x + c : (k.sign == 1 ? x - c : c - x);
                    ASSERT_EQ(dc[x], ref(r, sf)) << k.sign << " x=" << x << " c=" << c << " sf=" << sf;
                    ASSERT_EQ(sdc[x], dc[x]);
                }
            }
        }
    }
}

// ---- 64-bit forms -----------------------------------------------------------

TEST(AddSubInteger, SixtyFourBitFormsMatchTheExactRule) {
    std::mt19937 rng(105);
    const int n = 61;
    for (int sf : allScaleFactors()) {
        const auto a = testData<Zvp64s>(n, rng), b = testData<Zvp64s>(n, rng);
        const auto ua = testData<Zvp64u>(n, rng);
        const Zvp64s c = testData<Zvp64s>(1, rng)[0];
        const Zvp64u uc = testData<Zvp64u>(1, rng)[0];
        std::vector<Zvp64s> d(n), sd(n);
        std::vector<Zvp64u> ud(n), usd(n);

        ASSERT_EQ(zvpsAdd_64s_Sfs(a.data(), b.data(), d.data(), n, sf), zvpStsNoErr);
        sd = b;
        ASSERT_EQ(zvpsAdd_64s_ISfs(a.data(), sd.data(), n, sf), zvpStsNoErr);
        for (int i = 0; i < n; ++i) {
            const Zvp64s e = zvp::test::scaled<Zvp64s>(zvp::test::Wide::of(a[i]) + zvp::test::Wide::of(b[i]), sf);
            ASSERT_EQ(d[i], e) << "Add_64s a=" << a[i] << " b=" << b[i] << " sf=" << sf;
            ASSERT_EQ(sd[i], e);
        }
        ASSERT_EQ(zvpsAddC_64s_Sfs(a.data(), c, d.data(), n, sf), zvpStsNoErr);
        sd = a;
        ASSERT_EQ(zvpsAddC_64s_ISfs(c, sd.data(), n, sf), zvpStsNoErr);
        for (int i = 0; i < n; ++i) {
            const Zvp64s e = zvp::test::scaled<Zvp64s>(zvp::test::Wide::of(a[i]) + zvp::test::Wide::of(c), sf);
            ASSERT_EQ(d[i], e) << "AddC_64s a=" << a[i] << " c=" << c << " sf=" << sf;
            ASSERT_EQ(sd[i], e);
        }
        ASSERT_EQ(zvpsAddC_64u_Sfs(ua.data(), uc, ud.data(), n, sf), zvpStsNoErr);
        usd = ua;
        ASSERT_EQ(zvpsAddC_64u_ISfs(uc, usd.data(), n, sf), zvpStsNoErr);
        for (int i = 0; i < n; ++i) {
            const Zvp64u e = zvp::test::scaled<Zvp64u>(zvp::test::Wide::ofU(ua[i]) + zvp::test::Wide::ofU(uc), sf);
            ASSERT_EQ(ud[i], e) << "AddC_64u a=" << ua[i] << " c=" << uc << " sf=" << sf;
            ASSERT_EQ(usd[i], e);
        }
    }
}

// ---- Named cases ---------------------------------------------------------------

TEST(AddSubInteger, SaturationAndTieCases) {
    struct Case {
        Zvp16s a, b;
        int sf;
        Zvp16s want;
    } const cases[] = {
        {32767, 32767, 0, 32767},   {32767, 32767, 1, 32767},  {32767, 32767, 16, 1},
        {32767, 32767, 17, 0},      {-32768, -32768, 16, -1},  {-32768, -32768, -15, -32768},
        {-32768, -32768, -16, -32768}, {0, 0, -100, 0},        {1, 2, 1, 2},
        {2, 3, 1, 2},               {-1, -2, 1, -2},           {0, -1, 1, 0},
        {1, 0, -15, 32767},         {-1, 0, -15, -32768},      {1, 1, -14, 32767},
    };
    for (const auto& c : cases) {
        Zvp16s d = 77;
        ASSERT_EQ(zvpsAdd_16s_Sfs(&c.a, &c.b, &d, 1, c.sf), zvpStsNoErr);
        EXPECT_EQ(d, c.want) << c.a << " + " << c.b << " sf=" << c.sf;
    }
    const Zvp8u x = 255;
    Zvp8u d8 = 7;
    ASSERT_EQ(zvpsAdd_8u_Sfs(&x, &x, &d8, 1, 9), zvpStsNoErr);
    EXPECT_EQ(d8, 1);
    ASSERT_EQ(zvpsAdd_8u_Sfs(&x, &x, &d8, 1, 10), zvpStsNoErr);
    EXPECT_EQ(d8, 0);
    // Sub takes the second source minus the first.
    const Zvp16s one = 1, five = 5;
    Zvp16s d = 0;
    ASSERT_EQ(zvpsSub_16s_Sfs(&one, &five, &d, 1, 0), zvpStsNoErr);
    EXPECT_EQ(d, 4);
    // The difference 32767 - (-32768) = 65535 halves to 32767.5 and rounds to
    // the even 32768, which saturates.
    const Zvp16s lo = -32768, hi = 32767;
    ASSERT_EQ(zvpsSub_16s_Sfs(&lo, &hi, &d, 1, 1), zvpStsNoErr);
    EXPECT_EQ(d, 32767);
    const Zvp32s lo32 = INT_MIN, hi32 = INT_MAX;
    Zvp32s d32 = 0;
    ASSERT_EQ(zvpsSub_32s_Sfs(&lo32, &hi32, &d32, 1, 1), zvpStsNoErr);
    EXPECT_EQ(d32, INT_MAX);
    // 16u: 65535 - 0 at sf 1 is 32767.5, which rounds to 32768.
    const Zvp16u z16 = 0, m16 = 65535;
    Zvp16u du = 0;
    ASSERT_EQ(zvpsSub_16u_Sfs(&z16, &m16, &du, 1, 1), zvpStsNoErr);
    EXPECT_EQ(du, 32768);
}

TEST(AddSubInteger, ZeroConstantAtScaleZeroCopiesTheSource) {
    std::mt19937 rng(106);
    const auto s = testData<Zvp16s>(37, rng);
    std::vector<Zvp16s> d(37, 5);
    ASSERT_EQ(zvpsAddC_16s_Sfs(s.data(), 0, d.data(), 37, 0), zvpStsNoErr);
    EXPECT_EQ(d, s);
    std::vector<Zvp64u> u = {0, 1, ~0ull, 1ull << 63}, ud(4, 9);
    ASSERT_EQ(zvpsAddC_64u_Sfs(u.data(), 0, ud.data(), 4, 0), zvpStsNoErr);
    EXPECT_EQ(ud, u);
}

// ---- Mixed types ------------------------------------------------------------

TEST(AddSubMixed, EightBitSumsWidenExactly) {
    std::vector<Zvp8u> a(65536 + 5), b(65536 + 5);
    for (int i = 0; i < 65536; ++i) {
        a[i + 5] = Zvp8u(i & 255);
        b[i + 5] = Zvp8u(i >> 8);
    }
    std::vector<Zvp16u> d(65536 + 5);
    ASSERT_EQ(zvpsAdd_8u16u(a.data() + 5, b.data() + 5, d.data() + 3, 65536 - 3), zvpStsNoErr);
    for (int i = 0; i < 65536 - 3; ++i) ASSERT_EQ(d[i + 3], a[i + 5] + b[i + 5]);
}

TEST(AddSubMixed, SixteenBitToFloatAndIntoThirtyTwoBit) {
    std::mt19937 rng(107);
    for (int n = 1; n <= 67; ++n) {
        const auto a = testData<Zvp16s>(n + 1, rng), b = testData<Zvp16s>(n + 1, rng);
        std::vector<Zvp32f> s(n + 1), t(n + 1);
        ASSERT_EQ(zvpsAdd_16s32f(a.data() + 1, b.data() + 1, s.data() + 1, n), zvpStsNoErr);
        ASSERT_EQ(zvpsSub_16s32f(a.data() + 1, b.data() + 1, t.data() + 1, n), zvpStsNoErr);
        for (int i = 1; i <= n; ++i) {
            ASSERT_EQ(s[i], float(long(a[i]) + b[i]));
            ASSERT_EQ(t[i], float(long(b[i]) - a[i]));  // second minus first
        }
        auto acc = testData<Zvp32s>(n + 1, rng);
        const auto before = acc;
        ASSERT_EQ(zvpsAdd_16s32s_I(a.data() + 1, acc.data() + 1, n), zvpStsNoErr);
        for (int i = 1; i <= n; ++i)
            ASSERT_EQ(acc[i], refScale<Zvp32s>(std::int64_t(before[i]) + a[i], 0));
        const auto ua = testData<Zvp32u>(n + 1, rng), ub = testData<Zvp32u>(n + 1, rng);
        std::vector<Zvp32u> ud(n + 1), usd = ub;
        ASSERT_EQ(zvpsAdd_32u(ua.data() + 1, ub.data() + 1, ud.data() + 1, n), zvpStsNoErr);
        ASSERT_EQ(zvpsAdd_32u_I(ua.data() + 1, usd.data() + 1, n), zvpStsNoErr);
        for (int i = 1; i <= n; ++i) {
            const std::uint64_t sum = std::uint64_t(ua[i]) + ub[i];
            ASSERT_EQ(ud[i], sum > 0xFFFFFFFFu ? 0xFFFFFFFFu : Zvp32u(sum));
            ASSERT_EQ(usd[i], ud[i]);
        }
    }
}

// ---- Floating point --------------------------------------------------------------

template <class F>
struct FloatForm {
    const char* name;
    int reals;
    Kind kind;
    bool sub;
    ZvpStatus (*oop)(const F* x, const F* y, F* d, int len);
    ZvpStatus (*inp)(const F* x, F* sd, int len);
};

#define FVV(F, NAME, SUB, REALS, CT)                                                     \
    FloatForm<F> {                                                                       \
        #NAME, REALS, kVecVec, SUB,                                                      \
            [](const F* x, const F* y, F* d, int n) {                                    \
                return zvps##NAME((const CT*)x, (const CT*)y, (CT*)d, n);                \
            },                                                                           \
            [](const F* x, F* sd, int n) { return zvps##NAME##_I((const CT*)x, (CT*)sd, n); } \
    }
#define FVC(F, NAME, KIND, SUB, REALS, CT, MAKE)                                         \
    FloatForm<F> {                                                                       \
        #NAME, REALS, KIND, SUB,                                                         \
            [](const F* x, const F* c, F* d, int n) {                                    \
                return zvps##NAME((const CT*)x, MAKE, (CT*)d, n);                        \
            },                                                                           \
            [](const F* c, F* sd, int n) { return zvps##NAME##_I(MAKE, (CT*)sd, n); }     \
    }
#define FORMS_OF(F, T, TC)                                                               \
    FVV(F, Add_##T, false, 1, F), FVV(F, Sub_##T, true, 1, F),                           \
    FVV(F, Add_##TC, false, 2, Zvp##TC), FVV(F, Sub_##TC, true, 2, Zvp##TC),             \
    FVC(F, AddC_##T, kVecConst, false, 1, F, c[0]),                                      \
    FVC(F, SubC_##T, kVecConst, true, 1, F, c[0]),                                       \
    FVC(F, SubCRev_##T, kConstVec, true, 1, F, c[0]),                                    \
    FVC(F, AddC_##TC, kVecConst, false, 2, Zvp##TC, (Zvp##TC{c[0], c[1]})),              \
    FVC(F, SubC_##TC, kVecConst, true, 2, Zvp##TC, (Zvp##TC{c[0], c[1]})),               \
    FVC(F, SubCRev_##TC, kConstVec, true, 2, Zvp##TC, (Zvp##TC{c[0], c[1]}))

template <class F>
std::vector<F> floatData(std::size_t n, std::mt19937& rng) {
    std::uniform_real_distribution<F> u(-1000, 1000);
    std::vector<F> v(n);
    for (auto& x : v) x = u(rng);
    return v;
}

// Float results must equal the same IEEE operation done here, bit for bit.
template <class F>
void checkFloatForms(const std::vector<FloatForm<F>>& forms) {
    std::mt19937 rng(108);
    for (const auto& f : forms) {
        SCOPED_TRACE(f.name);
        for (int n : {67}) {
            for (std::size_t mis : {std::size_t(1)}) {
                const int reals = n * f.reals;
                const std::size_t bytes = std::size_t(reals) * sizeof(F);
                const auto x = floatData<F>(reals, rng);
                const auto y = floatData<F>(f.kind == kVecVec ? reals : 2, rng);
                auto want = [&](int i) -> F {
                    const F yi = f.kind == kVecVec ? y[i] : y[f.reals == 2 ? i % 2 : 0];
                    if (!f.sub) return x[i] + yi;
                    return f.kind == kVecConst ? x[i] - yi : yi - x[i];
                };
                GuardedBuffer bx(bytes, mis * sizeof(F)), by(y.size() * sizeof(F), mis * sizeof(F));
                std::memcpy(bx.data(), x.data(), bytes);
                std::memcpy(by.data(), y.data(), y.size() * sizeof(F));
                GuardedBuffer d(bytes, mis * sizeof(F)), sd(bytes, mis * sizeof(F));
                ASSERT_EQ(f.oop(bx.as<F>(), by.as<F>(), d.as<F>(), n), zvpStsNoErr);
                if (f.kind == kVecVec) {
                    std::memcpy(sd.data(), y.data(), bytes);
                    ASSERT_EQ(f.inp(bx.as<F>(), sd.as<F>(), n), zvpStsNoErr);
                } else {
                    std::memcpy(sd.data(), x.data(), bytes);
                    ASSERT_EQ(f.inp(by.as<F>(), sd.as<F>(), n), zvpStsNoErr);
                }
                ASSERT_TRUE(d.guardsIntact());
                ASSERT_TRUE(sd.guardsIntact());
                for (int i = 0; i < reals; ++i) {
                    ASSERT_EQ(d.as<F>()[i], want(i)) << "n=" << n << " i=" << i;
                    ASSERT_EQ(sd.as<F>()[i], want(i)) << "in place n=" << n << " i=" << i;
                }
            }
        }
    }
}

TEST(AddSubFloat, SinglePrecisionFormsAreIeeeExact) {
    checkFloatForms<Zvp32f>({FORMS_OF(Zvp32f, 32f, 32fc)});
}
TEST(AddSubFloat, DoublePrecisionFormsAreIeeeExact) {
    checkFloatForms<Zvp64f>({FORMS_OF(Zvp64f, 64f, 64fc)});
}

TEST(AddSubFloat, SubtractsTheFirstSourceFromTheSecond) {
    const Zvp32f a = 1, b = 5;
    Zvp32f d = 0;
    ASSERT_EQ(zvpsSub_32f(&a, &b, &d, 1), zvpStsNoErr);
    EXPECT_EQ(d, 4.0f);
}

}  // namespace
