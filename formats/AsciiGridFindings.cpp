#include <formats/AsciiGridFindings.h>

#include <formats/CAsciiGridMeaning.h>

std::vector<CFinding> FindAsciiGridFindings(const CAsciiGridMeaning& meaning)
{
    std::vector<CFinding> vecFindings;
    if (!meaning.FindTakenCause().empty())
        return vecFindings;
    if (meaning.bTabsInRow)
        vecFindings.push_back(FindAsciiGridTabs());
    if (meaning.IsPlaceLost() && meaning.xCorner && meaning.yCorner)
        vecFindings.push_back(
            {"grid-zero-corner",
             "its corner is 0, 0 and no centre is given: such a corner counts as not given, and all points "
             "lie at 1.7e200, 1.7e200",
             true, ""});
    else if (meaning.IsPlaceLost())
        vecFindings.push_back(
            {"grid-centre-only",
             "it gives the centre of its lower left cell (xllcenter, yllcenter), but no corner: all points "
             "lie at 1.7e200, 1.7e200",
             true, ""});
    return vecFindings;
}

CFinding FindAsciiGridTabs()
{
    return {"grid-tabs", "tabs separate its values: only the first value of such a run is taken", true, ""};
}
