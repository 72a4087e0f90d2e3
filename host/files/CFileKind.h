#ifndef HOST_FILES_CFILEKIND_H
#define HOST_FILES_CFILEKIND_H

#include <zor4data/enumPntCldFile.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class CByteReader;

namespace zorcld
{

class CInputFile;

/// A kind of file that the library reads: how it is called.
struct CFileKind
{
    enumPntCldFile eFile;
    const char* pName;                           ///< for --type and in results
    const char* pTitle;                          ///< for people
    std::vector<std::string_view> vecExtensions; ///< lower case, without the dot

    /// @param sPath   as the user named it.
    /// @param reader  of that file, at its start; moved into the result.
    std::unique_ptr<CInputFile> (*pMakeFile)(const std::string& sPath, CByteReader&& reader);
};

} // namespace zorcld

#endif
