// Copy, Move, Set and Zero for every sample type. Copy, Move and Zero are
// byte operations on length x element size bytes; Set fills a 16-byte pattern
// of the value with SSE stores.
#include <cstdint>
#include <cstring>

#include "forms.h"
#include "p8/copy.h"

namespace zvp::p8 {
namespace {

// Above this many bytes the fill bypasses the caches: the destination would
// not fit them anyway, and streaming stores avoid reading it in first.
constexpr std::size_t kStreamBytes = std::size_t(24) << 20;
// From this many bytes up to kStreamBytes, patterns of up to one machine word
// are filled with the processor's string store, which uses its widest stores.
constexpr std::size_t kStringStoreBytes = 2048;

using Word = std::uintptr_t;
using Bytes = Full<std::uint8_t>;

void stringStore(void* d, Word pattern, std::size_t words) {
#if defined(__x86_64__)
    __asm__ volatile("rep stosq" : "+D"(d), "+c"(words) : "a"(pattern) : "memory");
#else
    __asm__ volatile("rep stosl" : "+D"(d), "+c"(words) : "a"(pattern) : "memory");
#endif
}

template <class T>
bool allBytesEqual(const T& v) {
    const auto* b = reinterpret_cast<const unsigned char*>(&v);
    for (std::size_t i = 1; i < sizeof(T); ++i)
        if (b[i] != b[0]) return false;
    return true;
}

// The bits of v as the unsigned integer U of the same size.
template <class U, class T>
U bitsOf(const T& v) {
    U x;
    std::memcpy(&x, &v, sizeof x);
    return x;
}

// The value repeated over 16 bytes, built in registers (a pattern assembled
// in memory and read back as one vector would stall on store forwarding).
template <class T>
__m128i patternOf(const T& v) {
    static_assert(16 % sizeof(T) == 0);
    if constexpr (sizeof(T) == 1) return Full<std::uint8_t>::set1(bitsOf<std::uint8_t>(v));
    else if constexpr (sizeof(T) == 2) return Full<std::uint16_t>::set1(bitsOf<std::uint16_t>(v));
    else if constexpr (sizeof(T) == 4) return Full<std::uint32_t>::set1(bitsOf<std::uint32_t>(v));
    else if constexpr (sizeof(T) == 8) return Full<std::uint64_t>::set1(bitsOf<std::uint64_t>(v));
    else return Bytes::load(reinterpret_cast<const std::uint8_t*>(&v));
}

// Fills n >= 16 bytes at d with the periodic pattern pat (period bytes,
// dividing 16 and dividing n; phase 0 at d).
void fillPattern(std::uint8_t* d, std::size_t n, __m128i pat, std::size_t period) {
    Bytes::store(d, pat);
    const std::size_t head = (16 - (reinterpret_cast<std::uintptr_t>(d) & 15)) & 15;
    // The pattern in phase at d + head: the pattern itself whenever d is
    // aligned to its element, rotated by head bytes otherwise.
    __m128i rot = pat;
    if (head % period != 0) {
        alignas(16) std::uint8_t twice[32];
        Bytes::storea(twice, pat);
        Bytes::storea(twice + 16, pat);
        rot = Bytes::load(twice + head);
    }
    std::uint8_t* p = d + head;
    std::uint8_t* const end = d + n;
    if (n >= kStreamBytes) {
        for (; p + 64 <= end; p += 64) {
            Bytes::stream(p, rot);
            Bytes::stream(p + 16, rot);
            Bytes::stream(p + 32, rot);
            Bytes::stream(p + 48, rot);
        }
        _mm_sfence();  // streaming stores are weakly ordered: fence them before returning
    } else if (period <= sizeof(Word) && n >= kStringStoreBytes) {
        // p is 16-byte aligned, so the word at p is in phase at rot's start.
        Word w;
        std::memcpy(&w, &rot, sizeof w);
        const std::size_t words = std::size_t(end - p) / sizeof(Word);
        stringStore(p, w, words);
        p += words * sizeof(Word);
    } else {
        for (; p + 64 <= end; p += 64) {
            Bytes::storea(p, rot);
            Bytes::storea(p + 16, rot);
            Bytes::storea(p + 32, rot);
            Bytes::storea(p + 48, rot);
        }
    }
    for (; p + 16 <= end; p += 16) Bytes::storea(p, rot);
    // Last 16 bytes, overlapping what is already written: n is a whole
    // number of periods, so end - 16 is in phase 0.
    Bytes::store(end - 16, pat);
}

// Byte moves of whole arrays (the forms hand complex elements over as their
// parts, which changes nothing for a byte move).
struct CopyBytes {
    template <class A, class P>
    static ZvpStatus run(A s, P* d, std::ptrdiff_t n) {
        std::memcpy(d, s.p, std::size_t(n) * sizeof(P));
        return zvpStsNoErr;
    }
};
struct MoveBytes {
    template <class A, class P>
    static ZvpStatus run(A s, P* d, std::ptrdiff_t n) {
        std::memmove(d, s.p, std::size_t(n) * sizeof(P));
        return zvpStsNoErr;
    }
};
struct ZeroBytes {
    template <class A, class P>
    static ZvpStatus run(A, P* d, std::ptrdiff_t n) {
        std::memset(d, 0, std::size_t(n) * sizeof(P));
        return zvpStsNoErr;
    }
};

template <class T>
ZvpStatus setImpl(T v, T* d, int len) {
    ZVP_CHECK_PTRS(d);
    ZVP_CHECK_LENS(len);
    const std::size_t n = std::size_t(len) * sizeof(T);
    if (n < 16)
        for (int i = 0; i < len; ++i) d[i] = v;
    else if (allBytesEqual(v))
        std::memset(d, *reinterpret_cast<const unsigned char*>(&v), n);
    else
        fillPattern(reinterpret_cast<std::uint8_t*>(d), n, patternOf(v), sizeof(T));
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_COPY_FAMILY(T)                                                   \
    ZvpStatus zvpsCopy_##T(const Zvp##T* s, Zvp##T* d, int len) {            \
        return form::v<CopyBytes>(s, d, len);                                \
    }                                                                        \
    ZvpStatus zvpsMove_##T(const Zvp##T* s, Zvp##T* d, int len) {            \
        return form::v<MoveBytes>(s, d, len);                                \
    }                                                                        \
    ZvpStatus zvpsSet_##T(Zvp##T v, Zvp##T* d, int len) {                    \
        return setImpl(v, d, len);                                           \
    }                                                                        \
    ZvpStatus zvpsZero_##T(Zvp##T* d, int len) { return form::vI<ZeroBytes>(d, len); }

ZVP_COPY_FAMILY(8u)
ZVP_COPY_FAMILY(16s)
ZVP_COPY_FAMILY(16sc)
ZVP_COPY_FAMILY(32s)
ZVP_COPY_FAMILY(32sc)
ZVP_COPY_FAMILY(32f)
ZVP_COPY_FAMILY(32fc)
ZVP_COPY_FAMILY(64s)
ZVP_COPY_FAMILY(64sc)
ZVP_COPY_FAMILY(64f)
ZVP_COPY_FAMILY(64fc)
#undef ZVP_COPY_FAMILY

}  // namespace zvp::p8
