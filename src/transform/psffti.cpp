// FFT specifications of the complex types: size queries, building a record
// in caller memory or in allocated memory, release, and the twiddle and
// bit-reversal tables inside the record.
#include <cmath>
#include <cstring>

#include "check.h"
#include "fftbase.h"
#include "fftspec.h"
#include "scaleflag.h"
#include "fftvec.h"
#include "p8/fft.h"
#include "p8/frame.h"
#include "workbuf.h"

namespace zvp::ZVP_LEVEL::fft {
namespace {

template <class T>
struct PrecOf;
template <>
struct PrecOf<float> {
    static constexpr Prec value = Prec::Single;
};
template <>
struct PrecOf<double> {
    static constexpr Prec value = Prec::Double;
};

// Quarter-wave table of an n-point transform: b[k stride] = sin(2 pi k / n)
// for k = 0..n/4. Every root of the transform is read from it by symmetry.
template <class T>
struct BaseTable {
    const T* b;
    std::int64_t stride;
    std::int64_t n;
    int qbits;  // log2(n / 4)
    BaseTable(const T* table, std::int64_t tableStride, int order)
        : b(table), stride(tableStride), n(pow2(order)), qbits(order - 2) {}
    // Forward root exp(-2 pi i e / n) = (cos, -sin), e in [0, n).
    void root(std::int64_t e, T& re, T& im) const {
        const std::int64_t q4 = n / 4;
        const std::int64_t q = e >> qbits, r = e & (q4 - 1);
        const T a = b[r * stride], c = b[(q4 - r) * stride];
        // By quadrant q = 0 .. 3 the sine is a, c, -a, -c and the cosine c,
        // -a, -c, a: a selection and a sign, no branch on q.
        const bool odd = (q & 1) != 0;
        const T s = odd ? c : a, co = odd ? a : c;
        re = (q == 1 || q == 2) ? -co : co;
        im = q >= 2 ? s : -s;
    }
};

const float* fixedSin(float*) { return fixedSin32f(); }
const double* fixedSin(double*) { return fixedSin64f(); }

// The low `bits` bits of v in reverse order (bits in 0 .. 32).
std::uint32_t bitrev(std::uint32_t v, int bits) {
    v = ((v >> 1) & 0x55555555u) | ((v & 0x55555555u) << 1);
    v = ((v >> 2) & 0x33333333u) | ((v & 0x33333333u) << 2);
    v = ((v >> 4) & 0x0f0f0f0fu) | ((v & 0x0f0f0f0fu) << 4);
    v = ((v >> 8) & 0x00ff00ffu) | ((v & 0x00ff00ffu) << 8);
    v = (v >> 16) | (v << 16);
    return bits == 0 ? 0 : v >> (32 - bits);
}

// Roots of the exponents e0 + t de, t = 0 .. count - 1 (all below n): the
// real part to out[t os], the imaginary part to out[t os + imOff]. The run
// is cut where the quadrant changes, so each piece reads the table in one
// direction with fixed signs; the values are those of BaseTable::root.
template <class T>
void rootRun(const BaseTable<T>& base, std::int64_t e0, std::int64_t de, std::int64_t count, T* out,
             std::int64_t os, std::int64_t imOff) {
    const T* const b = base.b;
    const std::int64_t q4 = base.n / 4, st = base.stride;
    std::int64_t t = 0;
    while (t < count) {
        const std::int64_t e = e0 + t * de, q = e >> base.qbits;
        const std::int64_t last = e + (count - 1 - t) * de;
        const std::int64_t end =
            (last >> base.qbits) == q ? count : t + ((q + 1) * q4 - e + de - 1) / de;
        std::int64_t r = e - q * q4;
        T* o = out + t * os;
        const std::int64_t len = end - t;
        switch (q) {
            case 0:
                for (std::int64_t i = 0; i < len; ++i, r += de, o += os) {
                    o[0] = b[(q4 - r) * st];
                    o[imOff] = -b[r * st];
                }
                break;
            case 1:
                for (std::int64_t i = 0; i < len; ++i, r += de, o += os) {
                    o[0] = -b[r * st];
                    o[imOff] = -b[(q4 - r) * st];
                }
                break;
            case 2:
                for (std::int64_t i = 0; i < len; ++i, r += de, o += os) {
                    o[0] = -b[(q4 - r) * st];
                    o[imOff] = b[r * st];
                }
                break;
            default:
                for (std::int64_t i = 0; i < len; ++i, r += de, o += os) {
                    o[0] = b[r * st];
                    o[imOff] = b[(q4 - r) * st];
                }
                break;
        }
        t = end;
    }
}

// Twiddles of the passes of a 2^k-point engine (layout in fftengine.h): for
// group jg, leg d and lane l the root of exponent d (jg W + l) unit. Taken
// leg by leg and lane by lane, the exponents along jg form one run.
template <class T>
void buildEngineTwiddles(T* tw, int k, const BaseTable<T>& base) {
    constexpr int W = Vec<T>::N;
    const std::int64_t nk = pow2(k), f = base.n / nk;
    const PassPlan plan = passPlan(PrecOf<T>::value, k);
    std::int64_t L = pow2(plan.bits[0]);
    for (int i = 1; i < plan.count; ++i) {
        const std::int64_t r = pow2(plan.bits[i]);
        const std::int64_t u = nk / (r * L) * f;
        if (L / W < 8) {
            // runs too short to pay for their set-up
            for (std::int64_t jg = 0; jg < L / W; ++jg)
                for (int d = 1; d < r; ++d, tw += 2 * W)
                    for (int lane = 0; lane < W; ++lane)
                        base.root(d * (jg * W + lane) * u, tw[lane], tw[W + lane]);
            L *= r;
            continue;
        }
        for (int d = 1; d < r; ++d)
            for (int lane = 0; lane < W; ++lane)
                rootRun(base, d * lane * u, d * W * u, L / W, tw + 2 * W * (d - 1) + lane,
                        2 * W * (r - 1), W);
        tw += 2 * W * (r - 1) * (L / W);
        L *= r;
    }
}

// Twiddles of the column pass over 2^m points in 2^r-point rows, in the order
// the pass reads them (see columnPass in fftengine.h).
template <class T>
void buildColumnTwiddles(T* tw, int m, int r, const BaseTable<T>& base) {
    constexpr int W = Vec<T>::N;
    const std::int64_t n = pow2(m), R = pow2(r), f = base.n / n;
    const int phases = (m - r) / 4;
    // roots of the radix-4 pass st at row offset rr for the columns of one strip
    auto emit = [&](std::int64_t strip, int st, std::int64_t rr, int legs) {
        const std::int64_t unit = n / (4 * R * pow2(2 * st));
        for (std::int64_t cg = 0; cg < 64 / W; ++cg) {
            for (int l = 1; l <= legs; ++l)
                for (int lane = 0; lane < W; ++lane) {
                    const std::int64_t j = strip + cg * W + lane + R * rr;
                    base.root(l * j * unit * f, tw[2 * W * (l - 1) + lane], tw[2 * W * (l - 1) + W + lane]);
                }
            tw += 2 * W * legs;
        }
    };
    for (std::int64_t strip = 0; strip < R; strip += 64)
        for (int ph = 0; ph < phases; ++ph) {
            const std::int64_t s = pow2(4 * ph);
            const bool lastPh = ph == phases - 1;
            for (std::int64_t q = 0; q < s; ++q) {
                emit(strip, 2 * ph, q, 3);
                for (std::int64_t k = 0; k < 4; ++k) emit(strip, 2 * ph + 1, q + s * k, lastPh ? 1 : 3);
            }
        }
}

template <class T>
T* at(SpecHeader* h, std::int64_t off) {
    return reinterpret_cast<T*>(reinterpret_cast<unsigned char*>(h) + off);
}

void buildTileTables(SpecHeader* h, const Layout& L, int m) {
    auto* partner = at<std::int32_t>(h, L.bitRev);
    for (std::uint32_t t = 0; t < std::uint32_t(pow2(m - 12)); ++t)
        partner[t] = std::int32_t(bitrev(t, m - 12));
    auto* rev6 = at<std::uint8_t>(h, L.tileRev);
    for (std::uint32_t i = 0; i < 64; ++i) rev6[i] = std::uint8_t(bitrev(i, 6));
    h->bitRevOff = std::int32_t(L.bitRev);
    h->tileRevOff = std::int32_t(L.tileRev);
}

template <class T>
void buildTables(SpecHeader* h, int m, const BaseTable<T>& base) {
    constexpr Prec P = PrecOf<T>::value;
    constexpr int W = Vec<T>::N;
    const Layout L = layoutFor(P, m);
    // Where the first pass (butterflies of 2^lp points) puts butterfly k =
    // g W: 2^lp bitrev(k).
    auto placement = [&](std::int64_t off) {
        const int lp = passPlan(P, m).bits[0];
        auto* rev = at<std::int32_t>(h, off);
        for (std::int64_t g = 0; g < pow2(m - lp) / W; ++g)
            rev[g] = std::int32_t(bitrev(std::uint32_t(g * W), m - lp) << lp);
    };
    if (m < largeFrom(P)) {
        placement(L.bitRev);
        h->bitRevOff = std::int32_t(L.bitRev);
        buildEngineTwiddles(at<T>(h, L.twd), m, base);
        h->twdOff = std::int32_t(L.twd);
    } else {
        h->blkOrder = blockOrder(P, m);
        h->bufOrder = bufferOrder(P, m);
        buildTileTables(h, L, m);
        if (L.place) {
            placement(L.place);
            h->placeOff = std::int32_t(L.place);
        }
        if (L.stepOrder == 0) {
            buildEngineTwiddles(at<T>(h, L.twd), L.rowOrder, base);
            h->twdOff = std::int32_t(L.twd);
        } else {
            buildEngineTwiddles(at<T>(h, L.stepTwd), L.stepOrder - 4, base);
            buildColumnTwiddles(at<T>(h, L.stepCol), L.stepOrder, L.stepOrder - 4, base);
            h->stepTwdOff = std::int32_t(L.stepTwd);
            h->stepColOff = std::int32_t(L.stepCol);
        }
        buildColumnTwiddles(at<T>(h, L.col), m, L.rowOrder, base);
        h->colTwdOff = std::int32_t(L.col);
    }
}

bool orderOutOfRange(int order, Prec p) {
    return static_cast<unsigned>(order) > 30u || order > maxOrder(p);
}

bool validFlag(int flag) { return flag == 1 || flag == 2 || flag == 4 || flag == 8; }

template <class T>
ZvpStatus getSize(int order, int flag, int* pSpecSize, int* pInitSize, int* pWorkSize) {
    constexpr Prec P = PrecOf<T>::value;
    if (static_cast<unsigned>(order) > 30u) return zvpStsFftOrderErr;
    ZVP_CHECK_PTRS(pSpecSize, pInitSize, pWorkSize);
    if (!validFlag(flag)) return zvpStsFftFlagErr;
    if (order > maxOrder(P)) return zvpStsFftOrderErr;
    const Sizes z = complexSizes(P, order);
    *pSpecSize = int(z.spec);
    *pInitSize = int(z.init);
    *pWorkSize = int(z.work);
    return zvpStsNoErr;
}

template <class T, class Spec>
ZvpStatus init(std::int32_t tag, Spec** ppSpec, int order, int flag, int hint, Zvp8u* pMem,
               Zvp8u* pInit) {
    constexpr Prec P = PrecOf<T>::value;
    ZVP_CHECK_PTRS(ppSpec);
    if (orderOutOfRange(order, P)) return zvpStsFftOrderErr;
    ZVP_CHECK_PTRS(pMem);
    auto* h = reinterpret_cast<SpecHeader*>(alignUp(pMem, 64));
    std::memset(h, 0, sizeof(SpecHeader));
    h->order = order;
    h->hint = hint;
    h->allocated = 0;
    // The flag is decoded only now, so a record refused for its flag is
    // cleared and keeps tag 0. The tag itself is written last, once the
    // record is complete.
    const std::int64_t n = pow2(order);
    if (!setScaling(h, flag, n)) return zvpStsFftFlagErr;
    if (order > 5) {
        if (order <= 10) {
            const T* fixed = fixedSin(static_cast<T*>(nullptr));
            buildTables<T>(h, order, BaseTable<T>(fixed, pow2(10 - order), order));
        } else {
            ZVP_CHECK_PTRS(pInit);
            T* b = reinterpret_cast<T*>(alignUp(pInit, 64));
            complexBase(b, order);
            buildTables<T>(h, order, BaseTable<T>(b, 1, order));
        }
        h->workSize = std::int32_t(complexSizes(P, order).work - 64);
    }
    h->tag = tag;
    *ppSpec = reinterpret_cast<Spec*>(h);
    return zvpStsNoErr;
}

template <class T, class Spec>
ZvpStatus initAlloc(std::int32_t tag, Spec** ppSpec, int order, int flag, int hint) {
    ZVP_CHECK_PTRS(ppSpec);
    int specSize = 0, initSize = 0, workSize = 0;
    ZVP_RETURN_IF_ERROR(getSize<T>(order, flag, &specSize, &initSize, &workSize));
    Zvp8u* block = p8::zvpsMalloc_8u(specSize);
    if (!block) return zvpStsMemAllocErr;
    Spec* spec = nullptr;
    ZvpStatus st = zvpStsMemAllocErr;
    {
        WorkBuffer scratch;  // the init memory, released whatever happens
        if (initSize <= 0 || scratch.allocate(initSize))
            st = init<T>(tag, &spec, order, flag, hint, block, scratch.get());
    }
    if (st < 0) {
        p8::zvpsFree(block);
        return st;
    }
    auto* h = reinterpret_cast<SpecHeader*>(spec);
    h->allocated = 1;
    h->baseOffset = std::int32_t(reinterpret_cast<Zvp8u*>(h) - block);
    *ppSpec = spec;
    return zvpStsNoErr;
}

template <class Spec>
ZvpStatus release(std::int32_t tag, Spec* pSpec) {
    ZVP_CHECK_PTRS(pSpec);
    auto* h = reinterpret_cast<SpecHeader*>(pSpec);
    if (h->tag != tag) return zvpStsContextMatchErr;
    h->tag = 0;
    if (h->allocated == 1) p8::zvpsFree(reinterpret_cast<Zvp8u*>(h) - h->baseOffset);
    return zvpStsNoErr;
}

template <class Spec>
ZvpStatus bufSize(std::int32_t tag, const Spec* pSpec, int* pSize) {
    ZVP_CHECK_PTRS(pSpec, pSize);
    const auto* h = reinterpret_cast<const SpecHeader*>(pSpec);
    if (h->tag != tag) return zvpStsContextMatchErr;
    *pSize = h->workSize > 0 ? h->workSize + 64 : 0;
    return zvpStsNoErr;
}

}  // namespace
}  // namespace zvp::ZVP_LEVEL::fft

namespace zvp::p8 {

#define ZVP_FFT_SPEC(SUF, T, TAG)                                                           \
    ZvpStatus zvpsFFTGetSize_C_##SUF(int order, int flag, ZvpHintAlgorithm,                 \
                                     int* pSpecSize, int* pInitSize, int* pWorkSize) {      \
        return fft::getSize<T>(order, flag, pSpecSize, pInitSize, pWorkSize);               \
    }                                                                                       \
    ZvpStatus zvpsFFTInit_C_##SUF(ZvpsFFTSpec_C_##SUF** ppSpec, int order, int flag,        \
                                  ZvpHintAlgorithm hint, Zvp8u* pMem, Zvp8u* pInit) {       \
        return fft::init<T>(TAG, ppSpec, order, flag, int(hint), pMem, pInit);              \
    }                                                                                       \
    ZvpStatus zvpsFFTInitAlloc_C_##SUF(ZvpsFFTSpec_C_##SUF** ppSpec, int order, int flag,   \
                                       ZvpHintAlgorithm hint) {                             \
        return fft::initAlloc<T>(TAG, ppSpec, order, flag, int(hint));                      \
    }                                                                                       \
    ZvpStatus zvpsFFTFree_C_##SUF(ZvpsFFTSpec_C_##SUF* pSpec) {                             \
        return fft::release(TAG, pSpec);                                                    \
    }                                                                                       \
    ZvpStatus zvpsFFTGetBufSize_C_##SUF(const ZvpsFFTSpec_C_##SUF* pSpec, int* pSize) {     \
        return fft::bufSize(TAG, pSpec, pSize);                                             \
    }

ZVP_FFT_SPEC(32fc, float, fft::kTagC32fc)
ZVP_FFT_SPEC(32f, float, fft::kTagC32f)
ZVP_FFT_SPEC(64fc, double, fft::kTagC64fc)
ZVP_FFT_SPEC(64f, double, fft::kTagC64f)

#undef ZVP_FFT_SPEC

}  // namespace zvp::p8
