#ifndef HOST_FILES_FILEKINDS_H
#define HOST_FILES_FILEKINDS_H

#include <host/files/CFinding.h>

#include <zor4data/enumPntCldFile.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zorcld
{

/// What a file says of itself before it is loaded.
struct CFileFacts
{
    std::int64_t nAnnounced = -1; ///< points that it announces; -1: it does not say
    std::int64_t nHeld = -1;      ///< points that it has room for; -1: not known
    bool bDuplicates = true;      ///< points at one x and y are removed while it is loaded
    std::vector<CFinding> vecFindings;
    bool bNoProgress = false; ///< it announces items by the billion that take no bytes: no call for each
};

/// A kind of file that the library reads. The library tells only that a load failed: what a file
/// announces, and why it cannot be read, is found here.
struct CFileKind
{
    enumPntCldFile eFile;
    const char* pName;                           ///< for --type and in results
    const char* pTitle;                          ///< for people
    std::vector<std::string_view> vecExtensions; ///< lower case, without the dot

    /// Do the first bytes of a file, up to 16 of them, say that it is of this kind?
    bool (*pIsContent)(std::string_view sFirstBytes);

    /// What its head alone tells: cheap. The file exists and can be opened; anything else may be wrong with
    /// it.
    CFileFacts (*pFindFacts)(const std::string& sPath);

    /// @return why the library does not load the file, without a full stop; empty: nothing found.
    std::string (*pFindCause)(const std::string& sPath);
};

extern const CFileKind c_kindNative;
extern const CFileKind c_kindPly;
extern const CFileKind c_kindGrid;
extern const CFileKind c_kindLas;

/// All kinds, those with certain first bytes before those without.
const std::vector<const CFileKind*>& GetFileKinds();

/// @param sType  name of a kind, or empty: told from the first bytes, then from the extension.
/// @throws CFailure when the file cannot be opened for reading or its kind is not known.
const CFileKind& FindFileKind(const std::string& sPath, const std::string& sType);

} // namespace zorcld

#endif
