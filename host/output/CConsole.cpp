#include <host/output/CConsole.h>

#include <fmt/format.h>

#include <unistd.h>

namespace zorcld
{

void CConsole::Note(const std::string& sText) const
{
    if (!m_bQuiet)
        fmt::print(stderr, "zorcld: {}\n", sText);
}

bool CConsole::HasProgressBar() const
{
    return !m_bQuiet && isatty(STDERR_FILENO) == 1;
}

} // namespace zorcld
