// One-frequency Goertzel forms: a source reduced to one complex value. Frequencies outside [0, 1) and NaN get
// -27 after the pointers and the length; the Q15 forms refuse a negative one first (the family test), so
// their rows draw non-negative ones.
#include "shapes.h"
namespace {
using namespace zvp::test;

template <class A, class D, class Fr, class... S>
Row goertz(const char* n, ZvpStatus (*f)(const A*, int, D*, Fr, S...)) {
    Row r = row(
        n, {in<A>(), out<D>()},
        [f](void* const* p, int len, const Vals& v) {
            return f(static_cast<const A*>(p[0]), len, static_cast<D*>(p[1]), constant<Fr>(v, 0), S(v.sf)...);
        },
        sizeof...(S) > 0);
    r.args[1].single = true, r.consts = {typeOf<Fr>()};
    if constexpr (std::is_floating_point_v<Fr>)
        r.refuse([](const Vals& v) {
            const Fr x = constant<Fr>(v, 0);
            return x >= 0 && x < 1 ? zvpStsNoErr : zvpStsRelFreqErr;
        });
    else
        r.tryConstants({0, 1, 2, 5461, 16384, 32767});
    return r.with(kWhole);
}
#define G(f) goertz(#f, zvps##f)
const bool registered = addShapeFamily("goertzel", [] {
    return std::vector<Row>{G(Goertz_32f),     G(Goertz_32fc),     G(Goertz_64f),        G(Goertz_64fc),
                            G(Goertz_16s_Sfs), G(Goertz_16sc_Sfs), G(GoertzQ15_16sc_Sfs)};
});
}  // namespace
