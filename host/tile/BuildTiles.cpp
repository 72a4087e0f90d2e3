#include <host/tile/BuildTiles.h>

#include <host/tile/FindMemory.h>

#include <algorithm>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>

namespace zorcld
{

namespace
{

bool IsRoomForTwo(const std::vector<CTileCount>& vecTiles)
{
    constexpr double c_dBytesPerPnt = 40.0; // the points, their octree, and a copy while both are made
    std::vector<std::int64_t> vecNums = {0, 0};
    for (const CTileCount& tile : vecTiles)
        vecNums.push_back(tile.nNumAll);
    std::partial_sort(vecNums.begin(), vecNums.begin() + 2, vecNums.end(), std::greater<>());
    return c_dBytesPerPnt * static_cast<double>(vecNums[0] + vecNums[1]) <= 0.25 * FindMemory();
}

/// Hands out the tiles to whoever asks for the next one.
class CTileQueue
{
public:
    explicit CTileQueue(std::size_t nNum) : m_nNum(nNum) {}

    /// Does `build(position)`, then under a lock `onBuilt(what it gave, position)`, until none is left.
    template <class TBuild, class TOnBuilt>
    void Work(const TBuild& build, const TOnBuilt& onBuilt)
    {
        try
        {
            for (std::size_t i = Next(); i < m_nNum; i = Next())
            {
                const CTileEntry entry = build(i);
                const std::scoped_lock lock(m_mutex);
                onBuilt(entry, i);
            }
        }
        catch (...)
        {
            const std::scoped_lock lock(m_mutex);
            m_nNext = m_nNum;
            if (!m_pFailed)
                m_pFailed = std::current_exception();
        }
    }

    void Rethrow() const
    {
        if (m_pFailed)
            std::rethrow_exception(m_pFailed);
    }

private:
    std::size_t Next()
    {
        const std::scoped_lock lock(m_mutex);
        return m_nNext < m_nNum ? m_nNext++ : m_nNum;
    }

    std::size_t m_nNum;
    std::mutex m_mutex;
    std::size_t m_nNext = 0;
    std::exception_ptr m_pFailed;
};

} // namespace

void BuildTiles(const CTilePlan& plan, const std::vector<CTileCount>& vecTiles, const std::string& sFolder,
                const std::function<CTilePnts(const CTileCount&)>& getPnts,
                const std::function<void(const CTileEntry&, std::size_t)>& onBuilt)
{
    CTileQueue queue(vecTiles.size());
    const auto work = [&]
    {
        queue.Work([&](std::size_t i) { return BuildTile(plan, vecTiles[i], getPnts(vecTiles[i]), sFolder); },
                   onBuilt);
    };
    std::thread other;
    if (vecTiles.size() > 1 && !IsMemoryLimited() && std::thread::hardware_concurrency() > 1 &&
        IsRoomForTwo(vecTiles))
        try
        {
            other = std::thread(work);
        }
        catch (const std::system_error&) // one will do
        {
        }
    work();
    if (other.joinable())
        other.join();
    queue.Rethrow();
}

} // namespace zorcld
