// Internals of the real-input FFT: the specification record, its size rules,
// and the kernels shared by the forward and inverse transforms.
//
// A real transform of N = 2^m samples runs a complex transform of N/2 points
// over z[n] = x[2n] + i x[2n+1] and recombines its result Z with the table of
//     a_k = 0.5 cos(2 pi k/N),  b_k = 0.5 - 0.5 sin(2 pi k/N),  k = 1 .. N/4:
//     X[k] = Q + (b_k - i a_k)(P - Q),  conj(X[N/2-k]) = P - (b_k - i a_k)(P - Q)
// with P = Z[k], Q = conj(Z[N/2-k]), X[0] = Re Z[0] + Im Z[0] and
// X[N/2] = Re Z[0] - Im Z[0]. The inverse runs the same steps backwards:
//     Z'[k] = 2 (V + (b_k + i a_k)(U - V)),  conj(Z'[N/2-k]) = 2 (U - ...)
// with U = X[k], V = conj(X[N/2-k]), and Z'[0] = (X0 + X[N/2], X0 - X[N/2]);
// the inverse complex transform of Z' gives N x[2n] + i N x[2n+1].
#pragma once

#include <cstddef>
#include <cstdint>

#include "level.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::fftr {

// The three layouts of a real spectrum.
enum class Layout { Ccs, Pack, Perm };

// The specification record. It sits at the caller's memory rounded up to 64
// bytes; the recombination table follows at offset 64 and the embedded
// complex specification after the table. Offsets, not pointers, so the record
// is the same on both targets (apart from the block base used by release).
struct RealSpec {
    std::int32_t tag;         // 6 (32f) or 9 (64f); 0 when released or unfinished
    std::int32_t order;
    std::int32_t fwdScaled;   // forward result multiplied by the scale
    std::int32_t invScaled;   // inverse result multiplied by the scale
    float scale;              // single-precision scale (0 for no scaling)
    std::int32_t hint;        // stored as given, not acted upon
    std::int32_t workSize;    // work bytes reported for the embedded complex transform
    std::int32_t allocated;   // 1 when built by InitAlloc
    std::int32_t splitTable;  // 1 when the recombination table has two levels
    std::int32_t cplxOffset;  // byte offset of the embedded complex spec, 0 if none
    std::int32_t recOffset;   // byte offset of the recombination table, 0 if none
    std::int32_t reserved;
    double scale64;           // the scale in double precision, for the 64f type
    void* base;               // block to free on release (InitAlloc only)
};
static_assert(sizeof(RealSpec) <= 64, "the record must fit ahead of the table");

constexpr std::int32_t kTagReal32f = 6;
constexpr std::int32_t kTagReal64f = 9;
constexpr int kHeaderBytes = 64;
// From this order the recombination table has two levels: 16384 bytes of
// fine coefficients for the angles 2 pi j/N, j = 1 .. 1024, then one 16-byte
// coarse entry (cos, sin of 2 pi 1024 i/N) per 1024 k (layouts in psfftrk.cpp).
constexpr int kSplitOrder = 20;
constexpr int kFineEntries = 1024;
constexpr int kFineBytes = 16384;

// Recombination kernels (psfftrk.cpp). `in` and `out` may be the same
// vector; the pair k is read at in + 2k + inShift and written at
// out + 2k + outShift (shift -1 for the Pack layout, else 0). The table holds
// for each two consecutive k (k = 1, 3, .. N/4 - 1) the vectors
// (b_k, b_k, b_k+1, b_k+1) and (a_k, -a_k, a_k+1, -a_k+1) (float), or per k
// (b, b), (a, -a) (double). `factor` multiplies every output.
template <class T>
void recombineForward(const T* in, T* out, int n, int inShift, int outShift, const T* table,
                      T factor, bool scaled);
template <class T>
void recombineInverse(const T* in, T* out, int n, int inShift, int outShift, const T* table,
                      T factor);
// The same with the two-level table of the large orders.
template <class T>
void recombineForwardSplit(const T* in, T* out, int n, int inShift, int outShift,
                           const T* fine, const T* coarse, T factor, bool scaled);
template <class T>
void recombineInverseSplit(const T* in, T* out, int n, int inShift, int outShift,
                           const T* fine, const T* coarse, T factor);

// Small real transforms of 2^order points, order 0 .. 5 (psfftrs.cpp).
// Forward: x (N values) to X[0 .. N/2] as N/2+1 (re, im) pairs.
// Inverse: X[0 .. N/2] as pairs (imaginary parts of X[0] and X[N/2] ignored)
// to N x, unscaled. Both read their whole input before writing, so the
// input and output may be the same vector.
template <class T>
void smallRealForward(const T* x, T* ccs, int order);
template <class T>
void smallRealInverse(const T* ccs, T* x, int order);

}  // namespace zvp::ZVP_LEVEL::fftr
