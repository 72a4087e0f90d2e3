#ifndef HOST_TILE_CPNTSHASH_H
#define HOST_TILE_CPNTSHASH_H

#include <array>
#include <cstdint>
#include <cstring>

namespace zorcld
{

/// Tells whether points are those that were written, in their order. Eight bytes a tile whatever the pieces
/// they come in: a hash of bytes would keep half a kilobyte of each of up to a million tiles.
///
/// Each point changes the number by a one-to-one map, so that a single other point always gives another
/// one.
class CPntsHash
{
public:
    void Add(const std::array<std::int32_t, 3>& anSteps, const std::array<unsigned char, 3>& acColor)
    {
        std::uint64_t nPlan = 0;
        std::memcpy(&nPlan, anSteps.data(), sizeof nPlan);
        const std::uint64_t nRest = static_cast<std::uint32_t>(anSteps[2]) |
                                    std::uint64_t{acColor[0]} << 32U | std::uint64_t{acColor[1]} << 40U |
                                    std::uint64_t{acColor[2]} << 48U;
        Mix(nPlan);
        Mix(nRest);
    }

    std::uint64_t Get() const { return m_n; }

private:
    void Mix(std::uint64_t n)
    {
        m_n = (m_n ^ n) * 0x9E3779B97F4A7C15U;
        m_n ^= m_n >> 32U;
    }

    std::uint64_t m_n = 1;
};

} // namespace zorcld

#endif
