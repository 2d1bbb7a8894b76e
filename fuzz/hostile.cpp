// Loads each hostile document in a process of its own. Prints the ten most expensive documents of each size, with their
// cost and result. Exits with 1 if a document is too expensive in processor time or in characters of messages, or if
// its process is killed.
//
// An argument selects the documents whose name contains it, and prints all of them. --print SIZE after it prints the
// documents themselves.
#include "hostile_documents.h"

#include <qzjexxml/qzjexxml.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace {

struct Bound {
  std::size_t size;
  double seconds;  // on a quiet machine
};

constexpr Bound bounds[] = {{std::size_t{64} << 10U, 0.5}, {std::size_t{1} << 20U, 1.5}};
constexpr std::size_t mostMessages = 200'000;  // characters, including the positions

struct Cost {
  std::string name;
  bool survived;
  double seconds;  // of the processor
  double mebibytes;
  std::string messages;
};

Cost load(const std::string& name, const std::string& directory, const std::string& document) {
  const std::string file = directory + "/document";
  const std::string messages = directory + "/messages";
  std::ofstream(file, std::ios::binary) << document;
  const pid_t child = fork();
  if (child == 0) {
    if (std::freopen(messages.c_str(), "w", stderr) == nullptr) {
      _exit(2);
    }
    const rlimit limit = {.rlim_cur = 20, .rlim_max = 20};  // seconds
    setrlimit(RLIMIT_CPU, &limit);
    KIVData* record = nullptr;
    InitKIVData(file.c_str(), &record);
    TermKIVData(&record);
    _exit(0);
  }
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  std::ifstream stream(messages);
  return {.name = name,
          .survived = WIFEXITED(status) && WEXITSTATUS(status) == 0,
          .seconds = seconds(usage.ru_utime) + seconds(usage.ru_stime),
          .mebibytes = static_cast<double>(usage.ru_maxrss) / 1024,
          .messages = {std::istreambuf_iterator<char>(stream), {}}};
}

// The beginning of the last error in the messages, which precedes the last line of a failed load.
std::string reason(const std::string& messages) {
  constexpr std::string_view label = "   Message: ";
  const std::size_t place = messages.rfind(label);
  const std::string from = place == std::string::npos ? messages : messages.substr(place + label.size());
  return from.substr(0, std::min<std::size_t>(from.find('\n'), 70));
}

void print(const Cost& cost, const Bound& bound) {
  std::printf("%4zu KiB %6.2f s %5.0f MiB %7zu characters  %s: %s%s\n", bound.size >> 10U, cost.seconds, cost.mebibytes,
              cost.messages.size(), cost.name.c_str(), cost.survived ? "" : "KILLED ", reason(cost.messages).c_str());
}

}  // namespace

int main(int argc, char* argv[]) {
  const std::string wanted = argc > 1 ? argv[1] : "";
  std::vector<hostile::Document> documents = hostile::documents();
  std::erase_if(documents, [&](const hostile::Document& one) { return one.name.find(wanted) == std::string::npos; });
  if (argc == 4 && std::string(argv[2]) == "--print") {
    for (const auto& document : documents) {
      std::cout << document.text(std::stoul(argv[3]));
    }
    return 0;
  }
  std::string directory = std::filesystem::temp_directory_path() / "qzjexxml-hostile-XXXXXX";
  if (mkdtemp(directory.data()) == nullptr) {
    return 2;
  }
  std::size_t tooExpensive = 0;
  for (const Bound& bound : bounds) {
    std::vector<Cost> costs;
    for (const auto& document : documents) {
      costs.push_back(load(document.name, directory, document.text(bound.size)));
      const Cost& cost = costs.back();
      if (!cost.survived || cost.seconds > bound.seconds || cost.messages.size() > mostMessages) {
        ++tooExpensive;
        std::printf("TOO EXPENSIVE ");
        print(cost, bound);
        std::fflush(stdout);
      }
    }
    std::ranges::sort(costs, std::greater<>(), &Cost::seconds);
    costs.resize(wanted.empty() ? std::min<std::size_t>(10, costs.size()) : costs.size());
    for (const Cost& cost : costs) {
      print(cost, bound);
    }
    std::fflush(stdout);
  }
  std::filesystem::remove_all(directory);
  std::printf("%zu documents of each size, %zu too expensive\n", documents.size(), tooExpensive);
  return tooExpensive == 0 ? 0 : 1;
}
