#include <bench/CRowResult.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <fstream>

namespace
{

double CalcMedian(std::vector<double> vec)
{
    if (vec.empty())
        return 0.0;
    std::sort(vec.begin(), vec.end());
    const std::size_t nMid = vec.size() / 2;
    return vec.size() % 2 == 1 ? vec[nMid] : (vec[nMid - 1] + vec[nMid]) / 2.0;
}

double CalcMin(const std::vector<double>& vec)
{
    return vec.empty() ? 0.0 : *std::min_element(vec.begin(), vec.end());
}

std::string FormatSeconds(double d)
{
    if (d >= 1.0)
        return fmt::format("{:.2f} s", d);
    return d >= 1e-3 ? fmt::format("{:.2f} ms", d * 1e3) : fmt::format("{:.2f} us", d * 1e6);
}

/// Three digits behind the point, or one divided by a whole number where these would say too little.
std::string FormatRatio(double dRatio)
{
    return dRatio > 0.0 && dRatio < 0.02 ? fmt::format("1/{:.0f}", 1.0 / dRatio)
                                         : fmt::format("{:.3f}", dRatio);
}

std::string FormatBar(double dBar)
{
    if (dBar <= 0.0)
        return "-";
    return dBar < 0.02 ? fmt::format("1/{:.0f}", 1.0 / dBar) : fmt::format("{:.3g}", dBar);
}

nlohmann::ordered_json SideAsJson(const std::vector<double>& vec)
{
    return {{"min", CalcMin(vec)}, {"median", CalcMedian(vec)}, {"rounds", vec}};
}

nlohmann::ordered_json RowAsJson(const CRowResult& result)
{
    nlohmann::ordered_json json{{"group", result.sGroup},
                                {"item", result.sItem},
                                {"n", result.nNum},
                                {"unit", result.sUnit.empty() ? "s" : result.sUnit},
                                {"product", SideAsJson(result.vecProduct)}};
    if (!result.vecPeer.empty())
    {
        json["peer"] = SideAsJson(result.vecPeer);
        json["peer"]["name"] = result.sPeer;
    }
    json["figure"] = result.CalcFigure();
    if (result.bar.dMust > 0.0)
        json["must"] = result.bar.dMust;
    if (result.bar.dAim > 0.0)
        json["aim"] = result.bar.dAim;
    json["same_result"] = result.bSame;
    if (result.eResult == BenchResult_Counts)
    {
        json["product"]["points"] = result.nProduct;
        json["peer"]["points"] = result.nPeer;
    }
    json["held"] = result.IsHeld();
    if (result.dFirstFigure > 0.0)
        json["first_figure"] = result.dFirstFigure;
    return json;
}

} // namespace

double CRowResult::CalcFigure() const
{
    const double dProduct = CalcMedian(vecProduct);
    if (sUnit.empty() && !vecPeer.empty())
        return dProduct / CalcMedian(vecPeer);
    return dPerUnits > 0.0 ? dProduct * 1e9 / dPerUnits : dProduct;
}

bool CRowResult::IsHeld() const
{
    return bSame && (bar.dMust <= 0.0 || CalcFigure() <= bar.dMust);
}

void CRowResult::BeginSecondRun()
{
    dFirstFigure = CalcFigure();
    vecProduct.clear();
    vecPeer.clear();
}

std::string CRowResult::FormatSide(const std::vector<double>& vec, std::uint64_t nCount) const
{
    if (vec.empty())
        return "-";
    if (!sUnit.empty())
        return fmt::format("{:.2f} {}", CalcMedian(vec), sUnit);
    std::string sText = FormatSeconds(CalcMin(vec)) + " / " + FormatSeconds(CalcMedian(vec));
    if (eResult == BenchResult_Counts)
        sText += fmt::format(", {} points", nCount);
    return sText;
}

std::string CRowResult::FormatFigure() const
{
    if (!sUnit.empty())
        return "-";
    return dPerUnits > 0.0 && vecPeer.empty() ? fmt::format("{:.2f} ns", CalcFigure())
                                              : FormatRatio(CalcFigure());
}

std::string CRowResult::FormatHeld() const
{
    if (!bSame)
        return "RESULTS DIFFER";
    if (bar.dMust <= 0.0)
        return "";
    const std::string sText = !IsHeld()                                    ? "NO"
                              : bar.dAim > 0.0 && CalcFigure() <= bar.dAim ? "yes, aim too"
                                                                           : "yes";
    return dFirstFigure > 0.0 ? sText + fmt::format(" (second run; {:.3g} before)", dFirstFigure) : sText;
}

std::string CRowResult::Format() const
{
    return fmt::format("| {} | {} | {} | {} | {} | {} | {} | {} | {} |", sItem, nNum,
                       FormatSide(vecProduct, nProduct), sPeer.empty() ? "-" : sPeer,
                       FormatSide(vecPeer, nPeer), FormatFigure(), FormatBar(bar.dMust), FormatBar(bar.dAim),
                       FormatHeld());
}

void PrintTable(const std::deque<CRowResult>& results, const std::vector<std::string>& vecNotes)
{
    std::printf(
        "| Item | N | product (min / median) | peer | peer (min / median) | ratio | must | aim | held |\n"
        "|---|---|---|---|---|---|---|---|---|\n");
    for (const CRowResult& result : results)
        if (!result.vecProduct.empty())
            std::printf("%s\n", result.Format().c_str());
    for (const std::string& sNote : vecNotes)
        std::printf("\n%s\n", sNote.c_str());
}

bool WriteJson(const std::string& sPath, const std::deque<CRowResult>& results,
               const std::vector<std::string>& vecNotes)
{
    nlohmann::ordered_json json{{"rows", nlohmann::ordered_json::array()}, {"notes", vecNotes}};
    for (const CRowResult& result : results)
        if (!result.vecProduct.empty())
            json["rows"].push_back(RowAsJson(result));
    std::ofstream stream(sPath);
    stream << json.dump(1) << '\n';
    return stream.good();
}
