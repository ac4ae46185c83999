// Hilbert: the analytic signal of a real vector through a real DFT, a
// one-sided spectrum and an inverse complex DFT scaled by 1/L.
//
// The record holds the two single-precision DFTs of its length (both with
// the inverse scaled by 1/L) and the larger of their work sizes. A transform
// takes all its work memory in one allocation before it writes anything, so
// neither DFT can fail half way and leave a partly written destination.
#include <cstddef>
#include <cstdint>

#include "check.h"
#include "fpguard.h"
#include "p8/convert.h"
#include "p8/dft.h"
#include "p8/frame.h"
#include "p8/hilbert.h"
#include "workbuf.h"

namespace zvp::p8 {
namespace {

// Identity tags, one per pair of types.
constexpr Zvp32u kTag32f32fc = 1129136453u;
constexpr Zvp32u kTag16s32fc = 1129136454u;
constexpr Zvp32u kTag16s16sc = 1129136455u;

struct Record {
    Zvp32u tag;
    int length;
    int workSize;  // bytes, the larger of the two DFTs' work sizes
    int hint;
    ZvpsDFTSpec_C_32fc* cdft;
    ZvpsDFTSpec_R_32f* rdft;
};

template <class S>
Record* rec(S* p) { return reinterpret_cast<Record*>(p); }
template <class S>
const Record* rec(const S* p) { return reinterpret_cast<const Record*>(p); }

template <class S>
ZvpStatus initAlloc(S** pp, int length, ZvpHintAlgorithm hint, Zvp32u tag) {
    ZVP_CHECK_PTRS(pp);
    ZVP_CHECK_LENS(length);
    auto* r = reinterpret_cast<Record*>(p8::zvpsMalloc_8u(int(sizeof(Record))));
    if (!r) return zvpStsMemAllocErr;
    ZvpsDFTSpec_C_32fc* c = nullptr;
    ZvpsDFTSpec_R_32f* q = nullptr;
    ZvpStatus st = p8::zvpsDFTInitAlloc_C_32fc(&c, length, ZVP_FFT_DIV_INV_BY_N, hint);
    if (st < 0) {
        p8::zvpsFree(r);
        return st;
    }
    st = p8::zvpsDFTInitAlloc_R_32f(&q, length, ZVP_FFT_DIV_INV_BY_N, hint);
    int wc = 0, wr = 0;
    if (st >= 0) st = p8::zvpsDFTGetBufSize_C_32fc(c, &wc);
    if (st >= 0) st = p8::zvpsDFTGetBufSize_R_32f(q, &wr);
    if (st < 0) {
        if (q) p8::zvpsDFTFree_R_32f(q);
        p8::zvpsDFTFree_C_32fc(c);
        p8::zvpsFree(r);
        return st;
    }
    *r = {tag, length, wc > wr ? wc : wr, int(hint), c, q};
    *pp = reinterpret_cast<S*>(r);
    return zvpStsNoErr;
}

template <class S>
ZvpStatus release(S* p, Zvp32u tag) {
    ZVP_CHECK_PTRS(p);
    Record* r = rec(p);
    if (r->tag != tag) return zvpStsContextMatchErr;
    ZVP_RETURN_IF_ERROR(p8::zvpsDFTFree_C_32fc(r->cdft));
    r->cdft = nullptr;
    ZVP_RETURN_IF_ERROR(p8::zvpsDFTFree_R_32f(r->rdft));
    r->tag = 0;
    p8::zvpsFree(r);
    return zvpStsNoErr;
}

// Work memory of one call: `floats` single values for the caller's data
// followed, at a 64-byte boundary, by the DFTs' work.
struct Work {
    WorkBuffer mem;
    Zvp32f* data = nullptr;
    Zvp8u* dft = nullptr;
    bool take(std::int64_t floats, int dftBytes) {
        const std::int64_t dataBytes = (floats * 4 + 63) / 64 * 64;
        const std::int64_t total = dataBytes + (dftBytes > 0 ? dftBytes + 64 : 0);
        if (total == 0) return true;
        if (total > 0x7FFFFFFF || !mem.allocate(int(total))) return false;
        data = mem.as<Zvp32f>();
        dft = dftBytes > 0 ? alignUp(mem.get() + dataBytes, 64) : nullptr;
        return true;
    }
};

// The analytic signal of the L floats at src into dst (L complex values,
// not overlapping src), with the work memory already taken.
ZvpStatus analytic(const Record& r, const Zvp32f* src, Zvp32fc* dst, Zvp8u* work) {
    const int n = r.length;
    if (n <= 2) {
        for (int i = 0; i < n; ++i) dst[i] = {src[i], 0.0f};
        return zvpStsNoErr;
    }
    ZVP_RETURN_IF_ERROR(p8::zvpsDFTFwd_RToCCS_32f(src, &dst[0].re, r.rdft, work));
    // The CCS spectrum holds X[0] .. X[n/2] as complex values in place.
    const int h = (n + 1) / 2 - 1;
    for (int k = 1; k <= h; ++k) {
        dst[k].re += dst[k].re;
        dst[k].im += dst[k].im;
    }
    for (int k = n / 2 + 1; k < n; ++k) dst[k] = {0.0f, 0.0f};
    return p8::zvpsDFTInv_CToC_32fc(dst, dst, r.cdft, work);
}

template <class S>
const Record* checked(const void* src, const void* dst, const S* spec, Zvp32u tag, ZvpStatus& st) {
    if (anyNull(src, dst, spec)) {
        st = zvpStsNullPtrErr;
        return nullptr;
    }
    const Record* r = rec(spec);
    st = r->tag == tag ? zvpStsNoErr : zvpStsContextMatchErr;
    return st == zvpStsNoErr ? r : nullptr;
}

}  // namespace

ZvpStatus zvpsHilbertInitAlloc_32f32fc(ZvpsHilbertSpec_32f32fc** ppSpec, int length, ZvpHintAlgorithm hint) {
    return initAlloc(ppSpec, length, hint, kTag32f32fc);
}
ZvpStatus zvpsHilbertInitAlloc_16s32fc(ZvpsHilbertSpec_16s32fc** ppSpec, int length, ZvpHintAlgorithm hint) {
    return initAlloc(ppSpec, length, hint, kTag16s32fc);
}
ZvpStatus zvpsHilbertInitAlloc_16s16sc(ZvpsHilbertSpec_16s16sc** ppSpec, int length, ZvpHintAlgorithm hint) {
    return initAlloc(ppSpec, length, hint, kTag16s16sc);
}
ZvpStatus zvpsHilbertFree_32f32fc(ZvpsHilbertSpec_32f32fc* pSpec) { return release(pSpec, kTag32f32fc); }
ZvpStatus zvpsHilbertFree_16s32fc(ZvpsHilbertSpec_16s32fc* pSpec) { return release(pSpec, kTag16s32fc); }
ZvpStatus zvpsHilbertFree_16s16sc(ZvpsHilbertSpec_16s16sc* pSpec) { return release(pSpec, kTag16s16sc); }

ZvpStatus zvpsHilbert_32f32fc(const Zvp32f* pSrc, Zvp32fc* pDst, const ZvpsHilbertSpec_32f32fc* pSpec) {
    ZvpStatus st;
    const Record* r = checked(pSrc, pDst, pSpec, kTag32f32fc, st);
    if (!r) return st;
    Work w;
    if (!w.take(0, r->length > 2 ? r->workSize : 0)) return zvpStsMemAllocErr;
    return analytic(*r, pSrc, pDst, w.dft);
}

ZvpStatus zvpsHilbert_16s32fc(const Zvp16s* pSrc, Zvp32fc* pDst, const ZvpsHilbertSpec_16s32fc* pSpec) {
    ZvpStatus st;
    const Record* r = checked(pSrc, pDst, pSpec, kTag16s32fc, st);
    if (!r) return st;
    Work w;
    if (!w.take(r->length, r->length > 2 ? r->workSize : 0)) return zvpStsMemAllocErr;
    ZVP_RETURN_IF_ERROR(p8::zvpsConvert_16s32f(pSrc, w.data, r->length));
    return analytic(*r, w.data, pDst, w.dft);
}

// The float transform runs at the nearest rounding mode without flushing,
// so the integer result cannot depend on the caller's floating-point state.
ZvpStatus zvpsHilbert_16s16sc_Sfs(const Zvp16s* pSrc, Zvp16sc* pDst, const ZvpsHilbertSpec_16s16sc* pSpec,
                                  int scaleFactor) {
    ZvpStatus st;
    const Record* r = checked(pSrc, pDst, pSpec, kTag16s16sc, st);
    if (!r) return st;
    const int n = r->length;
    Work w;
    // L floats of input, then L complex results at a 64-byte boundary.
    const std::int64_t inFloats = (std::int64_t(n) + 15) / 16 * 16;
    if (!w.take(inFloats + 2 * std::int64_t(n), n > 2 ? r->workSize : 0)) return zvpStsMemAllocErr;
    MxcsrGuard guard(MxcsrGuard::kNearest);
    auto* out = reinterpret_cast<Zvp32fc*>(w.data + inFloats);
    ZVP_RETURN_IF_ERROR(p8::zvpsConvert_16s32f(pSrc, w.data, n));
    ZVP_RETURN_IF_ERROR(analytic(*r, w.data, out, w.dft));
    return p8::zvpsConvert_32f16s_Sfs(&out[0].re, &pDst[0].re, 2 * n, zvpRndNear, scaleFactor);
}

}  // namespace zvp::p8
