#include <host/commands/Commands.h>

#include <host/files/AddInputOptions.h>
#include <host/files/CInputOptions.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/FormatCount.h>
#include <host/output/NumberInRange.h>
#include <host/output/PrintMessage.h>
#include <host/tile/MakeTiles.h>
#include <host/tile/PrintTileCommands.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cmath>
#include <filesystem>
#include <memory>

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

/// The ground filter's buffer is in metres.
void NoteSmallBuffer(const COptions& options, const CManifest& manifest, const CConsole& console)
{
    if (manifest.units.bAngles)
        return console.Note(fmt::format(
            "{}: x and y are angles, and so are size and buffer; the ground filter takes lengths only",
            options.sFolder));
    const double dNeeded = CTileOptions().dBuffer / (manifest.units.dPlan > 0.0 ? manifest.units.dPlan : 1.0);
    if (options.tiles.dBuffer > 0.0 && options.tiles.dBuffer < dNeeded)
        console.Note(
            fmt::format("{}: the ground filter needs a buffer of {:.6g} units, these tiles have {:g}",
                        options.sFolder, std::ceil(dNeeded), options.tiles.dBuffer));
}

void CutTiles(COptions options, const CConsole& console)
{
    if (!options.sCommand.empty() && options.vecPaths.size() == 1 &&
        CManifest::IsManifest(options.vecPaths.front()))
    {
        const std::filesystem::path folder =
            std::filesystem::path(FindManifestPath(options.vecPaths.front())).parent_path();
        PrintGroundCommands(options.vecPaths.front(),
                            options.sFolder.empty() ? (folder / options.sCommand).string() : options.sFolder);
        return;
    }
    options.tiles.bDedupe = options.sDedupe == "exact";
    CheckOptions(options);
    std::vector<CInputOptions> vecInputs;
    for (const std::string& sPath : options.vecPaths)
        vecInputs.push_back({sPath, options.sType});
    const CMadeTiles made = MakeTiles(vecInputs, options.tiles, options.sFolder, console);
    NoteSmallBuffer(options, made.manifest, console);
    if (options.sCommand.empty())
        Report(options, made);
    else
        PrintGroundCommands(options.sFolder,
                            (std::filesystem::path(options.sFolder) / options.sCommand).string());
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
    pCommand->footer("Interrupted, the same command goes on where it was.");
    pCommand->callback([pOptions, &console] { CutTiles(*pOptions, console); });
}

} // namespace zorcld
