// Element-wise loops and complex products shared by the floating-point
// multiply, divide and multiply-accumulate operations, on the lane layer.
//
// The vector and the scalar forms of each operation perform the same IEEE
// operations in the same order (there is no fused multiply-add at this
// processor level), so both give the same bits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "lane.h"
#include "level.h"

namespace zvp::ZVP_LEVEL::mulf {

// The full lane type of a register type, so the helpers below read like
// arithmetic on registers.
Full<float> laneOf(__m128);
Full<double> laneOf(__m128d);
template <class R>
struct ByReg {
    using L = decltype(laneOf(R()));
};

template <class T>
using Vec = typename Full<T>::R;

template <class T>
inline Vec<T> load(const T* p) { return Full<T>::load(p); }
template <class T>
inline void store(T* p, Vec<T> v) { Full<T>::store(p, v); }
template <class T>
inline Vec<T> set1(T v) { return Full<T>::set1(v); }
template <class T>
inline Vec<T> zero(T) { return Full<T>::zero(); }
template <class R>
inline R mul(R a, R b) { return ByReg<R>::L::mul(a, b); }
template <class R>
inline R add(R a, R b) { return ByReg<R>::L::add(a, b); }
template <class R>
inline R div(R a, R b) { return ByReg<R>::L::div(a, b); }
template <class R>
inline R cmpeq(R a, R b) { return ByReg<R>::L::eq(a, b); }
template <class R>
inline R bitOr(R a, R b) { return ByReg<R>::L::or_(a, b); }
template <class R>
inline bool anyLane(R m) { return ByReg<R>::L::anyOf(m); }
template <class R>
inline R cmul(R a, R b) { return ByReg<R>::L::cmul(a, b); }

template <class T>
inline void cmulScalar(T ar, T ai, T br, T bi, T& re, T& im) {
    re = ar * br - ai * bi;
    im = ar * bi + ai * br;
}

// An operation that computes lanes of results which the driver stores:
// either compute<L>(i), giving values i .. i + L::N - 1 of the destination d
// in a lane of type L (the tail then runs the same code on U values at a
// time), or compute(i) for a full vector with tail(i) doing U values the
// scalar way.
template <class Op, class T>
concept ComputesLanes = requires(const Op& op) { op.template compute<Full<T>>(0); };
template <class Op>
concept Computes = requires(const Op& op) { op.compute(0); };

// Destinations of 8 MiB or more, 16-byte aligned, are written with
// streaming stores: with their sources such working sets no longer stay in
// the last-level cache, and the stores then need not read the destination in
// first (a third less memory traffic for two sources). Smaller ones keep
// ordinary stores, so a result that fits the caches stays there.
constexpr std::size_t kStreamBytes = std::size_t(1) << 23;

// Runs the operation over whole vectors of W values of T (four at a time
// while they last), then over the remaining values, U at a time. Counts are
// in values of T (a complex element is two). The operation is taken by
// value, so its pointers stay in registers across the stores, and returned
// with whatever it gathered. Operations without compute store their own
// results in op.vec(i). The loop is inlined into each export, so a call in
// cache costs one call, not two.
template <int W, int U, class Op>
[[gnu::always_inline]] inline Op drive(Op op, std::ptrdiff_t n) {
    std::ptrdiff_t i = 0;
    if constexpr (Computes<Op> || ComputesLanes<Op, std::remove_pointer_t<decltype(op.d)>>) {
        using T = std::remove_pointer_t<decltype(op.d)>;
        using F = Full<T>;
        static_assert(F::N == W);
        const auto at = [&](std::ptrdiff_t k) {
            if constexpr (ComputesLanes<Op, T>) return op.template compute<F>(k);
            else return op.compute(k);
        };
        const auto body = [&](auto put) {
            for (; i + 4 * W <= n; i += 4 * W) {  // all loads of a step before its stores
                const auto v0 = at(i), v1 = at(i + W);
                const auto v2 = at(i + 2 * W), v3 = at(i + 3 * W);
                put(i, v0);
                put(i + W, v1);
                put(i + 2 * W, v2);
                put(i + 3 * W, v3);
            }
            for (; i + W <= n; i += W) put(i, at(i));
        };
        if (std::size_t(n) * sizeof(T) >= kStreamBytes && alignedFull(op.d)) {
            body([&](std::ptrdiff_t k, auto v) { F::stream(op.d + k, v); });
            _mm_sfence();
        } else {
            body([&](std::ptrdiff_t k, auto v) { F::store(op.d + k, v); });
        }
        if constexpr (ComputesLanes<Op, T>) {
            using S = Lanes<T, U>;
            for (; i < n; i += U) S::store(op.d + i, op.template compute<S>(i));
        } else {
            for (; i < n; i += U) op.tail(i);
        }
    } else {
        for (; i + 4 * W <= n; i += 4 * W) {
            op.vec(i);
            op.vec(i + W);
            op.vec(i + 2 * W);
            op.vec(i + 3 * W);
        }
        for (; i + W <= n; i += W) op.vec(i);
        for (; i < n; i += U) op.tail(i);
    }
    return op;
}

}  // namespace zvp::ZVP_LEVEL::mulf
