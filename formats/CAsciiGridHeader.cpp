#include <formats/CAsciiGridHeader.h>

#include <formats/CAsciiGridText.h>
#include <formats/Compact.h>
#include <zor0lang/DoubleDaString.h>
#include <zor0lang/LongDaStringNullZero.h>
#include <zor0lang/StringTrimBoth.h>

namespace
{

/// The two spellings of a key; any other is unknown.
template <class Field>
class CKey
{
public:
    bool Is(const std::string& sKey) const { return sKey == m_pLower || sKey == m_pOther; }

    const char* m_pLower;
    const char* m_pOther;
    Field CAsciiGridHeader::*m_pField;
};

constexpr CKey<std::int32_t> c_aCountKeys[] = {
    {"nrows", "NROWS", &CAsciiGridHeader::m_nNumRows},
    {"ncols", "NCOLS", &CAsciiGridHeader::m_nNumCols},
};

constexpr CKey<double> c_aNumberKeys[] = {
    {"cellsize", "CELLSIZE", &CAsciiGridHeader::m_dCellSize},
    {"xllcenter", "XLLCENTER", &CAsciiGridHeader::m_dXCentre},
    {"yllcenter", "YLLCENTER", &CAsciiGridHeader::m_dYCentre},
    {"xllcorner", "XLLCORNER", &CAsciiGridHeader::m_dXCorner},
    {"yllcorner", "YLLCORNER", &CAsciiGridHeader::m_dYCorner},
    {"NODATA_value", "NODATA_VALUE", &CAsciiGridHeader::m_dNoData},
};

/// False for the start value and for what is not a number.
bool IsGiven(double d) noexcept
{
    return d <= zor::geom::c_dUndefined / 2;
}

} // namespace

bool CAsciiGridHeader::Read(CAsciiGridText& text)
{
    std::string sLine;
    while (text.GetLine(sLine))
    {
        if (sLine.empty())
            continue;
        if (!AddLine(sLine))
            return false;
        if (IsComplete())
        {
            DeriveCorner();
            return true;
        }
    }
    return false;
}

bool CAsciiGridHeader::AddLine(std::string& sLine)
{
    zor::StringTrimBoth(sLine);
    const std::size_t nSpace = sLine.find(' ');
    if (nSpace == std::string::npos)
        return false; // a key without a value; or one with a tab behind it, which does not separate
    std::string sValue = sLine.substr(nSpace + 1);
    zor::StringTrimBoth(sValue);
    sLine.resize(nSpace);
    return Set(sLine, sValue);
}

bool CAsciiGridHeader::Set(const std::string& sKey, const std::string& sValue)
{
    for (const CKey<std::int32_t>& key : c_aCountKeys)
    {
        if (!key.Is(sKey))
            continue;
        this->*key.m_pField = SaturateToInt32(std::int64_t{zor::LongDaStringNullZero(sValue)});
        return true;
    }
    for (const CKey<double>& key : c_aNumberKeys)
    {
        if (!key.Is(sKey))
            continue;
        this->*key.m_pField = zor::DoubleDaString(sValue);
        return true;
    }
    return false;
}

bool CAsciiGridHeader::IsComplete() const noexcept
{
    return m_nNumRows >= 1 && m_nNumCols >= 1 && m_dCellSize > 0.0 && IsGiven(m_dCellSize) &&
           ((IsGiven(m_dXCentre) && IsGiven(m_dYCentre)) || (IsGiven(m_dXCorner) && IsGiven(m_dYCorner))) &&
           IsGiven(m_dNoData);
}

void CAsciiGridHeader::DeriveCorner() noexcept
{
    const bool bCornerZero = m_dXCorner == 0.0 && m_dYCorner == 0.0;
    const bool bCentreZero = m_dXCentre == 0.0 && m_dYCentre == 0.0;
    if (!bCornerZero || bCentreZero)
        return;
    m_dXCorner = m_dXCentre - m_dCellSize * 0.5;
    m_dYCorner = m_dYCentre - m_dCellSize * 0.5;
}
