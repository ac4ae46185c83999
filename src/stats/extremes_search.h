// The search behind Max, Min, MinMax, their Abs and Indx forms and MaxOrder.
//
// A search runs over keys of the elements (the element itself, its
// saturated magnitude, or the bits MaxOrder compares):
//   reduce      the extreme keys, several vectors in flight; an extreme is
//               an idempotent reduction, so the last partial vector is
//               covered by one load that overlaps the previous ones;
//   firstEq     the first index whose key equals a value;
//   search      the extremes with their first indices, a block at a time:
//               a block's extreme is found first, and only when it is
//               strictly beyond the extreme so far is its first position
//               located, in the block just read and still in cache.
// Every scan is exact, so the results do not depend on the alignment of the
// source or on how its length splits into vectors and blocks.
//
// Floats: the accumulators start at -inf (maximum) or +inf (minimum) and
// take x only where x is strictly beyond them, so a NaN element never
// enters. A vector of NaNs only leaves the start value, which no element
// equals; the callers then report the first element at index 0.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>

#include "check.h"
#include "fpguard.h"
#include "lane.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::extremes {

// ---- Keys ---------------------------------------------------------------------

struct Plain {
    template <class L>
    static typename L::R key(typename L::R v) { return v; }
};

// |x| saturated to the type's range: -32768 gives 32767, -2^31 gives 2^31 - 1.
struct SatAbs {
    template <class L>
    static typename L::R key(typename L::R v) {
        if constexpr (sizeof(typename L::type) == 2) {
            return L::max(v, L::subs(L::zero(), v));
        } else {
            // |x| wraps only for -2^31, which stays 0x80000000; subtracting
            // the top bit turns exactly that lane into 0x7FFFFFFF.
            const auto a = L::abs(v);
            return L::sub(a, Rebind<L, std::uint32_t>::template shr<31>(a));
        }
    }
};

// ---- Directions ---------------------------------------------------------------

struct MaxOp {
    template <class T>
    static constexpr T start() {
        if constexpr (std::is_floating_point_v<T>) return -std::numeric_limits<T>::infinity();
        else return std::numeric_limits<T>::lowest();
    }
    // x where it is strictly greater than acc, else acc (a NaN x keeps acc).
    template <class L>
    static typename L::R step(typename L::R x, typename L::R acc) { return L::max(x, acc); }
    template <class T>
    static bool beyond(T a, T b) { return a > b; }
};

struct MinOp {
    template <class T>
    static constexpr T start() {
        if constexpr (std::is_floating_point_v<T>) return std::numeric_limits<T>::infinity();
        else return std::numeric_limits<T>::max();
    }
    template <class L>
    static typename L::R step(typename L::R x, typename L::R acc) { return L::min(x, acc); }
    template <class T>
    static bool beyond(T a, T b) { return a < b; }
};

template <class T>
struct Ext {
    T mn = MinOp::start<T>(), mx = MaxOp::start<T>();
};

// The smallest (kMin) and largest (kMax) key of p[0 .. n).
template <class T, class Key, bool kMin, bool kMax>
Ext<T> reduce(const T* p, std::ptrdiff_t n) {
    using F = Full<T>;
    using S = One<T>;
    using R = typename F::R;
    constexpr std::ptrdiff_t V = F::N;
    // Four vectors in flight, two a direction when both are searched (the
    // accumulators then fill half of i386's eight registers).
    constexpr int U = kMin && kMax ? 2 : 4;
    Ext<T> e;
    if (n < V) {
        auto lo = S::set1(e.mn), hi = S::set1(e.mx);
        for (std::ptrdiff_t i = 0; i < n; ++i) {
            const auto x = Key::template key<S>(S::load(p + i));
            if constexpr (kMin) lo = MinOp::step<S>(x, lo);
            if constexpr (kMax) hi = MaxOp::step<S>(x, hi);
        }
        e.mn = S::first(lo);
        e.mx = S::first(hi);
        return e;
    }
    R lo[U], hi[U];
    for (int u = 0; u < U; ++u) lo[u] = F::set1(e.mn), hi[u] = F::set1(e.mx);
    std::ptrdiff_t i = 0;
    for (; i + U * V <= n; i += U * V) {
        for (int u = 0; u < U; ++u) {
            const R x = Key::template key<F>(F::load(p + i + u * V));
            if constexpr (kMin) lo[u] = MinOp::step<F>(x, lo[u]);
            if constexpr (kMax) hi[u] = MaxOp::step<F>(x, hi[u]);
        }
    }
    for (; i + V <= n; i += V) {
        const R x = Key::template key<F>(F::load(p + i));
        if constexpr (kMin) lo[0] = MinOp::step<F>(x, lo[0]);
        if constexpr (kMax) hi[0] = MaxOp::step<F>(x, hi[0]);
    }
    if (i < n) {
        const R x = Key::template key<F>(F::load(p + n - V));
        if constexpr (kMin) lo[1] = MinOp::step<F>(x, lo[1]);
        if constexpr (kMax) hi[1] = MaxOp::step<F>(x, hi[1]);
    }
    // The accumulators hold no NaN, so the order of combining is free.
    for (int u = 1; u < U; ++u) lo[0] = F::min(lo[0], lo[u]), hi[0] = F::max(hi[0], hi[u]);
    alignas(16) T t[2][V];
    F::storea(t[0], lo[0]);
    F::storea(t[1], hi[0]);
    for (std::ptrdiff_t k = 0; k < V; ++k) {
        if (MinOp::beyond(t[0][k], e.mn)) e.mn = t[0][k];
        if (MaxOp::beyond(t[1][k], e.mx)) e.mx = t[1][k];
    }
    return e;
}

// The first index of p[0 .. n) whose key equals v, or -1.
template <class T, class Key>
std::ptrdiff_t firstEq(const T* p, std::ptrdiff_t n, T v) {
    using F = Full<T>;
    using S = One<T>;
    constexpr std::ptrdiff_t V = F::N;
    if (n < V) {
        const auto t = S::set1(v);
        for (std::ptrdiff_t i = 0; i < n; ++i)
            if (S::anyOf(S::eq(Key::template key<S>(S::load(p + i)), t))) return i;
        return -1;
    }
    const auto t = F::set1(v);
    auto eq = [&](std::ptrdiff_t k) { return F::eq(Key::template key<F>(F::load(p + k)), t); };
    auto at = [&](std::ptrdiff_t k) {
        const auto m = eq(k);
        return F::anyOf(m) ? k + F::firstOf(m) : std::ptrdiff_t(-1);
    };
    // Four vectors a test; the vector loop below then finds the lane.
    std::ptrdiff_t i = 0;
    for (; i + 4 * V <= n; i += 4 * V)
        if (F::anyOf(F::or_(F::or_(eq(i), eq(i + V)), F::or_(eq(i + 2 * V), eq(i + 3 * V))))) break;
    for (; i + V <= n; i += V)
        if (const std::ptrdiff_t j = at(i); j >= 0) return j;
    // The last vector ends at n: its lanes below i were found unequal
    // already, so its first equal lane is the answer.
    return i < n ? at(n - V) : -1;
}

template <class T>
struct Found {
    Ext<T> e;
    std::ptrdiff_t imn = -1, imx = -1;  // -1: no element equals the extreme
};

// Elements per block of an index search: a block fits the first-level
// cache twice over, so its second scan reads from there.
template <class T>
constexpr std::ptrdiff_t kBlock = sizeof(T) == 8 ? 2048 : 4096;

// The extremes of the keys with their first indices. A block moves the
// result only when its extreme is strictly beyond the one so far (or none
// was found yet), so the first occurrence wins, as in a simple scan.
template <class T, class Key, bool kMin, bool kMax>
Found<T> search(const T* p, std::ptrdiff_t n) {
    Found<T> f;
    for (std::ptrdiff_t b = 0; b < n; b += kBlock<T>) {
        const std::ptrdiff_t m = std::min(kBlock<T>, n - b);
        const Ext<T> e = reduce<T, Key, kMin, kMax>(p + b, m);
        if constexpr (kMin) {
            if (f.imn < 0 || e.mn < f.e.mn) {
                const std::ptrdiff_t j = firstEq<T, Key>(p + b, m, e.mn);
                if (j >= 0) f.e.mn = e.mn, f.imn = b + j;
            }
        }
        if constexpr (kMax) {
            if (f.imx < 0 || e.mx > f.e.mx) {
                const std::ptrdiff_t j = firstEq<T, Key>(p + b, m, e.mx);
                if (j >= 0) f.e.mx = e.mx, f.imx = b + j;
            }
        }
    }
    return f;
}

// What a search reports for the extreme v found at index i (-1: none): the
// element at the index, which carries the sign of a zero and is a NaN for
// a vector of NaNs (reported at index 0); a magnitude is its own value.
template <class Key, class T>
T reported(const T* p, std::ptrdiff_t& i, T v) {
    if (i < 0) i = 0;
    if constexpr (std::is_same_v<Key, Plain>) return p[i];
    else return v;
}

// The value-only searches: the element reduction, and for floats one more
// scan when the extreme is a zero (for its sign) or the start value (for a
// vector of NaNs).
template <class T, bool kMin, bool kMax>
Ext<T> values(const T* p, std::ptrdiff_t n) {
    Ext<T> e = reduce<T, Plain, kMin, kMax>(p, n);
    if constexpr (std::is_floating_point_v<T>) {
        auto fix = [&](T& v, T start) {
            if (v != T(0) && v != start) return;
            std::ptrdiff_t i = firstEq<T, Plain>(p, n, v);
            v = reported<Plain>(p, i, v);
        };
        if constexpr (kMin) fix(e.mn, MinOp::start<T>());
        if constexpr (kMax) fix(e.mx, MaxOp::start<T>());
    }
    return e;
}

// ---- Export bodies --------------------------------------------------------------

// Float compares under the caller's denormals-are-zero mode would take a
// denormal for a zero, and an index or a count is an integer result that
// must not depend on that. The guard clears the mode for the call; it is
// taken only when the mode is on, since reading the control word is cheap
// and writing it is not.
template <class T>
class DenormalsKept {
public:
    DenormalsKept() {
        if (std::is_floating_point_v<T> && (_mm_getcsr() & MxcsrGuard::kFlushBits)) guard_.emplace(MxcsrGuard::kNearest);
    }

private:
    std::optional<MxcsrGuard> guard_;
};

// The extreme key (kMax: largest, else smallest) into *pv.
template <class T, class Key, bool kMax>
ZvpStatus findValue(const T* p, int len, T* pv) {
    ZVP_CHECK_PTRS(p, pv);
    ZVP_CHECK_LENS(len);
    const DenormalsKept<T> modes;
    Ext<T> e;
    if constexpr (std::is_same_v<Key, Plain>) e = values<T, !kMax, kMax>(p, len);
    else e = reduce<T, Key, !kMax, kMax>(p, len);
    *pv = kMax ? e.mx : e.mn;
    return zvpStsNoErr;
}

// The extreme key with its first index; with kOptional a null index pointer
// makes the call the value-only one, checks included.
template <class T, class Key, bool kMax, bool kOptional>
ZvpStatus findIndexed(const T* p, int len, T* pv, int* pi) {
    if constexpr (kOptional) {
        if (pi == nullptr) return findValue<T, Key, kMax>(p, len, pv);
    }
    ZVP_CHECK_PTRS(p, pv, pi);
    ZVP_CHECK_LENS(len);
    const DenormalsKept<T> modes;
    const Found<T> f = search<T, Key, !kMax, kMax>(p, len);
    std::ptrdiff_t i = kMax ? f.imx : f.imn;
    *pv = reported<Key>(p, i, kMax ? f.e.mx : f.e.mn);
    *pi = int(i);
    return zvpStsNoErr;
}

}  // namespace zvp::ZVP_LEVEL::extremes
