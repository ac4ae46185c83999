// Exact signed integers of up to 256 bits for test oracles, portable to
// i386 (no compiler 128-bit type): a sign and a magnitude of eight 32-bit
// limbs, with schoolbook multiplication and bitwise long division. Slow and
// plain on purpose: it shares nothing with the library's arithmetic.
//
// The oracles below state the library's rounding rules directly:
//   scaled(R, sf)          saturate(R * 2^-sf), ties to even (every Sfs result)
//   quotient(n, d, sf, m)  saturate(n / (d * 2^sf)) rounded by mode m
#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

namespace zvp::test {

class Wide {
public:
    static constexpr int kLimbs = 8;

    Wide() = default;
    static Wide of(std::int64_t v) {
        Wide w;
        w.neg_ = v < 0;
        const std::uint64_t m = v < 0 ? 0 - std::uint64_t(v) : std::uint64_t(v);
        w.l_[0] = std::uint32_t(m);
        w.l_[1] = std::uint32_t(m >> 32);
        return w;
    }
    static Wide ofU(std::uint64_t m) {
        Wide w;
        w.l_[0] = std::uint32_t(m);
        w.l_[1] = std::uint32_t(m >> 32);
        return w;
    }
    // 2^k, 0 <= k < 256.
    static Wide pow2(int k) {
        Wide w;
        w.l_[k / 32] = std::uint32_t(1) << (k % 32);
        return w;
    }

    bool isZero() const {
        for (auto x : l_)
            if (x) return false;
        return true;
    }
    bool negative() const { return neg_ && !isZero(); }
    int bitLength() const {
        for (int i = kLimbs - 1; i >= 0; --i)
            if (l_[i]) return 32 * i + 32 - __builtin_clz(l_[i]);
        return 0;
    }
    bool bit(int k) const { return (l_[k / 32] >> (k % 32)) & 1; }

    Wide operator-() const {
        Wide w = *this;
        w.neg_ = !neg_;
        return w;
    }
    friend Wide operator+(const Wide& a, const Wide& b) {
        if (a.neg_ == b.neg_) {
            Wide r = addMag(a, b);
            r.neg_ = a.neg_;
            return r;
        }
        if (cmpMag(a, b) >= 0) {
            Wide r = subMag(a, b);
            r.neg_ = a.neg_;
            return r;
        }
        Wide r = subMag(b, a);
        r.neg_ = b.neg_;
        return r;
    }
    friend Wide operator-(const Wide& a, const Wide& b) { return a + (-b); }
    friend Wide operator*(const Wide& a, const Wide& b) {
        Wide r;
        const int na = a.limbsUsed(), nb = b.limbsUsed();
        for (int i = 0; i < na; ++i) {
            std::uint64_t carry = 0;
            for (int j = 0; i + j < kLimbs && (j < nb || carry); ++j) {
                const std::uint64_t t = std::uint64_t(a.l_[i]) * b.l_[j] + r.l_[i + j] + carry;
                r.l_[i + j] = std::uint32_t(t);
                carry = t >> 32;
            }
        }
        r.neg_ = a.neg_ != b.neg_;
        return r;
    }
    // *this * 2^k (the magnitude must stay below 2^256).
    Wide shl(int k) const {
        Wide r;
        r.neg_ = neg_;
        const int q = k / 32, s = k % 32;
        for (int i = kLimbs - 1; i >= q; --i) {
            std::uint64_t v = std::uint64_t(l_[i - q]) << s;
            if (s && i - q - 1 >= 0) v |= l_[i - q - 1] >> (32 - s);
            r.l_[i] = std::uint32_t(v);
        }
        return r;
    }
    // floor(|*this| / 2^k), 0 <= k < 256, as a magnitude.
    Wide shrMag(int k) const {
        Wide r;
        const int q = k / 32, s = k % 32;
        for (int i = 0; i + q < kLimbs; ++i) {
            std::uint64_t v = l_[i + q] >> s;
            if (s && i + q + 1 < kLimbs) v |= std::uint64_t(l_[i + q + 1]) << (32 - s);
            r.l_[i] = std::uint32_t(v);
        }
        return r;
    }
    int limbsUsed() const {
        int n = kLimbs;
        while (n > 0 && l_[n - 1] == 0) --n;
        return n;
    }
    Wide abs() const {
        Wide w = *this;
        w.neg_ = false;
        return w;
    }
    friend int compare(const Wide& a, const Wide& b) {
        const bool an = a.negative(), bn = b.negative();
        if (an != bn) return an ? -1 : 1;
        const int m = cmpMag(a, b);
        return an ? -m : m;
    }
    friend bool operator==(const Wide& a, const Wide& b) { return compare(a, b) == 0; }

    // Magnitudes: q = |a| / |b|, r = |a| mod |b| (b != 0).
    static void divModMag(const Wide& a, const Wide& b, Wide& q, Wide& r) {
        q = Wide();
        r = Wide();
        if (cmpMag(a, b) < 0) {
            r = a.abs();
            return;
        }
        if (b.limbsUsed() == 1) {  // short division by one limb
            std::uint64_t rem = 0;
            for (int i = kLimbs - 1; i >= 0; --i) {
                const std::uint64_t cur = (rem << 32) | a.l_[i];
                q.l_[i] = std::uint32_t(cur / b.l_[0]);
                rem = cur % b.l_[0];
            }
            r = ofU(rem);
            return;
        }
        if (a.bitLength() <= 64 && b.bitLength() <= 64) {
            const std::uint64_t x = a.mag64(), y = b.mag64();
            q = ofU(x / y);
            r = ofU(x % y);
            return;
        }
        for (int i = a.bitLength() - 1; i >= 0; --i) {
            r = r.shl(1);
            if (a.bit(i)) r.l_[0] |= 1;
            if (cmpMag(r, b) >= 0) {
                r = subMag(r, b);
                q.l_[i / 32] |= std::uint32_t(1) << (i % 32);
            }
        }
    }
    std::uint64_t mag64() const { return std::uint64_t(l_[0]) | (std::uint64_t(l_[1]) << 32); }

    // The value if it fits int64_t range checks done by the caller.
    std::int64_t low64() const {
        const std::uint64_t m = mag64();
        return neg_ ? std::int64_t(0 - m) : std::int64_t(m);
    }

private:
    static int cmpMag(const Wide& a, const Wide& b) {
        for (int i = kLimbs - 1; i >= 0; --i)
            if (a.l_[i] != b.l_[i]) return a.l_[i] < b.l_[i] ? -1 : 1;
        return 0;
    }
    static Wide addMag(const Wide& a, const Wide& b) {
        Wide r;
        std::uint64_t c = 0;
        for (int i = 0; i < kLimbs; ++i) {
            const std::uint64_t t = std::uint64_t(a.l_[i]) + b.l_[i] + c;
            r.l_[i] = std::uint32_t(t);
            c = t >> 32;
        }
        return r;
    }
    static Wide subMag(const Wide& a, const Wide& b) {  // |a| >= |b|
        Wide r;
        std::int64_t borrow = 0;
        for (int i = 0; i < kLimbs; ++i) {
            std::int64_t t = std::int64_t(a.l_[i]) - b.l_[i] - borrow;
            borrow = t < 0;
            if (t < 0) t += std::int64_t(1) << 32;
            r.l_[i] = std::uint32_t(t);
        }
        return r;
    }

    bool neg_ = false;
    std::uint32_t l_[kLimbs] = {};
};

enum class Mode { TowardZero, NearestEven, HalfAway };

// Saturates an exact integer to the range of D.
template <class D>
D clampTo(const Wide& v) {
    using L = std::numeric_limits<D>;
    const Wide hi = Wide::ofU(std::uint64_t(L::max()));
    const Wide lo = std::is_signed_v<D> ? Wide::of(std::int64_t(L::min())) : Wide();
    if (compare(v, hi) > 0) return L::max();
    if (compare(v, lo) < 0) return L::min();
    return D(v.low64());
}

// n / d rounded by mode (d != 0), as an exact integer.
inline Wide roundQuotient(const Wide& n, const Wide& d, Mode mode) {
    Wide q, r;
    Wide::divModMag(n, d, q, r);
    const int c = compare(r.shl(1), d.abs());  // remainder against half the divisor
    bool up = false;
    if (mode == Mode::NearestEven) up = c > 0 || (c == 0 && q.bit(0));
    if (mode == Mode::HalfAway) up = c >= 0;
    if (up) q = q + Wide::of(1);
    return (n.negative() != d.negative()) ? -q : q;
}

// saturate(R * 2^-sf) to D, to nearest with ties to even.
// For sf >= 0 the quotient by 2^sf is q = floor(|R| / 2^sf) with remainder
// |R| - q * 2^sf, compared with half of 2^sf.
template <class D>
D scaled(const Wide& r, int sf) {
    if (sf < 0) return clampTo<D>(r.shl(sf < -100 ? 100 : -sf));  // |R| < 2^128 here
    if (sf > 250) return D(0);
    const Wide m = r.abs();
    Wide q = m.shrMag(sf);
    const Wide rem = m - q.shl(sf);
    const int c = compare(rem.shl(1), Wide::pow2(sf));
    if (c > 0 || (c == 0 && q.bit(0))) q = q + Wide::of(1);
    return clampTo<D>(r.negative() ? -q : q);
}

// saturate(n / (d * 2^sf)) to D, rounded by mode; d != 0, |n|, |d| < 2^64.
template <class D>
D quotient(const Wide& n, const Wide& d, int sf, Mode mode) {
    if (sf >= 0) return clampTo<D>(roundQuotient(n, d * Wide::pow2(sf > 150 ? 150 : sf), mode));
    return clampTo<D>(roundQuotient(n.shl(sf < -150 ? 150 : -sf), d, mode));
}

}  // namespace zvp::test
