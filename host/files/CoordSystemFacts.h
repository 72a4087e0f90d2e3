#ifndef HOST_FILES_COORDSYSTEMFACTS_H
#define HOST_FILES_COORDSYSTEMFACTS_H

#include <nlohmann/json_fwd.hpp>

struct CCoordSystem;

namespace zorcld
{

/// The coordinate system that a file states, for `info --json`; null where it states none.
nlohmann::ordered_json CollectCoordSystem(const CCoordSystem& coords);

/// The same for people, on standard output, a label of 20 characters before each; nothing where there is
/// none.
void PrintCoordSystem(const CCoordSystem& coords);

} // namespace zorcld

#endif
