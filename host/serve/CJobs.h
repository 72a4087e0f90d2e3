#ifndef HOST_SERVE_CJOBS_H
#define HOST_SERVE_CJOBS_H

#include <nlohmann/json.hpp>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace zorcld
{

/// What takes long: one job at a time, on a thread of its own. Whoever asks gets an answer at once: how far
/// the job is, and what came out of it.
class CJobs
{
public:
    using TJson = nlohmann::ordered_json;

    /// Tells how far a job is; throws where nobody wants it any more.
    using TTell = std::function<void(const std::string& sDoing, int nPercent)>;

    /// Does the work of a job. @return what came out, an object.
    using TWork = std::function<TJson(const TTell& tell)>;

    using TClock = std::chrono::steady_clock;

    /// @param timePatience  a job that nobody has asked for so long is stopped: whoever wanted it has gone.
    explicit CJobs(TClock::duration timePatience = std::chrono::minutes(2)) : m_timePatience(timePatience) {}

    /// Stops a job that is running, and waits for it.
    ~CJobs();
    CJobs(const CJobs&) = delete;
    CJobs& operator=(const CJobs&) = delete;

    /// Starts a job, unless it is running or has been done: then tells that. While another one is being
    /// stopped the job waits for its end, and is running to whoever asks.
    /// @param sResource  only the last result of each is kept.
    /// @param sWish      what exactly is asked for: two jobs of one wish are the same.
    /// @throws CRefusal where another one is running, or waiting.
    TJson Ask(const std::string& sResource, const std::string& sWish, TWork work);

    /// Stops the resource's job if it is running or waiting. It may take a while to notice.
    TJson Cancel(const std::string& sResource);

    /// Stops whatever is running.
    void StopAll();

private:
    struct CJob
    {
        bool Is(const std::string& sOfResource, const std::string& sOfWish) const
        {
            return sResource == sOfResource && sWish == sOfWish;
        }

        std::string sResource;
        std::string sWish;
        TWork work;
        std::string sDoing;
        int nPercent = 0;
        bool bStop = false;
        TClock::time_point timeAsked = TClock::now(); ///< the last time
    };

    using TJob = std::shared_ptr<CJob>;

    struct CResult
    {
        std::string sWish;
        TJson json;
        bool bFailed = false;
    };

    const TJson* FindResult(const std::string& sResource, const std::string& sWish) const;
    void Start(const TJob& pJob);
    void RunAll(TJob pJob);
    CResult Run(CJob& job);
    void Tell(CJob& job, const std::string& sDoing, int nPercent);
    TJob Finish(const CJob& job, CResult result);

    const TClock::duration m_timePatience;
    std::mutex m_mutex;                          // for all that follows but the thread
    TJob m_pJob;                                 // that is running; null: none
    TJob m_pNext;                                // that waits for this one to stop; null: none
    std::map<std::string, CResult> m_mapResults; // by resource
    std::thread m_thread;
};

} // namespace zorcld

#endif
