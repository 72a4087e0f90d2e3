#include <host/serve/CTileRun.h>

#include <zor4data/CPntArrays.h>

#include <array>
#include <cstring>

namespace zorcld
{

namespace
{

/// The way from the root cube to a tile: where each cube is divided, and into which octant it goes on.
class CTilePath
{
public:
    CTilePath(const CRootCube& root, const CTileAddress& address) : m_nNumSteps(address.nLevel)
    {
        for (int n = 0; n < m_nNumSteps; ++n)
        {
            const int nAbove = address.nLevel - n;
            CLevelCube cube{};
            GetLevelCube(root, n, Shift(address.nI, nAbove), Shift(address.nJ, nAbove),
                         Shift(address.nK, nAbove), cube);
            m_aSteps[static_cast<std::size_t>(n)] = {cube.nX, cube.nY, cube.nZ,
                                                     CalcOctant(address, nAbove - 1)};
        }
    }

    /// @return below 0 where the point comes before the tile in the order of octants, 0 where it is in it.
    int Compare(const std::int32_t* pOffsets) const
    {
        for (int n = 0; n < m_nNumSteps; ++n)
        {
            const CStep& step = m_aSteps[static_cast<std::size_t>(n)];
            const int nOctant = (pOffsets[0] >= step.nX ? 4 : 0) + (pOffsets[1] >= step.nY ? 2 : 0) +
                                (pOffsets[2] >= step.nZ ? 1 : 0);
            if (nOctant != step.nOctant)
                return nOctant - step.nOctant;
        }
        return 0;
    }

private:
    struct CStep
    {
        std::int64_t nX;
        std::int64_t nY;
        std::int64_t nZ;
        int nOctant;
    };

    /// A position of 31 bits shifted by up to 31.
    static std::int32_t Shift(std::int32_t n, int nBits)
    {
        return static_cast<std::int32_t>(std::int64_t{n} >> nBits);
    }

    static int CalcOctant(const CTileAddress& address, int nBit)
    {
        return ((address.nI >> nBit) & 1) * 4 + ((address.nJ >> nBit) & 1) * 2 + ((address.nK >> nBit) & 1);
    }

    int m_nNumSteps;
    std::array<CStep, 31> m_aSteps{};
};

/// @return the first point from `nFirst` on that does not compare below `nLimit`.
std::int32_t FindFirst(const CPntArrays& arrays, const CTilePath& path, std::int32_t nFirst, int nLimit)
{
    std::int32_t nEnd = arrays.nNumPnts;
    while (nFirst < nEnd)
    {
        const std::int32_t nMiddle = nFirst + (nEnd - nFirst) / 2;
        std::array<std::int32_t, 3> offsets{};
        std::memcpy(offsets.data(),
                    arrays.pPnts +
                        static_cast<std::size_t>(nMiddle) * static_cast<std::size_t>(arrays.nStride),
                    sizeof(offsets));
        if (path.Compare(offsets.data()) < nLimit)
            nFirst = nMiddle + 1;
        else
            nEnd = nMiddle;
    }
    return nFirst;
}

} // namespace

CTileRun FindTileRun(const CPntArrays& arrays, const CRootCube& root, const CTileAddress& address)
{
    const CTilePath path(root, address);
    const std::int32_t nFirst = FindFirst(arrays, path, 0, 0);
    return {nFirst, FindFirst(arrays, path, nFirst, 1)};
}

} // namespace zorcld
