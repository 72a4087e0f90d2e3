#include <formats/LasLayout.h>

#include <algorithm>

std::string LasLayout::GetText(const unsigned char* pBytes, CLasTextField field)
{
    std::string sText(reinterpret_cast<const char*>(pBytes + field.nPos), field.nSize);
    sText.resize(std::min(sText.size(), sText.find('\0')));
    sText.resize(sText.find_last_not_of(' ') + 1);
    std::replace_if(
        sText.begin(), sText.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return sText;
}
