#ifndef HOST_SERVE_LINEFORCLIENT_H
#define HOST_SERVE_LINEFORCLIENT_H

#include <string>

namespace zorcld
{

/// What the commands say of a failure, as one line for a client: names of files may hold line feeds, and
/// options of the command line are parameters here ("--box: ..." is "box: ...").
std::string LineForClient(const std::string& sText);

} // namespace zorcld

#endif
