#include <fuzz/FuzzBody.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace
{

std::vector<std::filesystem::path> ListFiles(const std::filesystem::path& path)
{
    if (!std::filesystem::is_directory(path))
        return {path};
    std::vector<std::filesystem::path> vecFiles;
    for (const auto& entry : std::filesystem::directory_iterator(path))
        if (entry.is_regular_file())
            vecFiles.push_back(entry.path());
    std::sort(vecFiles.begin(), vecFiles.end());
    return vecFiles;
}

} // namespace

/// Runs the body over files, and over the files in folders.
int main(int nNumArgs, char** asArgs)
{
    int nNumDone = 0;
    for (int i = 1; i < nNumArgs; ++i)
        for (const std::filesystem::path& path : ListFiles(asArgs[i]))
        {
            std::printf("%s\n", path.c_str());
            std::fflush(stdout); // the last line tells which input it was
            std::ifstream stream(path, std::ios::binary);
            const std::string sBytes((std::istreambuf_iterator<char>(stream)), {});
            FuzzBody(reinterpret_cast<const std::uint8_t*>(sBytes.data()), sBytes.size());
            ++nNumDone;
        }
    std::printf("%d inputs\n", nNumDone);
    return nNumDone > 0 ? 0 : 1;
}
