#include <host/files/CByteReader.h>
#include <host/files/PlyLayout.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nMaxLine = 4096;
constexpr std::size_t c_nMaxElems = 1000;
constexpr std::size_t c_nMaxProps = 10000; // of all elements

// "bool" is no type of the format, but some programs write it, a byte each.
constexpr std::array<CPlyType, 11> c_types = {{{"char", "int8", 1, 'i'},
                                               {"uchar", "uint8", 1, 'u'},
                                               {"short", "int16", 2, 'i'},
                                               {"ushort", "uint16", 2, 'u'},
                                               {"int", "int32", 4, 'i'},
                                               {"uint", "uint32", 4, 'u'},
                                               {"float", "float32", 4, 'f'},
                                               {"double", "float64", 8, 'f'},
                                               {"long", "int64", 8, 'i'},
                                               {"ulong", "uint64", 8, 'u'},
                                               {"bool", "bool", 1, 'u'}}};

const CPlyType* FindType(std::string_view sName)
{
    const auto found =
        std::find_if(c_types.begin(), c_types.end(),
                     [&](const CPlyType& type) { return type.sName == sName || type.sSized == sName; });
    return found == c_types.end() ? nullptr : &*found;
}

/// Lines of a header, which all end as the first one does.
class CHeaderLines
{
public:
    explicit CHeaderLines(CByteReader& reader) : m_reader(reader) {}

    /// @return false at the end of the file, or at a line that is none of a header.
    bool Read(std::string& sLine)
    {
        sLine.clear();
        for (int c = m_reader.Get(); c >= 0 && sLine.size() < c_nMaxLine; c = m_reader.Get())
        {
            if (m_cEnd == 0 && (c == '\n' || c == '\r'))
                m_cEnd = c == '\r' && m_reader.Peek() != '\n' ? '\r' : '\n';
            if (c == m_cEnd)
                return true;
            if (c != '\r')
                sLine += static_cast<char>(c);
        }
        return false;
    }

private:
    CByteReader& m_reader;
    int m_cEnd = 0; // 0: not known before the first line has been read
};

std::vector<std::string> SplitWords(const std::string& sLine)
{
    std::vector<std::string> vecWords;
    std::size_t nPos = 0;
    while ((nPos = sLine.find_first_not_of(" \t", nPos)) != std::string::npos)
    {
        const std::size_t nEnd = std::min(sLine.find_first_of(" \t", nPos), sLine.size());
        vecWords.push_back(sLine.substr(nPos, nEnd - nPos));
        nPos = nEnd;
    }
    return vecWords;
}

std::string TakeFormat(const std::vector<std::string>& vecWords, CPlyLayout& layout)
{
    const std::string sFormat = vecWords.size() > 1 ? vecWords[1] : "";
    if (sFormat == "ascii")
        layout.eFormat = PlyFormat_Ascii;
    else if (sFormat == "binary_little_endian")
        layout.eFormat = PlyFormat_Little;
    else if (sFormat == "binary_big_endian")
        layout.eFormat = PlyFormat_Big;
    else
        return fmt::format("its format '{}' is not known", sFormat);
    return {};
}

std::string TakeElement(const std::vector<std::string>& vecWords, CPlyLayout& layout)
{
    CPlyElem elem;
    if (vecWords.size() < 3 || layout.vecElems.size() >= c_nMaxElems)
        return "its header has a line 'element' without a name and a count, or too many of them";
    elem.sName = vecWords[1];
    const std::string& sCount = vecWords[2];
    const auto result = std::from_chars(sCount.data(), sCount.data() + sCount.size(), elem.nCount);
    if (result.ec != std::errc() || result.ptr != sCount.data() + sCount.size())
        return fmt::format("the count '{}' of element {} is no number", sCount, elem.sName);
    layout.vecElems.push_back(std::move(elem));
    return {};
}

std::string TakeProperty(const std::vector<std::string>& vecWords, CPlyLayout& layout)
{
    CPlyProp prop;
    prop.bList = vecWords.size() > 1 && vecWords[1] == "list";
    const std::size_t nType = prop.bList ? 3 : 1;
    if (layout.vecElems.empty() || vecWords.size() < nType + 2 ||
        layout.vecElems.back().vecProps.size() >= c_nMaxProps)
        return "its header has a line 'property' without an element, a type or a name, or too many of them";
    prop.sType = vecWords[nType];
    prop.pType = FindType(prop.sType);
    prop.sName = vecWords[nType + 1];
    if (prop.bList)
    {
        prop.pCount = FindType(vecWords[2]);
        if (prop.pCount == nullptr || prop.pCount->cClass == 'f')
            prop.pType = nullptr;
    }
    layout.vecElems.back().vecProps.push_back(std::move(prop));
    return {};
}

} // namespace

const CPlyProp* CPlyElem::FindProp(std::string_view sProp) const
{
    const auto found = std::find_if(vecProps.begin(), vecProps.end(),
                                    [&](const CPlyProp& prop) { return prop.sName == sProp; });
    return found == vecProps.end() ? nullptr : &*found;
}

std::int64_t CPlyElem::CalcItemSize() const
{
    std::int64_t nSize = 0;
    for (const CPlyProp& prop : vecProps)
    {
        if (prop.bList || prop.pType == nullptr)
            return -1;
        nSize += static_cast<std::int64_t>(prop.pType->nSize);
    }
    return nSize;
}

const CPlyElem* CPlyLayout::FindVertices() const
{
    const auto found = std::find_if(vecElems.begin(), vecElems.end(),
                                    [](const CPlyElem& elem) { return elem.sName == "vertex"; });
    return found == vecElems.end() ? nullptr : &*found;
}

std::string ReadPlyLayout(CByteReader& reader, CPlyLayout& layout)
{
    CHeaderLines lines(reader);
    std::string sLine;
    if (!lines.Read(sLine) || sLine != "ply")
        return "not a PLY file";
    bool bFormat = false;
    while (lines.Read(sLine))
    {
        const std::vector<std::string> vecWords = SplitWords(sLine);
        const std::string sKey = vecWords.empty() ? "" : vecWords[0];
        std::string sCause;
        if (sKey == "end_header")
        {
            layout.nPosData = reader.GetPos();
            return bFormat ? "" : "its header has no line 'format'";
        }
        if (sKey == "format")
        {
            sCause = TakeFormat(vecWords, layout);
            bFormat = true;
        }
        else if (sKey == "element")
        {
            sCause = TakeElement(vecWords, layout);
        }
        else if (sKey == "property")
        {
            sCause = TakeProperty(vecWords, layout);
        }
        if (!sCause.empty())
            return sCause;
    }
    return "its header has no end, 'end_header' is missing";
}

} // namespace zorcld
