#include <host/serve/CJobs.h>

#include <host/output/CFailure.h>
#include <host/serve/CRefusal.h>
#include <host/serve/LineForClient.h>

#include <cstdlib> // tells which C library it is
#include <new>
#include <utility>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace zorcld
{

namespace
{

/// Gives back to the system what a job took for a while: the C library would keep it for the next one.
void ReturnMemory()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

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
    if (const TJson* const pResult = FindResult(sResource, sWish))
    {
        TJson json = *pResult;
        if (m_mapResults[sResource].bFailed)
            m_mapResults.erase(sResource);
        return json;
    }
    if (m_pJob != nullptr && !m_pJob->bStop && m_pJob->Is(sResource, sWish))
    {
        m_pJob->timeAsked = TClock::now();
        return {{"state", "running"}, {"doing", m_pJob->sDoing}, {"percent", m_pJob->nPercent}};
    }
    if (m_pJob != nullptr && (!m_pJob->bStop || (m_pNext != nullptr && !m_pNext->Is(sResource, sWish))))
        throw CRefusal(503, "another job is running");
    if (m_pNext == nullptr)
    {
        const auto pNew = std::make_shared<CJob>(CJob{sResource, sWish, std::move(work), {}});
        if (m_pJob != nullptr)
            m_pNext = pNew;
        else
            Start(pNew);
    }
    else
        m_pNext->timeAsked = TClock::now();
    return {{"state", "running"}, {"doing", ""}, {"percent", 0}};
}

/// @return null: it has not been done, or another one since.
const CJobs::TJson* CJobs::FindResult(const std::string& sResource, const std::string& sWish) const
{
    const auto it = m_mapResults.find(sResource);
    return it != m_mapResults.end() && it->second.sWish == sWish ? &it->second.json : nullptr;
}

void CJobs::Start(const TJob& pJob)
{
    if (m_thread.joinable())
        m_thread.join(); // it has ended, or is about to: it wants the lock no more
    m_thread = std::thread([this, pJob] { RunAll(pJob); });
    m_pJob = pJob;
}

CJobs::TJson CJobs::Cancel(const std::string& sResource)
{
    const std::lock_guard lock(m_mutex);
    if (m_pNext != nullptr && m_pNext->sResource == sResource)
        m_pNext = nullptr;
    if (m_pJob != nullptr && m_pJob->sResource == sResource)
        m_pJob->bStop = true;
    return {{"state", "idle"}};
}

void CJobs::StopAll()
{
    const std::lock_guard lock(m_mutex);
    m_pNext = nullptr;
    if (m_pJob != nullptr)
        m_pJob->bStop = true;
}

void CJobs::Tell(CJob& job, const std::string& sDoing, int nPercent)
{
    const std::lock_guard lock(m_mutex);
    job.bStop = job.bStop || TClock::now() - job.timeAsked > m_timePatience;
    if (job.bStop)
        throw CStopped();
    job.sDoing = sDoing;
    job.nPercent = nPercent;
}

/// The body of the thread: a job, and those that wait for its end.
void CJobs::RunAll(TJob pJob)
{
    while (pJob != nullptr)
    {
        CResult result = Run(*pJob);
        pJob->work = nullptr; // with what it holds
        ReturnMemory();
        pJob = Finish(*pJob, std::move(result));
    }
}

CJobs::CResult CJobs::Run(CJob& job)
{
    const auto fail = [&](const std::string& sCause) {
        return CResult{job.sWish, {{"state", "failed"}, {"cause", sCause}}, true};
    };
    try
    {
        TJson json = {{"state", "done"}};
        json.update(job.work([&](const std::string& sDoing, int nPercent) { Tell(job, sDoing, nPercent); }));
        return {job.sWish, std::move(json), false};
    }
    catch (const CStopped&)
    {
        return fail("stopped");
    }
    catch (const CFailure& failure)
    {
        return fail(LineForClient(failure.GetCause()));
    }
    catch (const std::bad_alloc&)
    {
        return fail("not enough memory");
    }
    catch (const std::exception& error)
    {
        return fail(LineForClient(error.what()));
    }
}

/// Keeps what came out of a job, but for the failure of one that was stopped: nobody waits for that.
/// @return the job to be run now; null: the thread ends.
CJobs::TJob CJobs::Finish(const CJob& job, CResult result)
{
    const std::lock_guard lock(m_mutex);
    if (!result.bFailed || !job.bStop)
        m_mapResults[job.sResource] = std::move(result);
    m_pJob = std::move(m_pNext);
    m_pNext = nullptr;
    if (m_pJob != nullptr && FindResult(m_pJob->sResource, m_pJob->sWish) != nullptr)
        m_pJob = nullptr; // the one that was stopped was quicker
    return m_pJob;
}

} // namespace zorcld
