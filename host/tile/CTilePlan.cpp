#include <host/tile/CTilePlan.h>

#include <formats/CloudLimits.h>
#include <formats/Compact.h>
#include <host/files/CInputOptions.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CProgressBar.h>
#include <host/output/FormatCount.h>
#include <host/output/GetFileName.h>
#include <host/tile/CHashAhead.h>
#include <host/tile/CSpool.h>
#include <host/tile/GroundOfTiles.h>
#include <host/tile/OpenTileSource.h>
#include <host/tile/ReadAhead.h>

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>

#include <sys/stat.h>

namespace zorcld
{

namespace
{

constexpr std::uint16_t c_nMaxByte = 255; // of a colour; 16 bits a channel reach farther

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
            CountFile(input, table, nullptr);
        TakeTiles(table);
        CheckCounts();
        return std::move(m_plan);
    }

    CCutPlan Cut(const std::string& sFolder)
    {
        try
        {
            return CutAtOnce(sFolder);
        }
        catch (const CNotAtOnce&)
        {
            CTilePlan plan;
            plan.options = m_plan.options;
            m_plan = std::move(plan);
            return {Make(), {}};
        }
    }

private:
    /// Ends a pass that cannot do with what it knows.
    struct CNotAtOnce
    {
    };

    void TakeTiles(const CTileTable& table)
    {
        for (const CTileCount& tile : table.GetTiles())
            if (tile.nNumCore > 0)
                m_plan.vecTiles.push_back(tile);
        std::sort(m_plan.vecTiles.begin(), m_plan.vecTiles.end(),
                  [](const CTileCount& a, const CTileCount& b) { return a.cell < b.cell; });
    }

    CCutPlan CutAtOnce(const std::string& sFolder)
    {
        FindCommon();
        const CTileGrid grid = m_plan.MakeGrid();
        if (static_cast<double>(grid.GetReach()) > m_plan.options.dSize * c_dCompactScale)
            throw CNotAtOnce(); // most points go to many tiles, maybe to more than may be
        CTileTable table(grid);
        CSpool spool(sFolder, {m_plan.origin, m_plan.bColor}, table.GetTiles(), CSpool::Tiles_Growing);
        for (const CInputOptions& input : m_vecInputs)
            CountFile(input, table, &spool);
        static_cast<void>(spool.Finish()); // counts are what they have got
        std::map<CCell, std::uint64_t> mapHashes = spool.GetHashes();
        for (const CTileCount& tile : table.GetTiles())
            if (tile.nNumCore == 0)
            {
                mapHashes.erase(tile.cell);
                std::filesystem::remove(sFolder + "/" + NameTile(tile.cell));
            }
        TakeTiles(table);
        return {std::move(m_plan), std::move(mapHashes)};
    }

    void Tell(const std::string& sNote)
    {
        if (m_setTold.insert(sNote).second) // files may be read a second time
            m_console.Note(sNote);
    }

    /// What all tiles have in common: the origin, colours, units.
    void FindCommon()
    {
        std::optional<TOrigin> origin;
        bool bSameUnit = true;
        std::int64_t nNumNotFinite = 0;
        std::string sWithout;
        m_plan.bColor = true;
        for (const CInputOptions& input : m_vecInputs)
        {
            const std::unique_ptr<ITileSource> pSource = OpenTileSource(input);
            if (!origin)
                origin = pSource->FindOrigin();
            nNumNotFinite += pSource->GetNumNotFinite();
            m_plan.bColor = m_plan.bColor && pSource->HasColor();
            if (!pSource->HasColor())
                sWithout = input.sPath;
            m_bAnyColor = m_bAnyColor || pSource->HasColor();
            if (&input == &m_vecInputs.front())
                m_plan.units = pSource->GetUnits();
            bSameUnit = bSameUnit && m_plan.units == pSource->GetUnits();
        }
        if (m_plan.options.units)
            m_plan.units = *m_plan.options.units;
        else if (!bSameUnit)
            m_plan.units = {};
        if (m_bAnyColor && !m_plan.bColor)
            Tell(fmt::format("{}: has no colours, so the tiles have none", sWithout));
        if (!origin)
            FailForNoPnt(nNumNotFinite > 0);
        m_plan.origin = *origin;
        if (const std::string sCause = FindGroundCause(m_plan.options, m_plan.units);
            m_plan.options.bForGround && !sCause.empty())
            throw CUsageError("--print-commands: " + sCause);
    }

    [[noreturn]] void FailForNoPnt(bool bNotFinite) const
    {
        const std::string sNone =
            bNotFinite ? "holds no point whose coordinates are numbers" : "holds no points";
        throw CFailure(m_vecInputs.front().sPath,
                       m_vecInputs.size() == 1 ? sNone : sNone + ", nor do the other files");
    }

    /// @param pSpool  where the points go, too; null: they are counted only.
    void CountFile(const CInputOptions& input, CTileTable& table, CSpool* pSpool)
    {
        CPlannedFile planned = LookAtTime(input.sPath);
        CHashAhead hash(input.sPath);
        const std::unique_ptr<ITileSource> pSource = OpenTileSource(input);
        CProgressBar progress(m_console,
                              (pSpool == nullptr ? "looking at " : "cutting ") + GetFileName(input.sPath));
        progress.Start();
        const double dStep =
            100.0 / static_cast<double>(std::max<std::int64_t>(pSource->GetNumAnnounced(), 1));
        CSeen seen;
        ReadAhead(*pSource, m_plan.origin,
                  [&](std::vector<CTilePnt>& vecPnts)
                  {
                      LookAt(vecPnts, seen);
                      progress.SetPos(
                          std::min(static_cast<int>(static_cast<double>(seen.nNum) * dStep), 100));
                      if (pSpool == nullptr)
                          return table.Count(vecPnts);
                      if (seen.bDeep)
                          KeepHighBytes(vecPnts);
                      else if (m_plan.bColor && seen.nMaxColor > c_nMaxByte)
                          throw CNotAtOnce(); // earlier ones have been handed out as they are
                      HandOut(vecPnts, table, *pSpool);
                  });
        planned.file.sHash = hash.Get();
        progress.Stop();
        for (const std::string& sNote : pSource->GetNotes())
            Tell(fmt::format("{}: {}", input.sPath, sNote));
        planned.file.nNumPnts = seen.nNum;
        planned.bDeepColor = seen.nMaxColor > c_nMaxByte;
        m_plan.vecFiles.push_back(std::move(planned));
    }

    static void HandOut(const std::vector<CTilePnt>& vecPnts, CTileTable& table, CSpool& spool)
    {
        table.ForEachRun(vecPnts,
                         [&](const CTileTable::CZone& zone, std::size_t nFirst, std::size_t nCount)
                         {
                             if (table.CountRun(zone, nCount) > c_nMaxCloudPnts)
                                 throw CNotAtOnce();
                             spool.Add(zone, vecPnts.data() + nFirst, nCount);
                         });
    }

    /// What has been read of a file so far.
    struct CSeen
    {
        std::int64_t nNum = 0;
        std::uint16_t nMaxColor = 0; // the largest channel
        bool bDeep = false;          // its first points had 16 bits a channel
    };

    void LookAt(const std::vector<CTilePnt>& vecPnts, CSeen& seen)
    {
        std::array<std::int32_t, 3> anMin = m_plan.anMin; // here they can stay in the processor
        std::array<std::int32_t, 3> anMax = m_plan.anMax;
        std::uint16_t nMaxColor = seen.nMaxColor;
        for (const CTilePnt& pnt : vecPnts)
            for (std::size_t k = 0; k < 3; ++k)
            {
                anMin[k] = std::min(anMin[k], pnt.anSteps[k]);
                anMax[k] = std::max(anMax[k], pnt.anSteps[k]);
                nMaxColor = std::max(nMaxColor, pnt.anColor[k]);
            }
        m_plan.anMin = anMin;
        m_plan.anMax = anMax;
        seen.nMaxColor = nMaxColor;
        if (seen.nNum == 0)
            seen.bDeep = seen.nMaxColor > c_nMaxByte;
        seen.nNum += static_cast<std::int64_t>(vecPnts.size());
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
    std::set<std::string> m_setTold; // notes
};

} // namespace

std::int64_t CTilePlan::CountPnts() const
{
    std::int64_t nNum = 0;
    for (const CPlannedFile& planned : vecFiles)
        nNum += planned.file.nNumPnts;
    return nNum;
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

CCutPlan MakePlanAndCut(const std::vector<CInputOptions>& vecInputs, const CTileOptions& options,
                        const std::string& sFolder, const CConsole& console)
{
    return CPlanner(vecInputs, options, console).Cut(sFolder);
}

} // namespace zorcld
