// EXPECT: final
#include <zor4data/CPntCld.h>

// Its destructor is not virtual.
#ifdef MUST_NOT_COMPILE
class CDerived : public CPntCld
{
public:
    using CPntCld::CPntCld;
};
#endif
