#ifndef HOST_TILE_READTEXT_H
#define HOST_TILE_READTEXT_H

#include <optional>
#include <string>

namespace zorcld
{

/// All of a file.
/// @return nothing where there is no such file.
/// @throws CFailure that names it where it cannot be read.
std::optional<std::string> ReadText(const std::string& sPath);

} // namespace zorcld

#endif
