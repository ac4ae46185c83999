// Quarter-wave sine tables from which the FFT records read every root:
// b[k] = sin(2 pi k / N) for k = 0 .. N/4 (b[N/4] = 1), N = 2^m.
//
// Each kind of record fixes how its values are rounded, and a record built
// today must hold the same bits as one built by any earlier version, so each
// builder names its rounding rule:
//
//   fixedSin32f/64f  sin(2 pi j / 1024), j = 0 .. 256, correctly rounded.
//   complexBase      complex records above order 10. Single: the angle
//                    2 pi k/N formed in double, rounded to single, and its
//                    sine (up to N/8) or the cosine of the complementary
//                    angle (beyond) taken in double and rounded to single.
//                    Double: the angle formed in long double, its sine or
//                    complementary cosine taken in long double and rounded
//                    to double.
//   realBase         real records. Single up to order 10: the fixed table
//                    (every 2^(10-m)-th entry). Single above: as
//                    complexBase. Double: the angle formed in double, its
//                    sine or complementary cosine taken in double.
//
// The single-precision values and the double-precision values of the
// complex records are evaluated by polynomials (in double, or partly in long
// double), and each is rounded straight from that result when every value
// within the polynomial's error bound plus that of the function the rule
// names rounds the same way; only the rare value next to a rounding
// boundary calls the named function itself. The double-precision values of
// the real records call the double function directly: a polynomial precise
// enough to stand in for it costs as much.
#pragma once

#include <cstdint>

#include "level.h"

namespace zvp::ZVP_LEVEL::fft {

const float* fixedSin32f();
const double* fixedSin64f();

// Orders 11 .. 30.
void complexBase(float* b, int m);
void complexBase(double* b, int m);
// Orders 2 .. 30.
void realBase(float* b, int m);
void realBase(double* b, int m);

}  // namespace zvp::ZVP_LEVEL::fft
