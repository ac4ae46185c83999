// Flip: destination[i] = source[len-1-i], whole elements (a complex element
// keeps its real/imaginary order). An out-of-place call with equal pointers
// runs in place.
#include <cstdint>
#include <type_traits>
#include <utility>

#include "forms.h"
#include "p8/copy.h"

namespace zvp::p8 {
namespace {

// Whole elements of T as unsigned words W, W = T for every element up to 8
// bytes; a 16-byte element is two 64-bit words that keep their order.
template <class T>
using Word = std::conditional_t<
    sizeof(T) == 1, std::uint8_t,
    std::conditional_t<sizeof(T) == 2, std::uint16_t,
                       std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>>>;

// One full vector of T, its elements in reverse order.
template <class T>
struct Reversed {
    using W = Word<T>;
    using F = Full<W>;
    static constexpr int V = 16 / int(sizeof(T));
    static typename F::R load(const T* p) { return F::load(reinterpret_cast<const W*>(p)); }
    static void store(T* p, typename F::R v) {
        if constexpr (sizeof(T) < 16) v = F::reverse(v);
        F::store(reinterpret_cast<W*>(p), v);
    }
};

template <class T>
void flipOutOfPlace(const T* s, T* d, std::ptrdiff_t len) {
    using X = Reversed<T>;
    constexpr int V = X::V;
    std::ptrdiff_t i = 0;
    for (; i + V <= len; i += V) X::store(d + i, X::load(s + len - i - V));
    for (; i < len; ++i) d[i] = s[len - 1 - i];
}

template <class T>
void flipInPlace(T* v, std::ptrdiff_t len) {
    using X = Reversed<T>;
    constexpr int V = X::V;
    std::ptrdiff_t i = 0, j = len - V;
    for (; i + V <= j; i += V, j -= V) {
        const auto a = X::load(v + i);
        const auto b = X::load(v + j);
        X::store(v + i, b);
        X::store(v + j, a);
    }
    // The middle part [i, j + V) is centred, so reversing it finishes the job.
    for (std::ptrdiff_t lo = i, hi = (j + V > i ? j + V : i) - 1; lo < hi; ++lo, --hi)
        std::swap(v[lo], v[hi]);
}

// Kernel policy of the unary forms; the forms hand complex elements over as
// their parts, so the element type is restored here.
template <class T>
struct Flip {
    using type = T;
    using P = form::Part<T>;
    template <class A>
    static ZvpStatus run(A s, P* d, std::ptrdiff_t n) {
        const std::ptrdiff_t len = n / form::kParts<T>;
        T* dd = reinterpret_cast<T*>(d);
        const T* ss = reinterpret_cast<const T*>(s.p);
        if (ss == dd) flipInPlace(dd, len);
        else flipOutOfPlace(ss, dd, len);
        return zvpStsNoErr;
    }
};

}  // namespace

#define ZVP_FLIP(T)                                                          \
    ZvpStatus zvpsFlip_##T(const Zvp##T* s, Zvp##T* d, int len) {            \
        return form::v<Flip<Zvp##T>>(s, d, len);                              \
    }                                                                        \
    ZvpStatus zvpsFlip_##T##_I(Zvp##T* v, int len) { return form::vI<Flip<Zvp##T>>(v, len); }
ZVP_FLIP(8u)
ZVP_FLIP(16u)
ZVP_FLIP(32f)
ZVP_FLIP(32fc)
ZVP_FLIP(64f)
ZVP_FLIP(64fc)
#undef ZVP_FLIP

}  // namespace zvp::p8
