#include <host/commands/Commands.h>

#include <host/files/AddInputOptions.h>
#include <host/files/CInputOptions.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/FormatCount.h>
#include <host/output/NumberInRange.h>
#include <host/output/PrintMessage.h>
#include <host/query/ParseUnitScale.h>
#include <host/tile/CheckTiles.h>
#include <host/tile/GroundOfTiles.h>
#include <host/tile/MakeTiles.h>
#include <host/tile/PrintTileCommands.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <utility>

namespace zorcld
{

namespace
{

struct COptions
{
    std::vector<std::string> vecPaths;
    std::string sType;
    CTileOptions tiles;
    std::string sDedupe = "none";
    std::string sFolder;
    std::string sCommand;
    std::string sUnitScale;
    bool bCheck = false;
};

void CheckOptions(const COptions& options)
{
    if (options.sFolder.empty())
        throw CUsageError("--output is required");
    if (!(options.tiles.dSize > 0.0))
        throw CUsageError("--size is required");
    constexpr double c_dMostSizes = 16.0; // a point is then in some thousand tiles
    if (options.tiles.dBuffer > c_dMostSizes * options.tiles.dSize)
        throw CUsageError(fmt::format("--buffer: is more than {:g} times the size", c_dMostSizes));
    for (const std::string& sPath : options.vecPaths)
        if (CManifest::IsManifest(sPath))
            throw CUsageError(fmt::format("'{}' is a manifest of tiles, and no points", sPath));
}

void Report(const COptions& options, const CMadeTiles& made)
{
    const CManifest& manifest = made.manifest;
    std::int64_t nNumBuffer = 0;
    for (const CTileEntry& tile : manifest.vecTiles)
        nNumBuffer += tile.nNumBuffer;
    std::string sText = fmt::format(
        "{}: {} in {}, {} more in buffers", options.sFolder, FormatCount(manifest.nNumPnts, "point"),
        FormatCount(static_cast<std::int64_t>(manifest.vecTiles.size()), "tile"), GroupDigits(nNumBuffer));
    if (options.tiles.bDedupe)
        sText += fmt::format(", {} removed", FormatCount(manifest.nNumDuplicates, "duplicate"));
    if (made.nNumKept > 0)
        sText += fmt::format(", {} {} there", FormatCount(static_cast<std::int64_t>(made.nNumKept), "tile"),
                             made.nNumKept == 1 ? "was" : "were");
    PrintMessage(stdout, sText);
}

void PrintCommands(const COptions& options)
{
    const std::string& sManifest = options.vecPaths.front();
    const std::filesystem::path folder = std::filesystem::path(FindManifestPath(sManifest)).parent_path();
    PrintGroundCommands(sManifest,
                        options.sFolder.empty() ? (folder / options.sCommand).string() : options.sFolder,
                        options.tiles.units);
}

void Check(const COptions& options, const CConsole& console)
{
    for (const std::string& sPath : options.vecPaths)
        if (!CManifest::IsManifest(sPath))
            throw CUsageError(
                fmt::format("--check: '{}' is no manifest of tiles, and no folder of one", sPath));
    for (const std::string& sPath : options.vecPaths)
    {
        const auto nNum = static_cast<std::int64_t>(CheckTiles(sPath, console));
        PrintMessage(stdout, fmt::format("{}: {} as the manifest says", sPath, FormatCount(nNum, "tile")));
    }
}

void CutTiles(COptions options, const CConsole& console)
{
    options.tiles.bDedupe = options.sDedupe == "exact";
    options.tiles.bForGround = !options.sCommand.empty();
    CheckOptions(options);
    std::vector<CInputOptions> vecInputs;
    for (const std::string& sPath : options.vecPaths)
        vecInputs.push_back({sPath, options.sType});
    const CMadeTiles made = MakeTiles(vecInputs, options.tiles, options.sFolder, console);
    if (!options.sCommand.empty())
        return PrintGroundCommands(options.sFolder,
                                   (std::filesystem::path(options.sFolder) / options.sCommand).string(), {});
    if (const std::string sCause = FindGroundCause(made.manifest.options, made.manifest.units);
        !sCause.empty())
        console.Note(fmt::format("{}: {}", options.sFolder, sCause));
    Report(options, made);
}

/// The first of the options that say how files are cut which was given.
std::string FindCuttingOption(const CLI::App& command)
{
    for (const char* const pName : {"--type", "--size", "--buffer", "--dedupe"})
        if (command.count(pName) > 0)
            return pName;
    return {};
}

/// Whether what was given is there, before anything else is said of it.
void CheckInputs(const COptions& options)
{
    for (const std::string& sPath : options.vecPaths)
    {
        std::error_code error;
        const bool bFolder = std::filesystem::is_directory(sPath, error);
        if (error)
            throw CFailure(sPath, error.message());
        if (bFolder && !CManifest::IsManifest(sPath))
            throw CFailure(sPath, "is a folder without a manifest.json of tiles");
    }
}

void DoTiles(COptions options, const CLI::App& command, const CConsole& console)
{
    CheckInputs(options);
    if (!options.sUnitScale.empty())
    {
        const CGroundScale scale = ParseUnitScale(options.sUnitScale);
        options.tiles.units = CTileUnits{scale.dPlan, scale.dHeight, false};
    }
    if (options.bCheck)
        return Check(options, console);
    const bool bThere = options.vecPaths.size() == 1 && CManifest::IsManifest(options.vecPaths.front());
    if (bThere && !options.sCommand.empty())
    {
        if (const std::string sOption = FindCuttingOption(command); !sOption.empty())
            throw CUsageError(sOption + ": the tiles are cut, and stay as they are");
        return PrintCommands(options);
    }
    CutTiles(std::move(options), console);
}

} // namespace

void AddTileCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    CLI::App* const pCommand =
        app.add_subcommand("tile", "Cuts files larger than memory into tiles, each with a buffer around it");
    pCommand->add_option("FILE", pOptions->vecPaths, "Files to read, one or more")->required();
    AddTypeOption(*pCommand, pOptions->sType);
    pCommand->add_option("-o,--output", pOptions->sFolder, "Folder for the tiles and their manifest.json")
        ->type_name("DIR");
    pCommand->add_option("--size", pOptions->tiles.dSize, "Edge of the tiles, coordinate units")
        ->check(NumberInRange(0.01, 1e6))
        ->type_name("UNITS");
    pCommand
        ->add_option("--buffer", pOptions->tiles.dBuffer,
                     "How far around a tile its file has points; the ground filter needs 67")
        ->check(NumberInRange(0.0, 1e5))
        ->capture_default_str()
        ->type_name("UNITS");
    pCommand
        ->add_option("--dedupe", pOptions->sDedupe,
                     "Keep all points, or the first only of those that are equal in x, y and z")
        ->check(CLI::IsMember(std::vector<std::string>{"none", "exact"}))
        ->capture_default_str();
    pCommand
        ->add_option("--print-commands", pOptions->sCommand,
                     "Print a command a tile, for a scheduler; of a manifest, too, instead of files")
        ->check(CLI::IsMember(std::vector<std::string>{"ground"}));
    pCommand
        ->add_option(
            "--unit-scale", pOptions->sUnitScale,
            "How many metres a coordinate unit is, of heights as well or with a number of its own; by "
            "default what the files state: for the ground, whose buffer is 67 metres")
        ->type_name("METRES[,METRES]");
    CLI::Option* const pCheck =
        pCommand->add_flag("--check", pOptions->bCheck,
                           "Compare all tiles of a manifest, or of its folder, with what it tells of them");
    for (const char* const pName :
         {"--type", "--output", "--size", "--buffer", "--dedupe", "--print-commands", "--unit-scale"})
        pCheck->excludes(pName);
    pCommand->footer("Interrupted, the same command goes on where it was.");
    pCommand->callback([pOptions, pCommand, &console] { DoTiles(*pOptions, *pCommand, console); });
}

} // namespace zorcld
