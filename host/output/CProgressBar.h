#ifndef HOST_OUTPUT_CPROGRESSBAR_H
#define HOST_OUTPUT_CPROGRESSBAR_H

#include <zor4data/IDlgProgress.h>

#include <chrono>
#include <cstdint>
#include <string>

namespace zorcld
{

class CConsole;

/// Progress bar on standard error, which also notes when a load reached its last point.
///
/// Drawn only where the console allows it, and taken away when it goes.
class CProgressBar final : public IDlgProgress
{
public:
    using TClock = std::chrono::steady_clock;

    /// @param sLabel  what is being done.
    CProgressBar(const CConsole& console, const std::string& sLabel);
    ~CProgressBar();
    CProgressBar(const CProgressBar&) = delete;
    CProgressBar& operator=(const CProgressBar&) = delete;

    void Start() override;
    void Stop() override;

    /// Cheap when the percentage stays: it is called once a point.
    bool SetPos(int nPos) override;

    /// Has SetPos been called?
    bool HasPos() const { return m_nPos >= 0; }
    std::int64_t GetNumCalls() const { return m_nNumCalls; }
    TClock::time_point GetLastTime() const { return m_timeLast; }

private:
    void Draw() const;

    const CConsole& m_console;
    std::string m_sLabel;
    bool m_bShown;
    int m_nPos = -1;
    std::int64_t m_nNumCalls = 0;
    TClock::time_point m_timeLast;
};

} // namespace zorcld

#endif
