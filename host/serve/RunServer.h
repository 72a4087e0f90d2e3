#ifndef HOST_SERVE_RUNSERVER_H
#define HOST_SERVE_RUNSERVER_H

#include <host/files/CInputOptions.h>

#include <cstdint>
#include <string>

namespace zorcld
{

class CConsole;

/// What `zorcld serve` is to show, and where.
struct CServeOptions
{
    CInputOptions input;
    int nPort = 0; ///< 0: a free one
    std::int64_t nBudget = 0;
    bool bOpen = false;
    std::string sAddress = "127.0.0.1";
};

/// Shows a cloud in the browser until it is interrupted. The address is printed on standard output at once,
/// while the file is still being loaded.
/// @return false when the file could not be loaded, which has been told on standard error.
/// @throws CFailure when the file cannot be opened, or the server cannot listen.
bool RunServer(const CServeOptions& options, const CConsole& console);

} // namespace zorcld

#endif
