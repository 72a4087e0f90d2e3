#include <host/commands/Commands.h>
#include <host/files/AddInputOptions.h>
#include <host/files/CFileColors.h>
#include <host/files/CFileKind.h>
#include <host/files/CoordSystemFacts.h>
#include <host/files/LoadCloud.h>
#include <host/files/OpenInputFile.h>
#include <host/output/CConsole.h>
#include <host/output/FormatCount.h>
#include <host/output/GroupDigits.h>
#include <host/output/PrintLine.h>
#include <host/query/CalcDensity.h>
#include <host/query/Query.h>
#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <array>
#include <memory>
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
    bool bJson = false;
};

std::int64_t GetPeakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::int64_t>(usage.ru_maxrss) * 1024;
}

/// Everything that the command tells, in the order in which it tells it.
TJson CollectInfo(const CPntCld& cloud, const CInputFile& file, const CLoadFacts& facts)
{
    TJson info;
    info["file"] = file.GetPath();
    info["type"] = file.GetKind().pName;
    info["points"] = cloud.GetNumPnts();
    info["announced"] = facts.nAnnounced < 0 ? TJson() : TJson(facts.nAnnounced);
    info["duplicates_removed"] = facts.nDuplicates < 0 ? TJson() : TJson(facts.nDuplicates);
    info["color"] = cloud.IsWithColor();
    zor::geom::RECT_3D box;
    if (cloud.GetNumPnts() > 0 && cloud.GetBdry(box))
        info["bounds"] = {{"min", {box.xmin, box.ymin, box.zmin}}, {"max", {box.xmax, box.ymax, box.zmax}}};
    else
        info["bounds"] = TJson();
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
    file.Describe(info);
    return info;
}

void PrintDuplicates(const CInputFile& file, const CLoadFacts& facts)
{
    std::string sText = "not known";
    if (!file.GetFacts().bDuplicates)
        sText = "before the file was saved";
    else if (facts.nDuplicates >= 0)
        sText = GroupDigits(facts.nDuplicates) + " of " + FormatCount(facts.nAnnounced, "announced point") +
                " (each at the x and y of another point)";
    PrintLine("Duplicates removed", sText);
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
        PrintLine(c_pLabels[k],
                  fmt::format("{} {:14.4f} to {:14.4f}   ({:.4f})", "xyz"[k], dMin, dMax, dMax - dMin));
    }
}

void PrintInfo(const TJson& info, const CInputFile& file, const CLoadFacts& facts)
{
    PrintLine("File", info["file"].get<std::string>());
    PrintLine("Type", file.GetKind().pTitle);
    PrintLine("Points", GroupDigits(info["points"].get<std::int64_t>()));
    PrintDuplicates(file, facts);
    PrintLine("Colour", info["color"].get<bool>() ? "yes" : "no");
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
    PrintLine("Peak memory", fmt::format("{:.1f} MiB", info["peak_memory_bytes"].get<double>() / 1048576.0));
}

void ShowInfo(const COptions& options, const CConsole& console)
{
    CFileColors colors;
    CPntCld cloud(&colors);
    const std::unique_ptr<CInputFile> pFile = OpenInputFile(options.input);
    const CLoadFacts facts = LoadCloud(cloud, *pFile, console);
    const TJson info = CollectInfo(cloud, *pFile, facts);
    if (options.bJson)
        fmt::print("{}\n", info.dump(2, ' ', false, TJson::error_handler_t::replace));
    else
        PrintInfo(info, *pFile, facts);
}

} // namespace

void AddInfoCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    CLI::App* const pCommand = app.add_subcommand(
        "info", "Tells what a file holds: points, bounds, density, levels of detail, load time");
    AddInputOptions(*pCommand, pOptions->input);
    pCommand->add_flag("--json", pOptions->bJson, "Print the result as JSON");
    pCommand->callback([pOptions, &console] { ShowInfo(*pOptions, console); });
}

} // namespace zorcld
