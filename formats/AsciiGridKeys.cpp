#include <formats/AsciiGridKeys.h>

#include <algorithm>

namespace
{

constexpr std::string_view c_sShortNoData = "nodata";

/// Whatever the locale.
constexpr char ToLower(char c) noexcept
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsSameWord(std::string_view sOne, std::string_view sOther) noexcept
{
    return std::equal(sOne.begin(), sOne.end(), sOther.begin(), sOther.end(),
                      [](char cOne, char cOther) { return ToLower(cOne) == ToLower(cOther); });
}

template <class Is>
enumAsciiGridKey FindKey(Is is) noexcept
{
    const auto* const pFound = std::find_if(c_aAsciiGridKeys.begin(), c_aAsciiGridKeys.end(), is);
    return static_cast<enumAsciiGridKey>(pFound - c_aAsciiGridKeys.begin()); // AsciiGridKey_None at the end
}

} // namespace

enumAsciiGridKey FindTakenAsciiGridKey(std::string_view sWord) noexcept
{
    const enumAsciiGridKey eKey =
        FindKey([&](const CAsciiGridKey& key) { return key.sLower == sWord || key.sOther == sWord; });
    return eKey <= AsciiGridKey_NoData ? eKey : AsciiGridKey_None;
}

enumAsciiGridKey FindAsciiGridKey(std::string_view sWord) noexcept
{
    if (IsSameWord(sWord, c_sShortNoData))
        return AsciiGridKey_NoData;
    return FindKey([&](const CAsciiGridKey& key) { return IsSameWord(sWord, key.sLower); });
}

bool IsAsciiGridStart(std::string_view sFirstBytes) noexcept
{
    constexpr std::array c_aFirstKeys = {AsciiGridKey_NumCols, AsciiGridKey_NumRows, AsciiGridKey_XCorner,
                                         AsciiGridKey_XCentre};
    return std::any_of(c_aFirstKeys.begin(), c_aFirstKeys.end(),
                       [&](enumAsciiGridKey eKey)
                       {
                           const std::string_view sKey = c_aAsciiGridKeys[eKey].sLower;
                           return IsSameWord(sFirstBytes.substr(0, sKey.size()), sKey);
                       });
}
