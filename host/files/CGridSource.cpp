#include <host/files/CGridSource.h>

#include <formats/CAsciiGridMeaning.h>
#include <formats/CByteReader.h>
#include <formats/ParseDouble.h>
#include <host/output/CFailure.h>

#include <fmt/format.h>

#include <cmath>
#include <limits>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nMaxWord = 255;

/// Words of one row after the other. Unlike the library's rows, tabs separate words too.
class CRowReader
{
public:
    explicit CRowReader(CByteReader& reader) : m_reader(reader) {}

    bool HasTabs() const { return m_bTabs; }

    /// @return false at the end of the row, whose line feed is taken, or of the file.
    bool ReadWord(std::string& sWord)
    {
        sWord.clear();
        for (;;)
        {
            const int c = m_reader.Peek();
            const bool bEnd = c < 0 || c == '\n';
            const bool bSpace = c == ' ' || (c >= '\t' && c <= '\r');
            if ((bEnd || bSpace) && !sWord.empty())
                return true;
            static_cast<void>(m_reader.Get());
            if (bEnd)
                return false;
            m_bTabs = m_bTabs || c == '\t';
            if (!bSpace && sWord.size() < c_nMaxWord)
                sWord += static_cast<char>(c);
        }
    }

private:
    CByteReader& m_reader;
    bool m_bTabs = false;
};

class CGridSource final : public IPntSource
{
public:
    CGridSource(const CAsciiGridMeaning& meaning, CByteReader& reader)
        : m_meaning(meaning), m_reader(reader),
          m_nNumHeld((reader.GetSize() - meaning.nDataOffset + 1) / 2) // a digit and a blank a value
    {
    }

    bool HasColor() const override { return false; }

    std::int64_t GetNumAnnounced() const override
    {
        return m_meaning.nNumRows > std::numeric_limits<std::int64_t>::max() / m_meaning.nNumCols
                   ? std::numeric_limits<std::int64_t>::max()
                   : m_meaning.nNumRows * m_meaning.nNumCols;
    }

    void ForEach(const TOnPnt& onPnt) override
    {
        m_reader.SetPos(m_meaning.nDataOffset);
        CRowReader rows(m_reader);
        m_nNumRows = m_nNumShort = m_nNumLong = m_nNumOdd = 0;
        std::string sWord;
        while (m_nNumRows < m_meaning.nNumRows && m_reader.Peek() >= 0)
        {
            if (m_reader.Peek() == '\n') // an empty line is no row, one of blanks is
                static_cast<void>(m_reader.Get());
            else
                ReadRow(rows, sWord, onPnt);
        }
        m_bTabs = rows.HasTabs();
    }

    std::vector<CFinding> GetFindings() const override;

private:
    void ReadRow(CRowReader& rows, std::string& sWord, const TOnPnt& onPnt)
    {
        std::int64_t nCol = 0;
        for (; rows.ReadWord(sWord); ++nCol)
            if (nCol < m_meaning.nNumCols)
                TakeCell(sWord, nCol, onPnt);
        m_nNumShort += nCol < m_meaning.nNumCols ? 1 : 0;
        m_nNumLong += nCol > m_meaning.nNumCols ? 1 : 0;
        ++m_nNumRows;
    }

    /// The point of a cell lies at its upper left corner, as the library has it.
    void TakeCell(const std::string& sWord, std::int64_t nCol, const TOnPnt& onPnt)
    {
        bool bWhole = false;
        const double z = ParseDouble(sWord, bWhole);
        if (!bWhole && m_nNumOdd++ == 0)
            m_sOddWord = sWord;
        if (m_meaning.noData && (z == *m_meaning.noData || (std::isnan(z) && std::isnan(*m_meaning.noData))))
            return;
        onPnt({static_cast<double>(nCol) * *m_meaning.cellSize + m_meaning.GetXCorner(),
               static_cast<double>(m_meaning.nNumRows - m_nNumRows) * *m_meaning.cellSize +
                   m_meaning.GetYCorner(),
               z});
    }

    const CAsciiGridMeaning& m_meaning;
    CByteReader& m_reader;
    std::int64_t m_nNumHeld;
    // of the last ForEach
    std::int64_t m_nNumRows = 0;
    std::int64_t m_nNumShort = 0;
    std::int64_t m_nNumLong = 0;
    std::int64_t m_nNumOdd = 0;
    std::string m_sOddWord;
    bool m_bTabs = false;
};

std::vector<CFinding> CGridSource::GetFindings() const
{
    std::vector<CFinding> vecFindings;
    if (m_nNumRows < m_meaning.nNumRows)
    {
        std::string sText = fmt::format("its header announces {} rows of {} cells, {} rows are there",
                                        m_meaning.nNumRows, m_meaning.nNumCols, m_nNumRows);
        if (GetNumAnnounced() > m_nNumHeld)
            sText += fmt::format("; the file has no room for more than {} values", m_nNumHeld);
        vecFindings.push_back({"grid-rows", sText, false, ""});
    }
    if (m_nNumShort > 0)
        vecFindings.push_back({"grid-short-rows",
                               fmt::format("{} rows have fewer values than the {} columns announced: the "
                                           "cells at their right end are missing",
                                           m_nNumShort, m_meaning.nNumCols),
                               false, ""});
    if (m_nNumLong > 0)
        vecFindings.push_back({"grid-long-rows",
                               fmt::format("{} rows have more values than the {} columns announced: the "
                                           "rest is not taken",
                                           m_nNumLong, m_meaning.nNumCols),
                               false, ""});
    if (m_bTabs)
        vecFindings.push_back(
            {"grid-tabs", "tabs separate its values: only the first value of such a run is taken", true, ""});
    if (m_nNumOdd > 0)
        vecFindings.push_back({"grid-not-numbers",
                               fmt::format("{} values are no plain numbers, the first is '{}': what stands "
                                           "behind a number is dropped, what is none counts as 0",
                                           m_nNumOdd, m_sOddWord),
                               false, ""});
    return vecFindings;
}

} // namespace

std::unique_ptr<IPntSource> MakeGridSource(const std::string& sPath, const CAsciiGridMeaning& meaning,
                                           CByteReader& reader)
{
    const std::string sCause = meaning.FindCause();
    if (!sCause.empty())
        throw CFailure(sPath, sCause);
    return std::make_unique<CGridSource>(meaning, reader);
}

} // namespace zorcld
