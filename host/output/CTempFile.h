#ifndef HOST_OUTPUT_CTEMPFILE_H
#define HOST_OUTPUT_CTEMPFILE_H

#include <string>

namespace zorcld
{

/// An empty file under a temporary name beside the place where it is to be. It goes away with this object,
/// and when the program is interrupted (SIGINT, SIGTERM, SIGHUP, SIGQUIT), unless `Rename` has put it there.
///
/// An interruption removes up to `c_nMaxAtOnce` of them.
class CTempFile
{
public:
    static constexpr int c_nMaxAtOnce = 4;

    /// @param sTarget  where the file is to be; symbolic links in it are followed.
    /// @throws CFailure, in the name of `sTarget`, when it cannot be created.
    explicit CTempFile(const std::string& sTarget);
    ~CTempFile();
    CTempFile(const CTempFile&) = delete;
    CTempFile& operator=(const CTempFile&) = delete;

    const std::string& GetPath() const { return m_sTemp; }

    /// Puts the file in its place; a file that is there is replaced.
    /// @return false, with errno, when that fails; the file is then removed with this object.
    bool Rename();

private:
    std::string m_sTarget;
    std::string m_sTemp; // empty: renamed
};

/// The path that a symbolic link leads to; of anything else the path itself.
std::string FollowLink(const std::string& sPath);

} // namespace zorcld

#endif
