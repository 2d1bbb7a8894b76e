// Loads a document of each hostile family, at 64 KiB and 1 MiB, in a process of its own, and prints what it
// cost and how it ended. Exits with 1 when one costs more than a second of processor time, and a second more
// for each MiB of a larger document; when one is killed; or when its messages are a flood. Arguments:
// nothing, or a part of the families' names; with --print SIZE, the document itself.
#include "hostile_documents.h"

#include <qzjexxml/qzjexxml.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

namespace {

struct Cost {
  bool survived;
  double seconds;  // of the processor
  double mebibytes;
  std::string messages;
};

Cost load(const std::string& folder, const std::string& document) {
  const std::string file = folder + "/document";
  const std::string messages = folder + "/messages";
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
  return {.survived = WIFEXITED(status) && WEXITSTATUS(status) == 0,
          .seconds = seconds(usage.ru_utime) + seconds(usage.ru_stime),
          .mebibytes = static_cast<double>(usage.ru_maxrss) / 1024,
          .messages = {std::istreambuf_iterator<char>(stream), {}}};
}

// The beginning of the reason that the messages give last, before the line that ends every failed load.
std::string reason(const std::string& messages) {
  constexpr std::string_view label = "   Message: ";
  const std::size_t place = messages.rfind(label);
  const std::string from = place == std::string::npos ? messages : messages.substr(place + label.size());
  return from.substr(0, std::min<std::size_t>(from.find('\n'), 70));
}

}  // namespace

int main(int argc, char* argv[]) {
  const std::string wanted = argc > 1 ? argv[1] : "";
  if (argc == 4 && std::string(argv[2]) == "--print") {
    for (const auto& family : hostile::families()) {
      if (wanted == family.name) {
        std::cout << family.document(std::stoul(argv[3]));
      }
    }
    return 0;
  }
  std::string folder = std::filesystem::temp_directory_path() / "qzjexxml-hostile-XXXXXX";
  if (mkdtemp(folder.data()) == nullptr) {
    return 2;
  }
  bool allCheap = true;
  for (const auto& family : hostile::families()) {
    for (const std::size_t size : {std::size_t{64} << 10U, std::size_t{1} << 20U}) {
      if (std::string(family.name).find(wanted) == std::string::npos) {
        continue;
      }
      const std::string document = family.document(size);
      const double mebibytes = static_cast<double>(document.size()) / (1 << 20U);
      const Cost cost = load(folder, document);
      const bool cheap =
          cost.survived && cost.seconds < 1 + (mebibytes > 0.07 ? mebibytes : 0) && cost.messages.size() < 2'000'000;
      allCheap = allCheap && cheap;
      std::printf("%s %-52s %6.2f MiB %6.2f s %5.0f MiB %8zu bytes: %s%s\n", cheap ? " " : "!", family.name, mebibytes,
                  cost.seconds, cost.mebibytes, cost.messages.size(), cost.survived ? "" : "KILLED ",
                  reason(cost.messages).c_str());
      std::fflush(stdout);
    }
  }
  std::filesystem::remove_all(folder);
  return allCheap ? 0 : 1;
}
