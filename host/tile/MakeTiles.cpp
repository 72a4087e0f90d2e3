#include <host/tile/MakeTiles.h>

#include <formats/CPlacedFile.h>
#include <formats/Compact.h>
#include <host/files/CInputOptions.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CProgressBar.h>
#include <host/output/GetFileName.h>
#include <host/tile/BuildTiles.h>
#include <host/tile/CSpool.h>
#include <host/tile/CTilePlan.h>
#include <host/tile/CTileTable.h>
#include <host/tile/CTileWork.h>
#include <host/tile/HashFile.h>
#include <host/tile/OpenTileSource.h>
#include <host/tile/ReadAhead.h>

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace zorcld
{

namespace fs = std::filesystem;

namespace
{

bool IsThere(const std::string& sPath, std::int64_t nNumBytes)
{
    std::error_code error;
    return static_cast<std::int64_t>(fs::file_size(sPath, error)) == nNumBytes && !error;
}

void KeepHighBytes(std::vector<CTilePnt>& vecPnts)
{
    for (CTilePnt& pnt : vecPnts)
        for (std::uint16_t& nColor : pnt.anColor)
            nColor = static_cast<std::uint16_t>(nColor >> 8U);
}

/// One run of `zorcld tile`.
class CTileMaker
{
public:
    CTileMaker(const std::vector<CInputOptions>& vecInputs, const CTileOptions& options, std::string sFolder,
               const CConsole& console)
        : m_vecInputs(vecInputs), m_options(options), m_sFolder(std::move(sFolder)), m_console(console),
          m_work(m_sFolder)
    {
        RemoveCutOff();
    }

    CMadeTiles Make()
    {
        TakeIntact(FindDone());
        CMadeTiles made;
        made.nNumKept = m_mapDone.size();
        if (m_manifest && m_manifest->vecTiles.size() == m_mapDone.size())
        {
            made.manifest = *m_manifest;
            return made;
        }
        if (m_manifest)
        {
            MakeNewPlan();
            fs::remove(FindManifestPath(m_sFolder)); // it says that all are there
        }
        std::vector<CTileCount> vecMissing;
        for (const CTileCount& tile : m_plan.vecTiles)
            if (m_mapDone.count(tile.cell) == 0)
                vecMissing.push_back(tile);
        if (!HasPntsOf(vecMissing))
            HandOut(vecMissing);
        Build(vecMissing);
        made.manifest = MakeManifest();
        made.manifest.Write(m_sFolder);
        m_work.Clear();
        return made;
    }

private:
    /// What a run leaves that was killed: no other one works here, so nobody writes to it any more.
    void RemoveCutOff() const
    {
        std::error_code error;
        for (const fs::directory_entry& entry : fs::directory_iterator(m_sFolder, error))
        {
            const std::string sName = entry.path().filename().string();
            const bool bOurs = sName.rfind("tile_", 0) == 0 || sName.rfind(CManifest::c_pFile, 0) == 0;
            if (bOurs && sName.find(CPlacedFile::c_sSuffix.substr(0, 8)) != std::string::npos)
                fs::remove(entry.path(), error);
        }
    }

    /// Files of these names that nothing here tells of are somebody's, maybe those to be cut.
    void RefuseOthersTiles() const
    {
        std::error_code error;
        for (const fs::directory_entry& entry : fs::directory_iterator(m_sFolder, error))
        {
            const std::string sName = entry.path().filename().string();
            if (sName.rfind("tile_", 0) == 0 && entry.path().extension() == ".cld")
                throw CFailure(m_sFolder,
                               fmt::format("holds {}, which no manifest there tells of; another folder, "
                                           "or this one emptied, takes tiles",
                                           sName));
        }
    }

    /// @return the tiles that an earlier run has made. Leaves the plan, or a manifest.
    std::vector<CTileEntry> FindDone()
    {
        if (std::optional<CTilePlan> plan = m_work.ReadPlan())
        {
            if (!IsOfSameFiles(*plan))
                throw CFailure(m_sFolder,
                               "holds unfinished tiles of other files or options; another folder, or "
                               "this one emptied, takes these");
            m_plan = std::move(*plan);
            return m_work.ReadDone();
        }
        if (!CManifest::IsManifest(m_sFolder))
        {
            if (!m_work.HasPlan())
                RefuseOthersTiles();
            MakeNewPlan();
            return {};
        }
        m_manifest = CManifest::Read(m_sFolder);
        if (!IsOfSameFiles(*m_manifest))
            throw CFailure(m_sFolder, "holds tiles of other files or options; another folder, or this one "
                                      "emptied, takes these");
        return m_manifest->vecTiles;
    }

    void MakeNewPlan()
    {
        m_plan = MakePlan(m_vecInputs, m_options, m_console);
        m_work.WritePlan(m_plan);
        for (const auto& [cell, entry] : m_mapDone)
            m_work.AddDone(entry);
    }

    void TakeIntact(const std::vector<CTileEntry>& vecDone)
    {
        for (const CTileEntry& entry : vecDone)
            if (IsIntact(entry))
                m_mapDone.emplace(entry.cell, entry);
    }

    /// Size and time of a file stand for what is in it; where the time is another one, its hash tells.
    bool IsOfSameFiles(const CTilePlan& plan) const
    {
        if (!(plan.options == m_options) || plan.vecFiles.size() != m_vecInputs.size())
            return false;
        return std::equal(m_vecInputs.begin(), m_vecInputs.end(), plan.vecFiles.begin(),
                          [](const CInputOptions& input, const CPlannedFile& planned)
                          {
                              const CPlannedFile now = LookAtTime(input.sPath);
                              return now.file.nNumBytes == planned.file.nNumBytes &&
                                     (now.nTime == planned.nTime ||
                                      HashFile(input.sPath) == planned.file.sHash);
                          });
    }

    bool IsOfSameFiles(const CManifest& manifest) const
    {
        return manifest.options == m_options && manifest.vecFiles.size() == m_vecInputs.size() &&
               std::equal(m_vecInputs.begin(), m_vecInputs.end(), manifest.vecFiles.begin(),
                          [](const CInputOptions& input, const CTiledFile& file) {
                              return LookAtTime(input.sPath).file.nNumBytes == file.nNumBytes &&
                                     HashFile(input.sPath) == file.sHash;
                          });
    }

    bool IsIntact(const CTileEntry& entry) const
    {
        const std::string sPath = FindTilePath(m_sFolder, entry);
        return IsThere(sPath, entry.nNumBytes) && HashFile(sPath) == entry.sHash;
    }

    std::string GetPntsPath(const CTileCount& tile) const
    {
        return m_work.GetPntsFolder() + "/" + NameTile(tile.cell);
    }

    bool HasPntsOf(const std::vector<CTileCount>& vecTiles) const
    {
        return vecTiles.empty() ||
               (m_work.HasPnts() &&
                std::all_of(vecTiles.begin(), vecTiles.end(),
                            [&](const CTileCount& tile)
                            { return IsThere(GetPntsPath(tile), CSpool::CalcSize(m_plan, tile)); }));
    }

    /// The second pass over the files.
    void HandOut(const std::vector<CTileCount>& vecTiles)
    {
        m_work.ClearPnts();
        const CTileGrid grid = m_plan.MakeGrid();
        CTileTable table(grid, vecTiles);
        CSpool spool(m_work.GetPntsFolder(), m_plan, vecTiles);
        for (std::size_t i = 0; i < m_vecInputs.size(); ++i)
            HandOutFile(m_vecInputs[i], m_plan.vecFiles[i], table, spool);
        spool.Finish();
        m_work.SetHasPnts();
    }

    void HandOutFile(const CInputOptions& input, const CPlannedFile& planned, CTileTable& table,
                     CSpool& spool)
    {
        const std::unique_ptr<ITileSource> pSource = OpenTileSource(input);
        CProgressBar progress(m_console, "cutting " + GetFileName(input.sPath));
        progress.Start();
        std::int64_t nNum = 0;
        const std::int64_t nNumAll = std::max<std::int64_t>(planned.file.nNumPnts, 1);
        ReadAhead(*pSource, m_plan.origin,
                  [&](std::vector<CTilePnt>& vecPnts)
                  {
                      nNum += static_cast<std::int64_t>(vecPnts.size());
                      progress.SetPos(static_cast<int>(std::min<std::int64_t>(nNum * 100 / nNumAll, 100)));
                      if (planned.bDeepColor)
                          KeepHighBytes(vecPnts);
                      table.ForEachRun(
                          vecPnts, [&](const CTileTable::CZone& zone, std::size_t nFirst, std::size_t nCount)
                          { spool.Add(zone, vecPnts.data() + nFirst, nCount); });
                  });
        progress.Stop();
        if (nNum != planned.file.nNumPnts)
            throw CFailure(input.sPath, "it was changed while it was read");
    }

    void Build(const std::vector<CTileCount>& vecTiles)
    {
        CProgressBar progress(m_console, "building tiles");
        progress.Start();
        std::size_t nNumBuilt = 0;
        BuildTiles(
            m_plan, vecTiles, m_sFolder, [this](const CTileCount& tile) { return GetPntsPath(tile); },
            [&](const CTileEntry& entry, std::size_t i)
            {
                m_work.AddDone(entry);
                m_mapDone.emplace(entry.cell, entry);
                std::error_code error;
                fs::remove(GetPntsPath(vecTiles[i]), error);
                progress.SetPos(static_cast<int>(++nNumBuilt * 100 / vecTiles.size()));
            });
        progress.Stop();
    }

    CManifest MakeManifest() const
    {
        CManifest manifest;
        manifest.options = m_options;
        manifest.dMargin = m_plan.MakeGrid().GetMargin();
        manifest.origin = m_plan.origin;
        manifest.bColor = m_plan.bColor;
        manifest.units = m_plan.units;
        const auto place = [&](const std::array<std::int32_t, 3>& anSteps, std::size_t k)
        { return CoordFromCompact(anSteps[k], m_plan.origin[k]); };
        manifest.box = {place(m_plan.anMin, 0), place(m_plan.anMin, 1), place(m_plan.anMin, 2),
                        place(m_plan.anMax, 0), place(m_plan.anMax, 1), place(m_plan.anMax, 2)};
        for (std::size_t i = 0; i < m_vecInputs.size(); ++i)
        {
            manifest.vecFiles.push_back(m_plan.vecFiles[i].file);
            manifest.vecFiles.back().sPath = m_vecInputs[i].sPath; // as this run has it
        }
        for (const auto& [cell, entry] : m_mapDone)
        {
            manifest.vecTiles.push_back(entry);
            manifest.nNumPnts += entry.nNumPnts;
        }
        manifest.nNumDuplicates = m_plan.CountPnts() - manifest.nNumPnts;
        return manifest;
    }

    const std::vector<CInputOptions>& m_vecInputs;
    CTileOptions m_options;
    std::string m_sFolder;
    const CConsole& m_console;
    CTileWork m_work;
    CTilePlan m_plan;
    std::optional<CManifest> m_manifest; // that was there
    std::map<CCell, CTileEntry> m_mapDone;
};

} // namespace

CMadeTiles MakeTiles(const std::vector<CInputOptions>& vecInputs, const CTileOptions& options,
                     const std::string& sFolder, const CConsole& console)
{
#ifdef __GLIBC__
    // Else each thread reserves 64 MB of addresses, which a limit for them counts.
    static_cast<void>(mallopt(M_ARENA_MAX, 1));
#endif
    return CTileMaker(vecInputs, options, sFolder, console).Make();
}

} // namespace zorcld
