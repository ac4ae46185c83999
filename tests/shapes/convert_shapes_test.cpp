// Rows of the conversion family in the table of export shapes, each with
// its element rule stated independently: exact integers (wide_int.h) for
// every rounding and saturation, ldexp for exact powers of two, a search
// over the decoded binary16 values for the half-precision roundings.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "shapes.h"
#include "wide_int.h"

namespace {

using namespace zvp::test;

// ---- Packed 24-bit samples as a row type -------------------------------------------

struct Packed24 {
    unsigned char b[3];
};
const std::uint32_t k24Extremes[8] = {0x800000, 0x800001, 0, 1, 2, 0x7FFFFE, 0x7FFFFF, 0xFFFFFF};

void put24(void* p, std::uint32_t v) {
    auto* b = static_cast<unsigned char*>(p);
    for (int k = 0; k < 3; ++k) b[k] = static_cast<unsigned char>(v >> (8 * k));
}
void draw24(void* dst, std::size_t n, std::mt19937_64& g, Draw d) {
    for (std::size_t i = 0; i < n; ++i) {
        const bool ext = d == Draw::Extreme || (d == Draw::Mixed && g() % 3 == 0);
        std::uint32_t v = ext ? k24Extremes[g() % 8] : std::uint32_t(g() >> (40 + g() % 24));
        if (!ext && g() % 2) v = (0x1000000 - v) & 0xFFFFFF;
        put24(static_cast<unsigned char*>(dst) + 3 * i, v);
    }
}
void extreme24(void* dst, int k) { put24(dst, k24Extremes[k % 8]); }
const Type* packed24() {
    static const Type t{&typeid(Packed24), 3, true, false, &draw24, &extreme24, 8,
                        [](const void* p) { auto* b = static_cast<const unsigned char*>(p); return !(b[0] | b[1] | b[2]); }};
    return &t;
}
// The byte-pointer arguments of a row are packed 24-bit samples.
Row packed(Row r) {
    for (Arg& a : r.args)
        if (a.type == typeOf<Zvp8u>()) a.type = packed24();
    return r;
}

// ---- Makers for the shapes only this family has ---------------------------------------

// Source, destination, length, rounding mode, and a scale factor if S is int.
template <class A, class D, class... S>
Row unr(const char* n, ZvpStatus (*f)(const A*, D*, int, ZvpRoundMode, S...)) {
    Row r = row(n, {in<A>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(static_cast<const A*>(p[0]), static_cast<D*>(p[1]), len, ZvpRoundMode(v.mode), S(v.sf)...);
    }, sizeof...(S) > 0);
    r.mode = true;
    return r;
}
// One channel: the channel array's entry is checked after the lengths.
template <class D>
Row joinRow(const char* n, ZvpStatus (*f)(const Zvp32f* const[], int, int, D*)) {
    Row r = row(n, {in<Zvp32f>(), out<D>()}, [f](void* const* p, int len, const Vals&) {
        const Zvp32f* ch[1] = {static_cast<const Zvp32f*>(p[0])};
        return f(ch, 1, len, static_cast<D*>(p[1]));
    });
    r.args[0].afterLengths = true;
    return r;
}
template <class S>
Row splitRow(const char* n, ZvpStatus (*f)(const S*, Zvp32f* const[], int, int)) {
    Row r = row(n, {in<S>(), out<Zvp32f>()}, [f](void* const* p, int len, const Vals&) {
        Zvp32f* ch[1] = {static_cast<Zvp32f*>(p[1])};
        return f(static_cast<const S*>(p[0]), ch, 1, len);
    });
    r.args[1].afterLengths = true;
    return r;
}
Rule noFinancial() {
    return [](const Vals& v) { return v.mode == 2 ? zvpStsRoundModeNotSupportedErr : zvpStsNoErr; };
}

// ---- Oracles ---------------------------------------------------------------------------

struct S24 {};
struct U24 {};
template <class T>
auto get(const void* p) {
    if constexpr (std::is_same_v<T, S24> || std::is_same_v<T, U24>) {
        const auto* b = static_cast<const unsigned char*>(p);
        const std::uint32_t u = b[0] | b[1] << 8 | std::uint32_t(b[2]) << 16;
        return std::is_same_v<T, S24> && (u & 0x800000) ? std::int64_t(u) - 0x1000000 : std::int64_t(u);
    } else {
        T x;
        std::memcpy(&x, p, sizeof x);
        return x;
    }
}
template <class T, class V>
void put(void* p, V v) {
    if constexpr (std::is_same_v<T, S24> || std::is_same_v<T, U24>) {
        put24(p, std::uint32_t(v));
    } else {
        const T x = T(v);
        std::memcpy(p, &x, sizeof x);
    }
}
template <class S, class D, class F>
Oracle el(F f) {
    return [f](void* const* p, const Vals& v) { put<D>(p[1], f(get<S>(p[0]), v)); };
}

Mode modeOf(int m) { return m == 0 ? Mode::TowardZero : m == 1 ? Mode::NearestEven : Mode::HalfAway; }

// x * 2^-sf exactly (x = M 2^E with an integer M), rounded by m and
// saturated to [lo, hi]; NaN gives the bound of its sign or the maximum.
template <class T>
std::int64_t toInt(T x, int sf, Mode m, std::int64_t lo, std::int64_t hi, bool nanBySign) {
    if (std::isnan(x)) return nanBySign && std::signbit(x) ? lo : hi;
    if (std::isinf(x)) return x > 0 ? hi : lo;
    if (x == 0) return 0;
    constexpr int digits = std::numeric_limits<T>::digits;
    int e = 0;
    const auto mant = std::int64_t(std::ldexp(std::frexp(x, &e), digits));
    const long long s = std::clamp<long long>((long long)sf - (e - digits), -400, 400);
    return std::clamp(quotient<std::int64_t>(Wide::of(mant), Wide::of(1), int(s), m), lo, hi);
}
template <class D, class T>
auto floatToInt(bool bits32 = sizeof(D) >= 4) {
    return [bits32](T x, const Vals& v) {
        using L = std::numeric_limits<D>;
        return D(toInt(x, v.sf, modeOf(v.mode), std::int64_t(L::min()), std::int64_t(L::max()), bits32));
    };
}

// The value of a binary16 code (finite codes; NaN and infinity apart).
double halfValue(int h) {
    const int e = (h >> 10) & 31, m = h & 1023;
    const double a = e == 0 ? std::ldexp(m, -24) : std::ldexp(1024 + m, e - 25);
    return h & 0x8000 ? -a : a;
}
// The binary16 code of x rounded to nearest even or toward zero: the finite
// codes are ordered like their values, so the neighbours of |x| are found by
// search (65536 stands in above the largest, for rounding to infinity).
Zvp16f halfOf(double x, bool nearest, std::uint32_t nanBits = 0) {
    static const std::vector<double> values = [] {
        std::vector<double> v(0x7C01);
        for (int c = 0; c < 0x7C00; ++c) v[c] = halfValue(c);
        v[0x7C00] = 65536.0;
        return v;
    }();
    const int sign = std::signbit(x) ? 0x8000 : 0;
    if (std::isnan(x)) return Zvp16f(sign | 0x7E00 | ((nanBits >> 13) & 0x3FF));
    const double a = std::fabs(x);
    if (std::isinf(x)) return Zvp16f(sign | 0x7C00);
    const int c = int(std::upper_bound(values.begin(), values.end(), a) - values.begin()) - 1;
    int pick = c;
    if (c == 0x7C00) pick = nearest ? 0x7C00 : 0x7BFF;
    else if (values[c] != a && nearest) {
        const double below = a - values[c], above = values[c + 1] - a;
        pick = below < above ? c : below > above ? c + 1 : (c % 2 == 0 ? c : c + 1);
    }
    return Zvp16f(sign | pick);
}
float halfToFloat(Zvp16f h) {
    if ((h & 0x7C00) != 0x7C00) return float(halfValue(h));
    if (h & 0x3FF) return std::numeric_limits<float>::quiet_NaN();
    return h & 0x8000 ? -INFINITY : INFINITY;
}

template <class T>
T scaledBy(T x, int sf, int lo, int hi) { return std::ldexp(x, -std::clamp(sf, lo, hi)); }

std::int16_t join16(float x) {
    if (x != x) return 0;
    const float c = std::fmin(std::fmax(x, -1.0f), 1.0f);
    return std::int16_t(std::nearbyint(c * 32767.5f - 0.5f));
}
std::int32_t join24(float x) {
    if (x != x) return 0;
    const double c = std::fmin(std::fmax(double(x), -1.0), 1.0);
    return std::int32_t(std::nearbyint(c * 8388607.5 - 0.5));
}

#define R(...) [](auto x, [[maybe_unused]] const Vals& v) { return __VA_ARGS__; }
const auto same = R(x);
const auto sat16 = R(std::clamp<std::int64_t>(x, -32768, 32767));

std::vector<Row> rows() {
    return {
        un("Convert_8s16s", zvpsConvert_8s16s).withOracle(el<Zvp8s, Zvp16s>(same)),
        un("Convert_16s32s", zvpsConvert_16s32s).withOracle(el<Zvp16s, Zvp32s>(same)),
        un("Convert_8s32f", zvpsConvert_8s32f).withOracle(el<Zvp8s, Zvp32f>(same)),
        un("Convert_8u32f", zvpsConvert_8u32f).withOracle(el<Zvp8u, Zvp32f>(same)),
        un("Convert_16s32f", zvpsConvert_16s32f).withOracle(el<Zvp16s, Zvp32f>(same)),
        un("Convert_16u32f", zvpsConvert_16u32f).withOracle(el<Zvp16u, Zvp32f>(same)),
        un("Convert_32s32f", zvpsConvert_32s32f).withOracle(el<Zvp32s, Zvp32f>(R(float(static_cast<long double>(x))))),
        un("Convert_32s64f", zvpsConvert_32s64f).withOracle(el<Zvp32s, Zvp64f>(same)),
        un("Convert_32f64f", zvpsConvert_32f64f).withOracle(el<Zvp32f, Zvp64f>(same)),
        un("Convert_64s64f", zvpsConvert_64s64f).with(kUnsignedLen)
            .withOracle(el<Zvp64s, Zvp64f>(R(double(static_cast<long double>(x))))),
        un("Convert_64f32f", zvpsConvert_64f32f).withOracle(el<Zvp64f, Zvp32f>(R(float(x)))),
        un("Convert_32s16s", zvpsConvert_32s16s).withOracle(el<Zvp32s, Zvp16s>(sat16)),
        un("Convert_16s32f_Sfs", zvpsConvert_16s32f_Sfs).withOracle(el<Zvp16s, Zvp32f>(R(scaledBy(float(x), v.sf, -112, 126)))),
        un("Convert_16s64f_Sfs", zvpsConvert_16s64f_Sfs)
            .withOracle(el<Zvp16s, Zvp64f>(R(scaledBy(double(x), v.sf, -1008, 1022)))),
        un("Convert_32s32f_Sfs", zvpsConvert_32s32f_Sfs)
            .withOracle(el<Zvp32s, Zvp32f>(R(float(scaledBy(static_cast<long double>(x), v.sf, -112, 126))))),
        un("Convert_32s64f_Sfs", zvpsConvert_32s64f_Sfs)
            .withOracle(el<Zvp32s, Zvp64f>(R(scaledBy(double(x), v.sf, -1008, 1022)))),
        unr("Convert_32f8s_Sfs", zvpsConvert_32f8s_Sfs).withOracle(el<Zvp32f, Zvp8s>(floatToInt<Zvp8s, float>())),
        unr("Convert_32f8u_Sfs", zvpsConvert_32f8u_Sfs).withOracle(el<Zvp32f, Zvp8u>(floatToInt<Zvp8u, float>())),
        unr("Convert_32f16s_Sfs", zvpsConvert_32f16s_Sfs).withOracle(el<Zvp32f, Zvp16s>(floatToInt<Zvp16s, float>())),
        unr("Convert_32f16u_Sfs", zvpsConvert_32f16u_Sfs).withOracle(el<Zvp32f, Zvp16u>(floatToInt<Zvp16u, float>())),
        unr("Convert_32f32s_Sfs", zvpsConvert_32f32s_Sfs).withOracle(el<Zvp32f, Zvp32s>(floatToInt<Zvp32s, float>())),
        unr("Convert_64f16s_Sfs", zvpsConvert_64f16s_Sfs).withOracle(el<Zvp64f, Zvp16s>(floatToInt<Zvp16s, double>())),
        unr("Convert_64f32s_Sfs", zvpsConvert_64f32s_Sfs).withOracle(el<Zvp64f, Zvp32s>(floatToInt<Zvp32s, double>())),
        unr("Convert_64f64s_Sfs", zvpsConvert_64f64s_Sfs).withOracle(el<Zvp64f, Zvp64s>(floatToInt<Zvp64s, double>())),
        // Exact rounding of x / 2^sf by the mode, saturated: the same as the
        // ladder of zero fill, rounded magnitudes, shifts and bounds.
        unr("Convert_16s8s_Sfs", zvpsConvert_16s8s_Sfs).with(kUnsignedLen).withOracle(el<Zvp16s, Zvp8s>(
            R(quotient<Zvp8s>(Wide::of(x), Wide::of(1), v.sf, modeOf(v.mode))))),
        unr("Convert_64s32s_Sfs", zvpsConvert_64s32s_Sfs).withOracle(el<Zvp64s, Zvp32s>(
            R(quotient<Zvp32s>(Wide::of(x), Wide::of(1), std::clamp(v.sf, -31, 63), modeOf(v.mode))))),
        un("Convert_32s16s_Sfs", zvpsConvert_32s16s_Sfs)
            .withOracle(el<Zvp32s, Zvp16s>(R(scaled<Zvp16s>(Wide::of(x), std::clamp(v.sf, -15, 31))))),
        packed(un("Convert_24s32s", zvpsConvert_24s32s)).withOracle(el<S24, Zvp32s>(same)),
        packed(un("Convert_24u32u", zvpsConvert_24u32u)).withOracle(el<U24, Zvp32u>(same)),
        packed(un("Convert_24s32f", zvpsConvert_24s32f)).withOracle(el<S24, Zvp32f>(same)),
        packed(un("Convert_24u32f", zvpsConvert_24u32f)).withOracle(el<U24, Zvp32f>(same)),
        packed(un("Convert_32s24s_Sfs", zvpsConvert_32s24s_Sfs)).withOracle(el<Zvp32s, S24>(R(std::clamp<std::int64_t>(
            scaled<std::int64_t>(Wide::of(x), std::clamp(v.sf, -31, 31)), -8388608, 8388607)))),
        packed(un("Convert_32u24u_Sfs", zvpsConvert_32u24u_Sfs)).withOracle(el<Zvp32u, U24>(R(std::clamp<std::int64_t>(
            scaled<std::int64_t>(Wide::ofU(x), std::clamp(v.sf, -31, 31)), 0, 16777215)))),
        packed(un("Convert_32f24s_Sfs", zvpsConvert_32f24s_Sfs))
            .withOracle(el<Zvp32f, S24>(R(toInt(x, v.sf, Mode::NearestEven, -8388608, 8388607, false)))),
        packed(un("Convert_32f24u_Sfs", zvpsConvert_32f24u_Sfs))
            .withOracle(el<Zvp32f, U24>(R(toInt(x, v.sf, Mode::NearestEven, 0, 16777215, false)))),
        unr("Convert_16s16f", zvpsConvert_16s16f).refuse(noFinancial())
            .withOracle(el<Zvp16s, Zvp16f>(R(halfOf(x, v.mode == 1)))),
        unr("Convert_32f16f", zvpsConvert_32f16f).refuse(noFinancial()).withOracle(el<Zvp32f, Zvp16f>(R(
            halfOf(x, v.mode == 1, get<std::uint32_t>(&x))))),
        un("Convert_16f32f", zvpsConvert_16f32f).withOracle(el<Zvp16f, Zvp32f>(R(halfToFloat(x)))),
        unr("Convert_16f16s_Sfs", zvpsConvert_16f16s_Sfs).refuse(noFinancial()).withOracle(el<Zvp16f, Zvp16s>(R(
            Zvp16s(toInt(halfToFloat(x), v.sf, v.mode == 1 ? Mode::NearestEven : Mode::TowardZero, -32768, 32767, false))))),
        joinRow("JoinScaled_32f16s_D2L", zvpsJoinScaled_32f16s_D2L).withOracle(el<Zvp32f, Zvp16s>(R(join16(x)))),
        packed(joinRow("JoinScaled_32f24s_D2L", zvpsJoinScaled_32f24s_D2L)).withOracle(el<Zvp32f, S24>(R(join24(x)))),
        splitRow("SplitScaled_16s32f_D2L", zvpsSplitScaled_16s32f_D2L)
            .withOracle(el<Zvp16s, Zvp32f>(R(float(x) * (1.0f / 32767.5f) + 0.5f / 32767.5f))),
        packed(splitRow("SplitScaled_24s32f_D2L", zvpsSplitScaled_24s32f_D2L))
            .withOracle(el<S24, Zvp32f>(R(float(double(x) * 1.19209296656209e-07 + 5.96046483281045e-08)))),
    };
}
#undef R

const bool registered = addShapeFamily("convert", &rows);

// Every element of `src` through a row, against its oracle.
void sweep(const Row& r, const std::vector<unsigned char>& src, int n, const Vals& v) {
    const std::size_t out = r.args[1].type->size;
    std::vector<unsigned char> got(std::size_t(n) * out), want(out);
    void* p[2] = {const_cast<unsigned char*>(src.data()), got.data()};
    ASSERT_EQ(r.call(p, n, v), zvpStsNoErr) << r.name;
    for (int i = 0; i < n; ++i) {
        void* e[2] = {const_cast<unsigned char*>(src.data()) + std::size_t(i) * r.args[0].type->size, want.data()};
        r.oracle(e, v);
        if (!sameValues(r.args[1].type, got.data() + std::size_t(i) * out, want.data(), out)) {
            ADD_FAILURE() << r.name << " input #" << i << " sf " << v.sf << " mode " << v.mode << ": got "
                          << hex(got.data() + std::size_t(i) * out, out) << ", expected " << hex(want.data(), out);
            return;
        }
    }
}

// All 65536 inputs of every conversion from a 16-bit source, in every mode
// and at scale factors on each path.
TEST(ConvertSweep, Every16BitSourceValue) {
    std::vector<unsigned char> all(2 * 65536);
    for (int i = 0; i < 65536; ++i) put<std::uint16_t>(all.data() + 2 * i, i);
    for (const Row& r : rows()) {
        if (r.args[0].type->size != 2 || r.args[0].role != Role::In || r.args[0].afterLengths) continue;
        for (int sf : r.sf ? std::vector<int>{0, 1, 7, 17, 18, 200, -3, -7, -200} : std::vector<int>{0})
            for (int mode : r.mode ? std::vector<int>{1, 0, 3} : std::vector<int>{1}) {
                Vals v;
                v.sf = sf, v.mode = mode;
                if (r.refused(v) == zvpStsNoErr) sweep(r, all, 65536, v);
            }
    }
}

// Floats at and around every binary16 rounding boundary: each finite code,
// the midpoint to the next code, one float step either side of both, and
// the overflow thresholds; in both modes, against the search oracle. Every
// code's own value is among them (NaNs with their payload), so every code
// comes back unchanged through single precision (NaNs as quiet NaNs).
TEST(ConvertSweep, FloatToHalfAtEveryCodeAndBoundary) {
    std::vector<float> xs = {65504.0f, 65519.99609375f, 65520.0f, 65535.99f, 65536.0f, 3.0e38f, 0x1p-25f, 0x1p-26f,
                             std::nextafter(0x1p-25f, 1.0f), std::nextafter(0x1p-14f, 0.0f), 0x1p-149f};
    for (int c = 0; c < 0x7BFF; ++c) {
        const float a = float(halfValue(c)), mid = float((halfValue(c) + halfValue(c + 1)) / 2);
        for (float x : {a, mid}) {
            xs.push_back(x);
            xs.push_back(std::nextafter(x, 0.0f));
            xs.push_back(std::nextafter(x, INFINITY));
        }
    }
    const std::size_t n = xs.size();
    for (std::size_t i = 0; i < n; ++i) xs.push_back(-xs[i]);
    for (std::uint32_t sign : {0u, 0x80000000u})  // infinities and every NaN payload
        for (std::uint32_t m = 0; m < 0x400; ++m) {
            const std::uint32_t b = sign | 0x7F800000 | m << 13;
            xs.push_back(get<float>(&b));
        }
    std::vector<unsigned char> src(xs.size() * 4);
    std::memcpy(src.data(), xs.data(), src.size());
    for (const Row& r : rows())
        if (r.name == "Convert_32f16f")
            for (int mode : {1, 0}) {
                Vals v;
                v.mode = mode;
                sweep(r, src, int(xs.size()), v);
            }
}

}  // namespace
