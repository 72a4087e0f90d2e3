#ifndef HOST_OUTPUT_CWATCHEDFILE_H
#define HOST_OUTPUT_CWATCHEDFILE_H

#include <csignal>
#include <string>

namespace zorcld
{

/// A file that is removed when the program is interrupted (SIGINT, SIGTERM, SIGHUP, SIGQUIT), as long as this
/// object lives. Of more than `c_nMaxAtOnce` at once the later ones stay.
class CWatchedFile
{
public:
    static constexpr int c_nMaxAtOnce = 4;

    explicit CWatchedFile(std::string sPath);
    ~CWatchedFile();
    CWatchedFile(const CWatchedFile&) = delete;
    CWatchedFile& operator=(const CWatchedFile&) = delete;

private:
    std::string m_sPath;
};

/// While this object lives the signals that a CWatchedFile heeds wait, as far as this thread would get them:
/// between a file and its being watched nothing comes.
class CHeldSignals
{
public:
    CHeldSignals();
    ~CHeldSignals();
    CHeldSignals(const CHeldSignals&) = delete;
    CHeldSignals& operator=(const CHeldSignals&) = delete;

private:
    sigset_t m_before{};
};

} // namespace zorcld

#endif
