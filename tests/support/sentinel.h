// Helpers for buffers whose untouched parts the tests check afterwards.
#pragma once

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace zvp::test {

constexpr unsigned char kSentinelByte = 0xA5;

// A byte buffer with room for `bytes` at an offset `misalign` from a 64-byte
// boundary (keep misalign a multiple of the element's alignment: a pointer
// misaligned for its type is undefined behaviour, and UBSan says so), surrounded by sentinel bytes that the code under test must not
// touch.
class GuardedBuffer {
public:
    GuardedBuffer(std::size_t bytes, std::size_t misalign = 0)
        : storage_(bytes + misalign + 2 * kGuard + 64, kSentinelByte), bytes_(bytes) {
        auto base = reinterpret_cast<std::uintptr_t>(storage_.data()) + kGuard;
        base = (base + 63) & ~std::uintptr_t(63);
        data_ = reinterpret_cast<unsigned char*>(base) + misalign;
    }
    template <class T>
    T* as() { return reinterpret_cast<T*>(data_); }
    unsigned char* data() { return data_; }
    std::size_t size() const { return bytes_; }
    void fill(unsigned char b) { std::memset(data_, b, bytes_); }
    // True when every byte outside [data, data + bytes) still holds the sentinel.
    bool guardsIntact() const {
        const unsigned char* lo = storage_.data();
        const unsigned char* hi = lo + storage_.size();
        for (const unsigned char* p = lo; p < data_; ++p)
            if (*p != kSentinelByte) return false;
        for (const unsigned char* p = data_ + bytes_; p < hi; ++p)
            if (*p != kSentinelByte) return false;
        return true;
    }
    // True when the payload also still holds the sentinel (nothing written).
    bool untouched() const {
        for (std::size_t i = 0; i < bytes_; ++i)
            if (data_[i] != kSentinelByte) return false;
        return guardsIntact();
    }

private:
    static constexpr std::size_t kGuard = 64;
    std::vector<unsigned char> storage_;
    std::size_t bytes_;
    unsigned char* data_;
};

inline std::vector<unsigned char> randomBytes(std::size_t n, std::uint32_t seed) {
    std::mt19937 rng(seed);
    std::vector<unsigned char> v(n);
    for (auto& b : v) b = static_cast<unsigned char>(rng());
    return v;
}

}  // namespace zvp::test
