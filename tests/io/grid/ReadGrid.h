#ifndef TESTS_IO_GRID_READGRID_H
#define TESTS_IO_GRID_READGRID_H

#include <tests/io/CMemFile.h>
#include <tests/io/grid/CSlowGridReader.h>
#include <tests/io/ply/ReadPly.h>

/// Reads an ESRI ASCII grid with the library's reader.
inline CReading ReadGridFile(const char* sPath)
{
    CRecReadListener rec;
    const bool bResult = ReadForeign(rec, &rec, PntCldFile_AsciiGrid, sPath); // no progress is reported
    return {bResult && !rec.m_bOtherProgressCall, rec.m_vecCalls};
}

inline CReading ReadGrid(const std::string& sText)
{
    return ReadGridFile(CMemFile(sText).GetPath());
}

/// Reads it with the oracle.
inline CReading ReadGridSlowly(const std::string& sText)
{
    CRecReadListener rec;
    const bool bResult = CSlowGridReader(rec, sText).Read();
    return {bResult, rec.m_vecCalls};
}

/// A header of the usual kind.
inline std::string GridHeader(int nCols, int nRows)
{
    return "ncols " + std::to_string(nCols) + "\nnrows " + std::to_string(nRows) +
           "\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -9999\n";
}

#endif
