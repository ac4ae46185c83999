// The table of export shapes: one row per element-wise export, and the
// checks every export shares run over it (see shapes.h). Family tests keep
// only what is particular to a family.
#include "shapes.h"
#include "wide_int.h"

#include <algorithm>
#include <cfloat>
#include <map>

namespace {

using namespace zvp::test;
using zvp::test::Mode;

#define VV(f) vv(#f, zvps##f)
#define ACC(f) vv(#f, zvps##f, true)
#define VVI(f) vvI(#f, zvps##f)
#define UN(f) un(#f, zvps##f)
#define UNI(f) unI(#f, zvps##f)
#define VC(f) vc(#f, zvps##f)
#define VCI(f) vcI(#f, zvps##f)
// An out-of-place form and its in-place twin.
// An out-of-place form and its in-place twin, with optional flags for both.
#define ZVP_F(...) with(0 __VA_OPT__(|) __VA_ARGS__)
#define VV2(b, ...) VV(b).ZVP_F(__VA_ARGS__), VVI(b##_I).ZVP_F(__VA_ARGS__)
#define VVS2(b, ...) VV(b##_Sfs).ZVP_F(__VA_ARGS__), VVI(b##_ISfs).ZVP_F(__VA_ARGS__)
#define VC2(b, ...) VC(b).ZVP_F(__VA_ARGS__), VCI(b##_I).ZVP_F(__VA_ARGS__)
#define VCS2(b, ...) VC(b##_Sfs).ZVP_F(__VA_ARGS__), VCI(b##_ISfs).ZVP_F(__VA_ARGS__)
#define UN2(b, ...) UN(b).ZVP_F(__VA_ARGS__), UNI(b##_I).ZVP_F(__VA_ARGS__)
#define UNS2(b, ...) UN(b##_Sfs).ZVP_F(__VA_ARGS__), UNI(b##_ISfs).ZVP_F(__VA_ARGS__)
#define COPY(t, ...) UN(Copy_##t).with(kNoAlias __VA_OPT__(|) __VA_ARGS__), UN(Move_##t), \
    vcI("Set_" #t, zvpsSet_##t, true).ZVP_F(__VA_ARGS__), unI("Zero_" #t, zvpsZero_##t, true)

// A zero constant is refused with -10 (the first value after the vector).
Row divC(Row r) {
    return r.refuse([z = r.consts[0]->zero](const Vals& v) { return z(v.c[0]) ? zvpStsDivByZeroErr : zvpStsNoErr; });
}
#define DIVC(f, maker) divC(maker(f))

// A divisor whose magnitude is below the smallest normal single (NaN too).
template <class A, class D, class C, class E, class... S>
Row normalize(const char* n, ZvpStatus (*f)(const A*, D*, int, C, E, S...)) {
    return un2(n, f).refuse([](const Vals& v) {
        return std::fabs(double(constant<E>(v, 1))) >= double(FLT_MIN) ? zvpStsNoErr : zvpStsDivByZeroErr;
    });
}
#define NORM(f) normalize(#f, zvps##f)

// Shift counts: every count up to past the width (0 copies, the width and
// above zero or fill with the sign), far ones, and negative ones (-32).
Row shift(Row r, int width) {
    std::vector<std::int64_t> counts = {1, 40, INT_MAX, -1, INT_MIN};
    for (int k = 0; k <= width + 3; ++k) counts.push_back(k);
    return r.tryConstants(counts).refuse([](const Vals& v) {
        return constant<int>(v, 0) < 0 ? zvpStsShiftErr : zvpStsNoErr;
    });
}
#define SHIFT(op, t, w) shift(VC(op##_##t), w), shift(VCI(op##_##t##_I), w)

Rule roundMode() {
    return [](const Vals& v) { return v.mode >= 0 && v.mode <= 2 ? zvpStsNoErr : zvpStsRoundModeNotSupportedErr; };
}
#define DIVROUND(t) vvr("Div_Round_" #t "_Sfs", zvpsDiv_Round_##t##_Sfs).refuse(roundMode()), \
                    vvr("Div_Round_" #t "_ISfs", zvpsDiv_Round_##t##_ISfs).refuse(roundMode())

std::vector<Row> family(const char* name, std::vector<Row> rows) {
    for (Row& r : rows) r.family = name;
    return rows;
}


// ---- Oracles ------------------------------------------------------------------------
//
// Integer results: the exact value (wide_int.h) times 2^-sf, to nearest
// with ties to even, saturated. Real float results: the one IEEE operation
// the form performs, evaluated here in the element type.

template <class T>
Wide W(T x) {
    if constexpr (std::is_signed_v<T>) return Wide::of(x);
    else return Wide::ofU(x);
}
template <class T>
using Part = typename PartOf<T>::type;
template <class X>
auto re(X x) {
    if constexpr (PartOf<X>::parts == 2) return x.re;
    else return x;
}
template <class X>
auto im(X x) {  // a real operand serves both parts
    if constexpr (PartOf<X>::parts == 2) return x.im;
    else return x;
}
template <class P, class X>
auto val(X x) {  // integers exactly, floats in the result's type
    if constexpr (std::is_integral_v<X>) return W(x);
    else return P(x);
}
template <class P, class R>
P fin(const R& r, const Vals& v) {
    if constexpr (std::is_integral_v<P>) return scaled<P>(r, v.sf);
    else if constexpr (std::is_same_v<R, Wide>) return P(r.low64());  // an exact integer rounded once
    else return P(r);
}
// op part by part on exact (or IEEE) operands, then scaled.
template <class D, class F, class... X>
D parts(F op, const Vals& v, X... x) {
    using P = Part<D>;
    if constexpr (PartOf<D>::parts == 2) return D{fin<P>(op(val<P>(re(x))...), v), fin<P>(op(val<P>(im(x))...), v)};
    else return fin<P>(op(val<P>(x)...), v);
}
template <class D>
D subst(D n) {  // what a zero divisor gives
    return n == 0 ? D(0) : n > 0 ? std::numeric_limits<D>::max() : std::numeric_limits<D>::min();
}
// n / m; integers exactly, rounded by the row's mode (to nearest even by default).
template <class D, class N, class M>
D divide(N n, M m, const Vals& v) {
    using P = Part<D>;
    const Mode mode = v.mode == 0 ? Mode::TowardZero : v.mode == 2 ? Mode::HalfAway : Mode::NearestEven;
    if constexpr (PartOf<D>::parts == 2) {  // n conj(m) / |m|^2, each part rounded once
        const Wide den = W(m.re) * W(m.re) + W(m.im) * W(m.im);
        if (den.isZero()) return D{subst<P>(n.re), subst<P>(n.im)};
        return D{quotient<P>(W(n.re) * W(m.re) + W(n.im) * W(m.im), den, v.sf, mode),
                 quotient<P>(W(n.im) * W(m.re) - W(n.re) * W(m.im), den, v.sf, mode)};
    } else if constexpr (std::is_integral_v<P>) {
        return m == 0 ? subst<D>(D(n)) : quotient<D>(W(n), W(m), v.sf, mode);
    } else {
        return D(n / m);
    }
}

#define RULE(...) [](auto d, __VA_ARGS__, [[maybe_unused]] const Vals& v) -> decltype(d)
#define EACH(expr) parts<decltype(d)>([](auto x, auto y) { return expr; }, v, a, b)
const auto add = RULE(auto a, auto b) { return EACH(x + y); };
const auto sub = RULE(auto a, auto b) { return EACH(x - y); };
const auto rsub = RULE(auto a, auto b) { return EACH(y - x); };  // vector Sub: second minus first
const auto mul = RULE(auto a, auto b) {
    if constexpr (PartOf<decltype(a)>::parts == 2 && PartOf<decltype(b)>::parts == 2) {
        using P = Part<decltype(d)>;
        return {scaled<P>(W(a.re) * W(b.re) - W(a.im) * W(b.im), v.sf), scaled<P>(W(a.re) * W(b.im) + W(a.im) * W(b.re), v.sf)};
    } else {
        return EACH(x * y);
    }
};
const auto sqr = RULE(auto a) { return mul(d, a, a, v); };
const auto absOp = RULE(auto a) {  // integers saturate: |min| is max
    if constexpr (std::is_integral_v<decltype(a)>) return scaled<decltype(d)>(W(a).abs(), 0);
    else return std::fabs(a);
};
const auto addProduct = RULE(auto a, auto b) {
    using P = Part<decltype(d)>;
    if constexpr (std::is_integral_v<P>) return scaled<P>(W(d) + W(a) * W(b), v.sf);
    else return d + a * b;
};
const auto div = RULE(auto a, auto b) { return divide<decltype(d)>(b, a, v); };
const auto div16u = RULE(auto a, auto b) {  // below -31 every non-zero divisor gives the maximum
    return v.sf < -31 && a != 0 ? decltype(d)(65535) : divide<decltype(d)>(b, a, v);
};
const auto divc = RULE(auto a, auto c) {
    if constexpr (std::is_floating_point_v<decltype(c)>) return a * (1 / c);  // by the reciprocal, deliberately
    else return divide<decltype(d)>(a, c, v);
};
const auto divcRev = RULE(auto a, auto c) { return divide<decltype(d)>(c, a, v); };
const auto andOp = RULE(auto a, auto b) { return a & b; };
const auto orOp = RULE(auto a, auto b) { return a | b; };
const auto xorOp = RULE(auto a, auto b) { return a ^ b; };
const auto notOp = RULE(auto a) { return ~a; };
// Counts of the width and above give 0 (or the sign for arithmetic right shifts).
const auto lshift = RULE(auto a, int k) { return k >= int(8 * sizeof a) ? 0 : (unsigned long long)a << k; };
const auto rshift = RULE(auto a, int k) {
    constexpr int w = 8 * sizeof a;
    if constexpr (std::is_signed_v<decltype(a)>) return a >> (k >= w ? w - 1 : k);
    else return k >= w ? 0 : a >> k;
};
const auto copy = RULE(auto a) { return a; };
const auto setC = RULE(auto, auto c) { return c; };
const auto zero = RULE(auto) { return decltype(d){}; };
// A double constant times a 64-bit integer, exactly: c = m 2^(e-53) with an integer m.
const auto mul64f64s = RULE(auto x, double c) {
    if (std::isnan(c)) return 0;
    if (std::isinf(c)) return x == 0 ? 0 : (x < 0) != (c < 0) ? INT64_MIN : INT64_MAX;
    int e = 0;
    const double m = std::ldexp(std::frexp(c, &e), 53);
    const std::int64_t s = std::int64_t(v.sf) - (e - 53);
    return scaled<Zvp64s>(Wide::of(std::int64_t(m)) * W(x), int(std::clamp<std::int64_t>(s, -300, 300)));
};
// The product exact in double, times 2^-sf, to nearest even, saturated; NaN gives 0.
const auto mul32f16s = RULE(float x, float c) {
    const double p = double(x) * c;
    if (std::isnan(p)) return 0;
    if (std::isinf(p)) return p > 0 ? 32767 : -32768;
    int e = 0;
    const double m = std::ldexp(std::frexp(p, &e), 53);
    const long long s = (long long)v.sf - (e - 53);
    return scaled<Zvp16s>(Wide::of(std::int64_t(m)), int(std::clamp<long long>(s, -2000, 2000)));
};
// The single-precision product to the nearest integer, saturated; NaN gives 0.
const auto mulLow32f16s = RULE(float x, float c) {
    const float p = x * c;
    return std::isnan(p) ? 0 : Zvp16s(std::fmin(std::fmax(std::nearbyint(p), -32768.0f), 32767.0f));
};
// (x - sub) / div, sub the first constant and div the second: integers
// exactly, times 2^-sf, to nearest even and saturated; floats the difference
// rounded once, then the quotient rounded once.
const auto normalizeOp = RULE(auto a) {
    using X = decltype(a);
    using P = Part<X>;
    using Div = std::conditional_t<std::is_integral_v<P>, int, P>;
    const X s = constant<X>(v, 0);
    const Div q = constant<Div>(v, 1);
    const auto one = [&](P x, P c) -> P {
        if constexpr (std::is_integral_v<P>) return quotient<P>(W(x) - W(c), Wide::of(q), v.sf, Mode::NearestEven);
        else return P(x - c) / q;
    };
    if constexpr (PartOf<X>::parts == 2) return X{one(a.re, s.re), one(a.im, s.im)};
    else return one(a, s);
};
#undef EACH
#undef RULE

// The rows with an oracle, by name.
std::map<std::string, Oracle> oracles() {
    std::map<std::string, Oracle> o;
#define O(f, rule) o[#f] = ora(zvps##f, rule)
#define O2(b, rule) O(b, rule), O(b##_I, rule)
#define OS2(b, rule) O(b##_Sfs, rule), O(b##_ISfs, rule)
#define COPYO(t) O(Copy_##t, copy), O(Move_##t, copy), O(Set_##t, setC), O(Zero_##t, zero)
    COPYO(8u), COPYO(16s), COPYO(16sc), COPYO(32s), COPYO(32sc), COPYO(32f), COPYO(32fc), COPYO(64s), COPYO(64sc),
        COPYO(64f), COPYO(64fc);
#define ADDSUB(t) OS2(Add_##t, add), OS2(AddC_##t, add), OS2(Sub_##t, rsub), OS2(SubC_##t, sub), OS2(SubCRev_##t, rsub)
    ADDSUB(8u), ADDSUB(16s), ADDSUB(16u), ADDSUB(16sc), ADDSUB(32s), ADDSUB(32sc);
    OS2(Add_64s, add), OS2(AddC_64s, add), OS2(AddC_64u, add), O2(Add_16s, add), O2(Add_16u, add), O2(Add_32u, add);
    O(Add_8u16u, add), O(Add_16s32f, add), O(Add_16s32s_I, add), O(AddC_16s_I, add), O(SubC_16s_I, sub);
    O2(Sub_16s, rsub), O(Sub_16s32f, rsub);
#define ADDSUBF(t) O2(Add_##t, add), O2(AddC_##t, add), O2(Sub_##t, rsub), O2(SubC_##t, sub), O2(SubCRev_##t, rsub)
    ADDSUBF(32f), ADDSUBF(64f), ADDSUBF(32fc), ADDSUBF(64fc);
    OS2(Mul_8u, mul), O(Mul_8u16u, mul), O2(Mul_16s, mul), OS2(Mul_16s, mul), O(Mul_16s32f, mul), O(Mul_16s32s_Sfs, mul),
        OS2(Mul_16u, mul), OS2(Mul_16u16s, mul), OS2(Mul_16sc, mul), OS2(Mul_32s, mul), O(Mul_Low_32s_Sfs, mul),
        OS2(Mul_32s32sc, mul), OS2(Mul_32sc, mul), O2(Mul_32f, mul), O2(Mul_32f32fc, mul), O2(Mul_64f, mul);
    OS2(MulC_8u, mul), O(MulC_16s_I, mul), OS2(MulC_16s, mul), OS2(MulC_16u, mul), OS2(MulC_16sc, mul),
        OS2(MulC_32s, mul), OS2(MulC_32sc, mul), O(MulC_64s_ISfs, mul), O2(MulC_32f, mul), O2(MulC_64f, mul);
    O(MulC_64f64s_ISfs, mul64f64s), O(MulC_32f16s_Sfs, mul32f16s), O(MulC_Low_32f16s, mulLow32f16s);
    OS2(Div_8u, div), OS2(Div_16s, div), OS2(Div_16u, div16u), OS2(Div_16sc, div), OS2(Div_32s, div),
        OS2(Div_32s16s, div), O2(Div_32f, div), O2(Div_64f, div);
    OS2(DivC_8u, divc), OS2(DivC_16s, divc), OS2(DivC_16u, divc), OS2(DivC_16sc, divc), O(DivC_64s_ISfs, divc),
        O2(DivC_32f, divc), O2(DivC_64f, divc), O2(DivCRev_16u, divcRev), O2(DivCRev_32f, divcRev);
    O(Div_Round_8u_Sfs, div), O(Div_Round_16s_Sfs, div), O(Div_Round_16u_Sfs, div);
    O(AddProduct_16s_Sfs, addProduct), O(AddProduct_16s32s_Sfs, addProduct), O(AddProduct_32s_Sfs, addProduct),
        O(AddProduct_32f, addProduct), O(AddProduct_64f, addProduct), O(AddProductC_32f, addProduct);
    O(Normalize_16s_Sfs, normalizeOp), O(Normalize_16sc_Sfs, normalizeOp), O(Normalize_32f, normalizeOp),
        O(Normalize_32fc, normalizeOp), O(Normalize_64f, normalizeOp), O(Normalize_64fc, normalizeOp);
    O2(Abs_16s, absOp), O2(Abs_32s, absOp), O2(Abs_32f, absOp), O2(Abs_64f, absOp);
    OS2(Sqr_8u, sqr), OS2(Sqr_16s, sqr), OS2(Sqr_16u, sqr), OS2(Sqr_16sc, sqr), O2(Sqr_32f, sqr), O2(Sqr_64f, sqr);
#define LOGIC(t) O2(And_##t, andOp), O2(Or_##t, orOp), O2(Xor_##t, xorOp), O2(AndC_##t, andOp), O2(OrC_##t, orOp), \
                 O2(XorC_##t, xorOp), O2(Not_##t, notOp)
    LOGIC(8u), LOGIC(16u), LOGIC(32u);
#define SHIFTS(t) O2(LShiftC_##t, lshift), O2(RShiftC_##t, rshift)
    SHIFTS(8u), SHIFTS(16s), SHIFTS(16u), SHIFTS(32s);
    return o;
}

std::vector<Row> buildTable() {
    std::vector<std::vector<Row>> fams = {
        family("copy", {COPY(8u), COPY(16s), COPY(16sc, kLong), COPY(32s), COPY(32sc), COPY(32f), COPY(32fc), COPY(64s),
                        COPY(64sc), COPY(64f), COPY(64fc),
                        UN2(Flip_8u, kWhole), UN2(Flip_16u, kWhole), UN2(Flip_32f, kWhole),
                        UN2(Flip_32fc, kWhole), UN2(Flip_64f, kWhole), UN2(Flip_64fc, kWhole)}),
        family("addsub",
               {VVS2(Add_8u), VV2(Add_16s), VVS2(Add_16s), VV2(Add_16u), VVS2(Add_16u),
                VVS2(Add_16sc, kLenFirst | kLongForward), VVS2(Add_32s), VVS2(Add_32sc, kLenFirst),
                VV2(Add_32u), VVS2(Add_64s), VV2(Add_32f), VV2(Add_32fc), VV2(Add_64f), VV2(Add_64fc), VV(Add_8u16u),
                VV(Add_16s32f), VVI(Add_16s32s_I),
                VCS2(AddC_8u), VCI(AddC_16s_I), VCS2(AddC_16s), VCS2(AddC_16sc), VCS2(AddC_16u),
                VCS2(AddC_32s), VCS2(AddC_32sc, kLongForward), VCS2(AddC_64s), VCS2(AddC_64u), VC2(AddC_32f),
                VC2(AddC_32fc), VC2(AddC_64f), VC2(AddC_64fc),
                VVS2(Sub_8u), VV2(Sub_16s), VVS2(Sub_16s), VVS2(Sub_16u), VVS2(Sub_16sc, kLenFirst),
                VVS2(Sub_32s), VVS2(Sub_32sc, kLenFirst | kLongForward), VV2(Sub_32f), VV2(Sub_32fc), VV2(Sub_64f),
                VV2(Sub_64fc), VV(Sub_16s32f),
                VCS2(SubC_8u), VCI(SubC_16s_I), VCS2(SubC_16s), VCS2(SubC_16sc), VCS2(SubC_16u),
                VCS2(SubC_32s), VCS2(SubC_32sc), VC2(SubC_32f), VC2(SubC_32fc), VC2(SubC_64f),
                VC2(SubC_64fc),
                VCS2(SubCRev_8u), VCS2(SubCRev_16s), VCS2(SubCRev_16sc, kLongForward), VCS2(SubCRev_16u),
                VCS2(SubCRev_32s), VCS2(SubCRev_32sc), VC2(SubCRev_32f), VC2(SubCRev_32fc),
                VC2(SubCRev_64f), VC2(SubCRev_64fc)}),
        family("muldiv",
               {VVS2(Mul_8u), VV(Mul_8u16u), VV2(Mul_16s), VVS2(Mul_16s), VV(Mul_16s32f), VV(Mul_16s32s_Sfs),
                VVS2(Mul_16u), VVS2(Mul_16u16s), VVS2(Mul_16sc, kLong), VVS2(Mul_32s), VV(Mul_Low_32s_Sfs), VVS2(Mul_32s32sc, kLong),
                VVS2(Mul_32sc), VV2(Mul_32f), VV2(Mul_32f32fc, kLong), VV2(Mul_32fc, kLong), VV2(Mul_64f), VV2(Mul_64fc, kLong),
                VCS2(MulC_8u), VCI(MulC_16s_I), VCS2(MulC_16s), VCS2(MulC_16u), VCS2(MulC_16sc, kLong), VCS2(MulC_32s),
                VCS2(MulC_32sc), VCI(MulC_64s_ISfs), VCI(MulC_64f64s_ISfs), VC2(MulC_32f), VC(MulC_32f16s_Sfs),
                VC(MulC_Low_32f16s), VC2(MulC_32fc), VC2(MulC_64f), VC(MulC_64fc).with(kLong), VCI(MulC_64fc_I),
                VVS2(Div_8u), VVS2(Div_16s), VVS2(Div_16u), VVS2(Div_16sc), VVS2(Div_32s), VVS2(Div_32s16s), VV2(Div_32f),
                VV(Div_32fc).with(kLong), VVI(Div_32fc_I), VV2(Div_64f), VV(Div_64fc).with(kLong), VVI(Div_64fc_I),
                DIVC(DivC_8u_Sfs, VC), DIVC(DivC_8u_ISfs, VCI), DIVC(DivC_16s_Sfs, VC), DIVC(DivC_16s_ISfs, VCI),
                DIVC(DivC_16u_Sfs, VC), DIVC(DivC_16u_ISfs, VCI), DIVC(DivC_16sc_Sfs, VC), DIVC(DivC_16sc_ISfs, VCI),
                DIVC(DivC_64s_ISfs, VCI), DIVC(DivC_32f, VC), DIVC(DivC_32f_I, VCI), DIVC(DivC_32fc, VC),
                DIVC(DivC_32fc_I, VCI), DIVC(DivC_64f, VC), DIVC(DivC_64f_I, VCI), DIVC(DivC_64fc, VC).with(kLong),
                DIVC(DivC_64fc_I, VCI), VC2(DivCRev_16u), VC2(DivCRev_32f),
                DIVROUND(8u), DIVROUND(16s), DIVROUND(16u),
                ACC(AddProduct_16s_Sfs), ACC(AddProduct_16s32s_Sfs), ACC(AddProduct_32s_Sfs), ACC(AddProduct_32f),
                ACC(AddProduct_32fc), ACC(AddProduct_64f), ACC(AddProduct_64fc), vc("AddProductC_32f", zvpsAddProductC_32f, true)}),
        family("powers",
               {UN2(Abs_16s), UN2(Abs_32s), UN2(Abs_32f), UN2(Abs_64f), UNS2(Sqr_8u), UNS2(Sqr_16s), UNS2(Sqr_16u),
                UNS2(Sqr_16sc, kLong), UN2(Sqr_32f), UN2(Sqr_32fc), UN2(Sqr_64f), UN2(Sqr_64fc),
                UNS2(Sqrt_8u), UNS2(Sqrt_16s), UNS2(Sqrt_16u), UNS2(Sqrt_16sc), UN(Sqrt_32s16s_Sfs), UN(Sqrt_64s16s_Sfs),
                UNS2(Sqrt_64s), UN2(Sqrt_32f), UN2(Sqrt_32fc), UN2(Sqrt_64f), UN2(Sqrt_64fc), UN(Cubrt_32f),
                UN(Cubrt_32s16s_Sfs), UNS2(Exp_16s), UNS2(Exp_32s), UNS2(Exp_64s), UN2(Exp_32f), UN2(Exp_64f),
                UN(Exp_32f64f), UNS2(Ln_16s), UNS2(Ln_32s), UN(Ln_32s16s_Sfs), UN2(Ln_32f), UN2(Ln_64f), UN(Ln_64f32f),
                UNS2(10Log10_32s), sum("SumLn_32f", zvpsSumLn_32f), sum("SumLn_64f", zvpsSumLn_64f),
                sum("SumLn_32f64f", zvpsSumLn_32f64f), sum("SumLn_16s32f", zvpsSumLn_16s32f), UN2(Arctan_32f),
                UN2(Arctan_64f), NORM(Normalize_16s_Sfs), NORM(Normalize_16sc_Sfs), NORM(Normalize_32f),
                NORM(Normalize_32fc), NORM(Normalize_64f), NORM(Normalize_64fc),
                unIc("Cauchy_32f_I", zvpsCauchy_32f_I).refuse([](const Vals& v) {
                    return constant<float>(v, 0) > 0 ? zvpStsNoErr : zvpStsCauchyParamErr;
                })}),
        family("logic",
               {VV2(And_8u), VV2(Or_8u), VV2(Xor_8u), VC2(AndC_8u), VC2(OrC_8u), VC2(XorC_8u), UN2(Not_8u),
                VV2(And_16u), VV2(Or_16u), VV2(Xor_16u), VC2(AndC_16u), VC2(OrC_16u), VC2(XorC_16u), UN2(Not_16u),
                VV2(And_32u), VV2(Or_32u), VV2(Xor_32u), VC2(AndC_32u), VC2(OrC_32u), VC2(XorC_32u), UN2(Not_32u),
                SHIFT(LShiftC, 8u, 8), SHIFT(LShiftC, 16s, 16), SHIFT(LShiftC, 16u, 16), SHIFT(LShiftC, 32s, 32),
                SHIFT(RShiftC, 8u, 8), SHIFT(RShiftC, 16s, 16), SHIFT(RShiftC, 16u, 16), SHIFT(RShiftC, 32s, 32)}),
        family("packed",
               {UN2(ConjPack_32fc, kWhole), UN2(ConjPack_64fc, kWhole), UN2(ConjPack_16sc, kWhole),
                UN2(ConjPerm_32fc, kWhole), UN2(ConjPerm_64fc, kWhole), UN2(ConjPerm_16sc, kWhole),
                UN2(ConjCcs_32fc, kWhole), UN2(ConjCcs_64fc, kWhole), UN2(ConjCcs_16sc, kWhole),
                VV2(MulPack_32f, kWhole), VV2(MulPack_64f, kWhole), VVS2(MulPack_16s, kWhole),
                VV2(MulPerm_32f, kWhole), VV2(MulPerm_64f, kWhole), VVS2(MulPerm_16s, kWhole),
                VVI(MulPackConj_32f_I).with(kWhole), VVI(MulPackConj_64f_I).with(kWhole)}),
    };
    std::vector<Row> all;
    for (auto& f : fams)
        for (auto& r : f) all.push_back(std::move(r));
    for (const ShapeFamily& f : shapeFamilies())
        for (Row& r : f.rows()) {
            r.family = f.name;
            all.push_back(std::move(r));
        }
    return all;
}

const std::vector<Row>& table() {
    static const std::vector<Row> rows = [] {
        std::vector<Row> r = buildTable();
        pairTwins(r);
        auto o = oracles();
        for (Row& x : r)
            if (auto it = o.find(x.name); it != o.end()) x.oracle = it->second, o.erase(it);
        EXPECT_TRUE(o.empty()) << o.begin()->first << " is not a row";
        return r;
    }();
    return rows;
}

const char* const kFamilies[] = {"copy", "addsub", "muldiv", "powers", "logic", "packed"};

std::vector<std::string> familyNames() {
    std::vector<std::string> v(std::begin(kFamilies), std::end(kFamilies));
    for (const ShapeFamily& f : shapeFamilies()) v.push_back(f.name);
    return v;
}

TEST(ShapeTable, CoversEveryElementWiseExportOnce) {
    std::map<std::string, int> seen;
    int rows = 0, twins = 0;
    for (const Row& r : table()) {
        EXPECT_EQ(++seen[r.name], 1) << r.name;
        if (std::find(std::begin(kFamilies), std::end(kFamilies), r.family) != std::end(kFamilies))
            ++rows, twins += r.twin != nullptr;
    }
    EXPECT_EQ(rows, 462);
    EXPECT_EQ(twins, 181);  // every in-place form with an out-of-place twin of the same types
}

class Shapes : public ::testing::TestWithParam<std::string> {
protected:
    template <class F>
    void forEach(F check) {
        int n = 0;
        // ZVP_SHAPES_ROW=name limits the checks to the rows of that name.
        const char* only = std::getenv("ZVP_SHAPES_ROW");
        for (const Row& r : table())
            if (r.family == GetParam() && (!only || r.name == only)) {
                SCOPED_TRACE(r.name);
                check(r);
                ++n;
            }
        EXPECT_TRUE(n > 0 || only);
    }
};

TEST_P(Shapes, ErrorsInOrderAndNothingWritten) { forEach(checkErrors); }
TEST_P(Shapes, InPlaceEqualsOutOfPlace) {
    forEach([](const Row& r) {
        if (r.twin) checkTwins(r);
    });
}
TEST_P(Shapes, VectorEqualsScalarAtMisalignedPointers) {
    forEach([](const Row& r) {
        if (!(r.flags & kWhole)) checkSingles(r);
    });
}
TEST_P(Shapes, IntegerResultsIgnoreCallerRoundingAndFlushModes) { forEach(checkRounding); }
TEST_P(Shapes, LongLengthsProcessedToTheEnd) {
    forEach([](const Row& r) {
        if (r.flags & (kLong | kLongForward)) checkLong(r);
    });
}

TEST_P(Shapes, ResultsMatchTheOracle) {
    forEach([](const Row& r) {
        if (r.oracle) checkOracle(r);
    });
}

// The families registered from other files are known by the time the
// generator runs (after static initialisation).
INSTANTIATE_TEST_SUITE_P(Families, Shapes, ::testing::ValuesIn(familyNames()),
                         [](const auto& info) { return info.param; });

}  // namespace
