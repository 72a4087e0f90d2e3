#ifndef HOST_FILES_LASFACTS_H
#define HOST_FILES_LASFACTS_H

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace zorcld
{

/// What the header of a LAS or LAZ file says, for `info --json`; null when it cannot be read.
nlohmann::ordered_json CollectLasFacts(const std::string& sPath);

/// The same for people, on standard output, a label of 20 characters before each.
void PrintLasFacts(const nlohmann::ordered_json& facts);

} // namespace zorcld

#endif
