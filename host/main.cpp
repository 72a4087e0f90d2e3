#include <host/commands/RunProgram.h>

int main(int nNumArgs, char** pArgs)
{
    return zorcld::RunProgram(nNumArgs, pArgs);
}
