// Measures work and parts of it, and prints tables that compare them.
#pragma once

#include <string>

namespace bench {

using Work = void (*)(const std::string& path);

// Does the work and returns the seconds that a part of it took.
using PartOfWork = double (*)(const std::string& path);

// Registers work to be timed on a file, under a name for milliseconds(). Each repetition starts with all free memory
// returned to the system.
void time(const std::string& name, Work work, const std::string& path, int repetitions = 11);
void timePart(const std::string& name, PartOfWork work, const std::string& path);

// The processor time of this process and of the children that it waited for. Other processes hardly affect it.
double processorSeconds();

// Runs the registered work with the arguments of Google Benchmark, whose output goes to the file PROGRAM.log.
void run(int argc, char* argv[]);

// The processor time of the work with that name. It is the lower quartile of the repetitions, which excludes disturbed
// runs and single fast ones. NaN if the arguments excluded the work.
double milliseconds(const std::string& name);

// Runs the work in a process of its own. Returns the milliseconds of processor time, and the MiB of memory at its peak
// and after the work. To be called before this process allocates memory, which the child would inherit.
struct Process {
  double milliseconds;
  double peak;
  double kept;
};
Process inProcess(Work work, const std::string& path);

// Print a table: a value, the value to compare it with, and their ratio. The ratio should stay below `bar`.
void printHead(const std::string& what);
void printRow(const std::string& what, const std::string& beside, double value, double base, const std::string& bar);

}  // namespace bench
