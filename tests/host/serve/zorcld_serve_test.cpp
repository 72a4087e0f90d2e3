// The command itself: what it prints, how it ends.

#include <tests/host/serve/support/CHttpClient.h>
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <thread>

namespace
{

/// Runs the server in the background of a shell, then something, then interrupts it.
/// @param sMeanwhile  a command; `$url` is the address that was printed, within five seconds.
CRun RunServed(const CZorcld& zorcld, const std::string& sFile, const std::string& sMeanwhile)
{
    const std::string sOut = zorcld.GetPath("url");
    // A shell without job control has its background ignore SIGINT: `env` gives it back.
    const std::string sBefore = "serve() { env --default-signal=INT \"$@\" >'" + sOut +
                                "' & pid=$!; n=0; "
                                "while [ ! -s '" +
                                sOut + "' ] && [ $n -lt 500 ]; do sleep 0.01; n=$((n+1)); done; url=$(cat '" +
                                sOut + "'); " + sMeanwhile + "; kill -INT $pid; wait $pid; }; serve";
    return zorcld.RunAfter(sBefore, {"serve", sFile});
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
    const CRun run = RunServed(zorcld, sFile, "sleep 0.3");
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_NE(run.sErr.find("truncated after 0 of 5 vertices"), std::string::npos) << run.sErr;
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
    EXPECT_EQ(zorcld.Run({"serve", sFile, "--listen", "203.0.113.7"}).nStatus, 1); // not this machine's
    EXPECT_EQ(zorcld.Run({"serve"}).nStatus, 2);
}

} // namespace
