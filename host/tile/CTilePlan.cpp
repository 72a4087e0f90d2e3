#include <host/tile/CTilePlan.h>

#include <formats/CloudLimits.h>
#include <host/files/CInputOptions.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CProgressBar.h>
#include <host/output/FormatCount.h>
#include <host/output/GetFileName.h>
#include <host/tile/CHashAhead.h>
#include <host/tile/OpenTileSource.h>
#include <host/tile/ReadAhead.h>

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>

#include <sys/stat.h>

namespace zorcld
{

namespace
{

/// The first pass over the files.
class CPlanner
{
public:
    CPlanner(const std::vector<CInputOptions>& vecInputs, const CTileOptions& options,
             const CConsole& console)
        : m_vecInputs(vecInputs), m_console(console)
    {
        m_plan.options = options;
    }

    CTilePlan Make()
    {
        FindCommon();
        const CTileGrid grid = m_plan.MakeGrid();
        CTileTable table(grid);
        for (const CInputOptions& input : m_vecInputs)
            CountFile(input, table);
        for (const CTileCount& tile : table.GetTiles())
            if (tile.nNumCore > 0)
                m_plan.vecTiles.push_back(tile);
        std::sort(m_plan.vecTiles.begin(), m_plan.vecTiles.end(),
                  [](const CTileCount& a, const CTileCount& b) { return a.cell < b.cell; });
        CheckCounts();
        return std::move(m_plan);
    }

private:
    /// What all tiles have in common: the origin, colours, units.
    void FindCommon()
    {
        std::optional<TOrigin> origin;
        bool bSameUnit = true;
        std::string sWithout;
        m_plan.bColor = true;
        for (const CInputOptions& input : m_vecInputs)
        {
            const std::unique_ptr<ITileSource> pSource = OpenTileSource(input);
            if (!origin)
                origin = pSource->FindOrigin();
            m_plan.bColor = m_plan.bColor && pSource->HasColor();
            if (!pSource->HasColor())
                sWithout = input.sPath;
            m_bAnyColor = m_bAnyColor || pSource->HasColor();
            if (&input == &m_vecInputs.front())
                m_plan.units = pSource->GetUnits();
            bSameUnit = bSameUnit && m_plan.units == pSource->GetUnits();
        }
        if (!bSameUnit)
            m_plan.units = {};
        if (m_bAnyColor && !m_plan.bColor)
            m_console.Note(fmt::format("{}: has no colours, so the tiles have none", sWithout));
        if (!origin)
            throw CFailure(m_vecInputs.front().sPath, m_vecInputs.size() == 1
                                                          ? "holds no points whose coordinates are numbers"
                                                          : "neither it nor the other files hold a point");
        m_plan.origin = *origin;
    }

    void CountFile(const CInputOptions& input, CTileTable& table)
    {
        CPlannedFile planned = LookAtTime(input.sPath);
        CHashAhead hash(input.sPath);
        const std::unique_ptr<ITileSource> pSource = OpenTileSource(input);
        CProgressBar progress(m_console, "looking at " + GetFileName(input.sPath));
        progress.Start();
        const double dStep =
            100.0 / static_cast<double>(std::max<std::int64_t>(pSource->GetNumAnnounced(), 1));
        std::uint16_t nMaxColor = 0;
        std::int64_t nNum = 0;
        ReadAhead(*pSource, m_plan.origin,
                  [&](const std::vector<CTilePnt>& vecPnts)
                  {
                      nNum += static_cast<std::int64_t>(vecPnts.size());
                      progress.SetPos(std::min(static_cast<int>(static_cast<double>(nNum) * dStep), 100));
                      nMaxColor = std::max(nMaxColor, WidenBy(vecPnts));
                      table.Count(vecPnts);
                  });
        planned.file.sHash = hash.Get();
        progress.Stop();
        for (const std::string& sNote : pSource->GetNotes())
            m_console.Note(fmt::format("{}: {}", input.sPath, sNote));
        planned.file.nNumPnts = nNum;
        planned.bDeepColor = nMaxColor > 255;
        m_plan.vecFiles.push_back(std::move(planned));
    }

    /// @return the largest channel of a colour.
    std::uint16_t WidenBy(const std::vector<CTilePnt>& vecPnts)
    {
        std::uint16_t nMaxColor = 0;
        for (const CTilePnt& pnt : vecPnts)
            for (std::size_t k = 0; k < 3; ++k)
            {
                m_plan.anMin[k] = std::min(m_plan.anMin[k], pnt.anSteps[k]);
                m_plan.anMax[k] = std::max(m_plan.anMax[k], pnt.anSteps[k]);
                nMaxColor = std::max(nMaxColor, pnt.anColor[k]);
            }
        return nMaxColor;
    }

    void CheckCounts() const
    {
        for (const CTileCount& tile : m_plan.vecTiles)
            if (tile.nNumAll > c_nMaxCloudPnts)
                throw CUsageError(fmt::format("--size: {} would hold {}, a cloud holds {} at most",
                                              NameTile(tile.cell), FormatCount(tile.nNumAll, "point"),
                                              GroupDigits(c_nMaxCloudPnts)));
    }

    const std::vector<CInputOptions>& m_vecInputs;
    const CConsole& m_console;
    CTilePlan m_plan;
    bool m_bAnyColor = false;
};

} // namespace

std::int64_t CTilePlan::CountPnts() const
{
    std::int64_t nNum = 0;
    for (const CPlannedFile& planned : vecFiles)
        nNum += planned.file.nNumPnts;
    return nNum;
}

std::string NameTile(const CCell& cell)
{
    return fmt::format("tile_{}_{}.cld", cell.nColumn, cell.nRow);
}

CPlannedFile LookAtTime(const std::string& sPath)
{
    struct stat status = {};
    if (::stat(sPath.c_str(), &status) != 0)
        throw CFailure(sPath, std::strerror(errno));
    CPlannedFile planned;
    planned.file.sPath = sPath;
    planned.file.nNumBytes = status.st_size;
    planned.nTime = status.st_mtim.tv_sec * std::int64_t{1000000000} + status.st_mtim.tv_nsec;
    return planned;
}

CTilePlan MakePlan(const std::vector<CInputOptions>& vecInputs, const CTileOptions& options,
                   const CConsole& console)
{
    return CPlanner(vecInputs, options, console).Make();
}

} // namespace zorcld
