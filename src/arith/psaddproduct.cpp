// AddProduct: srcDst[i] = srcDst[i] + first[i] * second[i]; AddProductC_32f
// with a constant second factor. Integer forms scale the exact sum
// R = srcDst + first * second as a whole by 2^-sf (the rule of every Sfs
// operation), through the kernel split of muldiv_kernel.h. Floating-point
// forms round the product and then the sum.
#include "forms.h"
#include "muldiv_float.h"
#include "muldiv_kernel.h"
#include "p8/copy.h"
#include "p8/muldiv.h"

namespace zvp::p8 {
namespace {

using muldiv::Limits;
using muldiv::R;

// R = c + a * b in 32-bit lanes (|R| <= 2^30 + 2^15), destination 16s.
template <class A, class B, class C>
struct AddProd16s {
    A a;
    B b;
    C c;
    template <class L>
    void lanes(std::ptrdiff_t i, R& r0, R& r1) const {
        using W = Rebind<L, std::int32_t>;
        const R x = a.template load<L>(i), y = b.template load<L>(i), z = c.template load<L>(i);
        r0 = W::add(L::mulWideLo(x, y), L::widenLo(z));
        r1 = W::add(L::mulWideHi(x, y), L::widenHi(z));
    }
};

// The even and the odd 32-bit lanes of v, sign-extended to 64 bits.
template <class L>
inline void evenOdd64(R v, R& e, R& o) {
    const R s = Full<std::int32_t>::evensThenOdds(v);
    e = L::widenLo(s);
    o = L::widenHi(s);
}

// R = c + a * b in 64-bit lanes, a and b 16s, c and the destination 32s.
template <class A, class B, class C>
struct AddProd16s32s {
    A a;
    B b;
    C c;
    template <class L>
    void lanes(std::ptrdiff_t i, R& e, R& o) const {
        using S = Rebind<L, Zvp16s>;
        using W = Rebind<L, std::int64_t>;
        R pe, po, se, so;
        evenOdd64<L>(S::mulWideLo(a.template load<S>(i), b.template load<S>(i)), pe, po);
        evenOdd64<L>(c.template load<L>(i), se, so);
        e = W::add(pe, se);
        o = W::add(po, so);
    }
};

// R = c + a * b in 64-bit lanes, all 32s (|R| <= 2^62 + 2^31).
template <class A, class B, class C>
struct AddProd32s {
    A a;
    B b;
    C c;
    template <class L>
    void lanes(std::ptrdiff_t i, R& e, R& o) const {
        using W = Rebind<L, std::int64_t>;
        const R x = a.template load<L>(i), y = b.template load<L>(i);
        R se, so;
        evenOdd64<L>(c.template load<L>(i), se, so);
        e = W::add(L::mulEven(x, y), se);
        o = W::add(L::mulOdd(x, y), so);
    }
};

// Thresholds Z (zero above) and N (bound at or below).
constexpr Limits k16s{31, -15};
constexpr Limits k16s32s{32, -32};
constexpr Limits k32s{63, -32};

using AddProd16sK = muldiv::Accumulate<Zvp16s, AddProd16s, muldiv::To16<Zvp16s>::LS, k16s>;
using AddProd16s32sK = muldiv::Accumulate<Zvp32s, AddProd16s32s, muldiv::Lanes64to32, k16s32s>;
using AddProd32sK = muldiv::Accumulate<Zvp32s, AddProd32s, muldiv::Lanes64to32, k32s>;

// ---- Floating point ----------------------------------------------------------------
// The product rounded, then the sum; the tail is the same lane code on one
// value (one complex pair).

template <class T, class A, class B>
struct AddProdReal {
    A a;
    B b;
    T* d;
    template <class L>
    typename L::R compute(std::ptrdiff_t i) const {
        return L::add(L::load(d + i), L::mul(a.template load<L>(i), b.template load<L>(i)));
    }
};

template <class T>
struct AddProdCplx {
    const T* a;
    const T* b;
    T* d;
    template <class L>
    typename L::R compute(std::ptrdiff_t i) const {
        return L::add(L::load(d + i), L::cmul(L::load(a + i), L::load(b + i)));
    }
};

// Kernel policies of the forms: the destination is the accumulator.
template <class T>
struct AddProdFloat {
    using type = T;
    template <class A, class B>
    static ZvpStatus run(A a, B b, T* d, std::ptrdiff_t n) {
        mulf::drive<Full<T>::N, 1>(AddProdReal<T, A, B>{a, b, d}, n);
        return zvpStsNoErr;
    }
};
template <class T>
struct AddProdComplex {
    using type = T;
    static ZvpStatus run(form::Vec<T> a, form::Vec<T> b, T* d, std::ptrdiff_t n) {
        mulf::drive<Full<T>::N, 2>(AddProdCplx<T>{a.p, b.p, d}, n);
        return zvpStsNoErr;
    }
};

}  // namespace

ZvpStatus zvpsAddProduct_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pSrcDst, int len,
                                 int scaleFactor) {
    return form::vv<AddProd16sK>(pSrc1, pSrc2, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsAddProduct_16s32s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32s* pSrcDst, int len,
                                    int scaleFactor) {
    return form::vv<AddProd16s32sK>(pSrc1, pSrc2, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsAddProduct_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pSrcDst, int len,
                                 int scaleFactor) {
    return form::vv<AddProd32sK>(pSrc1, pSrc2, pSrcDst, len, scaleFactor);
}

ZvpStatus zvpsAddProduct_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pSrcDst, int len) {
    return form::vv<AddProdFloat<Zvp32f>>(pSrc1, pSrc2, pSrcDst, len);
}
ZvpStatus zvpsAddProduct_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pSrcDst, int len) {
    return form::vv<AddProdFloat<Zvp64f>>(pSrc1, pSrc2, pSrcDst, len);
}
ZvpStatus zvpsAddProduct_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pSrcDst, int len) {
    return form::vv<AddProdComplex<Zvp32f>>(pSrc1, pSrc2, pSrcDst, len);
}
ZvpStatus zvpsAddProduct_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pSrcDst, int len) {
    return form::vv<AddProdComplex<Zvp64f>>(pSrc1, pSrc2, pSrcDst, len);
}
ZvpStatus zvpsAddProductC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pSrcDst, int len) {
    return form::vc<AddProdFloat<Zvp32f>>(pSrc, val, pSrcDst, len);
}

}  // namespace zvp::p8
