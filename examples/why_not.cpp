// Says why files do not load, and what would be lost of those that do.

#include <zor4data/CFileFacts.h>

#include <cstdio>

namespace
{

// [facts]
/// @return whether the file will load.
bool Explain(const char* pPath)
{
    const CFileFacts facts = FindFileFacts(pPath); // reads the file's head, not its points
    if (facts.eCause != FileCause_None)
    {
        // The number is for programs and stays what it is; the text is for people.
        std::printf("%s: cause %d: %s\n", pPath, static_cast<int>(facts.eCause), facts.sCause.c_str());
        return false;
    }
    std::printf("%s: kind %d, %lld points announced, %s colour\n", pPath, static_cast<int>(facts.eType),
                static_cast<long long>(facts.nAnnounced), facts.bColor ? "with" : "without");
    for (const CFileLoss& loss : FindFileLosses(pPath, facts.eType))
        std::printf("  %s: %s\n", loss.sCode.c_str(), loss.sText.c_str());
    return true;
}
// [/facts]

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return std::fprintf(stderr, "usage: why_not FILE...\n"), 2;
    int nWithout = 0;
    for (int i = 1; i < argc; ++i)
        nWithout += Explain(argv[i]) ? 0 : 1;
    std::printf("%d of %d would not load\n", nWithout, argc - 1);
}
