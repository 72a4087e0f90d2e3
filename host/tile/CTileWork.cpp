#include <host/tile/CTileWork.h>

#include <formats/CFilePtr.h>
#include <formats/CloudLimits.h>
#include <host/output/CFailure.h>
#include <host/output/COutFile.h>
#include <host/tile/ManifestFields.h>
#include <host/tile/ReadText.h>
#include <host/tile/SealedJson.h>

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace zorcld
{

namespace fs = std::filesystem;
using TJson = nlohmann::ordered_json;

namespace
{

constexpr const char* c_pFolder = ".zorcld-tiles";
constexpr const char* c_pPlan = "/plan.json";
constexpr const char* c_pDone = "/done";
constexpr const char* c_pHasPnts = "/points.whole";

void MakeFolder(const std::string& sPath)
{
    std::error_code error;
    fs::create_directories(sPath, error);
    if (error)
        throw CFailure(sPath, "cannot be created: " + error.message());
}

TJson JsonFromPlan(const CTilePlan& plan)
{
    TJson json = {
        {"program", ZORCLD_VERSION}, {"options", JsonFromOptions(plan.options)}, {"origin", plan.origin},
        {"color", plan.bColor},      {"units", JsonFromUnits(plan.units)},       {"min", plan.anMin},
        {"max", plan.anMax}};
    for (const CPlannedFile& planned : plan.vecFiles)
        json["files"].push_back(
            {{"file", JsonFromFile(planned.file)}, {"time", planned.nTime}, {"deep", planned.bDeepColor}});
    for (const CTileCount& tile : plan.vecTiles)
        json["tiles"].push_back({tile.cell.nColumn, tile.cell.nRow, tile.nNumCore, tile.nNumAll});
    return json;
}

CTilePlan PlanFromJson(const CJsonField& json)
{
    constexpr std::int64_t c_nMin = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t c_nMax = std::numeric_limits<std::int64_t>::max();
    CTilePlan plan;
    plan.options = OptionsFromJson(json.At("options"));
    plan.origin = OriginFromJson(json.At("origin"));
    plan.bColor = json.At("color").GetBool();
    plan.units = UnitsFromJson(json.At("units"));
    for (std::size_t k = 0; k < 3; ++k)
    {
        plan.anMin[k] = static_cast<std::int32_t>(
            json.At("min").Nth(k).GetWhole(CTilePlan::c_nLowest, CTilePlan::c_nHighest));
        plan.anMax[k] =
            static_cast<std::int32_t>(json.At("max").Nth(k).GetWhole(plan.anMin[k], CTilePlan::c_nHighest));
    }
    json.At("files").ForEach(
        [&](const CJsonField& file)
        {
            plan.vecFiles.push_back({FileFromJson(file.At("file")), file.At("time").GetWhole(c_nMin, c_nMax),
                                     file.At("deep").GetBool()});
        });
    json.At("tiles").ForEach(
        [&](const CJsonField& tile)
        {
            const std::int64_t nNumAll = tile.Nth(3).GetWhole(1, c_nMaxCloudPnts);
            plan.vecTiles.push_back(
                {CellFromJson(tile.Nth(0), tile.Nth(1)), tile.Nth(2).GetWhole(1, nNumAll), nNumAll});
        });
    std::int64_t nNumPnts = 0;
    for (const CTileCount& tile : plan.vecTiles)
        nNumPnts += tile.nNumCore;
    if (nNumPnts != plan.CountPnts())
        json.At("tiles").Fail("do not have all points");
    return plan;
}

} // namespace

CTileWork::CTileWork(const std::string& sFolder) : m_sWork((fs::path(sFolder) / c_pFolder).string())
{
    std::error_code error;
    m_bMade = !fs::exists(sFolder, error);
    MakeFolder(GetPntsFolder());
    m_nLock = open(m_sWork.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_nLock < 0)
        throw CFailure(m_sWork, std::strerror(errno));
    if (flock(m_nLock, LOCK_EX | LOCK_NB) != 0)
    {
        close(m_nLock);
        throw CFailure(sFolder, "another zorcld is making tiles there");
    }
}

CTileWork::~CTileWork()
{
    std::error_code error;
    if (!fs::exists(m_sWork + c_pPlan, error)) // nothing to go on with
        Clear();
    if (m_bMade)
        fs::remove(fs::path(m_sWork).parent_path(), error); // an empty folder only
    close(m_nLock);
}

std::optional<CTilePlan> CTileWork::ReadPlan() const
{
    const std::optional<TJson> json = OpenSealedJson(ReadText(m_sWork + c_pPlan).value_or(""));
    try
    {
        // What another version notes may mean something else there.
        if (json && CJsonField(*json).At("program").GetText() == ZORCLD_VERSION)
            return PlanFromJson(CJsonField(*json));
    }
    catch (const CFieldError&) // as if it could not be read
    {
        return {};
    }
    return {};
}

bool CTileWork::HasPlan() const
{
    std::error_code error;
    return fs::exists(m_sWork + c_pPlan, error);
}

void CTileWork::WritePlan(const CTilePlan& plan) const
{
    std::error_code error;
    fs::remove(m_sWork + c_pDone, error); // of another plan
    COutFile out(m_sWork + c_pPlan);
    out.Write(SealJson(JsonFromPlan(plan)));
    out.Commit();
}

std::vector<CTileEntry> CTileWork::ReadDone() const
{
    std::vector<CTileEntry> vecDone;
    std::ifstream file(m_sWork + c_pDone, std::ios::binary);
    for (std::string sLine; std::getline(file, sLine);)
    {
        const std::optional<TJson> json = OpenSealedJson(sLine);
        try
        {
            if (json) // else it is cut off, or damaged: the tile is made again
                vecDone.push_back(TileFromJson(CJsonField(*json)));
        }
        catch (const CFieldError&)
        {
            continue;
        }
    }
    return vecDone;
}

void CTileWork::AddDone(const CTileEntry& entry) const
{
    const std::string sPath = m_sWork + c_pDone;
    const std::string sLine = "\n" + SealJson(JsonFromTile(entry)); // behind what an interruption has cut off
    CFilePtr pFile(std::fopen(sPath.c_str(), "ab"));
    const bool bWritten =
        pFile != nullptr && std::fwrite(sLine.data(), 1, sLine.size(), pFile.get()) == sLine.size();
    if (!bWritten || std::fclose(pFile.release()) != 0)
        throw CFailure(sPath, std::string("could not be written: ") + std::strerror(errno));
}

std::map<CCell, std::uint64_t> CTileWork::ReadPntsHashes() const
{
    std::map<CCell, std::uint64_t> mapHashes;
    const std::optional<TJson> json = OpenSealedJson(ReadText(m_sWork + c_pHasPnts).value_or(""));
    try
    {
        if (json)
            CJsonField(*json).ForEach(
                [&](const CJsonField& tile)
                {
                    mapHashes.emplace(CellFromJson(tile.Nth(0), tile.Nth(1)),
                                      std::stoull(tile.Nth(2).GetHash().substr(16), nullptr, 16));
                });
    }
    catch (const CFieldError&) // they are handed out again
    {
        return {};
    }
    return mapHashes;
}

void CTileWork::SetHasPnts(const std::map<CCell, std::uint64_t>& mapHashes) const
{
    TJson json = TJson::array();
    for (const auto& [cell, nHash] : mapHashes)
        json.push_back({cell.nColumn, cell.nRow, fmt::format("{:032x}", nHash)});
    COutFile out(m_sWork + c_pHasPnts);
    out.Write(SealJson(json));
    out.Commit();
}

void CTileWork::ClearPnts() const
{
    std::error_code error;
    fs::remove(m_sWork + c_pHasPnts, error);
    fs::remove_all(GetPntsFolder(), error);
    if (error)
        throw CFailure(GetPntsFolder(), "cannot be removed: " + error.message());
    MakeFolder(GetPntsFolder());
}

void CTileWork::Clear() const
{
    std::error_code error;
    fs::remove_all(m_sWork, error);
}

} // namespace zorcld
