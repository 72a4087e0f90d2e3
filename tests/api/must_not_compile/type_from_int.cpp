// EXPECT: invalid conversion|cannot initialize
#include <zor4data/CPntCld.h>

// A number is a point type only where the caller says so.
void Use(CPntCld& cld, int nType)
{
#ifdef MUST_NOT_COMPILE
    cld.OnReadType(nType);
#else
    cld.OnReadType(static_cast<enumPntCldType>(nType));
#endif
}
