#include <host/serve/CTileWriter.h>

#include <formats/Compact.h>
#include <host/serve/PutNumber.h>

#include <utility>

namespace zorcld
{

std::string CTileWriter::Finish(const CRootCube& root, bool bMore)
{
    constexpr unsigned c_nMore = 1U << 8U;
    const auto coord = [](std::int64_t n, float fOrg)
    { return static_cast<double>(n) / c_dCompactScale + static_cast<double>(fOrg); };
    char* const pHeader = m_sBytes.data();
    PutFloat64(pHeader, coord(m_cube.nX, root.fOrgX));
    PutFloat64(pHeader + 8, coord(m_cube.nY, root.fOrgY));
    PutFloat64(pHeader + 16, coord(m_cube.nZ, root.fOrgZ));
    PutFloat64(pHeader + 24, static_cast<double>(m_nEdge) / c_dCompactScale);
    PutUint32(pHeader + 32, static_cast<std::uint32_t>(GetNumPnts()));
    PutUint32(pHeader + 36, m_nOctants | (bMore ? c_nMore : 0U));
    return std::exchange(m_sBytes, std::string(c_nHeaderSize, '\0'));
}

} // namespace zorcld
