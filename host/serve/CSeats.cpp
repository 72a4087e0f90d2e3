#include <host/serve/CSeats.h>

#include <algorithm>

namespace zorcld
{

CSeats::CSeats(int nNumSeats) : m_nNumSeats(static_cast<std::size_t>(std::max(nNumSeats, 0)))
{
    m_vecTaken.reserve(m_nNumSeats);
}

bool CSeats::TryTake(const std::shared_ptr<ISeated>& pSeated)
{
    std::shared_ptr<ISeated> pOut; // may go with this, which takes the lock
    {
        const std::lock_guard lock(m_mutex);
        if (m_vecTaken.size() >= m_nNumSeats)
        {
            const auto it = std::find_if(m_vecTaken.begin(), m_vecTaken.end(),
                                         [](const CSeat& seat) { return seat.pSeated->MayGiveWay(); });
            if (it == m_vecTaken.end())
                return false;
            pOut = it->pHold.lock();
            m_vecTaken.erase(it);
        }
        m_vecTaken.push_back({pSeated.get(), pSeated});
    }
    if (pOut != nullptr)
        pOut->GiveWay();
    return true;
}

void CSeats::Leave(const ISeated& seated)
{
    const std::lock_guard lock(m_mutex);
    const auto it = std::find_if(m_vecTaken.begin(), m_vecTaken.end(),
                                 [&](const CSeat& seat) { return seat.pSeated == &seated; });
    if (it != m_vecTaken.end())
        m_vecTaken.erase(it);
}

} // namespace zorcld
