#include <bench/BenchTable.h>

int main(int argc, char** argv)
{
    return RunBench(argc, argv);
}
