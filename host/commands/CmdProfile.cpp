#include <host/commands/Commands.h>

#include <host/commands/AddOutOption.h>
#include <host/files/AddInputOptions.h>
#include <host/files/LoadCloud.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/COutFile.h>
#include <host/output/FormatCount.h>
#include <host/output/GetExtension.h>
#include <host/output/GetFileName.h>
#include <host/output/PrintMessage.h>
#include <host/output/RefuseSameFile.h>
#include <host/picture/CViewColors.h>
#include <host/picture/FindProportions.h>
#include <host/picture/PictureOptions.h>
#include <host/picture/RenderProfile.h>
#include <host/picture/ViewRaster.h>
#include <host/query/CCorridor.h>
#include <host/query/CEachPnt.h>
#include <host/query/FormatPlan.h>
#include <host/query/PlanQuery.h>
#include <host/query/Query.h>
#include <host/shapes/WriteShapes.h>
#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

namespace zorcld
{

namespace
{

struct COptions
{
    CInputOptions input;
    std::string sLine;
    std::string sOutPath;
    bool bForce = false;
    CPictureOptions picture;
};

/// The points in the corridor by their distance from its beginning.
CProfile CutProfile(const CPntCld& cloud, const CCorridor& corridor)
{
    CProfile profile;
    profile.dLength = corridor.GetLength();
    profile.dWidth = corridor.GetLine().dWidth;
    const auto add = [&](const CCldCadPnt& pnt) {
        profile.vecPnts.push_back({corridor.CalcAlong(pnt.m_pnt), corridor.CalcAcross(pnt.m_pnt), pnt});
    };
    CEachPnt<decltype(add)> listener(add);
    corridor.FindPnts(cloud, listener);
    std::stable_sort(profile.vecPnts.begin(), profile.vecPnts.end(),
                     [](const CProfilePnt& a, const CProfilePnt& b) { return a.dAlong < b.dAlong; });
    return profile;
}

/// Lengths of a profile in degrees become metres, as heights are: those along the line by what a degree is
/// along it, those beside it by what one is across.
/// @param bDegrees  what the file says of its coordinates; none: nothing.
void TakeForDegrees(const CPntCld& cloud, std::optional<bool> bDegrees, const CPlanLine& line,
                    CProfile& profile)
{
    const CProportions proportions =
        FindProportions(LookOver(cloud, CQuery(), CCamera::Plan()), true, bDegrees);
    if (!proportions.bDegrees || !std::isfinite(profile.dLength))
        return;
    const double dX = (line.p2.x - line.p1.x) / profile.dLength;
    const double dY = (line.p2.y - line.p1.y) / profile.dLength;
    const double dAlong = std::hypot(proportions.stretch.x * dX, proportions.stretch.y * dY);
    const double dAcross = std::hypot(proportions.stretch.x * dY, proportions.stretch.y * dX);
    profile.dLength *= dAlong;
    profile.dWidth *= dAcross;
    profile.sNote = proportions.Format();
    for (CProfilePnt& pnt : profile.vecPnts)
    {
        pnt.dAlong *= dAlong;
        pnt.dAcross *= dAcross;
    }
}

void WriteCsv(const CProfile& profile, bool bColor, COutFile& out)
{
    std::string sText = CCorridor::GetCsvHead(bColor);
    for (const CProfilePnt& pnt : profile.vecPnts)
        sText += CCorridor::FormatCsv(pnt.pnt, pnt.dAlong, pnt.dAcross, bColor);
    out.Write(sText);
}

/// The corridor's corners in plan view.
TRing MakeCorridor(const CPlanLine& line)
{
    const double dHalf = line.dWidth / 2.0 / std::hypot(line.p2.x - line.p1.x, line.p2.y - line.p1.y);
    const double dX = -(line.p2.y - line.p1.y) * dHalf;
    const double dY = (line.p2.x - line.p1.x) * dHalf;
    return {{line.p1.x - dX, line.p1.y - dY},
            {line.p2.x - dX, line.p2.y - dY},
            {line.p2.x + dX, line.p2.y + dY},
            {line.p1.x + dX, line.p1.y + dY}};
}

void DrawProfile(const COptions& options, const CPictureUnits& units, const CProfile& profile,
                 CViewColors& colors, COutFile& out)
{
    CProfileView view;
    ParseSize(options.picture.sSize, view.nWidth, view.nHeight);
    view.sTitle = GetFileName(options.input.sPath);
    view.units = units;
    if (!profile.sNote.empty())
        view.units.sPlan = "m";
    RenderProfile(profile, colors.IsByHeight() ? &colors.GetHeightColors() : nullptr, view, out);
}

void Report(const COptions& options, const CPntCld& cloud, const CProfile& profile, const CConsole& console)
{
    const auto nNumPnts = static_cast<std::int64_t>(profile.vecPnts.size());
    if (nNumPnts == 0)
        console.Note(
            fmt::format("{}: no point lies along the line: {}", options.input.sPath, FormatPlan(cloud)));
    if (!profile.sNote.empty())
        console.Note(fmt::format("{}: {}, distances are in metres", options.input.sPath, profile.sNote));
    PrintMessage(stdout, fmt::format("{}: {} {} along {:.6g}{}", options.sOutPath, nNumPnts,
                                     WithPlural("point", nNumPnts), profile.dLength,
                                     profile.sNote.empty() ? "" : " m"));
}

void MakeProfile(const COptions& options, const CConsole& console)
{
    const std::string sExtension = GetExtension(options.sOutPath);
    if (!IsShapeExtension(sExtension) && sExtension != ".csv" && sExtension != ".png")
        throw CUsageError(
            fmt::format("--output: '{}' ends in none of .png, .csv, .geojson and .wkt", options.sOutPath));
    RefuseSameFile(options.input.sPath, options.sOutPath, "--output", options.bForce);
    const CCorridor corridor(ParseLine(options.sLine), "--line");
    int nWidth = 0;
    int nHeight = 0;
    ParseSize(options.picture.sSize, nWidth, nHeight);

    CViewColors colors;
    CPntCld cloud(&colors);
    const CLoadFacts facts = LoadOrAdvise(cloud, options.input, console);
    ChooseColors(options.picture, options.input.sPath, cloud, colors);
    CProfile profile = CutProfile(cloud, corridor);
    const CPictureUnits units = ChooseUnits(options.picture, facts.coords);
    if (!IsShapeExtension(sExtension)) // shapes are in the cloud's coordinates
        TakeForDegrees(cloud, units.bDegrees, corridor.GetLine(), profile);

    COutFile out(options.sOutPath);
    if (sExtension == ".csv")
        WriteCsv(profile, cloud.IsWithColor(), out);
    else if (sExtension == ".png")
    {
        DrawProfile(options, units, profile, colors, out);
        NoteOtherUnit(options.picture, facts.coords, options.input.sPath, console);
    }
    else
        WriteShape(out, MakeCorridor(corridor.GetLine()),
                   {{"width", profile.dWidth}, {"length", profile.dLength}});
    out.Commit();
    Report(options, cloud, profile, console);
}

} // namespace

void AddProfileCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    pOptions->picture.sSize = "1600x800";
    CLI::App* const pCommand =
        app.add_subcommand("profile", "Cuts a cloud along a line: distance against height");
    AddInputOptions(*pCommand, pOptions->input);
    pCommand->add_option("--line", pOptions->sLine, "The line, and the width of the corridor along it")
        ->required()
        ->type_name("x1,y1,x2,y2,WIDTH");
    AddOutOption(*pCommand, pOptions->sOutPath,
                 "File to write: .png, .csv for the points, or .geojson or .wkt for the corridor's place");
    AddForceFlag(*pCommand, pOptions->bForce);
    AddPictureOptions(*pCommand, pOptions->picture);
    pCommand->callback([pOptions, &console] { MakeProfile(*pOptions, console); });
}

} // namespace zorcld
