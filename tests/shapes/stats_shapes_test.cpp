// Shape rows of the sums, means and deviations: each reduces a vector to
// one value (two for MeanStdDev); float forms with a hint sweep it through
// the row's mode values.
#include "shapes.h"

namespace {

using namespace zvp::test;

template <class X>
X extra(const Vals& v) {
    if constexpr (std::is_same_v<X, ZvpHintAlgorithm>) return X(v.mode);
    else return X(v.sf);
}

// Source, length, result(s), then a hint or a scale factor.
template <class A, class D, class... X>
Row red(const char* n, ZvpStatus (*f)(const A*, int, D*, X...)) {
    Row r = row(n, {in<A>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(static_cast<const A*>(p[0]), len, static_cast<D*>(p[1]), extra<X>(v)...);
    }, (std::is_same_v<X, int> || ...));
    r.mode = (std::is_same_v<X, ZvpHintAlgorithm> || ...);
    r.args[1].single = true;
    return r.with(kWhole);
}
template <class A, class D, class... X>
Row red(const char* n, ZvpStatus (*f)(const A*, int, D*, D*, X...)) {
    Row r = row(n, {in<A>(), out<D>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(static_cast<const A*>(p[0]), len, static_cast<D*>(p[1]), static_cast<D*>(p[2]), extra<X>(v)...);
    }, sizeof...(X) > 0);
    r.args[1].single = r.args[2].single = true;
    return r.with(kWhole);
}

#define R(f) red(#f, zvps##f)
const bool registered = addShapeFamily("stats", [] {
    return std::vector<Row>{
        R(Sum_32f), R(Sum_32fc), R(Sum_64f), R(Sum_64fc), R(Sum_16s_Sfs), R(Sum_16sc_Sfs), R(Sum_16s32s_Sfs),
        R(Sum_16sc32sc_Sfs), R(Sum_32s_Sfs), R(Mean_32f), R(Mean_32fc), R(Mean_64f), R(Mean_64fc),
        R(Mean_16s_Sfs), R(Mean_16sc_Sfs), R(Mean_32s_Sfs), R(StdDev_32f), R(StdDev_64f), R(StdDev_16s_Sfs),
        R(StdDev_16s32s_Sfs), R(MeanStdDev_32f), R(MeanStdDev_64f), R(MeanStdDev_16s_Sfs),
        R(MeanStdDev_16s32s_Sfs)};
});
#undef R

}  // namespace
