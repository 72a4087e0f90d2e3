#ifndef TESTS_IO_GRID_RANDOMGRID_H
#define TESTS_IO_GRID_RANDOMGRID_H

#include <tests/support/CRandom.h>

#include <string>

/// Makes grid files that are mostly readable and never tidy.
class CRandomGrid
{
public:
    explicit CRandomGrid(std::uint64_t nSeed) : m_random(nSeed) {}

    std::string MakeFile()
    {
        const std::int64_t nCols = m_random.Int(1, 6);
        const std::int64_t nRows = m_random.Int(1, 6);
        const std::string sNoData = Number();
        std::string sText = MakeHeader(nCols, nRows, sNoData);
        for (std::int64_t nRow = m_random.Int(-1, nRows + 1); nRow > 0; --nRow)
        {
            for (std::int64_t nCol = m_random.Int(0, nCols + 2); nCol > 0; --nCol)
                sText += Blanks() + (m_random.Chance(4) ? sNoData : Token()) + " ";
            sText += Blanks() + LineEnd();
        }
        if (m_random.Chance(3))
            sText.resize(sText.size() -
                         static_cast<std::size_t>(m_random.Int(0, static_cast<std::int64_t>(sText.size()))));
        return sText;
    }

    /// A decimal number of any kind.
    std::string Number()
    {
        std::string sText = m_random.Chance(3) ? "-" : m_random.Chance(9) ? "+" : "";
        const std::int64_t nMaxDigits = m_random.Chance(8) ? 25 : 9;
        sText += Digits(m_random.Int(0, nMaxDigits));
        if (m_random.Chance(2))
            sText += "." + Digits(m_random.Int(0, nMaxDigits));
        if (m_random.Chance(8))
            sText += m_random.Pick<std::string>({"e", "E", "e+", "E-"}) + Digits(m_random.Int(0, 3));
        return sText;
    }

private:
    std::string MakeHeader(std::int64_t nCols, std::int64_t nRows, const std::string& sNoData)
    {
        std::string sText;
        const auto Add = [&](const std::string& sLower, const std::string& sOther, const std::string& sValue)
        {
            if (m_random.Chance(40))
                return; // forgotten
            sText += Blanks() + (m_random.Chance(2) ? sLower : sOther) + " " + Blanks() + sValue + LineEnd();
        };
        Add("ncols", "NCOLS", std::to_string(nCols));
        Add("nrows", "NROWS", std::to_string(nRows));
        if (m_random.Chance(2))
        {
            Add("xllcenter", "XLLCENTER", m_random.Chance(3) ? "0" : Number());
            Add("yllcenter", "YLLCENTER", m_random.Chance(3) ? "0.0" : Number());
        }
        if (!m_random.Chance(4))
        {
            Add("xllcorner", "XLLCORNER", m_random.Chance(3) ? "0" : Number());
            Add("yllcorner", "YLLCORNER", m_random.Chance(3) ? "-0" : Number());
        }
        if (m_random.Chance(30))
            Add("nodata_value", "dx", "1");
        Add("cellsize", "CELLSIZE", m_random.Chance(2) ? "10" : Number());
        Add("NODATA_value", "NODATA_VALUE", sNoData);
        return sText;
    }

    std::string Token()
    {
        if (!m_random.Chance(10))
            return Number();
        return m_random.Pick<std::string>({"nan", "inf", "-inf", "1\t2", "x", "-", "1e", "1e+", "1.2.3",
                                           "1-2", "--1", "+-1", "0x1f", "infinity", "1,5", ".", "-.", "e5",
                                           "*"});
    }

    std::string Digits(std::int64_t nNum)
    {
        std::string sText;
        for (; nNum > 0; --nNum)
            sText += static_cast<char>('0' + (m_random.Chance(4) ? 0 : m_random.Int(0, 9)));
        return sText;
    }

    std::string Blanks()
    {
        return m_random.Chance(5) ? m_random.Pick<std::string>({" ", "   ", "\t", " \t ", "\r", "\v\f"}) : "";
    }

    std::string LineEnd()
    {
        if (m_random.Chance(30))
            return m_random.Chance(2) ? " \n" : "\n\r\r\n";
        return m_random.Pick<std::string>({"\n", "\n", "\n", "\r\n", "\n\n", "\r\n\r\n"});
    }

    CRandom m_random;
};

#endif
