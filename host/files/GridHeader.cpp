#include <formats/ParseDouble.h>
#include <host/files/CByteReader.h>
#include <host/files/GridHeader.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nMaxLine = 255;

struct CKey
{
    const char* pLower;
    const char* pOther; ///< the other spelling that the library takes
    std::optional<double> CGridHeader::*pField;
};

constexpr std::array<CKey, 6> c_keys = {{{"cellsize", "CELLSIZE", &CGridHeader::cellSize},
                                         {"xllcenter", "XLLCENTER", &CGridHeader::xCentre},
                                         {"yllcenter", "YLLCENTER", &CGridHeader::yCentre},
                                         {"xllcorner", "XLLCORNER", &CGridHeader::xCorner},
                                         {"yllcorner", "YLLCORNER", &CGridHeader::yCorner},
                                         {"NODATA_value", "NODATA_VALUE", &CGridHeader::noData}}};

std::string Lower(std::string sText)
{
    std::transform(sText.begin(), sText.end(), sText.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return sText;
}

struct CHeaderLine
{
    std::string sKey;
    std::string sSeparator;
    std::string sValue;
    bool bEmpty = false;
};

/// @return false at the end of the file, or at a line too long for a header.
bool ReadHeaderLine(CByteReader& reader, CHeaderLine& line)
{
    std::string sText;
    int c = reader.Get();
    const bool bRead = c >= 0;
    for (; c >= 0 && c != '\n'; c = reader.Get())
    {
        sText += static_cast<char>(c);
        if (sText.size() > c_nMaxLine)
            return false;
    }
    constexpr const char* c_sSpace = " \t\r\v\f";
    const std::size_t nKey = sText.find_first_not_of(c_sSpace);
    line = CHeaderLine();
    line.bEmpty = nKey == std::string::npos;
    if (line.bEmpty)
        return bRead;
    const std::size_t nKeyEnd = std::min(sText.find_first_of(c_sSpace, nKey), sText.size());
    const std::size_t nValue = std::min(sText.find_first_not_of(c_sSpace, nKeyEnd), sText.size());
    const std::size_t nEnd = sText.find_last_not_of(c_sSpace) + 1;
    line.sKey = sText.substr(nKey, nKeyEnd - nKey);
    line.sSeparator = sText.substr(nKeyEnd, nValue - nKeyEnd);
    line.sValue = nValue < nEnd ? sText.substr(nValue, nEnd - nValue) : "";
    return true;
}

std::int64_t ToCount(double d)
{
    return d >= 1.0 && d < 9e15 ? static_cast<std::int64_t>(d) : 0;
}

/// @return false when the line has no key of a header.
bool TakeLine(const CHeaderLine& line, CGridHeader& header)
{
    const std::string sKey = Lower(line.sKey);
    bool bWhole = false;
    const double dValue = ParseDouble(line.sValue, bWhole);
    const auto take = [&](bool bKnownSpelling)
    {
        if (!bKnownSpelling)
            header.vecOddKeys.push_back(line.sKey);
        header.bTabs = header.bTabs || line.sSeparator.find(' ') == std::string::npos;
        header.bBadValue = header.bBadValue || !bWhole;
        return true;
    };
    if (sKey == "nrows" || sKey == "ncols")
    {
        (sKey == "nrows" ? header.nNumRows : header.nNumCols) = ToCount(dValue);
        return take(line.sKey == sKey || line.sKey == (sKey == "nrows" ? "NROWS" : "NCOLS"));
    }
    for (const CKey& key : c_keys)
    {
        if (sKey != Lower(key.pLower) && !(sKey == "nodata" && key.pField == &CGridHeader::noData))
            continue;
        header.*key.pField = dValue;
        return take(line.sKey == key.pLower || line.sKey == key.pOther);
    }
    return false;
}

std::string Spellings(const std::string& sOddKey)
{
    std::string sKey = Lower(sOddKey);
    if (sKey == "nodata" || sKey == "nodata_value")
        return "'NODATA_value' or 'NODATA_VALUE'";
    std::string sUpper = sKey;
    std::transform(sUpper.begin(), sUpper.end(), sUpper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return fmt::format("'{}' or '{}'", sKey, sUpper);
}

} // namespace

std::string CGridHeader::FindCause() const
{
    if (nNumRows < 1 || nNumCols < 1)
        return "not a grid: its header gives no number of rows and columns above 0";
    if (!cellSize || !(*cellSize > 0.0) || !std::isfinite(*cellSize))
        return "its header gives no cell size above 0";
    if ((!xCorner && !xCentre) || (!yCorner && !yCentre))
        return "its header gives neither the lower left corner nor the centre of that cell";
    if (!std::isfinite(GetXCorner()) || !std::isfinite(GetYCorner()))
        return "its header gives a corner or a centre that is no number";
    return {};
}

std::string CGridHeader::FindLibraryCause() const
{
    if (!vecOddKeys.empty())
        return fmt::format("its header has the key '{}': only {} is accepted", vecOddKeys[0],
                           Spellings(vecOddKeys[0]));
    if (bTabs)
        return "a tab separates key and value in its header: only blanks do";
    std::string sCause = FindCause();
    if (!sCause.empty())
        return sCause;
    if (!noData)
        return "its header has no line NODATA_value, which is required";
    if (!(*noData < 1e199))
        return "its no-data value is no number, so its header is not complete";
    if (!(xCentre && yCentre) && !(xCorner && yCorner))
        return "its header mixes corner and centre: both values of one of them are required";
    return {};
}

bool CGridHeader::IsPlaceLost() const
{
    const bool bCorner = xCorner && yCorner;
    const bool bZeroCorner = bCorner && *xCorner == 0.0 && *yCorner == 0.0;
    return !bCorner || (bZeroCorner && !(xCentre && yCentre));
}

CGridHeader ReadGridHeader(CByteReader& reader)
{
    CGridHeader header;
    CHeaderLine line;
    header.nPosData = reader.GetPos();
    while (ReadHeaderLine(reader, line))
    {
        if (!line.bEmpty && !TakeLine(line, header))
            break;
        header.nPosData = reader.GetPos();
    }
    reader.SetPos(header.nPosData);
    return header;
}

} // namespace zorcld
