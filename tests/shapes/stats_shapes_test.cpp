// Shape rows of the sums, means and deviations ("stats") and of the norms
// and dot products ("norms"): each reduces one or two vectors to one value
// (two for MeanStdDev); forms with a hint sweep it through the row's mode
// values.
#include "shapes.h"

namespace {

using namespace zvp::test;

template <class X>
X extra(const Vals& v) {
    if constexpr (std::is_same_v<X, ZvpHintAlgorithm>) return X(v.mode);
    else return X(v.sf);
}
Row reduction(Row r, bool hint) {
    r.mode = hint;
    for (Arg& a : r.args) a.single = a.role == Role::Out;
    return r.with(kWhole);
}
#define ZVP_P(k, T) static_cast<T*>(p[k])
#define ZVP_HINT (std::is_same_v<X, ZvpHintAlgorithm> || ...)
#define ZVP_SF (std::is_same_v<X, int> || ...)
// Source, length, result(s), then a hint or a scale factor.
template <class A, class D, class... X>
Row red(const char* n, ZvpStatus (*f)(const A*, int, D*, X...)) {
    return reduction(row(n, {in<A>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(ZVP_P(0, const A), len, ZVP_P(1, D), extra<X>(v)...);
    }, ZVP_SF), ZVP_HINT);
}
template <class A, class D, class... X>
Row red(const char* n, ZvpStatus (*f)(const A*, int, D*, D*, X...)) {
    return reduction(row(n, {in<A>(), out<D>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(ZVP_P(0, const A), len, ZVP_P(1, D), ZVP_P(2, D), extra<X>(v)...);
    }, ZVP_SF), false);
}
// Two sources, length, result, then a scale factor.
template <class A, class B, class D, class... X>
Row red(const char* n, ZvpStatus (*f)(const A*, const B*, int, D*, X...)) {
    return reduction(row(n, {in<A>(), in<B>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(ZVP_P(0, const A), ZVP_P(1, const B), len, ZVP_P(2, D), extra<X>(v)...);
    }, ZVP_SF), false);
}
#undef ZVP_P

#define R(f) red(#f, zvps##f)
#define N(k) R(Norm_##k), R(NormDiff_##k)
const bool registered = addShapeFamily("stats", [] {
    return std::vector<Row>{
        R(Sum_32f), R(Sum_32fc), R(Sum_64f), R(Sum_64fc), R(Sum_16s_Sfs), R(Sum_16sc_Sfs), R(Sum_16s32s_Sfs),
        R(Sum_16sc32sc_Sfs), R(Sum_32s_Sfs), R(Mean_32f), R(Mean_32fc), R(Mean_64f), R(Mean_64fc),
        R(Mean_16s_Sfs), R(Mean_16sc_Sfs), R(Mean_32s_Sfs), R(StdDev_32f), R(StdDev_64f), R(StdDev_16s_Sfs),
        R(StdDev_16s32s_Sfs), R(MeanStdDev_32f), R(MeanStdDev_64f), R(MeanStdDev_16s_Sfs),
        R(MeanStdDev_16s32s_Sfs)};
}) && addShapeFamily("norms", [] {
    return std::vector<Row>{
        N(Inf_16s32f), N(Inf_16s32s_Sfs), N(Inf_32f), N(Inf_64f), N(Inf_32fc32f), N(Inf_64fc64f), N(L1_16s32f),
        N(L1_16s32s_Sfs), N(L1_16s64s_Sfs), N(L1_32f), N(L1_64f), N(L1_32fc64f), N(L1_64fc64f), N(L2_16s32f),
        N(L2_16s32s_Sfs), N(L2_32f), N(L2_64f), N(L2_32fc64f), N(L2_64fc64f), N(L2Sqr_16s64s_Sfs),
        R(DotProd_32f), R(DotProd_64f), R(DotProd_32fc), R(DotProd_64fc), R(DotProd_32f64f), R(DotProd_32fc64fc),
        R(DotProd_32f32fc), R(DotProd_32f32fc64fc), R(DotProd_64f64fc), R(DotProd_16s32f), R(DotProd_16sc32fc),
        R(DotProd_16s16sc32fc), R(DotProd_16s64s), R(DotProd_16sc64sc), R(DotProd_16s16sc64sc), R(DotProd_16s_Sfs),
        R(DotProd_16sc_Sfs), R(DotProd_16s16sc_Sfs), R(DotProd_16s32s_Sfs), R(DotProd_16sc32sc_Sfs),
        R(DotProd_16s16sc32sc_Sfs), R(DotProd_16s32s32s_Sfs), R(DotProd_32s_Sfs), R(DotProd_32sc_Sfs),
        R(DotProd_32s32sc_Sfs)};
});
#undef R
#undef N

}  // namespace
