#ifndef HOST_OUTPUT_CCONSOLE_H
#define HOST_OUTPUT_CCONSOLE_H

#include <functional>
#include <string>
#include <utility>

namespace zorcld
{

/// How a command talks beside its result: notes on standard error, unless the user wants quiet.
class CConsole
{
public:
    /// One line on standard error; nothing when quiet.
    void Note(const std::string& sText) const;

    /// Standard error is a terminal and the user does not want quiet.
    bool HasProgressBar() const;

    bool IsQuiet() const { return m_bQuiet; }
    void SetQuiet() { m_bQuiet = true; }

    /// What is being done, and how much of it is done, percent. An exception stops the operation.
    using TWatcher = std::function<void(const std::string& sDoing, int nPercent)>;

    /// @param watcher  told of what a progress bar would show, on the thread of the operation; empty: nobody.
    void SetWatcher(TWatcher watcher) { m_watcher = std::move(watcher); }
    bool IsWatched() const { return m_watcher != nullptr; }
    void TellWatcher(const std::string& sDoing, int nPercent) const
    {
        if (m_watcher)
            m_watcher(sDoing, nPercent);
    }

private:
    TWatcher m_watcher;
    bool m_bQuiet = false;
};

} // namespace zorcld

#endif
