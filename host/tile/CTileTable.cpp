#include <host/tile/CTileTable.h>

#include <host/output/CFailure.h>
#include <host/output/GroupDigits.h>

#include <fmt/format.h>

#include <utility>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nMaxTiles = 1000000;

} // namespace

CTileTable::CTileTable(const CTileGrid& grid, std::vector<CTileCount> vecTiles)
    : m_grid(grid), m_bGrows(false), m_vecTiles(std::move(vecTiles))
{
    for (std::size_t i = 0; i < m_vecTiles.size(); ++i)
        m_mapTiles.emplace(m_vecTiles[i].cell, i);
}

CTileTable::CRange CTileTable::FindRange(std::int64_t x, std::int64_t y) const
{
    const std::int64_t nReach = m_grid.GetReach();
    CRange range;
    range.nColumn = m_grid.FindCell(0, x);
    range.nRow = m_grid.FindCell(1, y);
    range.nColumnMin = m_grid.FindCell(0, x - nReach);
    range.nColumnMax = m_grid.FindCell(0, x + nReach);
    range.nRowMin = m_grid.FindCell(1, y - nReach);
    range.nRowMax = m_grid.FindCell(1, y + nReach);
    return range;
}

std::size_t CTileTable::Find(std::int64_t nColumn, std::int64_t nRow)
{
    const CCell cell = {static_cast<std::int32_t>(nColumn), static_cast<std::int32_t>(nRow)};
    const auto found = m_mapTiles.find(cell);
    if (found != m_mapTiles.end())
        return found->second;
    if (!m_bGrows)
        return c_nNone;
    if (m_vecTiles.size() == c_nMaxTiles)
        throw CUsageError(fmt::format("--size: there would be more than {} tiles", GroupDigits(c_nMaxTiles)));
    m_mapTiles.emplace(cell, m_vecTiles.size());
    m_vecTiles.push_back({cell});
    return m_vecTiles.size() - 1;
}

void CTileTable::SetInner(const CRange& range)
{
    const std::int64_t nReach = m_grid.GetReach();
    m_inner = {m_grid.GetFirstStep(0, range.nColumn) + nReach,
               m_grid.GetFirstStep(0, range.nColumn + 1) - nReach,
               m_grid.GetFirstStep(1, range.nRow) + nReach, m_grid.GetFirstStep(1, range.nRow + 1) - nReach};
    m_nInner = Find(range.nColumn, range.nRow);
}

} // namespace zorcld
