#ifndef HOST_FILES_CHECKFILE_H
#define HOST_FILES_CHECKFILE_H

#include <formats/CFileCause.h>
#include <formats/CFinding.h>
#include <zor4data/CFileFacts.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zorcld
{

class CConsole;
struct CFileKind;
struct CInputOptions;

/// What loading a file would come to.
struct CCheckResult
{
    std::string sPath;
    std::string sCommand; ///< that converts it, where a finding or the cause says that this helps; of a
                          ///< folder, that checks the files in it
    const CFileKind* pKind = nullptr; ///< null: not known
    std::int64_t nNumPnts = -1;       ///< that it holds, or else announces; -1: not known
    CFileCause cause;                 ///< why it cannot be loaded; empty: it can
    CFileFacts facts;                 ///< what the library knows of it
    bool bConvert = false;            ///< against that cause, the command helps
    bool bLoaded = false;             ///< it was loaded to find that out
    bool bUnseen = false;             ///< only the library reads its points
    std::vector<CFinding> vecFindings;
    std::vector<CFinding> vecRemarks; ///< nothing wrong
};

/// Looks at all points of a file. Memory does not grow with the file beyond what CStackedPnts takes; but LAZ
/// is loaded, since nothing less tells whether it is whole.
CCheckResult CheckFile(const CInputOptions& input, const CConsole& console);

} // namespace zorcld

#endif
