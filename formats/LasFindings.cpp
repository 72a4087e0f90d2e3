#include <formats/LasFindings.h>

#include <formats/CLasGuard.h>
#include <formats/CloudLimits.h>
#include <formats/CountOf.h>

namespace
{

/// A scale that was never set: the coordinates of such an axis are lost.
void FindZeroScales(const CLasHeader& header, std::vector<CFinding>& vecFindings)
{
    std::string sAxes;
    for (std::size_t i = 0; i < header.adScale.size(); ++i)
        if (header.adScale[i] == 0.0)
            sAxes += std::string(sAxes.empty() ? "" : ", ") + "xyz"[i];
    if (!sAxes.empty())
        vecFindings.push_back({"las-scale",
                               "its header gives a scale of 0 for " + sAxes +
                                   ": all points have the same place there, where they lay cannot be known",
                               false, ""});
}

} // namespace

std::vector<CFinding> FindLasFindings(const CLasGuard& guard, bool bAsMeant)
{
    std::vector<CFinding> vecFindings;
    const CLasHeader& header = guard.GetHeader();
    const std::int64_t nHeld = header.CalcNumHeld();
    const std::int64_t nLeast = guard.GetLeastNumPnts();
    const std::string sAnnounces =
        "its header announces " + CountOf(header.GetNumAnnounced(), "point") + ", ";
    if (nHeld >= 0 && nHeld < header.GetNumAnnounced())
        vecFindings.push_back(
            {"las-count",
             sAnnounces + "but " + std::to_string(nHeld) + OneOrMany(nHeld, " is", " are") +
                 " there: it is cut off" +
                 (nHeld > 0 ? ", and a point at the first one's place comes for the missing ones" : ""),
             bAsMeant && nHeld > 0, ""});
    if (nLeast > header.GetNumAnnounced())
        vecFindings.push_back(
            FindUntakenPnts(header.GetNumAnnounced(), nLeast, guard.GetPosEnd() == 0, bAsMeant));
    else if (header.GetNumAnnounced() == 0)
        vecFindings.push_back({"las-empty", "it holds no points", false, ""});
    if (header.GetNumAnnounced() > c_nMaxCloudPnts)
        vecFindings.push_back({"las-too-many",
                               sAnnounces + "a cloud holds " + std::to_string(c_nMaxCloudPnts) + " at most",
                               false, "split it into tiles"});
    if (header.GetNumAnnounced() > 0)
        FindZeroScales(header, vecFindings);
    return vecFindings;
}

CFinding FindUntakenColors(const CLasHeader& header, bool bAsMeant)
{
    return {"las-color",
            "its colours are not taken, since its point format is " + std::to_string(header.nFormat) +
                ": those of formats 2, 3 and 5 are",
            bAsMeant, ""};
}

CFinding FindUntakenPnts(std::int64_t nAnnounced, std::int64_t nNumThere, bool bExact, bool bAsMeant)
{
    return {"las-count",
            "its header announces " + CountOf(nAnnounced, "point") + ", but " + (bExact ? "" : "at least ") +
                std::to_string(nNumThere) + OneOrMany(nNumThere, " is", " are") +
                " there: those behind the announced ones are not read",
            bAsMeant, ""};
}

CFinding FindBytesBehind(std::int64_t nAnnounced, std::int64_t nNumBytes)
{
    return {"las-bytes",
            "its header announces " + CountOf(nAnnounced, "point") + ", and " + CountOf(nNumBytes, "byte") +
                OneOrMany(nNumBytes, " follows", " follow") +
                " them: these may be more points, which its kind of compression does not tell",
            false, ""};
}

CFinding FindTakenPnts(std::int64_t nAnnounced, std::int64_t nNumThere)
{
    return {"las-count",
            "its header announces " + CountOf(nAnnounced, "point") + ", but " + std::to_string(nNumThere) +
                OneOrMany(nNumThere, " is", " are") + " there: all of them are taken",
            false, ""};
}

CFinding FindUnreadPnts(std::int64_t nAnnounced, std::int64_t nNumRead, bool bAsMeant)
{
    return {"las-count",
            "its header announces " + CountOf(nAnnounced, "point") + ", but " + std::to_string(nNumRead) +
                " could be read: it is damaged or cut off",
            bAsMeant && nNumRead > 0, "", true};
}
