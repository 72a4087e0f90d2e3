#ifndef HOST_SERVE_CSERVED_H
#define HOST_SERVE_CSERVED_H

#include <formats/CCoordSystem.h>
#include <host/files/CInputOptions.h>
#include <host/serve/CAttribute.h>
#include <host/serve/CByteBudget.h>
#include <host/serve/CCloudVersion.h>
#include <host/serve/CJobs.h>

#include <nlohmann/json.hpp>

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace zorcld
{

/// What the server shows, and how far it is with loading it. Every member may be called on any thread.
class CServed
{
public:
    enum class enumState
    {
        Loading,
        Ready,
        Failed
    };

    /// How far loading is.
    struct CProgress
    {
        enumState eState = enumState::Loading;
        std::string sDoing; ///< "reading hill.laz"
        int nPercent = -1;  ///< -1: not known
        std::string sCause; ///< of a failure, one line
    };

    /// What is known of the cloud's file beside the cloud.
    struct CFileFactsOf
    {
        nlohmann::ordered_json json; ///< what `/api/info` tells beside what it finds out itself
        CCoordSystem coords;
    };

    /// @param nFirstVersion  number of the first version; no other run should have the same.
    /// @param nBudget        points that the page should show at most; 0: its own choice.
    CServed(const CInputOptions& input, std::int64_t nFirstVersion, std::int64_t nBudget);

    const CInputOptions& GetInput() const { return m_input; }
    std::string GetFile() const; ///< without its folder
    std::int64_t GetBudget() const { return m_nBudget; }

    void SetProgress(const std::string& sDoing, int nPercent);
    void SetFailed(const std::string& sCause);

    void SetReady(const CPntCld& cloud, CFileFactsOf facts);

    CProgress GetProgress() const;

    /// REQUIRES of the next four: ready.
    const nlohmann::ordered_json& GetFacts() const { return m_facts.json; }
    const CCoordSystem& GetCoords() const { return m_facts.coords; }
    TVersion GetFirst() const;
    std::vector<TVersion> GetVersions() const;

    /// @return null where there is no such version, or not any more.
    TVersion FindVersion(std::int64_t nVersion) const;

    /// Adds a version, or puts it into the place of the one of its name.
    /// @param vecFileIndices  as CCloudVersion takes them.
    TVersion AddVersion(const CPntCld& cloud, const std::string& sName,
                        std::vector<std::int32_t> vecFileIndices = {});

    /// @return null where it has not been read.
    std::shared_ptr<const CAttribute> FindAttribute(const std::string& sName) const;
    void AddAttribute(std::shared_ptr<const CAttribute> pAttribute);

    CJobs& GetJobs() { return m_jobs; }

    /// Of the bytes that all tiles under way have together.
    const CByteBudget& GetTileBudget() const { return m_tileBudget; }

    /// To be held by a reply that keeps marks of all points while it is sent.
    /// @throws CRefusal where too many do.
    std::shared_ptr<void> TakeStream();

private:
    const CInputOptions m_input;
    const std::int64_t m_nBudget;
    CFileFactsOf m_facts; // not changed any more once ready
    const CByteBudget m_tileBudget;
    const CByteBudget m_upperBudget; // of the tiles that all versions keep
    const std::shared_ptr<std::atomic<int>> m_pNumStreams = std::make_shared<std::atomic<int>>(0);
    mutable std::mutex m_mutex; // for what follows but the jobs
    std::int64_t m_nNextVersion;
    CProgress m_progress;
    std::vector<TVersion> m_vecVersions;
    std::map<std::string, std::shared_ptr<const CAttribute>> m_mapAttributes;
    CJobs m_jobs; // last: they use the rest
};

} // namespace zorcld

#endif
