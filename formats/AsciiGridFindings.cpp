#include <formats/AsciiGridFindings.h>

#include <formats/CAsciiGridMeaning.h>

std::vector<CFinding> FindAsciiGridFindings(const CAsciiGridMeaning& meaning)
{
    if (!meaning.FindTakenCause().empty() || !meaning.IsPlaceLost())
        return {};
    if (meaning.xCorner && meaning.yCorner)
        return {
            {"grid-zero-corner",
             "its corner is 0, 0 and no centre is given: such a corner counts as not given, and all points "
             "lie at 1.7e200, 1.7e200",
             true, ""}};
    return {
        {"grid-centre-only",
         "it gives the centre of its lower left cell (xllcenter, yllcenter), but no corner: all points lie "
         "at 1.7e200, 1.7e200",
         true, ""}};
}
