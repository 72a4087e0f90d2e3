#include <zor0lang/StringTrimBoth.h>

#include <zor0lang/IsWhiteSpace.h>

#include <algorithm>

namespace zor
{

void StringTrimBoth(std::string& sText)
{
    const auto IsText = [](char c) { return !IsWhiteSpace(c); };
    sText.erase(std::find_if(sText.rbegin(), sText.rend(), IsText).base(), sText.end());
    sText.erase(sText.begin(), std::find_if(sText.begin(), sText.end(), IsText));
}

} // namespace zor
