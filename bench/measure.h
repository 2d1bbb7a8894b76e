// Timing works and parts of works, and printing them as rows of a table beside something else.
#pragma once

#include <string>

namespace bench {

using Work = void (*)(const std::string& path);

// Does a work and returns the seconds that a part of it took.
using PartOfWork = double (*)(const std::string& path);

// Registers a work to be timed on a file, under a name for milliseconds(). Each of the repetitions takes its memory
// afresh from the system, whatever ran before it.
void time(const std::string& name, Work work, const std::string& path, int repetitions = 11);
void timePart(const std::string& name, PartOfWork work, const std::string& path);

// The processor time that this process and the children that it waited for have taken. What else the machine does
// counts little in it.
double processorSeconds();

// Runs what was registered, as the arguments of Google Benchmark say. What Google Benchmark prints goes to a file
// beside the program, PROGRAM.log.
void run(int argc, char* argv[]);

// What a run took of processor time, as a lower quartile: away from slow times, in which the machine did something
// else, and from single lucky ones. NaN for what the arguments left out.
double milliseconds(const std::string& name);

// What a process takes that does nothing but the work: milliseconds of processor time, and MiB at its peak and
// afterwards. To be called before this process takes any memory that its children would inherit.
struct Process {
  double milliseconds;
  double peak;
  double kept;
};
Process inProcess(Work work, const std::string& path);

// A table of values, what each is beside, and their ratios; `bar` is what a ratio has to stay below.
void printHead(const std::string& what);
void printRow(const std::string& what, const std::string& beside, double value, double base, const std::string& bar);

}  // namespace bench
