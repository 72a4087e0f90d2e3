#ifndef HOST_FILES_PLYLAYOUT_H
#define HOST_FILES_PLYLAYOUT_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zorcld
{

class CByteReader;

enum enumPlyFormat
{
    PlyFormat_Ascii,
    PlyFormat_Little,
    PlyFormat_Big
};

/// A type of values by either of its names.
struct CPlyType
{
    std::string_view sName;  ///< "float"
    std::string_view sSized; ///< "float32"
    std::size_t nSize;
    char cClass; ///< 'i' signed, 'u' unsigned, 'f' floating
};

struct CPlyProp
{
    std::string sName;
    std::string sType;                ///< as written; of a list that of its items
    const CPlyType* pType = nullptr;  ///< null: not known
    const CPlyType* pCount = nullptr; ///< of a list; null: a single value
    bool bList = false;
};

struct CPlyElem
{
    std::string sName;
    std::int64_t nCount = 0; ///< as written, also below 0
    std::vector<CPlyProp> vecProps;

    /// @return null when there is none of that name.
    const CPlyProp* FindProp(std::string_view sProp) const;

    /// @return bytes of an item in a binary file; -1 when it holds lists or unknown types.
    std::int64_t CalcItemSize() const;
};

/// The header of a PLY file of any format, by what its words mean.
struct CPlyLayout
{
    enumPlyFormat eFormat = PlyFormat_Ascii;
    std::vector<CPlyElem> vecElems;
    std::int64_t nPosData = 0;

    /// @return the first element "vertex"; null when there is none.
    const CPlyElem* FindVertices() const;
};

/// Takes both sets of type names, any order of the header, and lines that end in any way.
/// @return why the header cannot be read, without a full stop; empty: it can.
std::string ReadPlyLayout(CByteReader& reader, CPlyLayout& layout);

} // namespace zorcld

#endif
