#include <host/files/CByteReader.h>
#include <host/files/PlyAsRead.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nMaxLine = 511; // the reader takes longer lines as several

/// In the order in which the reader matches them, by the start of the name.
constexpr std::array<CPlyReadType, 8> c_types = {{{"char", 1},
                                                  {"uchar", 1},
                                                  {"short", 2},
                                                  {"ushort", 2},
                                                  {"int", 4},
                                                  {"uint", 4},
                                                  {"float", 4},
                                                  {"double", 8}}};

constexpr std::string_view c_sList = "list uchar ";

bool StartsWith(std::string_view sText, std::string_view sStart)
{
    return sText.substr(0, sStart.size()) == sStart;
}

/// @return false at the end of the file; else the line without its end.
bool ReadLine(CByteReader& reader, std::string& sLine)
{
    sLine.clear();
    int c = 0;
    while (sLine.size() < c_nMaxLine && (c = reader.Get()) >= 0 && c != '\n')
        sLine += static_cast<char>(c);
    if (!sLine.empty() && sLine.back() == '\r')
        sLine.pop_back();
    return c >= 0 || !sLine.empty();
}

std::string FindFormatCause(const std::string& sLine)
{
    if (StartsWith(sLine, "format ascii"))
        return "ASCII PLY is not supported, only binary little-endian";
    if (StartsWith(sLine, "format binary_big_endian"))
        return "big-endian PLY is not supported, only binary little-endian";
    return "its second line is not 'format binary_little_endian 1.0'";
}

CPlyReadProp ParseProperty(std::string_view sText)
{
    CPlyReadProp prop{std::string(sText.substr(0, sText.rfind(' '))),
                      std::string(sText.substr(sText.rfind(' ') + 1)), nullptr, StartsWith(sText, c_sList)};
    const std::string_view sType = prop.bList ? sText.substr(c_sList.size()) : sText;
    const auto found = std::find_if(c_types.begin(), c_types.end(),
                                    [&](const CPlyReadType& t) { return StartsWith(sType, t.sName); });
    if (found != c_types.end())
        prop.pType = &*found;
    return prop;
}

CPlyReadElem ParseElement(const std::string& sText)
{
    return {sText.substr(0, sText.find(' ')),
            StartsWith(sText, "vertex "),
            std::strtoll(sText.substr(sText.rfind(' ') + 1).c_str(), nullptr, 10),
            {}};
}

} // namespace

CPlyAsRead ReadPlyAsRead(CByteReader& reader)
{
    CPlyAsRead header;
    std::string sLine;
    if (!ReadLine(reader, sLine) || sLine != "ply")
        header.sCause = "not a PLY file";
    else if (!ReadLine(reader, sLine) || sLine != "format binary_little_endian 1.0")
        header.sCause = FindFormatCause(sLine);
    if (!header.sCause.empty())
        return header;

    std::vector<CPlyReadElem> vecAll;
    while (sLine != "end_header" && ReadLine(reader, sLine))
    {
        if (StartsWith(sLine, "element "))
            vecAll.push_back(ParseElement(sLine.substr(8)));
        else if (StartsWith(sLine, "property ") && !vecAll.empty())
            vecAll.back().vecProps.push_back(ParseProperty(std::string_view(sLine).substr(9)));
    }
    if (sLine != "end_header")
    {
        header.sCause = "its header has no end, 'end_header' is missing";
        return header;
    }
    header.nPosData = reader.GetPos();
    std::copy_if(vecAll.begin(), vecAll.end(), std::back_inserter(header.vecElements),
                 [](const CPlyReadElem& e) { return e.nCount > 0; });
    if (header.vecElements.empty())
        header.sCause = "no element holds anything, every count is 0";
    return header;
}

const CPlyReadElem* CPlyAsRead::FindVertices() const
{
    const auto found =
        std::find_if(vecElements.begin(), vecElements.end(), [](const CPlyReadElem& e) { return e.bVertex; });
    return found == vecElements.end() ? nullptr : &*found;
}

bool CPlyReadElem::HasProp(std::string_view sProp) const
{
    return std::any_of(vecProps.begin(), vecProps.end(),
                       [&](const CPlyReadProp& p) { return p.sName == sProp; });
}

bool CPlyReadElem::HasLists() const
{
    return std::any_of(vecProps.begin(), vecProps.end(), [](const CPlyReadProp& p) { return p.bList; });
}

std::string CPlyReadElem::FindCause() const
{
    std::string sMissing;
    if (bVertex)
        for (const char* pName : {"x", "y", "z"})
            if (!HasProp(pName))
                sMissing += sMissing.empty() ? pName : std::string(", ") + pName;
    if (!sMissing.empty())
        return fmt::format("its vertices have no {}", sMissing);
    for (const CPlyReadProp& prop : vecProps)
        if (prop.pType == nullptr)
            return fmt::format("property type not supported: '{}' of {} in element {}", prop.sType,
                               prop.sName, sName);
    return {};
}

} // namespace zorcld
