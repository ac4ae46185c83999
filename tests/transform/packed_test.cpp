// Packed-spectrum helpers: expansion of Pack/Perm/CCS spectra to the full
// conjugate-symmetric spectrum and products of packed spectra, checked
// against index tables written out here from the layout definitions, over
// lengths 1..67 (odd and even, every vector-width remainder), unaligned
// pointers, in place and with a destination equal to a source.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "sentinel.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;

// ---- the layouts, written from their definitions ---------------------------
// A half spectrum h holds (Rk, Ik) for k = 0 .. n/2 (Ik of k = 0 and, for even
// n, of k = n/2 are 0).

template <class T>
struct Half {
    std::vector<T> re, im;
};

template <class T>
Half<T> randomHalf(int n, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_int_distribution<int> d(-30000, 30000);
    Half<T> h;
    for (int k = 0; k <= n / 2; ++k) {
        h.re.push_back(T(d(rng)));
        h.im.push_back((k == 0 || 2 * k == n) ? T(0) : T(d(rng)));
    }
    return h;
}

enum class Layout { Pack, Perm, Ccs };

// Value index of Rk and Ik in a layout (-1: not stored).
int reIndex(Layout l, int n, int k) {
    if (l == Layout::Ccs) return 2 * k;
    if (k == 0) return 0;
    if (2 * k == n) return l == Layout::Pack ? n - 1 : 1;
    return l == Layout::Pack || n % 2 ? 2 * k - 1 : 2 * k;
}
int imIndex(Layout l, int n, int k) {
    if (l == Layout::Ccs) return 2 * k + 1;
    if (k == 0 || 2 * k == n) return -1;
    return reIndex(l, n, k) + 1;
}
int layoutSize(Layout l, int n) { return l == Layout::Ccs ? 2 * (n / 2 + 1) : n; }

template <class T>
std::vector<T> packed(const Half<T>& h, Layout l, int n) {
    std::vector<T> v(layoutSize(l, n), T(77));
    for (int k = 0; k <= n / 2; ++k) {
        v.at(reIndex(l, n, k)) = h.re[k];
        if (imIndex(l, n, k) >= 0) v.at(imIndex(l, n, k)) = h.im[k];
    }
    return v;
}

TEST(PackedLayout, IndexTablesForEightTwoAndOne) {
    Half<float> h;
    for (int k = 0; k <= 4; ++k) {
        h.re.push_back(float(10 + k));
        h.im.push_back((k == 0 || k == 4) ? 0.f : float(20 + k));
    }
    EXPECT_EQ(packed(h, Layout::Pack, 8), (std::vector<float>{10, 11, 21, 12, 22, 13, 23, 14}));
    EXPECT_EQ(packed(h, Layout::Perm, 8), (std::vector<float>{10, 14, 11, 21, 12, 22, 13, 23}));
    EXPECT_EQ(packed(h, Layout::Ccs, 8),
              (std::vector<float>{10, 0, 11, 21, 12, 22, 13, 23, 14, 0}));
    Half<float> h2{{1, 2}, {0, 0}};
    EXPECT_EQ(packed(h2, Layout::Pack, 2), (std::vector<float>{1, 2}));
    EXPECT_EQ(packed(h2, Layout::Perm, 2), (std::vector<float>{1, 2}));
    EXPECT_EQ(packed(h2, Layout::Ccs, 2), (std::vector<float>{1, 0, 2, 0}));
    Half<float> h1{{5}, {0}};
    EXPECT_EQ(packed(h1, Layout::Pack, 1), (std::vector<float>{5}));
    EXPECT_EQ(packed(h1, Layout::Ccs, 1), (std::vector<float>{5, 0}));
}

// ---- Conj expansion -----------------------------------------------------------

template <class T>
T conjNeg(T v) {
    if constexpr (std::is_integral_v<T>) return v == -32768 ? T(32767) : T(-v);
    else return -v;
}

// Full spectrum as 2n scalars.
template <class T>
std::vector<T> fullSpectrum(const Half<T>& h, int n) {
    std::vector<T> f(2 * n);
    for (int k = 0; k <= n / 2; ++k) {
        f[2 * k] = h.re[k];
        f[2 * k + 1] = h.im[k];
        if (k > 0 && n - k > n / 2) {
            f[2 * (n - k)] = h.re[k];
            f[2 * (n - k) + 1] = conjNeg(h.im[k]);
        }
    }
    return f;
}

template <class T>
struct ConjOps;
#define ZVP_CONJ_OPS(CT, ST)                                                                       \
    template <>                                                                                    \
    struct ConjOps<ST> {                                                                           \
        using C = Zvp##CT;                                                                         \
        static ZvpStatus run(Layout l, const ST* s, C* d, int n) {                                 \
            if (l == Layout::Pack) return zvpsConjPack_##CT(s, d, n);                             \
            if (l == Layout::Perm) return zvpsConjPerm_##CT(s, d, n);                             \
            return zvpsConjCcs_##CT(reinterpret_cast<const C*>(s), d, n);                         \
        }                                                                                          \
        static ZvpStatus runI(Layout l, C* v, int n) {                                             \
            if (l == Layout::Pack) return zvpsConjPack_##CT##_I(v, n);                            \
            if (l == Layout::Perm) return zvpsConjPerm_##CT##_I(v, n);                            \
            return zvpsConjCcs_##CT##_I(v, n);                                                     \
        }                                                                                          \
    };
ZVP_CONJ_OPS(32fc, Zvp32f)
ZVP_CONJ_OPS(64fc, Zvp64f)
ZVP_CONJ_OPS(16sc, Zvp16s)
#undef ZVP_CONJ_OPS

template <class T>
class ConjPackedTest : public ::testing::Test {};
using ScalarTypes = ::testing::Types<Zvp32f, Zvp64f, Zvp16s>;
TYPED_TEST_SUITE(ConjPackedTest, ScalarTypes);

TYPED_TEST(ConjPackedTest, ExpandsEveryLayoutOutOfPlaceInPlaceAndAliased) {
    using T = TypeParam;
    using Ops = ConjOps<T>;
    using C = typename Ops::C;
    for (Layout l : {Layout::Pack, Layout::Perm, Layout::Ccs}) {
        for (int n = 1; n <= 67; ++n) {
            SCOPED_TRACE(::testing::Message() << "layout " << int(l) << " n " << n);
            const Half<T> h = randomHalf<T>(n, 1000u + n);
            const std::vector<T> src = packed(h, l, n);
            const std::vector<T> want = fullSpectrum(h, n);
            const std::size_t bytes = sizeof(T) * 2 * n;
            // Out of place, the source one scalar off the vector alignment.
            GuardedBuffer sb(sizeof(T) * src.size(), sizeof(T));
            std::memcpy(sb.data(), src.data(), sizeof(T) * src.size());
            GuardedBuffer db(bytes, sizeof(T) * 2);
            ASSERT_EQ(Ops::run(l, sb.as<T>(), db.as<C>(), n), zvpStsNoErr);
            EXPECT_EQ(std::memcmp(db.data(), want.data(), bytes), 0);
            EXPECT_TRUE(db.guardsIntact());
            // In place: the packed spectrum at the start of the complex vector.
            GuardedBuffer ib(bytes, sizeof(T));
            ib.fill(0x5A);
            std::memcpy(ib.data(), src.data(), sizeof(T) * src.size());
            ASSERT_EQ(Ops::runI(l, ib.as<C>(), n), zvpStsNoErr);
            EXPECT_EQ(std::memcmp(ib.data(), want.data(), bytes), 0);
            EXPECT_TRUE(ib.guardsIntact());
            // Out of place with equal pointers behaves as in place.
            GuardedBuffer ab(bytes);
            std::memcpy(ab.data(), src.data(), sizeof(T) * src.size());
            ASSERT_EQ(Ops::run(l, ab.as<T>(), ab.as<C>(), n), zvpStsNoErr);
            EXPECT_EQ(std::memcmp(ab.data(), want.data(), bytes), 0);
        }
    }
}

TEST(ConjPacked, IntegerConjugateSaturates) {
    const Zvp16s pack[4] = {1, -5, -32768, 9};
    Zvp16sc d[4];
    ASSERT_EQ(zvpsConjPack_16sc(pack, d, 4), zvpStsNoErr);
    EXPECT_EQ(d[1].re, -5);
    EXPECT_EQ(d[1].im, -32768);
    EXPECT_EQ(d[3].re, -5);
    EXPECT_EQ(d[3].im, 32767);
    EXPECT_EQ(d[2].re, 9);
    EXPECT_EQ(d[2].im, 0);
}

TEST(ConjPacked, OddLengthWritesNoMiddleRealElement) {
    // n = 5: pairs k = 1, 2 only; elements 3 and 4 mirror them.
    const float pack[5] = {1, 2, 3, 4, 5};
    Zvp32fc d[5];
    ASSERT_EQ(zvpsConjPack_32fc(pack, d, 5), zvpStsNoErr);
    const float want[10] = {1, 0, 2, 3, 4, 5, 4, -5, 2, -3};
    EXPECT_EQ(std::memcmp(d, want, sizeof want), 0);
}

TEST(ConjPacked, CcsCopiesItsStoredImaginaryParts) {
    // CCS copies elements 0 .. n/2 as they stand.
    const Zvp32fc ccs[3] = {{1, 7}, {2, 3}, {4, 8}};
    Zvp32fc d[4];
    ASSERT_EQ(zvpsConjCcs_32fc(ccs, d, 4), zvpStsNoErr);
    const float want[8] = {1, 7, 2, 3, 4, 8, 2, -3};
    EXPECT_EQ(std::memcmp(d, want, sizeof want), 0);
}

// ---- products ---------------------------------------------------------------

template <class T>
struct MulOps;
#define ZVP_MUL_OPS(T)                                                                              \
    template <>                                                                                     \
    struct MulOps<Zvp##T> {                                                                         \
        static ZvpStatus run(Layout l, const Zvp##T* a, const Zvp##T* b, Zvp##T* d, int n) {        \
            return l == Layout::Pack ? zvpsMulPack_##T(a, b, d, n) : zvpsMulPerm_##T(a, b, d, n);  \
        }                                                                                           \
        static ZvpStatus runI(Layout l, const Zvp##T* s, Zvp##T* sd, int n) {                       \
            return l == Layout::Pack ? zvpsMulPack_##T##_I(s, sd, n) : zvpsMulPerm_##T##_I(s, sd, n); \
        }                                                                                           \
        static ZvpStatus conjI(const Zvp##T* s, Zvp##T* sd, int n) {                                \
            return zvpsMulPackConj_##T##_I(s, sd, n);                                               \
        }                                                                                           \
    };
ZVP_MUL_OPS(32f)
ZVP_MUL_OPS(64f)
#undef ZVP_MUL_OPS

// Roles of the values of a packed spectrum: -1 real, 0 real part of a pair
// (its imaginary part follows), 1 imaginary part.
std::vector<int> roles(Layout l, int n) {
    std::vector<int> r(n, 9);
    for (int k = 0; k <= n / 2; ++k) {
        const int ri = reIndex(l, n, k), ii = imIndex(l, n, k);
        r.at(ri) = ii < 0 ? -1 : 0;
        if (ii >= 0) r.at(ii) = 1;
    }
    return r;
}

// The product a * b (conjB: a * conj(b)) in long double. A float result has
// error at most 2u(|p| + |q|) for re = p - q, im = p + q with u the unit
// roundoff: each product and the sum round once.
template <class T>
void checkProduct(Layout l, int n, const std::vector<T>& a, const std::vector<T>& b, const T* got,
                  bool conjB) {
    const long double u = std::numeric_limits<T>::epsilon() / 2;
    const std::vector<int> r = roles(l, n);
    for (int i = 0; i < n; ++i) {
        long double want, bound;
        if (r[i] == -1) {
            want = (long double)a[i] * b[i];
            bound = u * std::fabs(want);
        } else {
            const int j = r[i] == 0 ? i : i - 1;
            const long double ar = a[j], ai = a[j + 1], br = b[j], bi = conjB ? -b[j + 1] : b[j + 1];
            const long double p = r[i] == 0 ? ar * br : ar * bi;
            const long double q = r[i] == 0 ? ai * bi : ai * br;
            want = r[i] == 0 ? p - q : p + q;
            bound = 2 * u * (std::fabs(p) + std::fabs(q));
        }
        ASSERT_LE(std::fabs(got[i] - want), bound) << "index " << i << " n " << n;
    }
}

template <class T>
std::vector<T> randomReal(int n, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<T> d(-2, 2);
    std::vector<T> v(n);
    for (auto& x : v) x = d(rng);
    return v;
}

template <class T>
class MulPackedTest : public ::testing::Test {};
using FloatTypes = ::testing::Types<Zvp32f, Zvp64f>;
TYPED_TEST_SUITE(MulPackedTest, FloatTypes);

TYPED_TEST(MulPackedTest, ProductsInEveryShapeAndForm) {
    using T = TypeParam;
    using Ops = MulOps<T>;
    for (Layout l : {Layout::Pack, Layout::Perm}) {
        for (int n = 1; n <= 67; ++n) {
            SCOPED_TRACE(::testing::Message() << "layout " << int(l) << " n " << n);
            const std::vector<T> a = randomReal<T>(n, 7u * n), b = randomReal<T>(n, 7u * n + 1);
            GuardedBuffer ab(sizeof(T) * n, sizeof(T)), bb(sizeof(T) * n, 2 * sizeof(T));
            GuardedBuffer db(sizeof(T) * n, 3 * sizeof(T));
            std::memcpy(ab.data(), a.data(), sizeof(T) * n);
            std::memcpy(bb.data(), b.data(), sizeof(T) * n);
            ASSERT_EQ(Ops::run(l, ab.as<T>(), bb.as<T>(), db.as<T>(), n), zvpStsNoErr);
            checkProduct(l, n, a, b, db.as<T>(), false);
            EXPECT_TRUE(db.guardsIntact());
            // In place, and out of place into either source: bit for bit the same.
            std::vector<T> ip = b;
            ASSERT_EQ(Ops::runI(l, a.data(), ip.data(), n), zvpStsNoErr);
            EXPECT_EQ(std::memcmp(ip.data(), db.data(), sizeof(T) * n), 0);
            std::vector<T> a1 = a, b1 = b;
            ASSERT_EQ(Ops::run(l, a1.data(), b.data(), a1.data(), n), zvpStsNoErr);
            ASSERT_EQ(Ops::run(l, a.data(), b1.data(), b1.data(), n), zvpStsNoErr);
            EXPECT_EQ(std::memcmp(a1.data(), db.data(), sizeof(T) * n), 0);
            EXPECT_EQ(std::memcmp(b1.data(), db.data(), sizeof(T) * n), 0);
            if (l == Layout::Pack) {
                std::vector<T> c = a;
                ASSERT_EQ(Ops::conjI(b.data(), c.data(), n), zvpStsNoErr);
                checkProduct(l, n, a, b, c.data(), true);
            }
        }
    }
}

TYPED_TEST(MulPackedTest, ShortLengthsMultiplyReals) {
    using T = TypeParam;
    using Ops = MulOps<T>;
    const T a[2] = {3, -2}, b[2] = {5, 7};
    for (Layout l : {Layout::Pack, Layout::Perm}) {
        T d[2] = {0, 0};
        ASSERT_EQ(Ops::run(l, a, b, d, 1), zvpStsNoErr);
        EXPECT_EQ(d[0], T(15));
        EXPECT_EQ(d[1], T(0));
        ASSERT_EQ(Ops::run(l, a, b, d, 2), zvpStsNoErr);
        EXPECT_EQ(d[0], T(15));
        EXPECT_EQ(d[1], T(-14));
    }
    // Conjugating the source: (1 + 2i) * conj(3 + 4i) = 11 + 2i.
    const T s[3] = {1, 3, 4};
    T sd[3] = {1, 1, 2};
    ASSERT_EQ(Ops::conjI(s, sd, 3), zvpStsNoErr);
    EXPECT_EQ(sd[1], T(11));
    EXPECT_EQ(sd[2], T(2));
}

// The scale rule written independently: round(r / 2^sf) with ties to even,
// saturated; r * 2^-sf for negative sf.
Zvp16s scaled(std::int64_t r, int sf) {
    long double v;
    if (sf >= 0) {
        const long double q = std::ldexp((long double)r, -sf);
        long double f = std::floor(q);
        const long double frac = q - f;
        if (frac > 0.5L || (frac == 0.5L && std::fmod(f, 2.0L) != 0)) f += 1;
        v = f;
    } else {
        v = std::ldexp((long double)r, -sf);
    }
    if (v > 32767) return 32767;
    if (v < -32768) return -32768;
    return Zvp16s(v);
}

TEST(MulPackedInteger, ScaleRuleOnEveryEntry) {
    std::mt19937 rng(42);
    std::uniform_int_distribution<int> d(-32768, 32767);
    for (int sf : {-2, 0, 1, 3, 15, 16, 31, 40}) {
        for (Layout l : {Layout::Pack, Layout::Perm}) {
            for (int n : {1, 2, 3, 8, 9, 17}) {
                std::vector<Zvp16s> a(n), b(n), got(n);
                for (int i = 0; i < n; ++i) {
                    a[i] = Zvp16s(d(rng));
                    b[i] = Zvp16s(d(rng));
                }
                if (n >= 3) a[1] = a[2] = b[1] = b[2] = -32768;  // largest exact results
                const ZvpStatus st = l == Layout::Pack
                                         ? zvpsMulPack_16s_Sfs(a.data(), b.data(), got.data(), n, sf)
                                         : zvpsMulPerm_16s_Sfs(a.data(), b.data(), got.data(), n, sf);
                ASSERT_EQ(st, zvpStsNoErr);
                const std::vector<int> r = roles(l, n);
                for (int i = 0; i < n; ++i) {
                    std::int64_t exact;
                    if (r[i] == -1) {
                        exact = std::int64_t(a[i]) * b[i];
                    } else {
                        const int j = r[i] == 0 ? i : i - 1;
                        exact = r[i] == 0 ? std::int64_t(a[j]) * b[j] - std::int64_t(a[j + 1]) * b[j + 1]
                                          : std::int64_t(a[j]) * b[j + 1] + std::int64_t(a[j + 1]) * b[j];
                    }
                    ASSERT_EQ(got[i], scaled(exact, sf)) << "sf " << sf << " n " << n << " i " << i;
                }
                std::vector<Zvp16s> ip = b;
                ASSERT_EQ(l == Layout::Pack ? zvpsMulPack_16s_ISfs(a.data(), ip.data(), n, sf)
                                            : zvpsMulPerm_16s_ISfs(a.data(), ip.data(), n, sf),
                          zvpStsNoErr);
                EXPECT_EQ(ip, got);
            }
        }
    }
    Zvp16s x[2] = {1, 1};
    EXPECT_EQ(zvpsMulPack_16s_Sfs(x, nullptr, x + 1, 1, 0), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsMulPerm_16s_ISfs(x, x + 1, 0, 0), zvpStsSizeErr);
}

}  // namespace
