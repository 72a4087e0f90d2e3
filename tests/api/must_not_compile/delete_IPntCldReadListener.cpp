// EXPECT: protected
#include <zor4data/IPntCldReadListener.h>

// The library never owns a listener: nobody deletes one through its interface.
void Use(IPntCldReadListener* pListener)
{
#ifdef MUST_NOT_COMPILE
    delete pListener;
#else
    static_cast<void>(pListener);
#endif
}
