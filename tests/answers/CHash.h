#ifndef ANSWERS_CHASH_H
#define ANSWERS_CHASH_H

#include <cstdint>
#include <cstring>
#include <string>

/// A hash of numbers in their order (FNV-1a), the same on every machine. Of a floating-point number every bit
/// counts.
class CHash
{
public:
    void Add(std::int64_t n)
    {
        for (unsigned nShift = 0; nShift < 64; nShift += 8)
        {
            m_nHash ^= static_cast<std::uint64_t>(n) >> nShift & 0xFFU;
            m_nHash *= 0x100000001b3U;
        }
    }

    void Add(double d)
    {
        std::int64_t n = 0;
        std::memcpy(&n, &d, sizeof n);
        Add(n);
    }

    void Add(int n) { Add(std::int64_t{n}); }

    std::uint32_t Get() const { return static_cast<std::uint32_t>(m_nHash ^ m_nHash >> 32U); }

private:
    std::uint64_t m_nHash = 0xcbf29ce484222325U;
};

#endif
