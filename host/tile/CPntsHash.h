#ifndef HOST_TILE_CPNTSHASH_H
#define HOST_TILE_CPNTSHASH_H

#include <array>
#include <cstdint>
#include <cstring>

namespace zorcld
{

/// Tells whether points are those that were written, in their order. Sixteen bytes a tile whatever the pieces
/// they come in: a hash of bytes would keep half a kilobyte of each of up to a million tiles.
///
/// The sum of a number for each point and its place among them. No number waits for the one before, which
/// makes it fast. Of points with but one coordinate changed, or their colours, the numbers differ always.
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
        m_nPlace += 0xD1B54A32D192ED03U;
        std::uint64_t n = (nPlan ^ m_nPlace) * 0x9E3779B97F4A7C15U;
        n = (n ^ n >> 32U ^ nRest) * 0xBF58476D1CE4E5B9U;
        m_nSum += n ^ n >> 32U;
    }

    std::uint64_t Get() const { return m_nSum; }

private:
    std::uint64_t m_nSum = 1;
    std::uint64_t m_nPlace = 0;
};

} // namespace zorcld

#endif
