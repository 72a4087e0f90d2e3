#ifndef HOST_FILES_CINPUTOPTIONS_H
#define HOST_FILES_CINPUTOPTIONS_H

#include <string>

namespace zorcld
{

/// The file that a command reads, as the command line gives it.
struct CInputOptions
{
    std::string sPath;
    std::string sType; ///< empty: found out
};

} // namespace zorcld

#endif
