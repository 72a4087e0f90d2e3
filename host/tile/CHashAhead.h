#ifndef HOST_TILE_CHASHAHEAD_H
#define HOST_TILE_CHASHAHEAD_H

#include <atomic>
#include <exception>
#include <string>
#include <thread>

namespace zorcld
{

/// The hash of a file, found on a thread of its own while the file is read for other reasons, too.
class CHashAhead
{
public:
    explicit CHashAhead(std::string sPath);
    ~CHashAhead(); ///< Does not wait for the end of the file.
    CHashAhead(const CHashAhead&) = delete;
    CHashAhead& operator=(const CHashAhead&) = delete;

    /// To be called once. @return as HashFile. @throws CFailure likewise.
    std::string Get();

private:
    std::string m_sPath;
    std::string m_sHash;
    std::exception_ptr m_pFailed;
    std::atomic<bool> m_bStop{false};
    std::thread m_thread; // none where the system has none to give, or memory is limited
};

} // namespace zorcld

#endif
