// Packed-spectrum helpers: expansion of Pack/Perm/CCS spectra to the full
// conjugate-symmetric spectrum and products of packed spectra, against index
// tables written here from the layout definitions, over lengths 1..67 (odd
// and even, every vector-width remainder). The forms, pointers and errors
// are the shape table's.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "wide_int.h"
#include "zvps.h"

namespace {

enum class Layout { Pack, Perm, Ccs };

// Value index of Rk and Ik (k = 0 .. n/2) in a layout of n points (-1: not stored).
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

// A half spectrum (Rk, Ik) as a layout; the imaginary parts of k = 0 and k = n/2 are 0.
template <class T>
std::vector<T> packed(const std::vector<T>& re, const std::vector<T>& im, Layout l, int n) {
    std::vector<T> v(l == Layout::Ccs ? 2 * (n / 2 + 1) : n, T(77));
    for (int k = 0; k <= n / 2; ++k) {
        v.at(reIndex(l, n, k)) = re[k];
        if (imIndex(l, n, k) >= 0) v.at(imIndex(l, n, k)) = im[k];
    }
    return v;
}

TEST(PackedLayout, IndexTablesForEightTwoAndOne) {
    const std::vector<float> re{10, 11, 12, 13, 14}, im{0, 21, 22, 23, 0}, im0(5, 0.f);
    EXPECT_EQ(packed(re, im, Layout::Pack, 8), (std::vector<float>{10, 11, 21, 12, 22, 13, 23, 14}));
    EXPECT_EQ(packed(re, im, Layout::Perm, 8), (std::vector<float>{10, 14, 11, 21, 12, 22, 13, 23}));
    EXPECT_EQ(packed(re, im, Layout::Ccs, 8), (std::vector<float>{10, 0, 11, 21, 12, 22, 13, 23, 14, 0}));
    EXPECT_EQ(packed(re, im0, Layout::Pack, 2), (std::vector<float>{10, 11}));
    EXPECT_EQ(packed(re, im0, Layout::Perm, 2), (std::vector<float>{10, 11}));
    EXPECT_EQ(packed(re, im0, Layout::Ccs, 2), (std::vector<float>{10, 0, 11, 0}));
    EXPECT_EQ(packed(re, im0, Layout::Pack, 1), (std::vector<float>{10}));
    EXPECT_EQ(packed(re, im0, Layout::Ccs, 1), (std::vector<float>{10, 0}));
}

// ---- Conj expansion -----------------------------------------------------------

template <class T>
ZvpStatus conj(Layout l, const T* s, void* d, int n) {
#define ZVP_CONJ(CT)                                                                        \
    return l == Layout::Pack   ? zvpsConjPack_##CT(s, static_cast<Zvp##CT*>(d), n)          \
           : l == Layout::Perm ? zvpsConjPerm_##CT(s, static_cast<Zvp##CT*>(d), n)          \
                               : zvpsConjCcs_##CT(reinterpret_cast<const Zvp##CT*>(s), static_cast<Zvp##CT*>(d), n)
    if constexpr (std::is_same_v<T, Zvp32f>) ZVP_CONJ(32fc);
    else if constexpr (std::is_same_v<T, Zvp64f>) ZVP_CONJ(64fc);
    else ZVP_CONJ(16sc);
#undef ZVP_CONJ
}

template <class T>
class ConjPackedTest : public ::testing::Test {};
using ScalarTypes = ::testing::Types<Zvp32f, Zvp64f, Zvp16s>;
TYPED_TEST_SUITE(ConjPackedTest, ScalarTypes);

// Element k of the full spectrum is the stored pair; element n - k its
// conjugate (a saturated negation for 16-bit data: -(-32768) is 32767).
TYPED_TEST(ConjPackedTest, ExpandsEveryLayout) {
    using T = TypeParam;
    for (Layout l : {Layout::Pack, Layout::Perm, Layout::Ccs})
        for (int n = 1; n <= 67; ++n) {
            std::mt19937 rng(1000u + n);
            std::uniform_int_distribution<int> d(-32768, 32767);
            std::vector<T> re, im;
            for (int k = 0; k <= n / 2; ++k) {
                re.push_back(T(d(rng)));
                im.push_back((k == 0 || 2 * k == n) ? T(0) : k == 1 ? T(-32768) : T(d(rng)));
            }
            std::vector<T> want(2 * n), got(2 * n, T(5));
            for (int k = 0; k <= n / 2; ++k) {
                want[2 * k] = re[k], want[2 * k + 1] = im[k];
                if (k > 0 && n - k > n / 2) {
                    want[2 * (n - k)] = re[k];
                    want[2 * (n - k) + 1] = std::is_integral_v<T> && im[k] == T(-32768) ? T(32767) : T(-im[k]);
                }
            }
            const std::vector<T> src = packed(re, im, l, n);
            ASSERT_EQ(conj(l, src.data(), got.data(), n), zvpStsNoErr);
            ASSERT_EQ(got, want) << "layout " << int(l) << " n " << n;
        }
}

TEST(ConjPacked, CcsCopiesItsStoredImaginaryParts) {
    const Zvp32fc ccs[3] = {{1, 7}, {2, 3}, {4, 8}};
    Zvp32fc d[4];
    ASSERT_EQ(zvpsConjCcs_32fc(ccs, d, 4), zvpStsNoErr);
    const float want[8] = {1, 7, 2, 3, 4, 8, 2, -3};
    EXPECT_EQ(std::memcmp(d, want, sizeof want), 0);
}

// ---- products ---------------------------------------------------------------

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

// Entry i of a * b (conjB: a * conj(b)) as p - q or p + q, exactly for
// integers, in long double for floats.
template <class W, class T>
void terms(Layout l, int n, const T* a, const T* b, int i, bool conjB, W& p, W& q, bool& real) {
    const std::vector<int> r = roles(l, n);
    real = r[i] == -1;
    if (real) {
        p = W(a[i]) * W(b[i]), q = 0;
        return;
    }
    const int j = r[i] == 0 ? i : i - 1;
    const W ar = a[j], ai = a[j + 1], br = b[j], bi = conjB ? -W(b[j + 1]) : W(b[j + 1]);
    p = r[i] == 0 ? ar * br : ar * bi;
    q = r[i] == 0 ? -(ai * bi) : ai * br;
}

template <class T>
class MulPackedTest : public ::testing::Test {};
using FloatTypes = ::testing::Types<Zvp32f, Zvp64f>;
TYPED_TEST_SUITE(MulPackedTest, FloatTypes);

// A float entry p + q has error at most 2u(|p| + |q|) (u the unit roundoff):
// each product and the sum round once.
TYPED_TEST(MulPackedTest, ProductsAgainstLongDouble) {
    using T = TypeParam;
    const long double u = std::numeric_limits<T>::epsilon() / 2;
    for (int form = 0; form < 3; ++form)
        for (int n = 1; n <= 67; ++n) {
            const Layout l = form == 1 ? Layout::Perm : Layout::Pack;
            std::mt19937 rng(7u * n);
            std::uniform_real_distribution<T> d(-2, 2);
            std::vector<T> a(n), b(n), got(n);
            for (int i = 0; i < n; ++i) a[i] = d(rng), b[i] = d(rng);
            got = a;
            if constexpr (std::is_same_v<T, Zvp32f>)
                ASSERT_EQ(form == 0   ? zvpsMulPack_32f(a.data(), b.data(), got.data(), n)
                          : form == 1 ? zvpsMulPerm_32f(a.data(), b.data(), got.data(), n)
                                      : zvpsMulPackConj_32f_I(b.data(), got.data(), n),
                          zvpStsNoErr);
            else
                ASSERT_EQ(form == 0   ? zvpsMulPack_64f(a.data(), b.data(), got.data(), n)
                          : form == 1 ? zvpsMulPerm_64f(a.data(), b.data(), got.data(), n)
                                      : zvpsMulPackConj_64f_I(b.data(), got.data(), n),
                          zvpStsNoErr);
            for (int i = 0; i < n; ++i) {
                long double p, q;
                bool real;
                terms(l, n, a.data(), b.data(), i, form == 2, p, q, real);
                const long double bound = (real ? 1 : 2) * u * (std::fabs(p) + std::fabs(q));
                ASSERT_LE(std::fabs(got[i] - (p + q)), bound) << "form " << form << " n " << n << " i " << i;
            }
        }
}

TEST(MulPackedInteger, ScaleRuleOnEveryEntry) {
    using zvp::test::Wide;
    std::mt19937 rng(42);
    std::uniform_int_distribution<int> d(-32768, 32767);
    for (int sf : {-2, 0, 1, 3, 15, 16, 31, 40})
        for (Layout l : {Layout::Pack, Layout::Perm})
            for (int n : {1, 2, 3, 8, 9, 17}) {
                std::vector<Zvp16s> a(n), b(n), got(n);
                for (int i = 0; i < n; ++i) a[i] = Zvp16s(d(rng)), b[i] = Zvp16s(d(rng));
                if (n >= 3) a[1] = a[2] = b[1] = b[2] = -32768;  // the largest exact results
                ASSERT_EQ(l == Layout::Pack ? zvpsMulPack_16s_Sfs(a.data(), b.data(), got.data(), n, sf)
                                            : zvpsMulPerm_16s_Sfs(a.data(), b.data(), got.data(), n, sf),
                          zvpStsNoErr);
                for (int i = 0; i < n; ++i) {
                    std::int64_t p, q;
                    bool real;
                    terms(l, n, a.data(), b.data(), i, false, p, q, real);
                    ASSERT_EQ(got[i], zvp::test::scaled<Zvp16s>(Wide::of(p + q), sf))
                        << "sf " << sf << " n " << n << " i " << i;
                }
            }
}

}  // namespace
