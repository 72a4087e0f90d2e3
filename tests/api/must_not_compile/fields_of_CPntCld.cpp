// EXPECT: private
#include <zor4data/CPntCld.h>

// The stores are declared in an installed header, but they are not for the host.
void Use(CPntCld& cld)
{
#ifdef MUST_NOT_COMPILE
    cld.m_cld.Clear();
#else
    cld.Clear();
#endif
}
