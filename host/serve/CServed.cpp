#include <host/serve/CServed.h>

#include <algorithm>
#include <utility>

namespace zorcld
{

CServed::CServed(std::string sFile, std::int64_t nFirstVersion, std::int64_t nBudget)
    : m_sFile(std::move(sFile)), m_nBudget(nBudget), m_nNextVersion(nFirstVersion)
{
}

void CServed::SetProgress(const std::string& sDoing, int nPercent)
{
    const std::lock_guard lock(m_mutex);
    m_progress.sDoing = sDoing;
    m_progress.nPercent = nPercent;
}

void CServed::SetFailed(const std::string& sCause)
{
    const std::lock_guard lock(m_mutex);
    m_progress = {enumState::Failed, {}, -1, sCause};
}

void CServed::SetReady(const CPntCld& cloud, nlohmann::ordered_json facts)
{
    m_facts = std::move(facts);
    AddVersion(cloud, "all");
    const std::lock_guard lock(m_mutex);
    m_progress = {enumState::Ready, {}, 100, {}};
}

CServed::CProgress CServed::GetProgress() const
{
    const std::lock_guard lock(m_mutex);
    return m_progress;
}

TVersion CServed::GetFirst() const
{
    const std::lock_guard lock(m_mutex);
    return m_vecVersions.front();
}

std::vector<TVersion> CServed::GetVersions() const
{
    const std::lock_guard lock(m_mutex);
    return m_vecVersions;
}

TVersion CServed::FindVersion(std::int64_t nVersion) const
{
    const std::lock_guard lock(m_mutex);
    const auto it = std::find_if(m_vecVersions.begin(), m_vecVersions.end(),
                                 [=](const TVersion& p) { return p->GetVersion() == nVersion; });
    return it == m_vecVersions.end() ? nullptr : *it;
}

void CServed::AddVersion(const CPntCld& cloud, const std::string& sName)
{
    std::unique_lock lock(m_mutex);
    const std::int64_t nVersion = m_nNextVersion++;
    lock.unlock();
    auto pVersion = std::make_shared<const CCloudVersion>(cloud, sName, nVersion); // takes a while
    lock.lock();
    const auto it = std::find_if(m_vecVersions.begin(), m_vecVersions.end(),
                                 [&](const TVersion& p) { return p->GetName() == sName; });
    if (it == m_vecVersions.end())
        m_vecVersions.push_back(std::move(pVersion));
    else
        *it = std::move(pVersion);
}

} // namespace zorcld
