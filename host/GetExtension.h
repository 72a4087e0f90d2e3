#ifndef HOST_GETEXTENSION_H
#define HOST_GETEXTENSION_H

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>

/// The extension of a file's name, with its dot, in lower case.
inline std::string GetExtension(const std::string& sPath)
{
    std::string sExtension = std::filesystem::path(sPath).extension().string();
    std::transform(sExtension.begin(), sExtension.end(), sExtension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return sExtension;
}

#endif
