// Times and peak memory of the library's functions beside the least that the same work costs, and the
// ratios between them.
#include "manifests.h"
#include "other_readers.h"

#include <qzjexxml/qzjexxml.h>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sodium.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iomanip>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace bench;
using namespace xercesc;

// The file in one fresh block, with one fread.
std::unique_ptr<char[]> freadWhole(const std::string& path, std::size_t& size) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  std::fseek(file, 0, SEEK_END);
  size = static_cast<std::size_t>(std::ftell(file));
  std::rewind(file);
  std::unique_ptr<char[]> block(new char[size]);
  if (std::fread(block.get(), 1, size, file) != size) {
    std::abort();
  }
  std::fclose(file);
  return block;
}

// A parse with the library's settings, and what is done with the document.
void parse(const std::string& path, const std::function<void(DOMDocument*)>& use) {
  XMLPlatformUtils::Initialize();
  {
    std::size_t size = 0;
    const auto bytes = freadWhole(path, size);
    const MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.get()), size, "bench");
    XercesDOMParser parser;
    parser.setValidationScheme(XercesDOMParser::Val_Auto);
    parser.setDoNamespaces(true);
    parser.setDoSchema(false);
    parser.setValidationSchemaFullChecking(false);
    parser.setCreateEntityReferenceNodes(true);
    parser.parse(source);
    use(parser.getDocument());
  }
  XMLPlatformUtils::Terminate();
}

void bareParse(const std::string& path) {
  parse(path, [](DOMDocument*) {});
}

std::string attribute(const DOMElement* element, const XMLCh* name) { return copyOf(element->getAttribute(name)); }

template <typename Visit>
void forEachChild(const DOMElement* parent, Visit visit) {
  for (DOMElement* child = parent->getFirstElementChild(); child != nullptr; child = child->getNextElementSibling()) {
    visit(child);
  }
}

// The file map, straight from the document.
void handWritten(const std::string& path) {
  auto record = std::make_unique<KIVData>();
  parse(path, [&record](DOMDocument* document) {
    forEachChild(document->getDocumentElement()->getFirstElementChild(), [&](const DOMElement* filemap) {
      forEachChild(filemap, [&](const DOMElement* root) {
        const std::string rootPath = attribute(root, u"path");
        forEachChild(root, [&](const DOMElement* data) {
          addFile(*record, rootPath,
                  {attribute(data, u"dir_name"), attribute(data, u"file_name"), attribute(data, u"dir_rename"),
                   attribute(data, u"file_rename")});
        });
      });
    });
  });
  benchmark::DoNotOptimize(record);
}

void load(const std::string& path) {
  KIVData* record = nullptr;
  InitKIVData(path.c_str(), &record);
  TermKIVData(&record);
}

// A folder's manifests, each loaded by itself.
void loadAll(const std::string& folder) {
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    load(file.path());
  }
}

void showAll(const std::string& folder) {
  const std::string command = std::string(QZJEXXML_COMMAND) + " manifest " + folder + "/* >/dev/null";
  if (std::system(command.c_str()) != 0) {
    std::abort();
  }
}

void freadFile(const std::string& path) {
  std::size_t size = 0;
  benchmark::DoNotOptimize(freadWhole(path, size));
}

void readXmlFile(const std::string& path) {
  KIVByteArray array;
  ReadXmlFile(path.c_str(), array);
  benchmark::DoNotOptimize(array.data);
}

char passphrase[] = "secret";

// What EncryptFile does, with libsodium's two functions called directly.
void sodiumCalls(const std::string& path) {
  std::size_t size = 0;
  const auto plaintext = freadWhole(path, size);
  unsigned char header[56];
  randombytes_buf(header, sizeof header);
  unsigned char key[32];
  if (crypto_pwhash(key, sizeof key, passphrase, sizeof passphrase - 1, header + 16, 3, std::size_t{64} << 20U,
                    crypto_pwhash_ALG_ARGON2ID13) != 0) {
    std::abort();
  }
  const std::unique_ptr<unsigned char[]> output(new unsigned char[size + 72]);
  crypto_aead_xchacha20poly1305_ietf_encrypt(output.get() + 56, nullptr,
                                             reinterpret_cast<const unsigned char*>(plaintext.get()), size, header,
                                             sizeof header, nullptr, header + 32, key);
  std::FILE* file = std::fopen((path + ".direct").c_str(), "wb");
  std::fwrite(output.get(), 1, size + 72, file);
  std::fclose(file);
}

void encryptFile(const std::string& path) { EncryptFile(path.c_str(), passphrase); }

// Milliseconds and peaks, by name.
std::map<std::string, double> measured;

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

// Keeps away from slow times, in which the machine did something else, and from single lucky ones.
double lowerQuartile(const std::vector<double>& times) {
  std::vector<double> sorted = times;
  std::ranges::sort(sorted);
  return sorted[sorted.size() / 4];
}

void time(const std::string& name, void (*work)(const std::string&), const std::string& path, int repetitions = 25) {
  benchmark::RegisterBenchmark(name.c_str(),
                               [work, path](benchmark::State& state) {
                                 for ([[maybe_unused]] auto iteration : state) {
                                   // Each work takes its memory afresh, whatever ran before it.
                                   state.PauseTiming();
                                   malloc_trim(0);
                                   state.ResumeTiming();
                                   work(path);
                                 }
                               })
      ->Unit(benchmark::kMillisecond)
      ->MinTime(0.1)
      ->Repetitions(repetitions)
      ->ComputeStatistics("quartile", lowerQuartile)
      ->DisplayAggregatesOnly()
      ->UseRealTime();
}

// Peak memory in MiB of a process that does nothing but the work.
double peak(void (*work)(const std::string&), const std::string& path) {
  const pid_t child = fork();
  if (child == 0) {
    work(path);
    _exit(0);
  }
  rusage usage{};
  wait4(child, nullptr, 0, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

void row(const std::string& what, const std::string& beside, double value, double base, const std::string& bar) {
  std::cout << "| " << what << " | " << beside << " | " << std::fixed << std::setprecision(1) << value << " | " << base
            << " | " << std::setprecision(2) << value / base << " | " << bar << " |\n";
}

}  // namespace

int main(int argc, char* argv[]) {
  // Before this process takes any memory that its children would inherit.
  const std::string sorted = manifestFile(Shape::sorted, 100'000);
  const std::string unsorted = manifestFile(Shape::unsorted, 100'000);
  const std::string tenth = manifestFile(Shape::unsorted, 10'000);
  const std::string hundredth = manifestFile(Shape::unsorted, 1'000);
  const std::string small = manifestFolder(2'000, 100);
  const std::string large = largeFile();
  const double loadPeak = peak(load, unsorted);
  const double parsePeak = peak(bareParse, unsorted);
  const double encryptPeak = peak(encryptFile, large);

  benchmark::Initialize(&argc, argv);
  for (const auto& [shape, path] : {std::pair("sorted", &sorted), {"unsorted", &unsorted}}) {
    time(std::string("parse ") + shape, bareParse, *path);
    time(std::string("hand-written ") + shape, handWritten, *path);
    time(std::string("load ") + shape, load, *path);
    time(std::string("libxml2 ") + shape, readWithLibxml2, *path);
    time(std::string("pugixml ") + shape, readWithPugixml, *path);
    time(std::string("SAX ") + shape, readWithXercesSax, *path);
  }
  time("parse tenth", bareParse, tenth);
  time("load tenth", load, tenth);
  time("parse hundredth", bareParse, hundredth);
  time("load hundredth", load, hundredth);
  constexpr int fewRepetitions = 5;  // of seconds each
  time("each loaded", loadAll, small, fewRepetitions);
  time("all shown", showAll, small, fewRepetitions);
  time("fread", freadFile, large);
  time("ReadXmlFile", readXmlFile, large);
  time("sodium", sodiumCalls, large);
  time("EncryptFile", encryptFile, large);
  Collector collector;
  benchmark::RunSpecifiedBenchmarks(&collector);

  std::cout << "\n| measured (ms, MiB) | beside | measured | beside | ratio | bar |\n|---|---|---|---|---|---|\n";
  row("load, sorted", "bare parse", measured["load sorted"], measured["parse sorted"], "0.70");
  row("load, unsorted", "bare parse", measured["load unsorted"], measured["parse unsorted"], "0.80");
  row("load, sorted", "hand-written", measured["load sorted"], measured["hand-written sorted"], "0.50");
  row("load, unsorted", "hand-written", measured["load unsorted"], measured["hand-written unsorted"], "0.60");
  row("load, 1,000 entries", "bare parse", measured["load hundredth"], measured["parse hundredth"], "-");
  row("load of 100,000 entries", "of 10,000", measured["load unsorted"], measured["load tenth"], "10.5");
  row("bare parse of 100,000 entries", "of 10,000", measured["parse unsorted"], measured["parse tenth"], "-");
  row("command, 2,000 files of 100 entries", "each loaded by itself", measured["all shown"], measured["each loaded"],
      "0.50");
  row("peak of a load, unsorted", "bare parse", loadPeak, parsePeak, "1.25");
  for (const std::string shape : {"sorted", "unsorted"}) {
    for (const std::string reader : {"libxml2", "pugixml", "SAX"}) {
      row("load, " + shape, "record filled with " + reader, measured["load " + shape], measured[reader + " " + shape],
          "-");
    }
  }
  row("`ReadXmlFile`, 64 MiB", "one `fread`", measured["ReadXmlFile"], measured["fread"], "1.3");
  row("`EncryptFile`, 64 MiB", "libsodium alone", measured["EncryptFile"], measured["sodium"], "1.25");
  row("peak of `EncryptFile`", "input, output, 64 MiB", encryptPeak, 3 * 64, "1.1");
}
