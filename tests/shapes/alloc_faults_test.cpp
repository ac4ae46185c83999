// Every path that allocates, run to each of its failure points: the k-th
// allocation fails, the call returns -9, everything it took is released and
// nothing is written.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <vector>

#include "alloc_hook.h"
#include "sentinel.h"
#include "zvps.h"

namespace {

namespace alloc = zvp::test::alloc;
using zvp::test::GuardedBuffer;

// prepare() sets the outputs, run() makes the allocating call, untouched()
// says the outputs still hold what prepare() put there, undo() releases what
// a successful call made. Returns how many allocations the path makes.
int failEveryAllocation(const char* what, const std::function<void()>& prepare, const std::function<ZvpStatus()>& run,
                        const std::function<bool()>& untouched, const std::function<void()>& undo = [] {}) {
    SCOPED_TRACE(what);
    prepare();
    alloc::reset();
    EXPECT_GE(run(), 0);
    const int count = alloc::calls;
    undo();
    EXPECT_EQ(alloc::live, 0) << "a successful call keeps nothing";
    for (int k = 1; k <= count; ++k) {
        prepare();
        alloc::reset(k);
        EXPECT_EQ(run(), zvpStsMemAllocErr) << "allocation " << k << " of " << count;
        EXPECT_EQ(alloc::live, 0) << "leak after failing allocation " << k;
        EXPECT_TRUE(untouched()) << "written after failing allocation " << k;
    }
    alloc::reset();
    return count;
}

template <class Spec>
void initAllocs(const char* what, ZvpStatus (*initAlloc)(Spec**, int, int, ZvpHintAlgorithm),
                ZvpStatus (*release)(Spec*), std::vector<int> orders) {
    for (int order : orders) {
        Spec* const marker = reinterpret_cast<Spec*>(std::uintptr_t(0x1234560));
        Spec* spec = marker;
        const int n = failEveryAllocation(
            what, [&] { spec = marker; }, [&] { return initAlloc(&spec, order, 8, zvpAlgHintNone); },
            [&] { return spec == marker; }, [&] { release(spec); });
        EXPECT_GE(n, 1) << what << " order " << order;
    }
}

TEST(AllocFaults, FftInitAllocEveryTypeAndScheme) {
    initAllocs("C_32fc", zvpsFFTInitAlloc_C_32fc, zvpsFFTFree_C_32fc, {0, 6, 11, 18, 19});
    initAllocs("C_32f", zvpsFFTInitAlloc_C_32f, zvpsFFTFree_C_32f, {0, 6, 11, 18, 19});
    initAllocs("C_64fc", zvpsFFTInitAlloc_C_64fc, zvpsFFTFree_C_64fc, {0, 6, 11, 17, 18});
    initAllocs("C_64f", zvpsFFTInitAlloc_C_64f, zvpsFFTFree_C_64f, {0, 6, 11, 17, 18});
    initAllocs("R_32f", zvpsFFTInitAlloc_R_32f, zvpsFFTFree_R_32f, {0, 1, 7, 12, 19, 20});
    initAllocs("R_64f", zvpsFFTInitAlloc_R_64f, zvpsFFTFree_R_64f, {0, 1, 7, 12, 18, 19});
}

// Transforms given no work buffer allocate their own: every form, in and
// out of place, at an order of the small and of the large scheme.
template <class T, class Spec, class F>
void transformsWithoutBuffer(const char* what, ZvpStatus (*initAlloc)(Spec**, int, int, ZvpHintAlgorithm),
                             ZvpStatus (*release)(Spec*), int order, int reals, F call) {
    Spec* spec = nullptr;
    ASSERT_EQ(initAlloc(&spec, order, 8, zvpAlgHintNone), zvpStsNoErr);
    const std::size_t n = (std::size_t(reals) << order) + (reals == 1 ? 2 : 0);  // CCS: N + 2 reals
    std::vector<T> src(n + 2);
    for (std::size_t i = 0; i < src.size(); ++i) src[i] = T(int(i % 7) - 3);
    GuardedBuffer dst(n * sizeof(T)), io(n * sizeof(T));
    const std::vector<unsigned char> before(io.data(), io.data() + io.size());
    for (int form = 0; form < 12; ++form) {
        auto run = [&] { return call(form, src.data(), dst.as<T>(), io.as<T>(), spec); };
        if (call(form, nullptr, nullptr, nullptr, spec) == zvpStsBadArgErr) continue;  // no such form
        auto prepare = [&] {
            std::memcpy(io.data(), before.data(), before.size());
            dst.fill(zvp::test::kSentinelByte);
        };
        SCOPED_TRACE("form " + std::to_string(form) + ", order " + std::to_string(order));
        const int k = failEveryAllocation(what, prepare, run, [&] {
            return dst.untouched() && std::memcmp(io.data(), before.data(), before.size()) == 0;
        });
        EXPECT_GE(k, 1) << what << " form " << form << " order " << order;
    }
    release(spec);
}

TEST(AllocFaults, ComplexTransformsWithInternalWorkMemory) {
    for (int order : {7, 19}) {
        transformsWithoutBuffer<float>("CToC_32fc", zvpsFFTInitAlloc_C_32fc, zvpsFFTFree_C_32fc, order, 2,
                                       [](int f, const float* s, float* d, float* io, const ZvpsFFTSpec_C_32fc* p) {
                                           auto* cs = reinterpret_cast<const Zvp32fc*>(s);
                                           auto* cd = reinterpret_cast<Zvp32fc*>(d);
                                           auto* ci = reinterpret_cast<Zvp32fc*>(io);
                                           switch (f) {
                                               case 0: return zvpsFFTFwd_CToC_32fc(cs, cd, p, nullptr);
                                               case 1: return zvpsFFTInv_CToC_32fc(cs, cd, p, nullptr);
                                               case 2: return zvpsFFTFwd_CToC_32fc_I(ci, p, nullptr);
                                               case 3: return zvpsFFTInv_CToC_32fc_I(ci, p, nullptr);
                                           }
                                           return zvpStsBadArgErr;
                                       });
        transformsWithoutBuffer<double>("CToC_64fc", zvpsFFTInitAlloc_C_64fc, zvpsFFTFree_C_64fc, order - 1, 2,
                                        [](int f, const double* s, double* d, double* io, const ZvpsFFTSpec_C_64fc* p) {
                                            auto* cs = reinterpret_cast<const Zvp64fc*>(s);
                                            auto* cd = reinterpret_cast<Zvp64fc*>(d);
                                            auto* ci = reinterpret_cast<Zvp64fc*>(io);
                                            switch (f) {
                                                case 0: return zvpsFFTFwd_CToC_64fc(cs, cd, p, nullptr);
                                                case 1: return zvpsFFTInv_CToC_64fc(cs, cd, p, nullptr);
                                                case 2: return zvpsFFTFwd_CToC_64fc_I(ci, p, nullptr);
                                                case 3: return zvpsFFTInv_CToC_64fc_I(ci, p, nullptr);
                                            }
                                            return zvpStsBadArgErr;
                                        });
        // Split forms: real parts then imaginary parts, in the two halves.
        const std::size_t h = std::size_t(1) << order;
        transformsWithoutBuffer<float>("CToC_32f", zvpsFFTInitAlloc_C_32f, zvpsFFTFree_C_32f, order, 2,
                                       [h](int f, const float* s, float* d, float*, const ZvpsFFTSpec_C_32f* p) {
                                           if (f == 0) return zvpsFFTFwd_CToC_32f(s, s + h, d, d + h, p, nullptr);
                                           if (f == 1) return zvpsFFTInv_CToC_32f(s, s + h, d, d + h, p, nullptr);
                                           return zvpStsBadArgErr;
                                       });
        const std::size_t h64 = h / 2;
        transformsWithoutBuffer<double>("CToC_64f", zvpsFFTInitAlloc_C_64f, zvpsFFTFree_C_64f, order - 1, 2,
                                        [h64](int f, const double* s, double* d, double*, const ZvpsFFTSpec_C_64f* p) {
                                            if (f == 0) return zvpsFFTFwd_CToC_64f(s, s + h64, d, d + h64, p, nullptr);
                                            if (f == 1) return zvpsFFTInv_CToC_64f(s, s + h64, d, d + h64, p, nullptr);
                                            return zvpStsBadArgErr;
                                        });
    }
}

#define ZVP_REAL_FORMS(T)                                                                                   \
    [](int f, const Zvp##T* s, Zvp##T* d, Zvp##T* io, const ZvpsFFTSpec_R_##T* p) {                        \
        switch (f) {                                                                                        \
            case 0: return zvpsFFTFwd_RToCCS_##T(s, d, p, nullptr);                                         \
            case 1: return zvpsFFTFwd_RToPack_##T(s, d, p, nullptr);                                        \
            case 2: return zvpsFFTFwd_RToPerm_##T(s, d, p, nullptr);                                        \
            case 3: return zvpsFFTInv_CCSToR_##T(s, d, p, nullptr);                                         \
            case 4: return zvpsFFTInv_PackToR_##T(s, d, p, nullptr);                                        \
            case 5: return zvpsFFTInv_PermToR_##T(s, d, p, nullptr);                                        \
            case 6: return zvpsFFTFwd_RToCCS_##T##_I(io, p, nullptr);                                       \
            case 7: return zvpsFFTFwd_RToPack_##T##_I(io, p, nullptr);                                      \
            case 8: return zvpsFFTFwd_RToPerm_##T##_I(io, p, nullptr);                                      \
            case 9: return zvpsFFTInv_CCSToR_##T##_I(io, p, nullptr);                                       \
            case 10: return zvpsFFTInv_PackToR_##T##_I(io, p, nullptr);                                     \
            case 11: return zvpsFFTInv_PermToR_##T##_I(io, p, nullptr);                                     \
        }                                                                                                   \
        return zvpStsBadArgErr;                                                                             \
    }

TEST(AllocFaults, RealTransformsWithInternalWorkMemory) {
    for (int order : {8, 20}) {
        transformsWithoutBuffer<float>("R_32f", zvpsFFTInitAlloc_R_32f, zvpsFFTFree_R_32f, order, 1, ZVP_REAL_FORMS(32f));
        transformsWithoutBuffer<double>("R_64f", zvpsFFTInitAlloc_R_64f, zvpsFFTFree_R_64f, order - 1, 1,
                                        ZVP_REAL_FORMS(64f));
    }
}

}  // namespace
