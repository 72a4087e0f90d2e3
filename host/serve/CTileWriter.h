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

/// Puts a tile's points into its bytes: the header, and 12 bytes a point (docs/serve.md).
class CTileWriter
{
public:
    static constexpr std::size_t c_nHeaderSize = 40;
    static constexpr std::size_t c_nPntSize = 12;

    /// @param nEdge  over which the steps are spread, compact units; that of the cube, as a rule.
    CTileWriter(const CLevelCube& cube, std::int64_t nEdge)
        : m_cube(cube), m_nEdge(nEdge),
          m_dStepsPerUnit(nEdge > 0 ? c_dNumSteps / static_cast<double>(nEdge) : 0.0),
          m_sBytes(c_nHeaderSize, '\0')
    {
    }

    void Reserve(std::size_t nNumPnts) { m_sBytes.reserve(c_nHeaderSize + nNumPnts * c_nPntSize); }

    /// @param nX,nY,nZ  offset of a point of the cube, compact units.
    void Add(std::int32_t nX, std::int32_t nY, std::int32_t nZ, const CRgbBytes& color)
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
        m_sBytes.append(acPnt, c_nPntSize);
    }

    std::size_t GetNumPnts() const { return (m_sBytes.size() - c_nHeaderSize) / c_nPntSize; }

    /// @return twice the distance of the farthest point from the centre, along an axis: an edge that holds
    /// all
    ///         points.
    std::int64_t CalcNeededEdge() const { return 2 * m_nReach; }

    /// @param root   of the cloud.
    /// @param bMore  deeper levels have more points of this cube.
    /// @return all bytes; the writer has none any more.
    std::string Finish(const CRootCube& root, bool bMore);

private:
    static constexpr double c_dNumSteps = 65534.0; // an odd number of values: the centre is one

    unsigned CalcStep(std::int64_t nOffset) const
    {
        const double dStep = static_cast<double>(nOffset) * m_dStepsPerUnit;
        const double dWhole = std::clamp(dStep + (dStep < 0.0 ? -0.5 : 0.5), -32767.0, 32767.0);
        return static_cast<unsigned>(static_cast<int>(dWhole));
    }

    CLevelCube m_cube;
    std::int64_t m_nEdge;
    double m_dStepsPerUnit;
    std::int64_t m_nReach = 0;
    unsigned m_nOctants = 0; // bit k: octant k holds a point
    std::string m_sBytes;
};

} // namespace zorcld

#endif
