#include <formats/CAsciiGridMeaning.h>

#include <formats/AsciiGridKeys.h>
#include <formats/CByteReader.h>
#include <formats/MakePrintable.h>
#include <formats/ParseDouble.h>

#include <algorithm>
#include <cmath>

namespace
{

constexpr std::size_t c_nMaxLine = 255;
constexpr const char* c_sSpace = " \t\r\v\f";

/// Of the keys that are no counts.
constexpr std::optional<double> CAsciiGridMeaning::*c_apFields[] = {
    &CAsciiGridMeaning::cellSize,  &CAsciiGridMeaning::xCentre,   &CAsciiGridMeaning::yCentre,
    &CAsciiGridMeaning::xCorner,   &CAsciiGridMeaning::yCorner,   &CAsciiGridMeaning::noData,
    &CAsciiGridMeaning::cellWidth, &CAsciiGridMeaning::cellHeight};

/// @return false at the end of the file, or at a line too long for a header.
bool ReadLine(CByteReader& reader, std::string& sLine)
{
    sLine.clear();
    int c = reader.Get();
    const bool bRead = c >= 0;
    for (; c >= 0 && c != '\n'; c = reader.Get())
    {
        sLine += static_cast<char>(c);
        if (sLine.size() > c_nMaxLine)
            return false;
    }
    return bRead;
}

std::int64_t CountFromNumber(double d)
{
    return d >= 1.0 && d < 9e15 ? static_cast<std::int64_t>(d) : 0;
}

void Set(CAsciiGridMeaning& meaning, enumAsciiGridKey eKey, double dValue)
{
    if (eKey == AsciiGridKey_NumRows)
        meaning.nNumRows = CountFromNumber(dValue);
    else if (eKey == AsciiGridKey_NumCols)
        meaning.nNumCols = CountFromNumber(dValue);
    else
        meaning.*c_apFields[eKey - AsciiGridKey_CellSize] = dValue;
}

/// @return false when the line has words, but no key of a header.
bool TakeLine(CAsciiGridMeaning& meaning, const std::string& sLine)
{
    const std::size_t nKey = sLine.find_first_not_of(c_sSpace);
    if (nKey == std::string::npos)
        return true;
    const std::size_t nKeyEnd = std::min(sLine.find_first_of(c_sSpace, nKey), sLine.size());
    const std::size_t nValue = std::min(sLine.find_first_not_of(c_sSpace, nKeyEnd), sLine.size());
    const std::size_t nEnd = sLine.find_last_not_of(c_sSpace) + 1;
    const std::string_view sText = sLine;
    const std::string_view sKey = sText.substr(nKey, nKeyEnd - nKey);
    const enumAsciiGridKey eKey = FindAsciiGridKey(sKey);
    if (eKey == AsciiGridKey_None)
        return false;
    bool bWhole = false;
    Set(meaning, eKey,
        ParseDouble(nValue < nEnd ? sText.substr(nValue, nEnd - nValue) : std::string_view(), bWhole));
    if (meaning.sOddKey.empty() && FindTakenAsciiGridKey(sKey) == AsciiGridKey_None)
        meaning.sOddKey = sKey;
    const std::string_view sSeparator = sText.substr(nKeyEnd, nValue - nKeyEnd);
    meaning.bTabs = meaning.bTabs || sSeparator.find(' ') == std::string_view::npos;
    return true;
}

/// @return whether only a tab separates two words of a line.
bool HasTabs(std::string_view sLine)
{
    std::size_t nEnd = sLine.find_last_not_of(c_sSpace) + 1; // 0: no word
    for (std::size_t n = std::min(sLine.find_first_not_of(c_sSpace), nEnd); n < nEnd;)
    {
        n = std::min(sLine.find_first_of(c_sSpace, n), nEnd);
        const std::size_t nNext = std::min(sLine.find_first_not_of(c_sSpace, n), nEnd);
        const std::string_view sSeparator = sLine.substr(n, nNext - n);
        if (sSeparator.find('\t') != sSeparator.npos && sSeparator.find(' ') == sSeparator.npos)
            return true;
        n = nNext;
    }
    return false;
}

std::string Spellings(const std::string& sOddKey)
{
    const CAsciiGridKey& key = c_aAsciiGridKeys[FindAsciiGridKey(sOddKey)];
    return "'" + std::string(key.sLower) + "' or '" + std::string(key.sOther) + "'";
}

} // namespace

CFileCause CAsciiGridMeaning::FindCause() const
{
    if (nNumRows < 1 || nNumCols < 1)
        return {FileCause_GridCounts, "not a grid: its header gives no number of rows and columns above 0"};
    const auto isSize = [](const std::optional<double>& size)
    { return size && *size > 0.0 && std::isfinite(*size); };
    if (!isSize(cellWidth ? cellWidth : cellSize) || !isSize(cellHeight ? cellHeight : cellSize))
        return {FileCause_GridCellSize, "its header gives no cell size above 0"};
    if ((!xCorner && !xCentre) || (!yCorner && !yCentre))
        return {FileCause_GridPlace,
                "its header gives neither the lower left corner nor the centre of that cell"};
    if (!std::isfinite(GetXCorner()) || !std::isfinite(GetYCorner()))
        return {FileCause_GridPlaceNumber, "its header gives a corner or a centre that is not a number"};
    return {};
}

CFileCause CAsciiGridMeaning::FindTakenCause() const
{
    if (nTakenDataOffset == nDataOffset)
        return {};
    CFileCause cause = FindDifference();
    if (nTakenDataOffset >= 0) // what it takes for data begins within the header
        cause.eCause = FileCause_None;
    return cause;
}

CFileCause CAsciiGridMeaning::FindDifference() const
{
    if (cellWidth || cellHeight)
        return {
            FileCause_GridCellWidth,
            "its header gives width and height of cells (dx, dy): only square cells (cellsize) are loaded"};
    if (!sOddKey.empty())
        return {FileCause_GridKey, "its header has the key '" + MakePrintableName(sOddKey) + "': only " +
                                       Spellings(sOddKey) + " is accepted"};
    if (bTabs)
        return {FileCause_GridTab, "a tab separates key and value in its header: only blanks do"};
    CFileCause cause = FindCause();
    if (!cause.empty() || nTakenDataOffset >= 0)
        return cause;
    if (!noData)
        return {FileCause_GridNoData, "its header has no line NODATA_value, which is required"};
    if (!CAsciiGridHeader::IsGiven(*noData))
        return {FileCause_GridNoDataNumber,
                "its no-data value is not a number, so its header is not complete"};
    if (!(xCentre && yCentre) && !(xCorner && yCorner))
        return {FileCause_GridPlaceMixed,
                "its header mixes corner and centre: both values of one of them are required"};
    return {FileCause_GridLine,
            "its header has a line without a key and a value, or a number that is missing or too large"};
}

CAsciiGridMeaning ReadAsciiGridMeaning(CByteReader& reader)
{
    CAsciiGridMeaning meaning;
    meaning.nDataOffset = reader.GetPos();
    bool bTaken = true; // the library wants more lines
    std::string sLine;
    while (ReadLine(reader, sLine))
    {
        bTaken = bTaken && meaning.taken.TakeLine(sLine) && !meaning.taken.bComplete;
        if (meaning.taken.bComplete && meaning.nTakenDataOffset < 0)
            meaning.nTakenDataOffset = reader.GetPos();
        if (!TakeLine(meaning, sLine))
            break;
        meaning.nDataOffset = reader.GetPos();
    }
    meaning.bTabsInRow = HasTabs(sLine);
    reader.SetPos(meaning.nDataOffset);
    return meaning;
}
