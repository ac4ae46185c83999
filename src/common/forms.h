// One form per shape of an element-wise operation. Each form runs the
// argument checks in the library's fixed order -- pointers in argument order
// (-8), then lengths (-6), then the operation's own values -- and then the
// kernel policy K on operands built from the arguments:
//
//   vv(a, b, d, len, x...)     d[i] = a[i] op b[i]
//   vvRev(a, b, d, len, x...)  d[i] = b[i] op a[i]   (Sub, Div: the first
//                                                      source is the right operand)
//   vvI(s, sd, len, x...)      sd[i] = sd[i] op s[i]
//   vc(s, c, d, len, x...)     d[i] = s[i] op c
//   vcI(c, sd, len, x...)      sd[i] = sd[i] op c
//   cv(s, c, d, len, x...)     d[i] = c op s[i]      (CRev)
//   cvI(c, sd, len, x...)      sd[i] = c op sd[i]
//   v(s, d, len, x...)         d[i] = op(s[i])       (unary)
//   vI(sd, len, x...)          sd[i] = op(sd[i])
//   vvAsReals, vvRevAsReals, vvIAsReals
//                              a complex integer form defined as its real
//                              form on twice the length: checks the length
//                              first, then runs the real form on 2 len reals
//
// Complex element types (a struct of re and im) run as 2 len reals of their
// part type; a complex constant becomes the pair (re, im) repeated. Lengths
// reach the kernels as std::ptrdiff_t, so 2 len never overflows.
//
// The policy K provides
//   using type = T;                                     the real element type
//   static ZvpStatus run(A a, B b, T* d, ptrdiff_t n, x...)
//       d[i] = a op b for operands a, b (Vec or Const: a.load<L>(i))
//   static ZvpStatus check(x...)       optional: the operation's own values
#pragma once

#include <cstddef>
#include <type_traits>

#include "check.h"
#include "lane.h"
#include "level.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::form {

// ---- Operands -------------------------------------------------------------
// load<L>(i) gives elements i .. i + L::N - 1 in a lane of type L.

template <class T>
struct Vec {
    const T* p;
    template <class L>
    typename L::R load(std::ptrdiff_t i) const { return L::load(p + i); }
    // The same, for p + i aligned to a full lane.
    template <class L>
    typename L::R loada(std::ptrdiff_t i) const { return L::loada(p + i); }
    bool aligned() const { return alignedFull(p); }
    T at(std::ptrdiff_t i) const { return p[i]; }
};

// A constant pair repeated over the vector (a real constant is its own
// pair). Vector loads always start at an even element; a one-lane load takes
// the constant of its element's parity.
template <class T>
struct Const {
    using R = typename Full<T>::R;
    R v, vOdd;
    T c0, c1;
    Const(T c0_, T c1_)
        : v(Full<T>::pair(c0_, c1_)), vOdd(Full<T>::pair(c1_, c0_)), c0(c0_), c1(c1_) {}
    explicit Const(T c) : Const(c, c) {}
    bool isZero() const { return c0 == T(0) && c1 == T(0); }
    T at(std::ptrdiff_t i) const { return (i & 1) ? c1 : c0; }
    template <class L>
    R loada(std::ptrdiff_t i) const { return load<L>(i); }
    bool aligned() const { return true; }
    template <class L>
    R load(std::ptrdiff_t i) const {
        if constexpr (L::N == 1) return (i & 1) ? vOdd : v;
        else return v;
    }
};

// ---- A lane-wise driver ----------------------------------------------------

// d[i] = Fn::apply<L>(a, b, i) over n values of D: U full vectors of D per
// step, then one, then one lane at a time. Fn::apply<L> loads the operands
// for the L::N destination values from i on and returns their lane.
template <class D, int U, class Fn, class A, class B>
inline void lanewise(A a, B b, D* d, std::ptrdiff_t n) {
    using F = Full<D>;
    using S = One<D>;
    constexpr std::ptrdiff_t V = F::N;
    auto at = [&]<class L>(std::ptrdiff_t i) { return Fn::template apply<L>(a, b, i); };
    std::ptrdiff_t i = 0;
    if constexpr (U > 1) {
        for (; i + U * V <= n; i += U * V) {
            typename F::R r[U];
            for (int u = 0; u < U; ++u) r[u] = at.template operator()<F>(i + u * V);
            for (int u = 0; u < U; ++u) F::store(d + i + u * V, r[u]);
        }
    }
    for (; i + V <= n; i += V) F::store(d + i, at.template operator()<F>(i));
    for (; i < n; ++i) S::store(d + i, at.template operator()<S>(i));
}

// The kernel policy of the forms for a lane-wise rule Fn into a D
// destination, two full vectors a step.
template <class D, class Fn>
struct Lanewise {
    using type = D;
    template <class A, class B>
    static ZvpStatus run(A a, B b, D* d, std::ptrdiff_t n) {
        lanewise<D, 2, Fn>(a, b, d, n);
        return zvpStsNoErr;
    }
};

// d[i] = fn.at<L>(i) over n values of D, for a kernel object fn whose at<L>
// loads what the L::N destination values from i on need and returns their
// lane: two body lanes of V values per step (loads before stores; a full
// vector by default), then one, then U values at a time (U = 2 for complex
// pairs, whose parts depend on each other). fn is taken and returned by
// value, so whatever it gathers (a warning) comes back to the caller and its
// state stays in registers.
template <class D, int U, int V_ = Full<D>::N, class Fn>
[[gnu::always_inline]] inline Fn each(Fn fn, D* d, std::ptrdiff_t n) {
    using F = Lanes<D, V_>;
    using S = Lanes<D, U>;
    constexpr std::ptrdiff_t V = F::N;
    std::ptrdiff_t i = 0;
    for (; i + 2 * V <= n; i += 2 * V) {
        const auto r0 = fn.template at<F>(i);
        const auto r1 = fn.template at<F>(i + V);
        F::store(d + i, r0);
        F::store(d + i + V, r1);
    }
    for (; i + V <= n; i += V) F::store(d + i, fn.template at<F>(i));
    for (; i < n; i += U) S::store(d + i, fn.template at<S>(i));
    return fn;
}

// d[i] = op(s[i]) and d[i] = op(a[i], b[i]) lane by lane, for an operation
// object op with  template <class L> L::R apply(L::R ...) const  (whatever
// it holds -- a count, constants -- stays in registers).
template <class A, class Op>
struct MapFn {
    A s;
    Op op;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const { return op.template apply<L>(s.template load<L>(i)); }
};
template <class A, class B, class Op>
struct ZipFn {
    A a;
    B b;
    Op op;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        return op.template apply<L>(a.template load<L>(i), b.template load<L>(i));
    }
};
// U is the tail's step: 2 for complex pairs, whose parts depend on each other.
template <int U = 1, class D, class A, class Op>
inline void map(A s, D* d, std::ptrdiff_t n, Op op) {
    each<D, U>(MapFn<A, Op>{s, op}, d, n);
}
template <int U = 1, class D, class A, class B, class Op>
inline void zip(A a, B b, D* d, std::ptrdiff_t n, Op op) {
    each<D, U>(ZipFn<A, B, Op>{a, b, op}, d, n);
}

// Kernel policies for a stateless lane operation Op: one operand (Unary) or
// two (Binary).
template <class T, class Op>
struct Unary {
    using type = T;
    template <class A>
    static ZvpStatus run(A s, T* d, std::ptrdiff_t n) {
        map(s, d, n, Op{});
        return zvpStsNoErr;
    }
};
template <class T, class Op>
struct Binary {
    using type = T;
    template <class A, class B>
    static ZvpStatus run(A a, B b, T* d, std::ptrdiff_t n) {
        zip(a, b, d, n, Op{});
        return zvpStsNoErr;
    }
};

// A kernel policy of one value at a time, for operations with no lane form
// (library calls, exact integer roots): d[i] = F(s[i], x...).
template <class T, auto F>
struct PerElement {
    using type = T;
    template <class A, class... X>
    static ZvpStatus run(A s, T* d, std::ptrdiff_t n, X... x) {
        for (std::ptrdiff_t i = 0; i < n; ++i) d[i] = F(s.at(i), x...);
        return zvpStsNoErr;
    }
};

// ---- Complex elements as reals ----------------------------------------------

template <class C>
concept Complex = requires(C c) { c.re; c.im; };

template <class C>
struct PartOf {
    using type = C;
};
template <Complex C>
struct PartOf<C> {
    using type = std::remove_cv_t<decltype(C::re)>;
};
template <class C>
using Part = typename PartOf<C>::type;

template <class C>
constexpr std::ptrdiff_t kParts = Complex<C> ? 2 : 1;

template <class C>
inline const Part<C>* parts(const C* p) {
    return reinterpret_cast<const Part<C>*>(p);
}
template <class C>
inline Part<C>* parts(C* p) {
    return reinterpret_cast<Part<C>*>(p);
}
template <class C>
inline Const<Part<C>> constOf(C c) {
    if constexpr (Complex<C>) return Const<Part<C>>(c.re, c.im);
    else return Const<Part<C>>(c);
}

template <class K, class... X>
inline ZvpStatus ownChecks(X... x) {
    if constexpr (requires { K::check(x...); }) return K::check(x...);
    else return zvpStsNoErr;
}

// ---- The forms ----------------------------------------------------------------

// The sources may differ in type from the destination (mixed forms); the
// count of values passed to the kernel is the destination's.
template <class K, class A, class B, class C, class... X>
ZvpStatus vv(const A* a, const B* b, C* d, std::ptrdiff_t len, X... x) {
    ZVP_CHECK_PTRS(a, b, d);
    ZVP_CHECK_LENS(len);
    ZVP_RETURN_IF_ERROR(ownChecks<K>(x...));
    return K::run(Vec<Part<A>>{parts(a)}, Vec<Part<B>>{parts(b)}, parts(d), kParts<C> * len, x...);
}

template <class K, class A, class B, class C, class... X>
ZvpStatus vvRev(const A* a, const B* b, C* d, std::ptrdiff_t len, X... x) {
    ZVP_CHECK_PTRS(a, b, d);
    ZVP_CHECK_LENS(len);
    ZVP_RETURN_IF_ERROR(ownChecks<K>(x...));
    return K::run(Vec<Part<B>>{parts(b)}, Vec<Part<A>>{parts(a)}, parts(d), kParts<C> * len, x...);
}

template <class K, class A, class C, class... X>
ZvpStatus vvI(const A* s, C* sd, std::ptrdiff_t len, X... x) {
    ZVP_CHECK_PTRS(s, sd);
    ZVP_CHECK_LENS(len);
    ZVP_RETURN_IF_ERROR(ownChecks<K>(x...));
    return K::run(Vec<Part<C>>{parts(sd)}, Vec<Part<A>>{parts(s)}, parts(sd), kParts<C> * len, x...);
}

// The constant may differ in type from the vectors (a float factor of an
// integer vector); the count is the destination's.
template <class K, class A, class V, class C, class... X>
ZvpStatus vc(const A* s, V c, C* d, std::ptrdiff_t len, X... x) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    ZVP_RETURN_IF_ERROR(ownChecks<K>(x...));
    return K::run(Vec<Part<A>>{parts(s)}, constOf(c), parts(d), kParts<C> * len, x...);
}

template <class K, class V, class C, class... X>
ZvpStatus vcI(V c, C* sd, std::ptrdiff_t len, X... x) {
    ZVP_CHECK_PTRS(sd);
    ZVP_CHECK_LENS(len);
    ZVP_RETURN_IF_ERROR(ownChecks<K>(x...));
    return K::run(Vec<Part<C>>{parts(sd)}, constOf(c), parts(sd), kParts<C> * len, x...);
}

template <class K, class C, class... X>
ZvpStatus cv(const C* s, C c, C* d, std::ptrdiff_t len, X... x) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    ZVP_RETURN_IF_ERROR(ownChecks<K>(x...));
    return K::run(constOf(c), Vec<Part<C>>{parts(s)}, parts(d), kParts<C> * len, x...);
}

template <class K, class C, class... X>
ZvpStatus cvI(C c, C* sd, std::ptrdiff_t len, X... x) {
    ZVP_CHECK_PTRS(sd);
    ZVP_CHECK_LENS(len);
    ZVP_RETURN_IF_ERROR(ownChecks<K>(x...));
    return K::run(constOf(c), Vec<Part<C>>{parts(sd)}, parts(sd), kParts<C> * len, x...);
}

// Unary shapes: d[i] = op(s[i]) and sd[i] = op(sd[i]), the extra values x
// (scale factor, constants) passed on to the policy: K::run(Vec a, T* d, n, x...).
template <class K, class A, class C, class... X>
ZvpStatus v(const A* s, C* d, std::ptrdiff_t len, X... x) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    ZVP_RETURN_IF_ERROR(ownChecks<K>(x...));
    return K::run(Vec<Part<A>>{parts(s)}, parts(d), kParts<C> * len, x...);
}

template <class K, class C, class... X>
ZvpStatus vI(C* sd, std::ptrdiff_t len, X... x) {
    ZVP_CHECK_PTRS(sd);
    ZVP_CHECK_LENS(len);
    ZVP_RETURN_IF_ERROR(ownChecks<K>(x...));
    return K::run(Vec<Part<C>>{parts(sd)}, parts(sd), kParts<C> * len, x...);
}

// The real form on twice the length, for the complex integer forms that are
// defined that way: the length is checked first, then the real form (the
// same form on the part type, checking the pointers) runs on 2 len reals,
// and its status is returned.
template <class K, Complex C, class... X>
ZvpStatus vvAsReals(const C* a, const C* b, C* d, int len, X... x) {
    ZVP_CHECK_LENS(len);
    return vv<K>(parts(a), parts(b), parts(d), 2 * std::ptrdiff_t(len), x...);
}
template <class K, Complex C, class... X>
ZvpStatus vvRevAsReals(const C* a, const C* b, C* d, int len, X... x) {
    ZVP_CHECK_LENS(len);
    return vvRev<K>(parts(a), parts(b), parts(d), 2 * std::ptrdiff_t(len), x...);
}
template <class K, Complex C, class... X>
ZvpStatus vvIAsReals(const C* s, C* sd, int len, X... x) {
    ZVP_CHECK_LENS(len);
    return vvI<K>(parts(s), parts(sd), 2 * std::ptrdiff_t(len), x...);
}

}  // namespace zvp::ZVP_LEVEL::form
