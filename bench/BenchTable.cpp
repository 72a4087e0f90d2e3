#include <bench/BenchTable.h>

#include <bench/CRowResult.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>

namespace
{

// What the table is made of, in its order.
constexpr std::array<const char*, 11> c_apGroups = {
    "build", "traversal", "pick", "ply", "native", "las", "grid", "contour", "polygon", "outline", "ground"};

struct CGroupFn
{
    std::string sName;
    void (*fn)();
};

/// A row as it was added: how to run a round of it, and where the round's figures go.
struct CRow
{
    std::string sName;
    int nRounds;
    std::function<void()> runRound;
    CRowResult* pResult;
};

std::vector<CGroupFn>& GetGroups()
{
    static std::vector<CGroupFn> vecGroups;
    return vecGroups;
}

std::deque<CRowResult>& GetResults()
{
    static std::deque<CRowResult> results; // the rows point into it
    return results;
}

std::vector<CRow>& GetRows()
{
    static std::vector<CRow> vecRows;
    return vecRows;
}

std::vector<std::string>& GetNotes()
{
    static std::vector<std::string> vecNotes;
    return vecNotes;
}

/// More than either side of a row allocates.
std::size_t CalcTouched(const CBenchRow& row)
{
    constexpr std::int64_t c_nPerPnt = 64;
    return static_cast<std::size_t>(c_nPerPnt * row.nNum);
}

/// One round: product, then peer.
void RunRound(const CBenchRow& row, CRowResult& result)
{
    CCpuTimer timerProduct(CalcTouched(row));
    result.nProduct = row.product(timerProduct);
    result.vecProduct.push_back(timerProduct.GetSeconds());
    if (!row.peer)
        return;
    CCpuTimer timerPeer(CalcTouched(row));
    result.nPeer = row.peer(timerPeer);
    result.vecPeer.push_back(timerPeer.GetSeconds());
    if (row.eResult == BenchResult_Same && result.nProduct != result.nPeer)
        result.bSame = false;
}

void RunRound(const CBenchValue& value, CRowResult& result)
{
    result.vecProduct.push_back(value.value());
    if (value.peer)
        result.vecPeer.push_back(value.peer());
}

void Register(const CRow& row)
{
    const auto run = [row](benchmark::State& state)
    {
        for (auto _ : state)
        {
            row.runRound();
            state.SetIterationTime(row.pResult->vecProduct.back());
            if (!row.pResult->vecPeer.empty())
                state.counters["peer"] = row.pResult->vecPeer.back();
            if (!row.pResult->bSame)
                state.SkipWithError("product and peer do not give the same result");
        }
    };
    benchmark::RegisterBenchmark(row.sName.c_str(), run)
        ->Iterations(1)
        ->Repetitions(row.nRounds)
        ->UseManualTime();
}

int GetNumRounds(std::int64_t nNum)
{
    if (GetBenchOptions().bQuick)
        return 2;
    return nNum > 2000000 ? 5 : 9;
}

/// @param added  a CBenchRow or a CBenchValue
template <class TAdded>
CRowResult& Add(const TAdded& added, int nRounds)
{
    CRowResult& result = GetResults().emplace_back();
    result.sGroup = added.sGroup;
    result.sItem = added.sItem;
    result.nNum = added.nNum;
    result.sPeer = added.sPeer;
    result.bar = added.bar;
    GetRows().push_back(
        {added.sGroup + "/" + added.sItem + "/" + std::to_string(added.nNum) + "/" + added.sPeer, nRounds,
         [added, &result] { RunRound(added, result); }, &result});
    Register(GetRows().back());
    return result;
}

/// Tells each row as soon as its rounds are done: a run takes long.
class CProgressReporter final : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const CRow& row : GetRows())
            if (!runs.empty() && runs[0].run_type == Run::RT_Iteration &&
                runs[0].run_name.function_name == row.sName)
                std::fprintf(stderr, "%s\n", row.pResult->Format().c_str());
    }
};

void RunAgain(const CRow& row)
{
    row.pResult->BeginSecondRun();
    for (int i = 0; i < row.nRounds; ++i)
        row.runRound();
    std::fprintf(stderr, "%s\n", row.pResult->Format().c_str());
}

/// Takes this program's own options out of the arguments; the rest is Google Benchmark's.
void TakeOptions(std::vector<char*>& vecArgs, std::string& sGroup, std::string& sJson)
{
    CBenchOptions& options = GetBenchOptions();
    std::vector<char*> vecRest{vecArgs[0]};
    for (std::size_t i = 1; i < vecArgs.size(); ++i)
    {
        const std::string sArg = vecArgs[i];
        if (sArg == "--quick")
            options.bQuick = true;
        else if (sArg == "--full")
            options.bFull = true;
        else if (sArg == "--points" && i + 1 < vecArgs.size())
            options.nMaxPnts = std::atoll(vecArgs[++i]);
        else if (sArg == "--json" && i + 1 < vecArgs.size())
            sJson = vecArgs[++i];
        else if (sArg.rfind("--", 0) == 0)
            vecRest.push_back(vecArgs[i]);
        else
            sGroup = sArg;
    }
    vecArgs = vecRest;
}

/// @return false when there is no group of this name.
bool AddGroups(const std::string& sGroup)
{
    bool bFound = false;
    for (const char* const pName : c_apGroups)
        for (const CGroupFn& group : GetGroups())
            if (group.sName == pName && (sGroup.empty() || sGroup == pName))
            {
                group.fn();
                bFound = true;
            }
    return bFound;
}

} // namespace

CBenchOptions& GetBenchOptions()
{
    static CBenchOptions options;
    return options;
}

std::vector<std::int64_t> BenchSizes(std::vector<std::int64_t> vecDefault)
{
    const CBenchOptions& options = GetBenchOptions();
    std::int64_t nMax = options.nMaxPnts > 0 ? options.nMaxPnts : vecDefault.back();
    if (options.bQuick)
        nMax = std::min<std::int64_t>(nMax, 200000);
    for (std::int64_t& n : vecDefault)
        n = std::min(n, nMax);
    vecDefault.erase(std::unique(vecDefault.begin(), vecDefault.end()), vecDefault.end());
    return vecDefault;
}

void AddRow(const CBenchRow& row)
{
    CRowResult& result = Add(row, row.nRounds > 0 ? row.nRounds : GetNumRounds(row.nNum));
    result.eResult = row.eResult;
    result.dPerUnits = row.dPerUnits;
}

void AddValue(const CBenchValue& value)
{
    Add(value, 1).sUnit = value.sUnit;
}

void AddNote(const std::string& sNote)
{
    std::vector<std::string>& vecNotes = GetNotes();
    if (std::find(vecNotes.begin(), vecNotes.end(), sNote) == vecNotes.end())
        vecNotes.push_back(sNote);
}

CBenchGroup::CBenchGroup(const char* pName, void (*fn)())
{
    GetGroups().push_back({pName, fn});
}

int RunBench(int argc, char** argv)
{
    std::vector<char*> vecArgs(argv, argv + argc);
    std::string sGroup;
    std::string sJson = "bench.json";
    TakeOptions(vecArgs, sGroup, sJson);
    if (!AddGroups(sGroup))
    {
        std::fprintf(stderr, "bench: no group %s\n", sGroup.c_str());
        return 2;
    }
    if (std::strlen(ZOR4DATA_BENCH_MISSING) > 0)
        AddNote("Left out, the peer was not found when this was built: " ZOR4DATA_BENCH_MISSING ".");
    int nArgs = static_cast<int>(vecArgs.size());
    benchmark::Initialize(&nArgs, vecArgs.data());
    CProgressReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    for (const CRow& row : GetRows())
        if (!row.pResult->vecProduct.empty() && row.pResult->bSame && !row.pResult->IsHeld() &&
            !GetBenchOptions().bQuick)
            RunAgain(row);
    const std::deque<CRowResult>& results = GetResults();
    PrintTable(results, GetNotes());
    if (!WriteJson(sJson, results, GetNotes()))
        std::fprintf(stderr, "bench: %s could not be written\n", sJson.c_str());
    const bool bQuick = GetBenchOptions().bQuick; // small clouds say nothing about bars
    return std::all_of(results.begin(), results.end(),
                       [=](const CRowResult& result)
                       { return result.vecProduct.empty() || (bQuick ? result.bSame : result.IsHeld()); })
               ? 0
               : 1;
}
