// EXPECT: discards qualifiers|not marked const
#include <zor4data/CPntCld.h>

// Whoever holds a cloud as const can ask it, not change it.
void Use(const CPntCld& cld, IPntCldListener* pListener)
{
    cld.GetPnts(pListener, 4096);
#ifdef MUST_NOT_COMPILE
    cld.SelPnt(0, false);
#endif
}
