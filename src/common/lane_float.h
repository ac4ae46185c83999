// Float and double lanes of the lane layer (see lane.h for the interface).
//
// A partial lane loads zeros above its N elements. At N = 1 the arithmetic
// uses the scalar instructions, so the one-lane form raises exactly the
// floating-point status flags that plain scalar code would; at other partial
// widths the unused lanes compute on those zeros.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

#include "lane.h"

namespace zvp::ZVP_LEVEL {

namespace lanefp {

// The intrinsics of one element type, on the whole register.
template <class T>
struct Ops;

template <>
struct Ops<float> {
    using R = __m128;
    using I = std::int32_t;
    static R cast(__m128i v) { return _mm_castsi128_ps(v); }
    static __m128i bits(R v) { return _mm_castps_si128(v); }
    static R set1(float x) { return _mm_set1_ps(x); }
    static R zero() { return _mm_setzero_ps(); }
    static R pair(float x0, float x1) { return _mm_setr_ps(x0, x1, x0, x1); }
    static R add(R a, R b) { return _mm_add_ps(a, b); }
    static R sub(R a, R b) { return _mm_sub_ps(a, b); }
    static R mul(R a, R b) { return _mm_mul_ps(a, b); }
    static R div(R a, R b) { return _mm_div_ps(a, b); }
    static R min(R a, R b) { return _mm_min_ps(a, b); }
    static R max(R a, R b) { return _mm_max_ps(a, b); }
    static R sqrt(R a) { return _mm_sqrt_ps(a); }
    static R add1(R a, R b) { return _mm_add_ss(a, b); }
    static R sub1(R a, R b) { return _mm_sub_ss(a, b); }
    static R mul1(R a, R b) { return _mm_mul_ss(a, b); }
    static R div1(R a, R b) { return _mm_div_ss(a, b); }
    static R min1(R a, R b) { return _mm_min_ss(a, b); }
    static R max1(R a, R b) { return _mm_max_ss(a, b); }
    static R sqrt1(R a) { return _mm_sqrt_ss(a); }
    static R and_(R a, R b) { return _mm_and_ps(a, b); }
    static R or_(R a, R b) { return _mm_or_ps(a, b); }
    static R xor_(R a, R b) { return _mm_xor_ps(a, b); }
    static R andnot(R a, R b) { return _mm_andnot_ps(a, b); }
    static R eq(R a, R b) { return _mm_cmpeq_ps(a, b); }
    static R ne(R a, R b) { return _mm_cmpneq_ps(a, b); }
    static R lt(R a, R b) { return _mm_cmplt_ps(a, b); }
    static R le(R a, R b) { return _mm_cmple_ps(a, b); }
    static R gt(R a, R b) { return _mm_cmpgt_ps(a, b); }
    static R ge(R a, R b) { return _mm_cmpge_ps(a, b); }
    static R ord(R a, R b) { return _mm_cmpord_ps(a, b); }
    static R unord(R a, R b) { return _mm_cmpunord_ps(a, b); }
    static R blend(R a, R b, R m) { return _mm_blendv_ps(a, b, m); }
    static int movemask(R m) { return _mm_movemask_ps(m); }
    static float first(R v) { return _mm_cvtss_f32(v); }
    static R load16(const float* p) { return _mm_loadu_ps(p); }
    static R loada16(const float* p) { return _mm_load_ps(p); }
    static void store16(float* p, R v) { _mm_storeu_ps(p, v); }
    static void storea16(float* p, R v) { _mm_store_ps(p, v); }
    static void stream16(float* p, R v) { _mm_stream_ps(p, v); }
    static R load1(const float* p) { return _mm_load_ss(p); }
    static void store1(float* p, R v) { _mm_store_ss(p, v); }
    static R signBit() { return _mm_set1_ps(-0.0f); }
    static R oddSign() { return _mm_setr_ps(0.0f, -0.0f, 0.0f, -0.0f); }
    // (re, im) pairs
    static R swapReIm(R v) { return _mm_shuffle_ps(v, v, _MM_SHUFFLE(2, 3, 0, 1)); }
    static R dupRe(R v) { return _mm_moveldup_ps(v); }
    static R dupIm(R v) { return _mm_movehdup_ps(v); }
    static R addsub(R a, R b) { return _mm_addsub_ps(a, b); }
    static R reversePairs(R v) { return _mm_shuffle_ps(v, v, _MM_SHUFFLE(1, 0, 3, 2)); }
    static R reverse(R v) { return _mm_shuffle_ps(v, v, _MM_SHUFFLE(0, 1, 2, 3)); }
    static R fromI32(__m128i v) { return _mm_cvtepi32_ps(v); }
    static __m128i toI32(R v) { return _mm_cvtps_epi32(v); }
    static __m128i toI32Trunc(R v) { return _mm_cvttps_epi32(v); }
    static R roundNearest(R v) { return _mm_round_ps(v, _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC); }
    static R roundTrunc(R v) { return _mm_round_ps(v, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC); }
    static R hiHalf(R v) { return _mm_movehl_ps(v, v); }
    static R zipLo(R a, R b) { return _mm_unpacklo_ps(a, b); }
    static R zipHi(R a, R b) { return _mm_unpackhi_ps(a, b); }
    static R joinLo(R a, R b) { return _mm_movelh_ps(a, b); }
    // (x0, x0, x1, x1) from the low half
    static R dupEach(R v) { return _mm_unpacklo_ps(v, v); }
    static R hadd(R a, R b) { return _mm_hadd_ps(a, b); }
};

template <>
struct Ops<double> {
    using R = __m128d;
    using I = std::int64_t;
    static R cast(__m128i v) { return _mm_castsi128_pd(v); }
    static __m128i bits(R v) { return _mm_castpd_si128(v); }
    static R set1(double x) { return _mm_set1_pd(x); }
    static R zero() { return _mm_setzero_pd(); }
    static R pair(double x0, double x1) { return _mm_setr_pd(x0, x1); }
    static R add(R a, R b) { return _mm_add_pd(a, b); }
    static R sub(R a, R b) { return _mm_sub_pd(a, b); }
    static R mul(R a, R b) { return _mm_mul_pd(a, b); }
    static R div(R a, R b) { return _mm_div_pd(a, b); }
    static R min(R a, R b) { return _mm_min_pd(a, b); }
    static R max(R a, R b) { return _mm_max_pd(a, b); }
    static R sqrt(R a) { return _mm_sqrt_pd(a); }
    static R add1(R a, R b) { return _mm_add_sd(a, b); }
    static R sub1(R a, R b) { return _mm_sub_sd(a, b); }
    static R mul1(R a, R b) { return _mm_mul_sd(a, b); }
    static R div1(R a, R b) { return _mm_div_sd(a, b); }
    static R min1(R a, R b) { return _mm_min_sd(a, b); }
    static R max1(R a, R b) { return _mm_max_sd(a, b); }
    static R sqrt1(R a) { return _mm_sqrt_sd(a, a); }
    static R and_(R a, R b) { return _mm_and_pd(a, b); }
    static R or_(R a, R b) { return _mm_or_pd(a, b); }
    static R xor_(R a, R b) { return _mm_xor_pd(a, b); }
    static R andnot(R a, R b) { return _mm_andnot_pd(a, b); }
    static R eq(R a, R b) { return _mm_cmpeq_pd(a, b); }
    static R ne(R a, R b) { return _mm_cmpneq_pd(a, b); }
    static R lt(R a, R b) { return _mm_cmplt_pd(a, b); }
    static R le(R a, R b) { return _mm_cmple_pd(a, b); }
    static R gt(R a, R b) { return _mm_cmpgt_pd(a, b); }
    static R ge(R a, R b) { return _mm_cmpge_pd(a, b); }
    static R ord(R a, R b) { return _mm_cmpord_pd(a, b); }
    static R unord(R a, R b) { return _mm_cmpunord_pd(a, b); }
    static R blend(R a, R b, R m) { return _mm_blendv_pd(a, b, m); }
    static int movemask(R m) { return _mm_movemask_pd(m); }
    static double first(R v) { return _mm_cvtsd_f64(v); }
    static R load16(const double* p) { return _mm_loadu_pd(p); }
    static R loada16(const double* p) { return _mm_load_pd(p); }
    static void store16(double* p, R v) { _mm_storeu_pd(p, v); }
    static void storea16(double* p, R v) { _mm_store_pd(p, v); }
    static void stream16(double* p, R v) { _mm_stream_pd(p, v); }
    static R load1(const double* p) { return _mm_load_sd(p); }
    static void store1(double* p, R v) { _mm_store_sd(p, v); }
    static R signBit() { return _mm_set1_pd(-0.0); }
    static R oddSign() { return _mm_setr_pd(0.0, -0.0); }
    static R swapReIm(R v) { return _mm_shuffle_pd(v, v, 1); }
    static R dupRe(R v) { return _mm_movedup_pd(v); }
    static R dupIm(R v) { return _mm_unpackhi_pd(v, v); }
    static R addsub(R a, R b) { return _mm_addsub_pd(a, b); }
    static R reversePairs(R v) { return v; }
    static R reverse(R v) { return _mm_shuffle_pd(v, v, 1); }
    static R fromI32(__m128i v) { return _mm_cvtepi32_pd(v); }
    static __m128i toI32(R v) { return _mm_cvtpd_epi32(v); }
    static __m128i toI32Trunc(R v) { return _mm_cvttpd_epi32(v); }
    static R roundNearest(R v) { return _mm_round_pd(v, _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC); }
    static R roundTrunc(R v) { return _mm_round_pd(v, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC); }
    static R hiHalf(R v) { return _mm_unpackhi_pd(v, v); }
    static R zipLo(R a, R b) { return _mm_unpacklo_pd(a, b); }
    static R zipHi(R a, R b) { return _mm_unpackhi_pd(a, b); }
    static R joinLo(R a, R b) { return _mm_unpacklo_pd(a, b); }
    static R dupEach(R v) { return _mm_movedup_pd(v); }
    static R hadd(R a, R b) { return _mm_hadd_pd(a, b); }
};

template <class T, int B>
struct FloatLane {
    using O = Ops<T>;
    using R = typename O::R;
    static_assert(B == 16 || (B >= int(sizeof(T)) && B < 16 && (B & (B - 1)) == 0));

    using type = T;
    using M = R;  // a mask: every bit of a lane set, or none
    static constexpr int N = B / int(sizeof(T));
    static constexpr int kBytes = B;
    static constexpr bool kScalar = N == 1;

    // ---- memory
    static R load(const T* p) {
        if constexpr (B == 16) return O::load16(p);
        else if constexpr (B == int(sizeof(T))) return O::load1(p);
        else return O::cast(lanemem::load<B>(p));
    }
    static R loada(const T* p) {
        if constexpr (B == 16) return O::loada16(p);
        else return load(p);
    }
    static void store(T* p, R v) {
        if constexpr (B == 16) O::store16(p, v);
        else if constexpr (B == int(sizeof(T))) O::store1(p, v);
        else lanemem::store<B>(p, O::bits(v));
    }
    static void storea(T* p, R v) {
        if constexpr (B == 16) O::storea16(p, v);
        else store(p, v);
    }
    static void stream(T* p, R v) {
        if constexpr (B == 16) O::stream16(p, v);
        else store(p, v);
    }
    static R loadN(const T* p, int n) {
        return O::cast(lanemem::loadBytes<B>(p, std::size_t(n) * sizeof(T)));
    }
    static void storeN(T* p, R v, int n) {
        lanemem::storeBytes<B>(p, O::bits(v), std::size_t(n) * sizeof(T));
    }

    // ---- values
    static R set1(T x) { return O::set1(x); }
    static R zero() { return O::zero(); }
    static R pair(T x0, T x1) { return O::pair(x0, x1); }
    static T first(R v) { return O::first(v); }

    // ---- arithmetic (scalar instructions at one lane)
    static R add(R a, R b) { return kScalar ? O::add1(a, b) : O::add(a, b); }
    static R sub(R a, R b) { return kScalar ? O::sub1(a, b) : O::sub(a, b); }
    static R mul(R a, R b) { return kScalar ? O::mul1(a, b) : O::mul(a, b); }
    static R div(R a, R b) { return kScalar ? O::div1(a, b) : O::div(a, b); }
    static R min(R a, R b) { return kScalar ? O::min1(a, b) : O::min(a, b); }
    static R max(R a, R b) { return kScalar ? O::max1(a, b) : O::max(a, b); }
    static R sqrt(R a) { return kScalar ? O::sqrt1(a) : O::sqrt(a); }
    static R neg(R a) { return O::xor_(a, O::signBit()); }
    // The low N 32-bit integer lanes of v, converted exactly (double) or
    // rounded by the current mode (float beyond 2^24).
    static R fromI32(__m128i v) { return O::fromI32(v); }
    static R abs(R a) { return O::andnot(O::signBit(), a); }
    // To 32-bit integers in the low N lanes: by the current rounding mode,
    // or truncated (out of range and NaN give the integer indefinite).
    static __m128i toI32(R v) { return O::toI32(v); }
    static __m128i toI32Trunc(R v) { return O::toI32Trunc(v); }
    // To the nearest integer value, ties to even, whatever the mode.
    static R roundNearest(R v) { return O::roundNearest(v); }
    // To the integer value toward zero, whatever the mode.
    static R roundTrunc(R v) { return O::roundTrunc(v); }
    // The high 8 bytes moved to the low ones.
    static R hiHalf(R v) { return O::hiHalf(v); }
    // (a0, b0, a1, b1 ...) from the low halves, or from the high halves; the
    // low half of a followed by the low half of b.
    static R zipLo(R a, R b) { return O::zipLo(a, b); }
    static R zipHi(R a, R b) { return O::zipHi(a, b); }
    static R joinLo(R a, R b) { return O::joinLo(a, b); }
    // The register's bits as integer lanes, and back.
    static __m128i bits(R v) { return O::bits(v); }
    static R fromBits(__m128i v) { return O::cast(v); }

    // ---- bits, compares, selection
    static R and_(R a, R b) { return O::and_(a, b); }
    static R or_(R a, R b) { return O::or_(a, b); }
    static R xor_(R a, R b) { return O::xor_(a, b); }
    static R andnot(R a, R b) { return O::andnot(a, b); }
    static M eq(R a, R b) { return O::eq(a, b); }
    static M ne(R a, R b) { return O::ne(a, b); }
    static M lt(R a, R b) { return O::lt(a, b); }
    static M le(R a, R b) { return O::le(a, b); }
    static M gt(R a, R b) { return O::gt(a, b); }
    static M ge(R a, R b) { return O::ge(a, b); }
    static M ord(R a, R b) { return O::ord(a, b); }
    static M unord(R a, R b) { return O::unord(a, b); }
    static R blend(R a, R b, M m) { return O::blend(a, b, m); }
    // Whether any of the N lanes of m is set.
    static bool anyOf(M m) { return (O::movemask(m) & ((1 << N) - 1)) != 0; }
    // The number of the first of the N lanes of m that is set; N if none is.
    static int firstOf(M m) {
        const int bits = O::movemask(m) & ((1 << N) - 1);
        return bits ? __builtin_ctz(unsigned(bits)) : N;
    }

    // ---- complex data as (re, im) pairs
    static R swapReIm(R v) { return O::swapReIm(v); }
    static R dupRe(R v) { return O::dupRe(v); }
    static R dupIm(R v) { return O::dupIm(v); }
    // a - b in the real lanes, a + b in the imaginary ones.
    static R addsub(R a, R b) { return O::addsub(a, b); }
    static R conj(R v) { return O::xor_(v, O::oddSign()); }
    // (ar br - ai bi, ar bi + ai br) for each pair.
    static R cmul(R a, R b) {
        return O::addsub(O::mul(O::dupRe(a), b), O::mul(O::dupIm(a), O::swapReIm(b)));
    }
    // a times the pair c = pair(cr, ci) repeated; cs = pair(ci, cr).
    static R cmulPair(R a, R c, R cs) {
        return O::addsub(O::mul(O::dupRe(a), c), O::mul(O::dupIm(a), cs));
    }
    // The pairs of the register in reverse order.
    static R reversePairs(R v) { return O::reversePairs(v); }
    // The elements of the register in reverse order (full lanes).
    static R reverse(R v) { return O::reverse(v); }
    // The low half's elements each repeated twice: a real per complex pair.
    static R dupEach(R v) { return O::dupEach(v); }
    // The sums of adjacent pairs: those of a in the low half, those of b in
    // the high half ((re, im) pairs to |z|^2 from their squares).
    static R pairSums(R a, R b) { return O::hadd(a, b); }
};

}  // namespace lanefp

template <int B>
struct Lane<float, B> : lanefp::FloatLane<float, B> {
    using R = __m128;
    // The hardware reciprocal estimate, relative error at most 1.5 * 2^-12;
    // a zero or denormal gives an infinity, a value above 2^126 gives 0.
    static R rcp(R a) {
        if constexpr (B == int(sizeof(float))) return _mm_rcp_ss(a);
        else return _mm_rcp_ps(a);
    }
    // Full width only: 2N interleaved (re, im) values at p to N real parts
    // and N imaginary parts, and back.
    static void deinterleave(const float* p, R& re, R& im) {
        static_assert(B == 16);
        const R a = _mm_loadu_ps(p), b = _mm_loadu_ps(p + 4);
        re = _mm_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0));
        im = _mm_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1));
    }
    static void interleave(float* p, R re, R im) {
        static_assert(B == 16);
        _mm_storeu_ps(p, _mm_unpacklo_ps(re, im));
        _mm_storeu_ps(p + 4, _mm_unpackhi_ps(re, im));
    }
    // N registers seen as an N x N matrix, row i = v[i], transposed.
    static void transpose(R* v) {
        static_assert(B == 16);
        _MM_TRANSPOSE4_PS(v[0], v[1], v[2], v[3]);
    }
};

template <int B>
struct Lane<double, B> : lanefp::FloatLane<double, B> {
    using R = __m128d;
    // The two low singles of v, exactly; and back, rounded (into the two
    // low singles, zeros above).
    static R fromF32(__m128 v) { return _mm_cvtps_pd(v); }
    static __m128 toF32(R v) { return _mm_cvtpd_ps(v); }
    static void deinterleave(const double* p, R& re, R& im) {
        static_assert(B == 16);
        const R a = _mm_loadu_pd(p), b = _mm_loadu_pd(p + 2);
        re = _mm_unpacklo_pd(a, b);
        im = _mm_unpackhi_pd(a, b);
    }
    static void interleave(double* p, R re, R im) {
        static_assert(B == 16);
        _mm_storeu_pd(p, _mm_unpacklo_pd(re, im));
        _mm_storeu_pd(p + 2, _mm_unpackhi_pd(re, im));
    }
    static void transpose(R* v) {
        static_assert(B == 16);
        const R a = _mm_unpacklo_pd(v[0], v[1]);
        const R b = _mm_unpackhi_pd(v[0], v[1]);
        v[0] = a;
        v[1] = b;
    }
};

// The lane type that holds one complex element of T: its (re, im) pair.
template <class T>
using Pair = Lanes<T, 2>;

}  // namespace zvp::ZVP_LEVEL
