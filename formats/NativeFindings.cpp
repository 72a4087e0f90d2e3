#include <formats/NativeFindings.h>

#include <formats/Compact.h>
#include <formats/CountOf.h>
#include <formats/NativeFacts.h>
#include <formats/NativeFormat.h>

#include <array>
#include <cstdio>

namespace
{

std::string FormatExtents(const CNativeTreeHeader& header)
{
    std::array<char, 64> acText{};
    std::snprintf(acText.data(), acText.size(), "%.10g x %.10g x %.10g", header.anExtent[0] / c_dCompactScale,
                  header.anExtent[1] / c_dCompactScale, header.anExtent[2] / c_dCompactScale);
    return acText.data();
}

} // namespace

std::vector<CFinding> FindNativeFindings(const CNativeFacts& native)
{
    std::vector<CFinding> vecFindings;
    const auto add = [&](const char* pCode, const std::string& sText, bool bConvert = false) {
        vecFindings.push_back({pCode, sText, bConvert, ""});
    };
    const std::string sAnnounced = "it announces " + CountOf(native.header.nNumPnts, "point");
    const std::string sHeld = std::to_string(native.nNumHeld);
    if (!native.header.bPrologue)
        add("native-marks", "it does not begin as a native cloud file does, but is read as one");
    if (native.header.nSize < c_nNativeHeaderSize)
        add("native-empty",
            "it ends after " + CountOf(native.nFileSize, "byte") + ", before its points: loads as none");
    else if (native.header.IsTypeKnown() && native.header.nNumPnts < 0)
        add("native-count", sAnnounced + ": loads as none");
    else if (native.header.IsTypeKnown() && native.nNumHeld < native.header.nNumPnts)
        add("native-count", sAnnounced + ", but has room for " + sHeld + ": the others are lost");
    const std::int64_t nOutside = native.nNumHeld - native.nNumInTree;
    if (native.nNumHeld > 0 && nOutside > 0)
        add("native-octree",
            std::string("its octree is ") + (native.bTreeWhole ? "damaged" : "cut off or damaged") + ": " +
                std::to_string(nOutside) + " of " + CountOf(native.nNumHeld, "point") +
                OneOrMany(nOutside, " is", " are") + " outside it, found by a query of all points only",
            true);
    if (native.nNumHeld > 0 && native.bTreeHeader && !native.treeHeader.IsPossible())
        add("native-box",
            "its octree gives the points extents of " + FormatExtents(native.treeHeader) +
                " units, which no points have: queries go astray",
            true);
    return vecFindings;
}

CFinding MakeNativeBoxFinding()
{
    return {"native-box", "its octree says that the points lie elsewhere than they do: queries go astray",
            true, ""};
}

CFinding MakeNativeCountFinding(std::int64_t nAnnounced, std::int64_t nNumBeforeTree)
{
    return {"native-count",
            "it announces " + CountOf(nAnnounced, "point") + ", but its octree begins behind " +
                std::to_string(nNumBeforeTree) +
                ", which it fits: bytes of it are taken for the other points, and queries go astray",
            true, ""};
}
