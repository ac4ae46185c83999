// Random generators: the combined congruential and lagged subtract-with-borrow
// sequence, its uniform and Gaussian mappings, the state records and the
// Direct forms that keep only a congruential state in the caller's seed.
//
// A call works in blocks: a scalar pass runs the lagged generator (each step
// needs the borrow of the one before, so it cannot be split into lanes), the
// congruential values are added four lanes at a time with the multiplier
// 69069^4, and the mapping to samples runs in double lanes. Every sample is a
// function of its position in the sequence only, so neither the block size
// nor the way a caller splits the sequence into calls shows in the results.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "check.h"
#include "fpguard.h"
#include "lane.h"
#include "p8/frame.h"
#include "p8/powers.h"
#include "p8/random.h"

namespace zvp::p8 {
namespace {

using U32 = std::uint32_t;

// One congruential step, and two steps at once (the square of the step).
constexpr U32 kMul = 69069u, kAdd = 1013904243u;
constexpr U32 kMul2 = 475559465u, kAdd2 = 924302730u;
static_assert(U32(kMul * kMul) == kMul2 && U32(kMul * kAdd + kAdd) == kAdd2);
constexpr U32 kMul4 = U32(kMul2 * kMul2), kAdd4 = U32(kMul2 * kAdd2 + kAdd2);
constexpr U32 kCongStart = 1131199209u;
// The uniform step unit, 2^-32 to the 14 digits the records have always used.
constexpr double kStepUnit = 2.3283064365387e-10;

constexpr std::int32_t kTagUni8u = 35, kTagUni16s = 36, kTagUni32f = 37;
constexpr std::int32_t kTagGauss8u = 38, kTagGauss16s = 39, kTagGauss32f = 40;

// The generator part shared by every record: congruential value, the lag
// values newest first, the borrow (0 or -1).
struct Gen {
    U32 cong, lag1, lag2, lag3;
    std::int32_t borrow;
};

Gen seeded(U32 seed) {
    Gen g;
    g.cong = kCongStart;
    g.lag1 = seed;
    g.lag2 = seed * kMul + kAdd;
    g.lag3 = g.lag2 * kMul + kAdd;
    g.borrow = -1;
    return g;
}

// Uniform record. The 32f layout is fixed to the byte on both targets: tag,
// seed, low, high, centre, step, congruential value, three lag values, borrow;
// the word after the borrow marks a record made by InitAlloc.
template <class T>
struct UniRecord {
    std::int32_t tag;
    U32 seed;
    T low, high;
    alignas(8) double centre;
    double step;
    Gen gen;
    std::int32_t allocated;
};
static_assert(offsetof(UniRecord<float>, seed) == 4 && offsetof(UniRecord<float>, low) == 8 &&
              offsetof(UniRecord<float>, high) == 12 && offsetof(UniRecord<float>, centre) == 16 &&
              offsetof(UniRecord<float>, step) == 24 && offsetof(UniRecord<float>, gen.cong) == 32 &&
              offsetof(UniRecord<float>, gen.lag1) == 36 && offsetof(UniRecord<float>, gen.lag2) == 40 &&
              offsetof(UniRecord<float>, gen.lag3) == 44 && offsetof(UniRecord<float>, gen.borrow) == 48 &&
              sizeof(UniRecord<float>) == 56 && sizeof(UniRecord<Zvp8u>) == 56 &&
              sizeof(UniRecord<Zvp16s>) == 56);

// Gaussian record: tag, seed, mean, standard deviation, three work values,
// the generator, the flag, the allocation mark. work[0] holds the second
// deviate of a pair while the flag is 0; the flag is 1 when none is pending.
// work[1] and work[2] stay 0.
template <class T>
struct GaussRecord {
    std::int32_t tag;
    U32 seed;
    T mean, stdDev;
    alignas(8) double work[3];
    Gen gen;
    std::int32_t flag;
    std::int32_t allocated;
};
static_assert(offsetof(GaussRecord<float>, work) == 16 && offsetof(GaussRecord<float>, gen) == 40 &&
              offsetof(GaussRecord<float>, flag) == 60 && sizeof(GaussRecord<float>) == 72 &&
              sizeof(GaussRecord<Zvp8u>) == 72 && sizeof(GaussRecord<Zvp16s>) == 72);

// Records live in caller memory of any alignment: they are copied in and out.
template <class Rec>
bool readRecord(const void* p, std::int32_t tag, Rec& r) {
    std::int32_t t;
    std::memcpy(&t, p, sizeof t);
    if (t != tag) return false;
    std::memcpy(&r, p, sizeof r);
    return true;
}

// ---- the raw sequence

constexpr int kBlock = 512;  // raw samples per block (even)

// n steps of the lagged generator into v. The borrow is the sign of t, so a
// step is branch-free: t = s2 - s3 + b; b = t >> 31; new = t - (b & 18).
void laggedSteps(Gen& g, U32* v, int n) {
    U32 s1 = g.lag1, s2 = g.lag2, s3 = g.lag3, b = U32(g.borrow);
    for (int i = 0; i < n; ++i) {
        const U32 t = s2 - s3 + b;
        b = U32(std::int32_t(t) >> 31);
        const U32 x = t - (b & 18u);
        s3 = s2;
        s2 = s1;
        s1 = x;
        v[i] = x;
    }
    g.lag1 = s1;
    g.lag2 = s2;
    g.lag3 = s3;
    g.borrow = std::int32_t(b);
}

// Adds the next n congruential values to v: four lanes at stride 4, the rest
// two steps at a time and a last single step.
void addCongruential(U32& cong, U32* v, int n) {
    using L = Full<U32>;
    int i = 0;
    if (n >= 4) {
        alignas(16) U32 c[4];
        c[0] = cong * kMul + kAdd;
        c[1] = cong * kMul2 + kAdd2;
        c[2] = c[0] * kMul2 + kAdd2;
        c[3] = c[1] * kMul2 + kAdd2;
        auto cv = L::loada(c);
        const auto m4 = L::set1(kMul4), a4 = L::set1(kAdd4);
        for (;;) {
            L::store(v + i, L::add(L::load(v + i), cv));
            i += 4;
            if (n - i < 4) break;
            cv = L::add(L::mullo(cv, m4), a4);
        }
        L::storea(c, cv);
        cong = c[3];
    }
    for (; n - i >= 2; i += 2) {
        v[i] += cong * kMul + kAdd;
        cong = cong * kMul2 + kAdd2;
        v[i + 1] += cong;
    }
    if (i < n) {
        cong = cong * kMul + kAdd;
        v[i] += cong;
    }
}

void combinedSteps(Gen& g, U32* v, int n) {
    laggedSteps(g, v, n);
    addCongruential(g.cong, v, n);
}

void congruentialSteps(U32& cong, U32* v, int n) {
    std::memset(v, 0, std::size_t(n) * sizeof(U32));
    addCongruential(cong, v, n);
}

// ---- mappings

double roundNearest(double v) {
    using L = One<double>;
    return L::first(L::roundNearest(L::set1(v)));
}

// r * step + centre in double, then to the destination type.
template <class T>
void mapUniform(T* dst, const U32* raw, int n, double step, double centre, double lo, double hi) {
    const auto* r = reinterpret_cast<const std::int32_t*>(raw);
    int i = 0;
    if constexpr (sizeof(T) == 4 && !std::is_integral_v<T>) {
        using LI = Full<std::int32_t>;
        using LD = Full<double>;
        const auto s = LD::set1(step), c = LD::set1(centre);
        for (; n - i >= 4; i += 4) {
            const auto x = LI::load(r + i);
            const auto a = LD::add(LD::mul(LD::fromI32(x), s), c);
            const auto b = LD::add(LD::mul(LD::fromI32(LI::hiHalf(x)), s), c);
            Full<float>::store(dst + i, Full<float>::joinLo(LD::toF32(a), LD::toF32(b)));
        }
    }
    for (; i < n; ++i) {
        const double v = double(r[i]) * step + centre;
        if constexpr (std::is_integral_v<T>) dst[i] = T(std::clamp(roundNearest(v), lo, hi));
        else dst[i] = T(v);
    }
}

// mean + stdDev * z[k * stride], k < n, to the destination type.
template <class T>
void mapGauss(T* dst, const double* z, int n, int stride, double mean, double sd) {
    if constexpr (std::is_integral_v<T>) {
        const double lo = double(std::numeric_limits<T>::min()), hi = double(std::numeric_limits<T>::max());
        for (int i = 0; i < n; ++i) dst[i] = T(std::clamp(roundNearest(mean + sd * z[i * stride]), lo, hi));
    } else {
        for (int i = 0; i < n; ++i) dst[i] = T(mean + sd * z[i * stride]);
    }
}

// Box-Muller on the pairs (r1, r2) at lanes of LD: radius sqrt(-2 ln u) from
// ln u already in lnu, angle 2 pi r2 2^-32 reduced to x in [-pi/4, pi/4) and
// a quadrant q taken from the top bits of r2 + 2^29, so that sine and cosine
// are short series on a quarter period. z gets z1, z2 interleaved.
template <class LD>
void polar(const double* lnu, const U32* ang, double* z) {
    using LI = Lane<U32, LD::N * 4>;
    using LW = Lane<std::int32_t, LD::N * 4>;
    const auto rho = LD::sqrt(LD::mul(LD::load(lnu), LD::set1(-2.0)));
    const auto a = LI::add(LI::load(ang), LI::set1(1u << 29));
    const auto q = LI::template shr<30>(a);
    const auto f = LI::sub(LI::and_(a, LI::set1((1u << 30) - 1)), LI::set1(1u << 29));
    const auto x = LD::mul(LD::fromI32(f), LD::set1(6.283185307179586 * 0x1p-32));
    const auto x2 = LD::mul(x, x);
    auto s = LD::set1(-1.0 / 1307674368000.0);
    for (double k : {1.0 / 6227020800.0, -1.0 / 39916800.0, 1.0 / 362880.0, -1.0 / 5040.0, 1.0 / 120.0,
                     -1.0 / 6.0})
        s = LD::add(LD::mul(s, x2), LD::set1(k));
    s = LD::add(x, LD::mul(LD::mul(x, x2), s));
    auto c = LD::set1(1.0 / 20922789888000.0);
    for (double k : {-1.0 / 87178291200.0, 1.0 / 479001600.0, -1.0 / 3628800.0, 1.0 / 40320.0,
                     -1.0 / 720.0, 1.0 / 24.0, -0.5, 1.0})
        c = LD::add(LD::mul(c, x2), LD::set1(k));
    // Lane masks widened to the double lanes: swap sine and cosine in odd
    // quadrants, negate the cosine in quadrants 1 and 2, the sine in 2 and 3.
    auto wide = [](typename LI::R m) { return LD::fromBits(LW::widenLo(m)); };
    const auto one = LI::set1(1u), two = LI::set1(2u);
    const auto swap = wide(LI::eq(LI::and_(q, one), one));
    const auto negC = LD::and_(wide(LI::eq(LI::and_(LI::add(q, one), two), two)), LD::set1(-0.0));
    const auto negS = LD::and_(wide(LI::eq(LI::and_(q, two), two)), LD::set1(-0.0));
    const auto cs = LD::xor_(LD::blend(c, s, swap), negC);
    const auto sn = LD::xor_(LD::blend(s, c, swap), negS);
    const auto z1 = LD::mul(rho, cs), z2 = LD::mul(rho, sn);
    if constexpr (LD::N == 2) {
        LD::store(z, LD::zipLo(z1, z2));
        LD::store(z + 2, LD::zipHi(z1, z2));
    } else {
        LD::store(z, z1);
        LD::store(z + 1, z2);
    }
}

// The deviates of `pairs` raw pairs into z (2 * pairs values). u and ang are
// scratch of `pairs` values each.
void boxMuller(const U32* raw, double* z, double* u, U32* ang, int pairs) {
    for (int j = 0; j < pairs; ++j) {
        u[j] = (double(std::int32_t(raw[2 * j])) + 2147483648.5) * 0x1p-32;
        ang[j] = raw[2 * j + 1];
    }
    zvpsLn_64f_I(u, pairs);
    int j = 0;
    for (; pairs - j >= 2; j += 2) polar<Full<double>>(u + j, ang + j, z + 2 * j);
    if (j < pairs) polar<One<double>>(u + j, ang + j, z + 2 * j);
}

struct Scratch {
    alignas(16) U32 raw[kBlock];
    alignas(16) double z[kBlock];
    alignas(16) double u[kBlock / 2];
    alignas(16) U32 ang[kBlock / 2];
};

// ---- operations

template <class T>
ZvpStatus uniInit(std::int32_t tag, void* p, T low, T high, U32 seed, std::int32_t allocated = 0) {
    ZVP_CHECK_PTRS(p);
    UniRecord<T> r{};
    r.tag = tag;
    r.seed = seed;
    r.low = low;
    r.high = high;
    r.centre = (double(low) + double(high)) / 2;
    r.step = (double(high) - double(low)) * kStepUnit;
    r.gen = seeded(seed);
    r.allocated = allocated;
    std::memcpy(p, &r, sizeof r);
    return zvpStsNoErr;
}

template <class T>
ZvpStatus gaussInit(std::int32_t tag, void* p, T mean, T sd, U32 seed, std::int32_t allocated = 0) {
    ZVP_CHECK_PTRS(p);
    GaussRecord<T> r{};
    r.tag = tag;
    r.seed = seed;
    r.mean = mean;
    r.stdDev = sd;
    r.gen = seeded(seed);
    r.flag = 1;
    r.allocated = allocated;
    std::memcpy(p, &r, sizeof r);
    return zvpStsNoErr;
}

template <class Rec, class S, class Init>
ZvpStatus initAlloc(S** pp, Init init) {
    ZVP_CHECK_PTRS(pp);
    Zvp8u* block = zvpsMalloc_8u(int(sizeof(Rec)));
    if (!block) return zvpStsMemAllocErr;
    init(block);
    *pp = reinterpret_cast<S*>(block);
    return zvpStsNoErr;
}

template <class Rec>
ZvpStatus getSize(int* pSize) {
    ZVP_CHECK_PTRS(pSize);
    *pSize = int(sizeof(Rec));
    return zvpStsNoErr;
}

template <class Rec>
ZvpStatus release(std::int32_t tag, void* p) {
    ZVP_CHECK_PTRS(p);
    Rec r;
    if (!readRecord(p, tag, r)) return zvpStsContextMatchErr;
    const std::int32_t cleared = 0;
    std::memcpy(p, &cleared, sizeof cleared);
    if (r.allocated == 1) zvpsFree(p);
    return zvpStsNoErr;
}

template <class T>
ZvpStatus uniform(std::int32_t tag, T* pDst, int len, void* pState) {
    ZVP_CHECK_PTRS(pDst, pState);
    ZVP_CHECK_LENS(len);
    UniRecord<T> r;
    if (!readRecord(pState, tag, r)) return zvpStsContextMatchErr;
    const MxcsrGuard nearest(MxcsrGuard::kNearest);
    const double lo = std::min(double(r.low), double(r.high)), hi = std::max(double(r.low), double(r.high));
    Scratch s;
    for (int i = 0; i < len;) {
        const int n = std::min(kBlock, len - i);
        combinedSteps(r.gen, s.raw, n);
        mapUniform(pDst + i, s.raw, n, r.step, r.centre, lo, hi);
        i += n;
    }
    std::memcpy(static_cast<Zvp8u*>(pState) + offsetof(UniRecord<T>, gen), &r.gen, sizeof r.gen);
    return zvpStsNoErr;
}

template <class T>
ZvpStatus gauss(std::int32_t tag, T* pDst, int len, void* pState) {
    ZVP_CHECK_PTRS(pDst, pState);
    ZVP_CHECK_LENS(len);
    GaussRecord<T> r;
    if (!readRecord(pState, tag, r)) return zvpStsContextMatchErr;
    const MxcsrGuard nearest(MxcsrGuard::kNearest);
    const double mean = double(r.mean), sd = double(r.stdDev);
    int i = 0;
    if (r.flag == 0) {
        mapGauss(pDst, r.work, 1, 1, mean, sd);
        r.work[0] = 0;
        r.flag = 1;
        i = 1;
    }
    Scratch s;
    while (i < len) {
        const int want = len - i;
        const int pairs = std::min(kBlock / 2, want / 2 + (want & 1));
        combinedSteps(r.gen, s.raw, 2 * pairs);
        boxMuller(s.raw, s.z, s.u, s.ang, pairs);
        const int take = std::min(want, 2 * pairs);
        mapGauss(pDst + i, s.z, take, 1, mean, sd);
        if (take < 2 * pairs) {
            r.work[0] = s.z[2 * pairs - 1];
            r.flag = 0;
        }
        i += take;
    }
    std::memcpy(pState, &r, sizeof r);
    return zvpStsNoErr;
}

template <class T>
ZvpStatus uniformDirect(T* pDst, int len, T low, T high, unsigned int* pSeed) {
    ZVP_CHECK_PTRS(pDst, pSeed);
    ZVP_CHECK_LENS(len);
    const MxcsrGuard nearest(MxcsrGuard::kNearest);
    const double centre = (double(low) + double(high)) / 2, step = (double(high) - double(low)) * kStepUnit;
    const double lo = std::min(double(low), double(high)), hi = std::max(double(low), double(high));
    U32 cong = *pSeed;
    Scratch s;
    for (int i = 0; i < len;) {
        const int n = std::min(kBlock, len - i);
        congruentialSteps(cong, s.raw, n);
        mapUniform(pDst + i, s.raw, n, step, centre, lo, hi);
        i += n;
    }
    *pSeed = cong;
    return zvpStsNoErr;
}

template <class T>
ZvpStatus gaussDirect(T* pDst, int len, T mean, T sd, unsigned int* pSeed) {
    ZVP_CHECK_PTRS(pDst, pSeed);
    ZVP_CHECK_LENS(len);
    const MxcsrGuard nearest(MxcsrGuard::kNearest);
    U32 cong = *pSeed;
    Scratch s;
    for (int i = 0; i < len;) {
        const int n = std::min(kBlock / 2, len - i);
        congruentialSteps(cong, s.raw, 2 * n);
        boxMuller(s.raw, s.z, s.u, s.ang, n);
        mapGauss(pDst + i, s.z, n, 2, double(mean), double(sd));
        i += n;
    }
    *pSeed = cong;
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_RAND_TYPE(SUF, T, TAG_UNI, TAG_GAUSS)                                                      \
    ZvpStatus zvpsRandUniformInit_##SUF(ZvpsRandUniState_##SUF* p, T low, T high, unsigned int seed) { \
        return uniInit<T>(TAG_UNI, p, low, high, seed);                                               \
    }                                                                                                  \
    ZvpStatus zvpsRandUniformInitAlloc_##SUF(ZvpsRandUniState_##SUF** pp, T low, T high,              \
                                             unsigned int seed) {                                     \
        return initAlloc<UniRecord<T>>(pp, [&](void* m) { uniInit<T>(TAG_UNI, m, low, high, seed, 1); }); \
    }                                                                                                  \
    ZvpStatus zvpsRandUniformGetSize_##SUF(int* pSize) { return getSize<UniRecord<T>>(pSize); }       \
    ZvpStatus zvpsRandUniformFree_##SUF(ZvpsRandUniState_##SUF* p) {                                  \
        return release<UniRecord<T>>(TAG_UNI, p);                                                     \
    }                                                                                                  \
    ZvpStatus zvpsRandUniform_##SUF(T* pDst, int len, ZvpsRandUniState_##SUF* p) {                     \
        return uniform<T>(TAG_UNI, pDst, len, p);                                                     \
    }                                                                                                  \
    ZvpStatus zvpsRandGaussInit_##SUF(ZvpsRandGaussState_##SUF* p, T mean, T sd, unsigned int seed) { \
        return gaussInit<T>(TAG_GAUSS, p, mean, sd, seed);                                            \
    }                                                                                                  \
    ZvpStatus zvpsRandGaussInitAlloc_##SUF(ZvpsRandGaussState_##SUF** pp, T mean, T sd,               \
                                           unsigned int seed) {                                       \
        return initAlloc<GaussRecord<T>>(pp, [&](void* m) { gaussInit<T>(TAG_GAUSS, m, mean, sd, seed, 1); }); \
    }                                                                                                  \
    ZvpStatus zvpsRandGaussGetSize_##SUF(int* pSize) { return getSize<GaussRecord<T>>(pSize); }       \
    ZvpStatus zvpsRandGaussFree_##SUF(ZvpsRandGaussState_##SUF* p) {                                  \
        return release<GaussRecord<T>>(TAG_GAUSS, p);                                                 \
    }                                                                                                  \
    ZvpStatus zvpsRandGauss_##SUF(T* pDst, int len, ZvpsRandGaussState_##SUF* p) {                     \
        return gauss<T>(TAG_GAUSS, pDst, len, p);                                                     \
    }

ZVP_RAND_TYPE(8u, Zvp8u, kTagUni8u, kTagGauss8u)
ZVP_RAND_TYPE(16s, Zvp16s, kTagUni16s, kTagGauss16s)
ZVP_RAND_TYPE(32f, Zvp32f, kTagUni32f, kTagGauss32f)

#undef ZVP_RAND_TYPE

#define ZVP_RAND_DIRECT(SUF, T)                                                                       \
    ZvpStatus zvpsRandUniform_Direct_##SUF(T* pDst, int len, T low, T high, unsigned int* pSeed) {    \
        return uniformDirect<T>(pDst, len, low, high, pSeed);                                        \
    }                                                                                                 \
    ZvpStatus zvpsRandGauss_Direct_##SUF(T* pDst, int len, T mean, T sd, unsigned int* pSeed) {       \
        return gaussDirect<T>(pDst, len, mean, sd, pSeed);                                           \
    }

ZVP_RAND_DIRECT(16s, Zvp16s)
ZVP_RAND_DIRECT(32f, Zvp32f)
ZVP_RAND_DIRECT(64f, Zvp64f)

#undef ZVP_RAND_DIRECT

}  // namespace zvp::p8
