// Independent reference transforms for the tests: a naive DFT accumulated in
// long double (exact enough for N <= 4096) and a plain recursive radix-2 FFT
// in double for larger N. They share no code with the library.
#pragma once

#include <cmath>
#include <complex>
#include <vector>

namespace zvp::test {

using cld = std::complex<long double>;

// X[k] = sum_n x[n] exp(sign * 2 pi i n k / N); sign -1 is the forward transform.
inline std::vector<cld> naiveDft(const std::vector<cld>& x, int sign) {
    const std::size_t n = x.size();
    std::vector<cld> out(n);
    const long double twoPi = 6.283185307179586476925286766559L;
    for (std::size_t k = 0; k < n; ++k) {
        cld acc = 0;
        for (std::size_t j = 0; j < n; ++j) {
            // Reduce n*k modulo N first so the angle stays accurate.
            const long double a = sign * twoPi * static_cast<long double>((j * k) % n) / n;
            acc += x[j] * cld(std::cos(a), std::sin(a));
        }
        out[k] = acc;
    }
    return out;
}

// Recursive decimation-in-time radix-2 FFT in double; twiddles from cos/sin
// of the exact angle (no recurrences). N must be a power of two.
inline void recursiveFft(std::complex<double>* x, std::size_t n, int sign,
                         std::vector<std::complex<double>>& scratch) {
    if (n == 1) return;
    const std::size_t h = n / 2;
    if (scratch.size() < n) scratch.resize(n);
    std::vector<std::complex<double>> even(h), odd(h);
    for (std::size_t i = 0; i < h; ++i) {
        even[i] = x[2 * i];
        odd[i] = x[2 * i + 1];
    }
    recursiveFft(even.data(), h, sign, scratch);
    recursiveFft(odd.data(), h, sign, scratch);
    const double twoPi = 6.283185307179586476925286766559;
    for (std::size_t k = 0; k < h; ++k) {
        const double a = sign * twoPi * static_cast<double>(k) / static_cast<double>(n);
        const std::complex<double> t = std::complex<double>(std::cos(a), std::sin(a)) * odd[k];
        x[k] = even[k] + t;
        x[k + h] = even[k] - t;
    }
}

inline std::vector<std::complex<double>> referenceFft(std::vector<std::complex<double>> x, int sign) {
    std::vector<std::complex<double>> scratch;
    recursiveFft(x.data(), x.size(), sign, scratch);
    return x;
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
