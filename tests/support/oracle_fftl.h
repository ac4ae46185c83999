// A second independent reference for large transforms: an iterative radix-2
// FFT accumulated in long double, its roots computed directly in long double
// (no recurrences). Accurate enough to judge double-precision results, where
// the double reference of oracle_dft.h would be as wrong as the result under
// test. Shares no code with the library.
#pragma once

#include <cmath>
#include <complex>
#include <cstddef>
#include <vector>

namespace zvp::test {

// In place, natural order in and out; sign -1 forward, +1 inverse; n a power of two.
inline void longDoubleFft(std::vector<std::complex<long double>>& x, int sign) {
    const std::size_t n = x.size();
    for (std::size_t i = 1, j = 0; i < n; ++i) {
        std::size_t bit = n >> 1;
        for (; j & bit; bit >>= 1) j ^= bit;
        j ^= bit;
        if (i < j) std::swap(x[i], x[j]);
    }
    const long double twoPi = 6.283185307179586476925286766559L;
    std::vector<std::complex<long double>> w(n / 2 > 0 ? n / 2 : 1);
    for (std::size_t k = 0; k < n / 2; ++k) {
        const long double a = sign * twoPi * static_cast<long double>(k) / static_cast<long double>(n);
        w[k] = {std::cos(a), std::sin(a)};
    }
    for (std::size_t len = 2; len <= n; len <<= 1) {
        const std::size_t half = len / 2, step = n / len;
        for (std::size_t b = 0; b < n; b += len)
            for (std::size_t k = 0; k < half; ++k) {
                const std::complex<long double> t = w[k * step] * x[b + k + half];
                x[b + k + half] = x[b + k] - t;
                x[b + k] += t;
            }
    }
}

}  // namespace zvp::test
