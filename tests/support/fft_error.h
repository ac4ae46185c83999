// The one error measure and bound of the FFT tests: the relative RMS error
// ||got - want|| / ||want|| of a transform of N = 2^m points (relativeL2 in
// oracle_dft.h), held to c * u * log2 N with u the unit roundoff (2^-24
// single, 2^-53 double).
//
// Where c comes from: a radix-2 Cooley-Tukey transform with twiddles of
// relative error mu, in arithmetic of unit roundoff u, has a relative RMS
// error of at most log2 N * (mu + 4u (sqrt2 + mu)) to first order (the
// classical bound; radix-4 and radix-8 steps are products of radix-2 steps
// with exact multiplications by -i). The library's twiddles carry at most
// about 3u (a single sine of a single-rounded angle, and the squared roots of
// the last column pass), so c = 3 + 4 sqrt2 < 9. A real transform is a
// complex one of N/2 points plus one recombination level (a twiddle product
// and a sum, within the same per-level term), so the same bound holds with
// log2 N of the real length; the packed layouts move values without
// rounding. The long-double references add well under u.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace zvp::test {

constexpr double kFftC = 9.0;

template <class T>
double fftBound(int order) {
    const double u = sizeof(T) == 4 ? 0x1p-24 : 0x1p-53;
    return kFftC * u * std::max(order, 1);
}

// ZVP_TEST_QUICK set (sanitizer runs): the large orders run sparsely.
inline bool fftQuick() {
    const char* q = std::getenv("ZVP_TEST_QUICK");
    return q && *q && *q != '0';
}

// The orders the transform tests run: every order up to `top`, or in a
// quick run every order up to 14, then 18 and 20.
inline std::vector<int> fftOrders(int top = 22) {
    std::vector<int> v;
    for (int m = 0; m <= top; ++m)
        if (!fftQuick() || m <= 14 || m == 18 || m == 20) v.push_back(m);
    return v;
}

}  // namespace zvp::test
