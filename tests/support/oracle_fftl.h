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
    // Depth first: each half is finished before the pass that joins them, so
    // every sub-transform of up to 2^15 points is done while it is in cache.
    struct Rec {
        std::complex<long double>* x;
        const std::vector<std::complex<long double>>& w;
        std::size_t n;
        void passes(std::size_t b, std::size_t from, std::size_t to) const {
            for (std::size_t len = from; len <= to; len <<= 1) {
                const std::size_t half = len / 2, step = n / len;
                for (std::size_t o = b; o < b + to; o += len)
                    for (std::size_t k = 0; k < half; ++k) {
                        const std::complex<long double> t = w[k * step] * x[o + k + half];
                        x[o + k + half] = x[o + k] - t;
                        x[o + k] += t;
                    }
            }
        }
        void run(std::size_t b, std::size_t len) const {
            if (len <= (std::size_t(1) << 15)) {
                passes(b, 2, len);
                return;
            }
            run(b, len / 2);
            run(b + len / 2, len / 2);
            passes(b, len, len);
        }
    };
    if (n > 1) Rec{x.data(), w, n}.run(0, n);
}

}  // namespace zvp::test
