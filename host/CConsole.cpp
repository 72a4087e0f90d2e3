#include <host/CConsole.h>

#include <fmt/format.h>

#include <unistd.h>

void CConsole::Note(const std::string& sText) const
{
    if (!m_bQuiet)
        fmt::print(stderr, "zorcld: {}\n", sText);
}

bool CConsole::HasProgressBar() const
{
    return !m_bQuiet && isatty(STDERR_FILENO) == 1;
}
