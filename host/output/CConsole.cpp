#include <host/output/CConsole.h>

#include <host/output/PrintMessage.h>

#include <unistd.h>

namespace zorcld
{

void CConsole::Note(const std::string& sText) const
{
    if (!m_bQuiet)
        PrintMessage(stderr, "zorcld: " + sText);
}

bool CConsole::HasProgressBar() const
{
    return !m_bQuiet && isatty(STDERR_FILENO) == 1;
}

} // namespace zorcld
