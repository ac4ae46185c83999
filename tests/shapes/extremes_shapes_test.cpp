// Shape rows of the minimum and maximum search. A search writes single
// values (value, index) and is checked as a whole; MaxEvery and MinEvery are
// element-wise rows with in-place twins and an oracle.
#include "shapes.h"

#include <utility>

namespace {

using namespace zvp::test;
// A search: the source, the length, then single results of any types;
// `optional` names a result that may be null.
template <class T, class... O, std::size_t... I>
Row whole(const char* n, ZvpStatus (*f)(const T*, int, O*...), int optional, std::index_sequence<I...>) {
    Row r = row(n, {in<T>(), out<O>()...}, [f](void* const* p, int len, const Vals&) {
        return f(static_cast<const T*>(p[0]), len, static_cast<O*>(p[I + 1])...);
    });
    for (std::size_t k = 1; k < r.args.size(); ++k) r.args[k].single = true;
    if (optional > 0) r.args[std::size_t(optional)].optional = true;
    return r.with(kWhole);
}
template <class T, class... O>
Row whole(const char* n, ZvpStatus (*f)(const T*, int, O*...), int optional = 0) {
    return whole(n, f, optional, std::index_sequence_for<O...>{});
}
Row countInRange() {
    Row r = row("CountInRange_32s", {in<Zvp32s>(), out<int>()}, [](void* const* p, int len, const Vals& v) {
        return zvpsCountInRange_32s(static_cast<const Zvp32s*>(p[0]), len, static_cast<int*>(p[1]),
                                    constant<Zvp32s>(v, 0), constant<Zvp32s>(v, 1));
    });
    r.consts = {typeOf<Zvp32s>(), typeOf<Zvp32s>()};
    r.args[1].single = true;
    return r.with(kWhole);
}

// pDst = pSrc1 where it is strictly beyond pSrc2 or pSrc2 is a NaN, else pSrc2.
template <bool kMax>
auto every() {
    return [](auto, auto a, auto b, const Vals&) { return b != b || (kMax ? a > b : a < b) ? a : b; };
}

#define SUM(f) whole(#f, zvps##f)
#define INDX(f, opt) whole(#f, zvps##f, opt)
#define MINMAX(t) SUM(MinMax_##t), SUM(MinMaxIndx_##t)
#define SEARCH(op, t) SUM(op##_##t), INDX(op##Indx_##t, 2)
#define EVERY(op, kMax, t) vv(#op "Every_" #t, zvps##op##Every_##t).withOracle(ora(zvps##op##Every_##t, every<kMax>()))
#define EVERY_I(op, kMax, t) vvI(#op "Every_" #t "_I", zvps##op##Every_##t##_I).withOracle(ora(zvps##op##Every_##t##_I, every<kMax>()))
#define ORDER(t) SUM(MaxOrder_##t).with(kLenFirst)

const bool registered = addShapeFamily("extremes", [] {
    return std::vector<Row>{
        SEARCH(Max, 16s), SEARCH(Max, 32s), SEARCH(Max, 32f), SEARCH(Max, 64f),
        SEARCH(Min, 16s), SEARCH(Min, 32s), SEARCH(Min, 32f), SEARCH(Min, 64f),
        SEARCH(MaxAbs, 16s), SEARCH(MaxAbs, 32s), SUM(MinAbs_16s), SUM(MinAbs_32s),
        SUM(MinAbsIndx_16s), SUM(MinAbsIndx_32s),
        MINMAX(8u), MINMAX(16u), MINMAX(16s), MINMAX(32u), MINMAX(32s), MINMAX(32f), MINMAX(64f),
        EVERY(Max, true, 8u), EVERY(Max, true, 16u), EVERY(Max, true, 32f), EVERY(Max, true, 64f),
        EVERY(Min, false, 8u), EVERY(Min, false, 16u), EVERY(Min, false, 32f),
        EVERY(Min, false, 64f).with(kUnsignedLen),
        EVERY_I(Max, true, 8u), EVERY_I(Max, true, 16u), EVERY_I(Max, true, 16s), EVERY_I(Max, true, 32s),
        EVERY_I(Max, true, 32f), EVERY_I(Max, true, 64f), EVERY_I(Min, false, 8u), EVERY_I(Min, false, 16u),
        EVERY_I(Min, false, 16s), EVERY_I(Min, false, 32s), EVERY_I(Min, false, 32f), EVERY_I(Min, false, 64f),
        ORDER(16s), ORDER(32s), ORDER(32f), ORDER(64f),
        countInRange(), SUM(ZeroCrossing_16s32f), SUM(ZeroCrossing_32f)};
});

}  // namespace
