#ifndef HOST_OUTPUT_REFUSESAMEFILE_H
#define HOST_OUTPUT_REFUSESAMEFILE_H

#include <string>

namespace zorcld
{

/// Keeps a command from writing over a file that it reads, by whatever name or link that is reached.
/// @param sInPath   empty: nothing is read.
/// @param sOutPath  empty: nothing is written.
/// @param pOption   what gave that name, for the message.
/// @param bForce    the user wants it so.
/// @throws CUsageError
void RefuseSameFile(const std::string& sInPath, const std::string& sOutPath, const char* pOption,
                    bool bForce);

} // namespace zorcld

#endif
