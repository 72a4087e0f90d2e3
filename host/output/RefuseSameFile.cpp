#include <host/output/RefuseSameFile.h>

#include <host/output/CFailure.h>

#include <fmt/format.h>

#include <filesystem>

namespace zorcld
{

void RefuseSameFile(const std::string& sInPath, const std::string& sOutPath, const char* pOption, bool bForce)
{
    std::error_code error;
    if (!bForce && !sOutPath.empty() && std::filesystem::equivalent(sInPath, sOutPath, error))
        throw CUsageError(
            fmt::format("{}: '{}' is the file that is read (--force replaces it)", pOption, sOutPath));
}

} // namespace zorcld
