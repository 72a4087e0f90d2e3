#include <host/output/CProgressBar.h>

#include <formats/MakePrintable.h>
#include <host/output/CConsole.h>

#include <fmt/format.h>

#include <algorithm>

namespace zorcld
{

namespace
{

constexpr int c_nAlmostDone = 98; // from here on every call may be the last one: its time is taken
constexpr int c_nWidth = 30;

} // namespace

CProgressBar::CProgressBar(const CConsole& console, const std::string& sLabel)
    : m_console(console), m_sLabel(ReplaceControls(sLabel)), m_bShown(console.HasProgressBar())
{
}

CProgressBar::~CProgressBar()
{
    Stop();
}

void CProgressBar::Start()
{
    m_nPos = -1;
    m_console.TellWatcher(m_sLabel, 0);
    Draw();
}

void CProgressBar::Stop()
{
    if (m_bShown)
        fmt::print(stderr, "\r\033[K");
    m_bShown = false;
}

bool CProgressBar::SetPos(int nPos)
{
    ++m_nNumCalls;
    if (nPos == m_nPos && nPos < c_nAlmostDone)
        return true;
    m_timeLast = TClock::now();
    const bool bChanged = nPos != m_nPos;
    m_nPos = nPos;
    if (!bChanged)
        return true;
    m_console.TellWatcher(m_sLabel, nPos);
    Draw();
    return true;
}

void CProgressBar::Draw() const
{
    if (!m_bShown)
        return;
    const int nPos = std::clamp(m_nPos, 0, 100);
    const auto nDone = static_cast<std::size_t>(nPos * c_nWidth / 100);
    fmt::print(stderr, "\r\033[K{} [{}{}] {:3} %", m_sLabel, std::string(nDone, '#'),
               std::string(c_nWidth - nDone, '.'), nPos);
    static_cast<void>(std::fflush(stderr)); // a bar that is not seen harms nothing
}

} // namespace zorcld
