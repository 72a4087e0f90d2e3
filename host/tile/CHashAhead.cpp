#include <host/tile/CHashAhead.h>

#include <host/tile/FindMemory.h>
#include <host/tile/HashFile.h>

#include <system_error>
#include <utility>

namespace zorcld
{

CHashAhead::CHashAhead(std::string sPath) : m_sPath(std::move(sPath))
{
    const auto hash = [this]
    {
        try
        {
            m_sHash = HashFile(m_sPath, &m_bStop);
        }
        catch (...)
        {
            m_pFailed = std::current_exception();
        }
    };
    if (IsMemoryLimited())
        return; // Get does it
    try
    {
        m_thread = std::thread(hash);
    }
    catch (const std::system_error&)
    {
        return;
    }
}

CHashAhead::~CHashAhead()
{
    m_bStop = true;
    if (m_thread.joinable())
        m_thread.join();
}

std::string CHashAhead::Get()
{
    if (!m_thread.joinable())
        return HashFile(m_sPath);
    m_thread.join();
    if (m_pFailed)
        std::rethrow_exception(m_pFailed);
    return m_sHash;
}

} // namespace zorcld
