#ifndef HOST_OUTPUT_CTEMPFILE_H
#define HOST_OUTPUT_CTEMPFILE_H

#include <string>

namespace zorcld
{

/// An empty file under a temporary name beside the place where it is to be. It goes away with this object,
/// and when the program is interrupted (SIGINT, SIGTERM, SIGHUP, SIGQUIT), unless `Place` has put it there.
///
/// An interruption removes up to `c_nMaxAtOnce` of them. What a run leaves that was killed or lost its
/// machine, the next one in that folder removes (`RemoveAbandoned`).
class CTempFile
{
public:
    static constexpr int c_nMaxAtOnce = 4;

    /// @param sTarget  where the file is to be; a symbolic link is followed.
    /// @throws CFailure, in the name of `sTarget`, when it cannot be created, or is a link that leads
    /// nowhere.
    explicit CTempFile(const std::string& sTarget);
    ~CTempFile();
    CTempFile(const CTempFile&) = delete;
    CTempFile& operator=(const CTempFile&) = delete;

    const std::string& GetPath() const { return m_sTemp; }

    /// Brings the file to the disk and puts it in its place; a file that is there is replaced. So a machine
    /// that fails leaves the old file or the new one, never a part of it under its name.
    ///
    /// REQUIRES: whoever wrote to it has closed it.
    /// @return false, with errno, when that fails; the file is then removed with this object.
    bool Place();

private:
    std::string m_sTarget;
    std::string m_sTemp; // empty: in its place
    int m_nFile = -1;
};

/// The path that a symbolic link leads to; of anything else the path itself.
/// @throws CFailure when the link leads nowhere, or in a circle.
std::string FollowLink(const std::string& sPath);

} // namespace zorcld

#endif
