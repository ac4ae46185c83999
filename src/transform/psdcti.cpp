// DCT specifications: the size queries, initialisation into caller memory or
// into allocated memory, release and the work-buffer size, for the forward
// and inverse records of 32f, 64f and 16s. A 16s record is a 64f record with
// its own tags: the integer transforms run in double precision.
#include <immintrin.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "check.h"
#include "p8/dct.h"
#include "p8/frame.h"
#include "psdct.h"
#include "workbuf.h"

namespace zvp::p8 {
namespace dct {

// ---- sizes --------------------------------------------------------------------

// Every reported size, the work size with its 64 bytes of slack included,
// must fit a signed 32-bit count.
constexpr std::int64_t kSizeLimit = INT_MAX - 64;

template <class T, class Inner>
ZvpStatus innerPlan(int n, int innerLen, ZvpHintAlgorithm hint, Plan& p) {
    int s = 0, i = 0, w = 0;
    ZVP_RETURN_IF_ERROR(Inner::sizes(innerLen, hint, &s, &i, &w));
    p.rot = kTablesOffset;
    p.inner = p.rot + 2 * rotHalfBytes<T>(n);
    p.spec = 64 + p.inner + s;
    p.init = i;
    p.work = vBytes<T>(n) + spectrumBytes<T>(n) + w;
    return zvpStsNoErr;
}

template <class T>
ZvpStatus planFor(int n, ZvpHintAlgorithm hint, Plan& p) {
    p = Plan{};
    p.method = methodFor(n);
    switch (p.method) {
        case Method::Small:
            p.spec = 64 + kTablesOffset;
            break;
        case Method::Direct:
            p.dirTab = kTablesOffset;
            p.spec = 64 + p.dirTab + up64(4 * std::int64_t(n) * std::int64_t(sizeof(T)));
            p.work = std::int64_t(n) * std::int64_t(sizeof(T));
            break;
        case Method::Fft:
            if (n > kFftMax) return zvpStsSizeErr;
            ZVP_RETURN_IF_ERROR((innerPlan<T, RealFft<T>>(n, __builtin_ctz(unsigned(n)), hint, p)));
            break;
        case Method::Conv:
            if (n > kConvMax) return zvpStsSizeErr;
            ZVP_RETURN_IF_ERROR((innerPlan<T, RealDft<T>>(n, n, hint, p)));
            break;
    }
    if (p.spec > kSizeLimit || p.init > kSizeLimit || p.work > kSizeLimit) return zvpStsSizeErr;
    return zvpStsNoErr;
}

template ZvpStatus planFor<float>(int, ZvpHintAlgorithm, Plan&);
template ZvpStatus planFor<double>(int, ZvpHintAlgorithm, Plan&);

// ---- tables -----------------------------------------------------------------------

template <class T>
void buildRotation(Record* r, const Plan& p, bool inverse) {
    const int n = r->len;
    T* c = at<T>(r, p.rot);
    T* s = at<T>(r, p.rot + rotHalfBytes<T>(n));
    // The factor as the transform would apply it: the stored single value
    // for 32f, the double one otherwise.
    const long double f1 = sizeof(T) == 4 ? static_cast<long double>(r->sqrt2Len)
                                          : static_cast<long double>(r->f1);
    const long double f = inverse ? f1 / 2 : f1;
    const long double step = 3.14159265358979323846264338327950288L / (2.0L * n);
    c[0] = s[0] = T(0);
    for (int k = 1; k < (n + 1) / 2; ++k) {
        c[k] = T(f * std::cos(step * k));
        s[k] = T(f * std::sin(step * k));
    }
    // k = N/2 has no partner: both directions multiply its one real value by
    // f1 cos(pi/4).
    if (n % 2 == 0) c[n / 2] = s[n / 2] = T(f1 * 0.707106781186547524400844362104849039L);
}

template <class T>
void buildDirect(Record* r, const Plan& p) {
    const std::int64_t m = 4 * std::int64_t(r->len);
    T* t = at<T>(r, p.dirTab);
    if constexpr (sizeof(T) == 4) {
        // The angle formed and its cosine taken in double, then rounded.
        const double step = 6.283185307179586 / double(m);
        for (std::int64_t i = 0; i < m; ++i) t[i] = float(std::cos(double(i) * step));
    } else {
        const long double step = 6.283185307179586476925286766559L / static_cast<long double>(m);
        for (std::int64_t i = 0; i < m; ++i) t[i] = double(std::cos(static_cast<long double>(i) * step));
    }
}

template void buildRotation<float>(Record*, const Plan&, bool);
template void buildRotation<double>(Record*, const Plan&, bool);
template void buildDirect<float>(Record*, const Plan&);
template void buildDirect<double>(Record*, const Plan&);

namespace {

// 1/sqrt(N) as the record keeps it: the processor's reciprocal square root
// estimate r of (float)N refined by one Newton step, 0.5 r (3 - N r r). The
// lane layer has no estimate instruction; this is its only use.
float rsqrtNewton(int n) {
    const float x = float(n);
    const float r = _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(x)));
    return 0.5f * r * (3.0f - x * r * r);
}

// The work bytes of a record. A 16s record adds the double-precision copy
// of the integer data ahead of the 64f method's own work; its small method
// keeps that copy on the stack and reports none.
template <class S>
std::int64_t workOf(const Plan& p, int n) {
    if (!kIs16s<S> || p.method == Method::Small) return p.work;
    return vBytes<double>(n) + p.work;
}

// The plan of a record kind and its work bytes.
template <class S>
ZvpStatus planKind(int n, ZvpHintAlgorithm hint, Plan& p, std::int64_t& work) {
    ZVP_RETURN_IF_ERROR(planFor<typename Kind<S>::T>(n, hint, p));
    work = workOf<S>(p, n);
    return work > kSizeLimit ? zvpStsSizeErr : zvpStsNoErr;
}

template <class S>
ZvpStatus getSize(int n, ZvpHintAlgorithm hint, int* pSpec, int* pInit, int* pWork) {
    if (n < 1) return zvpStsSizeErr;
    ZVP_CHECK_PTRS(pSpec, pInit, pWork);
    Plan p;
    std::int64_t work = 0;
    ZVP_RETURN_IF_ERROR(planKind<S>(n, hint, p, work));
    *pSpec = int(p.spec);
    *pInit = int(p.init);
    *pWork = work > 0 ? int(work + 64) : 0;
    return zvpStsNoErr;
}

template <class S>
ZvpStatus init(S** ppSpec, int n, ZvpHintAlgorithm hint, Zvp8u* pMem, Zvp8u* pInit) {
    using T = typename Kind<S>::T;
    if (n < 1) return zvpStsSizeErr;
    ZVP_CHECK_PTRS(ppSpec, pMem);
    Record* r = recordOf(alignUp(pMem, 64));
    std::memset(r, 0, sizeof(Record));
    r->len = n;
    r->hint = std::int32_t(hint);
    // The tag is written last: a record that fails on the way stays tagged 0.
    Plan p;
    std::int64_t work = 0;
    ZVP_RETURN_IF_ERROR(planKind<S>(n, hint, p, work));
    r->workSize = std::int32_t(work);
    if (p.method == Method::Small) {
        r->small = 1;
    } else {
        r->rsqrtLen = rsqrtNewton(n);
        r->sqrt2Len = float(1.4142135623730951 / std::sqrt(double(n)));
        r->f0 = 1.0 / std::sqrt(double(n));
        r->f1 = std::sqrt(2.0 / double(n));
        if (p.method == Method::Direct) {
            r->dirTabOff = std::int32_t(p.dirTab);
            buildDirect<T>(r, p);
        } else {
            r->rotOff = std::int32_t(p.rot);
            buildRotation<T>(r, p, Kind<S>::inverse);
            Zvp8u* handle = nullptr;
            Zvp8u* const mem = at<Zvp8u>(r, p.inner);
            const ZvpStatus st = p.method == Method::Fft
                                     ? RealFft<T>::init(__builtin_ctz(unsigned(n)), hint, mem, pInit, &handle)
                                     : RealDft<T>::init(n, hint, mem, pInit, &handle);
            ZVP_RETURN_IF_ERROR(st);
            r->innerOff = std::int32_t(handle - reinterpret_cast<Zvp8u*>(r));
            (p.method == Method::Fft ? r->fftMethod : r->convMethod) = 1;
        }
    }
    r->tag = Kind<S>::tag;
    *ppSpec = reinterpret_cast<S*>(r);
    return zvpStsNoErr;
}

template <class S>
ZvpStatus initAlloc(S** ppSpec, int n, ZvpHintAlgorithm hint) {
    if (n < 1) return zvpStsSizeErr;
    ZVP_CHECK_PTRS(ppSpec);
    int specBytes = 0, initBytes = 0, workBytes = 0;
    ZVP_RETURN_IF_ERROR(getSize<S>(n, hint, &specBytes, &initBytes, &workBytes));
    Zvp8u* const block = p8::zvpsMalloc_8u(specBytes);
    if (block == nullptr) return zvpStsMemAllocErr;
    ZvpStatus st = zvpStsMemAllocErr;
    S* spec = nullptr;
    {
        WorkBuffer scratch;  // Init's scratch, released whatever happens
        if (initBytes <= 0 || scratch.allocate(initBytes)) st = init<S>(&spec, n, hint, block, scratch.get());
    }
    if (st < 0) {
        p8::zvpsFree(block);
        return st;
    }
    Record* r = recordOf(spec);
    r->allocated = 1;
    r->baseOffset = std::int32_t(reinterpret_cast<Zvp8u*>(r) - block);
    *ppSpec = spec;
    return zvpStsNoErr;
}

template <class S>
ZvpStatus release(S* pSpec) {
    using T = typename Kind<S>::T;
    ZVP_CHECK_PTRS(pSpec);
    Record* r = recordOf(pSpec);
    if (r->tag != Kind<S>::tag) return zvpStsContextMatchErr;
    Zvp8u* const inner = at<Zvp8u>(r, r->innerOff);
    if (r->fftMethod) RealFft<T>::release(inner);
    if (r->convMethod) RealDft<T>::release(inner);
    r->tag = 0;
    if (r->allocated == 1) p8::zvpsFree(reinterpret_cast<Zvp8u*>(r) - r->baseOffset);
    return zvpStsNoErr;
}

template <class S>
ZvpStatus bufSize(const S* pSpec, int* pSize) {
    ZVP_CHECK_PTRS(pSpec, pSize);
    const Record* r = recordOf(pSpec);
    if (r->tag != Kind<S>::tag) return zvpStsContextMatchErr;
    *pSize = r->workSize > 0 ? r->workSize + 64 : 0;
    return zvpStsNoErr;
}

}  // namespace
}  // namespace dct

// ---- exports ------------------------------------------------------------------------------

#define ZVP_DCT_SPEC(DIR, TT)                                                                        \
    ZvpStatus zvpsDCT##DIR##GetSize_##TT(int len, ZvpHintAlgorithm hint, int* pSpecSize,             \
                                         int* pSpecBufferSize, int* pBufferSize) {                   \
        return dct::getSize<ZvpsDCT##DIR##Spec_##TT>(len, hint, pSpecSize, pSpecBufferSize,          \
                                                     pBufferSize);                                   \
    }                                                                                                \
    ZvpStatus zvpsDCT##DIR##Init_##TT(ZvpsDCT##DIR##Spec_##TT** ppDCTSpec, int len,                  \
                                      ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer) {     \
        return dct::init(ppDCTSpec, len, hint, pSpec, pSpecBuffer);                                  \
    }                                                                                                \
    ZvpStatus zvpsDCT##DIR##InitAlloc_##TT(ZvpsDCT##DIR##Spec_##TT** ppDCTSpec, int len,             \
                                           ZvpHintAlgorithm hint) {                                  \
        return dct::initAlloc(ppDCTSpec, len, hint);                                                 \
    }                                                                                                \
    ZvpStatus zvpsDCT##DIR##Free_##TT(ZvpsDCT##DIR##Spec_##TT* pDCTSpec) {                           \
        return dct::release(pDCTSpec);                                                               \
    }                                                                                                \
    ZvpStatus zvpsDCT##DIR##GetBufSize_##TT(const ZvpsDCT##DIR##Spec_##TT* pDCTSpec,                 \
                                            int* pBufferSize) {                                      \
        return dct::bufSize(pDCTSpec, pBufferSize);                                                  \
    }

ZVP_DCT_SPEC(Fwd, 32f)
ZVP_DCT_SPEC(Inv, 32f)
ZVP_DCT_SPEC(Fwd, 64f)
ZVP_DCT_SPEC(Inv, 64f)
ZVP_DCT_SPEC(Fwd, 16s)
ZVP_DCT_SPEC(Inv, 16s)

#undef ZVP_DCT_SPEC

}  // namespace zvp::p8
