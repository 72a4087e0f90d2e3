#include <host/files/FileKinds.h>
#include <host/files/PlyFindings.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nMaxLine = 511; // the reader takes longer lines as several

struct CScalarType
{
    std::string_view sName;
    std::int64_t nSize;
};

/// In the order in which the reader matches them, by the start of the name.
constexpr std::array<CScalarType, 8> c_types = {{{"char", 1},
                                                 {"uchar", 1},
                                                 {"short", 2},
                                                 {"ushort", 2},
                                                 {"int", 4},
                                                 {"uint", 4},
                                                 {"float", 4},
                                                 {"double", 8}}};

constexpr std::string_view c_sList = "list uchar ";

struct CProperty
{
    std::string sType; // as written
    std::string sName;
    const CScalarType* pType; // null: the reader cannot read it
    bool bList;
};

struct CElement
{
    std::string sName;
    bool bVertex;
    std::int64_t nCount;
    std::vector<CProperty> vecProps;
};

struct CHeader
{
    std::string sCause;                // of a header that is refused as such
    std::vector<CElement> vecElements; // those with a count above 0
    std::int64_t nEnd = 0;             // where the data begins
};

constexpr std::int64_t c_nManyItems = 1000000; // more without a byte each are no work worth telling of

using TFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

TFile Open(const std::string& sPath)
{
    return {std::fopen(sPath.c_str(), "rb"), std::fclose};
}

bool StartsWith(std::string_view sText, std::string_view sStart)
{
    return sText.substr(0, sStart.size()) == sStart;
}

/// @return false at the end of the file; else the line without its end.
bool ReadLine(std::FILE* pFile, std::string& sLine)
{
    sLine.clear();
    int c = 0;
    while (sLine.size() < c_nMaxLine && (c = std::getc(pFile)) != EOF && c != '\n')
        sLine += static_cast<char>(c);
    if (!sLine.empty() && sLine.back() == '\r')
        sLine.pop_back();
    return c != EOF || !sLine.empty();
}

std::string FindFormatCause(const std::string& sLine)
{
    if (StartsWith(sLine, "format ascii"))
        return "ASCII PLY is not supported, only binary little-endian";
    if (StartsWith(sLine, "format binary_big_endian"))
        return "big-endian PLY is not supported, only binary little-endian";
    return "its second line is not 'format binary_little_endian 1.0'";
}

CProperty ParseProperty(std::string_view sText)
{
    CProperty prop{std::string(sText.substr(0, sText.rfind(' '))),
                   std::string(sText.substr(sText.rfind(' ') + 1)), nullptr, StartsWith(sText, c_sList)};
    const std::string_view sType = prop.bList ? sText.substr(c_sList.size()) : sText;
    const auto found = std::find_if(c_types.begin(), c_types.end(),
                                    [&](const CScalarType& t) { return StartsWith(sType, t.sName); });
    if (found != c_types.end())
        prop.pType = &*found;
    return prop;
}

CElement ParseElement(const std::string& sText)
{
    return {sText.substr(0, sText.find(' ')),
            StartsWith(sText, "vertex "),
            std::strtoll(sText.substr(sText.rfind(' ') + 1).c_str(), nullptr, 10),
            {}};
}

CHeader ReadHeader(std::FILE* pFile)
{
    CHeader header;
    std::string sLine;
    if (!ReadLine(pFile, sLine) || sLine != "ply")
        header.sCause = "not a PLY file";
    else if (!ReadLine(pFile, sLine) || sLine != "format binary_little_endian 1.0")
        header.sCause = FindFormatCause(sLine);
    if (!header.sCause.empty())
        return header;

    std::vector<CElement> vecAll;
    while (sLine != "end_header" && ReadLine(pFile, sLine))
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
    header.nEnd = std::ftell(pFile);
    std::copy_if(vecAll.begin(), vecAll.end(), std::back_inserter(header.vecElements),
                 [](const CElement& e) { return e.nCount > 0; });
    if (header.vecElements.empty())
        header.sCause = "no element holds anything, every count is 0";
    return header;
}

const CElement* FindVertices(const CHeader& header)
{
    const auto found = std::find_if(header.vecElements.begin(), header.vecElements.end(),
                                    [](const CElement& e) { return e.bVertex; });
    return found == header.vecElements.end() ? nullptr : &*found;
}

const CProperty* FindProperty(const CElement& element, std::string_view sName)
{
    const auto found = std::find_if(element.vecProps.begin(), element.vecProps.end(),
                                    [&](const CProperty& p) { return p.sName == sName; });
    return found == element.vecProps.end() ? nullptr : &*found;
}

/// Why the reader does not even begin with this element; empty when it does.
std::string FindElementCause(const CElement& element)
{
    std::string sMissing;
    if (element.bVertex)
        for (const char* pName : {"x", "y", "z"})
            if (FindProperty(element, pName) == nullptr)
                sMissing += sMissing.empty() ? pName : std::string(", ") + pName;
    if (!sMissing.empty())
        return fmt::format("its vertices have no {}", sMissing);
    for (const CProperty& prop : element.vecProps)
        if (prop.pType == nullptr)
            return fmt::format("property type not supported: '{}' of {} in element {}", prop.sType,
                               prop.sName, element.sName);
    return {};
}

/// Reads over one item. @return false when the file ends within it.
bool SkipItem(std::FILE* pFile, const CElement& element, std::int64_t& nPos, std::int64_t nSize)
{
    for (const CProperty& prop : element.vecProps)
    {
        std::int64_t nItems = 1;
        if (prop.bList)
        {
            if (std::fseek(pFile, nPos, SEEK_SET) != 0 || (nItems = std::getc(pFile)) == EOF)
                return false;
            ++nPos;
        }
        nPos += nItems * prop.pType->nSize;
        if (nPos > nSize)
            return false;
    }
    return true;
}

/// @return the number of whole items up to the end of the file, at most the count of the element.
std::int64_t CountItems(std::FILE* pFile, const CElement& element, std::int64_t& nPos, std::int64_t nSize)
{
    const bool bLists = std::any_of(element.vecProps.begin(), element.vecProps.end(),
                                    [](const CProperty& p) { return p.bList; });
    if (!bLists)
    {
        std::int64_t nItemSize = 0;
        for (const CProperty& prop : element.vecProps)
            nItemSize += prop.pType->nSize;
        const std::int64_t nItems =
            nItemSize == 0 ? element.nCount : std::min(element.nCount, (nSize - nPos) / nItemSize);
        nPos += nItems * nItemSize;
        return nItems;
    }
    for (std::int64_t i = 0; i < element.nCount; ++i)
        if (!SkipItem(pFile, element, nPos, nSize))
            return i;
    return element.nCount;
}

std::string FindPlyCause(const std::string& sPath)
{
    const TFile pFile = Open(sPath);
    if (pFile == nullptr)
        return "cannot be opened";
    const CHeader header = ReadHeader(pFile.get());
    if (!header.sCause.empty())
        return header.sCause;
    std::error_code error;
    const auto nSize = static_cast<std::int64_t>(std::filesystem::file_size(sPath, error));
    std::int64_t nPos = header.nEnd;
    for (const CElement& element : header.vecElements)
    {
        std::string sCause = FindElementCause(element);
        if (!sCause.empty())
            return sCause;
        const std::int64_t nItems = CountItems(pFile.get(), element, nPos, nSize);
        if (nItems == element.nCount)
            continue;
        return element.bVertex ? fmt::format("truncated after {} of {} vertices", nItems, element.nCount)
                               : fmt::format("truncated after {} of {} items of element {}", nItems,
                                             element.nCount, element.sName);
    }
    return FindVertices(header) == nullptr ? "has no vertices" : "";
}

CFileFacts FindPlyFacts(const std::string& sPath)
{
    CFileFacts facts;
    const TFile pFile = Open(sPath);
    if (pFile == nullptr)
        return facts;
    const CHeader header = ReadHeader(pFile.get());
    facts.bNoProgress = std::any_of(header.vecElements.begin(), header.vecElements.end(),
                                    [](const CElement& element)
                                    { return element.vecProps.empty() && element.nCount > c_nManyItems; });
    if (const CElement* const pVertices = FindVertices(header))
        facts.nAnnounced = pVertices->nCount;
    facts.vecFindings = FindPlyFindings(sPath);
    return facts;
}

} // namespace

const CFileKind c_kindPly = {PntCldFile_Ply,
                             "ply",
                             "PLY",
                             {"ply"},
                             [](std::string_view sFirst)
                             { return StartsWith(sFirst, "ply\n") || StartsWith(sFirst, "ply\r"); },
                             FindPlyFacts,
                             FindPlyCause};

} // namespace zorcld
