#include <host/tile/ReadAhead.h>

#include <host/tile/FindMemory.h>

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace zorcld
{

namespace
{

using TPnts = std::vector<CTilePnt>;

/// Ends a pass that nobody waits for any more.
struct CGivenUp
{
};

/// What one thread has read and the other one has not taken yet.
class CReadBlocks
{
public:
    /// Waits where the other thread is far behind. Leaves a vector that has been used, or an empty one.
    /// @throws CGivenUp
    void Put(TPnts& vecPnts)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_blocks.size() < c_nMostBlocks || m_bGivenUp; });
        if (m_bGivenUp)
            throw CGivenUp();
        m_blocks.push_back(std::move(vecPnts));
        vecPnts = TPnts();
        if (!m_vecSpares.empty())
        {
            vecPnts = std::move(m_vecSpares.back());
            m_vecSpares.pop_back();
        }
        m_changed.notify_all();
    }

    void End(std::exception_ptr pFailed)
    {
        const std::scoped_lock lock(m_mutex);
        m_bEnd = true;
        m_pFailed = std::move(pFailed);
        m_changed.notify_all();
    }

    /// @param vecPnts  those of the last call, whose memory is used again; gets the next ones.
    /// @return false at the end. @throws what has ended the reading.
    bool Take(TPnts& vecPnts)
    {
        std::unique_lock lock(m_mutex);
        if (vecPnts.capacity() > 0)
            m_vecSpares.push_back(std::move(vecPnts));
        m_changed.wait(lock, [this] { return !m_blocks.empty() || m_bEnd; });
        if (m_blocks.empty())
        {
            if (m_pFailed)
                std::rethrow_exception(m_pFailed);
            return false;
        }
        vecPnts = std::move(m_blocks.front());
        m_blocks.pop_front();
        m_changed.notify_all();
        return true;
    }

    void GiveUp()
    {
        const std::scoped_lock lock(m_mutex);
        m_bGivenUp = true;
        m_changed.notify_all();
    }

private:
    static constexpr std::size_t c_nMostBlocks = 4;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<TPnts> m_blocks;
    std::vector<TPnts> m_vecSpares; // their memory is known to the system, which takes time
    std::exception_ptr m_pFailed;
    bool m_bEnd = false;
    bool m_bGivenUp = false;
};

/// Ends with the object, whoever leaves.
class CReadingThread
{
public:
    CReadingThread(ITileSource& source, const TOrigin& origin, CReadBlocks& blocks)
        : m_blocks(blocks), m_thread(
                                [&source, origin, &blocks]
                                {
                                    try
                                    {
                                        source.ForEach(origin, [&](TPnts& vecPnts) { blocks.Put(vecPnts); });
                                        blocks.End(nullptr);
                                    }
                                    catch (...)
                                    {
                                        blocks.End(std::current_exception());
                                    }
                                })
    {
    }
    ~CReadingThread()
    {
        m_blocks.GiveUp();
        m_thread.join();
    }
    CReadingThread(const CReadingThread&) = delete;
    CReadingThread& operator=(const CReadingThread&) = delete;

private:
    CReadBlocks& m_blocks;
    std::thread m_thread;
};

} // namespace

void ReadAhead(ITileSource& source, const TOrigin& origin, const ITileSource::TOnPnts& onPnts)
{
    if (IsMemoryLimited())
        return source.ForEach(origin, onPnts);
    CReadBlocks blocks;
    std::optional<CReadingThread> thread;
    try
    {
        thread.emplace(source, origin, blocks);
    }
    catch (const std::system_error&)
    {
        return source.ForEach(origin, onPnts);
    }
    for (TPnts vecPnts; blocks.Take(vecPnts);)
        onPnts(vecPnts);
}

} // namespace zorcld
