#include <formats/FindFileKind.h>

#include <formats/AsciiGridKeys.h>
#include <formats/LasLayout.h>
#include <formats/NativeFormat.h>

#include <algorithm>

namespace
{

template <class T>
bool StartsWith(std::string_view sBytes, const T& acMark) noexcept
{
    return sBytes.size() >= acMark.size() &&
           std::equal(acMark.begin(), acMark.end(), sBytes.begin(),
                      [](auto c, char cThere) { return static_cast<char>(c) == cThere; });
}

} // namespace

enumPntCldFile FindFileKind(std::string_view sFirstBytes) noexcept
{
    if (StartsWith(sFirstBytes, c_acNativePrologue))
        return PntCldFile_Native;
    if (StartsWith(sFirstBytes, std::string_view("ply\n")) ||
        StartsWith(sFirstBytes, std::string_view("ply\r")))
        return PntCldFile_Ply;
    if (StartsWith(sFirstBytes, LasLayout::c_acMagic))
        return PntCldFile_Las;
    return IsAsciiGridStart(sFirstBytes) ? PntCldFile_AsciiGrid : static_cast<enumPntCldFile>(-1);
}
