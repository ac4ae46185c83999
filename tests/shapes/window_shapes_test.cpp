// Window rows of the shape table: whole-vector rows (every element depends on
// the length) with their minimum lengths. Values are checked against closed
// forms in tests/signal/window_test.cpp.
#include <cmath>

#include "shapes.h"

namespace {

using namespace zvp::test;

// Source, destination, length, then a parameter (alpha) or none.
template <class T, class... A>
Row win(const char* n, ZvpStatus (*f)(const T*, T*, int, A...), int minLen) {
    Row r = row(n, {in<T>(), out<T>()}, [f](void* const* p, int len, const Vals& v) {
        return f(static_cast<const T*>(p[0]), static_cast<T*>(p[1]), len, constant<A>(v, 0)...);
    });
    r.consts = {typeOf<A>()...};
    return r.with(kWhole).minLength(minLen);
}
template <class T, class... A>
Row win(const char* n, ZvpStatus (*f)(T*, int, A...), int minLen) {
    Row r = row(n, {io<T>()}, [f](void* const* p, int len, const Vals& v) {
        return f(static_cast<T*>(p[0]), len, constant<A>(v, 0)...);
    });
    r.consts = {typeOf<A>()...};
    return r.with(kWhole).minLength(minLen);
}
template <class A>
Rule finiteAlpha() {
    return [](const Vals& v) { return std::isfinite(double(constant<A>(v, 0))) ? zvpStsNoErr : zvpStsBadArgErr; };
}

#define WIN2(fam, t, m) win("Win" #fam "_" #t, zvpsWin##fam##_##t, m), win("Win" #fam "_" #t "_I", zvpsWin##fam##_##t##_I, m)
#define WIN_TYPES(fam, m) WIN2(fam, 16s, m), WIN2(fam, 16sc, m), WIN2(fam, 32f, m), WIN2(fam, 32fc, m), \
                          WIN2(fam, 64f, m), WIN2(fam, 64fc, m)

const bool registered = addShapeFamily("window", [] {
    std::vector<Row> rows = {WIN_TYPES(Bartlett, 3), WIN_TYPES(Hann, 3), WIN_TYPES(Hamming, 3),
                             WIN_TYPES(Blackman, 3), WIN_TYPES(BlackmanStd, 3), WIN2(BlackmanQ15, 16s, 3),
                             WIN2(BlackmanQ15, 16sc, 3), WIN2(KaiserQ15, 16s, 1), WIN2(KaiserQ15, 16sc, 1)};
    for (Row r : {WIN_TYPES(BlackmanOpt, 4)}) rows.push_back(r.with(kLenFirst));
    for (Row r : {WIN2(Kaiser, 16s, 1), WIN2(Kaiser, 16sc, 1), WIN2(Kaiser, 32f, 1), WIN2(Kaiser, 32fc, 1)})
        rows.push_back(r.refuse(finiteAlpha<Zvp32f>()));
    for (Row r : {WIN2(Kaiser, 64f, 1), WIN2(Kaiser, 64fc, 1)}) rows.push_back(r.refuse(finiteAlpha<Zvp64f>()));
    Row sfs = row("WinBlackmanQ15_16s_ISfs", {io<Zvp16s>()}, [](void* const* p, int len, const Vals& v) {
        return zvpsWinBlackmanQ15_16s_ISfs(static_cast<Zvp16s*>(p[0]), len, constant<int>(v, 0), v.sf);
    }, true);
    sfs.consts = {typeOf<int>()};
    rows.push_back(sfs.with(kWhole).minLength(3));
    return rows;
});

}  // namespace
