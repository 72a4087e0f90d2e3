#ifndef SUPPORT_CRANDOM_H
#define SUPPORT_CRANDOM_H

#include <cstdint>
#include <vector>

/// Small random generator (splitmix64): the same numbers from a seed on every machine.
class CRandom
{
public:
    explicit CRandom(std::uint64_t nSeed) : m_nState(nSeed) {}

    std::uint64_t Next()
    {
        m_nState += 0x9e3779b97f4a7c15ULL;
        std::uint64_t n = m_nState;
        n = (n ^ (n >> 30U)) * 0xbf58476d1ce4e5b9ULL;
        n = (n ^ (n >> 27U)) * 0x94d049bb133111ebULL;
        return n ^ (n >> 31U);
    }

    /// @return nMin to nMax, both possible.
    std::int64_t Int(std::int64_t nMin, std::int64_t nMax)
    {
        return nMin + static_cast<std::int64_t>(Next() % static_cast<std::uint64_t>(nMax - nMin + 1));
    }

    /// @return 0 to below 1.
    double Unit() { return static_cast<double>(Next() >> 11U) * 0x1p-53; }

    /// @return true once in `nOneIn` times.
    bool Chance(int nOneIn) { return Int(1, nOneIn) == 1; }

    template <class V>
    const V& Pick(const std::vector<V>& vecValues)
    {
        return vecValues[static_cast<std::size_t>(Int(0, static_cast<std::int64_t>(vecValues.size()) - 1))];
    }

private:
    std::uint64_t m_nState;
};

#endif
