// In place against out of place for the element-wise arithmetic families:
// every length 1..70, ordinary and extreme values, several scale factors.
// Complex products read both parts of an element to make either part, so an
// in-place kernel that writes one part before reading the other shows here.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "zvps.h"

namespace {

// Random values of T with a good share of the extremes.
template <class T>
std::vector<T> values(std::size_t n, unsigned seed) {
    std::mt19937 rng(seed);
    std::vector<T> v(n);
    auto* p = reinterpret_cast<unsigned char*>(v.data());
    for (std::size_t i = 0; i < n * sizeof(T); ++i) p[i] = static_cast<unsigned char>(rng());
    using P = std::conditional_t<sizeof(T) % 8 == 0 && !std::is_floating_point_v<T>, std::int32_t,
                                 std::int16_t>;
    (void)sizeof(P);
    if constexpr (std::is_floating_point_v<T>) {
        for (auto& x : v) x = T(int(rng() % 20001) - 10000) / T(64);
    } else if constexpr (std::is_integral_v<T>) {
        for (auto& x : v) {
            switch (rng() % 5) {
                case 0: x = std::numeric_limits<T>::max(); break;
                case 1: x = std::numeric_limits<T>::min(); break;
                default: break;
            }
        }
    }
    return v;
}

// One pair: out(src, srcDstCopy, dst, len, sf) against in(src, srcDst, len, sf);
// both operate on raw bytes of `bytes` per element.
struct Pair {
    std::string name;
    std::size_t bytes;
    bool isFloat;
    std::function<ZvpStatus(const void*, const void*, void*, int, int)> out;
    std::function<ZvpStatus(const void*, void*, int, int)> in;
};

template <class T>
struct Typed {
    static const T* c(const void* p) { return static_cast<const T*>(p); }
    static T* m(void* p) { return static_cast<T*>(p); }
};

#define VV_SFS(OP, T)                                                                             \
    Pair{#OP "_" #T "_Sfs", sizeof(Zvp##T), false,                                                \
         [](const void* s, const void* sd, void* d, int n, int sf) {                             \
             return zvps##OP##_##T##_Sfs(Typed<Zvp##T>::c(s), Typed<Zvp##T>::c(sd), Typed<Zvp##T>::m(d), n, sf); \
         },                                                                                       \
         [](const void* s, void* sd, int n, int sf) {                                             \
             return zvps##OP##_##T##_ISfs(Typed<Zvp##T>::c(s), Typed<Zvp##T>::m(sd), n, sf);     \
         }}
#define VV_F(OP, T)                                                                               \
    Pair{#OP "_" #T, sizeof(Zvp##T), true,                                                        \
         [](const void* s, const void* sd, void* d, int n, int) {                                 \
             return zvps##OP##_##T(Typed<Zvp##T>::c(s), Typed<Zvp##T>::c(sd), Typed<Zvp##T>::m(d), n); \
         },                                                                                       \
         [](const void* s, void* sd, int n, int) {                                                \
             return zvps##OP##_##T##_I(Typed<Zvp##T>::c(s), Typed<Zvp##T>::m(sd), n);             \
         }}
// Constant forms: the constant is the first element of src.
#define VC_SFS(OP, T)                                                                             \
    Pair{#OP "_" #T "_Sfs", sizeof(Zvp##T), false,                                                \
         [](const void* s, const void* sd, void* d, int n, int sf) {                             \
             return zvps##OP##_##T##_Sfs(Typed<Zvp##T>::c(sd), *Typed<Zvp##T>::c(s), Typed<Zvp##T>::m(d), n, sf); \
         },                                                                                       \
         [](const void* s, void* sd, int n, int sf) {                                             \
             return zvps##OP##_##T##_ISfs(*Typed<Zvp##T>::c(s), Typed<Zvp##T>::m(sd), n, sf);     \
         }}
#define VC_F(OP, T)                                                                               \
    Pair{#OP "_" #T, sizeof(Zvp##T), true,                                                        \
         [](const void* s, const void* sd, void* d, int n, int) {                                 \
             return zvps##OP##_##T(Typed<Zvp##T>::c(sd), *Typed<Zvp##T>::c(s), Typed<Zvp##T>::m(d), n); \
         },                                                                                       \
         [](const void* s, void* sd, int n, int) {                                                \
             return zvps##OP##_##T##_I(*Typed<Zvp##T>::c(s), Typed<Zvp##T>::m(sd), n);            \
         }}

std::vector<Pair> pairs() {
    return {
        VV_SFS(Add, 8u), VV_SFS(Add, 16s), VV_SFS(Add, 16u), VV_SFS(Add, 16sc), VV_SFS(Add, 32s),
        VV_SFS(Add, 32sc), VV_SFS(Add, 64s), VV_F(Add, 32f), VV_F(Add, 64f), VV_F(Add, 32fc),
        VV_F(Add, 64fc), VV_SFS(Sub, 8u), VV_SFS(Sub, 16s), VV_SFS(Sub, 16u), VV_SFS(Sub, 16sc),
        VV_SFS(Sub, 32s), VV_SFS(Sub, 32sc), VV_F(Sub, 32f), VV_F(Sub, 64fc),
        VV_SFS(Mul, 8u), VV_SFS(Mul, 16s), VV_SFS(Mul, 16u), VV_SFS(Mul, 16sc), VV_SFS(Mul, 32s),
        VV_SFS(Mul, 32sc), VV_F(Mul, 32f), VV_F(Mul, 64f), VV_F(Mul, 32fc), VV_F(Mul, 64fc),
        VV_SFS(Div, 8u), VV_SFS(Div, 16s), VV_SFS(Div, 16u), VV_SFS(Div, 16sc), VV_F(Div, 32f),
        VV_F(Div, 64fc),
        VC_SFS(AddC, 8u), VC_SFS(AddC, 16s), VC_SFS(AddC, 16sc), VC_SFS(AddC, 16u), VC_SFS(AddC, 32s),
        VC_SFS(AddC, 32sc), VC_SFS(AddC, 64s), VC_F(AddC, 32f), VC_F(AddC, 64fc),
        VC_SFS(SubC, 8u), VC_SFS(SubC, 16s), VC_SFS(SubC, 16sc), VC_SFS(SubC, 32sc),
        VC_SFS(SubCRev, 8u), VC_SFS(SubCRev, 16s), VC_SFS(SubCRev, 16sc), VC_SFS(SubCRev, 32sc),
        VC_F(SubC, 32fc), VC_F(SubCRev, 32f),
        VC_SFS(MulC, 8u), VC_SFS(MulC, 16s), VC_SFS(MulC, 16sc), VC_SFS(MulC, 16u), VC_SFS(MulC, 32s),
        VC_SFS(MulC, 32sc), VC_F(MulC, 32f), VC_F(MulC, 32fc), VC_F(MulC, 64fc),
    };
}

TEST(InPlace, EqualsOutOfPlaceAtEveryLength) {
    const int kMax = 70;
    int seed = 1;
    for (const Pair& p : pairs()) {
        SCOPED_TRACE(p.name);
        const std::vector<int> sfs = p.isFloat ? std::vector<int>{0} : std::vector<int>{0, 1, 3, -2};
        for (int len = 1; len <= kMax; ++len) {
            const std::size_t nb = std::size_t(len) * p.bytes;
            std::vector<unsigned char> src(nb), sd(nb), out(nb), in(nb);
            for (int sf : sfs) {
                std::mt19937 rng(seed++);
                for (auto& b : src) b = static_cast<unsigned char>(rng());
                for (auto& b : sd) b = static_cast<unsigned char>(rng());
                if (p.isFloat) {  // finite values, so NaN payloads cannot differ
                    const std::size_t fb = p.bytes % 8 == 0 && p.name.find("32f") == std::string::npos ? 8 : 4;
                    for (std::size_t i = 0; i < nb; i += fb) {
                        if (fb == 8) {
                            double v = double(int(rng() % 20001) - 10000) / 64;
                            std::memcpy(&src[i], &v, 8);
                            v = double(int(rng() % 20001) - 10000) / 64;
                            std::memcpy(&sd[i], &v, 8);
                        } else {
                            float v = float(int(rng() % 20001) - 10000) / 64;
                            std::memcpy(&src[i], &v, 4);
                            v = float(int(rng() % 20001) - 10000) / 64;
                            std::memcpy(&sd[i], &v, 4);
                        }
                    }
                } else if (sf == 3) {  // extremes: every byte 0x7F/0x80/0xFF/0x00 patterns
                    for (std::size_t i = 0; i < nb; ++i) {
                        static const unsigned char e[4] = {0x7F, 0x80, 0xFF, 0x00};
                        src[i] = e[rng() % 4];
                        sd[i] = e[rng() % 4];
                    }
                }
                in = sd;
                const ZvpStatus so = p.out(src.data(), sd.data(), out.data(), len, sf);
                const ZvpStatus si = p.in(src.data(), in.data(), len, sf);
                ASSERT_EQ(so, si) << "len " << len << " sf " << sf;
                ASSERT_EQ(0, std::memcmp(out.data(), in.data(), nb)) << "len " << len << " sf " << sf;
            }
        }
    }
}

// The out-of-place complex products with the destination equal to a source
// are in-place calls too.
TEST(InPlace, ComplexProductWithDestinationAsSource) {
    const Zvp16sc a{3, 5};
    Zvp16sc b{100, 7};
    ASSERT_EQ(zvpStsNoErr, zvpsMul_16sc_ISfs(&a, &b, 1, 0));
    EXPECT_EQ(265, b.re);
    EXPECT_EQ(521, b.im);

    for (int len = 1; len <= 20; ++len) {
        std::vector<Zvp16sc> x(len), y(len), ref(len), alias(len);
        std::mt19937 rng(len);
        for (int i = 0; i < len; ++i) {
            x[i] = {Zvp16s(rng()), Zvp16s(rng())};
            y[i] = {Zvp16s(rng()), Zvp16s(rng())};
        }
        for (int sf : {0, 1, 7, 16, -3}) {
            ASSERT_EQ(zvpStsNoErr, zvpsMul_16sc_Sfs(x.data(), y.data(), ref.data(), len, sf));
            alias = y;
            ASSERT_EQ(zvpStsNoErr, zvpsMul_16sc_Sfs(x.data(), alias.data(), alias.data(), len, sf));
            EXPECT_EQ(0, std::memcmp(ref.data(), alias.data(), len * sizeof(Zvp16sc))) << len << " " << sf;

            for (Zvp16sc c : {Zvp16sc{3, 5}, Zvp16sc{-7, -32768}}) {
                ASSERT_EQ(zvpStsNoErr, zvpsMulC_16sc_Sfs(y.data(), c, ref.data(), len, sf));
                alias = y;
                ASSERT_EQ(zvpStsNoErr, zvpsMulC_16sc_Sfs(alias.data(), c, alias.data(), len, sf));
                EXPECT_EQ(0, std::memcmp(ref.data(), alias.data(), len * sizeof(Zvp16sc))) << len << " " << sf;
            }
        }
    }
}

}  // namespace
