#ifndef HOST_SERVE_CTILEWRITER_H
#define HOST_SERVE_CTILEWRITER_H

#include <host/picture/CRgb.h>
#include <host/serve/PutNumber.h>
#include <zor4data/CRootCube.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace zorcld
{

/// Makes the bytes of a tile: 12 a point, and the header, which is known when all points are (docs/serve.md).
class CTileWriter
{
public:
    static constexpr std::size_t c_nHeaderSize = 40;
    static constexpr std::size_t c_nPntSize = 12;

    class CQuick;
    class CCareful;

    /// @param nEdge  over which the steps are spread, compact units; that of the cube, as a rule.
    CTileWriter(const CLevelCube& cube, std::int64_t nEdge) : m_cube(cube) { SetEdge(nEdge); }

    /// For the points that are put from now on, and the header.
    void SetEdge(std::int64_t nEdge)
    {
        m_nEdge = nEdge;
        m_dStepsPerUnit = nEdge > 0 ? c_dNumSteps / static_cast<double>(nEdge) : 0.0;
    }

    /// Calls write(put), which puts points by put(pRecord, color, pTo): a point's record, which begins with
    /// its offset in compact units, into 12 bytes. Where a point lies beyond the ends of the edge, which few
    /// tiles have, it is called once more, and is to put the same points into the same bytes.
    template <class TWrite>
    void PutPnts(TWrite write);

    /// @return an edge that holds all points put: where some lie beside the edge, twice the distance of the
    ///         farthest from the centre, along an axis.
    std::int64_t CalcNeededEdge() const { return std::max(2 * m_nReach, m_nEdge); }

    /// Writes the header of the points put.
    /// @param pTo    where its bytes go.
    /// @param root   of the cloud.
    /// @param bMore  deeper levels have more points of this cube.
    void PutHeader(char* pTo, const CRootCube& root, std::uint32_t nNumPnts, bool bMore) const;

private:
    class COffset;

    static constexpr double c_dNumSteps = 65534.0; // an odd number of values: the centre is one
    static constexpr std::int64_t c_nMinStep = 1;  // while they are calculated steps count from 32768 below
    static constexpr std::int64_t c_nMaxStep = 65535;

    CLevelCube m_cube;
    std::int64_t m_nEdge = 0;
    double m_dStepsPerUnit = 0.0;
    std::int64_t m_nReach = 0;
    unsigned m_nOctants = 0; // bit k: octant k holds a point
};

/// A point's offset from the centre of the tile, and what becomes of it.
class CTileWriter::COffset
{
public:
    COffset(const unsigned char* pRecord, const CLevelCube& cube)
    {
        std::int32_t an[3];
        std::memcpy(an, pRecord, sizeof(an));
        m_nX = an[0] - cube.nX;
        m_nY = an[1] - cube.nY;
        m_nZ = an[2] - cube.nZ;
    }

    /// @return the bit of its octant.
    unsigned GetOctant() const { return 0x80U >> ((m_nX >> 63 & 4) + (m_nY >> 63 & 2) + (m_nZ >> 63 & 1)); }

    std::int64_t GetReach() const { return std::max({std::abs(m_nX), std::abs(m_nY), std::abs(m_nZ)}); }

    /// Rounds, but does not stop at the ends. The farthest offset over the smallest edge has 49 bits.
    void CalcSteps(double dStepsPerUnit)
    {
        constexpr double c_dMiddle = 32768.5;
        const auto step = [&](std::int64_t n)
        { return static_cast<std::int64_t>(static_cast<double>(n) * dStepsPerUnit + c_dMiddle); };
        m_nX = step(m_nX);
        m_nY = step(m_nY);
        m_nZ = step(m_nZ);
    }

    void StopAtEnds()
    {
        m_nX = std::clamp(m_nX, c_nMinStep, c_nMaxStep);
        m_nY = std::clamp(m_nY, c_nMinStep, c_nMaxStep);
        m_nZ = std::clamp(m_nZ, c_nMinStep, c_nMaxStep);
    }

    /// @return bits beyond the lowest 16 if one of the steps is beyond the ends, and only then. May be
    ///         or-ed together for many points.
    std::int64_t GetBeyond() const
    {
        return m_nX | (m_nX - c_nMinStep) | m_nY | (m_nY - c_nMinStep) | m_nZ | (m_nZ - c_nMinStep);
    }

    /// Any bytes where a step is beyond the ends.
    void Put(const CRgbBytes& color, char* pTo) const
    {
        constexpr std::uint64_t c_nMiddles = 0x800080008000U;
        const std::uint64_t nSteps = static_cast<std::uint64_t>(m_nX) |
                                     static_cast<std::uint64_t>(m_nY) << 16U |
                                     static_cast<std::uint64_t>(m_nZ) << 32U;
        PutUint64(pTo, nSteps ^ c_nMiddles); // which takes the middle off each of them
        PutUint32(pTo + 8, color.r | static_cast<std::uint32_t>(color.g) << 8U |
                               static_cast<std::uint32_t>(color.b) << 16U);
    }

private:
    std::int64_t m_nX;
    std::int64_t m_nY;
    std::int64_t m_nZ;
};

/// Puts points as if none lay beyond the ends, and knows afterwards whether that was so. Small enough for the
/// registers of a loop.
class CTileWriter::CQuick
{
public:
    explicit CQuick(const CTileWriter& writer)
        : m_cube(writer.m_cube), m_dStepsPerUnit(writer.m_dStepsPerUnit)
    {
    }

    void operator()(const unsigned char* pRecord, const CRgbBytes& color, char* pTo)
    {
        COffset offset(pRecord, m_cube);
        m_nOctants |= offset.GetOctant();
        offset.CalcSteps(m_dStepsPerUnit);
        m_nBeyond |= offset.GetBeyond();
        offset.Put(color, pTo);
    }

    bool IsRight() const { return (m_nBeyond & ~c_nMaxStep) == 0; }
    unsigned GetOctants() const { return m_nOctants; }

private:
    CLevelCube m_cube;
    double m_dStepsPerUnit;
    std::int64_t m_nBeyond = 0;
    unsigned m_nOctants = 0;
};

/// Puts points wherever they lie.
class CTileWriter::CCareful
{
public:
    explicit CCareful(CTileWriter& writer) : m_pWriter(&writer) {}

    void operator()(const unsigned char* pRecord, const CRgbBytes& color, char* pTo)
    {
        COffset offset(pRecord, m_pWriter->m_cube);
        m_pWriter->m_nOctants |= offset.GetOctant();
        const std::int64_t nReach = offset.GetReach();
        offset.CalcSteps(m_pWriter->m_dStepsPerUnit);
        if ((offset.GetBeyond() & ~c_nMaxStep) != 0)
            m_pWriter->m_nReach = std::max(m_pWriter->m_nReach, nReach);
        offset.StopAtEnds();
        offset.Put(color, pTo);
    }

private:
    CTileWriter* m_pWriter;
};

template <class TWrite>
void CTileWriter::PutPnts(TWrite write)
{
    CQuick quick(*this);
    write(quick);
    m_nOctants |= quick.GetOctants();
    if (quick.IsRight())
        return;
    CCareful careful(*this);
    write(careful);
}

} // namespace zorcld

#endif
