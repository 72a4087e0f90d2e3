// EXPECT: private
#include <zor4data/CPntCld.h>

// A file is read with its kind: the native loader by itself is no business of the host.

bool Load(CPntCld& cld)
{
#ifdef MUST_NOT_COMPILE
    return cld.ReadFromFile("cloud.cld");
#else
    return cld.ReadFromFile(nullptr, PntCldFile_Native, "cloud.cld");
#endif
}
