#ifndef TESTS_IO_LAS_READLAS_H
#define TESTS_IO_LAS_READLAS_H

#include <io/ReadForeign.h>
#include <tests/io/CMemFile.h>
#include <tests/io/CRecReadListener.h>
#include <tests/support/LasBytes.h>

#include <string>

/// What reading a LAS file has come to: the result and every call.
struct CLasReading
{
    bool bResult = false;
    TReadCalls vecCalls;
};

inline CLasReading ReadLasFile(const char* sPath, bool bProgress = false)
{
    CRecReadListener rec;
    const bool bResult = ReadForeign(rec, bProgress ? &rec : nullptr, PntCldFile_Las, sPath);
    return {bResult && !rec.m_bOtherProgressCall, rec.m_vecCalls};
}

inline CLasReading ReadLas(const std::string& sBytes, bool bProgress = false)
{
    return ReadLasFile(CMemFile(sBytes).GetPath(), bProgress);
}

/// The calls for the first `nNum` points of `file`, without progress.
inline TReadCalls LasCalls(const CLasFile& file, int nAnnounced, std::size_t nNum)
{
    const bool bColor = file.nFormat == 2 || file.nFormat == 3 || file.nFormat == 5;
    TReadCalls vecCalls = {CReadCall::Type(bColor ? 1 : 0), CReadCall::NumPnts(nAnnounced)};
    for (std::size_t i = 0; i < nNum; ++i)
    {
        const CLasPnt& pnt = file.vecPnts.at(i);
        const double x = pnt.x * file.adScale[0] + file.adOffset[0];
        const double y = pnt.y * file.adScale[1] + file.adOffset[1];
        const double z = pnt.z * file.adScale[2] + file.adOffset[2];
        const auto Channel = [&](std::size_t k)
        { return pnt.anColor[k] > 255 ? pnt.anColor[k] / 256 : pnt.anColor[k]; };
        vecCalls.push_back(bColor ? CReadCall::ColorPnt(x, y, z, Channel(0), Channel(1), Channel(2))
                                  : CReadCall::Pnt(x, y, z));
    }
    vecCalls.push_back(CReadCall::End());
    return vecCalls;
}

inline TReadCalls LasCalls(const CLasFile& file)
{
    return LasCalls(file, static_cast<int>(file.vecPnts.size()), file.vecPnts.size());
}

#endif
