#include <host/picture/AttributeColors.h>

#include <formats/LasClasses.h>

#include <algorithm>
#include <array>
#include <string>

namespace zorcld
{

namespace
{

/// By class, as far as classes have names.
constexpr std::array<CRgb, 23> c_classes = {
    {{212, 206, 208}, {153, 157, 150}, {204, 154, 60},  {166, 220, 40},  {30, 178, 98},   {16, 114, 74},
     {200, 66, 34},   {160, 52, 178},  {230, 206, 101}, {32, 102, 238},  {195, 96, 107},  {103, 99, 116},
     {149, 132, 255}, {0, 137, 170},   {255, 175, 142}, {208, 0, 61},    {229, 170, 215}, {30, 196, 246},
     {246, 86, 198},  {126, 160, 140}, {150, 110, 60},  {170, 210, 232}, {120, 124, 80}}};

/// Of the other classes, in turn.
constexpr std::array<CRgb, 6> c_others = {
    {{232, 150, 90}, {120, 150, 220}, {190, 190, 90}, {200, 120, 180}, {90, 170, 170}, {170, 130, 110}}};

/// By number, the last for all others too.
constexpr std::array<CRgb, 6> c_returns = {
    {{206, 204, 200}, {112, 148, 200}, {18, 166, 112}, {226, 190, 40}, {216, 96, 28}, {160, 40, 130}}};

CRgb CalcColor(std::uint16_t nAttribute, enumLasAttribute eAttribute)
{
    return eAttribute == LasAttribute_Class ? CalcClassColor(static_cast<std::uint8_t>(nAttribute))
                                            : CalcReturnColor(nAttribute);
}

std::string FormatAttribute(std::uint16_t nAttribute, enumLasAttribute eAttribute)
{
    if (eAttribute == LasAttribute_Class)
        return FormatLasClass(static_cast<std::uint8_t>(nAttribute));
    if (nAttribute == 0)
        return "not told";
    return std::to_string(std::min<std::size_t>(nAttribute, c_returns.size() - 1)) +
           (nAttribute + 1U < c_returns.size() ? "" : " and more");
}

} // namespace

CRgb CalcClassColor(std::uint8_t nClass)
{
    return nClass < c_classes.size() ? c_classes[nClass] : c_others[nClass % c_others.size()];
}

CRgb CalcReturnColor(std::uint16_t nReturn)
{
    return c_returns[std::min<std::size_t>(nReturn, c_returns.size() - 1)];
}

CRgb CalcGrey(double dShare)
{
    constexpr double c_dDarkest = 62.0;
    constexpr double c_dLightest = 208.0;
    const auto f = static_cast<float>(c_dDarkest + std::clamp(dShare, 0.0, 1.0) * (c_dLightest - c_dDarkest));
    return {f, f, f};
}

std::vector<CSwatch> MakeSwatches(const std::vector<std::uint32_t>& vecCounts, enumLasAttribute eAttribute)
{
    std::vector<CSwatch> vecSwatches;
    for (std::size_t n = 0; n < vecCounts.size(); ++n)
    {
        const auto nAttribute = static_cast<std::uint16_t>(n);
        if (vecCounts[n] == 0)
            continue;
        const std::string sText = FormatAttribute(nAttribute, eAttribute);
        if (vecSwatches.empty() || vecSwatches.back().sText != sText)
            vecSwatches.push_back({CalcColor(nAttribute, eAttribute), sText, 0});
        vecSwatches.back().nNumPnts += vecCounts[n];
    }
    return vecSwatches;
}

} // namespace zorcld
