#include <tests/support/RealFiles.h>

#include <cstdlib>

std::filesystem::path GetSourceFolder()
{
    return ZOR4DATA_SOURCE_DIR;
}

std::filesystem::path GetRealFolder()
{
    const char* const sFolder = std::getenv("ZOR4DATA_TEST_DATA");
    return sFolder != nullptr ? std::filesystem::path(sFolder) : GetSourceFolder() / "../shared/data";
}

std::string GetRealFile(const std::string& sName)
{
    return (GetRealFolder() / sName).string();
}
