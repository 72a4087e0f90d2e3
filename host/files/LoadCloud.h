#ifndef HOST_FILES_LOADCLOUD_H
#define HOST_FILES_LOADCLOUD_H

#include <formats/CCoordSystem.h>
#include <formats/CFinding.h>
#include <host/files/CInputOptions.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class CPntCld;

namespace zorcld
{

class CConsole;
class CInputFile;

/// What is known of a load beside the cloud itself.
struct CLoadFacts
{
    bool HasFinding(std::string_view sCode) const;

    std::int64_t nNumRead = 0;     ///< points that the library has read
    std::int64_t nDuplicates = -1; ///< points removed for one at their x and y; -1: not known
    std::int64_t nNotNumbers = 0;  ///< points of these with coordinates that are not numbers
    std::vector<CFinding> vecFindings;
    std::string sCommand; ///< that converts the file, where this helps against a finding; mostly empty
    CCoordSystem coords;  ///< none where the file states none
    double dSeconds = 0.0;
    double dSecondsRead = -1.0;  ///< opening, decoding and storing; -1: not told apart
    double dSecondsIndex = -1.0; ///< octree and duplicates; -1: not told apart
};

/// Loads the file with a progress bar; warnings go to the console.
/// @throws CFailure with the cause when it cannot be read.
CLoadFacts LoadCloud(CPntCld& cloud, CInputFile& file, const CConsole& console);

/// The same for commands that take files as the library does: warnings and cause name the command that
/// converts the file, where that helps and would not fail. To find that out the file may be read once more.
CLoadFacts LoadOrAdvise(CPntCld& cloud, CInputFile& file, const CConsole& console);
CLoadFacts LoadOrAdvise(CPntCld& cloud, const CInputOptions& input, const CConsole& console);

/// @throws CFailure when points of a LAS file were moved, so that it is not worth saving.
void RefuseMovedPnts(const CLoadFacts& facts, const std::string& sPath);

} // namespace zorcld

#endif
