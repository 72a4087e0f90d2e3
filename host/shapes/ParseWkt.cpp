#include <host/shapes/ParseWkt.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <stdexcept>

namespace zorcld
{

namespace
{

constexpr int c_nMaxDepth = 16; // of collections within collections

class CWktParser
{
public:
    explicit CWktParser(std::string_view sText) : m_sText(sText) {}

    CShapes Parse()
    {
        SkipSpace();
        if (IsAtEnd())
            throw std::runtime_error("is empty");
        for (; !IsAtEnd(); SkipSpace())
        {
            ParseGeometry(0);
            Take(';');
        }
        return std::move(m_shapes);
    }

private:
    bool IsAtEnd() const { return m_nPos == m_sText.size(); }

    void SkipSpace()
    {
        while (!IsAtEnd() && std::isspace(static_cast<unsigned char>(m_sText[m_nPos])) != 0)
            ++m_nPos;
    }

    bool Take(char c)
    {
        SkipSpace();
        if (IsAtEnd() || m_sText[m_nPos] != c)
            return false;
        ++m_nPos;
        return true;
    }

    [[noreturn]] void Fail(const std::string& sExpected) const
    {
        throw std::runtime_error("is not well-known text: no " + sExpected + " at byte " +
                                 std::to_string(m_nPos));
    }

    void Expect(char c)
    {
        if (!Take(c))
            Fail(std::string("'") + c + "'");
    }

    std::string ParseWord()
    {
        SkipSpace();
        std::string sWord;
        for (; !IsAtEnd() && std::isalpha(static_cast<unsigned char>(m_sText[m_nPos])) != 0; ++m_nPos)
            sWord += static_cast<char>(std::toupper(static_cast<unsigned char>(m_sText[m_nPos])));
        return sWord;
    }

    bool ParseNumber(double& d)
    {
        SkipSpace();
        Take('+');
        const char* const pPos = m_sText.data() + m_nPos;
        const std::from_chars_result result = std::from_chars(pPos, m_sText.data() + m_sText.size(), d);
        if (result.ec != std::errc() || !std::isfinite(d))
            return false;
        m_nPos += static_cast<std::size_t>(result.ptr - pPos);
        return true;
    }

    /// '(' item ',' item ... ')'
    template <class TFn>
    void ParseList(TFn parseItem)
    {
        Expect('(');
        do
            parseItem();
        while (Take(','));
        Expect(')');
    }

    TRing ParseRing()
    {
        TRing ring;
        ParseList(
            [&]
            {
                zor::geom::PNT_2D pnt;
                if (!ParseNumber(pnt.x) || !ParseNumber(pnt.y))
                    Fail("number");
                for (double dUnused = 0.0; ParseNumber(dUnused);) // height and measure
                    ;
                ring.push_back(pnt);
            });
        return ring;
    }

    void ParsePolygon()
    {
        zor::geom::TMultiPartPolygon polygon;
        bool bOuter = true;
        ParseList(
            [&]
            {
                if (bOuter)
                    polygon.outer = ParseRing();
                else
                    polygon.holes.push_back(ParseRing());
                bOuter = false;
            });
        m_shapes.vecPolygons.push_back(polygon);
    }

    void ParseLine() { m_shapes.vecLines.push_back(ParseRing()); }

    void ParseGeometry(int nDepth)
    {
        std::string sType = ParseWord();
        if (sType == "SRID" && Take('=')) // names a coordinate system, of which nothing is known here
        {
            const std::size_t nEnd = m_sText.find(';', m_nPos);
            m_nPos = std::min(nEnd, m_sText.size() - 1) + 1;
            sType = ParseWord();
        }
        std::string sModifier = ParseWord();
        if (sModifier == "Z" || sModifier == "M" || sModifier == "ZM")
            sModifier = ParseWord();
        if (sModifier == "EMPTY")
            return;
        if (sType == "POLYGON")
            ParsePolygon();
        else if (sType == "MULTIPOLYGON")
            ParseList([this] { ParsePolygon(); });
        else if (sType == "LINESTRING" || sType == "LINEARRING")
            ParseLine();
        else if (sType == "MULTILINESTRING")
            ParseList([this] { ParseLine(); });
        else if (sType == "GEOMETRYCOLLECTION" && nDepth < c_nMaxDepth)
            ParseList([&] { ParseGeometry(nDepth + 1); });
        else
            Fail("polygon or line");
    }

    std::string_view m_sText;
    std::size_t m_nPos = 0;
    CShapes m_shapes;
};

} // namespace

CShapes ParseWkt(std::string_view sText)
{
    return CWktParser(sText).Parse();
}

} // namespace zorcld
