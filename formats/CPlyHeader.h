#ifndef FORMATS_CPLYHEADER_H
#define FORMATS_CPLYHEADER_H

#include <formats/CFileCause.h>
#include <formats/PlyTypes.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class CByteReader;
class CPlyMeaning;

/// A property of an element as the library takes it: role and type. The types are 1 to 8 for those of
/// c_aPlyTypes, 9 to 16 for lists of them with a one-byte count, 0 for any other.
struct CPlyProperty
{
    bool IsReadable() const noexcept { return ucType != 0; }
    bool IsList() const noexcept { return ucType > c_nNumTakenPlyTypes; }

    /// Bytes of the value, of a list those of one of its entries. REQUIRES: IsReadable().
    std::size_t GetSize() const noexcept
    {
        return c_aPlyTypes[(ucType - std::size_t{1}) % c_nNumTakenPlyTypes].nSize;
    }

    enumPlyRole eRole = PlyRole_None;
    std::uint8_t ucType = 0;
    std::uint16_t nTextSize = 0; ///< of its type and name as written, see CPlyHeader::GetText
    std::size_t nText = 0;
};

/// A group of items of one layout: the vertices, the faces and so on.
struct CPlyElement
{
    bool bVertex = false;        ///< the items are the points
    std::int32_t nCount = 0;     ///< number of items, above 0 in a list of elements
    std::int64_t nAnnounced = 0; ///< the same before it was cut to 32 bits
    std::size_t nFirstProp = 0;  ///< its properties are a run of the header's
    std::size_t nNumProps = 0;
    std::uint16_t nTextSize = 0; ///< of its name and count as written, see CPlyHeader::GetName
    std::size_t nText = 0;
};

/// The header of a PLY file as the library takes it: binary, little-endian. Fill it with `Read`, then ask.
///
/// It takes a few times the header's own bytes of memory: nothing in it is sized by a number that the file
/// merely states.
class CPlyHeader
{
public:
    /// Reads the header.
    ///
    /// @param reader    at the start of the file. It is left somewhere behind the header.
    /// @param pMeaning  receives the same header as it is meant, also where the library refuses it; or null.
    /// @return false when the file is not a binary little-endian PLY of version 1.0. A header that ends
    ///         with the file is no failure: the element that it was in is dropped.
    bool Read(CByteReader& reader, CPlyMeaning* pMeaning = nullptr);

    /// The elements of positive count, in their order.
    const std::vector<CPlyElement>& GetElements() const noexcept { return m_vecElements; }

    /// The properties of `element`, which is one of `GetElements`, in their order: `nNumProps` of them.
    const CPlyProperty* GetProperties(const CPlyElement& element) const noexcept
    {
        return m_vecProps.data() + element.nFirstProp;
    }

    /// Position of the first byte behind the header, as the bytes of the file count.
    std::int64_t GetDataOffset() const noexcept { return m_nDataOffset; }

    /// The name of one of `GetElements`, as written.
    std::string_view GetName(const CPlyElement& element) const;

    /// @return the element whose items become points first; null when there is none.
    const CPlyElement* FindVertices() const;

    /// @return why the library refuses the header. A header without an end is a cause too, though the library
    ///         takes the elements that stand whole in it: IsTaken.
    CFileCause FindCause() const;

    /// @return whether the library goes on to the data.
    bool IsTaken() const noexcept { return m_eState >= State_Inside && !m_vecElements.empty(); }

    /// @return whether an element has x, y and z.
    bool HasCoords(const CPlyElement& element) const { return FindMissingCoords(element).empty(); }

    /// @return why the library gives up at one of `GetElements`, likewise.
    CFileCause FindCause(const CPlyElement& element) const;

private:
    std::string FindMissingCoords(const CPlyElement& element) const;
    enum enumState : std::uint8_t
    {
        State_First,  ///< line 0 is to come, and when all is read, was wrong
        State_Format, ///< the same of line 1
        State_Inside,
        State_End,
    };

    /// @return false when no more lines are wanted.
    bool TakePiece(const std::string& sPiece);
    void OpenElement(std::string_view sPiece);
    void CompleteElement();
    void AddProperty(std::string_view sPiece);
    std::string_view GetText(std::size_t nText, std::size_t nSize) const;

    enumState m_eState = State_First;
    std::string m_sFormat; // line 1 where it is refused
    std::int64_t m_nDataOffset = 0;
    CPlyElement m_open; // the element that properties go to
    std::vector<CPlyElement> m_vecElements;
    std::vector<CPlyProperty> m_vecProps; // those of m_vecElements one after the other, then the open ones
    std::string m_sTexts;                 // of all of them as written
};

#endif
