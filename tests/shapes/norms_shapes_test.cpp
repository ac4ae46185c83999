// Shape rows of the norms and dot products: each reduces one or two
// vectors to one value.
#include "shapes.h"

namespace {

using namespace zvp::test;

template <class A, class D, class... S>
Row red(const char* n, ZvpStatus (*f)(const A*, int, D*, S...)) {
    Row r = row(n, {in<A>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(static_cast<const A*>(p[0]), len, static_cast<D*>(p[1]), S(v.sf)...);
    }, sizeof...(S) > 0);
    r.args[1].single = true;
    return r.with(kWhole);
}
template <class A, class B, class D, class... S>
Row red(const char* n, ZvpStatus (*f)(const A*, const B*, int, D*, S...)) {
    Row r = row(n, {in<A>(), in<B>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(static_cast<const A*>(p[0]), static_cast<const B*>(p[1]), len, static_cast<D*>(p[2]), S(v.sf)...);
    }, sizeof...(S) > 0);
    r.args[2].single = true;
    return r.with(kWhole);
}

#define N(k) red("Norm_" #k, zvpsNorm_##k), red("NormDiff_" #k, zvpsNormDiff_##k)
#define D(k) red("DotProd_" #k, zvpsDotProd_##k)
const bool registered = addShapeFamily("norms", [] {
    return std::vector<Row>{
        N(Inf_16s32f), N(Inf_16s32s_Sfs), N(Inf_32f), N(Inf_64f), N(Inf_32fc32f), N(Inf_64fc64f), N(L1_16s32f),
        N(L1_16s32s_Sfs), N(L1_16s64s_Sfs), N(L1_32f), N(L1_64f), N(L1_32fc64f), N(L1_64fc64f), N(L2_16s32f),
        N(L2_16s32s_Sfs), N(L2_32f), N(L2_64f), N(L2_32fc64f), N(L2_64fc64f), N(L2Sqr_16s64s_Sfs),
        D(32f), D(64f), D(32fc), D(64fc), D(32f64f), D(32fc64fc), D(32f32fc), D(32f32fc64fc), D(64f64fc),
        D(16s32f), D(16sc32fc), D(16s16sc32fc), D(16s64s), D(16sc64sc), D(16s16sc64sc), D(16s_Sfs), D(16sc_Sfs),
        D(16s16sc_Sfs), D(16s32s_Sfs), D(16sc32sc_Sfs), D(16s16sc32sc_Sfs), D(16s32s32s_Sfs), D(32s_Sfs),
        D(32sc_Sfs), D(32s32sc_Sfs)};
});
#undef N
#undef D

}  // namespace
