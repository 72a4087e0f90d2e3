// The command itself: what it prints, how it ends.

#include <tests/host/serve/support/CHttpClient.h>
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace
{

/// Runs the server in the background of a shell, then something, then interrupts it.
/// @param sMeanwhile  a command; `$url` is the address that was printed.
/// @param sSignal     what ends it.
CRun RunServed(const CZorcld& zorcld, const std::string& sFile, const std::string& sMeanwhile,
               const std::vector<std::string>& vecOptions = {}, const std::string& sSignal = "INT")
{
    const std::string sOut = zorcld.GetPath("url");
    // A shell without job control has its background ignore SIGINT: `env` gives it back.
    const std::string sBefore =
        "serve() { rm -f '" + sOut + "'; env --default-signal=INT \"$@\" >'" + sOut +
        "' & pid=$!; n=0; "
        "while [ ! -s '" +
        sOut + "' ] && [ $n -lt 9000 ]; do sleep 0.01; n=$((n+1)); done; url=$(cat '" + sOut + "'); " +
        sMeanwhile + "; kill -" + sSignal + " $pid; wait $pid; }; serve";
    std::vector<std::string> vecArgs = {"serve", sFile};
    vecArgs.insert(vecArgs.end(), vecOptions.begin(), vecOptions.end());
    return zorcld.RunAfter(sBefore, vecArgs);
}

TEST(zorcld_serve, Interrupted_StatusZero)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("a.ply", MakeGridPly(20));
    const CRun run = RunServed(zorcld, sFile, "sleep 0.3; echo \"$url\"");
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_EQ(run.sOut.compare(0, 17, "http://127.0.0.1:"), 0) << run.sOut;
    EXPECT_NE(run.sOut.find("/?token="), std::string::npos);
    EXPECT_EQ(run.sErr, "");
}

TEST(zorcld_serve, CannotBeLoaded_SaysSoAndEndsWithOne)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("a.ply", MakePlyHeader("element vertex 5\nproperty float x\n"
                                                                  "property float y\nproperty float z\n"));
    const std::string sUntilSaid =
        "until [ -s /dev/stderr ]; do sleep 0.01; done"; // the file that it goes to
    const CRun run = RunServed(zorcld, sFile, sUntilSaid);
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_NE(run.sErr.find("truncated after 0 of 5 vertices"), std::string::npos) << run.sErr;
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    const CRun quiet = RunServed(zorcld, sFile, sUntilSaid, {"--quiet"});
    EXPECT_EQ(quiet.nStatus, 1);
    EXPECT_EQ(quiet.sErr, run.sErr);
}

TEST(zorcld_serve, Terminated_StatusZero)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("a.ply", MakeGridPly(20));
    for (const char* const pSignal : {"TERM", "HUP"})
        EXPECT_EQ(RunServed(zorcld, sFile, "sleep 0.2", {}, pSignal).nStatus, 0) << pSignal;
}

// Beside a load that still takes a while the end is not waited for.
TEST(zorcld_serve, InterruptedWhileLoading_StatusZero)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("a.ply", MakeGridPly(1200));
    const CRun run = RunServed(zorcld, sFile, "true");
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_EQ(run.sErr, "");
}

TEST(zorcld_serve, PortTaken_OneLineAndOne)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("a.ply", MakeGridPly(20));
    const CRun run = RunServed(
        zorcld, sFile, "port=${url#http://127.0.0.1:}; \"$@\" --port ${port%%/*} >/dev/null; echo $?");
    EXPECT_EQ(run.nStatus, 0);
    EXPECT_EQ(run.sOut, "1\n");
    EXPECT_NE(run.sErr.find("Address already in use"), std::string::npos) << run.sErr;
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
}

// Where the machine has no addresses of version 6 that is a failure like others.
TEST(zorcld_serve, Listen_AddressesOfVersion6HaveBrackets)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("a.ply", MakeGridPly(20));
    if (RunServed(zorcld, sFile, "true", {"--listen", "::1"}).nStatus != 0)
        GTEST_SKIP() << "no IPv6 here";
    const CRun run = RunServed(zorcld, sFile, "echo \"$url\"", {"--listen", "::1"});
    EXPECT_EQ(run.sOut.compare(0, 13, "http://[::1]:"), 0) << run.sOut;
    EXPECT_EQ(run.sErr, ""); // no warning: nobody else can reach it
    const CRun all = RunServed(zorcld, sFile, "true", {"--listen", "0.0.0.0"});
    EXPECT_NE(all.sErr.find("other machines may reach the cloud"), std::string::npos) << all.sErr;
}

TEST(zorcld_serve, WrongUse_EndsAtOnce)
{
    const CZorcld zorcld;
    const CRun missing = zorcld.Run({"serve", zorcld.GetPath("none.ply")});
    EXPECT_EQ(missing.nStatus, 1);
    EXPECT_TRUE(missing.HasOneErrLine()) << missing.sErr;
    const std::string sFile = zorcld.Write("a.ply", MakeGridPly(3));
    EXPECT_EQ(zorcld.Run({"serve", sFile, "--port", "70000"}).nStatus, 2);
    EXPECT_EQ(zorcld.Run({"serve", sFile, "--listen", "nowhere"}).nStatus, 2);
    EXPECT_EQ(zorcld.Run({"serve", sFile, "--budget", "3"}).nStatus, 2);
    EXPECT_EQ(zorcld.Run({"serve", sFile, "--budget", "10000001"}).nStatus, 2); // what the page shows at most
    EXPECT_EQ(zorcld.Run({"serve", sFile, "--listen", "203.0.113.7"}).nStatus, 1); // not this machine's
    EXPECT_EQ(zorcld.Run({"serve"}).nStatus, 2);
}

} // namespace
