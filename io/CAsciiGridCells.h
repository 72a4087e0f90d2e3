#ifndef IO_CASCIIGRIDCELLS_H
#define IO_CASCIIGRIDCELLS_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// The cells of a raster that hold data, in the order of the file: 8 bytes a value, 12 a run of
/// neighbours in a row.
///
/// The number of points must be known before the first is delivered. Values wait here, so that the text
/// is read once; memory is given back piece by piece as they are taken, while the cloud fills.
class CAsciiGridCells
{
public:
    /// Adds a cell behind the ones before it. Throws std::bad_alloc.
    void Add(std::int32_t nRow, std::int32_t nCol, double dValue)
    {
        if (m_nUsed == c_nPiece)
            AddPiece();
        m_vecPieces.back()[m_nUsed++] = dValue;
        ++m_nNumCells;
        if (nRow != m_nRunRow || nCol != m_nRunEnd)
            AddRun(nRow, nCol);
        ++m_nRunEnd;
        ++m_vecRuns.back().m_nNumCells;
    }

    std::int64_t GetNumCells() const noexcept { return m_nNumCells; }

    /// Calls `deliver(nRow, nCol, dValue)` for each cell, and forgets them.
    template <class F>
    void Take(F deliver)
    {
        std::size_t nCell = 0;
        for (const CRun& run : m_vecRuns)
            for (std::int32_t i = 0; i < run.m_nNumCells; ++i, ++nCell)
            {
                if (nCell >= c_nPiece && nCell % c_nPiece == 0)
                    m_vecPieces[nCell / c_nPiece - 1].reset();
                deliver(run.m_nRow, run.m_nCol + i, m_vecPieces[nCell / c_nPiece][nCell % c_nPiece]);
            }
        *this = CAsciiGridCells();
    }

private:
    static constexpr std::size_t c_nPiece = std::size_t{1} << 16;

    /// Neighbours in a row.
    class CRun
    {
    public:
        std::int32_t m_nRow;
        std::int32_t m_nCol;
        std::int32_t m_nNumCells;
    };

    void AddPiece();
    void AddRun(std::int32_t nRow, std::int32_t nCol);

    std::vector<std::unique_ptr<double[]>> m_vecPieces; // c_nPiece values each
    std::size_t m_nUsed = c_nPiece;                     // of the last piece
    std::vector<CRun> m_vecRuns;
    std::int32_t m_nRunRow = -1; // the next cell continues the last run when it lies here
    std::int32_t m_nRunEnd = -1;
    std::int64_t m_nNumCells = 0;
};

#endif
