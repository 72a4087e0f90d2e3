#include <host/tile/CTileTable.h>

#include <host/output/CFailure.h>
#include <host/output/GroupDigits.h>

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nMaxTiles = 1000000; // with a point in their core: those that are made
constexpr std::size_t c_nMaxReached =
    4000000; // with those that buffers alone reach: what is counted, in memory

} // namespace

CTileTable::CTileTable(const CTileGrid& grid, std::vector<CTileCount> vecTiles)
    : m_grid(grid), m_bGrows(false), m_vecTiles(std::move(vecTiles))
{
    for (std::size_t i = 0; i < m_vecTiles.size(); ++i)
        m_mapTiles.emplace(m_vecTiles[i].cell, i);
}

void CTileTable::Count(const std::vector<CTilePnt>& vecPnts)
{
    ForEachRun(vecPnts, [this](const CZone& zone, std::size_t, std::size_t nNum) { CountRun(zone, nNum); });
}

std::int64_t CTileTable::CountRun(const CZone& zone, std::size_t nNum)
{
    std::int64_t nMost = 0;
    for (const std::size_t nTile : zone.vecTiles)
        nMost = std::max(nMost, m_vecTiles[nTile].nNumAll += static_cast<std::int64_t>(nNum));
    CTileCount& core = m_vecTiles[zone.nCore];
    if (core.nNumCore == 0 && ++m_nNumCores > c_nMaxTiles)
        throw CUsageError(fmt::format("--size: there would be more than {} tiles", GroupDigits(c_nMaxTiles)));
    core.nNumCore += static_cast<std::int64_t>(nNum);
    return nMost;
}

CTileTable::CSpan CTileTable::FindSpan(std::size_t nAxis, std::int64_t nStep) const
{
    const std::int64_t nReach = m_grid.GetReach();
    CSpan span;
    span.nCell = m_grid.FindCell(nAxis, nStep);
    span.nMin = m_grid.FindCell(nAxis, nStep - nReach);
    span.nMax = m_grid.FindCell(nAxis, nStep + nReach);
    const auto first = [&](std::int64_t nCell) { return m_grid.GetFirstStep(nAxis, nCell); };
    span.nFirst = std::max({first(span.nCell), first(span.nMin) + nReach, first(span.nMax) - nReach});
    span.nEnd =
        std::min({first(span.nCell + 1), first(span.nMin + 1) + nReach, first(span.nMax + 1) - nReach});
    return span;
}

void CTileTable::FindZone(const CTilePnt& pnt)
{
    if (IsInZone(pnt))
        return;
    for (std::size_t k = 0; k < 2; ++k)
        if (!m_aSpans[k].Has(pnt.anSteps[k]))
            m_aSpans[k] = FindSpan(k, pnt.anSteps[k]);
    const CSpan& columns = m_aSpans[0];
    const CSpan& rows = m_aSpans[1];
    m_zone.vecTiles.clear();
    for (std::int64_t nRow = rows.nMin; nRow <= rows.nMax; ++nRow)
        for (std::int64_t nColumn = columns.nMin; nColumn <= columns.nMax; ++nColumn)
            if (const std::size_t nTile = Find(nColumn, nRow); nTile != c_nNone)
                m_zone.vecTiles.push_back(nTile);
    m_zone.nCore = Find(columns.nCell, rows.nCell);
}

std::size_t CTileTable::Find(std::int64_t nColumn, std::int64_t nRow)
{
    const CCell cell = {static_cast<std::int32_t>(nColumn), static_cast<std::int32_t>(nRow)};
    const auto found = m_mapTiles.find(cell);
    if (found != m_mapTiles.end())
        return found->second;
    if (!m_bGrows)
        return c_nNone;
    if (m_vecTiles.size() == c_nMaxReached)
        throw CUsageError(
            fmt::format("--size: is so small beside the buffer that the points reach more than {} "
                        "tiles, with those that would hold buffer alone",
                        GroupDigits(c_nMaxReached)));
    m_mapTiles.emplace(cell, m_vecTiles.size());
    m_vecTiles.push_back({cell});
    return m_vecTiles.size() - 1;
}

} // namespace zorcld
