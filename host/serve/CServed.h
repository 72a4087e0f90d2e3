#ifndef HOST_SERVE_CSERVED_H
#define HOST_SERVE_CSERVED_H

#include <host/serve/CCloudVersion.h>

#include <nlohmann/json.hpp>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace zorcld
{

using TVersion = std::shared_ptr<const CCloudVersion>;

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

    /// @param nFirstVersion  number of the first version; no other run should have the same.
    /// @param nBudget        points that the page should show at most; 0: its own choice.
    CServed(std::string sFile, std::int64_t nFirstVersion, std::int64_t nBudget);

    const std::string& GetFile() const { return m_sFile; } ///< without its folder
    std::int64_t GetBudget() const { return m_nBudget; }

    void SetProgress(const std::string& sDoing, int nPercent);
    void SetFailed(const std::string& sCause);

    /// @param facts  what `/api/info` tells beside what it finds out itself.
    void SetReady(const CPntCld& cloud, nlohmann::ordered_json facts);

    CProgress GetProgress() const;

    /// REQUIRES of the next three: ready.
    const nlohmann::ordered_json& GetFacts() const { return m_facts; }
    TVersion GetFirst() const;
    std::vector<TVersion> GetVersions() const;

    /// @return null where there is no such version, or not any more.
    TVersion FindVersion(std::int64_t nVersion) const;

    /// Adds a version, or puts it into the place of the one of its name.
    void AddVersion(const CPntCld& cloud, const std::string& sName);

private:
    const std::string m_sFile;
    const std::int64_t m_nBudget;
    nlohmann::ordered_json m_facts; // not changed any more once ready
    mutable std::mutex m_mutex;     // for what follows
    std::int64_t m_nNextVersion;
    CProgress m_progress;
    std::vector<TVersion> m_vecVersions;
};

} // namespace zorcld

#endif
