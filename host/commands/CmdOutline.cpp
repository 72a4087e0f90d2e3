#include <host/commands/Commands.h>

#include <host/commands/AddOutOption.h>
#include <host/files/AddInputOptions.h>
#include <host/files/LoadCloud.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/COutFile.h>
#include <host/output/CProgressBar.h>
#include <host/output/FormatCount.h>
#include <host/output/GetExtension.h>
#include <host/output/GetFileName.h>
#include <host/output/PntWriter.h>
#include <host/picture/CViewColors.h>
#include <host/picture/PictureOptions.h>
#include <host/picture/RenderView.h>
#include <host/query/CEachPnt.h>
#include <host/query/CalcDensity.h>
#include <host/query/ParseNumbers.h>
#include <host/query/Query.h>
#include <host/shapes/WriteShapes.h>
#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace zorcld
{

namespace
{

// Points scattered at random hang together from about 1.2 times their spacing on. Scan lines lie two to three
// times as far apart; at four times airborne scans of all kinds came out in one piece, and water still as
// water.
constexpr double c_dSpacings = 4.0;
constexpr int c_nTries = 4; // with distances each twice the one before

struct COptions
{
    CInputOptions input;
    std::string sDistance;
    std::string sOutPath;
    CPictureOptions picture;
};

struct COutline
{
    double dDistance = 0.0;
    std::string sHow;                   // what the distance was taken from; empty: it was given
    std::vector<CCldCadPnt> vecCorners; // the first one again at the end

    TRing GetRing() const
    {
        TRing ring;
        for (const CCldCadPnt& corner : vecCorners)
            ring.emplace_back(corner.m_pnt.x, corner.m_pnt.y);
        if (!ring.empty())
            ring.pop_back();
        return ring;
    }
};

/// @return what --distance gives; 0 for auto.
double ParseDistance(const std::string& sDistance)
{
    if (sDistance == "auto")
        return 0.0;
    const double dDistance = ParseNumbers(sDistance, ',', 1, "--distance").front();
    if (!(dDistance > 0.0))
        throw CUsageError("--distance: the distance is not above 0");
    return dDistance;
}

bool WalkOutline(const CPntCld& cloud, const CConsole& console, double dDistance, COutline& outline)
{
    CProgressBar progress(console, fmt::format("outline at distance {:.4g}", dDistance));
    progress.Start();
    const auto add = [&](const CCldCadPnt& pnt) { outline.vecCorners.push_back(pnt); };
    CEachPnt<decltype(add)> listener(add);
    outline.dDistance = dDistance;
    return cloud.CalcCnt(&progress, &listener, dDistance);
}

/// Three digits of a number that was estimated are enough, and can be typed again.
double RoundToThreeDigits(double d)
{
    const double dStep = std::pow(10.0, std::floor(std::log10(d)) - 2.0);
    return std::max(std::round(d / dStep) * dStep, 1e-4);
}

COutline FindOutline(const CPntCld& cloud, const COptions& options, const CConsole& console)
{
    COutline outline;
    const double dGiven = ParseDistance(options.sDistance);
    if (dGiven > 0.0)
    {
        if (!WalkOutline(cloud, console, dGiven, outline))
            throw CFailure(options.input.sPath,
                           fmt::format("has no closed outline at distance {:.10g}", dGiven));
        return outline;
    }
    const double dSpacing = CalcDensity(cloud).dSpacing;
    if (!(dSpacing > 0.0))
        throw CFailure(options.input.sPath, "covers no area: --distance auto has nothing to go by");
    double dFactor = c_dSpacings;
    for (int i = 0; i < c_nTries; ++i)
    {
        if (WalkOutline(cloud, console, RoundToThreeDigits(dFactor * dSpacing), outline))
        {
            outline.sHow = fmt::format(" ({:g} times the mean plan spacing of {:.4g})", dFactor, dSpacing);
            return outline;
        }
        dFactor *= 2.0;
    }
    throw CFailure(options.input.sPath,
                   fmt::format("has no closed outline at distances from {:.4g} to {:.4g}",
                               c_dSpacings * dSpacing, outline.dDistance));
}

/// Sizes are shown to hundredths; small ones, of degrees for example, to five digits.
std::string FormatSize(double d)
{
    return d < 100.0 ? fmt::format("{:.5g}", d) : fmt::format("{:.2f}", d);
}

void WriteCsv(const COutline& outline, COutFile& out)
{
    const std::unique_ptr<IPntWriter> pWriter = MakeCsvWriter(out, CPntSummary());
    for (const CCldCadPnt& corner : outline.vecCorners)
        pWriter->Add(corner);
    pWriter->Finish();
}

void DrawOutline(const COptions& options, const CPntCld& cloud, CViewColors& colors, const COutline& outline,
                 COutFile& out)
{
    CView view;
    ParseSize(options.picture.sSize, view.nWidth, view.nHeight);
    view.bPlan = true;
    view.sTitle = GetFileName(options.input.sPath);
    view.sUnit = options.picture.sUnit;
    view.sNote = fmt::format("outline at distance {:.10g}", outline.dDistance);
    view.overlay.vecPolygons.push_back({outline.GetRing(), {}});
    RenderView(cloud, colors, view, out);
}

void MakeOutline(const COptions& options, const CConsole& console)
{
    const std::string sExtension = GetExtension(options.sOutPath);
    if (!IsShapeExtension(sExtension) && sExtension != ".csv" && sExtension != ".png")
        throw CUsageError(
            fmt::format("--output: '{}' ends in none of .geojson, .wkt, .csv and .png", options.sOutPath));
    ParseDistance(options.sDistance);
    int nWidth = 0;
    int nHeight = 0;
    ParseSize(options.picture.sSize, nWidth, nHeight);

    CViewColors colors;
    CPntCld cloud(&colors);
    LoadOrAdvise(cloud, options.input, console);
    ChooseColors(options.picture, options.input.sPath, cloud, colors);
    const COutline outline = FindOutline(cloud, options, console);
    const TRing ring = outline.GetRing();
    const double dLength = CalcLength(ring);
    const double dArea = std::fabs(CalcSignedArea(ring));

    COutFile out(options.sOutPath);
    if (sExtension == ".csv")
        WriteCsv(outline, out);
    else if (sExtension == ".png")
        DrawOutline(options, cloud, colors, outline, out);
    else
        WriteShape(out, ring,
                   {{"distance", outline.dDistance},
                    {"corners", static_cast<double>(ring.size())},
                    {"length", dLength},
                    {"area", dArea}});
    out.Commit();
    fmt::print("{}: {} {}, length {}, area {}, distance {:.10g}{}\n", options.sOutPath, ring.size(),
               WithPlural("corner", static_cast<std::int64_t>(ring.size())), FormatSize(dLength),
               FormatSize(dArea), outline.dDistance, outline.sHow);
}

} // namespace

void AddOutlineCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    CLI::App* const pCommand =
        app.add_subcommand("outline", "Finds the outline of a cloud's largest part, seen from above");
    AddInputOptions(*pCommand, pOptions->input);
    pCommand
        ->add_option("--distance", pOptions->sDistance,
                     "How far apart points may lie and still belong together; auto: from their mean spacing")
        ->required()
        ->type_name("D|auto");
    AddOutOption(*pCommand, pOptions->sOutPath,
                 "File to write: .geojson, .wkt or .csv, or .png for a picture of it over the points");
    AddPictureOptions(*pCommand, pOptions->picture);
    pCommand->callback([pOptions, &console] { MakeOutline(*pOptions, console); });
}

} // namespace zorcld
