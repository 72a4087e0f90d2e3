#include <host/tile/CTileWork.h>

#include <formats/CFilePtr.h>
#include <host/output/CFailure.h>
#include <host/output/COutFile.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>

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

CTilePlan PlanFromJson(const TJson& json)
{
    CTilePlan plan;
    plan.options = OptionsFromJson(json.at("options"));
    plan.origin = json.at("origin").get<TOrigin>();
    plan.bColor = json.at("color").get<bool>();
    plan.units = UnitsFromJson(json.at("units"));
    plan.anMin = json.at("min").get<std::array<std::int32_t, 3>>();
    plan.anMax = json.at("max").get<std::array<std::int32_t, 3>>();
    for (const TJson& file : json.at("files"))
        plan.vecFiles.push_back({FileFromJson(file.at("file")), file.at("time").get<std::int64_t>(),
                                 file.at("deep").get<bool>()});
    for (const TJson& tile : json.at("tiles"))
        plan.vecTiles.push_back({{tile.at(0).get<std::int32_t>(), tile.at(1).get<std::int32_t>()},
                                 tile.at(2).get<std::int64_t>(),
                                 tile.at(3).get<std::int64_t>()});
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
    std::ifstream file(m_sWork + c_pPlan, std::ios::binary);
    if (!file)
        return {};
    const TJson json = TJson::parse(file, nullptr, false);
    if (json.value("program", std::string()) != ZORCLD_VERSION) // what it notes may mean something else there
        return {};
    try
    {
        return PlanFromJson(json);
    }
    catch (const nlohmann::json::exception&)
    {
        return {};
    }
}

bool CTileWork::HasPlan() const
{
    std::error_code error;
    return fs::exists(m_sWork + c_pPlan, error);
}

void CTileWork::WritePlan(const CTilePlan& plan) const
{
    ClearPnts();
    std::error_code error;
    fs::remove(m_sWork + c_pDone, error); // of another plan
    COutFile out(m_sWork + c_pPlan);
    out.Write(JsonFromPlan(plan).dump(-1, ' ', false, TJson::error_handler_t::replace));
    out.Commit();
}

std::vector<CTileEntry> CTileWork::ReadDone() const
{
    std::vector<CTileEntry> vecDone;
    std::ifstream file(m_sWork + c_pDone, std::ios::binary);
    for (std::string sLine; std::getline(file, sLine);)
    {
        const TJson json = TJson::parse(sLine, nullptr, false);
        try
        {
            if (json.is_object())
                vecDone.push_back(TileFromJson(json));
        }
        catch (const nlohmann::json::exception&) // cut off, as it seems: the tile is made again
        {
            continue;
        }
    }
    return vecDone;
}

void CTileWork::AddDone(const CTileEntry& entry) const
{
    const std::string sPath = m_sWork + c_pDone;
    const std::string sLine = "\n" + JsonFromTile(entry).dump(); // behind what an interruption has cut off
    CFilePtr pFile(std::fopen(sPath.c_str(), "ab"));
    const bool bWritten =
        pFile != nullptr && std::fwrite(sLine.data(), 1, sLine.size(), pFile.get()) == sLine.size();
    if (!bWritten || std::fclose(pFile.release()) != 0)
        throw CFailure(sPath, std::string("could not be written: ") + std::strerror(errno));
}

bool CTileWork::HasPnts() const
{
    return fs::exists(m_sWork + c_pHasPnts);
}

void CTileWork::SetHasPnts() const
{
    COutFile out(m_sWork + c_pHasPnts);
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
