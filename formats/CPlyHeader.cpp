#include <formats/CPlyHeader.h>

#include <zor0lang/LongDaStringNullZero.h>

#include <algorithm>
#include <limits>
#include <string_view>

namespace
{

/// Longest line, its line feed included; a longer one counts as several lines.
constexpr std::size_t c_nMaxLine = 511;

struct CScalarType
{
    std::string_view m_sName;
    std::size_t m_nSize;
};

/// In the order in which they are tried.
constexpr CScalarType c_aScalarTypes[] = {{"char", 1}, {"uchar", 1}, {"short", 2}, {"ushort", 2},
                                          {"int", 4},  {"uint", 4},  {"float", 4}, {"double", 8}};
constexpr std::uint8_t c_nNumScalarTypes = 8;

/// In the order of their roles, which start at 1. The line feed is part of the name: a blank behind it
/// makes another name.
constexpr std::string_view c_asRoleNames[] = {"x\n", "y\n", "z\n", "red\n", "green\n", "blue\n"};

constexpr std::string_view c_sListPrefix = "list uchar ";

bool StartsWith(std::string_view sText, std::string_view sPrefix)
{
    return sText.substr(0, sPrefix.size()) == sPrefix;
}

/// The text behind the first blank; nothing when there is none.
std::string_view BehindBlank(std::string_view sText)
{
    const std::size_t nBlank = sText.find(' ');
    return nBlank == std::string_view::npos ? std::string_view() : sText.substr(nBlank + 1);
}

/// KEPT: types are told by the start of their name, in the order of the table, so that "int8" is an "int" of
/// four bytes and "float64" a "float" of four (Property_SizedTypesGoByPrefix_Kept,
/// Read_SizedTypesGoByPrefix_Kept).
///
/// @param sType  type and name of the property; its type is taken off, except what follows the prefix.
/// @return the type's code; 0 when it is none of them, and nothing is taken off.
std::uint8_t TakeType(std::string_view& sType)
{
    const bool bList = StartsWith(sType, c_sListPrefix);
    const std::string_view sScalar = bList ? sType.substr(c_sListPrefix.size()) : sType;
    for (std::uint8_t i = 0; i < c_nNumScalarTypes; ++i)
    {
        if (!StartsWith(sScalar, c_aScalarTypes[i].m_sName))
            continue;
        sType = sScalar.substr(c_aScalarTypes[i].m_sName.size());
        return static_cast<std::uint8_t>(i + 1 + (bList ? c_nNumScalarTypes : 0));
    }
    return 0;
}

enumPlyRole RoleDaName(std::string_view sName)
{
    const auto* const pFound = std::find(std::begin(c_asRoleNames), std::end(c_asRoleNames), sName);
    if (pFound == std::end(c_asRoleNames))
        return PlyRole_None;
    return static_cast<enumPlyRole>(pFound - std::begin(c_asRoleNames) + 1);
}

/// @return the integer at the start of `sText`, the nearest int32 where it is out of range.
std::int32_t CountDaText(std::string_view sText)
{
    const long n = zor::LongDaStringNullZero(std::string(sText));
    return static_cast<std::int32_t>(std::clamp<long>(n, std::numeric_limits<std::int32_t>::min(),
                                                      std::numeric_limits<std::int32_t>::max()));
}

} // namespace

std::size_t CPlyProperty::GetSize() const noexcept
{
    return c_aScalarTypes[(m_ucType - 1) % c_nNumScalarTypes].m_nSize;
}

/// Reads the next line, or the next part of a long one, into m_sLine.
/// @return false at the end of the file.
bool CPlyHeader::ReadLine(std::FILE* pFile)
{
    m_sLine.clear();
    int c = 0;
    while (m_sLine.size() < c_nMaxLine && c != '\n' && (c = std::getc(pFile)) != EOF)
    {
        ++m_nDataOffset;
        m_sLine.push_back(static_cast<char>(c));
        if (c != '\r')
            continue;
        // Carriage return and line feed make one line feed; a carriage return alone is a character.
        c = std::getc(pFile);
        if (c == '\n')
        {
            ++m_nDataOffset;
            m_sLine.back() = '\n';
        }
        else
        {
            static_cast<void>(std::ungetc(c, pFile)); // of EOF it does nothing
        }
    }
    const bool bRead = !m_sLine.empty();
    m_sLine.resize(std::min(m_sLine.size(), m_sLine.find('\0')));
    return bRead;
}

bool CPlyHeader::ReadMagic(std::FILE* pFile)
{
    return ReadLine(pFile) && m_sLine == "ply\n" && ReadLine(pFile) &&
           m_sLine == "format binary_little_endian 1.0\n";
}

bool CPlyHeader::Read(std::FILE* pFile)
{
    if (!ReadMagic(pFile))
        return false;
    while (ReadLine(pFile))
    {
        if (StartsWith(m_sLine, "element "))
        {
            OpenElement();
        }
        else if (StartsWith(m_sLine, "property "))
        {
            AddProperty();
        }
        else if (m_sLine == "end_header\n")
        {
            CompleteElement();
            return true;
        }
    }
    // KEPT: a header that the end of the file cuts off is taken as far as it goes
    // (EndOfFile_DropsTheOpenElement_Kept, Read_CutOffHeaderWithNothingToReadSucceeds_Kept).
    return true;
}

/// Completes the open element and opens the one that the line announces.
void CPlyHeader::OpenElement()
{
    CompleteElement();
    const std::string_view sLine = m_sLine;
    if (StartsWith(BehindBlank(sLine), "vertex "))
        m_open.m_bVertex = true;
    m_open.m_nCount = CountDaText(sLine.substr(sLine.rfind(' ') + 1)); // "element " has a blank
}

/// Appends the open element to the list when it has items; its properties go with it, or away.
void CPlyHeader::CompleteElement()
{
    if (m_open.m_nCount > 0)
    {
        m_open.m_nNumProps = m_vecProps.size() - m_open.m_nFirstProp;
        m_vecElements.push_back(m_open);
        m_open.m_nFirstProp = m_vecProps.size();
        // KEPT: the vertex mark is cleared only here. An element without items leaves it behind, so that the
        // element after an empty vertex element is taken for the vertices
        // (Element_AfterEmptyVertexIsVertex_Kept, FacesBehindNoVertices_Fail_Kept).
        m_open.m_bVertex = false;
    }
    else
    {
        m_vecProps.resize(m_open.m_nFirstProp);
    }
}

void CPlyHeader::AddProperty()
{
    std::string_view sRest = BehindBlank(m_sLine);
    CPlyProperty prop;
    prop.m_ucType = TakeType(sRest);
    prop.m_eRole = RoleDaName(BehindBlank(sRest));
    m_vecProps.push_back(prop);
}
