#ifndef TESTS_HOST_SUPPORT_RUNCOMMANDS_H
#define TESTS_HOST_SUPPORT_RUNCOMMANDS_H

#include <functional>
#include <string>
#include <vector>

/// A command line without the program's name; %F stands for the file, %D for the folder of the results.
using TCommand = std::vector<std::string>;

/// Every command that reads a file, each way that it reads or writes one; pictures are small.
const std::vector<TCommand>& GetReadingCommands();

/// Runs a command in this process.
/// @return what is wrong with its end; empty: it did what it is to do, or said that it cannot.
std::string RunReading(const TCommand& command, const std::string& sFile, const std::string& sFolder);

/// Runs `fn` in a process of its own with its output in a file in memory: so a death is one failure among
/// others, and is told with the last lines of output.
/// @param nSeconds  after which it is ended.
/// @return empty when fn came back, else how it ended and what it said last.
std::string RunInChild(int nSeconds, const std::function<void()>& fn);

#endif
