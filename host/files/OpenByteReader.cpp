#include <host/files/OpenByteReader.h>

#include <host/output/CFailure.h>

#include <cerrno>
#include <cstring>

namespace zorcld
{

CByteReader OpenByteReader(const std::string& sPath)
{
    CFilePtr pFile(std::fopen(sPath.c_str(), "rb"));
    if (pFile == nullptr)
        throw CFailure(sPath, std::string("cannot be opened: ") + std::strerror(errno));
    return CByteReader(std::move(pFile));
}

} // namespace zorcld
