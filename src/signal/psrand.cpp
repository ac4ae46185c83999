// Random generators: the combined congruential and lagged subtract-with-borrow
// sequence, its uniform and Gaussian mappings, the state records and the
// Direct forms that keep only a congruential state in the caller's seed.
//
// A call works in chunks: a scalar pass runs the lagged generator (each step
// needs the borrow of the one before, so it cannot be split into lanes), the
// congruential values are added four lanes at a time with the multiplier
// 69069^4, and the mapping to samples runs in lanes: uniform 32f in double,
// the Gaussian transform of the state forms in single precision, that of the
// Direct forms in double. Body and tail run the same operations on more or
// fewer lanes, so every sample is a function of its position in the sequence
// only: neither the chunk size nor the way a caller splits the sequence into
// calls shows in the results.
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
#include "p8/random.h"

namespace zvp::p8 {
namespace {

using U32 = std::uint32_t;

// One congruential step, and two steps at once (the square of the step).
constexpr U32 kMul = 69069u, kAdd = 1013904243u;
constexpr U32 kMul2 = 475559465u, kAdd2 = 924302730u;
static_assert(U32(kMul * kMul) == kMul2 && U32(kMul * kAdd + kAdd) == kAdd2);
constexpr U32 kMul4 = U32(kMul2 * kMul2), kAdd4 = U32(kMul2 * kAdd2 + kAdd2);
// The inverse of the multiplier modulo 2^32 (Newton's iteration doubles the
// correct low bits each round), to step back once.
constexpr U32 inverse(U32 a) {
    U32 x = a;
    for (int k = 0; k < 5; ++k) x *= 2u - a * x;
    return x;
}
constexpr U32 kMulInv = inverse(kMul);
static_assert(U32(kMulInv * kMul) == 1u);
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

// One step of the lagged generator, the new value written over the oldest
// lag value. The borrow is the sign of t, so the step has no branch:
// t = s2 - s3 + b; b = t >> 31; new = t - (b & 18).
inline U32 laggedStep(U32& s3, U32 s2, U32& b) {
    const U32 t = s2 - s3 + b;
    b = U32(std::int32_t(t) >> 31);
    s3 = t - (b & 18u);
    return s3;
}

// n raw samples, handed over as they are made: put4(i, v) takes samples
// i..i+3 as one register, put1(i, r) takes the last n % 4 one at a time. The
// work goes in chunks of 48: the lagged steps first, serially (each needs the
// previous borrow), three per round so that the lag values return to their
// registers, into a small buffer; then the congruential values four lanes at
// a time from the four-step multiplier, added to the buffer as it is handed
// over. Reading the buffer only after the whole chunk is written keeps its
// loads clear of the stores just made. Without kLagged the raw samples are
// the congruential values alone (the Direct forms).
template <bool kLagged, class Put4, class Put1>
void run(Gen& g, int n, Put4 put4, Put1 put1) {
    using L = Full<U32>;
    constexpr int kChunk = 48;
    U32 s1 = g.lag1, s2 = g.lag2, s3 = g.lag3, b = U32(g.borrow), cong = g.cong;
    alignas(16) U32 c[4];
    c[0] = cong * kMul + kAdd;
    c[1] = cong * kMul2 + kAdd2;
    c[2] = c[0] * kMul2 + kAdd2;
    c[3] = c[1] * kMul2 + kAdd2;
    auto cv = L::loada(c);
    const auto m4 = L::set1(kMul4), a4 = L::set1(kAdd4);
    bool tail = false;
    for (int i = 0; i < n; i += kChunk) {
        const int m = std::min(kChunk, n - i);
        alignas(16) U32 x[kChunk];
        if constexpr (kLagged) {
            int k = 0;
            for (; m - k >= 3; k += 3) {
                x[k] = laggedStep(s3, s2, b);      // the newest now in s3's register,
                x[k + 1] = laggedStep(s2, s1, b);  // then in s2's,
                x[k + 2] = laggedStep(s1, s3, b);  // then in s1's: back in order
            }
            for (; k < m; ++k) {
                x[k] = laggedStep(s3, s2, b);
                s3 = s2;
                s2 = s1;
                s1 = x[k];
            }
        }
        int k = 0;
        for (; m - k >= 4; k += 4) {
            put4(i + k, kLagged ? L::add(L::loada(x + k), cv) : cv);
            cv = L::add(L::mullo(cv, m4), a4);
        }
        if (k < m) {  // the last chunk only
            tail = true;
            L::storea(c, cv);
            cong = (c[0] - kAdd) * kMulInv;
            for (; k < m; ++k) {
                cong = cong * kMul + kAdd;
                put1(i + k, (kLagged ? x[k] : 0u) + cong);
            }
        }
    }
    if (!tail) {
        // cv holds the values of the next four steps; the last one used is
        // one step before its first lane.
        L::storea(c, cv);
        cong = (c[0] - kAdd) * kMulInv;
    }
    g.lag1 = s1;
    g.lag2 = s2;
    g.lag3 = s3;
    g.borrow = std::int32_t(b);
    g.cong = cong;
}

// n raw samples into v.
template <bool kLagged>
void rawSteps(Gen& g, U32* v, int n) {
    run<kLagged>(g, n, [v](int i, Full<U32>::R r) { Full<U32>::store(v + i, r); }, [v](int i, U32 r) { v[i] = r; });
}

// ---- mappings

double roundNearest(double v) {
    using L = One<double>;
    return L::first(L::roundNearest(L::set1(v)));
}

// r * step + centre in double, then to the destination type (integers:
// nearest, ties to even, clamped to [lo, hi]).
template <class T>
void mapUniform(T* dst, const U32* raw, int n, double step, double centre, double lo, double hi) {
    for (int i = 0; i < n; ++i) {
        const double v = double(std::int32_t(raw[i])) * step + centre;
        if constexpr (std::is_integral_v<T>) dst[i] = T(std::clamp(roundNearest(v), lo, hi));
        else dst[i] = T(v);
    }
}

// Uniform 32f straight from the generator, four lanes at a time: the same
// double arithmetic in every lane as in the single-sample form.
template <bool kLagged>
void uniformFloat(Gen& g, float* dst, int n, double step, double centre) {
    using LI = Full<std::int32_t>;
    using LD = Full<double>;
    const auto s = LD::set1(step), c = LD::set1(centre);
    run<kLagged>(
        g, n,
        [&](int i, LI::R x) {
            const auto lo = LD::add(LD::mul(LD::fromI32(x), s), c);
            const auto hi = LD::add(LD::mul(LD::fromI32(LI::hiHalf(x)), s), c);
            Full<float>::store(dst + i, Full<float>::joinLo(LD::toF32(lo), LD::toF32(hi)));
        },
        [&](int i, U32 r) { dst[i] = float(double(std::int32_t(r)) * step + centre); });
}

// mean + stdDev * z[k * stride], k < n, to the destination type. Double
// deviates are mapped in double; single deviates to 32f in single precision
// (four lanes, the same operations in the tail), to integers in double.
template <class T, class Z>
void mapGauss(T* dst, const Z* z, int n, int stride, double mean, double sd) {
    int i = 0;
    if constexpr (std::is_integral_v<T>) {
        const double lo = double(std::numeric_limits<T>::min()), hi = double(std::numeric_limits<T>::max());
        for (; i < n; ++i) dst[i] = T(std::clamp(roundNearest(mean + sd * double(z[i * stride])), lo, hi));
    } else if constexpr (std::is_same_v<Z, float>) {
        using L = Full<float>;
        const auto m = L::set1(float(mean)), d = L::set1(float(sd));
        for (; n - i >= 4; i += 4) L::store(dst + i, L::add(L::mul(L::load(z + i), d), m));
        for (; i < n; ++i) dst[i] = float(mean) + float(sd) * z[i];
    } else {
        for (; i < n; ++i) dst[i] = T(mean + sd * z[i * stride]);
    }
}

// ln u for u in (0, 1), in lanes: u = 2^e m with m in [sqrt(1/2), sqrt(2)),
// ln m = 2 atanh(s) with s = (m - 1) / (m + 1), |s| < 0.172, by its series to
// s^19 (the next term is below 2^-55 relative).
template <class LD>
typename LD::R logUnit(typename LD::R u) {
    using LQ = Lane<std::uint64_t, LD::N * 8>;
    using LE = Lane<std::int32_t, LD::N * 8>;
    const auto bits = LD::bits(u);
    auto m = LD::fromBits(LQ::or_(LQ::and_(bits, LQ::set1(0x000FFFFFFFFFFFFFull)), LQ::set1(0x3FF0000000000000ull)));
    const auto big = LD::gt(m, LD::set1(1.4142135623730951));
    m = LD::blend(m, LD::mul(m, LD::set1(0.5)), big);
    const auto e = LD::add(LD::sub(LD::fromI32(LE::evensThenOdds(LQ::template shr<52>(bits))), LD::set1(1023.0)),
                           LD::and_(big, LD::set1(1.0)));
    const auto one = LD::set1(1.0);
    const auto s = LD::div(LD::sub(m, one), LD::add(m, one));
    const auto s2 = LD::mul(s, s);
    auto p = LD::set1(2.0 / 19);
    for (int k = 17; k >= 1; k -= 2) p = LD::add(LD::mul(p, s2), LD::set1(2.0 / k));
    // e ln 2 in two parts, so the sum keeps the precision of the small term.
    return LD::add(LD::mul(e, LD::set1(0x1.62e42fefa3800p-1)),
                   LD::add(LD::mul(s, p), LD::mul(e, LD::set1(0x1.ef35793c76730p-45))));
}

// Box-Muller on raw pairs (r1, r2) at the lanes of LD: radius
// sqrt(-2 ln u), u = (r1 + 2^31 + 0.5) 2^-32; angle 2 pi r2 2^-32 reduced to
// x in [-pi/4, pi/4) and a quadrant q from the top bits of r2 + 2^29, so that
// sine and cosine are short series on a quarter period. z gets z1, z2
// interleaved.
template <class LD>
void polar(const U32* raw, double* z) {
    using LI = Lane<U32, LD::N * 4>;
    using LW = Lane<std::int32_t, LD::N * 4>;
    const auto pair = LW::evensThenOdds(Lane<std::int32_t, LD::N * 8>::load(reinterpret_cast<const std::int32_t*>(raw)));
    const auto u = LD::mul(LD::add(LD::fromI32(pair), LD::set1(2147483648.5)), LD::set1(0x1p-32));
    const auto rho = LD::sqrt(LD::mul(logUnit<LD>(u), LD::set1(-2.0)));
    const auto a = LI::add(LW::hiHalf(pair), LI::set1(1u << 29));
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

// The deviates of `pairs` raw pairs into z (2 * pairs values), in double.
void boxMuller(const U32* raw, double* z, int pairs) {
    int j = 0;
    for (; pairs - j >= 2; j += 2) polar<Full<double>>(raw + 2 * j, z + 2 * j);
    if (j < pairs) polar<One<double>>(raw + 2 * j, z + 2 * j);
}

// A 32-bit count to single precision, rounded once: both halves are exact.
template <class LF, class LI>
typename LF::R countToFloat(typename LI::R k) {
    return LF::add(LF::mul(LF::fromI32(LI::template shr<16>(k)), LF::set1(65536.0f)),
                   LF::fromI32(LI::and_(k, LI::set1(0xFFFFu))));
}

// Box-Muller in single precision at the lanes of LF, for the generators
// whose samples are single precision or narrower. With k = r1 + 2^31:
// u = (k + 0.5) 2^-32. ln u = e ln 2 + 2 atanh(s), s = (m - 1) / (m + 1) for
// u = 2^e m, m in [sqrt(1/2), sqrt(2)); when u > sqrt(1/2), m - 1 = -v with
// v = (2^32 - k - 0.5) 2^-32 formed from the integer, so that u near 1 keeps
// full relative precision in ln u. The angle is reduced as in the double
// form; the series are shortened to single precision.
template <class LF>
void polarFloat(const U32* raw, float* z) {
    using LI = Lane<U32, LF::N * 4>;
    using LS = Lane<std::int32_t, LF::N * 4>;
    typename LI::R r1, r2;
    if constexpr (LF::N == 4) {
        const auto e0 = Full<U32>::evensThenOdds(Full<U32>::load(raw));
        const auto e1 = Full<U32>::evensThenOdds(Full<U32>::load(raw + 4));
        r1 = Full<std::uint64_t>::zipLo(e0, e1);
        r2 = Full<std::uint64_t>::zipHi(e0, e1);
    } else {
        r1 = Lane<U32, 8>::load(raw);
        r2 = Lane<std::uint64_t, 8>::template shr<32>(r1);
    }
    const auto k = LI::xor_(r1, LI::set1(0x80000000u));
    const auto u = LF::mul(LF::add(countToFloat<LF, LI>(k), LF::set1(0.5f)), LF::set1(0x1p-32f));
    const auto v = LF::mul(LF::sub(countToFloat<LF, LI>(LI::sub(LI::zero(), k)), LF::set1(0.5f)), LF::set1(0x1p-32f));
    const auto nearOne = LF::fromBits(LS::gt(r1, LS::set1(std::int32_t(0xB504F333u - 0x80000000u))));
    const auto bits = LF::bits(u);
    auto m = LF::fromBits(LI::or_(LI::and_(bits, LI::set1(0x007FFFFFu)), LI::set1(0x3F800000u)));
    const auto big = LF::gt(m, LF::set1(1.41421356f));
    m = LF::blend(m, LF::mul(m, LF::set1(0.5f)), big);
    auto e = LF::add(LF::fromI32(LI::sub(LI::template shr<23>(bits), LI::set1(127u))), LF::and_(big, LF::set1(1.0f)));
    e = LF::andnot(nearOne, e);
    const auto one = LF::set1(1.0f);
    const auto num = LF::blend(LF::sub(m, one), LF::neg(v), nearOne);
    const auto den = LF::blend(LF::add(m, one), LF::sub(LF::set1(2.0f), v), nearOne);
    const auto s = LF::div(num, den), s2 = LF::mul(s, s);
    auto p = LF::set1(2.0f / 9);
    for (float c : {2.0f / 7, 2.0f / 5, 2.0f / 3, 2.0f}) p = LF::add(LF::mul(p, s2), LF::set1(c));
    const auto lnu = LF::add(LF::mul(e, LF::set1(0x1.62e4p-1f)), LF::add(LF::mul(s, p), LF::mul(e, LF::set1(0x1.7f7d1cp-20f))));
    const auto rho = LF::sqrt(LF::mul(lnu, LF::set1(-2.0f)));
    const auto a = LI::add(r2, LI::set1(1u << 29));
    const auto q = LI::template shr<30>(a);
    const auto f = LI::sub(LI::and_(a, LI::set1((1u << 30) - 1)), LI::set1(1u << 29));
    const auto x = LF::mul(LF::fromI32(f), LF::set1(6.2831853f * 0x1p-32f));
    const auto x2 = LF::mul(x, x);
    auto sn = LF::set1(1.0f / 362880);
    for (float c : {-1.0f / 5040, 1.0f / 120, -1.0f / 6}) sn = LF::add(LF::mul(sn, x2), LF::set1(c));
    sn = LF::add(x, LF::mul(LF::mul(x, x2), sn));
    auto cs = LF::set1(-1.0f / 3628800);
    for (float c : {1.0f / 40320, -1.0f / 720, 1.0f / 24, -0.5f, 1.0f}) cs = LF::add(LF::mul(cs, x2), LF::set1(c));
    const auto lone = LI::set1(1u), ltwo = LI::set1(2u);
    const auto swap = LF::fromBits(LI::eq(LI::and_(q, lone), lone));
    const auto negC = LF::and_(LF::fromBits(LI::eq(LI::and_(LI::add(q, lone), ltwo), ltwo)), LF::set1(-0.0f));
    const auto negS = LF::and_(LF::fromBits(LI::eq(LI::and_(q, ltwo), ltwo)), LF::set1(-0.0f));
    const auto z1 = LF::mul(rho, LF::xor_(LF::blend(cs, sn, swap), negC));
    const auto z2 = LF::mul(rho, LF::xor_(LF::blend(sn, cs, swap), negS));
    if constexpr (LF::N == 4) {
        LF::store(z, LF::zipLo(z1, z2));
        LF::store(z + 4, LF::zipHi(z1, z2));
    } else {
        LF::store(z, z1);
        LF::store(z + 1, z2);
    }
}

void boxMuller(const U32* raw, float* z, int pairs) {
    int j = 0;
    for (; pairs - j >= 4; j += 4) polarFloat<Full<float>>(raw + 2 * j, z + 2 * j);
    for (; j < pairs; ++j) polarFloat<One<float>>(raw + 2 * j, z + 2 * j);
}

struct Scratch {
    alignas(16) U32 raw[kBlock];
    alignas(16) float zf[kBlock];
    alignas(16) double z[kBlock];
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
    if constexpr (std::is_same_v<T, Zvp32f>) {
        uniformFloat<true>(r.gen, pDst, len, r.step, r.centre);
    } else {
        Scratch s;
        for (int i = 0; i < len;) {
            const int n = std::min(kBlock, len - i);
            rawSteps<true>(r.gen, s.raw, n);
            mapUniform(pDst + i, s.raw, n, r.step, r.centre, lo, hi);
            i += n;
        }
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
        rawSteps<true>(r.gen, s.raw, 2 * pairs);
        boxMuller(s.raw, s.zf, pairs);
        const int take = std::min(want, 2 * pairs);
        mapGauss(pDst + i, s.zf, take, 1, mean, sd);
        if (take < 2 * pairs) {
            r.work[0] = s.zf[2 * pairs - 1];
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
    Gen g{*pSeed, 0, 0, 0, 0};
    if constexpr (std::is_same_v<T, Zvp32f>) {
        uniformFloat<false>(g, pDst, len, step, centre);
    } else {
        Scratch s;
        for (int i = 0; i < len;) {
            const int n = std::min(kBlock, len - i);
            rawSteps<false>(g, s.raw, n);
            mapUniform(pDst + i, s.raw, n, step, centre, lo, hi);
            i += n;
        }
    }
    *pSeed = g.cong;
    return zvpStsNoErr;
}

template <class T>
ZvpStatus gaussDirect(T* pDst, int len, T mean, T sd, unsigned int* pSeed) {
    ZVP_CHECK_PTRS(pDst, pSeed);
    ZVP_CHECK_LENS(len);
    const MxcsrGuard nearest(MxcsrGuard::kNearest);
    Gen g{*pSeed, 0, 0, 0, 0};
    Scratch s;
    for (int i = 0; i < len;) {
        const int n = std::min(kBlock / 2, len - i);
        rawSteps<false>(g, s.raw, 2 * n);
        if constexpr (std::is_same_v<T, Zvp64f>) {
            boxMuller(s.raw, s.z, n);
            mapGauss(pDst + i, s.z, n, 2, double(mean), double(sd));
        } else {
            // Single-precision deviates, as the state forms; z1 of each pair.
            boxMuller(s.raw, s.zf, n);
            for (int j = 1; j < n; ++j) s.zf[j] = s.zf[2 * j];
            mapGauss(pDst + i, s.zf, n, 1, double(mean), double(sd));
        }
        i += n;
    }
    *pSeed = g.cong;
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
