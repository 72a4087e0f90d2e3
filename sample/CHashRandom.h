#ifndef SAMPLE_CHASHRANDOM_H
#define SAMPLE_CHASHRANDOM_H

#include <sample/Hash.h>

#include <cstdint>

namespace sample
{

/// Takes uniform numbers out of one hash, one after the other.
class CHashRandom
{
public:
    explicit CHashRandom(std::uint64_t nState) : m_nState(nState) {}

    /// @return 0 to below 1.
    double Next()
    {
        m_nState += 0x9e3779b97f4a7c15U;
        return static_cast<double>(Mix(m_nState) >> 11U) * (1.0 / 9007199254740992.0);
    }

    double Next(double dMin, double dMax) { return dMin + (dMax - dMin) * Next(); }

private:
    std::uint64_t m_nState;
};

} // namespace sample

#endif
