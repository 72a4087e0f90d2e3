#include <fuzz/FuzzBody.h>
#include <fuzz/calls/CCalls.h>

void FuzzBody(const std::uint8_t* pBytes, std::size_t nSize)
{
    CInput input(pBytes, nSize);
    CCalls calls(input);
    calls.Run();
}
