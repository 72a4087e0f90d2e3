#ifndef HOST_OUTPUT_GETEXTENSION_H
#define HOST_OUTPUT_GETEXTENSION_H

#include <host/output/CFailure.h>

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>

namespace zorcld
{

/// The extension of a file's name, with its dot, in lower case.
inline std::string GetExtension(const std::string& sPath)
{
    std::string sExtension = std::filesystem::path(sPath).extension().string();
    std::transform(sExtension.begin(), sExtension.end(), sExtension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return sExtension;
}

/// @param sOption     what gave the path, for the message.
/// @param sExtension  the only one that the file may have.
/// @throws CUsageError when it has another.
inline void CheckExtension(const std::string& sPath, const char* sOption, const char* sExtension)
{
    if (GetExtension(sPath) != sExtension)
        throw CUsageError(fmt::format("{}: '{}' does not end in {}", sOption, sPath, sExtension));
}

} // namespace zorcld

#endif
