#ifndef HOST_OUTPUT_CTEMPFILE_H
#define HOST_OUTPUT_CTEMPFILE_H

#include <formats/CPlacedFile.h>
#include <host/output/CWatchedFile.h>

#include <optional>
#include <string>

namespace zorcld
{

/// An empty file under a temporary name beside the place where it is to be. It goes away with this object,
/// and when the program is interrupted (CWatchedFile), unless `Place` has put it there.
///
/// What a run leaves that was killed or lost its machine, the next one in that folder removes
/// (`RemoveAbandoned`).
class CTempFile
{
public:
    /// @param sTarget  where the file is to be; a symbolic link is followed.
    /// @throws CFailure, in the name of `sTarget`, when it cannot be created, or is a link that leads
    /// nowhere.
    explicit CTempFile(const std::string& sTarget);

    const std::string& GetPath() const { return m_file.GetPath(); }

    /// Brings the file to the disk and puts it in its place; a file that is there is replaced.
    ///
    /// REQUIRES: whoever wrote to it has closed it.
    /// @return false, with errno, when that fails; the file is then removed with this object.
    bool Place();

private:
    CTempFile(const std::string& sTarget, const CHeldSignals& held);

    std::optional<CWatchedFile> m_watched; // goes after the file has gone
    CPlacedFile m_file;
};

/// The path that a symbolic link leads to; of anything else the path itself.
/// @throws CFailure when the link leads nowhere, or in a circle.
std::string FollowLink(const std::string& sPath);

/// Says why a file is not saved.
/// @param nError  errno; 0: the system says nothing.
/// @throws CFailure in the name of `sPath`.
[[noreturn]] void FailToSave(const std::string& sPath, enumFileCause eCause, int nError);

} // namespace zorcld

#endif
