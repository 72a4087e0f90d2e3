#ifndef IO_GRID_CASCIIGRIDCELLS_H
#define IO_GRID_CASCIIGRIDCELLS_H

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
        if (m_pNext == m_pPieceEnd)
            AddPiece();
        if (nRow != m_nRunRow || nCol != m_nRunEnd)
            AddRun(nRow, nCol);
        *m_pNext++ = dValue;
        ++m_nRunEnd;
        ++m_vecRuns.back().m_nNumCells;
        ++m_nNumCells;
    }

    std::int64_t GetNumCells() const noexcept { return m_nNumCells; }

    /// Calls `deliver(nRow, nCol, dValue)` for each cell. To be called once.
    template <class F>
    void Take(F deliver)
    {
        std::size_t nPiece = 0;
        const double* p = nullptr;
        const double* pEnd = nullptr;
        for (const CRun& run : m_vecRuns)
            for (std::int32_t i = 0; i < run.m_nNumCells; ++i)
            {
                if (p == pEnd)
                {
                    if (nPiece > 0)
                        m_vecPieces[nPiece - 1].reset();
                    p = m_vecPieces[nPiece].get();
                    pEnd = p + GetPieceSize(nPiece++);
                }
                deliver(run.m_nRow, run.m_nCol + i, *p++);
            }
    }

private:
    /// Neighbours in a row.
    class CRun
    {
    public:
        std::int32_t m_nRow;
        std::int32_t m_nCol;
        std::int32_t m_nNumCells;
    };

    /// Values that a piece holds: a small grid is to take little memory, a large one large pages.
    static constexpr std::size_t GetPieceSize(std::size_t nPiece) noexcept
    {
        return std::size_t{1} << (nPiece == 0 ? 16U : 20U);
    }

    void AddPiece();
    void AddRun(std::int32_t nRow, std::int32_t nCol);

    std::vector<std::unique_ptr<double[]>> m_vecPieces; // all full but the last
    double* m_pNext = nullptr;                          // where the next value goes
    const double* m_pPieceEnd = nullptr;
    std::vector<CRun> m_vecRuns;
    std::int32_t m_nRunRow = -1; // the next cell continues the last run when it lies here
    std::int32_t m_nRunEnd = -1;
    std::int64_t m_nNumCells = 0;
};

#endif
