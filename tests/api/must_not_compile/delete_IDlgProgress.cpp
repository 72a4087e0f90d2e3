// EXPECT: protected
#include <zor4data/IDlgProgress.h>

// The library never owns a listener: nobody deletes one through its interface.
void Use(IDlgProgress* pListener)
{
#ifdef MUST_NOT_COMPILE
    delete pListener;
#else
    static_cast<void>(pListener);
#endif
}
