// Independent reference transforms for the tests, sharing no code with the
// library: a naive DFT and an iterative radix-2 FFT, both accumulated in long
// double with every root computed directly (no recurrences), so they are
// accurate enough to judge double-precision results.
#pragma once

#include <cmath>
#include <complex>
#include <cstddef>
#include <vector>

namespace zvp::test {

using cld = std::complex<long double>;

// X[k] = sum_n x[n] exp(sign * 2 pi i n k / N); sign -1 is the forward transform.
inline std::vector<cld> naiveDft(const std::vector<cld>& x, int sign) {
    const std::size_t n = x.size();
    std::vector<cld> out(n);
    const long double twoPi = 6.283185307179586476925286766559L;
    for (std::size_t k = 0; k < n; ++k)
        for (std::size_t j = 0; j < n; ++j) {
            // Reduce n*k modulo N first so the angle stays accurate.
            const long double a = sign * twoPi * static_cast<long double>((j * k) % n) / n;
            out[k] += x[j] * cld(std::cos(a), std::sin(a));
        }
    return out;
}

// The same sums in O(N log N): in place, natural order in and out; N a power of two.
inline void longDoubleFft(std::vector<cld>& x, int sign) {
    const std::size_t n = x.size();
    for (std::size_t i = 1, j = 0; i < n; ++i) {
        std::size_t bit = n >> 1;
        for (; j & bit; bit >>= 1) j ^= bit;
        j ^= bit;
        if (i < j) std::swap(x[i], x[j]);
    }
    const long double twoPi = 6.283185307179586476925286766559L;
    std::vector<cld> w(n / 2 > 0 ? n / 2 : 1);
    for (std::size_t k = 0; k < n / 2; ++k) {
        const long double a = sign * twoPi * static_cast<long double>(k) / static_cast<long double>(n);
        w[k] = {std::cos(a), std::sin(a)};
    }
    // Depth first: each half is finished before the pass that joins them, so
    // every sub-transform of up to 2^15 points is done while it is in cache.
    struct Rec {
        cld* x;
        const std::vector<cld>& w;
        std::size_t n;
        void passes(std::size_t b, std::size_t from, std::size_t to) const {
            for (std::size_t len = from; len <= to; len <<= 1)
                for (std::size_t o = b; o < b + to; o += len)
                    for (std::size_t k = 0; k < len / 2; ++k) {
                        const cld t = w[k * (n / len)] * x[o + k + len / 2];
                        x[o + k + len / 2] = x[o + k] - t;
                        x[o + k] += t;
                    }
        }
        void run(std::size_t b, std::size_t len) const {
            if (len <= (std::size_t(1) << 15)) return passes(b, 2, len);
            run(b, len / 2);
            run(b + len / 2, len / 2);
            passes(b, len, len);
        }
    };
    if (n > 1) Rec{x.data(), w, n}.run(0, n);
}

// Relative L2 error ||got - want|| / ||want|| (0 when both are zero).
template <class A, class B>
double relativeL2(const A& got, const B& want) {
    long double num = 0, den = 0;
    for (std::size_t i = 0; i < want.size(); ++i) {
        const long double dr = static_cast<long double>(std::real(got[i])) - std::real(want[i]);
        const long double di = static_cast<long double>(std::imag(got[i])) - std::imag(want[i]);
        num += dr * dr + di * di;
        den += static_cast<long double>(std::norm(want[i]));
    }
    if (den == 0) return num == 0 ? 0.0 : INFINITY;
    return static_cast<double>(std::sqrt(num / den));
}

}  // namespace zvp::test
