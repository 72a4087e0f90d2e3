#include <host/serve/CServed.h>

#include <host/output/GetFileName.h>
#include <host/serve/CRefusal.h>
#include <host/serve/MakeUpperTiles.h>

#include <algorithm>
#include <utility>

namespace zorcld
{

namespace
{

constexpr int c_nMaxStreams = 4;
constexpr std::int64_t c_nTileBytes = std::int64_t{24} << 20; // seven of the largest that are made at once
constexpr std::int64_t c_nUpperBytes = std::int64_t{16} << 20;

} // namespace

CServed::CServed(const CInputOptions& input, std::int64_t nFirstVersion, std::int64_t nBudget)
    : m_input(input), m_nBudget(nBudget), m_tileBudget(c_nTileBytes), m_upperBudget(c_nUpperBytes),
      m_nNextVersion(nFirstVersion)
{
}

std::string CServed::GetFile() const
{
    return GetFileName(m_input.sPath);
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

void CServed::SetReady(const CPntCld& cloud, CFileFactsOf facts)
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

TVersion CServed::AddVersion(const CPntCld& cloud, const std::string& sName,
                             std::vector<std::int32_t> vecFileIndices)
{
    std::unique_lock lock(m_mutex);
    const std::int64_t nVersion = m_nNextVersion++;
    lock.unlock();
    const auto pVersion =
        std::make_shared<CCloudVersion>(cloud, sName, nVersion, std::move(vecFileIndices)); // takes a while
    pVersion->SetUpperTiles(MakeUpperTiles(*pVersion, m_upperBudget));
    lock.lock();
    const auto it = std::find_if(m_vecVersions.begin(), m_vecVersions.end(),
                                 [&](const TVersion& p) { return p->GetName() == sName; });
    if (it == m_vecVersions.end())
        m_vecVersions.push_back(pVersion);
    else
        *it = pVersion;
    return pVersion;
}

std::shared_ptr<const CAttribute> CServed::FindAttribute(const std::string& sName) const
{
    const std::lock_guard lock(m_mutex);
    const auto it = m_mapAttributes.find(sName);
    return it == m_mapAttributes.end() ? nullptr : it->second;
}

void CServed::AddAttribute(std::shared_ptr<const CAttribute> pAttribute)
{
    const std::lock_guard lock(m_mutex);
    m_mapAttributes[pAttribute->sName] = std::move(pAttribute);
}

std::shared_ptr<void> CServed::TakeStream()
{
    std::shared_ptr<void> slot(m_pNumStreams.get(), [pNum = m_pNumStreams](void*) { --*pNum; });
    if (++*m_pNumStreams > c_nMaxStreams)
        throw CRefusal(503, "too many files are being sent");
    return slot;
}

} // namespace zorcld
