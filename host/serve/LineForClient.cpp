#include <host/serve/LineForClient.h>

#include <algorithm>
#include <cctype>
#include <string_view>

namespace zorcld
{

std::string LineForClient(const std::string& sText)
{
    constexpr std::string_view c_sDashes = "--";
    constexpr std::string_view c_sUnitScale = "unit-scale"; // here "scale"
    std::string sLine;
    for (std::size_t i = 0; i < sText.size(); ++i)
    {
        const bool bBegins = i == 0 || sText[i - 1] == ' ' || sText[i - 1] == '(';
        const bool bOption = bBegins && sText.compare(i, 2, c_sDashes) == 0 && i + 2 < sText.size() &&
                             std::islower(static_cast<unsigned char>(sText[i + 2])) != 0;
        if (!bOption)
        {
            sLine += sText[i];
            continue;
        }
        ++i;
        if (sText.compare(i + 1, c_sUnitScale.size(), c_sUnitScale) == 0)
            i += c_sUnitScale.find('-') + 1;
    }
    std::replace_if(
        sLine.begin(), sLine.end(), [](unsigned char c) { return c < ' ' || c == 127; }, ' ');
    return sLine;
}

} // namespace zorcld
