// Loads any file that the library reads, shows how far it has come, and can be cancelled.

#include "common/CFileColors.h"

#include <zor4data/CFileFacts.h>
#include <zor4data/CPntCld.h>
#include <zor4data/LoadNative.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace
{

// [progress]
/// Thrown to end a load. The library knows nothing of it: it passes through, and nothing leaks.
struct CCancelled
{
};

class CProgressBar final : public IDlgProgress
{
public:
    void Start() override {} // the library calls SetPos only
    void Stop() override {}

    bool SetPos(int nPos) override
    {
        if (nPos == m_nPos)
            return true; // a call a point: what is done here is done millions of times
        m_nPos = nPos;
        if (nPos % 25 == 0)
            std::printf("%d %%\n", nPos);
        if (m_bCancel || nPos >= m_nCancelAt)
            throw CCancelled();
        return true; // nobody looks at it
    }

    std::atomic<bool> m_bCancel = false; // set by a button, from any thread
    int m_nCancelAt = 101;               // stands for the user's patience

private:
    int m_nPos = -1;
};
// [/progress]

// [load]
bool Load(CPntCld& cld, IDlgProgress& progress, const zor::String& sPath)
{
    const enumPntCldFile eType = FindFileFacts(sPath).eType; // by content, whatever the file's name
    if (eType == PntCldFile_Native)
        return LoadNative(cld, &progress, sPath); // ReadFromFile would say nothing on the way
    return cld.ReadFromFile(&progress, eType, sPath);
}
// [/load]

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return std::fprintf(stderr, "usage: load FILE [PERCENT-TO-CANCEL-AT]\n"), 2;
    CProgressBar progress;
    if (argc > 2)
        progress.m_nCancelAt = static_cast<int>(std::strtol(argv[2], nullptr, 10));

    // [cancel]
    CFileColors colors;
    CPntCld cld(&colors);
    try
    {
        if (!Load(cld, progress, argv[1]))
            return std::fprintf(stderr, "load: %s was not loaded\n", argv[1]), 1;
        std::printf("%d points\n", cld.GetNumPnts());
    }
    catch (const CCancelled&)
    {
        zor::geom::RECT_3D box;
        std::printf("cancelled; %s octree\n", cld.GetBdry(box) ? "an" : "no");
        cld.Clear(); // gives up the points that had come; the cloud can be filled anew
    }
    // [/cancel]
}
