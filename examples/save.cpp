// Saves a cloud so that the file is whole or not there, and loads it again.

#include "common/CFileColors.h"
#include "common/FillHills.h"

#include <zor4data/CPntCld.h>
#include <zor4data/LoadNative.h>
#include <zor4data/SaveCloud.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace
{

// [save]
/// @return whether the file is there, every byte of it on the disk.
bool Save(CPntCld& cld, const char* pPath)
{
    const enumFileCause eCause = SaveCloud(cld, pPath);
    const int nErrno = errno; // what the system said, 0 where it said nothing
    if (eCause == FileCause_None)
    {
        cld.SetModified(false); // the flag is the host's
        return true;
    }
    std::printf("%s: cause %d%s%s\n", pPath, static_cast<int>(eCause), nErrno == 0 ? "" : ": ",
                nErrno == 0 ? "" : std::strerror(nErrno));
    return false; // an older file of that name is as it was
}
// [/save]

} // namespace

int main()
{
    CFileColors colors;
    CPntCld cld(&colors);
    if (!FillHills(cld))
        return 1;

    Save(cld, "no/such/folder/hills.cld");
    if (!Save(cld, "hills.cld"))
        return 1;

    CPntCld loaded(&colors);
    if (!LoadNative(loaded, nullptr, "hills.cld"))
        return 1;
    zor::geom::RECT_3D box;
    std::printf("%d points loaded, %s octree\n", loaded.GetNumPnts(),
                loaded.GetBdry(box) ? "with" : "without");
}
