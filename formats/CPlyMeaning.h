#ifndef FORMATS_CPLYMEANING_H
#define FORMATS_CPLYMEANING_H

#include <formats/PlyTypes.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class CPlyLines;

enum enumPlyFormat : std::uint8_t
{
    PlyFormat_Ascii,
    PlyFormat_Little,
    PlyFormat_Big,
};

/// A property by what its words mean.
struct CPlyMeantProperty
{
    /// The type that the library takes the value, or the entries of the list, for; null: for none.
    const CPlyType* FindTaken() const noexcept { return FindTakenPlyType(sType); }

    std::string sName;
    std::string sType;                ///< as written; of a list that of its entries
    const CPlyType* pType = nullptr;  ///< null: not known
    const CPlyType* pCount = nullptr; ///< of a list; null: a single value
    bool bList = false;
};

/// An element by what its words mean.
struct CPlyMeantElement
{
    /// @return null when there is none of that name.
    const CPlyMeantProperty* FindProp(std::string_view sProp) const;

    /// @return bytes of an item in a binary file; -1 when it holds lists or unknown types.
    std::int64_t CalcItemSize() const;

    std::string sName;
    std::int64_t nCount = 0; ///< as written, also below 0
    std::vector<CPlyMeantProperty> vecProps;
};

/// The header of a PLY file of any format by what its words mean: both names of each type, in any order, with
/// lines that end in any way, blanks and tabs as they come. CPlyHeader::Read fills it.
///
/// At most 1000 elements and 10000 properties are kept; more are refused.
class CPlyMeaning
{
public:
    /// Takes the line that `lines` has read last. @return false when no more lines are wanted.
    bool TakeLine(const CPlyLines& lines);

    /// @return why the header cannot be read, one line without a full stop; empty: it can.
    const std::string& GetCause() const noexcept { return m_sCause; }

    enumPlyFormat GetFormat() const noexcept { return m_eFormat; }

    /// All elements, empty ones included.
    const std::vector<CPlyMeantElement>& GetElements() const noexcept { return m_vecElements; }

    /// Position of the first byte behind the header.
    std::int64_t GetDataOffset() const noexcept { return m_nDataOffset; }

    /// @return the first element "vertex"; null when there is none.
    const CPlyMeantElement* FindVertices() const;

private:
    std::string TakeWords(const std::vector<std::string>& vecWords);
    std::string TakeFormat(const std::vector<std::string>& vecWords);
    std::string TakeElement(const std::vector<std::string>& vecWords);
    std::string TakeProperty(const std::vector<std::string>& vecWords);

    std::string m_sCause = "not a PLY file"; // while the first line is to come
    bool m_bInside = false;                  // the first line has come
    bool m_bFormat = false;
    enumPlyFormat m_eFormat = PlyFormat_Ascii;
    std::vector<CPlyMeantElement> m_vecElements;
    std::size_t m_nNumProps = 0; // of all elements
    std::int64_t m_nDataOffset = 0;
};

#endif
