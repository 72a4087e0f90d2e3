#include <host/serve/CJobs.h>

#include <host/output/CFailure.h>
#include <host/serve/CRefusal.h>
#include <host/serve/LineForClient.h>

#include <new>
#include <utility>

namespace zorcld
{

namespace
{

/// Thrown out of a job that nobody wants any more.
struct CStopped
{
};

} // namespace

CJobs::~CJobs()
{
    StopAll();
    if (m_thread.joinable())
        m_thread.join();
}

CJobs::TJson CJobs::Ask(const std::string& sResource, const std::string& sWish, TWork work)
{
    const std::lock_guard lock(m_mutex);
    if (m_pJob != nullptr && m_pJob->bRunning)
    {
        if (m_pJob->sResource != sResource || m_pJob->sWish != sWish || m_pJob->bStop)
            throw CRefusal(503, "another job is running");
        return {{"state", "running"}, {"doing", m_pJob->sDoing}, {"percent", m_pJob->nPercent}};
    }
    const auto it = m_mapResults.find(sResource);
    if (it != m_mapResults.end() && it->second.sWish == sWish)
    {
        const TJson json = it->second.json;
        if (it->second.bFailed)
            m_mapResults.erase(it);
        return json;
    }
    if (m_thread.joinable())
        m_thread.join(); // it has ended, or is about to: it wants the lock no more
    m_pJob = std::make_shared<CJob>(CJob{sResource, sWish, {}});
    m_thread = std::thread([this, pJob = m_pJob, work = std::move(work)] { Run(pJob, work); });
    return {{"state", "running"}, {"doing", ""}, {"percent", 0}};
}

CJobs::TJson CJobs::Cancel(const std::string& sResource)
{
    const std::lock_guard lock(m_mutex);
    if (m_pJob != nullptr && m_pJob->sResource == sResource)
        m_pJob->bStop = true;
    return {{"state", "idle"}};
}

void CJobs::StopAll()
{
    const std::lock_guard lock(m_mutex);
    if (m_pJob != nullptr)
        m_pJob->bStop = true;
}

void CJobs::Tell(CJob& job, const std::string& sDoing, int nPercent)
{
    const std::lock_guard lock(m_mutex);
    if (job.bStop)
        throw CStopped();
    job.sDoing = sDoing;
    job.nPercent = nPercent;
}

void CJobs::Run(const std::shared_ptr<CJob>& pJob, const TWork& work)
{
    const auto fail = [&](const std::string& sCause) {
        Finish(*pJob, {pJob->sWish, {{"state", "failed"}, {"cause", sCause}}, true});
    };
    try
    {
        TJson json = {{"state", "done"}};
        json.update(work([&](const std::string& sDoing, int nPercent) { Tell(*pJob, sDoing, nPercent); }));
        Finish(*pJob, {pJob->sWish, std::move(json), false});
    }
    catch (const CStopped&)
    {
        const std::lock_guard lock(m_mutex);
        pJob->bRunning = false;
    }
    catch (const CFailure& failure)
    {
        fail(LineForClient(failure.GetCause()));
    }
    catch (const std::bad_alloc&)
    {
        fail("not enough memory");
    }
    catch (const std::exception& error)
    {
        fail(LineForClient(error.what()));
    }
}

void CJobs::Finish(CJob& job, CResult result)
{
    const std::lock_guard lock(m_mutex);
    m_mapResults[job.sResource] = std::move(result);
    job.bRunning = false;
}

} // namespace zorcld
