#include <python/bind/CBatchStream.h>

#include <python/bind/ArrayFromVector.h>
#include <python/bind/CProgress.h>
#include <python/bind/Gil.h>

#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <exception>
#include <new>
#include <optional>
#include <system_error>
#include <thread>

namespace py = pybind11;

namespace zorpy
{

/// What both threads use.
class CBatchStream::CState final : public IPntIndexListener
{
public:
    using TBatch = std::vector<std::int32_t>;

    CState(TCloudPtr pCloud, CQuery query, int nBatch)
        : m_pCloud(std::move(pCloud)), m_query(std::move(query)), m_nBatch(nBatch)
    {
    }

    ~CState() { Close(); }

    void OnIndices(int nNumPnts, const std::int32_t* pIndices) override
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return !m_batch || m_bClosed; });
        if (m_bClosed)
            throw CStop();
        m_batch.emplace(pIndices, pIndices + nNumPnts);
        m_changed.notify_all();
    }

    void OnWork() override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_bClosed)
            throw CStop();
    }

    /// @return the next batch; empty: the end. None where it has not come yet.
    std::optional<TBatch> WaitForNext(std::chrono::milliseconds nAtMost)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (m_bClosed)
            return TBatch();
        if (!m_thread.joinable())
            Start();
        m_changed.wait_for(lock, nAtMost, [this] { return m_batch || m_bEnded; });
        if (m_batch)
            return TakeBatch();
        if (!m_bEnded)
            return std::nullopt;
        if (m_failure)
            std::rethrow_exception(std::exchange(m_failure, nullptr));
        return TBatch();
    }

    void Close()
    {
        std::thread thread;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_bClosed = true;
            thread = std::move(m_thread);
            m_changed.notify_all();
        }
        if (thread.joinable())
            thread.join();
    }

private:
    struct CStop // leaves the query when nobody wants the rest
    {
    };

    TBatch TakeBatch()
    {
        TBatch batch = std::move(*m_batch);
        m_batch.reset();
        m_changed.notify_all();
        return batch;
    }

    /// What a thread wants is memory: whatever the system says where there is none.
    void Start()
    {
        try
        {
            m_thread = std::thread([this] { Run(); });
        }
        catch (const std::system_error&)
        {
            throw std::bad_alloc();
        }
    }

    void Run()
    {
        std::exception_ptr failure;
        try
        {
            m_query.Ask(m_pCloud->GetCld(), *this, m_nBatch);
        }
        catch (const CStop&)
        {
        }
        catch (...)
        {
            failure = std::current_exception();
        }
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_failure = failure;
        m_bEnded = true;
        m_changed.notify_all();
    }

    const TCloudPtr m_pCloud;
    const CQuery m_query;
    const int m_nBatch;
    std::mutex m_mutex; // of all below
    std::condition_variable m_changed;
    std::thread m_thread;
    std::optional<TBatch> m_batch;
    std::exception_ptr m_failure;
    bool m_bEnded = false;
    bool m_bClosed = false;
};

CBatchStream::CBatchStream(TCloudPtr pCloud, CQuery query, int nBatch)
    : m_pState(std::make_unique<CState>(std::move(pCloud), std::move(query), nBatch)), m_nProcess(getpid())
{
}

CBatchStream::~CBatchStream()
{
    if (getpid() != m_nProcess)
        static_cast<void>(m_pState.release());
    else
        Close(); // without the lock: the query may be long on its way to where it stops
}

py::array_t<std::int32_t> CBatchStream::GetNext()
{
    if (getpid() != m_nProcess)
        throw std::runtime_error("batches cannot be continued in a forked process");
    constexpr std::chrono::milliseconds c_nBetweenLooks(50);
    std::optional<CState::TBatch> batch;
    {
        const CReleasedGil released;
        while (!(batch = m_pState->WaitForNext(c_nBetweenLooks)))
            CheckSignals();
    }
    return ArrayFromVector(std::move(*batch));
}

void CBatchStream::Close()
{
    if (getpid() != m_nProcess)
        return;
    const CReleasedGil released;
    m_pState->Close();
}

} // namespace zorpy
