#include "measure.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <limits>
#include <map>
#include <vector>

namespace bench {
namespace {

std::map<std::string, double> measured;  // milliseconds, by name

class Collector : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.aggregate_name == "quartile") {
        measured[run.run_name.function_name] = run.GetAdjustedRealTime();
      }
    }
  }
};

double seconds(const rusage& usage) {
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double lowerQuartile(const std::vector<double>& times) {
  std::vector<double> sorted = times;
  std::ranges::sort(sorted);
  return sorted[sorted.size() / 4];
}

benchmark::internal::Benchmark* registered(const std::string& name, int repetitions, const auto& iterations) {
  return benchmark::RegisterBenchmark(name.c_str(), iterations)
      ->Unit(benchmark::kMillisecond)
      ->Repetitions(repetitions)
      ->ComputeStatistics("quartile", lowerQuartile)
      ->DisplayAggregatesOnly();
}

}  // namespace

double processorSeconds() {
  rusage own{};
  rusage childrens{};
  getrusage(RUSAGE_SELF, &own);
  getrusage(RUSAGE_CHILDREN, &childrens);
  return seconds(own) + seconds(childrens);
}

void time(const std::string& name, Work work, const std::string& path, int repetitions) {
  registered(name, repetitions,
             [work, path](benchmark::State& state) {
               for ([[maybe_unused]] auto iteration : state) {
                 malloc_trim(0);
                 const double begin = processorSeconds();
                 work(path);
                 state.SetIterationTime(processorSeconds() - begin);
               }
             })
      ->MinTime(0.1)
      ->UseManualTime();
}

void timePart(const std::string& name, PartOfWork work, const std::string& path) {
  constexpr int repetitions = 11;
  registered(name, repetitions,
             [work, path](benchmark::State& state) {
               for ([[maybe_unused]] auto iteration : state) {
                 malloc_trim(0);
                 state.SetIterationTime(work(path));
               }
             })
      ->Iterations(1)
      ->UseManualTime();
}

void run(int argc, char* argv[]) {
  std::ofstream log{std::string(argv[0]) + ".log"};
  benchmark::Initialize(&argc, argv);
  Collector collector;
  collector.SetOutputStream(&log);
  collector.SetErrorStream(&log);
  benchmark::RunSpecifiedBenchmarks(&collector);
}

double milliseconds(const std::string& name) {
  const auto found = measured.find(name);
  return found == measured.end() ? std::numeric_limits<double>::quiet_NaN() : found->second;
}

Process inProcess(Work work, const std::string& path) {
  int ends[2];
  if (pipe(ends) != 0) {
    std::abort();
  }
  const pid_t child = fork();
  if (child == 0) {
    work(path);
    std::ifstream statm("/proc/self/statm");
    long pages[2];
    statm >> pages[0] >> pages[1];
    const bool written = write(ends[1], &pages[1], sizeof pages[1]) == sizeof pages[1];
    _exit(written ? 0 : 1);
  }
  long kept = 0;
  if (read(ends[0], &kept, sizeof kept) != sizeof kept) {
    std::abort();
  }
  close(ends[0]);
  close(ends[1]);
  rusage usage{};
  wait4(child, nullptr, 0, &usage);
  constexpr double mebibyte = 1 << 20U;
  return {seconds(usage) * 1e3, static_cast<double>(usage.ru_maxrss) * 1024 / mebibyte,
          static_cast<double>(kept * sysconf(_SC_PAGESIZE)) / mebibyte};
}

void printHead(const std::string& what) {
  std::cout << "\n| " << what << " (ms, MiB) | beside | measured | beside | ratio | bar |\n|---|---|---|---|---|---|\n";
}

void printRow(const std::string& what, const std::string& beside, double value, double base, const std::string& bar) {
  std::cout << "| " << what << " | " << beside << " | " << std::fixed << std::setprecision(1) << value << " | " << base
            << " | " << std::setprecision(2) << value / base << " | " << bar << " |\n";
}

}  // namespace bench
