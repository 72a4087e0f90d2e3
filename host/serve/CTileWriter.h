#ifndef HOST_SERVE_CTILEWRITER_H
#define HOST_SERVE_CTILEWRITER_H

#include <host/picture/CRgb.h>
#include <zor4data/CRootCube.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

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

    /// For the points that are added from now on, and the header.
    void SetEdge(std::int64_t nEdge)
    {
        m_nEdge = nEdge;
        m_dStepsPerUnit = nEdge > 0 ? c_dNumSteps / static_cast<double>(nEdge) : 0.0;
    }

    /// Appends a point.
    /// @param nX,nY,nZ  offset of a point of the cube, compact units.
    void Add(std::int32_t nX, std::int32_t nY, std::int32_t nZ, const CRgbBytes& color, std::string& sBytes)
    {
        const std::int64_t dx = nX - m_cube.nX;
        const std::int64_t dy = nY - m_cube.nY;
        const std::int64_t dz = nZ - m_cube.nZ;
        m_nOctants |= 1U << ((dx >= 0 ? 4U : 0U) + (dy >= 0 ? 2U : 0U) + (dz >= 0 ? 1U : 0U));
        m_nReach = std::max({m_nReach, std::abs(dx), std::abs(dy), std::abs(dz)});
        const unsigned nStepX = CalcStep(dx);
        const unsigned nStepY = CalcStep(dy);
        const unsigned nStepZ = CalcStep(dz);
        const auto low = [](unsigned n) { return static_cast<char>(n & 255U); };
        const auto high = [](unsigned n) { return static_cast<char>((n >> 8U) & 255U); };
        const char acPnt[c_nPntSize] = {low(nStepX),
                                        high(nStepX),
                                        low(nStepY),
                                        high(nStepY),
                                        low(nStepZ),
                                        high(nStepZ),
                                        0,
                                        0,
                                        low(color.r),
                                        low(color.g),
                                        low(color.b),
                                        0};
        sBytes.append(acPnt, c_nPntSize);
    }

    /// @return an edge that holds all points added: twice the distance of the farthest from the centre, along
    ///         an axis.
    std::int64_t CalcNeededEdge() const { return 2 * m_nReach; }

    /// Writes the header of the points added.
    /// @param pTo    where its bytes go.
    /// @param root   of the cloud.
    /// @param bMore  deeper levels have more points of this cube.
    void PutHeader(char* pTo, const CRootCube& root, std::uint32_t nNumPnts, bool bMore) const;

private:
    static constexpr double c_dNumSteps = 65534.0; // an odd number of values: the centre is one

    unsigned CalcStep(std::int64_t nOffset) const
    {
        const double dStep = static_cast<double>(nOffset) * m_dStepsPerUnit;
        const double dWhole = std::clamp(dStep + (dStep < 0.0 ? -0.5 : 0.5), -32767.0, 32767.0);
        return static_cast<unsigned>(static_cast<int>(dWhole));
    }

    CLevelCube m_cube;
    std::int64_t m_nEdge = 0;
    double m_dStepsPerUnit = 0.0;
    std::int64_t m_nReach = 0;
    unsigned m_nOctants = 0; // bit k: octant k holds a point
};

} // namespace zorcld

#endif
