#ifndef HOST_FILES_DESCRIBEFACTS_H
#define HOST_FILES_DESCRIBEFACTS_H

#include <formats/CFileCause.h>
#include <zor4data/CFileFacts.h>

#include <nlohmann/json_fwd.hpp>

namespace zorcld
{

/// Adds why a file is not loaded, or nothing useful from it: `cause` and `cause_number`, both null without
/// one.
void DescribeCause(const CFileCause& cause, nlohmann::ordered_json& info);

/// Adds what the head of a file says: `announced`, `color`, `bounds`.
void DescribeHead(const CFileFacts& facts, nlohmann::ordered_json& info);

} // namespace zorcld

#endif
