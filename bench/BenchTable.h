#ifndef BENCH_BENCHTABLE_H
#define BENCH_BENCHTABLE_H

#include <bench/CBenchRow.h>

#include <cstdint>
#include <string>
#include <vector>

/// Options that the benchmarks look at when they register.
struct CBenchOptions
{
    std::int64_t nMaxPnts = 0; ///< --points: the largest cloud, 0 for the default of each row
    bool bQuick = false;       ///< --quick: small clouds and few rounds, to see that all works
    bool bFull = false;        ///< --full: also the rows whose peer takes many minutes
};

CBenchOptions& GetBenchOptions();

/// @return the sizes of a row, cut to what the options allow.
std::vector<std::int64_t> BenchSizes(std::vector<std::int64_t> vecDefault);

void AddRow(const CBenchRow& row);
void AddValue(const CBenchValue& value);

/// A sentence that is printed below the table, once: what was left out and why.
void AddNote(const std::string& sNote);

/// Made once in each file of benchmarks: `fn` adds the file's rows, once the options are known and only
/// when the group is wanted. The groups' names and order are a list in BenchTable.cpp.
struct CBenchGroup
{
    CBenchGroup(const char* pName, void (*fn)());
};

/// Runs the rows of the group that the arguments name (none: all), prints the table and writes it, with
/// every round, as JSON. A row that misses its bar is run a second time, which then counts and is told with
/// the figure of the first. @return exit status: 1 when results differed or, without --quick, a bar was not
/// held.
int RunBench(int argc, char** argv);

#endif
