#include <host/query/CCorridor.h>

#include <host/output/ByteFromShare.h>
#include <host/output/CFailure.h>
#include <zor4data/CPntCld.h>

#include <fmt/format.h>

#include <cmath>

namespace zorcld
{

CCorridor::CCorridor(const CPlanLine& line, const std::string& sOption)
    : m_line(line), m_dLength(std::hypot(line.p2.x - line.p1.x, line.p2.y - line.p1.y)),
      m_dX((line.p2.x - line.p1.x) / m_dLength), m_dY((line.p2.y - line.p1.y) / m_dLength)
{
    if (!(line.dWidth > 0.0))
        throw CUsageError(sOption + ": the width is not above 0");
    if (line.p1.x == line.p2.x && line.p1.y == line.p2.y)
        throw CUsageError(sOption + ": the line begins and ends at one place");
    if (!std::isfinite(m_dLength))
        throw CUsageError(sOption + ": the line is too long");
}

void CCorridor::FindPnts(const CPntCld& cloud, IPntCldListener& listener) const
{
    cloud.FindPnts2D_NearLine(&listener, m_line.p1, m_line.p2, m_line.dWidth / 2.0, false, false);
}

const char* CCorridor::GetCsvHead(bool bColor)
{
    return bColor ? "distance,height,offset,x,y,red,green,blue\n" : "distance,height,offset,x,y\n";
}

std::string CCorridor::FormatCsv(const CCldCadPnt& pnt, double dAlong, double dAcross, bool bColor)
{
    std::string sLine = fmt::format("{:.4f},{:.4f},{:.4f},{:.4f},{:.4f}", dAlong, pnt.m_pnt.z, dAcross,
                                    pnt.m_pnt.x, pnt.m_pnt.y);
    if (bColor)
        sLine += fmt::format(",{},{},{}", ByteFromShare(pnt.m_fR), ByteFromShare(pnt.m_fG),
                             ByteFromShare(pnt.m_fB));
    return sLine + '\n';
}

} // namespace zorcld
