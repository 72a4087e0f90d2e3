#include <host/tile/MakeTiles.h>

#include <formats/Compact.h>
#include <host/files/CInputOptions.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CProgressBar.h>
#include <host/tile/BuildTiles.h>
#include <host/tile/CSpool.h>
#include <host/tile/CTilePlan.h>
#include <host/tile/CTileWork.h>
#include <host/tile/HandOutPnts.h>
#include <host/tile/HashFile.h>
#include <host/tile/IsIntact.h>
#include <host/tile/TileFolder.h>

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>
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

/// One run of `zorcld tile`.
class CTileMaker
{
public:
    CTileMaker(const std::vector<CInputOptions>& vecInputs, const CTileOptions& options, std::string sFolder,
               const CConsole& console)
        : m_vecInputs(vecInputs), m_options(options), m_sFolder(std::move(sFolder)), m_console(console),
          m_work(m_sFolder)
    {
    }

    CMadeTiles Make()
    {
        const std::vector<CTileEntry> vecDone = FindDone();
        RemoveCutOff(m_sFolder); // which it does not refuse
        TakeIntact(vecDone);
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
        KeepPlanned();
        try
        {
            BuildMissing();
        }
        catch (const CDamagedPnts& error) // a disk that lost power for instance
        {
            m_console.Note(fmt::format("{}; the points are handed out again", error.what()));
            m_work.ClearPnts();
            BuildMissing();
        }
        made.manifest = MakeManifest();
        made.manifest.Write(m_sFolder);
        m_work.Clear();
        return made;
    }

private:
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
            if (m_work.HasPlan())
                ForgetUnreadable();
            else
                RefuseOthersTiles(m_sFolder);
            MakeNewPlan();
            return {};
        }
        try
        {
            m_manifest = CManifest::Read(m_sFolder);
        }
        catch (const CFailure& error)
        {
            throw CFailure(error.GetFile(),
                           error.GetCause() + "; another folder, or this one emptied, takes tiles");
        }
        if (!IsOfSameFiles(*m_manifest))
            throw CFailure(m_sFolder, "holds tiles of other files or options; another folder, or this one "
                                      "emptied, takes these");
        return m_manifest->vecTiles;
    }

    /// Leaves the tiles that have the numbers of the plan.
    void KeepPlanned()
    {
        std::map<CCell, CTileEntry> mapKept;
        for (const CTileCount& tile : m_plan.vecTiles)
            if (const auto found = m_mapDone.find(tile.cell);
                found != m_mapDone.end() && FitsPlan(m_plan, tile, found->second))
                mapKept.insert(*found);
        m_mapDone = std::move(mapKept);
    }

    void BuildMissing()
    {
        std::vector<CTileCount> vecMissing;
        for (const CTileCount& tile : m_plan.vecTiles)
            if (m_mapDone.count(tile.cell) == 0)
                vecMissing.push_back(tile);
        m_mapHashes = m_work.ReadPntsHashes();
        if (!HasPntsOf(vecMissing))
        {
            m_work.ClearPnts();
            m_mapHashes = HandOutPnts(m_vecInputs, m_plan, vecMissing, m_work.GetPntsFolder(), m_console);
            m_work.SetHasPnts(m_mapHashes);
        }
        Build(vecMissing);
    }

    /// What the notes in the folder tell of tiles is of no use without their plan.
    void ForgetUnreadable()
    {
        m_console.Note(fmt::format("{}: what an interrupted run has noted there cannot be read, so that "
                                   "cutting begins anew",
                                   m_sFolder));
        std::error_code error;
        for (const CTileEntry& entry : m_work.ReadDone())
            if (entry.sFile == NameTile(entry.cell)) // others may be of another size
                fs::remove(FindTilePath(m_sFolder, entry), error);
    }

    void MakeNewPlan()
    {
        m_work.ClearPnts();
        CCutPlan cut;
        if (m_mapDone.empty())
            cut = MakePlanAndCut(m_vecInputs, m_options, m_work.GetPntsFolder(), m_console);
        else // most points would be handed out for nothing
            cut.plan = MakePlan(m_vecInputs, m_options, m_console);
        m_plan = std::move(cut.plan);
        m_work.WritePlan(m_plan);
        if (!cut.mapHashes.empty())
            m_work.SetHasPnts(cut.mapHashes);
        for (const auto& [cell, entry] : m_mapDone)
            m_work.AddDone(entry);
    }

    void TakeIntact(const std::vector<CTileEntry>& vecDone)
    {
        for (const CTileEntry& entry : vecDone)
            if (IsIntact(FindTilePath(m_sFolder, entry), entry))
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

    std::string GetPntsPath(const CTileCount& tile) const
    {
        return m_work.GetPntsFolder() + "/" + NameTile(tile.cell);
    }

    bool HasPntsOf(const std::vector<CTileCount>& vecTiles) const
    {
        return std::all_of(vecTiles.begin(), vecTiles.end(),
                           [&](const CTileCount& tile)
                           {
                               return m_mapHashes.count(tile.cell) > 0 &&
                                      IsThere(GetPntsPath(tile), CSpool::CalcSize(m_plan.bColor, tile));
                           });
    }

    void Build(const std::vector<CTileCount>& vecTiles)
    {
        CProgressBar progress(m_console, "building tiles");
        progress.Start();
        std::size_t nNumBuilt = 0;
        BuildTiles(
            m_plan, vecTiles, m_sFolder,
            [this](const CTileCount& tile) {
                return CTilePnts{GetPntsPath(tile), m_mapHashes.at(tile.cell)};
            },
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
    std::map<CCell, std::uint64_t> m_mapHashes; // of the points that wait
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
