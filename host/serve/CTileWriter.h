#ifndef HOST_SERVE_CTILEWRITER_H
#define HOST_SERVE_CTILEWRITER_H

#include <host/picture/CRgb.h>
#include <host/serve/PutNumber.h>
#include <zor4data/CRootCube.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace zorcld
{

/// Makes the bytes of a tile: 12 a point, and the header, which is known when all points are (docs/serve.md).
class CTileWriter
{
public:
    static constexpr std::size_t c_nHeaderSize = 40;
    static constexpr std::size_t c_nPntSize = 12;

    /// @param nEdge  over which the steps are spread, compact units; that of the cube, as a rule.
    CTileWriter(const CLevelCube& cube, std::int64_t nEdge) : m_cube(cube) { SetEdge(nEdge); }

    /// For the points that are put from now on, and the header.
    void SetEdge(std::int64_t nEdge)
    {
        m_nEdge = nEdge;
        m_dStepsPerUnit = nEdge > 0 ? c_dNumSteps / static_cast<double>(nEdge) : 0.0;
    }

    /// Puts a point into 12 bytes.
    /// @param nX,nY,nZ  offset of a point of the cube, compact units.
    void Put(std::int32_t nX, std::int32_t nY, std::int32_t nZ, const CRgbBytes& color, char* pTo)
    {
        const std::int64_t dx = nX - m_cube.nX;
        const std::int64_t dy = nY - m_cube.nY;
        const std::int64_t dz = nZ - m_cube.nZ;
        m_nOctants |= 1U << ((dx >= 0 ? 4U : 0U) + (dy >= 0 ? 2U : 0U) + (dz >= 0 ? 1U : 0U));
        std::int64_t nStepX = CalcStep(dx);
        std::int64_t nStepY = CalcStep(dy);
        std::int64_t nStepZ = CalcStep(dz);
        if ((CalcRoom(nStepX) | CalcRoom(nStepY) | CalcRoom(nStepZ)) < 0)
        {
            m_nReach = std::max({m_nReach, std::abs(dx), std::abs(dy), std::abs(dz)});
            nStepX = std::clamp(nStepX, c_nMinStep, c_nMaxStep);
            nStepY = std::clamp(nStepY, c_nMinStep, c_nMaxStep);
            nStepZ = std::clamp(nStepZ, c_nMinStep, c_nMaxStep);
        }
        const std::uint64_t nPlace = Wrap(nStepX) | Wrap(nStepY) << 16U | Wrap(nStepZ) << 32U;
        const std::uint32_t nColor =
            color.r | static_cast<std::uint32_t>(color.g) << 8U | static_cast<std::uint32_t>(color.b) << 16U;
        PutUint64(pTo, nPlace);
        PutUint32(pTo + 8, nColor);
    }

    /// @return an edge that holds all points put: where some lie beside the edge, twice the distance of the
    ///         farthest from the centre, along an axis.
    std::int64_t CalcNeededEdge() const { return std::max(2 * m_nReach, m_nEdge); }

    /// Writes the header of the points put.
    /// @param pTo    where its bytes go.
    /// @param root   of the cloud.
    /// @param bMore  deeper levels have more points of this cube.
    void PutHeader(char* pTo, const CRootCube& root, std::uint32_t nNumPnts, bool bMore) const;

private:
    static constexpr double c_dNumSteps = 65534.0; // an odd number of values: the centre is one
    static constexpr std::int64_t c_nMinStep = 1;  // while they are calculated steps count from 32768 below
    static constexpr std::int64_t c_nMiddle = 32768;
    static constexpr std::int64_t c_nMaxStep = 65535;

    /// Rounds, but does not stop at the ends. The farthest offset over the smallest edge has 49 bits.
    std::int64_t CalcStep(std::int64_t nOffset) const
    {
        constexpr double c_dMiddle = 32768.5;
        return static_cast<std::int64_t>(static_cast<double>(nOffset) * m_dStepsPerUnit + c_dMiddle);
    }

    /// @return below 0 for a step beyond the ends.
    static std::int64_t CalcRoom(std::int64_t nStep) { return (nStep - c_nMinStep) | (c_nMaxStep - nStep); }

    static std::uint64_t Wrap(std::int64_t nStep) { return static_cast<std::uint16_t>(nStep - c_nMiddle); }

    CLevelCube m_cube;
    std::int64_t m_nEdge = 0;
    double m_dStepsPerUnit = 0.0;
    std::int64_t m_nReach = 0;
    unsigned m_nOctants = 0; // bit k: octant k holds a point
};

} // namespace zorcld

#endif
