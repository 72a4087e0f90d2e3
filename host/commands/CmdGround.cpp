#include <host/commands/Commands.h>
#include <host/files/AddInputOptions.h>
#include <host/files/LoadCloud.h>
#include <host/files/SaveCloud.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/COutFile.h>
#include <host/output/CProgressBar.h>
#include <host/output/FormatCount.h>
#include <host/output/GetExtension.h>
#include <host/output/GetFileName.h>
#include <host/picture/CGroundPicture.h>
#include <host/picture/CViewColors.h>
#include <host/picture/PictureOptions.h>
#include <host/query/Query.h>
#include <host/query/WritePnts.h>
#include <zor4data/CPntCld.h>
#include <zor4data/IPclProgressListener.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

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
};

class CFilterProgress final : public IPclProgressListener
{
public:
    explicit CFilterProgress(CProgressBar& bar) : m_bar(bar) {}
    void OnProgress(int nPos) override { m_bar.SetPos(nPos); }

private:
    CProgressBar& m_bar;
};

void FilterGround(CPntCld& cloud, const CConsole& console)
{
    CProgressBar bar(console, "finding the ground");
    bar.Start();
    CFilterProgress progress(bar);
    cloud.Morph(&progress);
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

/// @throws CUsageError for a file that cannot be written because of its name.
void CheckOutPath(const std::string& sPath)
{
    if (!sPath.empty() && !IsNative(sPath) && GetExtension(sPath) != ".ply" && GetExtension(sPath) != ".csv")
        throw CUsageError(fmt::format("--output: '{}' ends in none of .cld, .ply and .csv", sPath));
}

void SaveGround(CPntCld& cloud, const std::string& sPath, const CConsole& console)
{
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

void FindGround(const COptions& options, const CConsole& console)
{
    CheckOutPath(options.sOutPath);
    if (!options.sPicturePath.empty())
        CheckExtension(options.sPicturePath, "--picture", ".png");
    CGroundPicture::COptions pictureOptions = ParsePicture(options);
    CViewColors colors;
    CPntCld cloud(&colors);
    const CLoadFacts facts = LoadCloud(cloud, options.input, console);
    pictureOptions.units = ChooseUnits(options.picture, facts.coords);
    ChooseColors(options.picture, options.input.sPath, cloud, colors);
    pictureOptions.bByHeight = colors.IsByHeight();
    colors.SetByHeight(false);

    CGroundPicture picture(pictureOptions);
    if (!options.sPicturePath.empty())
        picture.AddBefore(cloud);
    const int nNumAll = cloud.GetNumPnts();
    FilterGround(cloud, console);
    const int nNumGround = cloud.GetNumPnts();

    // The picture's file takes its name only after the points' file has its own.
    std::optional<COutFile> pictureFile;
    if (!options.sPicturePath.empty())
    {
        picture.AddAfter(cloud);
        picture.Write(pictureFile.emplace(options.sPicturePath));
    }
    if (!options.sOutPath.empty())
        SaveGround(cloud, options.sOutPath, console);
    if (pictureFile)
        pictureFile->Commit();
    fmt::print("{}: {} of {} {} {} ground ({:.1f} %)\n", options.input.sPath, nNumGround, nNumAll,
               WithPlural("point", nNumAll), nNumGround == 1 ? "is" : "are",
               nNumAll > 0 ? 100.0 * nNumGround / nNumAll : 0.0);
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
    AddPictureOptions(*pCommand, pOptions->picture);
    pCommand->footer(
        "The sizes it goes by are fixed, and suit metres: windows of 3 to 33 units, slopes up to 1,\n"
        "heights above the ground from 0.5 to 3.");
    pCommand->callback([pOptions, &console] { FindGround(*pOptions, console); });
}

} // namespace zorcld
