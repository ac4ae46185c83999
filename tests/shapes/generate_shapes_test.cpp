// Shape rows of the ramps, slopes and Jaehne chirp: each element depends on its index (and the length),
// so they are whole-vector rows; the error order, untouched destination and rounding checks still apply.
#include "shapes.h"

namespace {

using namespace zvp::test;

// Destination, length, two values.
template <class D, class C, class E>
Row fill2(const char* n, ZvpStatus (*f)(D*, int, C, E)) {
    Row r = row(n, {out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(static_cast<D*>(p[0]), len, constant<C>(v, 0), constant<E>(v, 1));
    });
    r.consts = {typeOf<C>(), typeOf<E>()};
    return r.with(kWhole);
}
// Destination, length, a magnitude that may not be negative.
template <class D>
Row fill1(const char* n, ZvpStatus (*f)(D*, int, D)) {
    Row r = row(n, {out<D>()}, [f](void* const* p, int len, const Vals& v) { return f(static_cast<D*>(p[0]), len, constant<D>(v, 0)); });
    r.consts = {typeOf<D>()};
    return r.with(kWhole).refuse([](const Vals& v) { return double(constant<D>(v, 0)) >= 0.0 ? zvpStsNoErr : zvpStsBadArgErr; });
}

#define G(t) fill2("VectorRamp_" #t, zvpsVectorRamp_##t), fill2("VectorSlope_" #t, zvpsVectorSlope_##t), \
             fill1("VectorJaehne_" #t, zvpsVectorJaehne_##t)
const bool registered =
    addShapeFamily("generate", [] { return std::vector<Row>{G(8u), G(8s), G(16u), G(16s), G(32u), G(32s), G(32f), G(64f)}; });
#undef G

}  // namespace
