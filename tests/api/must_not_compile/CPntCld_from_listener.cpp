// EXPECT: conver|no viable|could not
#include <zor4data/CPntCld.h>

// A listener does not turn into a cloud by itself.
CPntCld Make(ICldColorListener* pColorListener)
{
#ifdef MUST_NOT_COMPILE
    return pColorListener;
#else
    return CPntCld(pColorListener);
#endif
}
