#include <host/commands/Commands.h>
#include <host/files/AddInputOptions.h>
#include <host/files/CFileColors.h>
#include <host/files/LoadCloud.h>
#include <host/query/PlanQuery.h>
#include <host/tile/AskTiles.h>
#include <host/tile/CManifest.h>
#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <memory>

namespace zorcld
{

namespace
{

struct COptions
{
    CInputOptions input;
    std::string sRect;
};

void CountPoints(const COptions& options, const CConsole& console)
{
    const zor::geom::RECT_2D rect = ParseRect(options.sRect);
    if (CManifest::IsManifest(options.input.sPath))
    {
        fmt::print("{}\n", CountInTiles(options.input.sPath, rect));
        return;
    }
    CFileColors colors;
    CPntCld cloud(&colors);
    LoadOrAdvise(cloud, options.input, console);
    const std::vector<bool> vecChosen = ChooseInRect(cloud, rect);
    fmt::print("{}\n", std::count(vecChosen.begin(), vecChosen.end(), true));
}

} // namespace

void AddCountCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    CLI::App* const pCommand =
        app.add_subcommand("count", "Tells how many points lie in a rectangle, seen from above");
    AddInputOptions(*pCommand, pOptions->input);
    pCommand->add_option("--rect", pOptions->sRect, "The rectangle, its edges included")
        ->required()
        ->type_name("xmin,ymin,xmax,ymax");
    pCommand->callback([pOptions, &console] { CountPoints(*pOptions, console); });
}

} // namespace zorcld
