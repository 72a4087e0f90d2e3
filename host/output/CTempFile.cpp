#include <host/output/CTempFile.h>

#include <host/output/CFailure.h>
#include <host/output/RemoveAbandoned.h>

#include <cerrno>
#include <cstring>

namespace zorcld
{

namespace
{

std::string DescribeLink(int nError)
{
    if (nError == ENOENT)
        return "is a symbolic link that leads nowhere";
    if (nError == ELOOP)
        return "is a symbolic link that leads in a circle";
    return std::string("is a symbolic link that cannot be followed: ") + std::strerror(nError);
}

std::string Describe(enumFileCause eCause, int nError)
{
    if (eCause == FileCause_Directory)
        return "is a directory";
    if (eCause == FileCause_NotRegular)
        return "is not a regular file: what is written there cannot be checked";
    if (eCause == FileCause_LinkNowhere)
        return DescribeLink(nError);
    if (eCause == FileCause_NothingToSave)
        return "is not written: the cloud has no octree";
    return std::string(eCause == FileCause_NotCreated ? "cannot be created: " : "could not be written: ") +
           (nError != 0 ? std::strerror(nError) : "not every byte arrived");
}

} // namespace

CTempFile::CTempFile(const std::string& sTarget) : CTempFile(sTarget, CHeldSignals())
{
    RemoveAbandonedBeside(sTarget);
}

CTempFile::CTempFile(const std::string& sTarget, const CHeldSignals&) : m_file(sTarget)
{
    if (m_file.GetCause() != FileCause_None)
        FailToSave(sTarget, m_file.GetCause(), errno);
    m_watched.emplace(m_file.GetPath());
}

bool CTempFile::Place()
{
    return m_file.Place() == FileCause_None;
}

std::string FollowLink(const std::string& sPath)
{
    std::string sTarget;
    const int nError = CPlacedFile::FollowLink(sPath, sTarget);
    if (nError != 0)
        FailToSave(sPath, FileCause_LinkNowhere, nError);
    return sTarget;
}

void FailToSave(const std::string& sPath, enumFileCause eCause, int nError)
{
    throw CFailure(sPath, Describe(eCause, nError));
}

} // namespace zorcld
