#include <formats/CLasSource.h>

CMadeSource MakeLasSource(CLasGuard&)
{
    return {};
}
