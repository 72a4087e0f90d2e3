#include <analysis/outline/COpenPnts.h>

#include <utility>

namespace
{

constexpr std::size_t c_nMaxLeaf = 8;

} // namespace

COpenPnts::COpenPnts(std::vector<CEntry> vecEntries) : m_vecEntries(std::move(vecEntries))
{
    while ((m_vecEntries.size() >> m_nNumLevels) > c_nMaxLeaf)
        ++m_nNumLevels;
    const std::size_t nNumLeaves = std::size_t{1} << m_nNumLevels;
    m_vecBoxes.assign(2 * nNumLeaves - 1, TBox::GetEmpty());
    m_vecNum.resize(nNumLeaves);
    Build(0, 0, 0);
}

// Each node's points are parted in halves across the longer side of its box.
void COpenPnts::Build(std::size_t nNode, int nLevel, std::size_t nOnLevel)
{
    const auto at = [&](std::size_t i) { return m_vecEntries.begin() + static_cast<std::ptrdiff_t>(i); };
    const auto begin = at(GetBegin(nLevel, nOnLevel));
    const auto end = at(GetBegin(nLevel, nOnLevel + 1));
    TBox& box = m_vecBoxes[nNode];
    std::for_each(begin, end, [&](const CEntry& entry) { box.Add(entry.x, entry.y); });
    if (nLevel == m_nNumLevels)
    {
        m_vecNum[nOnLevel] = static_cast<unsigned char>(end - begin);
        return;
    }
    const bool bByX = std::int64_t{box.xmax} - box.xmin > std::int64_t{box.ymax} - box.ymin;
    std::nth_element(begin, at(GetBegin(nLevel + 1, 2 * nOnLevel + 1)), end,
                     [=](const CEntry& a, const CEntry& b) { return bByX ? a.x < b.x : a.y < b.y; });
    Build(2 * nNode + 1, nLevel + 1, 2 * nOnLevel);
    Build(2 * nNode + 2, nLevel + 1, 2 * nOnLevel + 1);
}
