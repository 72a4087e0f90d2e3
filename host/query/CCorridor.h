#ifndef HOST_QUERY_CCORRIDOR_H
#define HOST_QUERY_CCORRIDOR_H

#include <host/query/PlanQuery.h>
#include <zor4data/CCldCadPnt.h>

#include <string>

class CPntCld;
class IPntCldListener;

namespace zorcld
{

/// A corridor along a line, seen from above.
class CCorridor
{
public:
    /// @param line     with the corridor's whole width.
    /// @param sOption  what gave it, for the message.
    /// @throws CUsageError where it has no width or no length.
    CCorridor(const CPlanLine& line, const std::string& sOption);

    double GetLength() const { return m_dLength; }
    const CPlanLine& GetLine() const { return m_line; }

    /// How far along the line a place lies, from its beginning.
    double CalcAlong(const zor::geom::PNT_3D& pnt) const
    {
        return (pnt.x - m_line.p1.x) * m_dX + (pnt.y - m_line.p1.y) * m_dY;
    }

    /// How far beside the line, positive on its left.
    double CalcAcross(const zor::geom::PNT_3D& pnt) const
    {
        return (pnt.y - m_line.p1.y) * m_dX - (pnt.x - m_line.p1.x) * m_dY;
    }

    /// Delivers the points in it.
    void FindPnts(const CPntCld& cloud, IPntCldListener& listener) const;

    /// The first line of a file of its points.
    static const char* GetCsvHead(bool bColor);

    /// The line of a point.
    static std::string FormatCsv(const CCldCadPnt& pnt, double dAlong, double dAcross, bool bColor);

private:
    CPlanLine m_line;
    double m_dLength;
    double m_dX; // the line's direction, of length 1
    double m_dY;
};

} // namespace zorcld

#endif
