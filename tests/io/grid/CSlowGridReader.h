#ifndef TESTS_IO_GRID_CSLOWGRIDREADER_H
#define TESTS_IO_GRID_CSLOWGRIDREADER_H

#include <tests/io/CRecReadListener.h>

#include <cstdlib>
#include <limits>
#include <sstream>
#include <string>
#include <utility>

/// Reads an ESRI ASCII grid by the rules, one by one, with lines, strings and two passes: what the
/// library's reader is compared with.
class CSlowGridReader
{
public:
    CSlowGridReader(IPntCldReadListener& listener, std::string sBytes)
        : m_listener(listener), m_sBytes(std::move(sBytes))
    {
    }

    bool Read()
    {
        std::istringstream stream(m_sBytes);
        if (!ReadHeader(stream))
            return false;
        const std::string sData(std::istreambuf_iterator<char>(stream), {});
        std::int64_t nNum = 0;
        WalkCells(sData, [&](int, int, double) { ++nNum; });
        if (nNum == 0)
            return false;
        m_listener.OnReadType(PntCldType_Pnt);
        m_listener.OnReadNumPnts(static_cast<int>(nNum));
        WalkCells(sData,
                  [&](int nRow, int nCol, double v)
                  {
                      const double x = nCol * m_dCell + m_dXCorner;
                      const double y = (m_nRows - nRow) * m_dCell + m_dYCorner;
                      m_listener.OnReadPnt(x, y, v);
                  });
        m_listener.OnReadEnd();
        return true;
    }

    /// The number at the start of a text: the C library's conversion, but for numbers that are not
    /// decimal.
    static double NumberOf(const std::string& sText)
    {
        std::size_t n = sText.find_first_not_of(" \t\n\v\f\r");
        if (n == std::string::npos)
            return 0.0;
        const bool bNegative = sText[n] == '-';
        n += bNegative || sText[n] == '+' ? 1 : 0;
        const bool bHex = n + 1 < sText.size() && sText[n] == '0' && (sText[n + 1] | 0x20) == 'x';
        if (bHex)
            return bNegative ? -0.0 : 0.0;
        char* pEnd = nullptr;
        const double d = std::strtod(sText.c_str(), &pEnd);
        return pEnd == sText.c_str() ? 0.0 : d;
    }

private:
    static constexpr double c_dStart = 1.7e200;

    static void Trim(std::string& sText)
    {
        const auto IsBlank = [](char c) { return c != '\0' && std::strchr(" \t\n\v\f\r", c) != nullptr; };
        while (!sText.empty() && IsBlank(sText.back()))
            sText.pop_back();
        std::size_t n = 0;
        while (n < sText.size() && IsBlank(sText[n]))
            ++n;
        sText = sText.substr(n);
    }

    static bool IsGiven(double d) { return d <= 8.5e199; }

    bool ReadHeader(std::istringstream& stream)
    {
        std::string sLine;
        while (std::getline(stream, sLine))
        {
            if (sLine.empty() || sLine == "\r")
                continue;
            Trim(sLine);
            const std::size_t nSpace = sLine.find(' ');
            if (nSpace == std::string::npos)
                return false;
            std::string sValue = sLine.substr(nSpace);
            Trim(sValue);
            if (!Set(sLine.substr(0, nSpace), sValue))
                return false;
            if (!IsComplete())
                continue;
            if (m_dXCorner == 0.0 && m_dYCorner == 0.0 && !(m_dXCentre == 0.0 && m_dYCentre == 0.0))
            {
                m_dXCorner = m_dXCentre - m_dCell * 0.5;
                m_dYCorner = m_dYCentre - m_dCell * 0.5;
            }
            return true;
        }
        return false;
    }

    static int CountOf(const std::string& sValue)
    {
        std::size_t n = sValue.find_first_not_of("+-");
        if (n > 1) // also: nothing but signs
            return 0;
        double d = 0.0; // exact as far as it matters
        for (; n < sValue.size() && sValue[n] >= '0' && sValue[n] <= '9'; ++n)
            d = d * 10.0 + (sValue[n] - '0');
        if (sValue[0] == '-')
            d = -d;
        if (d >= 2147483647.0)
            return std::numeric_limits<int>::max();
        return d <= -2147483648.0 ? std::numeric_limits<int>::min() : static_cast<int>(d);
    }

    bool Set(const std::string& sKey, const std::string& sValue)
    {
        if (sKey == "nrows" || sKey == "NROWS")
            m_nRows = CountOf(sValue);
        else if (sKey == "ncols" || sKey == "NCOLS")
            m_nCols = CountOf(sValue);
        else if (sKey == "cellsize" || sKey == "CELLSIZE")
            m_dCell = NumberOf(sValue);
        else if (sKey == "xllcenter" || sKey == "XLLCENTER")
            m_dXCentre = NumberOf(sValue);
        else if (sKey == "yllcenter" || sKey == "YLLCENTER")
            m_dYCentre = NumberOf(sValue);
        else if (sKey == "xllcorner" || sKey == "XLLCORNER")
            m_dXCorner = NumberOf(sValue);
        else if (sKey == "yllcorner" || sKey == "YLLCORNER")
            m_dYCorner = NumberOf(sValue);
        else if (sKey == "NODATA_value" || sKey == "NODATA_VALUE")
            m_dNoData = NumberOf(sValue);
        else
            return false;
        return true;
    }

    bool IsComplete() const
    {
        const bool bCentre = IsGiven(m_dXCentre) && IsGiven(m_dYCentre);
        const bool bCorner = IsGiven(m_dXCorner) && IsGiven(m_dYCorner);
        return m_nRows >= 1 && m_nCols >= 1 && m_dCell > 0.0 && IsGiven(m_dCell) && (bCentre || bCorner) &&
               IsGiven(m_dNoData);
    }

    template <class F>
    void WalkCells(const std::string& sData, F onCell) const
    {
        std::istringstream stream(sData);
        std::string sLine;
        int nRow = 0;
        while (nRow < m_nRows && std::getline(stream, sLine))
        {
            if (sLine.empty() || sLine == "\r")
                continue;
            Trim(sLine);
            for (int nCol = 0; nCol < m_nCols && !sLine.empty(); ++nCol)
            {
                const std::size_t nSpace = sLine.find(' ');
                const double v = NumberOf(sLine.substr(0, nSpace));
                if (!(v == m_dNoData))
                    onCell(nRow, nCol, v);
                sLine = nSpace == std::string::npos ? "" : sLine.substr(nSpace);
                Trim(sLine);
            }
            ++nRow;
        }
    }

    IPntCldReadListener& m_listener;
    std::string m_sBytes;
    int m_nRows = 0;
    int m_nCols = 0;
    double m_dCell = c_dStart;
    double m_dXCentre = c_dStart;
    double m_dYCentre = c_dStart;
    double m_dXCorner = c_dStart;
    double m_dYCorner = c_dStart;
    double m_dNoData = c_dStart;
};

#endif
