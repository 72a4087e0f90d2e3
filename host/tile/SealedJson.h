#ifndef HOST_TILE_SEALEDJSON_H
#define HOST_TILE_SEALEDJSON_H

#include <nlohmann/json.hpp>

#include <optional>
#include <string>

namespace zorcld
{

/// @return one line of JSON with the hash of what it holds.
std::string SealJson(const nlohmann::ordered_json& json);

/// @return what `SealJson` was given; none: not every byte is as it was.
std::optional<nlohmann::ordered_json> OpenSealedJson(const std::string& sText);

} // namespace zorcld

#endif
