#ifndef TESTS_SUPPORT_REALFILES_H
#define TESTS_SUPPORT_REALFILES_H

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// The folder of the project's sources.
std::filesystem::path GetSourceFolder();

/// Where real files are that are not part of the project: environment variable ZOR4DATA_TEST_DATA, by default
/// ../shared/data beside the sources. A test without them is to skip and say so.
std::filesystem::path GetRealFolder();

/// @param sName  for instance "asc/kootenai_upper_keys.asc".
/// @return the path, whether there is such a file or not.
std::string GetRealFile(const std::string& sName);

/// @return the bytes of a file, none when there is no such file.
inline std::string ReadFileBytes(const std::string& sPath)
{
    std::ifstream stream(sPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

#endif
