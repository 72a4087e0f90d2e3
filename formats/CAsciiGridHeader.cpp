#include <formats/CAsciiGridHeader.h>

#include <formats/AsciiGridKeys.h>
#include <formats/CAsciiGridText.h>
#include <formats/Compact.h>
#include <zor0lang/DoubleDaString.h>
#include <zor0lang/LongDaStringNullZero.h>
#include <zor0lang/StringTrimBoth.h>

namespace
{

/// Of the keys that are no counts.
constexpr double CAsciiGridHeader::*c_apFields[] = {&CAsciiGridHeader::dCellSize, &CAsciiGridHeader::dXCentre,
                                                    &CAsciiGridHeader::dYCentre,  &CAsciiGridHeader::dXCorner,
                                                    &CAsciiGridHeader::dYCorner,  &CAsciiGridHeader::dNoData};

void Set(CAsciiGridHeader& header, enumAsciiGridKey eKey, const std::string& sValue)
{
    const auto count = [&] { return SaturateToInt32(std::int64_t{zor::LongDaStringNullZero(sValue)}); };
    if (eKey == AsciiGridKey_NumRows)
        header.nNumRows = count();
    else if (eKey == AsciiGridKey_NumCols)
        header.nNumCols = count();
    else
        header.*c_apFields[eKey - AsciiGridKey_CellSize] = zor::DoubleDaString(sValue);
}

bool HasAll(const CAsciiGridHeader& header) noexcept
{
    const auto isGiven = CAsciiGridHeader::IsGiven;
    return header.nNumRows >= 1 && header.nNumCols >= 1 && header.dCellSize > 0.0 &&
           isGiven(header.dCellSize) &&
           ((isGiven(header.dXCentre) && isGiven(header.dYCentre)) ||
            (isGiven(header.dXCorner) && isGiven(header.dYCorner))) &&
           isGiven(header.dNoData);
}

void DeriveCorner(CAsciiGridHeader& header) noexcept
{
    const bool bCornerZero = header.dXCorner == 0.0 && header.dYCorner == 0.0;
    const bool bCentreZero = header.dXCentre == 0.0 && header.dYCentre == 0.0;
    if (!bCornerZero || bCentreZero)
        return;
    header.dXCorner = header.dXCentre - header.dCellSize * 0.5;
    header.dYCorner = header.dYCentre - header.dCellSize * 0.5;
}

} // namespace

bool CAsciiGridHeader::Read(CAsciiGridText& text)
{
    std::string sLine;
    while (!bComplete && text.GetLine(sLine))
        if (!TakeLine(sLine))
            return false;
    return bComplete;
}

bool CAsciiGridHeader::TakeLine(std::string sLine)
{
    if (sLine.empty() || sLine == "\r")
        return true;
    zor::StringTrimBoth(sLine);
    const std::size_t nSpace = sLine.find(' ');
    if (nSpace == std::string::npos)
        return false; // a key without a value; or one with a tab behind it, which does not separate
    std::string sValue = sLine.substr(nSpace + 1);
    zor::StringTrimBoth(sValue);
    sLine.resize(nSpace);
    const enumAsciiGridKey eKey = FindTakenAsciiGridKey(sLine);
    if (eKey == AsciiGridKey_None)
        return false;
    Set(*this, eKey, sValue);
    bComplete = HasAll(*this);
    if (bComplete)
        DeriveCorner(*this);
    return true;
}
