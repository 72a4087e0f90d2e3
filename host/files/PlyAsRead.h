#ifndef HOST_FILES_PLYASREAD_H
#define HOST_FILES_PLYASREAD_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zorcld
{

class CByteReader;

/// A type as the library tells it, by the start of its name.
struct CPlyReadType
{
    std::string_view sName;
    std::int64_t nSize;
};

struct CPlyReadProp
{
    std::string sType; ///< as written
    std::string sName;
    const CPlyReadType* pType; ///< null: the library cannot read it
    bool bList;                ///< of a count of one byte, then its items
};

struct CPlyReadElem
{
    std::string sName;
    bool bVertex;
    std::int64_t nCount;
    std::vector<CPlyReadProp> vecProps;

    bool HasProp(std::string_view sProp) const;
    bool HasLists() const;

    /// @return why the library does not even begin with this element; empty when it does.
    std::string FindCause() const;
};

/// The header of a PLY file as the library takes it.
struct CPlyAsRead
{
    std::string sCause;                    ///< of a header that is refused as such; empty: it is not
    std::vector<CPlyReadElem> vecElements; ///< those with a count above 0
    std::int64_t nPosData = 0;

    /// @return the first element that counts as that of the vertices; null when there is none.
    const CPlyReadElem* FindVertices() const;
};

CPlyAsRead ReadPlyAsRead(CByteReader& reader);

} // namespace zorcld

#endif
