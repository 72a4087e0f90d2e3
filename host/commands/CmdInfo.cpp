#include <host/commands/Commands.h>
#include <host/files/AddInputOptions.h>
#include <host/files/CFileColors.h>
#include <host/files/CFileKind.h>
#include <host/files/CLasTally.h>
#include <host/files/CLostPnts.h>
#include <host/files/CoordSystemFacts.h>
#include <host/files/DescribeFacts.h>
#include <host/files/LoadChosen.h>
#include <host/files/OpenInputFile.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CPntSummary.h>
#include <host/output/FormatCoord.h>
#include <host/output/FormatCount.h>
#include <host/output/GroupDigits.h>
#include <host/output/PrintLine.h>
#include <host/query/CalcDensity.h>
#include <host/query/Query.h>
#include <host/tile/CManifest.h>
#include <host/tile/ShowManifest.h>
#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <array>
#include <memory>
#include <optional>
#include <sys/resource.h>

namespace zorcld
{

namespace
{

using TJson = nlohmann::ordered_json;

constexpr std::array c_lods = {0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0, 20.0, 50.0, 100.0};

struct COptions
{
    CInputOptions input;
    CClassOptions classes;
    bool bJson = false;
};

std::int64_t GetPeakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::int64_t>(usage.ru_maxrss) * 1024;
}

TJson OrNull(std::int64_t nCount)
{
    return nCount < 0 ? TJson() : TJson(nCount);
}

/// Those of the points: the bounds that a cloud gives are those of its octree, which may be wider or
/// narrower.
TJson FindBounds(const CPntCld& cloud)
{
    CPntSummary summary;
    for (int i = 0; i < cloud.GetNumPnts(); ++i)
    {
        zor::geom::PNT_3D pnt;
        cloud.GetPnt(i, pnt);
        summary.Add(pnt);
    }
    const zor::geom::RECT_3D& box = summary.box;
    if (summary.nNumPnts == 0)
        return {};
    return {{"min", {box.xmin, box.ymin, box.zmin}}, {"max", {box.xmax, box.ymax, box.zmax}}};
}

/// Everything that the command tells, in the order in which it tells it.
TJson CollectInfo(const CPntCld& cloud, CInputFile& file, const CLoadFacts& facts, const CLostPnts& lost)
{
    TJson info;
    info["file"] = file.GetPath();
    info["type"] = file.GetKind().pName;
    DescribeCause({}, info); // it is loaded
    info["points"] = cloud.GetNumPnts();
    info["announced"] = OrNull(file.GetFileFacts().nAnnounced);
    info["duplicates_removed"] = OrNull(lost.nDuplicates);
    info["not_numbers"] = OrNull(lost.nNotNumbers);
    info["never_there"] = OrNull(lost.nNeverThere);
    info["color"] = cloud.IsWithColor();
    info["bounds"] = FindBounds(cloud);
    const CDensity density = CalcDensity(cloud);
    info["coordinate_system"] = CollectCoordSystem(facts.coords);
    info["plan_density"] = density.dPntsPerArea > 0.0 ? TJson(density.dPntsPerArea) : TJson();
    info["plan_spacing"] = density.dPntsPerArea > 0.0 ? TJson(density.dSpacing) : TJson();
    info["levels_of_detail"] = TJson::array();
    for (const double dLod : c_lods)
    {
        CQuery query;
        query.dLod = dLod;
        info["levels_of_detail"].push_back({{"spacing", dLod}, {"points", CountPnts(cloud, query)}});
    }
    info["seconds"] = {{"load", facts.dSeconds}};
    if (facts.dSecondsRead >= 0.0)
    {
        info["seconds"]["read"] = facts.dSecondsRead;
        info["seconds"]["index"] = facts.dSecondsIndex;
    }
    info["peak_memory_bytes"] = GetPeakMemory();
    info["warnings"] = TJson::array();
    for (const CFinding& finding : facts.vecFindings)
        info["warnings"].push_back(finding.sText);
    info["help"] = facts.sCommand.empty() ? TJson() : TJson(facts.sCommand);
    file.Describe(info);
    return info;
}

void PrintLostPnts(CInputFile& file, const CLostPnts& lost)
{
    const std::int64_t nAnnounced = file.GetFileFacts().nAnnounced;
    std::string sText = "not known";
    if (!file.GetFacts().bDuplicates)
        sText = "before the file was saved";
    else if (lost.nDuplicates >= 0)
        sText = GroupDigits(lost.nDuplicates) +
                (nAnnounced < 0 ? "" : " of " + FormatCount(nAnnounced, "announced point")) +
                " (each at the x and y of another point)";
    PrintLine("Duplicates removed", sText);
    if (lost.nNotNumbers > 0)
        PrintLine("Not numbers", FormatCount(lost.nNotNumbers, "point") + " with coordinates that are none");
    if (lost.nNeverThere > 0)
        PrintLine("Never there", FormatCount(lost.nNeverThere, "announced point"));
}

void PrintBounds(const TJson& bounds)
{
    if (bounds.is_null())
        return;
    const char* const c_pLabels[] = {"Bounds", "", ""};
    for (std::size_t k = 0; k < 3; ++k)
    {
        const double dMin = bounds["min"][k].get<double>();
        const double dMax = bounds["max"][k].get<double>();
        PrintLine(c_pLabels[k], fmt::format("{} {} to {}   ({})", "xyz"[k], FormatCoord(dMin, 14),
                                            FormatCoord(dMax, 14), FormatCoord(dMax - dMin)));
    }
}

void PrintInfo(const TJson& info, CInputFile& file, const CLoadFacts& facts, const CLostPnts& lost)
{
    PrintLine("File", info["file"].get<std::string>());
    PrintLine("Type", file.GetKind().pTitle);
    PrintLine("Points", GroupDigits(info["points"].get<std::int64_t>()));
    PrintLostPnts(file, lost);
    PrintLine("Colour", facts.HasFinding("color-zero") ? "its fields are all 0"
                        : info["color"].get<bool>()    ? "yes"
                                                       : "no");
    PrintBounds(info["bounds"]);
    PrintCoordSystem(facts.coords);
    if (!info["plan_density"].is_null())
    {
        PrintLine("Plan spacing", fmt::format("{:.4g}", info["plan_spacing"].get<double>()));
        PrintLine("Plan density",
                  fmt::format("{:.4g} points a square unit", info["plan_density"].get<double>()));
    }
    const char* pLabel = "Level of detail";
    for (const TJson& level : info["levels_of_detail"])
    {
        const auto nNumPnts = level["points"].get<std::int64_t>();
        PrintLine(pLabel, fmt::format("{:>6} {:>14} {}", level["spacing"].get<double>(),
                                      GroupDigits(nNumPnts), WithPlural("point", nNumPnts)));
        pLabel = "";
    }
    std::string sPhases;
    if (facts.dSecondsRead >= 0.0)
        sPhases = fmt::format(" (reading {:.3f} s, octree and duplicates {:.3f} s)", facts.dSecondsRead,
                              facts.dSecondsIndex);
    PrintLine("Load time", fmt::format("{:.3f} s{}", facts.dSeconds, sPhases));
    file.Print(info);
    if (info.contains("las"))
        PrintTally(info["las"]);
    PrintLine("Peak memory", fmt::format("{:.1f} MiB", info["peak_memory_bytes"].get<double>() / 1048576.0));
}

/// What the points of a LAS file say; nothing where only the library reads them.
std::optional<CLasTally> FindTally(CInputFile& file, const CConsole& console)
{
    if (!CanTally(file))
        return std::nullopt;
    try
    {
        return CollectLasTally(file, console);
    }
    catch (const CFailure&) // the library has loaded it
    {
        return std::nullopt;
    }
}

void PrintJson(const TJson& info)
{
    fmt::print("{}\n", info.dump(2, ' ', false, TJson::error_handler_t::replace));
}

/// Programs get the cause as a number, too.
/// @param pFile  null where it could not be opened.
void PrintCause(const std::string& sPath, CInputFile* pFile, const CFailure& failure)
{
    TJson info;
    info["file"] = sPath;
    info["type"] = pFile == nullptr ? TJson() : TJson(pFile->GetKind().pName);
    CFileCause cause = {FileCause_None, failure.GetCause()};
    if (pFile == nullptr)
        cause.eCause = FindFileFacts(zor::String(sPath)).eCause;
    else if (const CFileCause found = pFile->FindCause(); !found.empty())
        cause = found;
    DescribeCause(cause, info);
    PrintJson(info);
}

void ShowInfo(CInputFile& file, const COptions& options, const CConsole& console)
{
    CLasWish wish;
    wish.choice = CClassChoice(options.classes);
    CFileColors colors;
    CPntCld cloud(&colors);
    std::optional<CLasTally> tally;
    if (wish.IsAsked())
        tally = CollectLasTally(file, console);
    const CLoadFacts facts =
        wish.IsAsked() ? LoadChosen(cloud, file, wish, *tally, console) : LoadOrAdvise(cloud, file, console);
    CLostPnts lost;
    if (wish.IsAsked())
        lost = {facts.nDuplicates, facts.nNotNumbers, -1};
    else
        lost = CountLostPnts(cloud, file, facts);
    TJson info = CollectInfo(cloud, file, facts, lost);
    if (!wish.IsAsked())
        tally = FindTally(file, console);
    if (tally)
        DescribeTally(*tally, wish.choice, info["las"]);
    if (options.bJson)
        PrintJson(info);
    else
        PrintInfo(info, file, facts, lost);
}

void OpenAndShow(const COptions& options, const CConsole& console)
{
    if (CManifest::IsManifest(options.input.sPath))
    {
        if (CClassChoice(options.classes).IsAsked())
            throw CUsageError("tiles have no classes of points");
        ShowManifest(options.input.sPath, options.bJson);
        return;
    }
    std::unique_ptr<CInputFile> pFile;
    try
    {
        pFile = OpenInputFile(options.input);
        ShowInfo(*pFile, options, console);
    }
    catch (const CFailure& failure)
    {
        if (options.bJson)
            PrintCause(options.input.sPath, pFile.get(), failure);
        throw;
    }
}

} // namespace

void AddInfoCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    CLI::App* const pCommand = app.add_subcommand(
        "info", "Tells what a file holds: points, bounds, density, levels of detail, load time");
    AddInputOptions(*pCommand, pOptions->input);
    AddClassOptions(*pCommand, pOptions->classes);
    pCommand->add_flag("--json", pOptions->bJson, "Print the result as JSON");
    pCommand->callback([pOptions, &console] { OpenAndShow(*pOptions, console); });
}

} // namespace zorcld
