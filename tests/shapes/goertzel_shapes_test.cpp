// Shape rows of the one-frequency Goertzel forms: a source reduced to one
// complex value at a frequency (then a scale factor). Frequencies outside
// [0, 1) and NaN are refused with -27 after the pointers and the length. The
// Q15 forms refuse a negative frequency before anything else, so their rows
// draw non-negative ones only; the family test checks that order, and the
// two-frequency forms, whose frequencies come through a pointer.
#include "shapes.h"

namespace {

using namespace zvp::test;

#define ZVP_P(k, T) static_cast<T*>(p[k])
template <class A, class D, class Fr, class... S>
Row goertz(const char* n, ZvpStatus (*f)(const A*, int, D*, Fr, S...)) {
    Row r = row(n, {in<A>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(ZVP_P(0, const A), len, ZVP_P(1, D), constant<Fr>(v, 0), S(v.sf)...);
    }, sizeof...(S) > 0);
    r.args[1].single = true;
    r.consts = {typeOf<Fr>()};
    if constexpr (std::is_floating_point_v<Fr>) {
        r.refuse([](const Vals& v) {
            const Fr x = constant<Fr>(v, 0);
            return x >= 0 && x < 1 ? zvpStsNoErr : zvpStsRelFreqErr;
        });
    } else {
        r.tryConstants({0, 1, 2, 5461, 16384, 32767});
    }
    return r.with(kWhole);
}
#undef ZVP_P

#define G(f) goertz(#f, zvps##f)
const bool registered = addShapeFamily("goertzel", [] {
    return std::vector<Row>{G(Goertz_32f), G(Goertz_32fc), G(Goertz_64f), G(Goertz_64fc), G(Goertz_16s_Sfs),
                            G(Goertz_16sc_Sfs), G(GoertzQ15_16sc_Sfs)};
});
#undef G

}  // namespace
