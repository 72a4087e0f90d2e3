#ifndef HOST_OUTPUT_REMOVEABANDONED_H
#define HOST_OUTPUT_REMOVEABANDONED_H

#include <string>

namespace zorcld
{

/// Removes the temporary files of runs that ended without a chance to do it: those of the folder that carry
/// the suffix of CPlacedFile, are regular files of this user, have not been written to for a day, and that no
/// run holds. What cannot be removed, or looked at, stays.
///
/// @param sFolder  empty: the current one.
void RemoveAbandoned(const std::string& sFolder);

/// The same for the folder where a file is to be; a symbolic link is followed.
void RemoveAbandonedBeside(const std::string& sTarget);

} // namespace zorcld

#endif
