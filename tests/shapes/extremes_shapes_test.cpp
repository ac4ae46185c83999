// Shape rows of the minimum and maximum search. A search writes single
// values (value, index) and is checked as a whole; MaxEvery and MinEvery are
// element-wise rows with in-place twins and an oracle.
#include "shapes.h"

namespace {

using namespace zvp::test;
#define ZVP_P(k, T) static_cast<T*>(p[k])

// Marks every result single and the row whole; `optional` names a result
// that may be null.
Row whole(Row r, int optional = -1) {
    for (std::size_t k = 1; k < r.args.size(); ++k) r.args[k].single = true;
    if (optional >= 0) r.args[std::size_t(optional)].optional = true;
    return r.with(kWhole);
}
template <class T>
Row indx(const char* n, ZvpStatus (*f)(const T*, int, T*, int*), bool optionalIndex) {
    return whole(row(n, {in<T>(), out<T>(), out<int>()},
                     [f](void* const* p, int len, const Vals&) { return f(ZVP_P(0, const T), len, ZVP_P(1, T), ZVP_P(2, int)); }),
                 optionalIndex ? 2 : -1);
}
template <class T>
Row minMax(const char* n, ZvpStatus (*f)(const T*, int, T*, T*)) {
    return whole(row(n, {in<T>(), out<T>(), out<T>()},
                     [f](void* const* p, int len, const Vals&) { return f(ZVP_P(0, const T), len, ZVP_P(1, T), ZVP_P(2, T)); }));
}
template <class T>
Row minMaxIndx(const char* n, ZvpStatus (*f)(const T*, int, T*, int*, T*, int*)) {
    return whole(row(n, {in<T>(), out<T>(), out<int>(), out<T>(), out<int>()}, [f](void* const* p, int len, const Vals&) {
        return f(ZVP_P(0, const T), len, ZVP_P(1, T), ZVP_P(2, int), ZVP_P(3, T), ZVP_P(4, int));
    }));
}
Row countInRange() {
    Row r = row("CountInRange_32s", {in<Zvp32s>(), out<int>()}, [](void* const* p, int len, const Vals& v) {
        return zvpsCountInRange_32s(ZVP_P(0, const Zvp32s), len, ZVP_P(1, int), constant<Zvp32s>(v, 0), constant<Zvp32s>(v, 1));
    });
    r.consts = {typeOf<Zvp32s>(), typeOf<Zvp32s>()};
    return whole(r);
}
#undef ZVP_P

// pDst = pSrc1 where it is strictly beyond pSrc2 or pSrc2 is a NaN, else pSrc2.
template <bool kMax>
auto every() {
    return [](auto, auto a, auto b, const Vals&) { return b != b || (kMax ? a > b : a < b) ? a : b; };
}

#define SUM(f) whole(sum(#f, zvps##f))
#define INDX(f, opt) indx(#f, zvps##f, opt)
#define MINMAX(t) minMax("MinMax_" #t, zvpsMinMax_##t), minMaxIndx("MinMaxIndx_" #t, zvpsMinMaxIndx_##t)
#define SEARCH(op, t) SUM(op##_##t), INDX(op##Indx_##t, true)
#define EVERY(op, kMax, t) vv(#op "Every_" #t, zvps##op##Every_##t).withOracle(ora(zvps##op##Every_##t, every<kMax>()))
#define EVERY_I(op, kMax, t) vvI(#op "Every_" #t "_I", zvps##op##Every_##t##_I).withOracle(ora(zvps##op##Every_##t##_I, every<kMax>()))
#define ORDER(t) SUM(MaxOrder_##t).with(kLenFirst)

const bool registered = addShapeFamily("extremes", [] {
    return std::vector<Row>{
        SEARCH(Max, 16s), SEARCH(Max, 32s), SEARCH(Max, 32f), SEARCH(Max, 64f),
        SEARCH(Min, 16s), SEARCH(Min, 32s), SEARCH(Min, 32f), SEARCH(Min, 64f),
        SEARCH(MaxAbs, 16s), SEARCH(MaxAbs, 32s), SUM(MinAbs_16s), SUM(MinAbs_32s),
        INDX(MinAbsIndx_16s, false), INDX(MinAbsIndx_32s, false),
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
