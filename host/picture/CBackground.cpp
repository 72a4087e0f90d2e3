#include <host/picture/CBackground.h>

#include <host/output/CFailure.h>

#include <fmt/format.h>

#include <charconv>

namespace zorcld
{

CBackground ParseBackground(const std::string& sText)
{
    CBackground background;
    if (sText == "dark")
        return background;
    background.bClear = sText == "transparent";
    if (background.bClear)
        return background;
    background.color = {250.0F, 250.0F, 248.0F};
    if (sText == "light")
        return background;
    unsigned int n = 0;
    const char* const pEnd = sText.data() + sText.size();
    const bool bSeven = sText.size() == 7 && sText[0] == '#';
    const auto result = std::from_chars(sText.data() + (bSeven ? 1 : 0), pEnd, n, 16);
    if (!bSeven || result.ec != std::errc() || result.ptr != pEnd)
        throw CUsageError(
            fmt::format("--background: '{}' is none of dark, light, transparent and #rrggbb", sText));
    background.color = {static_cast<float>(n >> 16U), static_cast<float>(n >> 8U & 255U),
                        static_cast<float>(n & 255U)};
    return background;
}

} // namespace zorcld
