#include <host/files/CFileColors.h>
#include <host/files/CTakenPnts.h>
#include <host/files/CheckFile.h>
#include <host/files/FileKinds.h>
#include <host/files/LoadCloud.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/GroupDigits.h>

#include <zor4data/CPntCld.h>

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

namespace zorcld
{

namespace
{

/// Without the name of the file that a failure begins with.
std::string GetCause(const CFailure& failure, const std::string& sPath)
{
    const std::string sText = failure.what();
    return sText.rfind(sPath + ": ", 0) == 0 ? sText.substr(sPath.size() + 2) : sText;
}

void FindFarPnts(const CSourceFacts& facts, std::vector<CFinding>& vecFindings)
{
    if (facts.nNumNotFinite > 0)
        vecFindings.push_back({"not-finite",
                               fmt::format("{} points have coordinates that are no numbers, or infinite",
                                           GroupDigits(facts.nNumNotFinite)),
                               true, ""});
    if (facts.nNumFar == 0)
        return;
    const zor::geom::RECT_3D& box = facts.summary.box;
    const double dExtent = std::max({box.xmax - box.xmin, box.ymax - box.ymin, box.zmax - box.zmin});
    vecFindings.push_back(
        {"span",
         fmt::format("{} of {} points lie more than 214748 units from the first one ({:.10g} {:.10g} "
                     "{:.10g}) and are moved to that distance; the points span {:.6g} units",
                     GroupDigits(facts.nNumFar), GroupDigits(facts.summary.nNumPnts), facts.first.x,
                     facts.first.y, facts.first.z, dExtent),
         true, ""});
}

/// Where no point of the file has enough others within reach, nothing that is wrong with it can be mended.
void TakeBackHelp(IPntSource& source, CCheckResult& result, const CConsole& console)
{
    try
    {
        const CTakenPnts pnts(source, result.sPath, console);
    }
    catch (const CFailure&)
    {
        for (CFinding& finding : result.vecFindings)
            finding.bConvert = false;
        if (result.vecFindings.back().pCode == std::string_view("span"))
            result.vecFindings.back().sHint = "a smaller part of it, or larger units";
    }
}

void FindMergedPnts(const CSourceFacts& facts, std::vector<CFinding>& vecFindings)
{
    constexpr double c_dWorthTelling = 0.005;
    const zor::geom::RECT_3D& box = facts.summary.box;
    if (facts.CalcShareMerged() < c_dWorthTelling)
        return;
    vecFindings.push_back(
        {"small-units",
         fmt::format("its points lie within {:.4g} x {:.4g} units, of which a cloud keeps 1/10000: they get "
                     "{:.0f} x {:.0f} places only",
                     box.xmax - box.xmin, box.ymax - box.ymin, (box.xmax - box.xmin) * 1e4 + 1.0,
                     (box.ymax - box.ymin) * 1e4 + 1.0),
         false, "smaller units: metres instead of degrees or kilometres"});
}

/// Walls and the undersides of things.
void FindStackedPnts(CStackedPnts& stacked, const CSourceFacts& facts, std::vector<CFinding>& vecFindings)
{
    constexpr double c_dWorthTelling = 0.01;
    const std::int64_t nNumLost = stacked.CalcNumLost();
    if (static_cast<double>(nNumLost) < c_dWorthTelling * static_cast<double>(facts.summary.nNumPnts) ||
        nNumLost == 0)
        return;
    vecFindings.push_back({"stacked-points",
                           fmt::format("{} of {} points lie above or below another, at its x and y, and are "
                                       "removed: a cloud keeps only the first of such points near each other",
                                       GroupDigits(nNumLost), GroupDigits(facts.summary.nNumPnts)),
                           false, ""});
}

void FindDeepColors(const CSourceFacts& facts, std::vector<CFinding>& vecFindings)
{
    if (facts.HasDeepColor() && facts.nNumLowColors > 0)
        vecFindings.push_back(
            {"color-16-bit",
             fmt::format("its colours have 16 bits (up to {}), and of {} points a channel from 1 to 255 is "
                         "taken as one of 8 bits: far too bright",
                         facts.nMaxColor, GroupDigits(facts.nNumLowColors)),
             true, ""});
}

/// @return why it cannot be loaded; empty: it can.
std::string TryLoad(const CInputOptions& input, std::vector<CFinding>& vecFindings)
{
    CConsole quiet;
    quiet.SetQuiet();
    CFileColors colors;
    CPntCld cloud(&colors);
    try
    {
        vecFindings = LoadCloud(cloud, input, quiet).vecFindings;
    }
    catch (const CFailure& failure)
    {
        return GetCause(failure, input.sPath);
    }
    return {};
}

/// Only decoding it tells whether a compressed file is whole.
void LoadCompressed(CCheckResult& result, const CInputOptions& input)
{
    if (result.pKind->eFile != PntCldFile_Las)
        return;
    result.sCause = TryLoad(input, result.vecFindings);
    result.bLoaded = true;
}

bool IsSmall(const CFileFacts& facts, std::int64_t nNumPnts, const std::string& sPath)
{
    constexpr std::uintmax_t c_nMaxBytes = 64U << 20U;
    constexpr std::int64_t c_nMaxPnts = 4000000;
    std::error_code error;
    const std::uintmax_t nBytes = std::filesystem::file_size(sPath, error);
    return !error && nBytes <= c_nMaxBytes && nNumPnts <= c_nMaxPnts && !facts.bNoProgress;
}

/// The last word is the loader's: damaged files may look well, and the other way round.
void AskLoader(CCheckResult& result, const CInputOptions& input)
{
    std::vector<CFinding> vecFindings;
    const std::string sCause = TryLoad(input, vecFindings);
    if (!result.sCause.empty() && sCause.empty())
    {
        result.vecFindings = std::move(vecFindings);
        result.vecFindings.push_back({"misread", "it loads, but is damaged: " + result.sCause, false, ""});
        result.bConvert = false;
    }
    else if (result.sCause.empty() && !sCause.empty())
    {
        result.bConvert = std::any_of(result.vecFindings.begin(), result.vecFindings.end(),
                                      [](const CFinding& finding) { return finding.bConvert; });
        result.vecFindings.clear();
    }
    result.sCause = sCause;
}

/// Findings of the points themselves, where the host can read them one by one.
void LookAtPnts(CCheckResult& result, const CInputOptions& input, const CConsole& console)
{
    try
    {
        const std::unique_ptr<IPntSource> pSource = MakePntSource(input);
        if (pSource == nullptr)
        {
            LoadCompressed(result, input);
            return;
        }
        const auto name = std::filesystem::path(input.sPath).filename().string();
        CStackedPnts stacked;
        const CSourceFacts facts = CollectSourceFacts(*pSource, console, "checking " + name, &stacked);
        result.nNumPnts = facts.summary.nNumPnts + facts.nNumNotFinite;
        for (CFinding& finding : pSource->GetFindings())
            result.vecFindings.push_back(std::move(finding));
        FindMergedPnts(facts, result.vecFindings);
        FindStackedPnts(stacked, facts, result.vecFindings);
        if (result.pKind->eFile == PntCldFile_Las)
            FindDeepColors(facts, result.vecFindings);
        FindFarPnts(facts, result.vecFindings);
        if (facts.nNumFar > 0)
            TakeBackHelp(*pSource, result, console);
    }
    catch (const CFailure& failure) // the library takes it for something else than it is
    {
        result.vecFindings.push_back(
            {"misread", "by its header it cannot be read: " + GetCause(failure, input.sPath), false, ""});
    }
}

bool CanConvert(const CInputOptions& input)
{
    try
    {
        const std::unique_ptr<IPntSource> pSource = MakePntSource(input);
        return pSource != nullptr && pSource->GetNumAnnounced() > 0;
    }
    catch (const CFailure&)
    {
        return false;
    }
}

} // namespace

CCheckResult CheckFile(const CInputOptions& input, const CConsole& console)
{
    CCheckResult result;
    result.sPath = input.sPath;
    bool bSmall = false;
    try
    {
        result.pKind = &FindFileKind(input.sPath, input.sType);
        CFileFacts facts = result.pKind->pFindFacts(input.sPath);
        result.nNumPnts = facts.nHeld < 0 ? facts.nAnnounced : std::min(facts.nHeld, facts.nAnnounced);
        bSmall = IsSmall(facts, result.nNumPnts, input.sPath);
        result.vecFindings = std::move(facts.vecFindings);
        result.sCause = result.pKind->pFindCause(input.sPath);
    }
    catch (const CFailure& failure)
    {
        result.sCause = GetCause(failure, input.sPath);
        return result;
    }
    if (result.sCause.empty())
        LookAtPnts(result, input, console);
    else
        result.bConvert = CanConvert(input);
    if (bSmall && !result.bLoaded)
        AskLoader(result, input);
    return result;
}

} // namespace zorcld
