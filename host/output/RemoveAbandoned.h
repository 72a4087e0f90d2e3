#ifndef HOST_OUTPUT_REMOVEABANDONED_H
#define HOST_OUTPUT_REMOVEABANDONED_H

#include <functional>
#include <string>
#include <string_view>

namespace zorcld
{

/// Removes the temporary files of runs that ended without a chance to do it: those of the folder that carry
/// the suffix of CPlacedFile, are regular files of this user, have not been written to for a day, and that no
/// run holds. What cannot be removed, or looked at, stays.
///
/// @param sFolder  empty: the current one.
void RemoveAbandoned(const std::string& sFolder);

/// Removes those of any age whose place is known: for a folder in which nobody else writes such files.
/// @param isTarget  gets the name that a file was to have.
void RemoveAbandonedOf(const std::string& sFolder, const std::function<bool(std::string_view)>& isTarget);

/// RemoveAbandoned for the folder where a file is to be; a symbolic link is followed.
void RemoveAbandonedBeside(const std::string& sTarget);

} // namespace zorcld

#endif
