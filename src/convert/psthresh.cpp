// Threshold, Threshold_LT/_GT, _LTAbs/_GTAbs, _LTVal/_GTVal and
// _LTValGTVal. Real forms are one compare-and-select per lane: LT is
// max(level, x) and GT min(level, x) with the level as the first operand, so
// a NaN element (or level) passes x through exactly as "x < level ? level :
// x" does; the others blend the replacement in where the compare holds.
// Complex forms compare magnitudes and run through thresh_cplx.h.
#include <cstring>
#include <type_traits>

#include "forms.h"
#include "fpguard.h"
#include "p8/threshold.h"
#include "thresh_cplx.h"

namespace zvp::p8 {
namespace {

template <class T>
using Reg = typename Full<T>::R;

// ---- Real rules (one lane op each) -------------------------------------------

template <class T, bool Below>
struct Level {
    Reg<T> lv;
    explicit Level(T l) : lv(Full<T>::set1(l)) {}
    template <class L>
    typename L::R apply(typename L::R x) const { return Below ? L::max(lv, x) : L::min(lv, x); }
};

// |x| against the level; a replaced element gets the level with x's sign.
template <class T, bool Below>
struct Abs {
    Reg<T> lv, nlv;
    explicit Abs(T l) {
        if constexpr (std::is_floating_point_v<T>) lv = Full<T>::abs(Full<T>::set1(l));  // -0 as +0
        else lv = Full<T>::set1(l), nlv = Full<T>::set1(T(-l));
    }
    template <class L>
    typename L::R apply(typename L::R x) const {
        if constexpr (std::is_floating_point_v<T>) {
            const auto ax = L::abs(x);
            const auto m = Below ? L::lt(ax, lv) : L::gt(ax, lv);
            return L::blend(x, L::or_(lv, L::andnot(ax, x)), m);  // andnot: x's sign bit
        } else if constexpr (Below) {
            // -level < x < level; the level has x's sign (+level for 0).
            return L::blend(x, L::selectSign(lv, nlv, x), L::and_(L::lt(x, lv), L::gt(x, nlv)));
        } else {
            return L::blend(L::blend(x, lv, L::gt(x, lv)), nlv, L::lt(x, nlv));
        }
    }
};

template <class T, bool Below>
struct Val {
    Reg<T> lv, vv;
    Val(T l, T v) : lv(Full<T>::set1(l)), vv(Full<T>::set1(v)) {}
    template <class L>
    typename L::R apply(typename L::R x) const { return L::blend(x, vv, Below ? L::lt(x, lv) : L::gt(x, lv)); }
};

template <class T>
struct ValVal {
    Reg<T> llt, vlt, lgt, vgt;
    ValVal(T a, T b, T c, T d) : llt(Full<T>::set1(a)), vlt(Full<T>::set1(b)), lgt(Full<T>::set1(c)), vgt(Full<T>::set1(d)) {}
    template <class L>
    typename L::R apply(typename L::R x) const {
        return L::blend(L::blend(x, vlt, L::lt(x, llt)), vgt, L::gt(x, lgt));
    }
};

// Float compares raise the invalid flag on NaN; a caller who unmasked it
// gets the call run with every exception masked (and its word back).
inline bool exceptionsMasked() {
    return (_mm_getcsr() & MxcsrGuard::kMaskAll) == MxcsrGuard::kMaskAll;  // a read only
}
template <class T, class Op>
void mapReal(form::Vec<T> s, T* d, std::ptrdiff_t n, Op op) {
    if constexpr (std::is_floating_point_v<T>) {
        if (!exceptionsMasked()) {
            const MxcsrGuard masked(MxcsrGuard::Bits{0, MxcsrGuard::kMaskAll});
            form::map(s, d, n, op);
            return;
        }
    }
    form::map(s, d, n, op);
}

// ---- Checks ------------------------------------------------------------------------

inline bool badRelOp(ZvpCmpOp op) { return op != zvpCmpLess && op != zvpCmpGreater; }
template <class T>
inline bool negative(T level) { return level < T(0); }  // NaN and -0 are not

// ---- Kernel policies for the forms -------------------------------------------------

template <class T, bool Below>
struct RealLevel {
    using type = T;
    static ZvpStatus run(form::Vec<T> s, T* d, std::ptrdiff_t n, T level) {
        mapReal(s, d, n, Level<T, Below>(level));
        return zvpStsNoErr;
    }
};

template <class T>
struct RealThreshold {
    using type = T;
    static ZvpStatus check(T, ZvpCmpOp op) { return badRelOp(op) ? zvpStsBadArgErr : zvpStsNoErr; }
    static ZvpStatus run(form::Vec<T> s, T* d, std::ptrdiff_t n, T level, ZvpCmpOp op) {
        return op == zvpCmpLess ? RealLevel<T, true>::run(s, d, n, level) : RealLevel<T, false>::run(s, d, n, level);
    }
};

template <class T, bool Below>
struct RealAbs {
    using type = T;
    static ZvpStatus check(T level) { return negative(level) ? zvpStsThreshNegLevelErr : zvpStsNoErr; }
    static ZvpStatus run(form::Vec<T> s, T* d, std::ptrdiff_t n, T level) {
        mapReal(s, d, n, Abs<T, Below>(level));
        return zvpStsNoErr;
    }
};

template <class T, bool Below>
struct RealVal {
    using type = T;
    static ZvpStatus run(form::Vec<T> s, T* d, std::ptrdiff_t n, T level, T value) {
        mapReal(s, d, n, Val<T, Below>(level, value));
        return zvpStsNoErr;
    }
};

template <class T>
struct RealValVal {
    using type = T;
    static ZvpStatus check(T lLT, T, T lGT, T) { return lLT > lGT ? zvpStsThresholdErr : zvpStsNoErr; }
    static ZvpStatus run(form::Vec<T> s, T* d, std::ptrdiff_t n, T lLT, T vLT, T lGT, T vGT) {
        mapReal(s, d, n, ValVal<T>(lLT, vLT, lGT, vGT));
        return zvpStsNoErr;
    }
};

// Complex level forms. Level 0: GT writes zeros, LT copies the source.
template <class P, bool Below>
struct CplxLevel {
    using type = P;
    static ZvpStatus check(P level) { return negative(level) ? zvpStsThreshNegLevelErr : zvpStsNoErr; }
    static ZvpStatus run(form::Vec<P> s, P* d, std::ptrdiff_t n, P level) {
        if (level == P(0)) {
            if constexpr (Below) {
                if (s.p != d) std::memmove(d, s.p, std::size_t(n) * sizeof(P));
            } else {
                std::memset(d, 0, std::size_t(n) * sizeof(P));
            }
            return zvpStsNoErr;
        }
        const MxcsrGuard word(thresh::kComplexWord);
        thresh::runElements(s, d, n, thresh::Scale<P, Below>(double(level)));
        return zvpStsNoErr;
    }
};

template <class P>
struct CplxThreshold {
    using type = P;
    static ZvpStatus check(P level, ZvpCmpOp op) {
        if (badRelOp(op)) return zvpStsBadArgErr;
        return negative(level) ? zvpStsThreshNegLevelErr : zvpStsNoErr;
    }
    static ZvpStatus run(form::Vec<P> s, P* d, std::ptrdiff_t n, P level, ZvpCmpOp op) {
        return op == zvpCmpLess ? CplxLevel<P, true>::run(s, d, n, level) : CplxLevel<P, false>::run(s, d, n, level);
    }
};

template <class P, bool Below>
struct CplxVal {
    using type = P;
    template <class C>
    static ZvpStatus check(P level, C) { return negative(level) ? zvpStsThreshNegLevelErr : zvpStsNoErr; }
    template <class C>
    static ZvpStatus run(form::Vec<P> s, P* d, std::ptrdiff_t n, P level, C value) {
        const MxcsrGuard word(thresh::kComplexWord);
        thresh::runElements(s, d, n, thresh::Value<P, Below>(double(level)), Full<P>::pair(value.re, value.im));
        return zvpStsNoErr;
    }
};

template <class T> using RealLT = RealLevel<T, true>;
template <class T> using RealGT = RealLevel<T, false>;
template <class T> using AbsLT = RealAbs<T, true>;
template <class T> using AbsGT = RealAbs<T, false>;
template <class T> using ValLT = RealVal<T, true>;
template <class T> using ValGT = RealVal<T, false>;
template <class P> using CplxLT = CplxLevel<P, true>;
template <class P> using CplxGT = CplxLevel<P, false>;
template <class P> using CplxValLT = CplxVal<P, true>;
template <class P> using CplxValGT = CplxVal<P, false>;

}  // namespace

// ---- Exports -------------------------------------------------------------------------

#define ZVP_PAIR(Name, T, K, Args, Pass)                                                              \
    ZvpStatus zvpsThreshold_##Name##_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len ZVP_UNPAREN Args) { \
        return form::v<K>(pSrc, pDst, len ZVP_UNPAREN Pass);                                          \
    }                                                                                                 \
    ZvpStatus zvpsThreshold_##Name##_##T##_I(Zvp##T* pSrcDst, int len ZVP_UNPAREN Args) {             \
        return form::vI<K>(pSrcDst, len ZVP_UNPAREN Pass);                                            \
    }
#define ZVP_UNPAREN(...) __VA_ARGS__

// Threshold (with relOp) has no operation name after the underscore.
#define ZVP_THRESHOLD(T, K, L)                                                                         \
    ZvpStatus zvpsThreshold_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len, L level, ZvpCmpOp relOp) {  \
        return form::v<K>(pSrc, pDst, len, level, relOp);                                              \
    }                                                                                                  \
    ZvpStatus zvpsThreshold_##T##_I(Zvp##T* pSrcDst, int len, L level, ZvpCmpOp relOp) {               \
        return form::vI<K>(pSrcDst, len, level, relOp);                                                \
    }
ZVP_THRESHOLD(16s, RealThreshold<Zvp16s>, Zvp16s)
ZVP_THRESHOLD(32f, RealThreshold<Zvp32f>, Zvp32f)
ZVP_THRESHOLD(64f, RealThreshold<Zvp64f>, Zvp64f)
ZVP_THRESHOLD(16sc, CplxThreshold<Zvp16s>, Zvp16s)
ZVP_THRESHOLD(32fc, CplxThreshold<Zvp32f>, Zvp32f)
ZVP_THRESHOLD(64fc, CplxThreshold<Zvp64f>, Zvp64f)
#undef ZVP_THRESHOLD

#define ZVP_REAL(T)                                                                                   \
    ZVP_PAIR(LT, T, RealLT<Zvp##T>, (, Zvp##T level), (, level))                          \
    ZVP_PAIR(GT, T, RealGT<Zvp##T>, (, Zvp##T level), (, level))
ZVP_REAL(16s)
ZVP_REAL(32s)
ZVP_REAL(32f)
ZVP_REAL(64f)
#undef ZVP_REAL

#define ZVP_ABS(T)                                                                                    \
    ZVP_PAIR(LTAbs, T, AbsLT<Zvp##T>, (, Zvp##T level), (, level))                         \
    ZVP_PAIR(GTAbs, T, AbsGT<Zvp##T>, (, Zvp##T level), (, level))
ZVP_ABS(16s)
ZVP_ABS(32s)
ZVP_ABS(32f)
ZVP_ABS(64f)
#undef ZVP_ABS

#define ZVP_VAL(T)                                                                                    \
    ZVP_PAIR(LTVal, T, ValLT<Zvp##T>, (, Zvp##T level, Zvp##T value), (, level, value))    \
    ZVP_PAIR(GTVal, T, ValGT<Zvp##T>, (, Zvp##T level, Zvp##T value), (, level, value))
ZVP_VAL(16s)
ZVP_VAL(32f)
ZVP_VAL(64f)
#undef ZVP_VAL

#define ZVP_VALVAL(T)                                                                                 \
    ZVP_PAIR(LTValGTVal, T, RealValVal<Zvp##T>,                                                       \
             (, Zvp##T levelLT, Zvp##T valueLT, Zvp##T levelGT, Zvp##T valueGT),                     \
             (, levelLT, valueLT, levelGT, valueGT))
ZVP_VALVAL(16s)
ZVP_VALVAL(32s)
ZVP_VALVAL(32f)
ZVP_VALVAL(64f)
#undef ZVP_VALVAL

#define ZVP_CPLX(C, P)                                                                                \
    ZVP_PAIR(LT, C, CplxLT<Zvp##P>, (, Zvp##P level), (, level))                          \
    ZVP_PAIR(GT, C, CplxGT<Zvp##P>, (, Zvp##P level), (, level))                         \
    ZVP_PAIR(LTVal, C, CplxValLT<Zvp##P>, (, Zvp##P level, Zvp##C value), (, level, value))    \
    ZVP_PAIR(GTVal, C, CplxValGT<Zvp##P>, (, Zvp##P level, Zvp##C value), (, level, value))
ZVP_CPLX(16sc, 16s)
ZVP_CPLX(32fc, 32f)
ZVP_CPLX(64fc, 64f)
#undef ZVP_CPLX

#undef ZVP_UNPAREN
#undef ZVP_PAIR

}  // namespace zvp::p8
