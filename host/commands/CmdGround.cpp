#include <host/commands/Commands.h>

#include <host/commands/AddOutOption.h>
#include <host/files/AddInputOptions.h>
#include <host/files/CClassChoice.h>
#include <host/files/LoadCloud.h>
#include <host/files/NoteLeftOut.h>
#include <host/files/OpenInputFile.h>
#include <host/files/SaveCloud.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/COutFile.h>
#include <host/output/CProgressBar.h>
#include <host/output/CTempFile.h>
#include <host/output/FormatCount.h>
#include <host/output/GetExtension.h>
#include <host/output/GetFileName.h>
#include <host/output/PrintMessage.h>
#include <host/output/RefuseSameFile.h>
#include <host/output/UnitSymbol.h>
#include <host/picture/CGroundPicture.h>
#include <host/picture/CViewColors.h>
#include <host/picture/PictureOptions.h>
#include <host/query/CalcDensity.h>
#include <host/query/CutToCore.h>
#include <host/query/FilterGround.h>
#include <host/query/GroundFindings.h>
#include <host/query/ParseUnitScale.h>
#include <host/query/Query.h>
#include <host/query/WritePnts.h>
#include <host/tile/HashFile.h>
#include <zor4data/CPntCld.h>
#include <zor4data/IPclProgressListener.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>

namespace zorcld
{

namespace
{

struct COptions
{
    CInputOptions input;
    std::string sOutPath;
    std::string sPicturePath;
    CPictureOptions picture;
    std::string sUnitScale; // metres; empty: not given
    bool bForce = false;
    std::string sCore;
    std::string sHash;
};

class CFilterProgress final : public IPclProgressListener
{
public:
    explicit CFilterProgress(CProgressBar& bar) : m_bar(bar) {}
    void OnProgress(int nPos) override { m_bar.SetPos(nPos); }

private:
    CProgressBar& m_bar;
};

void Filter(CPntCld& cloud, const CGroundScale& scale, const COptions& options, const CConsole& console)
{
    CProgressBar bar(console, "finding the ground");
    bar.Start();
    CFilterProgress progress(bar);
    FilterGround(cloud, scale, options.input.sPath, &progress);
}

std::string FormatUnit(const CCoordUnit& unit)
{
    const std::string sName = GetUnitSymbol(unit);
    return unit.dSize == 1.0 ? sName : fmt::format("{} ({:.6g} m)", sName, unit.dSize);
}

/// What --unit-scale gives, or else what the file states.
/// @throws CFailure for degrees.
CGroundScale ChooseGroundScale(const COptions& options, const CCoordSystem& coords, const CConsole& console)
{
    if (!options.sUnitScale.empty())
        return ParseUnitScale(options.sUnitScale);
    const CGroundScale scale = FindGroundScale(coords, options.input.sPath);
    if (scale.IsOne())
        return scale;
    const CCoordUnit& height = coords.height.IsLength() ? coords.height : coords.plan;
    const bool bSame = scale.dPlan == scale.dHeight;
    console.Note(fmt::format(
        "{}: coordinates are in {}{}, the ground is filtered in metres (--unit-scale 1 takes them "
        "as they are)",
        options.input.sPath, FormatUnit(coords.plan), bSame ? "" : ", heights in " + FormatUnit(height)));
    return scale;
}

void Report(const COptions& options, const CGroundResult& result, const CConsole& console)
{
    PrintMessage(stdout, fmt::format("{}: {} of {} {} {} ground ({:.1f} %)", options.input.sPath,
                                     result.nNumGround, result.nNumAll, WithPlural("point", result.nNumAll),
                                     result.nNumGround == 1 ? "is" : "are",
                                     result.nNumAll > 0 ? 100.0 * static_cast<double>(result.nNumGround) /
                                                              static_cast<double>(result.nNumAll)
                                                        : 0.0));
    const std::string sOdd = FindOddGround(result);
    if (!sOdd.empty())
        console.Note(fmt::format("{}: {}", options.input.sPath, sOdd));
}

CGroundPicture::COptions ParsePicture(const COptions& options)
{
    CGroundPicture::COptions picture;
    ParseSize(options.picture.sSize, picture.nWidth, picture.nHeight);
    picture.sTitle = GetFileName(options.input.sPath);
    return picture;
}

bool IsNative(const std::string& sPath)
{
    return GetExtension(sPath) == ".cld";
}

/// @throws CUsageError for a file that cannot be written because of its name, or must not be.
void CheckOutPaths(const COptions& options)
{
    const std::string& sPath = options.sOutPath;
    if (!sPath.empty() && !IsNative(sPath) && GetExtension(sPath) != ".ply" && GetExtension(sPath) != ".csv")
        throw CUsageError(fmt::format("--output: '{}' ends in none of .cld, .ply and .csv", sPath));
    if (!options.sPicturePath.empty())
        CheckExtension(options.sPicturePath, "--picture", ".png");
    if (!options.sCore.empty())
        static_cast<void>(ParseCore(options.sCore));
    if (!options.sUnitScale.empty())
        static_cast<void>(ParseUnitScale(options.sUnitScale));
    RefuseSameFile(options.input.sPath, sPath, "--output", options.bForce);
    RefuseSameFile(options.input.sPath, options.sPicturePath, "--picture", options.bForce);
}

/// Of a core nothing may be ground: that is a result like others, and no file is what tells of it. So an
/// older file goes, where a result would have replaced it; never what is no regular file, nor the file that
/// was read.
void TellNoGround(const COptions& options, const CConsole& console)
{
    const std::string& sPath = options.sOutPath;
    std::error_code error;
    if (std::filesystem::is_directory(sPath, error))
        throw CFailure(sPath, "is a directory");
    if (std::filesystem::equivalent(options.input.sPath, sPath, error))
        throw CFailure(sPath, "is not replaced: there is no ground in the core");
    if (std::filesystem::is_regular_file(sPath, error))
    {
        std::filesystem::remove(FollowLink(sPath), error);
        if (error)
            throw CFailure(sPath, "is not of this core, and cannot be removed: " + error.message());
    }
    console.Note(fmt::format("{}: is not written: there is no ground in the core", sPath));
}

void SaveGround(CPntCld& cloud, const COptions& options, const CConsole& console)
{
    const std::string& sPath = options.sOutPath;
    if (IsNative(sPath) && !options.sCore.empty() && cloud.GetNumPnts() == 0)
    {
        TellNoGround(options, console);
        return;
    }
    if (IsNative(sPath))
    {
        if (cloud.GetNumPnts() == 0)
            throw CFailure(sPath,
                           "is not written: there is no ground, and a native file holds at least one point");
        SaveCloud(cloud, sPath);
        return;
    }
    COutFile out(sPath);
    WritePnts(cloud, CQuery(), FindPntWriter(sPath), out, console);
    out.Commit();
}

/// Leaves the ground, of a core that of the core.
CGroundResult KeepGround(CPntCld& cloud, const CGroundScale& scale, const COptions& options,
                         const CConsole& console)
{
    CGroundResult result = {cloud.GetNumPnts(), 0, CalcDensity(cloud).dSpacing * scale.dPlan};
    if (!options.sCore.empty())
    {
        const std::vector<bool> vecInside = ChooseInCore(cloud, ParseCore(options.sCore));
        result.nNumAll = std::count(vecInside.begin(), vecInside.end(), true);
    }
    Filter(cloud, scale, options, console);
    if (!options.sCore.empty())
        CutToCore(cloud, ParseCore(options.sCore));
    result.nNumGround = cloud.GetNumPnts();
    return result;
}

/// A file that is damaged may be read as another cloud: of a tile its hash is known.
void RequireHash(const COptions& options)
{
    if (!options.sHash.empty() && HashFile(options.input.sPath) != options.sHash)
        throw CFailure(options.input.sPath,
                       "is damaged, or another file than the one whose hash --xxh128 gives");
}

void FindGround(const COptions& options, const CConsole& console)
{
    CheckOutPaths(options);
    RequireHash(options);
    CGroundPicture::COptions pictureOptions = ParsePicture(options);
    CViewColors colors;
    CPntCld cloud(&colors);
    const std::unique_ptr<CInputFile> pFile = OpenInputFile(options.input);
    const CCoordSystem& coords = pFile->GetFacts().coords;
    const CGroundScale scale = ChooseGroundScale(options, coords, console);
    pictureOptions.units = ChooseUnits(options.picture, coords);
    if (!options.sPicturePath.empty())
        NoteOtherUnit(options.picture, coords, options.input.sPath, console);
    LoadOrAdvise(cloud, *pFile, console);
    ChooseColors(options.picture, options.input.sPath, cloud, colors);
    pictureOptions.bByHeight = colors.IsByHeight();
    colors.SetByHeight(false);

    CGroundPicture picture(pictureOptions);
    if (!options.sPicturePath.empty())
        picture.AddBefore(cloud);
    const CGroundResult result = KeepGround(cloud, scale, options, console);

    // The picture's file takes its name only after the points' file has its own.
    std::optional<COutFile> pictureFile;
    if (!options.sPicturePath.empty())
    {
        picture.AddAfter(cloud);
        picture.Write(pictureFile.emplace(options.sPicturePath));
    }
    if (!options.sOutPath.empty())
        SaveGround(cloud, options, console);
    if (pictureFile)
        pictureFile->Commit();
    if (!options.sOutPath.empty())
        NoteLeftOut(*pFile, {}, result.nNumAll, result.nNumGround, options.sOutPath, console);
    Report(options, result, console);
}

} // namespace

void AddGroundCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<COptions>();
    pOptions->picture.sColor = "height";
    pOptions->picture.sSize = "1600x900"; // two squares beside each other
    CLI::App* const pCommand = app.add_subcommand(
        "ground", "Keeps the ground of an airborne scan: buildings, trees and cars are taken away");
    AddInputOptions(*pCommand, pOptions->input);
    pCommand
        ->add_option(
            "-o,--output", pOptions->sOutPath,
            "File to write the ground points to: .cld, .ply or .csv; without it they are counted only")
        ->type_name("OUT");
    pCommand->add_option("--picture", pOptions->sPicturePath, "Picture of the cloud before and after")
        ->type_name("OUT.png");
    AddForceFlag(*pCommand, pOptions->bForce);
    AddPictureOptions(*pCommand, pOptions->picture);
    pCommand
        ->add_option(
            "--unit-scale", pOptions->sUnitScale,
            "How many metres a coordinate unit is, of heights as well or with a number of its own; by "
            "default what a LAS file states, else 1")
        ->type_name("METRES[,METRES]");
    pCommand
        ->add_option("--core", pOptions->sCore,
                     "Write the ground inside a rectangle only, left and lower borders included: of a tile, "
                     "whose points around it decide, too")
        ->type_name("xmin,ymin,xmax,ymax");
    pCommand
        ->add_option("--xxh128", pOptions->sHash,
                     "Refuse FILE unless its bytes have this hash, as the manifest of tiles tells it")
        ->check(CLI::Validator([](const std::string& sText)
                               { return IsHash(sText) ? "" : "'" + sText + "' is no hash"; },
                               "", "HASH"))
        ->type_name("HASH");
    pCommand->footer(fmt::format(
        "The sizes it goes by are fixed, in metres: windows of {:g} to {:g}, slopes up to 1, heights above\n"
        "the ground from 0.5 to 3.",
        c_dSmallestWindow, c_dLargestWindow));
    pCommand->callback([pOptions, &console] { FindGround(*pOptions, console); });
}

} // namespace zorcld
