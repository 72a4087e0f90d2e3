#include <host/serve/ReadAttribute.h>

#include <host/files/LoadChosen.h>
#include <host/files/OpenInputFile.h>
#include <host/output/AttributeBytes.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/picture/AttributeColors.h>
#include <host/picture/FindAttributes.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace zorcld
{

namespace
{

using TJson = CJobs::TJson;

const unsigned char* FindRecord(const CPntArrays& arrays, std::int32_t i)
{
    return arrays.pPnts + static_cast<std::size_t>(i) * static_cast<std::size_t>(arrays.nStride);
}

/// Are the points of both in the same places, and in the same order?
bool HasSamePlaces(const CPntArrays& one, const CPntArrays& other)
{
    constexpr std::size_t c_nPlaceSize = 12;
    if (one.nNumPnts != other.nNumPnts || one.fOrgX != other.fOrgX || one.fOrgY != other.fOrgY ||
        one.fOrgZ != other.fOrgZ)
        return false;
    for (std::int32_t i = 0; i < one.nNumPnts; ++i)
        if (std::memcmp(FindRecord(one, i), FindRecord(other, i), c_nPlaceSize) != 0)
            return false;
    return true;
}

/// How attributes become places in a palette.
struct CShades
{
    enumLasAttribute eAttribute;
    CIntensityRange range; ///< of intensities

    std::uint8_t Find(std::uint16_t nAttribute) const
    {
        if (eAttribute != LasAttribute_Intensity)
            return static_cast<std::uint8_t>(std::min<std::uint16_t>(nAttribute, 255));
        const double dRange = range.dMax - range.dMin;
        const double dShare = dRange > 0.0 ? (nAttribute - range.dMin) / dRange : 0.5;
        return static_cast<std::uint8_t>(std::clamp(dShare, 0.0, 1.0) * 255.0 + 0.5);
    }

    CRgb CalcColor(int nShade) const
    {
        if (eAttribute == LasAttribute_Class)
            return CalcClassColor(static_cast<std::uint8_t>(nShade));
        if (eAttribute == LasAttribute_Return)
            return CalcReturnColor(static_cast<std::uint16_t>(nShade));
        return CalcGrey(nShade / 255.0);
    }
};

std::shared_ptr<const CAttribute> MakeAttribute(const CPntArrays& arrays, const CShades& shades,
                                                const std::string& sName)
{
    constexpr std::size_t c_nColorAt = 12;
    auto pAttribute = std::make_shared<CAttribute>();
    pAttribute->sName = sName;
    pAttribute->vecShades.resize(static_cast<std::size_t>(arrays.nNumPnts));
    for (std::int32_t i = 0; i < arrays.nNumPnts; ++i)
    {
        const unsigned char* const pBytes = FindRecord(arrays, i) + c_nColorAt;
        pAttribute->vecShades[static_cast<std::size_t>(i)] =
            shades.Find(AttributeFromBytes(pBytes[0], pBytes[1]));
    }
    for (int n = 0; n < 256; ++n)
        pAttribute->palette[static_cast<std::size_t>(n)] = BytesFromRgb(shades.CalcColor(n));
    return pAttribute;
}

TJson DescribeSwatches(const std::vector<CSwatch>& vecSwatches)
{
    TJson json = TJson::array();
    for (const CSwatch& swatch : vecSwatches)
    {
        const CRgbBytes color = BytesFromRgb(swatch.color);
        json.push_back({{"text", swatch.sText},
                        {"color", fmt::format("#{:02x}{:02x}{:02x}", color.r, color.g, color.b)},
                        {"points", swatch.nNumPnts}});
    }
    return json;
}

} // namespace

enumLasAttribute ParseAttribute(std::string_view sName)
{
    if (sName == "class")
        return LasAttribute_Class;
    if (sName == "intensity")
        return LasAttribute_Intensity;
    return sName == "return" ? LasAttribute_Return : LasAttribute_None;
}

CReadAttribute ReadAttribute(const CServed& served, const CCloudVersion& version, enumLasAttribute eAttribute,
                             const std::string& sName, const CJobs::TTell& tell)
{
    CConsole console;
    console.SetQuiet();
    console.SetWatcher(tell);
    CFileColors colors;
    CPntCld cloud(&colors);
    CLasWish wish;
    wish.eAttribute = eAttribute;
    static_cast<void>(LoadAsWished(cloud, *OpenInputFile(served.GetInput()), wish, console));
    const CPntArrays arrays = GetPntArrays(cloud);
    if (!arrays.bColor || !HasSamePlaces(arrays, version.GetArrays()))
        throw CFailure(served.GetFile(), "the points that it holds now are not those that are shown");
    const std::vector<std::uint32_t> vecCounts = CountAttributes(cloud, CQuery());
    const bool bIntensity = eAttribute == LasAttribute_Intensity;
    const CShades shades = {eAttribute, bIntensity ? FindIntensities(vecCounts) : CIntensityRange()};
    CReadAttribute result;
    result.pAttribute = MakeAttribute(arrays, shades, sName);
    result.legend["legend"] =
        bIntensity ? TJson::array() : DescribeSwatches(MakeSwatches(vecCounts, eAttribute));
    result.legend["min"] = shades.range.dMin;
    result.legend["max"] = shades.range.dMax;
    return result;
}

} // namespace zorcld
