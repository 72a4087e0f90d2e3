#include <host/commands/Commands.h>
#include <host/output/CConsole.h>
#include <host/output/COutFile.h>
#include <host/output/CProgressBar.h>
#include <host/output/GetExtension.h>
#include <sample/WriteSamplePly.h>

#include <CLI/CLI.hpp>

#include <memory>

namespace zorcld
{

namespace
{

struct COptions
{
    std::string sOutPath;
    std::int64_t nNumPnts = 1000000;
    std::uint64_t nSeed = 1;
};

void MakeSample(const COptions& options, const CConsole& console)
{
    CheckExtension(options.sOutPath, "OUT", ".ply");
    COutFile out(options.sOutPath);
    CProgressBar progress(console, "writing " + options.sOutPath);
    progress.Start();
    const CSampleTerrain terrain(options.nNumPnts, options.nSeed);
    if (!WriteSamplePly(terrain, out.GetFile(), [&](int nPercent) { progress.SetPos(nPercent); }))
        out.Fail();
    out.Commit();
}

} // namespace

void AddMakeSampleCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    CLI::App* const pCommand = app.add_subcommand(
        "make-sample", "Writes a synthetic terrain with colours as PLY: hills, roads, buildings, trees");
    pCommand->add_option("OUT", pOptions->sOutPath, "PLY file to write")->required();
    pCommand->add_option("--points", pOptions->nNumPnts, "Number of points, 8 a square metre")
        ->check(CLI::Range(std::int64_t{1}, std::int64_t{1000000000}))
        ->capture_default_str()
        ->type_name("N");
    pCommand->add_option("--seed", pOptions->nSeed, "Number of the landscape: another seed gives another one")
        ->capture_default_str()
        ->type_name("S");
    pCommand->callback([pOptions, &console] { MakeSample(*pOptions, console); });
}

} // namespace zorcld
