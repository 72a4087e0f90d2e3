#ifndef HOST_OUTPUT_CFAILURE_H
#define HOST_OUTPUT_CFAILURE_H

#include <stdexcept>
#include <string>

namespace zorcld
{

/// A file could not be read or written: exit status 1, one line on standard error.
class CFailure : public std::runtime_error
{
public:
    /// @param sFile   as the user named it.
    /// @param sCause  without a full stop.
    CFailure(const std::string& sFile, const std::string& sCause)
        : std::runtime_error(sFile + ": " + sCause), m_sFile(sFile), m_sCause(sCause)
    {
    }

    const std::string& GetFile() const noexcept { return m_sFile; }
    const std::string& GetCause() const noexcept { return m_sCause; }

private:
    std::string m_sFile;
    std::string m_sCause;
};

/// The command line asks for what cannot be: exit status 2, one line on standard error.
class CUsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace zorcld

#endif
