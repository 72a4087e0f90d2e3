// EXPECT: no matching (function|constructor)
#include <zor4data/CPntCld.h>

// Every cloud is told where its colours come from, if only by a null pointer.
void Use(ICldColorListener* pColorListener)
{
#ifdef MUST_NOT_COMPILE
    CPntCld cld;
#else
    CPntCld cld(pColorListener);
#endif
    cld.Clear();
}
