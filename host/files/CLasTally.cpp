#include <host/files/CLasTally.h>

#include <host/files/CFileKind.h>
#include <host/files/CInputFile.h>
#include <host/files/OpenLasPnts.h>
#include <host/output/CProgressBar.h>
#include <host/output/FormatCount.h>
#include <host/output/GetFileName.h>
#include <host/output/PrintLine.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <numeric>

namespace zorcld
{

namespace
{

using TJson = nlohmann::ordered_json;

struct CFlagName
{
    CLasAttributes::enumFlag eFlag;
    const char* pKey;
    const char* pName;
};

constexpr std::array c_aFlags = {
    CFlagName{CLasAttributes::Flag_Synthetic, "synthetic", "synthetic"},
    CFlagName{CLasAttributes::Flag_KeyPoint, "key_point", "key point"},
    CFlagName{CLasAttributes::Flag_Withheld, "withheld", "withheld"},
    CFlagName{CLasAttributes::Flag_Overlap, "overlap", "overlap"},
};

/// Share of all points, as "37.7 %"; what is not 0 does not look like it.
std::string FormatShare(std::int64_t n, std::int64_t nAll)
{
    const double dPercent = 100.0 * static_cast<double>(n) / static_cast<double>(nAll);
    return dPercent < 0.05 ? "< 0.1 %" : fmt::format("{:.1f} %", dPercent);
}

void PrintClasses(const TJson& classes)
{
    std::int64_t nAll = 0;
    for (const TJson& item : classes)
        nAll += item["points"].get<std::int64_t>();
    const char* pLabel = "Classes";
    for (const TJson& item : classes)
    {
        const auto nNumPnts = item["points"].get<std::int64_t>();
        PrintLine(pLabel, fmt::format("{:>3} {:<18}{:>14} {:<7}{:>8}", item["class"].get<int>(),
                                      item["name"].get<std::string>(), GroupDigits(nNumPnts),
                                      WithPlural("point", nNumPnts), FormatShare(nNumPnts, nAll)));
        pLabel = "";
    }
}

} // namespace

std::int64_t CLasTally::Count() const
{
    return std::accumulate(anByClass.begin(), anByClass.end(), std::int64_t{0});
}

std::int64_t CLasTally::Count(const CClassChoice& choice) const
{
    std::int64_t nNumPnts = 0;
    for (std::size_t n = 0; n < anByClass.size(); ++n)
        nNumPnts += choice.IsKept(static_cast<std::uint8_t>(n)) ? anByClass[n] : 0;
    return nNumPnts;
}

std::int64_t CLasTally::CountFlag(CLasAttributes::enumFlag eFlag) const
{
    std::int64_t nNumPnts = 0;
    for (std::size_t nFlags = 0; nFlags < anByFlags.size(); ++nFlags)
        nNumPnts += (nFlags & eFlag) != 0 ? anByFlags[nFlags] : 0;
    return nNumPnts;
}

TLasClasses CLasTally::GetClasses() const
{
    TLasClasses classes;
    for (std::size_t n = 0; n < anByClass.size(); ++n)
        classes[n] = anByClass[n] > 0;
    return classes;
}

CLasTally CollectLasTally(CInputFile& file, const CConsole& console)
{
    const std::unique_ptr<IPntSource> pSource = OpenLasPnts(file);
    CProgressBar progress(console, "looking at " + GetFileName(file.GetPath()));
    progress.Start();
    const double dStep = 100.0 / static_cast<double>(std::max<std::int64_t>(pSource->GetNumAnnounced(), 1));
    CLasTally tally;
    std::int64_t nDone = 0;
    ForEachLasPnt(*pSource, file,
                  [&](const CSourcePnt& pnt)
                  {
                      progress.SetPos(static_cast<int>(static_cast<double>(nDone++) * dStep));
                      tally.Add(pnt.attributes);
                  });
    return tally;
}

bool CanTally(const CInputFile& file)
{
    return ZORCLD_HAS_LASZIP && file.GetKind().eFile == PntCldFile_Las;
}

void DescribeTally(const CLasTally& tally, const CClassChoice& choice, TJson& las)
{
    las["classes"] = TJson::array();
    for (std::size_t n = 0; n < tally.anByClass.size(); ++n)
        if (tally.anByClass[n] > 0)
            las["classes"].push_back({{"class", n},
                                      {"name", GetLasClassName(static_cast<std::uint8_t>(n))},
                                      {"points", tally.anByClass[n]}});
    for (const CFlagName& flag : c_aFlags)
        las["flags"][flag.pKey] = tally.CountFlag(flag.eFlag);
    las["intensity"] = nullptr;
    if (tally.nMinIntensity <= tally.nMaxIntensity)
        las["intensity"] = {{"min", tally.nMinIntensity}, {"max", tally.nMaxIntensity}};
    las["chosen"] = nullptr;
    if (choice.IsAsked())
        las["chosen"] = {{"classes", choice.Format()}, {"points", tally.Count(choice)}};
}

void PrintTally(const TJson& las)
{
    if (!las.contains("classes"))
        return;
    if (!las["chosen"].is_null())
        PrintLine("Chosen", fmt::format("{}: {}", las["chosen"]["classes"].get<std::string>(),
                                        FormatCount(las["chosen"]["points"].get<std::int64_t>(), "point")));
    PrintClasses(las["classes"]);
    std::string sFlags;
    for (const CFlagName& flag : c_aFlags)
        if (const auto nNumPnts = las["flags"][flag.pKey].get<std::int64_t>(); nNumPnts > 0)
            sFlags += fmt::format("{}{} {}", sFlags.empty() ? "" : ", ", FormatCount(nNumPnts, "point"),
                                  flag.pName);
    PrintLine("Flags", sFlags.empty() ? "none" : sFlags);
    const TJson& intensity = las["intensity"];
    if (!intensity.is_null())
        PrintLine("Intensity",
                  fmt::format("{} to {}", intensity["min"].get<int>(), intensity["max"].get<int>()));
}

} // namespace zorcld
