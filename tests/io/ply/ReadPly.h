#ifndef TESTS_IO_PLY_READPLY_H
#define TESTS_IO_PLY_READPLY_H

#include <io/ReadForeign.h>
#include <tests/io/CMemFile.h>
#include <tests/io/CRecReadListener.h>
#include <tests/io/ply/CSlowPlyReader.h>

#include <ostream>
#include <string>

/// What reading a file has come to: the result and every call.
struct CReading
{
    bool operator==(const CReading& other) const
    {
        return bResult == other.bResult && vecCalls == other.vecCalls;
    }

    bool bResult;
    TReadCalls vecCalls;
};

inline std::ostream& operator<<(std::ostream& stream, const CReading& reading)
{
    stream << (reading.bResult ? "true" : "false") << ", " << reading.vecCalls.size() << " calls:";
    for (std::size_t i = 0; i < reading.vecCalls.size() && i < 40; ++i)
        stream << ' ' << reading.vecCalls[i];
    return stream;
}

/// Reads a PLY file with the library's reader.
inline CReading ReadPlyFile(const char* sPath, bool bProgress = false)
{
    CRecReadListener rec;
    const bool bResult = ReadForeign(rec, bProgress ? &rec : nullptr, PntCldFile_Ply, sPath);
    return {bResult && !rec.m_bOtherProgressCall, rec.m_vecCalls};
}

inline CReading ReadPly(const std::string& sBytes, bool bProgress = false)
{
    return ReadPlyFile(CMemFile(sBytes).GetPath(), bProgress);
}

/// Reads it with the oracle.
inline CReading ReadPlySlowly(const std::string& sBytes, bool bProgress = false)
{
    CRecReadListener rec;
    const bool bResult = CSlowPlyReader(rec, bProgress ? &rec : nullptr, sBytes).Read();
    return {bResult, rec.m_vecCalls};
}

#endif
