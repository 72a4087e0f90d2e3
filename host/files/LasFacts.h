#ifndef HOST_FILES_LASFACTS_H
#define HOST_FILES_LASFACTS_H

#include <nlohmann/json_fwd.hpp>

#include <vector>

class CLasRecord;
struct CLasHeader;

namespace zorcld
{

/// What the header of a LAS or LAZ file says, for `info --json`.
nlohmann::ordered_json CollectLasFacts(const CLasHeader& header, const std::vector<CLasRecord>& vecRecords);

/// The same for people, on standard output, a label of 20 characters before each; of null nothing.
void PrintLasFacts(const nlohmann::ordered_json& facts);

} // namespace zorcld

#endif
