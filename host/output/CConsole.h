#ifndef HOST_OUTPUT_CCONSOLE_H
#define HOST_OUTPUT_CCONSOLE_H

#include <string>

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

private:
    bool m_bQuiet = false;
};

} // namespace zorcld

#endif
