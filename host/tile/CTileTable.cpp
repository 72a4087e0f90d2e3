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

CTileTable::CSpan CTileTable::FindSpan(std::size_t nAxis, std::int64_t nStep)
{
    CSpan& span = m_aSpans[nAxis];
    if (nStep < span.nFirst || nStep >= span.nNext)
    {
        span.nCell = m_grid.FindCell(nAxis, nStep);
        span.nFirst = m_grid.GetFirstStep(nAxis, span.nCell);
        span.nNext = m_grid.GetFirstStep(nAxis, span.nCell + 1);
    }
    const std::int64_t nReach = m_grid.GetReach();
    CSpan found = span;
    found.nMin = nStep - nReach >= span.nFirst ? span.nCell : m_grid.FindCell(nAxis, nStep - nReach);
    found.nMax = nStep + nReach < span.nNext ? span.nCell : m_grid.FindCell(nAxis, nStep + nReach);
    return found;
}

CTileTable::CRange CTileTable::FindRange(std::int64_t x, std::int64_t y)
{
    const CSpan columns = FindSpan(0, x);
    const CSpan rows = FindSpan(1, y);
    return {columns.nCell, rows.nCell, columns.nMin, columns.nMax, rows.nMin, rows.nMax};
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
