#include <python/bind/CProgress.h>

#include <python/bind/Gil.h>

#include <algorithm>

namespace py = pybind11;

namespace zorpy
{

namespace
{

/// REQUIRES: the thread holds the lock.
void ThrowSignals()
{
    bool bRaised = false;
    CallPython([&] { bRaised = PyErr_CheckSignals() != 0; });
    if (bRaised)
        throw py::error_already_set();
}

} // namespace

void CheckSignals()
{
    const CTakenGil lock;
    ThrowSignals();
}

void CSignalWatch::PollClock()
{
    constexpr std::chrono::milliseconds c_nBetweenLooks(50);
    const TClock::time_point now = TClock::now();
    if (now - m_lastLook < c_nBetweenLooks)
        return;
    m_lastLook = now;
    CheckSignals();
}

bool CProgress::SetPos(int nPos)
{
    const int nPercent = std::clamp(nPos, 0, 100); // a file may hold more points than it announces
    if (nPercent > m_nLastPos)
        Tell(nPercent);
    else
        Poll();
    return true;
}

void CProgress::Tell(int nPos)
{
    m_nLastPos = nPos;
    m_watch.Reset();
    const CTakenGil lock;
    if (!m_callback.is_none())
        CallPython([&] { m_callback(nPos); });
    ThrowSignals();
}

} // namespace zorpy
