#include <formats/MakePrintable.h>

#include <algorithm>

namespace
{

constexpr std::size_t c_nMaxName = 80; // characters

/// Length of the UTF-8 sequence that begins at `i`; 0 if there is none.
std::size_t FindSequence(std::string_view sText, std::size_t i)
{
    const auto byte = [&](std::size_t n)
    { return n < sText.size() ? static_cast<unsigned char>(sText[n]) : static_cast<unsigned char>(0); };
    const unsigned char uc = byte(i);
    const std::size_t nLength = uc < 0x80                 ? 1
                                : uc >= 0xC2 && uc < 0xE0 ? 2
                                : uc >= 0xE0 && uc < 0xF0 ? 3
                                : uc >= 0xF0 && uc < 0xF5 ? 4
                                                          : 0;
    for (std::size_t n = 1; n < nLength; ++n)
        if ((byte(i + n) & 0xC0U) != 0x80)
            return 0;
    const unsigned char ucNext = byte(i + 1);
    const bool bBad = (uc == 0xE0 && ucNext < 0xA0) ||
                      (uc == 0xED && ucNext >= 0xA0) ||                                // too long, surrogates
                      (uc == 0xF0 && ucNext < 0x90) || (uc == 0xF4 && ucNext >= 0x90); // beyond the last
    return bBad ? 0 : nLength;
}

/// Those of one byte, and those of two, which terminals may obey as well.
bool IsControl(std::string_view sCharacter)
{
    const auto uc = static_cast<unsigned char>(sCharacter.front());
    return uc < 0x20 || uc == 0x7F || (uc == 0xC2 && static_cast<unsigned char>(sCharacter[1]) < 0xA0);
}

std::string Replace(std::string_view sText, bool bNoUtf8, std::size_t nMaxCharacters)
{
    std::string sPrintable;
    std::size_t nNum = 0;
    for (std::size_t i = 0; i < sText.size(); ++nNum)
    {
        if (nNum == nMaxCharacters)
            return sPrintable + "\u2026";
        const std::size_t nLength = FindSequence(sText, i);
        const std::string_view sCharacter = sText.substr(i, std::max<std::size_t>(nLength, 1));
        if (nLength == 0 ? bNoUtf8 : IsControl(sCharacter))
            sPrintable += '?';
        else
            sPrintable += sCharacter;
        i += sCharacter.size();
    }
    return sPrintable;
}

} // namespace

std::string MakePrintable(std::string_view sText)
{
    return Replace(sText, true, std::string_view::npos);
}

std::string MakePrintableName(std::string_view sName)
{
    return Replace(sName, true, c_nMaxName);
}

std::string ReplaceControls(std::string_view sText)
{
    return Replace(sText, false, std::string_view::npos);
}
