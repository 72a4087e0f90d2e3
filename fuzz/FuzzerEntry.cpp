#include <fuzz/FuzzBody.h>

// Called by libFuzzer for each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t nSize);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t nSize)
{
    FuzzBody(pBytes, nSize);
    return 0;
}
