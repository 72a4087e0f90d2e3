#ifndef BENCH_CROWRESULT_H
#define BENCH_CROWRESULT_H

#include <bench/CBenchRow.h>

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

/// What the rounds of one row gave.
struct CRowResult
{
    /// The figure that the row's bar is about: a ratio of medians, nanoseconds a unit, or a value.
    double CalcFigure() const;

    /// The results were the same and the figure is within the bar, if there is one.
    bool IsHeld() const;

    /// Forgets the rounds but for their figure.
    void BeginSecondRun();

    /// The row as a line of the table.
    std::string Format() const;

    std::string sGroup;
    std::string sItem;
    std::int64_t nNum = 0;
    std::string sPeer;
    std::string sUnit; ///< of values; empty where times were taken
    CBenchBar bar{0.0};
    enumBenchResult eResult = BenchResult_Same;
    double dPerUnits = 0.0;
    bool bSame = true;
    double dFirstFigure = 0.0;  ///< of the first run, when there was a second
    std::uint64_t nProduct = 0; ///< checksum, or number of points
    std::uint64_t nPeer = 0;
    std::vector<double> vecProduct; ///< seconds, or values, one a round
    std::vector<double> vecPeer;

private:
    std::string FormatSide(const std::vector<double>& vec, std::uint64_t nCount) const;
    std::string FormatFigure() const;
    std::string FormatHeld() const;
};

/// Prints the table of all rows that ran, and the notes below it.
void PrintTable(const std::deque<CRowResult>& results, const std::vector<std::string>& vecNotes);

/// Writes the same as JSON, every round with it. @return false when the file could not be written.
bool WriteJson(const std::string& sPath, const std::deque<CRowResult>& results,
               const std::vector<std::string>& vecNotes);

#endif
