#include <formats/CPlyHeader.h>

#include <formats/CByteReader.h>
#include <formats/CPlyLines.h>
#include <formats/CPlyMeaning.h>
#include <formats/Compact.h>
#include <formats/MakePrintable.h>
#include <zor0lang/LongDaStringNullZero.h>

#include <algorithm>

namespace
{

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

/// The text behind the last blank; all of it when there is none.
std::string_view BehindLastBlank(std::string_view sText)
{
    return sText.substr(sText.rfind(' ') + 1);
}

/// Takes the start of a list with a one-byte count off a property. @return false when it is none.
bool TakeList(std::string_view& sText)
{
    for (const std::string_view sPart :
         {std::string_view("list "), c_plyByteType.sName, std::string_view(" ")})
    {
        if (!StartsWith(sText, sPart))
            return false;
        sText.remove_prefix(sPart.size());
    }
    return true;
}

/// @param sText  type and name of the property; its type is taken off, except what follows the prefix.
/// @return the type's code; 0 when it is none of them, and nothing is taken off.
std::uint8_t TakeType(std::string_view& sText)
{
    std::string_view sScalar = sText;
    const bool bList = TakeList(sScalar);
    const CPlyType* const pType = FindTakenPlyType(bList ? sScalar : sText);
    if (pType == nullptr)
        return 0;
    sText = (bList ? sScalar : sText).substr(pType->sName.size());
    return static_cast<std::uint8_t>(pType - c_aPlyTypes.data() + 1 + (bList ? c_nNumTakenPlyTypes : 0));
}

/// @param sName  the rest of the line. Its line feed is part of the name: a blank before it makes another
/// one.
enumPlyRole RoleFromName(std::string_view sName)
{
    if (sName.empty() || sName.back() != '\n')
        return PlyRole_None;
    sName.remove_suffix(1);
    const auto* const pFound = std::find(c_asPlyRoleNames.begin(), c_asPlyRoleNames.end(), sName);
    if (pFound == c_asPlyRoleNames.end())
        return PlyRole_None;
    return static_cast<enumPlyRole>(pFound - c_asPlyRoleNames.begin() + PlyRole_X);
}

CFileCause FindFormatCause(std::string_view sPiece)
{
    if (StartsWith(sPiece, "format ascii"))
        return {FileCause_PlyAscii, "ASCII PLY is not supported, only binary little-endian"};
    if (StartsWith(sPiece, "format binary_big_endian"))
        return {FileCause_PlyBigEndian, "big-endian PLY is not supported, only binary little-endian"};
    return {FileCause_PlyFormat, "its second line is not 'format binary_little_endian 1.0'"};
}

} // namespace

bool CPlyHeader::Read(CByteReader& reader, CPlyMeaning* pMeaning)
{
    CPlyLines lines(reader);
    bool bTaken = true; // more pieces are wanted for the library's reading
    bool bMeant = pMeaning != nullptr;
    while ((bTaken || bMeant) && m_eState != State_End && lines.ReadPiece())
    {
        bTaken = bTaken && TakePiece(lines.GetPiece());
        if (bMeant && (lines.IsLineEnd() || lines.IsTooLong()))
            bMeant = pMeaning->TakeLine(lines);
        m_nDataOffset = lines.GetPos();
    }
    // KEPT: a header that the end of the file cuts off is taken as far as it goes
    // (EndOfFile_DropsTheOpenElement_Kept, Read_CutOffHeaderWithNothingToReadSucceeds_Kept).
    return m_eState >= State_Inside;
}

bool CPlyHeader::TakePiece(const std::string& sPiece)
{
    if (m_eState == State_First)
    {
        if (sPiece != c_sPlyFirstLine)
            return false;
        m_eState = State_Format;
    }
    else if (m_eState == State_Format)
    {
        m_sFormat = sPiece;
        if (sPiece != c_sPlyFormatLine)
            return false;
        m_eState = State_Inside;
    }
    else if (StartsWith(sPiece, "element "))
    {
        OpenElement(sPiece);
    }
    else if (StartsWith(sPiece, "property "))
    {
        AddProperty(sPiece);
    }
    else if (sPiece == "end_header\n")
    {
        CompleteElement();
        m_eState = State_End;
    }
    return true;
}

/// Completes the open element and opens the one that the line announces.
void CPlyHeader::OpenElement(std::string_view sPiece)
{
    CompleteElement();
    const std::string_view sText = BehindBlank(sPiece);
    if (StartsWith(sText, "vertex "))
        m_open.bVertex = true;
    m_open.nAnnounced = zor::LongDaStringNullZero(std::string(BehindLastBlank(sPiece)));
    m_open.nCount = SaturateToInt32(m_open.nAnnounced);
    m_open.nText = m_sTexts.size();
    m_open.nTextSize = static_cast<std::uint16_t>(sText.size());
    m_sTexts += sText;
}

/// Appends the open element to the list when it has items; its properties go with it, or away.
void CPlyHeader::CompleteElement()
{
    if (m_open.nCount > 0)
    {
        m_open.nNumProps = m_vecProps.size() - m_open.nFirstProp;
        m_vecElements.push_back(m_open);
        m_open.nFirstProp = m_vecProps.size();
        // KEPT: the vertex mark is cleared only here. An element without items leaves it behind, so that the
        // element after an empty vertex element is taken for the vertices
        // (Element_AfterEmptyVertexIsVertex_Kept, FacesBehindNoVertices_Fail_Kept).
        m_open.bVertex = false;
    }
    else
    {
        m_vecProps.resize(m_open.nFirstProp);
        m_sTexts.resize(m_open.nText);
    }
}

void CPlyHeader::AddProperty(std::string_view sPiece)
{
    std::string_view sRest = BehindBlank(sPiece);
    CPlyProperty prop;
    prop.nText = m_sTexts.size();
    prop.nTextSize = static_cast<std::uint16_t>(sRest.size());
    m_sTexts += sRest;
    prop.ucType = TakeType(sRest);
    prop.eRole = RoleFromName(BehindBlank(sRest));
    m_vecProps.push_back(prop);
}

/// As written, without the line feed.
std::string_view CPlyHeader::GetText(std::size_t nText, std::size_t nSize) const
{
    const std::string_view sText = std::string_view(m_sTexts).substr(nText, nSize);
    return sText.substr(0, sText.find('\n'));
}

std::string_view CPlyHeader::GetName(const CPlyElement& element) const
{
    const std::string_view sText = GetText(element.nText, element.nTextSize);
    return sText.substr(0, sText.find(' '));
}

const CPlyElement* CPlyHeader::FindVertices() const
{
    const auto found = std::find_if(m_vecElements.begin(), m_vecElements.end(),
                                    [](const CPlyElement& element) { return element.bVertex; });
    return found == m_vecElements.end() ? nullptr : &*found;
}

CFileCause CPlyHeader::FindCause() const
{
    if (m_eState == State_First)
        return {FileCause_PlyFirstLine, "not a PLY file"};
    if (m_eState == State_Format)
        return FindFormatCause(m_sFormat);
    if (m_eState != State_End)
        return {FileCause_PlyNoEnd, "its header has no end, 'end_header' is missing"};
    if (m_vecElements.empty())
        return {FileCause_PlyNoElements, "no element holds anything, every count is 0"};
    return {};
}

std::string CPlyHeader::FindMissingCoords(const CPlyElement& element) const
{
    const CPlyProperty* const pProps = GetProperties(element);
    std::string sMissing;
    for (std::size_t i = 0; i < c_nNumPlyCoords; ++i)
        if (std::none_of(pProps, pProps + element.nNumProps,
                         [&](const CPlyProperty& prop)
                         { return prop.eRole == PlyRole_X + static_cast<int>(i); }))
            sMissing += (sMissing.empty() ? "" : ", ") + std::string(c_asPlyRoleNames[i]);
    return sMissing;
}

CFileCause CPlyHeader::FindCause(const CPlyElement& element) const
{
    const CPlyProperty* const pProps = GetProperties(element);
    const CPlyProperty* const pEnd = pProps + element.nNumProps;
    const std::string sMissing = element.bVertex ? FindMissingCoords(element) : "";
    const std::string sName = MakePrintableName(GetName(element));
    if (!sMissing.empty())
        return {FileCause_PlyNoCoords,
                (sName == "vertex" ? "its vertices have no "
                                   : "its element " + sName + " is taken for the vertices and has no ") +
                    sMissing};
    const CPlyProperty* const pOther =
        std::find_if(pProps, pEnd, [](const CPlyProperty& prop) { return !prop.IsReadable(); });
    if (pOther == pEnd)
        return {};
    const std::string_view sText = GetText(pOther->nText, pOther->nTextSize);
    return {FileCause_PlyPropertyType,
            "property type not supported: '" + MakePrintableName(sText.substr(0, sText.rfind(' '))) +
                "' of " + MakePrintableName(BehindLastBlank(sText)) + " in element " + sName};
}
