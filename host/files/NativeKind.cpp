#include <host/files/FileKinds.h>
#include <host/files/NativeLayout.h>

#include <fmt/format.h>

#include <algorithm>

namespace zorcld
{

namespace
{

constexpr std::int64_t c_nHead = 27; // up to the number of points

std::string FindNativeCause(const std::string& sPath)
{
    const CNativeLayout layout = ReadNativeLayout(sPath);
    if (layout.nFileSize < 5)
        return fmt::format("not a native cloud file: it has {} bytes only", layout.nFileSize);
    if (layout.nType != 0 && layout.nType != 1)
        return fmt::format("{}: its point type is {}, 0 and 1 are known",
                           layout.bMarks ? "cannot be read" : "not a native cloud file", layout.nType);
    if (!layout.bOrigin)
        return "its origin is no finite number: it is damaged";
    return {};
}

CFinding FindTreeDamage(const CNativeLayout& layout)
{
    const std::string sText =
        fmt::format("its octree is {}: {} of {} points are outside it, found by a query of all points only",
                    layout.bTreeWhole ? "damaged" : "cut off or damaged", layout.nNumHeld - layout.nNumInTree,
                    layout.nNumHeld);
    return {"native-octree", sText, true, ""};
}

CFileFacts FindNativeFacts(const std::string& sPath)
{
    const CNativeLayout layout = ReadNativeLayout(sPath);
    CFileFacts facts;
    facts.nAnnounced = std::max<std::int64_t>(layout.nNumPnts, 0);
    facts.nHeld = layout.nNumHeld;
    facts.bDuplicates = false; // they were removed before it was written
    if (!layout.bMarks)
        facts.vecFindings.push_back(
            {"native-marks", "it does not begin as a native cloud file does, but is read as one", false, ""});
    if (layout.nFileSize < c_nHead)
        facts.vecFindings.push_back(
            {"native-empty",
             fmt::format("it ends after {} bytes, before its points: loads as none", layout.nFileSize), false,
             ""});
    else if (layout.nNumPnts < 0)
        facts.vecFindings.push_back({"native-count",
                                     fmt::format("it announces {} points: loads as none", layout.nNumPnts),
                                     false, ""});
    else if (layout.nNumHeld < layout.nNumPnts)
        facts.vecFindings.push_back({"native-count",
                                     fmt::format("it announces {} points, but has room for {}: the others "
                                                 "are lost",
                                                 layout.nNumPnts, layout.nNumHeld),
                                     false, ""});
    if (layout.nNumHeld > 0 && layout.nNumInTree < layout.nNumHeld)
        facts.vecFindings.push_back(FindTreeDamage(layout));
    return facts;
}

} // namespace

const CFileKind c_kindNative = {PntCldFile_Native,
                                "native",
                                "native cloud file",
                                {"cld"},
                                [](std::string_view sFirst)
                                { return sFirst.substr(0, 5) == std::string_view(":\1\1\0\0", 5); },
                                FindNativeFacts,
                                FindNativeCause};

} // namespace zorcld
