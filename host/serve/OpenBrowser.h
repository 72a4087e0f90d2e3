#ifndef HOST_SERVE_OPENBROWSER_H
#define HOST_SERVE_OPENBROWSER_H

#include <string>

namespace zorcld
{

class CConsole;

/// Opens an address in the user's browser, as the desktop does it; a note tells where that fails.
void OpenBrowser(const std::string& sUrl, const CConsole& console);

} // namespace zorcld

#endif
