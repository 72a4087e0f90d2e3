#include <formats/CPlyMeaning.h>

#include <formats/CPlyLines.h>
#include <formats/MakePrintable.h>

#include <algorithm>
#include <charconv>

namespace
{

constexpr std::size_t c_nMaxElements = 1000;
constexpr std::size_t c_nMaxProps = 10000;

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

} // namespace

const CPlyMeantProperty* CPlyMeantElement::FindProp(std::string_view sProp) const
{
    const auto found = std::find_if(vecProps.begin(), vecProps.end(),
                                    [&](const CPlyMeantProperty& prop) { return prop.sName == sProp; });
    return found == vecProps.end() ? nullptr : &*found;
}

std::int64_t CPlyMeantElement::CalcItemSize() const
{
    std::int64_t nSize = 0;
    for (const CPlyMeantProperty& prop : vecProps)
    {
        if (prop.bList || prop.pType == nullptr)
            return -1;
        nSize += static_cast<std::int64_t>(prop.pType->nSize);
    }
    return nSize;
}

const CPlyMeantElement* CPlyMeaning::FindVertices() const
{
    const auto found =
        std::find_if(m_vecElements.begin(), m_vecElements.end(),
                     [](const CPlyMeantElement& element) { return element.sName == "vertex"; });
    return found == m_vecElements.end() ? nullptr : &*found;
}

bool CPlyMeaning::TakeLine(const CPlyLines& lines)
{
    if (!m_bInside)
    {
        m_bInside = lines.GetLine() == "ply";
        if (m_bInside)
            m_sCause = "its header has no end, 'end_header' is missing"; // until it has
        return m_bInside;
    }
    if (lines.IsTooLong())
        return false;
    const std::vector<std::string> vecWords = SplitWords(lines.GetLine());
    if (!vecWords.empty() && vecWords[0] == "end_header")
    {
        m_nDataOffset = lines.GetPos();
        m_sCause = m_bFormat ? "" : "its header has no line 'format'";
        return false;
    }
    std::string sCause = TakeWords(vecWords);
    if (sCause.empty())
        return true;
    m_sCause = std::move(sCause);
    return false;
}

std::string CPlyMeaning::TakeWords(const std::vector<std::string>& vecWords)
{
    const std::string_view sKey = vecWords.empty() ? std::string_view() : vecWords[0];
    if (sKey == "format")
        return TakeFormat(vecWords);
    if (sKey == "element")
        return TakeElement(vecWords);
    if (sKey == "property")
        return TakeProperty(vecWords);
    return {};
}

std::string CPlyMeaning::TakeFormat(const std::vector<std::string>& vecWords)
{
    const std::string sFormat = vecWords.size() > 1 ? vecWords[1] : "";
    if (sFormat == "ascii")
        m_eFormat = PlyFormat_Ascii;
    else if (sFormat == "binary_little_endian")
        m_eFormat = PlyFormat_Little;
    else if (sFormat == "binary_big_endian")
        m_eFormat = PlyFormat_Big;
    else
        return "its format '" + MakePrintableName(sFormat) + "' is not known";
    m_bFormat = true;
    return {};
}

std::string CPlyMeaning::TakeElement(const std::vector<std::string>& vecWords)
{
    CPlyMeantElement element;
    if (vecWords.size() < 3 || m_vecElements.size() >= c_nMaxElements)
        return "its header has a line 'element' without a name and a count, or too many of them";
    element.sName = vecWords[1];
    const std::string& sCount = vecWords[2];
    const auto result = std::from_chars(sCount.data(), sCount.data() + sCount.size(), element.nCount);
    if (result.ec != std::errc() || result.ptr != sCount.data() + sCount.size())
        return "the count '" + MakePrintableName(sCount) + "' of element " +
               MakePrintableName(element.sName) + " is not a number";
    m_vecElements.push_back(std::move(element));
    return {};
}

std::string CPlyMeaning::TakeProperty(const std::vector<std::string>& vecWords)
{
    CPlyMeantProperty prop;
    prop.bList = vecWords.size() > 1 && vecWords[1] == "list";
    const std::size_t nType = prop.bList ? 3 : 1;
    if (m_vecElements.empty() || vecWords.size() < nType + 2 || m_nNumProps >= c_nMaxProps)
        return "its header has a line 'property' without an element, a type or a name, or too many of them";
    prop.sType = vecWords[nType];
    prop.pType = FindPlyType(prop.sType);
    prop.sName = vecWords[nType + 1];
    if (prop.bList)
    {
        prop.pCount = FindPlyType(vecWords[2]);
        if (prop.pCount == nullptr || prop.pCount->eNumber == PlyNumber_Floating)
            prop.pType = nullptr;
    }
    m_vecElements.back().vecProps.push_back(std::move(prop));
    ++m_nNumProps;
    return {};
}
