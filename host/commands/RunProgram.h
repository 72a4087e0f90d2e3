#ifndef HOST_COMMANDS_RUNPROGRAM_H
#define HOST_COMMANDS_RUNPROGRAM_H

namespace zorcld
{

/// Does what a command line asks for.
/// @param pArgs  the program's name first.
/// @return the exit status; wrong usage that the parser finds is reported on standard error.
/// @throws CFailure, CUsageError, std::bad_alloc
int RunCommand(int nNumArgs, const char* const* pArgs);

/// The same; what is thrown becomes a line on standard error and an exit status.
int RunProgram(int nNumArgs, const char* const* pArgs);

} // namespace zorcld

#endif
