#ifndef HOST_OUTPUT_REMOVEABANDONED_H
#define HOST_OUTPUT_REMOVEABANDONED_H

#include <string>
#include <string_view>

namespace zorcld
{

/// What is put behind the name of a file to make a temporary one, for mkstemp: its last characters are chosen
/// then. No other program is likely to name files so.
constexpr std::string_view c_sTempSuffix = ".zorcld-XXXXXX";

/// Takes hold of a temporary file for as long as it stays open: `RemoveAbandoned` leaves it alone.
/// @param nFile  its descriptor.
void HoldTempFile(int nFile);

/// Removes the temporary files of runs that ended without a chance to do it: those of the folder that carry
/// the suffix, are regular files of this user, have not been written to for a day, and that no run holds.
/// What cannot be removed, or looked at, stays.
///
/// @param sFolder  empty: the current one.
void RemoveAbandoned(const std::string& sFolder);

} // namespace zorcld

#endif
