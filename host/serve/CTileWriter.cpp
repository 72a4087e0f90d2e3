#include <host/serve/CTileWriter.h>

#include <formats/Compact.h>

namespace zorcld
{

void CTileWriter::PutHeader(char* pTo, const CRootCube& root, std::uint32_t nNumPnts, bool bMore) const
{
    constexpr unsigned c_nMore = 1U << 8U;
    const auto coord = [](std::int64_t n, float fOrg)
    { return static_cast<double>(n) / c_dCompactScale + static_cast<double>(fOrg); };
    PutFloat64(pTo, coord(m_cube.nX, root.fOrgX));
    PutFloat64(pTo + 8, coord(m_cube.nY, root.fOrgY));
    PutFloat64(pTo + 16, coord(m_cube.nZ, root.fOrgZ));
    PutFloat64(pTo + 24, static_cast<double>(m_nEdge) / c_dCompactScale);
    PutUint32(pTo + 32, nNumPnts);
    PutUint32(pTo + 36, m_nOctants | (bMore ? c_nMore : 0U));
}

} // namespace zorcld
