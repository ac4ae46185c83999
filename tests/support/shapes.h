// The machinery behind the table of export shapes (tests/shapes/): a row
// describes one export by the roles and types of its pointer arguments and
// the values it takes, and the checks every export shares run from these
// descriptions alone:
//   errors      null pointers in argument order (-8) before lengths (-6),
//               then the export's own value checks; nothing written;
//   twins       an in-place form equals its out-of-place twin, and the
//               out-of-place form called with the destination on its last
//               source, at every length, on ordinary and extreme values;
//   singles     a call over n elements at misaligned pointers equals n calls
//               of one element (the scalar tail), status included;
//   rounding    integer results do not depend on the caller's rounding mode,
//               flush-to-zero or denormals-are-zero, and the caller's
//               control word comes back as it was;
//   long        a length of 2^30 (2^31 reals, or more than 2^31 bytes) is
//               processed to the end;
//   oracle      rows with an oracle: every element equals the oracle's exact
//               value, over random values of every magnitude, every pair of
//               extremes and scale factors across every threshold.
// Every successful call also finds the guard bytes around its buffers intact
// and its sources unchanged.
#pragma once

#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cfenv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include "sentinel.h"
#include "zvps.h"

#if defined(__x86_64__) && !defined(__SANITIZE_ADDRESS__)
#define ZVP_TEST_LONG_LENGTHS 1
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace zvp::test {

// ZVP_TEST_QUICK=1 samples the sweeps more sparsely (sanitizer runs).
inline bool quickRun() {
    const char* q = std::getenv("ZVP_TEST_QUICK");
    return q && *q && *q != '0';
}

// ---- Element types -------------------------------------------------------------

template <class T>
struct PartOf {
    using type = T;
    static constexpr int parts = 1;
};
#define ZVP_COMPLEX(C, P)                \
    template <>                          \
    struct PartOf<C> {                   \
        using type = P;                  \
        static constexpr int parts = 2;  \
    };
ZVP_COMPLEX(Zvp16sc, Zvp16s)
ZVP_COMPLEX(Zvp32sc, Zvp32s)
ZVP_COMPLEX(Zvp64sc, Zvp64s)
ZVP_COMPLEX(Zvp32fc, Zvp32f)
ZVP_COMPLEX(Zvp64fc, Zvp64f)
#undef ZVP_COMPLEX

enum class Draw { Ordinary, Extreme, Mixed };

// One real part: ordinary values (small integers, random bits, moderate
// floats) or the extremes where rounding, saturation and special values
// live (type minimum and maximum, 0, -1, NaN, infinities, -0, denormals).
template <class P>
P drawPart(std::mt19937_64& g, Draw d, int pick = -1) {
    using L = std::numeric_limits<P>;
    const bool ext = d == Draw::Extreme || (d == Draw::Mixed && g() % 3 == 0);
    if constexpr (std::is_floating_point_v<P>) {
        static const P e[] = {P(0),           P(-0.0),         P(1),         P(-1),       L::infinity(),
                              -L::infinity(), L::quiet_NaN(),  L::min(),     L::max(),    L::lowest(),
                              L::denorm_min(), -L::denorm_min(), P(0.5),     P(-2.5),     P(1e-30)};
        constexpr int ne = sizeof e / sizeof e[0];
        if (pick >= 0) return e[pick % ne];
        if (ext) return e[g() % ne];
        const double u = double(g() >> 11) * 0x1p-53;  // [0, 1)
        switch (g() % 5) {
            case 0: return P(int(g() % 81) - 40);
            case 1: return P(8 * u - 4);
            case 2: return P(std::ldexp(2 * u - 1, int(g() % 161) - 80));  // any moderate magnitude
            default: return P(2000 * u - 1000);
        }
    } else {
        const P e[] = {L::min(), P(L::min() + 1), P(0), P(1), P(2), P(L::max() - 1), L::max(), P(-1)};
        if (pick >= 0) return e[pick % 8];
        if (ext) return e[g() % 8];
        P x;
        switch (g() % 4) {
            case 0: x = P(g() % 41); break;
            case 1: x = P(P(std::uint64_t(1) << (g() % L::digits)) + P(int(g() % 3) - 1)); break;  // 2^k, 2^k +- 1
            default: x = P(g() >> (g() % 64));  // every magnitude
        }
        return std::is_signed_v<P> && g() % 2 ? P(-x) : x;
    }
}

template <class T>
void drawInto(void* dst, std::size_t n, std::mt19937_64& g, Draw d) {
    using P = typename PartOf<T>::type;
    auto* p = static_cast<P*>(dst);
    for (std::size_t i = 0; i < n * PartOf<T>::parts; ++i) p[i] = drawPart<P>(g, d);
}
// The k-th extreme in every part (there are 15 for floats, 8 for integers).
template <class T>
void extremeInto(void* dst, int k) {
    using P = typename PartOf<T>::type;
    std::mt19937_64 g;
    for (int i = 0; i < PartOf<T>::parts; ++i) static_cast<P*>(dst)[i] = drawPart<P>(g, Draw::Extreme, k);
}

// Zero, -0 included; a complex value when both parts are.
template <class T>
bool isZero(const void* p) {
    using P = typename PartOf<T>::type;
    for (int i = 0; i < PartOf<T>::parts; ++i)
        if (static_cast<const P*>(p)[i] != 0) return false;
    return true;
}

struct Type {
    const std::type_info* id;
    std::size_t size;
    bool integer, complex;
    void (*draw)(void*, std::size_t, std::mt19937_64&, Draw);
    void (*extreme)(void*, int);
    int extremes;
    bool (*zero)(const void*);
};
template <class T>
const Type* typeOf() {
    using P = typename PartOf<T>::type;
    static const Type t{&typeid(T), sizeof(T), std::is_integral_v<P>, PartOf<T>::parts == 2, &drawInto<T>,
                          &extremeInto<T>, std::is_integral_v<P> ? 8 : 15, &isZero<T>};
    return &t;
}

// ---- Rows --------------------------------------------------------------------------

enum class Role { In, Out, InOut };
struct Arg {
    Role role;
    const Type* type;
    bool single = false;  // one element whatever the length (a sum)
    bool optional = false;      // may be null, or its null case is particular to the family
    bool afterLengths = false;  // null-checked after the lengths (an entry of a channel array)
};

// The values an export takes besides pointers and length.
struct Vals {
    alignas(16) unsigned char c[4][16] = {};
    int sf = 0;
    int mode = 1;
};
template <class T>
T constant(const Vals& v, int k) {
    T t;
    std::memcpy(&t, v.c[k], sizeof(T));
    return t;
}

enum Flags : unsigned {
    kLenFirst = 1,     // checks its length before its pointers (forwards 2·len reals)
    kWhole = 2,        // not element by element: no comparison with single calls
    kNoAlias = 4,      // sources and destination must not overlap
    kLong = 8,         // works on 2·len reals or len·size bytes: run at 2^30 (a costly
                       // check, so a sample of such forms carries the flag)
    kLongForward = 16, // forwards 2·len reals: the doubled length must not overflow either
    kUnsignedLen = 32, // reads its length as unsigned: only 0 is refused here; a negative
                       // one is a count above 2^31, tried by the family's own test
};

using Call = std::function<ZvpStatus(void* const*, int, const Vals&)>;
using Rule = std::function<ZvpStatus(const Vals&)>;
// Given one element of every argument (an in-place vector holding its old
// value), writes what every destination must hold.
using Oracle = std::function<void(void* const*, const Vals&)>;

struct Row {
    std::string name, family;
    std::vector<Arg> args;
    std::vector<const Type*> consts;
    bool sf = false, mode = false;
    Call call;
    unsigned flags = 0;
    Rule rule;                            // status for values the export refuses, 0 if accepted
    std::vector<std::int64_t> constList;  // integer constants to try instead of drawn ones
    const Row* twin = nullptr;            // the out-of-place form of an in-place row
    Oracle oracle;                        // the exact element rule, if the row has one
    int minLen = 1;                       // shorter lengths are refused (-6); twins start here

    Row& with(unsigned f) {
        flags |= f;
        return *this;
    }
    Row& refuse(Rule r) {
        rule = std::move(r);
        return *this;
    }
    Row& withOracle(Oracle o) {
        oracle = std::move(o);
        return *this;
    }
    // Bit k: argument k's null case is particular (accepted, or other
    // destinations written) and its family test checks it.
    Row& nullCheckedElsewhere(unsigned argMask) {
        for (std::size_t k = 0; k < args.size(); ++k)
            if ((argMask >> k) & 1) args[k].optional = true;
        return *this;
    }
    Row& minLength(int n) {
        minLen = n;
        return *this;
    }
    Row& tryConstants(std::vector<std::int64_t> v) {
        constList = std::move(v);
        return *this;
    }
    ZvpStatus refused(const Vals& v) const { return rule ? rule(v) : zvpStsNoErr; }
    bool integerResult() const {
        for (const Arg& a : args)
            if (a.role != Role::In && !a.type->integer) return false;
        return true;
    }
};

// ---- Makers, one per shape (each with and without a scale factor) ------------------

template <class T>
Arg in() { return {Role::In, typeOf<T>()}; }
template <class T>
Arg out() { return {Role::Out, typeOf<T>()}; }
template <class T>
Arg io() { return {Role::InOut, typeOf<T>()}; }
#define ZVP_P(k, T) static_cast<T*>(p[k])

inline Row row(const char* name, std::vector<Arg> args, Call c, bool sf = false) {
    Row r;
    r.name = name;
    r.args = std::move(args);
    r.call = std::move(c);
    r.sf = sf;
    return r;
}

// Each maker takes the export with or without a trailing scale factor (S...).
// Vector op vector: first source, second source, destination (acc: the
// destination is also read).
template <class A, class B, class D, class... S>
Row vv(const char* n, ZvpStatus (*f)(const A*, const B*, D*, int, S...), bool acc = false) {
    return row(n, {in<A>(), in<B>(), acc ? io<D>() : out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(ZVP_P(0, const A), ZVP_P(1, const B), ZVP_P(2, D), len, S(v.sf)...);
    }, sizeof...(S) > 0);
}
// Vector op vector in place: source, source-and-destination.
template <class A, class D, class... S>
Row vvI(const char* n, ZvpStatus (*f)(const A*, D*, int, S...)) {
    return row(n, {in<A>(), io<D>()},
               [f](void* const* p, int len, const Vals& v) { return f(ZVP_P(0, const A), ZVP_P(1, D), len, S(v.sf)...); },
               sizeof...(S) > 0);
}
// One source, one destination.
template <class A, class D, class... S>
Row un(const char* n, ZvpStatus (*f)(const A*, D*, int, S...)) {
    return row(n, {in<A>(), out<D>()},
               [f](void* const* p, int len, const Vals& v) { return f(ZVP_P(0, const A), ZVP_P(1, D), len, S(v.sf)...); },
               sizeof...(S) > 0);
}
// In place on one vector (Zero when `fill`: the vector is only written).
template <class D, class... S>
Row unI(const char* n, ZvpStatus (*f)(D*, int, S...), bool fill = false) {
    return row(n, {fill ? out<D>() : io<D>()},
               [f](void* const* p, int len, const Vals& v) { return f(ZVP_P(0, D), len, S(v.sf)...); }, sizeof...(S) > 0);
}
// Vector op constant (acc: the destination is also read).
template <class A, class C, class D, class... S>
Row vc(const char* n, ZvpStatus (*f)(const A*, C, D*, int, S...), bool acc = false) {
    Row r = row(n, {in<A>(), acc ? io<D>() : out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(ZVP_P(0, const A), constant<C>(v, 0), ZVP_P(1, D), len, S(v.sf)...);
    }, sizeof...(S) > 0);
    r.consts = {typeOf<C>()};
    return r;
}
// Constant op vector in place (Set when `fill`: the vector is only written).
template <class C, class D, class... S>
Row vcI(const char* n, ZvpStatus (*f)(C, D*, int, S...), bool fill = false) {
    Row r = row(n, {fill ? out<D>() : io<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(constant<C>(v, 0), ZVP_P(0, D), len, S(v.sf)...);
    }, sizeof...(S) > 0);
    r.consts = {typeOf<C>()};
    return r;
}
// Vector op vector with a rounding mode before the scale factor.
template <class A, class B, class D>
Row vvr(const char* n, ZvpStatus (*f)(const A*, const B*, D*, int, ZvpRoundMode, int)) {
    Row r = row(n, {in<A>(), in<B>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(ZVP_P(0, const A), ZVP_P(1, const B), ZVP_P(2, D), len, ZvpRoundMode(v.mode), v.sf);
    }, true);
    r.mode = true;
    return r;
}
template <class A, class D>
Row vvr(const char* n, ZvpStatus (*f)(const A*, D*, int, ZvpRoundMode, int)) {
    Row r = row(n, {in<A>(), io<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(ZVP_P(0, const A), ZVP_P(1, D), len, ZvpRoundMode(v.mode), v.sf);
    }, true);
    r.mode = true;
    return r;
}
// Source, destination, length, then two values (subtrahend and divisor).
template <class A, class D, class C, class E, class... S>
Row un2(const char* n, ZvpStatus (*f)(const A*, D*, int, C, E, S...)) {
    Row r = row(n, {in<A>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(ZVP_P(0, const A), ZVP_P(1, D), len, constant<C>(v, 0), constant<E>(v, 1), S(v.sf)...);
    }, sizeof...(S) > 0);
    r.consts = {typeOf<C>(), typeOf<E>()};
    return r;
}
// In place on one vector with a value after the length.
template <class D, class C>
Row unIc(const char* n, ZvpStatus (*f)(D*, int, C)) {
    Row r = row(n, {io<D>()}, [f](void* const* p, int len, const Vals& v) { return f(ZVP_P(0, D), len, constant<C>(v, 0)); });
    r.consts = {typeOf<C>()};
    return r;
}
// A source reduced to one value.
template <class A, class D>
Row sum(const char* n, ZvpStatus (*f)(const A*, int, D*)) {
    Row r = row(n, {in<A>(), out<D>()}, [f](void* const* p, int len, const Vals&) { return f(ZVP_P(0, const A), len, ZVP_P(1, D)); });
    r.args[1].single = true;
    r.flags |= kWhole;
    return r;
}
#undef ZVP_P

// Oracles from one generic rule f(old destination, operands..., values),
// returning the destination element. The operands are the sources and
// constants in the order of the out-of-place form: an in-place vector is
// the first operand (X_I(c, v) is X(v, c, v)), except that a four-operand
// rule on source-and-vector forms reads it as the second (X_I(a, v) is
// X(a, v, v)).
#define ZVP_E(k, T) (*static_cast<T*>(p[k]))
template <class A, class B, class D, class... S, class F>
Oracle ora(ZvpStatus (*)(const A*, const B*, D*, int, S...), F f) {
    return [f](void* const* p, const Vals& v) { ZVP_E(2, D) = f(ZVP_E(2, D), ZVP_E(0, const A), ZVP_E(1, const B), v); };
}
template <class A, class C, class D, class... S, class F>
Oracle ora(ZvpStatus (*)(const A*, C, D*, int, S...), F f) {
    return [f](void* const* p, const Vals& v) { ZVP_E(1, D) = f(ZVP_E(1, D), ZVP_E(0, const A), constant<C>(v, 0), v); };
}
template <class A, class D, class... S, class F>
Oracle ora(ZvpStatus (*)(const A*, D*, int, S...), F f) {
    return [f](void* const* p, const Vals& v) {
        D& d = ZVP_E(1, D);
        if constexpr (std::is_invocable_v<F, D, A, D, const Vals&>) d = f(d, ZVP_E(0, const A), d, v);
        else d = f(d, ZVP_E(0, const A), v);
    };
}
template <class C, class D, class... S, class F>
Oracle ora(ZvpStatus (*)(C, D*, int, S...), F f) {
    return [f](void* const* p, const Vals& v) { ZVP_E(0, D) = f(ZVP_E(0, D), ZVP_E(0, D), constant<C>(v, 0), v); };
}
template <class D, class... S, class F>
    requires(!std::is_const_v<D>)
Oracle ora(ZvpStatus (*)(D*, int, S...), F f) {
    return [f](void* const* p, const Vals& v) { ZVP_E(0, D) = f(ZVP_E(0, D), ZVP_E(0, D), v); };
}
#undef ZVP_E

// ---- Values each check runs with -------------------------------------------------

inline std::uint32_t seedOf(const std::string& s) {
    std::uint32_t h = 2166136261u;
    for (unsigned char c : s) h = (h ^ c) * 16777619u;
    return h;
}

// Scale factors around every family's thresholds (zero fill above Z, bound
// at N and below) and far beyond; `few` is one of each path.
inline std::vector<int> scaleFactors(bool full) {
    static const std::vector<int> all = {0,  1,  2,  3,  -1, -7, -8, -9, -14, -15, -16, -17, -30, -31, -32, -33,
                                         -62, -63, -64, 8, 9, 10, 15, 16, 17, 18, 29, 30, 31, 32, 33, 61,
                                         62, 63, 64, 127, INT_MAX, INT_MIN};
    static const std::vector<int> few = {0, 1, 2, -1, -16, -17, 16, 17, 31, 32};
    if (!full) return few;
    if (!quickRun()) return all;
    std::vector<int> v;
    for (std::size_t i = 0; i < all.size(); i += 3) v.push_back(all[i]);
    return v;
}

// Results compared value by value: integers bit for bit, floats bit for bit
// except that any two NaNs match. Which of two NaN operands an SSE
// instruction passes on depends on the operand order, and the compiler may
// commute an addition or a product, so the payload is not part of a result.
inline bool sameValues(const Type* t, const void* a, const void* b, std::size_t bytes) {
    if (t->integer) return std::memcmp(a, b, bytes) == 0;
    const std::size_t part = t->complex ? t->size / 2 : t->size;
    const auto* p = static_cast<const unsigned char*>(a);
    const auto* q = static_cast<const unsigned char*>(b);
    for (std::size_t k = 0; k < bytes; k += part) {
        if (std::memcmp(p + k, q + k, part) == 0) continue;
        bool nanP, nanQ;
        if (part == 4) {
            float x, y;
            std::memcpy(&x, p + k, 4);
            std::memcpy(&y, q + k, 4);
            nanP = x != x, nanQ = y != y;
        } else {
            double x, y;
            std::memcpy(&x, p + k, 8);
            std::memcpy(&y, q + k, 8);
            nanP = x != x, nanQ = y != y;
        }
        if (!(nanP && nanQ)) return false;
    }
    return true;
}

inline std::vector<int> lengths() {
    static const std::vector<int> quick = {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 32, 33, 63, 64, 65, 70};
    if (quickRun()) return quick;
    std::vector<int> v;
    for (int n = 1; n <= 70; ++n) v.push_back(n);
    return v;
}

struct Cases {
    std::vector<Vals> good, bad;
};

// Drawn constants (ordinary, extreme, and for complex constants a purely real
// and a purely imaginary one), each scale factor, each rounding mode,
// sorted into the values the export accepts and those it must refuse.
inline Cases valueCases(const Row& r, bool full) {
    std::mt19937_64 g(seedOf(r.name));
    std::vector<std::vector<Vals>> cand(r.consts.size());
    for (std::size_t k = 0; k < r.consts.size(); ++k) {
        const Type& t = *r.consts[k];
        auto add = [&](const void* bytes) {
            Vals v;
            std::memcpy(v.c[k], bytes, t.size);
            cand[k].push_back(v);
        };
        if (k == 0 && !r.constList.empty()) {
            for (std::int64_t x : r.constList) add(&x);  // little-endian: the low bytes
            continue;
        }
        unsigned char b[16];
        for (int i = 0; i < 3; ++i) {
            t.draw(b, 1, g, i < 2 ? Draw::Ordinary : Draw::Mixed);
            add(b);
            if (t.complex && i < 2) {  // purely real, purely imaginary
                std::memset(b + t.size / 2 * i, 0, t.size / 2);
                add(b);
            }
        }
        for (int e = 0; e < t.extremes; ++e) {
            t.extreme(b, e);
            add(b);
        }
    }
    std::size_t combos = 1;
    for (auto& c : cand) combos = std::max(combos, c.size());
    Cases out;
    for (std::size_t i = 0; i < combos; ++i) {
        Vals v;
        for (std::size_t k = 0; k < cand.size(); ++k) std::memcpy(v.c[k], cand[k][i % cand[k].size()].c[k], 16);
        const std::vector<int> sfs = r.sf ? scaleFactors(full && i == 0) : std::vector<int>{0};
        for (int sf : sfs) {
            v.sf = sf;
            const std::vector<int> modes = r.mode && sf == 0 ? std::vector<int>{1, 0, 2, 3, -1} : std::vector<int>{1};
            for (int m : modes) {
                v.mode = m;
                (r.refused(v) != zvpStsNoErr ? out.bad : out.good).push_back(v);
            }
        }
    }
    return out;
}

// Input data for every argument the export reads, n elements each.
inline std::vector<std::vector<unsigned char>> drawArgs(const Row& r, int n, std::mt19937_64& g, Draw d) {
    std::vector<std::vector<unsigned char>> data(r.args.size());
    for (std::size_t i = 0; i < r.args.size(); ++i) {
        const Arg& a = r.args[i];
        if (a.role == Role::Out) continue;
        data[i].resize(std::size_t(n) * a.type->size);
        a.type->draw(data[i].data(), std::size_t(n), g, d);
    }
    return data;
}

// The buffers of one call: each in its own guarded storage, `mis` elements
// past a 64-byte boundary (varied per argument), filled from `data` at
// element `at` (destinations keep the sentinel).
struct Frame {
    std::vector<std::unique_ptr<GuardedBuffer>> buf;
    std::vector<std::vector<unsigned char>> before;
    std::vector<void*> ptr;
    const Row& row;

    Frame(const Row& r, int n, const std::vector<std::vector<unsigned char>>& data, int at = 0, int mis = 0) : row(r) {
        for (std::size_t i = 0; i < r.args.size(); ++i) {
            const Arg& a = r.args[i];
            const std::size_t sz = a.type->size, count = a.single ? 1 : std::size_t(n);
            buf.push_back(std::make_unique<GuardedBuffer>(count * sz, ((mis + 3 * i) % 8) * sz));
            if (a.role != Role::Out && !data[i].empty())
                std::memcpy(buf.back()->data(), data[i].data() + std::size_t(at) * sz, count * sz);
            before.emplace_back(buf.back()->data(), buf.back()->data() + count * sz);
            ptr.push_back(buf.back()->data());
        }
    }
    ZvpStatus run(int n, const Vals& v) { return row.call(ptr.data(), n, v); }
    // Guards intact and sources unchanged (except argument `skip`).
    bool intact(std::size_t skip = SIZE_MAX) const {
        for (std::size_t i = 0; i < buf.size(); ++i) {
            if (!buf[i]->guardsIntact()) return false;
            if (i != skip && row.args[i].role == Role::In &&
                std::memcmp(buf[i]->data(), before[i].data(), before[i].size()) != 0)
                return false;
        }
        return true;
    }
    // Everything the call wrote, destinations in argument order.
    std::vector<unsigned char> written() const {
        std::vector<unsigned char> w;
        for (std::size_t i = 0; i < buf.size(); ++i)
            if (row.args[i].role != Role::In) w.insert(w.end(), buf[i]->data(), buf[i]->data() + buf[i]->size());
        return w;
    }
};

inline std::string hex(const unsigned char* p, std::size_t n) {
    std::string s = "0x";
    while (n-- > 0) {
        s += "0123456789abcdef"[p[n] >> 4];
        s += "0123456789abcdef"[p[n] & 15];
    }
    return s;
}

inline std::string describe(const Vals& v, const Row& r) {
    std::ostringstream s;
    s << " (constants";
    for (std::size_t k = 0; k < r.consts.size(); ++k) s << " " << hex(v.c[k], r.consts[k]->size);
    if (r.sf) s << ", sf " << v.sf;
    if (r.mode) s << ", mode " << v.mode;
    return s.str() + ")";
}

// One failure per row and check, tagged so a script can tell rows apart.
#define ZVP_SHAPE_FAIL(check, r) ADD_FAILURE() << "[shape " check "] " << (r).name << ": "

// ---- errors ----------------------------------------------------------------------

inline void checkErrors(const Row& r) {
    const Cases cs = valueCases(r, false);
    ASSERT_FALSE(cs.good.empty()) << r.name;
    std::vector<std::vector<unsigned char>> none(r.args.size());
    Frame f(r, 8, none);
    const Vals& ok = cs.good[0];
    auto expect = [&](std::vector<void*> p, int len, const Vals& v, ZvpStatus want, const char* what) {
        const ZvpStatus st = r.call(p.data(), len, v);
        if (st == want) return true;
        ZVP_SHAPE_FAIL("errors", r) << what << ", length " << len << describe(v, r) << ": status " << st
                                    << ", expected " << want;
        return false;
    };
    std::vector<const Vals*> vals = {&ok};
    for (const Vals& b : cs.bad) vals.push_back(&b);
    for (const Vals* v : vals) {
        for (std::size_t k = 0; k < r.args.size(); ++k) {
            if (r.args[k].optional) continue;
            std::vector<void*> p = f.ptr;
            p[k] = nullptr;
            for (int len : {4, 0, -1})
                if (!expect(p, len, *v, len < 1 && ((r.flags & kLenFirst) || r.args[k].afterLengths) ? zvpStsSizeErr : zvpStsNullPtrErr,
                            ("null pointer " + std::to_string(k)).c_str()))
                    return;
        }
        for (int len : {0, -1, INT_MIN})
            if ((len == 0 || !(r.flags & kUnsignedLen)) && !expect(f.ptr, len, *v, zvpStsSizeErr, "bad length")) return;
        if (r.minLen > 1 && !expect(f.ptr, r.minLen - 1, *v, zvpStsSizeErr, "length below the minimum")) return;
        if (v != &ok && !expect(f.ptr, 4, *v, r.refused(*v), "refused value")) return;
    }
    for (std::size_t i = 0; i < f.buf.size(); ++i)
        if (!f.buf[i]->untouched()) ZVP_SHAPE_FAIL("errors", r) << "argument " << i << " written on error";
}

// ---- twins -------------------------------------------------------------------------

// Pairs each in-place row with its out-of-place twin (X_I with X, X_ISfs
// with X_Sfs) when the twin's sources are the in-place row's, its last
// source being the in-place vector; returns how many were paired.
inline int pairTwins(std::vector<Row>& rows) {
    int paired = 0;
    for (Row& ip : rows) {
        std::string base = ip.name;
        if (base.size() > 5 && base.compare(base.size() - 5, 5, "_ISfs") == 0)
            base.replace(base.size() - 5, 5, "_Sfs");
        else if (base.size() > 2 && base.compare(base.size() - 2, 2, "_I") == 0)
            base.resize(base.size() - 2);
        else
            continue;
        for (const Row& o : rows) {
            if (o.name != base || o.args.size() != ip.args.size() + 1 || o.args.back().role != Role::Out) continue;
            bool same = ip.args.back().role == Role::InOut && o.args.back().type == ip.args.back().type &&
                        o.args[o.args.size() - 2].type == ip.args.back().type;
            for (std::size_t i = 0; i + 1 < ip.args.size(); ++i) same = same && o.args[i].type == ip.args[i].type;
            if (same) {
                ip.twin = &o;
                ++paired;
            }
        }
    }
    return paired;
}

// In place equals out of place, and so does the out-of-place form with its
// destination on its last source.
inline void checkTwins(const Row& ip) {
    const Row& o = *ip.twin;
    const Cases cs = valueCases(o, true);
    const std::size_t last = o.args.size() - 2, dst = o.args.size() - 1;
    int k = 0;
    for (const Vals& v : cs.good) {
        for (Draw d : {Draw::Ordinary, Draw::Mixed}) {
            std::mt19937_64 g(seedOf(o.name) + 7919u * unsigned(k++));
            const auto data = drawArgs(o, 70, g, d);
            std::vector<std::vector<unsigned char>> ipData(data.begin(), data.end() - 1);
            for (int n : lengths()) {
                if (n < o.minLen) continue;
                Frame fo(o, n, data, 0, n);
                const ZvpStatus so = fo.run(n, v);
                if (so < 0 || !fo.intact()) {
                    ZVP_SHAPE_FAIL("twins", o) << "length " << n << describe(v, o) << ": status " << so
                                               << (so < 0 ? " for accepted values" : ", guards or sources changed");
                    return;
                }
                const auto want = fo.written();
                Frame fi(ip, n, ipData, 0, n + 1);
                const ZvpStatus si = fi.run(n, v);
                const auto got = fi.written();
                if (si != so || got.size() != want.size() ||
                    !sameValues(o.args[dst].type, got.data(), want.data(), want.size()) || !fi.intact()) {
                    ZVP_SHAPE_FAIL("twins", ip) << "differs from " << o.name << " at length " << n << describe(v, o)
                                                << ", status " << si << " vs " << so;
                    return;
                }
                if (o.flags & kNoAlias) continue;
                Frame fa(o, n, data, 0, n + 2);
                fa.ptr[dst] = fa.ptr[last];
                const ZvpStatus sa = fa.run(n, v);
                if (sa != so || !sameValues(o.args[last].type, fa.buf[last]->data(), want.data(), want.size()) || !fa.intact(last)) {
                    ZVP_SHAPE_FAIL("twins", o) << "with the destination on its last source differs at length " << n
                                               << describe(v, o) << ", status " << sa << " vs " << so;
                    return;
                }
            }
        }
    }
}

// ---- singles -----------------------------------------------------------------------

// n elements at once, at misaligned pointers, equal n calls of one element;
// the status is the first warning any element raised.
inline void checkSingles(const Row& r) {
    const Cases cs = valueCases(r, true);
    constexpr int N = 70;
    int k = 0;
    for (const Vals& v : cs.good) {
        for (Draw d : {Draw::Ordinary, Draw::Mixed}) {
            std::mt19937_64 g(seedOf(r.name) + 104729u * unsigned(k++));
            const auto data = drawArgs(r, N, g, d);
            std::vector<std::vector<unsigned char>> one(N);
            std::vector<ZvpStatus> st(N);
            for (int i = 0; i < N; ++i) {
                Frame f(r, 1, data, i);
                st[i] = f.run(1, v);
                one[i] = f.written();
                if (st[i] < 0) {
                    ZVP_SHAPE_FAIL("singles", r) << "status " << st[i] << " for accepted values" << describe(v, r);
                    return;
                }
            }
            for (int n : lengths()) {
                Frame f(r, n, data, 0, n);
                const ZvpStatus s = f.run(n, v);
                ZvpStatus want = zvpStsNoErr;
                for (int i = 0; i < n && want == zvpStsNoErr; ++i) want = st[i];
                // written() concatenates per argument: element i of argument a
                // comes from the a-th destination part of one[i].
                std::vector<unsigned char> expect;
                std::size_t inOne = 0;
                for (const Arg& a : r.args) {
                    if (a.role == Role::In) continue;
                    for (int i = 0; i < n; ++i) expect.insert(expect.end(), one[i].begin() + inOne, one[i].begin() + inOne + a.type->size);
                    inOne += a.type->size;
                }
                const auto got = f.written();
                bool same = s == want && f.intact() && got.size() == expect.size();
                std::size_t off = 0;
                for (const Arg& a : r.args) {
                    if (a.role == Role::In || !same) continue;
                    const std::size_t bytes = std::size_t(n) * a.type->size;
                    same = sameValues(a.type, got.data() + off, expect.data() + off, bytes);
                    off += bytes;
                }
                if (!same) {
                    ZVP_SHAPE_FAIL("singles", r) << "length " << n << describe(v, r) << ": status " << s << ", expected "
                                                 << want << (f.intact() ? ", or values differ from one-element calls"
                                                                        : ", guards or sources changed");
                    return;
                }
            }
        }
    }
}

// ---- rounding ----------------------------------------------------------------------

// Under each rounding mode with flush-to-zero and denormals-are-zero set,
// integer results equal those under the default mode; every export hands
// the caller's control word back unchanged.
inline void checkRounding(const Row& r) {
    const Cases cs = valueCases(r, false);
    const bool integer = r.integerResult();
    const unsigned saved = _mm_getcsr();
    int k = 0;
    for (const Vals& v : cs.good) {
        if (k > 40) break;
        std::mt19937_64 g(seedOf(r.name) + 31u * unsigned(k++));
        for (int n : {3, 70}) {
            const auto data = drawArgs(r, n, g, Draw::Mixed);
            Frame f0(r, n, data);
            const ZvpStatus s0 = f0.run(n, v);
            for (int rc : {FE_TONEAREST, FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}) {
                Frame f(r, n, data);
                std::fesetround(rc);
                _mm_setcsr(_mm_getcsr() | 0x8040u);  // flush to zero, denormals are zero
                const unsigned want = _mm_getcsr();
                const ZvpStatus s = f.run(n, v);
                const unsigned after = _mm_getcsr();
                const int rcAfter = std::fegetround();
                _mm_setcsr(saved);
                std::fesetround(FE_TONEAREST);
                if ((after & ~0x3Fu) != (want & ~0x3Fu) || rcAfter != rc) {
                    ZVP_SHAPE_FAIL("rounding", r) << "control word 0x" << std::hex << want << " came back as 0x" << after;
                    return;
                }
                if (integer && (s != s0 || f.written() != f0.written())) {
                    ZVP_SHAPE_FAIL("rounding", r) << "length " << n << describe(v, r) << " under rounding mode " << rc
                                                  << " with FTZ/DAZ differs from the default mode";
                    return;
                }
            }
        }
    }
}

// ---- long --------------------------------------------------------------------------

#ifdef ZVP_TEST_LONG_LENGTHS
// `bytes` of address space without the memory: sources read the zero page;
// destinations are one small memory file mapped over and over, followed by a
// distinct last chunk, so the end of the range can be seen to be written.
class LongRange {
public:
    static constexpr std::size_t kChunk = std::size_t(1) << 21;
    LongRange(std::size_t bytes, bool writable) : span_((bytes + kChunk - 1) / kChunk * kChunk) {
        void* p = mmap(nullptr, span_, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (p == MAP_FAILED) return;
        base_ = static_cast<unsigned char*>(p);
        if (!writable) {
            madvise(base_, span_, MADV_HUGEPAGE);  // huge zero pages: fewer faults
            return;
        }
        fd_ = memfd_create("zvp-long", 0);
        if (fd_ < 0 || ftruncate(fd_, kChunk) != 0) return;
        for (std::size_t off = 0; off + kChunk < span_; off += kChunk)
            if (mmap(base_ + off, kChunk, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, fd_, 0) == MAP_FAILED)
                return;
        if (mmap(tail(), kChunk, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) == MAP_FAILED) return;
        if (span_ > kChunk) std::memset(base_, kSentinelByte, kChunk);
        std::memset(tail(), kSentinelByte, kChunk);
    }
    ~LongRange() {
        if (base_) munmap(base_, span_);
        if (fd_ >= 0) close(fd_);
    }
    unsigned char* data() const { return base_; }
    unsigned char* tail() const { return base_ + span_ - kChunk; }
    bool untouched() const {
        for (const unsigned char* c : {base_, tail()})
            for (std::size_t i = 0; i < kChunk; ++i)
                if (c[i] != kSentinelByte) return false;
        return true;
    }

private:
    std::size_t span_;
    unsigned char* base_ = nullptr;
    int fd_ = -1;
};
#endif

// The whole length is processed: the last element of every destination holds
// what a one-element call on the same values gives. This holds for the forms
// that forward 2·len reals to the real form too: the doubled length is formed
// without overflow.
inline void checkLong(const Row& r) {
#ifdef ZVP_TEST_LONG_LENGTHS
    if (quickRun()) return;
    const Cases cs = valueCases(r, false);
    Vals v = cs.good[0];
    for (const Vals& c : cs.good)
        if (c.sf == 1) v = c;
    {
        const int len = 1 << 30;
        std::vector<std::unique_ptr<LongRange>> ranges;
        std::vector<void*> p;
        for (const Arg& a : r.args) {
            ranges.push_back(std::make_unique<LongRange>(std::size_t(len) * a.type->size, a.role != Role::In));
            ASSERT_NE(ranges.back()->data(), nullptr) << r.name;
            p.push_back(ranges.back()->data());
        }
        const ZvpStatus st = r.call(p.data(), len, v);
        // One element with the same values: zeros from the sources, the
        // sentinel from an in-place vector's last chunk.
        std::vector<std::vector<unsigned char>> data(r.args.size());
        for (std::size_t i = 0; i < r.args.size(); ++i)
            if (r.args[i].role != Role::Out) data[i].assign(r.args[i].type->size, r.args[i].role == Role::In ? 0 : kSentinelByte);
        Frame one(r, 1, data);
        one.run(1, v);
        const auto want = one.written();
        std::size_t off = 0;
        for (std::size_t i = 0; i < r.args.size(); ++i) {
            if (r.args[i].role == Role::In) continue;
            const std::size_t sz = r.args[i].type->size;
            const unsigned char* end = ranges[i]->data() + (std::size_t(len) - 1) * sz;
            if (st < 0 || std::memcmp(end, want.data() + off, sz) != 0) {
                ZVP_SHAPE_FAIL("long", r) << "length " << len << ": status " << st << ", last element of argument "
                                          << i << " is " << hex(end, sz) << ", one call gives " << hex(want.data() + off, sz);
                break;
            }
            off += sz;
        }
    }
#else
    (void)r;
#endif
}

// ---- oracle ------------------------------------------------------------------------

// Scale factors for the oracle: every one from -70 to 70 (every fourth in a
// quick run) with all of +-2 around each threshold of the scale paths, and
// far beyond on both sides.
inline std::vector<int> oracleScaleFactors() {
    std::vector<int> v = {INT_MIN, INT_MIN + 1, -100000, -1200, -1075, -200, 200, 1100, 100000, INT_MAX};
    for (int t : {-128, 126})
        for (int d = -2; d <= 2; ++d) v.push_back(t + d);
    for (int sf = -70; sf <= 70; ++sf) {
        bool near = false;
        for (int t : {0, 8, 15, 16, 30, 31, 32, 62, 63, 64})
            near = near || std::abs(std::abs(sf) - t) <= 2;
        if (near || !quickRun() || sf % 4 == 0) v.push_back(sf);
    }
    return v;
}

// Every element of the result equals the oracle's, on ordinary values,
// mixed ones and every combination of extremes over the sources; the first
// two constants at every scale factor, the others at one of each path.
inline void checkOracle(const Row& r) {
    const Cases cs = valueCases(r, false);
    std::vector<std::size_t> reads;
    for (std::size_t i = 0; i < r.args.size(); ++i)
        if (r.args[i].role != Role::Out) reads.push_back(i);
    // Every combination of extremes (at most 512 elements).
    std::vector<std::vector<unsigned char>> grid(r.args.size());
    int gridN = 1;
    for (std::size_t i : reads) gridN *= r.args[i].type->extremes;
    if (gridN <= 512) {
        for (std::size_t k = 0, stride = 1; k < reads.size(); ++k) {
            const Type& t = *r.args[reads[k]].type;
            grid[reads[k]].resize(std::size_t(gridN) * t.size);
            for (int e = 0; e < gridN; ++e) t.extreme(grid[reads[k]].data() + e * t.size, int(e / stride % t.extremes));
            stride *= t.extremes;
        }
    }
    int k = 0, constantsSeen = 0;
    for (Vals v : cs.good) {
        if (v.sf != 0) continue;
        const std::vector<int> sfs = !r.sf ? std::vector<int>{0} : constantsSeen++ < 2 * (r.mode ? 3 : 1) ? oracleScaleFactors() : scaleFactors(false);
        for (int sf : sfs) {
            v.sf = sf;
            if (r.refused(v) != zvpStsNoErr) continue;
            std::mt19937_64 g(seedOf(r.name) + 7717u * unsigned(k++));
            const int draws = r.sf ? 2 : 6;  // more values where no scale factors multiply them
            for (int d = 0; d <= draws; ++d) {
                const int n = d < draws ? 70 : gridN;
                if (d == draws && gridN > 512) continue;
                const auto data = d < draws ? drawArgs(r, n, g, d % 2 ? Draw::Mixed : Draw::Ordinary) : grid;
                Frame f(r, n, data);
                const ZvpStatus st = f.run(n, v);
                for (int i = 0; i < n; ++i) {
                    std::vector<std::vector<unsigned char>> e(r.args.size());
                    std::vector<void*> p;
                    for (std::size_t a = 0; a < r.args.size(); ++a) {
                        const std::size_t sz = r.args[a].type->size;
                        e[a].assign(sz, 0);
                        if (r.args[a].role != Role::Out) std::memcpy(e[a].data(), data[a].data() + i * sz, sz);
                        p.push_back(e[a].data());
                    }
                    r.oracle(p.data(), v);
                    for (std::size_t a = 0; a < r.args.size(); ++a) {
                        const Arg& t = r.args[a];
                        const unsigned char* got = f.buf[a]->data() + i * t.type->size;
                        if (st < 0 || (t.role != Role::In && !sameValues(t.type, got, e[a].data(), t.type->size))) {
                            std::string in;
                            for (std::size_t b : reads) in.append(" ").append(hex(data[b].data() + i * r.args[b].type->size, r.args[b].type->size));
                            ZVP_SHAPE_FAIL("oracle", r) << "element" << in << describe(v, r) << ": status " << st << ", got "
                                                        << hex(got, t.type->size) << ", expected " << hex(e[a].data(), t.type->size);
                            return;
                        }
                    }
                }
            }
        }
    }
}

// ---- The table ----------------------------------------------------------------------
//
// Each family lists its rows in its own file under tests/shapes/ and
// registers them once:
//   const bool registered = addShapeFamily("convert", [] { return std::vector<Row>{...}; });
// Every check of shapes_test.cpp then runs over them as test suite
// Families/Shapes.<check>/<family>. A row carries its oracle (withOracle)
// when it has one.
struct ShapeFamily {
    std::string name;
    std::vector<Row> (*rows)();
};
inline std::vector<ShapeFamily>& shapeFamilies() {
    static std::vector<ShapeFamily> f;
    return f;
}
inline bool addShapeFamily(std::string name, std::vector<Row> (*rows)()) {
    shapeFamilies().push_back({std::move(name), rows});
    return true;
}

}  // namespace zvp::test
