#ifndef HOST_SERVE_COLLECTFACTS_H
#define HOST_SERVE_COLLECTFACTS_H

#include <nlohmann/json.hpp>

class CPntCld;

namespace zorcld
{

class CInputFile;
struct CLoadFacts;

/// What `/api/info` tells of a cloud and its file beside counts and the octree (docs/serve.md).
nlohmann::ordered_json CollectFacts(const CPntCld& cloud, CInputFile& file, const CLoadFacts& facts);

} // namespace zorcld

#endif
