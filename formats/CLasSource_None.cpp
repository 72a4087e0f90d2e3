#include <formats/CLasSource.h>

#include <formats/CLasGuard.h>

CMadeSource MakeLasSource(CLasGuard&)
{
    return {};
}

bool HasLasColors(CLasGuard& guard)
{
    return guard.GetHeader().HasColor();
}
