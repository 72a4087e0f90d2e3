#include <formats/CAsciiGridSource.h>

#include <formats/AsciiGridFindings.h>
#include <formats/CAsciiGridMeaning.h>
#include <formats/CByteReader.h>
#include <formats/CountOf.h>
#include <formats/MakePrintable.h>
#include <formats/ParseDouble.h>

#include <cmath>
#include <limits>

namespace
{

constexpr std::size_t c_nMaxWord = 255;

/// Words of one row after the other. Unlike the library's rows, tabs separate words too.
class CRowReader
{
public:
    explicit CRowReader(CByteReader& reader) : m_reader(reader) {}

    /// @return whether values have been read that only a tab separates.
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
            {
                m_cSeparator = ' '; // nothing stands before the first one of a row
                return false;
            }
            if (bSpace)
                m_cSeparator = m_cSeparator == ' ' ? ' ' : static_cast<char>(c);
            else
                TakeLetter(static_cast<char>(c), sWord);
        }
    }

private:
    void TakeLetter(char c, std::string& sWord)
    {
        m_bTabs = m_bTabs || m_cSeparator == '\t';
        m_cSeparator = '\0';
        if (sWord.size() < c_nMaxWord)
            sWord += c;
    }

    CByteReader& m_reader;
    char m_cSeparator = ' '; // what has come since the last word: a blank if there was one
    bool m_bTabs = false;
};

class CAsciiGridSource final : public IPntSource
{
public:
    CAsciiGridSource(const CAsciiGridMeaning& meaning, CByteReader& reader)
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

    std::string ForEach(const TOnPnt& onPnt) override
    {
        m_reader.SetPos(m_meaning.nDataOffset);
        CRowReader rows(m_reader);
        m_nNumRows = m_nNumShort = m_nNumLong = m_nNumOdd = 0;
        std::string sWord;
        while (m_nNumRows < m_meaning.nNumRows && m_reader.Peek() >= 0)
            if (!SkipEmptyLine())
                ReadRow(rows, sWord, onPnt);
        m_bTabs = rows.HasTabs();
        return {};
    }

    std::vector<CFinding> GetFindings() const override;

private:
    /// An empty line, with a carriage return or without, is no row; one of blanks is. A carriage return that
    /// something follows is a blank, and may as well be passed over.
    bool SkipEmptyLine()
    {
        if (m_reader.Peek() == '\r')
            static_cast<void>(m_reader.Get());
        if (m_reader.Peek() < 0)
            return true;
        if (m_reader.Peek() != '\n')
            return false;
        static_cast<void>(m_reader.Get());
        return true;
    }

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
        onPnt({static_cast<double>(nCol) * m_meaning.GetCellWidth() + m_meaning.GetXCorner(),
               static_cast<double>(m_meaning.nNumRows - m_nNumRows) * m_meaning.GetCellHeight() +
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

std::vector<CFinding> CAsciiGridSource::GetFindings() const
{
    std::vector<CFinding> vecFindings;
    const auto add = [&](const char* pCode, const std::string& sText, bool bConvert = false) {
        vecFindings.push_back({pCode, sText, bConvert, ""});
    };
    const std::string sColumns = " values than the " + CountOf(m_meaning.nNumCols, "column") + " announced: ";
    if (m_nNumRows < m_meaning.nNumRows)
    {
        std::string sText = "its header announces " + CountOf(m_meaning.nNumRows, "row") + " of " +
                            CountOf(m_meaning.nNumCols, "cell") + ", " + CountOf(m_nNumRows, "row") +
                            OneOrMany(m_nNumRows, " is", " are") + " there";
        if (GetNumAnnounced() > m_nNumHeld)
            sText += "; the file has no room for more than " + CountOf(m_nNumHeld, "value");
        add("grid-rows", sText);
    }
    if (m_nNumShort > 0)
        add("grid-short-rows", CountOf(m_nNumShort, "row") + OneOrMany(m_nNumShort, " has", " have") +
                                   " fewer" + sColumns + "the cells at " +
                                   OneOrMany(m_nNumShort, "its", "their") + " right end are missing");
    if (m_nNumLong > 0)
        add("grid-long-rows", CountOf(m_nNumLong, "row") + OneOrMany(m_nNumLong, " has", " have") + " more" +
                                  sColumns + "the rest is not taken");
    if (m_bTabs)
        vecFindings.push_back(FindAsciiGridTabs());
    if (m_nNumOdd > 0)
        add("grid-not-numbers",
            CountOf(m_nNumOdd, "value") + OneOrMany(m_nNumOdd, " is not a number", " are not numbers") +
                ", the first is '" + MakePrintableName(m_sOddWord) +
                "': a value that begins with a number counts as that number, any other one as 0");
    return vecFindings;
}

} // namespace

CMadeSource MakeAsciiGridSource(const CAsciiGridMeaning& meaning, CByteReader& reader)
{
    std::string sCause = meaning.FindCause();
    if (!sCause.empty())
        return {nullptr, std::move(sCause)};
    return {std::make_unique<CAsciiGridSource>(meaning, reader), {}};
}
