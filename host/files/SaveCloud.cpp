#include <host/files/SaveCloud.h>

#include <host/output/CTempFile.h>
#include <host/output/RemoveAbandoned.h>
#include <zor4data/CPntCld.h>
#include <zor4data/SaveCloud.h>

#include <cerrno>
#include <optional>
#include <utility>

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
    std::optional<CHeldSignals> held(std::in_place); // until the file is watched
    const auto watch = [&](const zor::String& sTempPath)
    {
        watched.reset();
        if (sTempPath.GetLength() > 0)
            watched.emplace(sTempPath.c_str());
        held.reset();
    };
    const enumFileCause eCause = ::SaveCloud(cloud, zor::String(sPath), watch);
    if (eCause != FileCause_None)
        FailToSave(sPath, eCause, errno);
}

} // namespace zorcld
