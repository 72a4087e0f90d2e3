#include <host/files/SaveCloud.h>

#include <host/output/CTempFile.h>
#include <host/output/RemoveAbandoned.h>
#include <zor4data/CPntCld.h>
#include <zor4data/SaveCloud.h>

#include <cerrno>
#include <optional>

namespace zorcld
{

void SaveCloud(CPntCld& cloud, const std::string& sPath)
{
    RemoveAbandonedBeside(sPath);
    SaveCloudOnly(cloud, sPath);
}

void SaveCloudOnly(CPntCld& cloud, const std::string& sPath)
{
    std::optional<CWatchedFile> watched;
    const auto watch = [&](const zor::String& sTempPath)
    {
        watched.reset();
        if (sTempPath.GetLength() > 0)
            watched.emplace(sTempPath.c_str());
    };
    const enumFileCause eCause = ::SaveCloud(cloud, zor::String(sPath), watch);
    if (eCause != FileCause_None)
        FailToSave(sPath, eCause, errno);
}

} // namespace zorcld
