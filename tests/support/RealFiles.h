#ifndef SUPPORT_REALFILES_H
#define SUPPORT_REALFILES_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// Real files that are not part of the project: environment variable ZOR4DATA_TEST_DATA, by default
/// ../shared/data beside the sources. A test without them is to skip and say so.
///
/// @param sName  for instance "asc/kootenai_upper_keys.asc".
/// @return the path, whether there is such a file or not.
inline std::string GetRealFile(const std::string& sName)
{
    const char* const sFolder = std::getenv("ZOR4DATA_TEST_DATA");
    const std::filesystem::path folder = sFolder != nullptr ? sFolder : ZOR4DATA_SOURCE_DIR "/../shared/data";
    return (folder / sName).string();
}

/// @return the bytes of a file, none when there is no such file.
inline std::string ReadFileBytes(const std::string& sPath)
{
    std::ifstream stream(sPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

#endif
