// Mul, MulC, Div, DivC, DivCRev, Div_Round and AddProduct through the public
// interface.
//
// Integer forms are compared bit for bit with exact oracles (wide_int.h, or
// plain 64-bit arithmetic for 8-bit operands) over scale factors that cover
// every kernel path and threshold of each form; 8-bit forms over every
// operand pair and every factor from -40 to 40. Floating-point forms are
// compared with the IEEE expression they promise, or with a long-double
// value within a bound derived below. Check order, untouched buffers,
// lengths, alignment and in place against out of place are the shape
// table's (tests/shapes).
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "sentinel.h"
#include "wide_int.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;
using zvp::test::Mode;
using zvp::test::Wide;
using zvp::test::quotient;
using zvp::test::scaled;

// ---- Values ------------------------------------------------------------------

template <class T>
constexpr bool kCplx = std::is_same_v<T, Zvp16sc> || std::is_same_v<T, Zvp32sc>;

// Extremes and small values of an integer type, where rounding and
// saturation go wrong first.
template <class T>
std::vector<T> boundaries() {
    using L = std::numeric_limits<T>;
    std::vector<T> v = {0, 1, 2, 3, L::max(), T(L::max() - 1), T(L::max() / 2), T(L::max() / 2 + 1)};
    if constexpr (std::is_signed_v<T>) {
        for (T x : {T(-1), T(-2), T(-3), L::min(), T(L::min() + 1), T(L::min() / 2)}) v.push_back(x);
    }
    return v;
}

template <class T>
T randomValue(std::mt19937_64& g) {
    if constexpr (kCplx<T>) {
        return T{randomValue<decltype(T{}.re)>(g), randomValue<decltype(T{}.re)>(g)};
    } else {
        static const std::vector<T> b = boundaries<T>();
        const std::uint64_t r = g();
        switch (r % 8) {
            case 0: return b[(r >> 8) % b.size()];
            case 1: return T(std::int64_t(r >> 32) % 64 - (std::is_signed_v<T> ? 32 : 0));  // small
            default: return T(r >> 16);
        }
    }
}

template <class T>
std::string show(const T& v) {
    std::ostringstream s;
    if constexpr (kCplx<T>) s << "(" << std::int64_t(v.re) << "," << std::int64_t(v.im) << ")";
    else if constexpr (std::is_floating_point_v<T>) s << v;
    else s << std::int64_t(v);
    return s.str();
}

template <class T>
bool sameBits(const T& a, const T& b) { return std::memcmp(&a, &b, sizeof(T)) == 0; }

// Pairs of operands: every pair of boundary values, then random pairs.
template <class A, class B>
void makePairs(std::vector<A>& a, std::vector<B>& b, unsigned seed, int randomCount = 300) {
    std::mt19937_64 g(seed);
    if constexpr (!kCplx<A> && !kCplx<B>)
        for (A x : boundaries<A>())
            for (B y : boundaries<B>()) a.push_back(x), b.push_back(y);
    for (int i = 0; i < randomCount; ++i) a.push_back(randomValue<A>(g)), b.push_back(randomValue<B>(g));
}

Wide W(std::int64_t v) { return Wide::of(v); }

// Scale factors around every threshold of the families (Z up to 126, N down
// to -64) and far beyond.
std::vector<int> sweep() {
    std::vector<int> s;
    for (int sf = -70; sf <= 70; ++sf) s.push_back(sf);
    for (int sf : {INT_MIN, -100000, -200, -130, -129, -128, -127, -126, 100, 124, 125, 126, 127, 128, 129, 200,
                   100000, INT_MAX})
        s.push_back(sf);
    return s;
}

// Scale factors for the length sweep: one or two of every path.
const std::vector<int> kPathSfs = {INT_MIN, -40, -33, -32, -31, -17, -16, -15, -9, -8, -7, -3, -1, 0, 1, 2, 5,
                                   8, 9, 15, 16, 17, 30, 31, 32, 33, 62, 63, 64, 126, 127, 1000};

// Cases repeated over several constants sweep every factor for the first
// two (the extreme constants) and one or two per path for the others.
std::vector<int> sfsFor(int k) { return k < 2 ? sweep() : kPathSfs; }

// ---- Integer forms against exact oracles ----------------------------------------

template <class A, class B, class D>
struct IntCase {
    std::string name;
    // Out of place over a, b.
    std::function<ZvpStatus(const A*, const B*, D*, int, int)> run;
    std::function<D(const A&, const B&, int)> expect;
    std::function<bool(const A&, const B&)> warns;  // zero divisor
    std::vector<int> sfs = sweep();
};

template <class A, class B, class D>
void checkInt(const IntCase<A, B, D>& c, unsigned seed = 1) {
    SCOPED_TRACE(c.name);
    std::vector<A> a;
    std::vector<B> b;
    makePairs(a, b, seed);
    const int len = int(a.size());
    int failures = 0;
    for (int sf : c.sfs) {
        GuardedBuffer out(len * sizeof(D), 2 * sizeof(D));
        D* d = out.as<D>();
        const ZvpStatus st = c.run(a.data(), b.data(), d, len, sf);
        bool warn = false;
        for (int i = 0; i < len; ++i) warn |= c.warns && c.warns(a[i], b[i]);
        EXPECT_EQ(st, warn ? zvpStsDivByZero : zvpStsNoErr) << "sf " << sf;
        for (int i = 0; i < len && failures < 8; ++i) {
            const D e = c.expect(a[i], b[i], sf);
            if (!sameBits(d[i], e)) {
                ++failures;
                ADD_FAILURE() << "sf " << sf << " a " << show(a[i]) << " b " << show(b[i]) << ": got "
                              << show(d[i]) << ", expected " << show(e);
            }
        }
    }
}

template <class D>
D subst(D a) {  // the zero-divisor substitute
    if (a == 0) return D(0);
    return a > 0 ? std::numeric_limits<D>::max() : std::numeric_limits<D>::min();
}

// ---- Mul ---------------------------------------------------------------------

// Real products by the exact rule.
template <class A, class B, class D>
void checkMul(const std::string& name, ZvpStatus (*f)(const A*, const B*, D*, int, int)) {
    checkInt<A, B, D>({name, f, [](const A& a, const B& b, int sf) { return scaled<D>(W(a) * W(b), sf); }, {}});
}
#define MUL(f) checkMul(#f, zvps##f)
template <class C, class P>
C cmul(C a, C b, int sf) {
    return C{scaled<P>(W(a.re) * W(b.re) - W(a.im) * W(b.im), sf), scaled<P>(W(a.re) * W(b.im) + W(a.im) * W(b.re), sf)};
}
const auto cmul16 = cmul<Zvp16sc, Zvp16s>;
const auto cmul32 = cmul<Zvp32sc, Zvp32s>;

TEST(MulDivMul, EveryVectorForm) {
    MUL(Mul_8u_Sfs);
    MUL(Mul_16s_Sfs);
    MUL(Mul_16u_Sfs);
    MUL(Mul_16u16s_Sfs);
    MUL(Mul_16s32s_Sfs);
    MUL(Mul_32s_Sfs);
    MUL(Mul_Low_32s_Sfs);
    checkInt<Zvp16s, Zvp16s, Zvp16s>({"Mul_16s", [](auto a, auto b, auto d, int n, int) { return zvpsMul_16s(a, b, d, n); },
                                      [](Zvp16s a, Zvp16s b, int) { return scaled<Zvp16s>(W(a) * W(b), 0); }, {}, {0}});
    checkInt<Zvp8u, Zvp8u, Zvp16u>({"Mul_8u16u", [](auto a, auto b, auto d, int n, int) { return zvpsMul_8u16u(a, b, d, n); },
                                    [](Zvp8u a, Zvp8u b, int) { return Zvp16u(a * b); }, {}, {0}});
    // The exact product rounded to single precision by the default mode.
    checkInt<Zvp16s, Zvp16s, Zvp32f>({"Mul_16s32f", [](auto a, auto b, auto d, int n, int) { return zvpsMul_16s32f(a, b, d, n); },
                                      [](Zvp16s a, Zvp16s b, int) { return float(std::int32_t(a) * b); }, {}, {0}});
    checkInt<Zvp32s, Zvp32sc, Zvp32sc>({"Mul_32s32sc_Sfs", zvpsMul_32s32sc_Sfs, [](Zvp32s a, Zvp32sc b, int sf) {
        return Zvp32sc{scaled<Zvp32s>(W(a) * W(b.re), sf), scaled<Zvp32s>(W(a) * W(b.im), sf)}; }, {}});
    checkInt<Zvp16sc, Zvp16sc, Zvp16sc>({"Mul_16sc_Sfs", zvpsMul_16sc_Sfs, cmul16, {}});
    checkInt<Zvp32sc, Zvp32sc, Zvp32sc>({"Mul_32sc_Sfs", zvpsMul_32sc_Sfs, cmul32, {}});
    // The corner where the imaginary part is +2^31 (all four parts -32768),
    // and where a 32sc part needs 64 bits plus one, in a long vector.
    std::vector<Zvp16sc> m(40, Zvp16sc{-32768, -32768});
    std::vector<Zvp16sc> d(40);
    for (int sf : {-20, -1, 0, 1, 15, 16, 17, 30, 31, 32}) {
        ASSERT_EQ(zvpsMul_16sc_Sfs(m.data(), m.data(), d.data(), 40, sf), zvpStsNoErr);
        for (const auto& x : d) ASSERT_TRUE(sameBits(x, cmul16(m[0], m[0], sf))) << sf;
    }
    std::vector<Zvp32sc> m32(5, Zvp32sc{INT32_MIN, INT32_MIN}), d32(5);
    for (int sf : {62, 63, 64}) {
        ASSERT_EQ(zvpsMul_32sc_Sfs(m32.data(), m32.data(), d32.data(), 5, sf), zvpStsNoErr);
        EXPECT_EQ(d32[4].re, 0);
        EXPECT_EQ(d32[4].im, sf == 62 ? 2 : (sf == 63 ? 1 : 0));  // 2^63 / 2^sf
    }
}

// Vector op constant against an oracle of (element, constant, sf).
template <class T, class E>
void checkC(const std::string& name, ZvpStatus (*f)(const T*, T, T*, int, int), T c, E expect, std::vector<int> sfs) {
    checkInt<T, T, T>({name, [f, c](const T* a, const T*, T* d, int n, int sf) { return f(a, c, d, n, sf); },
                       [c, expect](const T& a, const T&, int sf) { return expect(a, c, sf); }, {}, sfs});
}
template <class T>
T rmul(T a, T c, int sf) { return scaled<T>(W(a) * W(c), sf); }

TEST(MulDivMulC, EveryFormOverSeveralConstants) {
    std::mt19937_64 g(5);
    for (int k = 0; k < 6; ++k) {
        const std::string tag = " #" + std::to_string(k);
        const auto sfs = sfsFor(k);
        checkC<Zvp8u>("MulC_8u_Sfs" + tag, zvpsMulC_8u_Sfs, k < 3 ? boundaries<Zvp8u>()[k * 4 % 8] : randomValue<Zvp8u>(g),
                      rmul<Zvp8u>, sfs);
        const Zvp16s c16 = k < 3 ? boundaries<Zvp16s>()[k * 5 % 14] : randomValue<Zvp16s>(g);
        checkC<Zvp16s>("MulC_16s_Sfs" + tag, zvpsMulC_16s_Sfs, c16, rmul<Zvp16s>, sfs);
        checkC<Zvp16s>("MulC_16s_I" + tag, +[](const Zvp16s* a, Zvp16s c, Zvp16s* d, int n, int) {
            std::memcpy(d, a, n * sizeof(Zvp16s));
            return zvpsMulC_16s_I(c, d, n);
        }, c16, rmul<Zvp16s>, {0});
        checkC<Zvp16u>("MulC_16u_Sfs" + tag, zvpsMulC_16u_Sfs,
                       k < 3 ? boundaries<Zvp16u>()[k * 3 % 8] : randomValue<Zvp16u>(g), rmul<Zvp16u>, sfs);
        // 16sc: the imaginary part -32768 selects the overflow kernels.
        const Zvp16sc cc = k == 0 ? Zvp16sc{-32768, -32768} : k == 1 ? Zvp16sc{12345, -32768}
                           : k == 2 ? Zvp16sc{-32768, 32767} : randomValue<Zvp16sc>(g);
        checkC<Zvp16sc>("MulC_16sc_Sfs" + tag, zvpsMulC_16sc_Sfs, cc, cmul16, sfs);
        checkC<Zvp32s>("MulC_32s_Sfs" + tag, zvpsMulC_32s_Sfs,
                       k < 3 ? boundaries<Zvp32s>()[k * 5 % 14] : randomValue<Zvp32s>(g), rmul<Zvp32s>, sfs);
        checkC<Zvp32sc>("MulC_32sc_Sfs" + tag, zvpsMulC_32sc_Sfs,
                        k == 0 ? Zvp32sc{INT32_MIN, INT32_MIN} : randomValue<Zvp32sc>(g), cmul32, sfs);
        checkC<Zvp64s>("MulC_64s_ISfs" + tag, +[](const Zvp64s* a, Zvp64s c, Zvp64s* d, int n, int sf) {
            std::memcpy(d, a, n * sizeof(Zvp64s));
            return zvpsMulC_64s_ISfs(c, d, n, sf);
        }, k == 0 ? INT64_MIN : (k == 1 ? INT64_MAX : std::int64_t(g()) >> (k * 9)), rmul<Zvp64s>, sfs);
    }
}

// The product of a double and a 64s value, exactly: c = m * 2^e with an
// integer m of 53 bits (frexp), so R = (m * x) * 2^e.
Zvp64s refMul64f64s(double c, Zvp64s x, int sf) {
    if (std::isnan(c)) return 0;
    if (std::isinf(c)) return x == 0 ? 0 : ((x < 0) != (c < 0) ? INT64_MIN : INT64_MAX);
    int e = 0;
    const double m = std::ldexp(std::frexp(c, &e), 53);
    const std::int64_t shift = std::int64_t(sf) - (e - 53);
    const int s = int(shift > 300 ? 300 : (shift < -300 ? -300 : shift));
    return scaled<Zvp64s>(W(std::int64_t(m)) * W(x), s);
}

TEST(MulDivMulC, Float64TimesInt64) {
    const double consts[] = {0.0, -0.0, 1.0, -1.0, 0.5, 3.0, -2.75, 1e-300, 4.9e-324, 1.7976931348623157e308,
                             0.1, -123456.789, std::ldexp(1.0, 62), std::nan(""), INFINITY, -INFINITY};
    int k = 0;
    for (double c : consts) {
        std::vector<int> sfs = kPathSfs;
        for (int sf : {-1200, -1100, -1080, -1075, -200, -120, -70, -64, -63, 70, 120, 1000, 1100}) sfs.push_back(sf);
        if (k++ < 2) sfs = sweep();
        std::ostringstream name;
        name << "MulC_64f64s_ISfs " << c;
        checkInt<Zvp64s, Zvp64s, Zvp64s>({name.str(), [c](auto a, auto, auto d, int n, int sf) {
            std::memcpy(d, a, n * sizeof(Zvp64s));
            return zvpsMulC_64f64s_ISfs(c, d, n, sf);
        }, [c](Zvp64s a, Zvp64s, int sf) { return refMul64f64s(c, a, sf); }, {}, sfs});
    }
}

// ---- AddProduct (three operands) ------------------------------------------------

// acc + a * b, the whole sum scaled once.
template <class S, class D>
void checkAddProduct(const std::string& name, ZvpStatus (*f)(const S*, const S*, D*, int, int)) {
    SCOPED_TRACE(name);
    std::vector<S> a, b;
    makePairs(a, b, 11);
    std::vector<D> acc, unused;
    makePairs(acc, unused, 12, int(a.size()) - int(boundaries<D>().size() * boundaries<D>().size()));
    const int len = int(a.size());
    int failures = 0;
    for (int sf : sweep()) {
        std::vector<D> io(acc.begin(), acc.begin() + len);
        ASSERT_EQ(f(a.data(), b.data(), io.data(), len, sf), zvpStsNoErr);
        for (int i = 0; i < len && failures < 8; ++i)
            if (io[i] != scaled<D>(W(acc[i]) + W(a[i]) * W(b[i]), sf))
                ++failures, ADD_FAILURE() << "sf " << sf << " " << acc[i] << " + " << a[i] << " * " << b[i] << ": got " << io[i];
    }
}

TEST(MulDivAddProduct, ScalesTheWholeSum) {
    checkAddProduct("AddProduct_16s_Sfs", zvpsAddProduct_16s_Sfs);
    checkAddProduct("AddProduct_16s32s_Sfs", zvpsAddProduct_16s32s_Sfs);
    checkAddProduct("AddProduct_32s_Sfs", zvpsAddProduct_32s_Sfs);
}

// ---- Div, DivC, DivCRev, Div_Round on integers ------------------------------------

const Mode kModes[] = {Mode::TowardZero, Mode::NearestEven, Mode::HalfAway};

template <class T>
T divRef(T divisor, T dividend, int sf, Mode m = Mode::NearestEven) {
    return divisor == 0 ? subst(dividend) : quotient<T>(W(dividend), W(divisor), sf, m);
}

// b / a by the exact quotient; a zero divisor warns and gives the substitute.
// Div_16u below -31 (`allMax`) gives 65535 for every non-zero divisor, even 0 / x.
template <class T>
void checkDiv(const std::string& name, std::function<ZvpStatus(const T*, const T*, T*, int, int)> f,
              Mode m = Mode::NearestEven, bool allMax = false) {
    checkInt<T, T, T>({name, f, [m, allMax](const T& a, const T& b, int sf) {
        return allMax && sf < -31 && a != 0 ? std::numeric_limits<T>::max() : divRef(a, b, sf, m);
    }, [](const T& a, const T&) { return a == 0; }});
}

TEST(MulDivDiv, VectorForms) {
    checkDiv<Zvp8u>("Div_8u_Sfs", zvpsDiv_8u_Sfs);
    checkDiv<Zvp16s>("Div_16s_Sfs", zvpsDiv_16s_Sfs);
    checkDiv<Zvp16u>("Div_16u_Sfs", zvpsDiv_16u_Sfs, Mode::NearestEven, true);
    checkDiv<Zvp32s>("Div_32s_Sfs", zvpsDiv_32s_Sfs);
    checkInt<Zvp32s, Zvp16s, Zvp16s>({"Div_32s16s_Sfs", zvpsDiv_32s16s_Sfs, [](Zvp32s a, Zvp16s b, int sf) {
        return a == 0 ? subst(b) : quotient<Zvp16s>(W(b), W(a), sf, Mode::NearestEven);
    }, [](Zvp32s a, Zvp16s) { return a == 0; }});
    // b / a = b * conj(a) / |a|^2, each part rounded once.
    const auto cdiv = [](Zvp16sc a, Zvp16sc b, int sf) {
        const Wide den = W(a.re) * W(a.re) + W(a.im) * W(a.im);
        if (den.isZero()) return Zvp16sc{subst(b.re), subst(b.im)};
        return Zvp16sc{quotient<Zvp16s>(W(b.re) * W(a.re) + W(b.im) * W(a.im), den, sf, Mode::NearestEven),
                       quotient<Zvp16s>(W(b.im) * W(a.re) - W(b.re) * W(a.im), den, sf, Mode::NearestEven)};
    };
    checkInt<Zvp16sc, Zvp16sc, Zvp16sc>({"Div_16sc_Sfs", zvpsDiv_16sc_Sfs, cdiv, [](Zvp16sc a, Zvp16sc) { return a.re == 0 && a.im == 0; }});
    // Some 16sc divisors that are exactly zero, which random pairs rarely are.
    std::vector<Zvp16sc> a = {{0, 0}, {3, 4}, {0, 0}}, b = {{5, -5}, {7, 1}, {0, 0}}, d(3);
    EXPECT_EQ(zvpsDiv_16sc_Sfs(a.data(), b.data(), d.data(), 3, 0), zvpStsDivByZero);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(sameBits(d[i], cdiv(a[i], b[i], 0))) << i;
}

template <class T>
T rdivC(T a, T c, int sf) { return divRef(c, a, sf); }

TEST(MulDivDiv, ConstantForms) {
    std::mt19937_64 g(9);
    for (int k = 0; k < 5; ++k) {
        const std::string tag = " #" + std::to_string(k);
        const auto sfs = sfsFor(k);
        Zvp8u c8 = randomValue<Zvp8u>(g);
        Zvp16s c16 = k == 0 ? INT16_MIN : (k == 1 ? -1 : randomValue<Zvp16s>(g));
        Zvp16u cu = k == 0 ? 65535 : (k == 1 ? 1 : randomValue<Zvp16u>(g));
        Zvp64s c64 = k == 0 ? INT64_MIN : (k == 1 ? -1 : std::int64_t(g()) >> (k * 11));
        // Purely real and purely imaginary divisors are not zero.
        Zvp16sc cc = k == 0 ? Zvp16sc{-32768, -32768} : k == 1 ? Zvp16sc{5, 0} : k == 2 ? Zvp16sc{0, -3} : randomValue<Zvp16sc>(g);
        c8 = c8 ? c8 : 1;
        c16 = c16 ? c16 : 7;
        cu = cu ? cu : 3;
        c64 = c64 ? c64 : 5;
        if (cc.re == 0 && cc.im == 0) cc.re = 1;
        checkC<Zvp8u>("DivC_8u_Sfs" + tag, zvpsDivC_8u_Sfs, c8, rdivC<Zvp8u>, sfs);
        checkC<Zvp16s>("DivC_16s_Sfs" + tag, zvpsDivC_16s_Sfs, c16, rdivC<Zvp16s>, sfs);
        checkC<Zvp16u>("DivC_16u_Sfs" + tag, zvpsDivC_16u_Sfs, cu, rdivC<Zvp16u>, sfs);
        checkC<Zvp64s>("DivC_64s_ISfs" + tag, +[](const Zvp64s* a, Zvp64s c, Zvp64s* d, int n, int sf) {
            std::memcpy(d, a, n * sizeof(Zvp64s));
            return zvpsDivC_64s_ISfs(c, d, n, sf);
        }, c64, rdivC<Zvp64s>, sfs);
        checkC<Zvp16sc>("DivC_16sc_Sfs" + tag, zvpsDivC_16sc_Sfs, cc, [](Zvp16sc a, Zvp16sc c, int sf) {
            const Wide den = W(c.re) * W(c.re) + W(c.im) * W(c.im);
            return Zvp16sc{quotient<Zvp16s>(W(a.re) * W(c.re) + W(a.im) * W(c.im), den, sf, Mode::NearestEven),
                           quotient<Zvp16s>(W(a.im) * W(c.re) - W(a.re) * W(c.im), den, sf, Mode::NearestEven)};
        }, sfs);
        // val / x, rounded to nearest; a zero element gives 65535 (0 for 0 / 0).
        const Zvp16u cr = k == 0 ? 0 : cu;
        checkInt<Zvp16u, Zvp16u, Zvp16u>(
            {"DivCRev_16u" + tag, [cr](auto a, auto, auto d, int n, int) { return zvpsDivCRev_16u(a, cr, d, n); },
             [cr](Zvp16u a, Zvp16u, int) { return divRef(a, cr, 0); }, [](Zvp16u a, Zvp16u) { return a == 0; }, {0}});
    }
}

// Div_Round under a caller rounding mode (round down) that must not matter.
TEST(MulDivDivRound, EveryModeAgainstTheExactQuotient) {
    const unsigned saved = _mm_getcsr();
    _mm_setcsr((saved & ~0x6000u) | 0x2000u);
    for (int m = 0; m < 3; ++m) {
        const Mode mode = kModes[m];
        const auto rm = ZvpRoundMode(m);
        const std::string tag = " mode " + std::to_string(m);
#define DIV_ROUND(t) checkDiv<Zvp##t>("Div_Round_" #t "_Sfs" + tag, [rm](auto a, auto b, auto d, int n, int sf) { \
        return zvpsDiv_Round_##t##_Sfs(a, b, d, n, rm, sf); }, mode)
        DIV_ROUND(8u);
        DIV_ROUND(16s);
        DIV_ROUND(16u);
#undef DIV_ROUND
        EXPECT_EQ(_mm_getcsr() & ~0x3Fu, ((saved & ~0x6000u) | 0x2000u) & ~0x3Fu) << "control word not restored";
    }
    _mm_setcsr(saved);
}

// ---- Every 8-bit operand pair at every scale factor from -40 to 40 --------------------
//
// Oracles in plain 64-bit arithmetic: a * 2^40 and 255 * 2^40 stay far
// below 2^63.

std::int64_t roundDiv64(std::int64_t n, std::int64_t d, Mode m) {  // n >= 0, d > 0
    const std::int64_t q = n / d, r = n % d;
    if (m == Mode::TowardZero) return q;
    if (2 * r > d || (2 * r == d && (m == Mode::HalfAway || (q & 1)))) return q + 1;
    return q;
}
Zvp8u clamp8(std::int64_t v) { return Zvp8u(v > 255 ? 255 : v); }
Zvp8u ref8(std::int64_t num, std::int64_t den, int sf, Mode m) {  // num / (den * 2^sf), den > 0
    return sf >= 0 ? clamp8(roundDiv64(num, den << sf, m)) : clamp8(roundDiv64(num << -sf, den, m));
}

TEST(MulDivEightBit, EveryPairEveryScaleFactor) {
    const int n = 65536;
    std::vector<Zvp8u> a(n), b(n), d(n);
    for (int i = 0; i < n; ++i) {
        a[i] = Zvp8u(i >> 8);
        b[i] = Zvp8u(i);
    }
    for (int sf = -40; sf <= 40; ++sf) {
        ASSERT_EQ(zvpsMul_8u_Sfs(a.data(), b.data(), d.data(), n, sf), zvpStsNoErr);
        for (int i = 0; i < n; ++i)
            ASSERT_EQ(d[i], ref8(a[i] * b[i], 1, sf, Mode::NearestEven)) << "Mul " << +a[i] << "*" << +b[i] << " sf " << sf;
        for (int c = 0; c < 256; ++c) {
            ASSERT_EQ(zvpsMulC_8u_Sfs(b.data(), Zvp8u(c), d.data(), 256, sf), zvpStsNoErr);
            for (int i = 0; i < 256; ++i)
                ASSERT_EQ(d[i], ref8(c * b[i], 1, sf, Mode::NearestEven)) << "MulC " << i << "*" << c << " sf " << sf;
            if (c == 0) continue;
            ASSERT_EQ(zvpsDivC_8u_Sfs(b.data(), Zvp8u(c), d.data(), 256, sf), zvpStsNoErr);
            for (int i = 0; i < 256; ++i)
                ASSERT_EQ(d[i], ref8(b[i], c, sf, Mode::NearestEven)) << "DivC " << i << "/" << c << " sf " << sf;
        }
        ASSERT_EQ(zvpsDiv_8u_Sfs(a.data(), b.data(), d.data(), n, sf), zvpStsDivByZero);
        for (int i = 0; i < n; ++i) {
            const Zvp8u e = a[i] == 0 ? (b[i] ? 255 : 0) : ref8(b[i], a[i], sf, Mode::NearestEven);
            ASSERT_EQ(d[i], e) << "Div " << +b[i] << "/" << +a[i] << " sf " << sf;
        }
        for (int m = 0; m < 3; ++m) {
            ASSERT_EQ(zvpsDiv_Round_8u_Sfs(a.data(), b.data(), d.data(), n, ZvpRoundMode(m), sf), zvpStsDivByZero);
            for (int i = 0; i < n; ++i) {
                const Zvp8u e = a[i] == 0 ? (b[i] ? 255 : 0) : ref8(b[i], a[i], sf, kModes[m]);
                ASSERT_EQ(d[i], e) << "Div_Round " << +b[i] << "/" << +a[i] << " sf " << sf << " mode " << m;
            }
        }
    }
}

// ---- Floating point --------------------------------------------------------------

// Mostly in [-4, 4], some zeros, some scaled by 2^-spread .. 2^spread.
template <class T>
std::vector<T> randomFloats(int n, unsigned seed, int spread = 100) {
    std::mt19937_64 g(seed);
    std::uniform_real_distribution<T> u(-4, 4);
    std::vector<T> v(n);
    for (auto& x : v) {
        const auto r = g() % 16;
        x = r == 0 ? T(0) : (r == 1 ? std::ldexp(u(g), int(g() % (2 * spread)) - spread) : u(g));
    }
    return v;
}

// Real forms: the IEEE result of the one operation they perform, bit for bit.
template <class T, class F, class E>
void checkRealExact(const std::string& name, F f, E expect) {
    SCOPED_TRACE(name);
    const int n = 301;
    const auto a = randomFloats<T>(n + 4, 21), b = randomFloats<T>(n + 4, 22);
    GuardedBuffer out(n * sizeof(T), sizeof(T));
    f(a.data(), b.data(), out.as<T>(), n);
    for (int i = 0; i < n; ++i) {
        const T e = expect(a[i], b[i]);
        ASSERT_TRUE(sameBits(out.as<T>()[i], e) || (std::isnan(e) && std::isnan(out.as<T>()[i])))
            << i << ": " << a[i] << ", " << b[i] << " gives " << out.as<T>()[i] << ", expected " << e;
    }
}

TEST(MulDivFloatReal, MulDivAddProductAndConstants) {
    checkRealExact<float>("Mul_32f", zvpsMul_32f, [](float a, float b) { return a * b; });
    checkRealExact<double>("Mul_64f", zvpsMul_64f, [](double a, double b) { return a * b; });
    // Div: the second source over the first.
    checkRealExact<float>("Div_32f", zvpsDiv_32f, [](float a, float b) { return b / a; });
    checkRealExact<double>("Div_64f", zvpsDiv_64f, [](double a, double b) { return b / a; });
    // AddProduct: the product rounded, then the sum (b serves as the accumulator).
    checkRealExact<float>("AddProduct_32f", [](auto a, auto b, auto d, int n) {
        std::memcpy(d, b, n * sizeof(float));
        return zvpsAddProduct_32f(a, a, d, n);
    }, [](float a, float b) { return b + a * a; });
    checkRealExact<double>("AddProduct_64f", [](auto a, auto b, auto d, int n) {
        std::memcpy(d, b, n * sizeof(double));
        return zvpsAddProduct_64f(a, b, d, n);
    }, [](double a, double b) { return b + a * b; });
    for (float c : {3.0f, -0.1f, 1e-30f, 7e30f}) {
        checkRealExact<float>("MulC_32f", [c](auto a, auto, auto d, int n) { return zvpsMulC_32f(a, c, d, n); },
                              [c](float a, float) { return a * c; });
        // DivC multiplies by the reciprocal: rounded twice, deliberately.
        checkRealExact<float>("DivC_32f", [c](auto a, auto, auto d, int n) { return zvpsDivC_32f(a, c, d, n); },
                              [c](float a, float) { return a * (1.0f / c); });
        checkRealExact<float>("DivCRev_32f", [c](auto a, auto, auto d, int n) { return zvpsDivCRev_32f(a, c, d, n); },
                              [c](float a, float) { return c / a; });
        checkRealExact<float>("AddProductC_32f", [c](auto a, auto b, auto d, int n) {
            std::memcpy(d, b, n * sizeof(float));
            return zvpsAddProductC_32f(a, c, d, n);
        }, [c](float a, float b) { return b + a * c; });
        const double c64 = double(c) * 1.1;
        checkRealExact<double>("MulC_64f", [c64](auto a, auto, auto d, int n) { return zvpsMulC_64f(a, c64, d, n); },
                               [c64](double a, double) { return a * c64; });
        checkRealExact<double>("DivC_64f", [c64](auto a, auto, auto d, int n) { return zvpsDivC_64f(a, c64, d, n); },
                               [c64](double a, double) { return a * (1.0 / c64); });
    }
}

TEST(MulDivFloatReal, DivisionStatus) {
    const float a[5] = {1, 2, 0, 4, 5}, b[5] = {1, 1, 1, 1, 0};
    float d[5];
    EXPECT_EQ(zvpsDiv_32f(a, b, d, 5), zvpStsDivByZero);
    EXPECT_TRUE(std::isnan(d[2]) == false && std::isinf(d[2]) && d[2] > 0);  // 1 / 0 = +inf
    EXPECT_EQ(zvpsDiv_32f(b, a, d, 5), zvpStsDivByZero);                       // b[4] = 0 divides
    EXPECT_EQ(zvpsDiv_32f(a, a, d, 2), zvpStsNoErr);
    const double ad[3] = {0, 1, 2};
    double dd[3];
    EXPECT_EQ(zvpsDiv_64f(ad, ad, dd, 3), zvpStsDivByZero);
    EXPECT_TRUE(std::isnan(dd[0]));
    EXPECT_EQ(zvpsDivCRev_32f(a, 1.0f, d, 5), zvpStsDivByZero);
    EXPECT_EQ(zvpsDivCRev_32f(a, 1.0f, d, 2), zvpStsNoErr);
}

// Complex forms against long double. Each part of a complex product is two
// rounded products and a rounded sum, so its error is at most
// eps * (|x1| + |x2|) * (1 + eps) + eps * |x1 +- x2| <= 3 eps (|x1| + |x2|)
// with eps the unit roundoff; an accumulated product adds one more rounding
// of a value at most |acc| + |x1| + |x2|. Quotients are checked against a
// relative bound of 8 eps of the magnitude, from the same counting.
template <class T, class C, class F, class E>
void checkCplx(const std::string& name, F f, E expect) {
    SCOPED_TRACE(name);
    const int n = 151;
    const auto a = randomFloats<T>(2 * n + 8, 31, 30), b = randomFloats<T>(2 * n + 8, 32, 30);
    const auto* ca = reinterpret_cast<const C*>(a.data());
    const auto* cb = reinterpret_cast<const C*>(b.data());
    GuardedBuffer out(n * sizeof(C), sizeof(T));
    C* d = out.as<C>();
    f(ca, cb, d, n);
    const long double eps = std::numeric_limits<T>::epsilon() / 2;
    for (int i = 0; i < n; ++i) {
        long double re, im, bound;
        expect(ca[i], cb[i], re, im, bound);
        if (!std::isfinite(re) || !std::isfinite(im)) continue;  // a zero divisor
        const long double tol = bound * eps;
        ASSERT_LE(std::fabs(d[i].re - re), tol) << i << " re";
        ASSERT_LE(std::fabs(d[i].im - im), tol) << i << " im";
    }
}

template <class C>
void cmulRef(C a, C b, long double& re, long double& im, long double& bound) {
    const long double ar = a.re, ai = a.im, br = b.re, bi = b.im;
    re = ar * br - ai * bi;
    im = ar * bi + ai * br;
    bound = 3 * (std::fabs(ar * br) + std::fabs(ai * bi) + std::fabs(ar * bi) + std::fabs(ai * br));
}
template <class C>
void cdivRef(C a, C b, long double& re, long double& im, long double& bound) {  // b / a
    const long double ar = a.re, ai = a.im, br = b.re, bi = b.im, den = ar * ar + ai * ai;
    re = (br * ar + bi * ai) / den;
    im = (bi * ar - br * ai) / den;
    bound = 8 * std::sqrt((br * br + bi * bi) / den);
}

TEST(MulDivFloatComplex, ProductsAndQuotients) {
    checkCplx<float, Zvp32fc>("Mul_32fc", zvpsMul_32fc, cmulRef<Zvp32fc>);
    checkCplx<double, Zvp64fc>("Mul_64fc", zvpsMul_64fc, cmulRef<Zvp64fc>);
    checkCplx<float, Zvp32fc>("Div_32fc", zvpsDiv_32fc, cdivRef<Zvp32fc>);
    checkCplx<double, Zvp64fc>("Div_64fc", zvpsDiv_64fc, cdivRef<Zvp64fc>);
    // Accumulating: d = d + a * b with d starting at a's conjugate pattern.
    checkCplx<float, Zvp32fc>("AddProduct_32fc", [](auto a, auto b, auto d, int n) {
        std::memcpy(d, a, n * sizeof(*d));
        return zvpsAddProduct_32fc(a, b, d, n);
    }, [](Zvp32fc a, Zvp32fc b, long double& re, long double& im, long double& bound) {
        cmulRef(a, b, re, im, bound);
        re += a.re;
        im += a.im;
        bound = bound + 2 * (std::fabs(re) + std::fabs(im)) + 2 * (std::fabs(a.re) + std::fabs(a.im));
    });
    checkCplx<double, Zvp64fc>("AddProduct_64fc", [](auto a, auto b, auto d, int n) {
        std::memcpy(d, b, n * sizeof(*d));
        return zvpsAddProduct_64fc(a, b, d, n);
    }, [](Zvp64fc a, Zvp64fc b, long double& re, long double& im, long double& bound) {
        cmulRef(a, b, re, im, bound);
        re += b.re;
        im += b.im;
        bound = bound + 2 * (std::fabs(re) + std::fabs(im)) + 2 * (std::fabs(b.re) + std::fabs(b.im));
    });
}

TEST(MulDivFloatComplex, RealTimesComplexAndConstants) {
    const int n = 67;
    const auto r = randomFloats<float>(n + 4, 41, 30), c = randomFloats<float>(2 * n + 8, 42, 30);
    const auto* cc = reinterpret_cast<const Zvp32fc*>(c.data());
    std::vector<Zvp32fc> d(n);
    ASSERT_EQ(zvpsMul_32f32fc(r.data(), cc, d.data(), n), zvpStsNoErr);
    for (int i = 0; i < n; ++i) EXPECT_TRUE(sameBits(d[i].re, r[i] * cc[i].re) && sameBits(d[i].im, r[i] * cc[i].im)) << i;
    // MulC and DivC with complex constants; DivC multiplies by 1/c.
    const Zvp32fc k32 = {0.75f, -1.25f};
    const Zvp64fc k64 = {-3.5, 1e-3};
    std::vector<Zvp32fc> m(n), q(n);
    ASSERT_EQ(zvpsMulC_32fc(cc, k32, m.data(), n), zvpStsNoErr);
    ASSERT_EQ(zvpsDivC_32fc(cc, k32, q.data(), n), zvpStsNoErr);
    const long double den = 0.75L * 0.75L + 1.25L * 1.25L;
    const Zvp32fc inv = {float(0.75L / den), float(1.25L / den)};
    std::vector<Zvp32fc> viaMul(n);
    ASSERT_EQ(zvpsMulC_32fc(cc, inv, viaMul.data(), n), zvpStsNoErr);
    for (int i = 0; i < n; ++i) {
        long double re, im, bound;
        cmulRef(cc[i], k32, re, im, bound);
        EXPECT_LE(std::fabs(m[i].re - re), bound * 6e-8L) << i;
        EXPECT_LE(std::fabs(m[i].im - im), bound * 6e-8L) << i;
        EXPECT_TRUE(sameBits(q[i], viaMul[i])) << i;
    }
    const std::vector<double> store64 = randomFloats<double>(2 * n + 8, 43, 30);
    const auto* c64 = reinterpret_cast<const Zvp64fc*>(store64.data());
    std::vector<Zvp64fc> m64(n), q64(n);
    ASSERT_EQ(zvpsMulC_64fc(c64, k64, m64.data(), n), zvpStsNoErr);
    ASSERT_EQ(zvpsDivC_64fc(c64, k64, q64.data(), n), zvpStsNoErr);
    for (int i = 0; i < n; ++i) {
        long double re, im, bound;
        cmulRef(c64[i], k64, re, im, bound);
        EXPECT_LE(std::fabs(m64[i].re - re), bound * 1.2e-16L) << i;
        cdivRef(k64, c64[i], re, im, bound);
        EXPECT_LE(std::fabs(q64[i].re - re), bound * 1.2e-16L) << i;
        EXPECT_LE(std::fabs(q64[i].im - im), bound * 1.2e-16L) << i;
    }
}

TEST(MulDivFloatComplex, ZeroDivisorsAndExtremeMagnitudes) {
    const Zvp32fc a[3] = {{0, 0}, {1, 1}, {-0.0f, 0}}, b[3] = {{2, -3}, {2, 2}, {0, 0}};
    Zvp32fc d[3];
    EXPECT_EQ(zvpsDiv_32fc(a, b, d, 3), zvpStsDivByZero);
    EXPECT_TRUE(std::isinf(d[0].re) && d[0].re > 0 && std::isinf(d[0].im) && d[0].im < 0);
    EXPECT_EQ(d[1].re, 2.0f);
    EXPECT_EQ(d[1].im, 0.0f);
    EXPECT_TRUE(std::isnan(d[2].re) && std::isnan(d[2].im));
    EXPECT_EQ(zvpsDiv_32fc(a + 1, b + 1, d, 1), zvpStsNoErr);
    // 64fc divisors far outside the range where |a|^2 is representable.
    const Zvp64fc big[2] = {{3e200, 4e200}, {3e-200, -4e-200}}, num[2] = {{5e200, 0}, {5e-200, 0}};
    Zvp64fc q[2];
    EXPECT_EQ(zvpsDiv_64fc(big, num, q, 2), zvpStsNoErr);
    EXPECT_NEAR(q[0].re, 0.6, 1e-15);
    EXPECT_NEAR(q[0].im, -0.8, 1e-15);
    EXPECT_NEAR(q[1].re, 0.6, 1e-15);
    EXPECT_NEAR(q[1].im, 0.8, 1e-15);
    const Zvp64fc z[1] = {{0, 0}};
    EXPECT_EQ(zvpsDiv_64fc(z, num, q, 1), zvpStsDivByZero);
    EXPECT_TRUE(std::isinf(q[0].re) && std::isnan(q[0].im));  // 5e200/0, 0/0
}

// ---- Products converted to 16s -------------------------------------------------------

// MulC_32f16s_Sfs: the exact product (exact in double) times 2^-sf, rounded
// to nearest with ties to even, saturated; NaN gives 0.
Zvp16s ref32f16s(float x, float c, int sf) {
    const double p = double(x) * double(c);
    if (std::isnan(p)) return 0;
    if (std::isinf(p)) return p > 0 ? 32767 : -32768;
    int e = 0;
    const double m = std::ldexp(std::frexp(p, &e), 53);  // p = m * 2^(e - 53)
    const long long s = (long long)sf - (e - 53);
    return scaled<Zvp16s>(W(std::int64_t(m)), int(s > 2000 ? 2000 : (s < -2000 ? -2000 : s)));
}

TEST(MulDivFloatTo16s, ScaledExactProductAndLowPrecision) {
    const int n = 203;
    std::vector<float> x = randomFloats<float>(n + 8, 51);
    for (float v : {0.5f, 1.5f, 2.5f, -0.5f, -2.5f, 32767.5f, -32768.5f, 1e30f, -1e30f, NAN, INFINITY, -INFINITY})
        x.push_back(v);
    const int len = int(x.size()) - 8;
    for (float c : {1.0f, -3.0f, 1000.0f, 0.0f, 1e-20f, 65536.0f}) {
        for (int sf : {INT_MIN, -500, -40, -16, -1, 0, 1, 2, 15, 16, 40, 300, 500, INT_MAX}) {
            GuardedBuffer out(len * sizeof(Zvp16s), 2);
            ASSERT_EQ(zvpsMulC_32f16s_Sfs(x.data(), c, out.as<Zvp16s>(), len, sf), zvpStsNoErr);
            for (int i = 0; i < len; ++i)
                ASSERT_EQ(out.as<Zvp16s>()[i], ref32f16s(x[i], c, sf)) << x[i] << "*" << c << " sf " << sf;
        }
        // Low: the single-precision product, then to nearest integer.
        GuardedBuffer low(len * sizeof(Zvp16s), 2);
        ASSERT_EQ(zvpsMulC_Low_32f16s(x.data(), c, low.as<Zvp16s>(), len), zvpStsNoErr);
        for (int i = 0; i < len; ++i) {
            const float p = x[i] * c;
            const float r = std::isnan(p) ? 0.0f : std::fmin(std::fmax(std::nearbyint(p), -32768.0f), 32767.0f);
            ASSERT_EQ(low.as<Zvp16s>()[i], Zvp16s(r)) << x[i] << "*" << c;
        }
    }
}

// ---- Worked examples ------------------------------------------------------------------

TEST(MulDivExamples, DivisionRules) {
    const Zvp16s zero3[3] = {0, 0, 0}, num[3] = {5, -5, 0};
    Zvp16s d[3];
    EXPECT_EQ(zvpsDiv_16s_Sfs(zero3, num, d, 3, 0), zvpStsDivByZero);
    EXPECT_EQ(d[0], 32767);
    EXPECT_EQ(d[1], -32768);
    EXPECT_EQ(d[2], 0);

    const Zvp8u z8 = 0, seven = 7;
    Zvp8u d8 = 1;
    EXPECT_EQ(zvpsDiv_8u_Sfs(&z8, &seven, &d8, 1, 0), zvpStsDivByZero);
    EXPECT_EQ(d8, 255);

    const Zvp16u three = 3, z16 = 0;
    Zvp16u d16 = 1;
    EXPECT_EQ(zvpsDiv_16u_Sfs(&three, &z16, &d16, 1, -40), zvpStsNoErr);
    EXPECT_EQ(d16, 65535);

    const Zvp16s two[2] = {2, 2}, five[2] = {5, -5};
    const Zvp16s want[3][2] = {{2, -2}, {2, -2}, {3, -3}};
    for (int m = 0; m < 3; ++m) {
        EXPECT_EQ(zvpsDiv_Round_16s_Sfs(two, five, d, 2, ZvpRoundMode(m), 0), zvpStsNoErr);
        EXPECT_EQ(d[0], want[m][0]) << m;
        EXPECT_EQ(d[1], want[m][1]) << m;
    }
    GuardedBuffer untouched(2 * sizeof(Zvp16s));
    EXPECT_EQ(zvpsDiv_Round_16s_Sfs(two, five, untouched.as<Zvp16s>(), 2, ZvpRoundMode(3), 0),
              zvpStsRoundModeNotSupportedErr);
    EXPECT_TRUE(untouched.untouched());

    const float x[3] = {1.0f, 10.0f, -7.0f};
    GuardedBuffer fd(3 * sizeof(float));
    EXPECT_EQ(zvpsDivC_32f(x, 0.0f, fd.as<float>(), 3), zvpStsDivByZeroErr);
    EXPECT_TRUE(fd.untouched());
    EXPECT_EQ(zvpsDivC_32f(x, 3.0f, fd.as<float>(), 3), zvpStsNoErr);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(sameBits(fd.as<float>()[i], x[i] * (1.0f / 3.0f)));
}

TEST(MulDivExamples, ScaleThresholdsAndStatuses) {
    // In place, the imaginary part comes from the operands, not the real part just written.
    const Zvp16sc a{3, 5};
    Zvp16sc b{100, 7};
    EXPECT_EQ(zvpsMul_16sc_ISfs(&a, &b, 1, 0), zvpStsNoErr);
    EXPECT_TRUE(b.re == 265 && b.im == 521);
    // Zero fill above Z returns the Zero operation's status (success).
    const Zvp16s big[2] = {-32768, 32767};
    Zvp16s d[2] = {5, 5};
    EXPECT_EQ(zvpsMul_16s_Sfs(big, big, d, 2, 31), zvpStsNoErr);
    EXPECT_EQ(d[0], 0);
    EXPECT_EQ(d[1], 0);
    EXPECT_EQ(zvpsMul_16s_Sfs(big, big, d, 2, 30), zvpStsNoErr);
    EXPECT_EQ(d[0], 1);  // 2^30 / 2^30
    EXPECT_EQ(d[1], 1);  // (2^30 - 2^16 + 1) / 2^30
    // AddProduct_16s at Z = 31: 2^30 + 2^15 - 1 over 2^31 is just above 1/2.
    const Zvp16s m = -32768, k = -32768;
    Zvp16s acc = 32767;
    EXPECT_EQ(zvpsAddProduct_16s_Sfs(&m, &k, &acc, 1, 31), zvpStsNoErr);
    EXPECT_EQ(acc, 1);
    acc = 32767;
    EXPECT_EQ(zvpsAddProduct_16s_Sfs(&m, &k, &acc, 1, 32), zvpStsNoErr);
    EXPECT_EQ(acc, 0);
    // The bound of MulC_8u: 255 for every non-zero product, 0 otherwise.
    const Zvp8u v[3] = {0, 1, 200};
    Zvp8u out[3];
    EXPECT_EQ(zvpsMulC_8u_Sfs(v, 1, out, 3, -8), zvpStsNoErr);
    EXPECT_EQ(out[0], 0);
    EXPECT_EQ(out[1], 255);
    EXPECT_EQ(out[2], 255);
    EXPECT_EQ(zvpsMulC_8u_Sfs(v, 0, out, 3, -1000), zvpStsNoErr);
    EXPECT_EQ(out[1], 0);
}

}  // namespace
