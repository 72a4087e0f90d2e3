#include <formats/CLasHeader.h>

#include <formats/CSizedFile.h>
#include <formats/CountOf.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace
{

std::string Text(std::int64_t n)
{
    return std::to_string(n);
}

} // namespace

CFileCause CLasHeader::Read(CSizedFile& file)
{
    *this = CLasHeader();
    nFileSize = file.GetSize();
    std::array<unsigned char, LasLayout::c_nMaxHeaderSize> acBytes{}; // what lies behind the file's end is 0
    const auto nSize = static_cast<std::size_t>(
        std::clamp<std::int64_t>(nFileSize, 0, static_cast<std::int64_t>(acBytes.size())));
    if (nSize < LasLayout::c_acMagic.size() || !file.ReadAt(0, acBytes.data(), nSize) ||
        std::memcmp(acBytes.data(), LasLayout::c_acMagic.data(), LasLayout::c_acMagic.size()) != 0)
        return {FileCause_LasFirstBytes, "not a LAS file: it does not begin with LASF"};
    TakeFacts(acBytes.data());
    if (nSize < LasLayout::c_nMinHeaderSize)
        return {FileCause_LasCutOff,
                "it is cut off: it ends within the header, after " + Text(nFileSize) + " bytes"};
    const bool bKnown = nMajor == LasLayout::c_nMajorKnown;
    if (bKnown && nMinor >= LasLayout::c_nMinorOfWaveforms &&
        nHeaderSize >= CalcMinHeaderSize(LasLayout::c_nMinorOfWaveforms))
        nPosWaveforms = LasLayout::Get(acBytes.data(), LasLayout::c_nPosWaveforms);
    if (bKnown && nMinor >= LasLayout::c_nMinorOfLaterCounts &&
        nHeaderSize >= CalcMinHeaderSize(LasLayout::c_nMinorOfLaterCounts))
        TakeLaterCounts(acBytes.data());
    const CFileCause cause = FindWrongPlace();
    return cause.empty() ? FindWrongLayout() : cause;
}

/// Takes what every version has.
void CLasHeader::TakeFacts(const unsigned char* pBytes)
{
    using namespace LasLayout;
    nMajor = Get(pBytes, c_nMajor);
    bWkt = (Get(pBytes, c_nEncoding) & c_nWktMark) != 0;
    nMinor = Get(pBytes, c_nMinor);
    sSystem = GetText(pBytes, c_sSystem);
    sSoftware = GetText(pBytes, c_sSoftware);
    nDay = Get(pBytes, c_nDay);
    nYear = Get(pBytes, c_nYear);
    nHeaderSize = Get(pBytes, c_nHeaderSize);
    nPosPnts = Get(pBytes, c_nPosPnts);
    nNumRecords = Get(pBytes, c_nNumRecords);
    const unsigned nMarked = Get(pBytes, c_nFormat);
    nFormat = static_cast<int>(nMarked & c_nFormatMask);
    bCompressed = (nMarked & c_nFormatMask) != nMarked;
    nPntSize = Get(pBytes, c_nPntSize);
    nNumLegacy = Get(pBytes, c_nNumLegacy);
    nNumPnts = nNumLegacy;
    for (std::size_t i = 0; i < c_nNumReturnsLegacy; ++i)
        vecNumByReturn.push_back(Get(pBytes, c_nNumByReturnLegacy, i));
    for (std::size_t i = 0; i < adScale.size(); ++i)
    {
        adScale[i] = Get(pBytes, c_dScale, i);
        adOffset[i] = Get(pBytes, c_dOffset, i);
        adMax[i] = Get(pBytes, c_dMax, 2 * i);
        adMin[i] = Get(pBytes, c_dMin, 2 * i);
    }
}

/// @return bytes of the header at least, of a minor version. Of another major version nothing is known: the
/// reading library takes what every version has.
int CLasHeader::CalcMinHeaderSize(int nMinorOfSize) const
{
    const auto& anSize = LasLayout::c_anHeaderSize;
    if (nMajor != LasLayout::c_nMajorKnown)
        return anSize.front();
    return anSize[std::min<std::size_t>(static_cast<std::size_t>(nMinorOfSize), anSize.size() - 1)];
}

/// Takes counts beyond 32 bits and for 15 returns, and where later records are, from LAS 1.4 on.
void CLasHeader::TakeLaterCounts(const unsigned char* pBytes)
{
    if (nNumLegacy == 0)
        nNumPnts = LasLayout::Get(pBytes, LasLayout::c_nNumPnts);
    nPosLater = LasLayout::Get(pBytes, LasLayout::c_nPosLater);
    nNumLater = LasLayout::Get(pBytes, LasLayout::c_nNumLater);
    std::vector<std::int64_t> vecLater;
    for (std::size_t i = 0; i < LasLayout::c_nNumReturns; ++i)
        vecLater.push_back(LasLayout::Get(pBytes, LasLayout::c_nNumByReturn, i));
    // Some writers fill the earlier fields only.
    if (std::any_of(vecLater.begin(), vecLater.end(), [](std::int64_t n) { return n != 0; }))
        vecNumByReturn = std::move(vecLater);
}

/// Of sizes and positions, the first that keeps the file from being read.
CFileCause CLasHeader::FindWrongPlace() const
{
    const int nMinHeader = CalcMinHeaderSize(nMinor);
    if (nHeaderSize < nMinHeader)
        return {FileCause_LasHeaderSize, "its header was never finished or is damaged: it says that it has " +
                                             CountOf(nHeaderSize, "byte") + ", of version " + Text(nMajor) +
                                             "." + Text(nMinor) + " it has " + Text(nMinHeader) +
                                             " at least"};
    if (nPosPnts > nFileSize)
        return {FileCause_LasPntsBehind, "it is cut off or damaged: its points begin at byte " +
                                             Text(nPosPnts) + ", but it has " + Text(nFileSize) + " bytes"};
    if (nPosPnts < nHeaderSize)
        return {FileCause_LasPntsBefore,
                "its header is damaged: the points begin at byte " + Text(nPosPnts) + ", within the header"};
    return {};
}

/// Of the point format, what keeps the file from being read.
CFileCause CLasHeader::FindWrongLayout() const
{
    const auto nFormatIndex = static_cast<std::size_t>(nFormat);
    if (nFormatIndex >= LasLayout::c_aFormats.size())
        return {FileCause_LasFormat, "its point format " + Text(nFormat) + " is unknown: 0 to 10 are known"};
    return {};
}

int CLasHeader::CalcPntSize() const
{
    const auto nFormatIndex = static_cast<std::size_t>(nFormat);
    const bool bKnown = !bCompressed && nFormatIndex < LasLayout::c_aFormats.size();
    return bKnown ? std::max(nPntSize, LasLayout::c_aFormats[nFormatIndex].nPntSize) : nPntSize;
}

std::int64_t CLasHeader::CalcNumHeld() const
{
    const int nSize = CalcPntSize();
    if (bCompressed || nSize <= 0)
        return -1;
    return std::max<std::int64_t>(nFileSize - nPosPnts, 0) / nSize;
}

std::int64_t CLasHeader::FindPosEnd() const
{
    std::int64_t nEnd = nFileSize;
    for (const std::int64_t nPosOther : {nPosWaveforms, nNumLater > 0 ? nPosLater : 0})
        if (nPosOther > nPosPnts)
            nEnd = std::min(nEnd, nPosOther);
    return nEnd;
}

std::int64_t CLasHeader::CalcNumThere() const
{
    const int nSize = CalcPntSize();
    if (bCompressed || nSize <= 0)
        return -1;
    const std::int64_t nNumBytes = std::max<std::int64_t>(FindPosEnd() - nPosPnts, 0);
    const std::int64_t nNum = nNumBytes / nSize;
    const bool bOther = nNumBytes % nSize != 0 && nNumPnts > 0;
    return bOther ? std::min(nNum, nNumPnts) : nNum;
}

std::string CLasHeader::GetDate() const
{
    const bool bLeapYear = (nYear % 4 == 0 && nYear % 100 != 0) || nYear % 400 == 0;
    const std::array<int, 12> anDays = {31, bLeapYear ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (nYear == 0)
        return {};
    int nLeft = nDay;
    for (std::size_t i = 0; i < anDays.size() && nLeft > 0; nLeft -= anDays[i++])
    {
        if (nLeft > anDays[i])
            continue;
        char acText[40];
        static_cast<void>(
            std::snprintf(acText, sizeof acText, "%04d-%02d-%02d", nYear, static_cast<int>(i) + 1, nLeft));
        return acText;
    }
    return std::to_string(nYear);
}
