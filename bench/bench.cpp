// Compares times and peak memory of the library's functions with other ways to do the same work.
#include "manifests.h"
#include "measure.h"
#include "other_readers.h"

#include <qzjexxml/qzjexxml.h>

#include <benchmark/benchmark.h>
#include <sodium.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace bench;
using namespace xercesc;

// Reads the file into a new block with one fread.
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

// Parses with the library's settings and calls `use` with the document.
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

// Fills the file map directly from the document.
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

// Loads each manifest of a directory separately.
void loadAll(const std::string& directory) {
  for (const auto& file : std::filesystem::directory_iterator(directory)) {
    load(file.path());
  }
}

void showAll(const std::string& directory) {
  const std::string command = std::string(QZJEXXML_COMMAND) + " manifest " + directory + "/* >/dev/null";
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

// Does what EncryptFile does, with direct calls of libsodium.
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

// Prints the rows that speed.gnuplot draws. For each reader: its name, then a row of entries, milliseconds and MiB for
// each unsorted manifest. The fastest of five processes counts.
void printBySize() {
  constexpr std::pair<const char*, Work> readers[] = {{"hand-written, over Xerces-C", handWritten},
                                                      {"Xerces-C, parse only", bareParse},
                                                      {"libqzjexxml", load},
                                                      {"libxml2", readWithLibxml2},
                                                      {"pugixml", readWithPugixml}};
  std::vector<std::pair<int, std::string>> manifests;
  for (const int entries : {1'000, 3'000, 10'000, 30'000, 100'000, 300'000, 1'000'000}) {
    manifests.emplace_back(entries, manifestFile(Shape::unsorted, entries));
  }
  for (const auto& [reader, work] : readers) {
    std::cout << '"' << reader << "\"\n";
    for (const auto& [entries, path] : manifests) {
      Process fastest = inProcess(work, path);
      for (int repetition = 1; repetition < 5; ++repetition) {
        fastest = std::ranges::min(fastest, inProcess(work, path), {}, &Process::milliseconds);
      }
      std::cout << entries << ' ' << fastest.milliseconds << ' ' << fastest.peak << std::endl;
    }
    std::cout << "\n\n";
  }
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc == 2 && argv[1] == std::string_view("--by-size")) {
    printBySize();
    return 0;
  }
  const std::string sorted = manifestFile(Shape::sorted, 100'000);
  const std::string unsorted = manifestFile(Shape::unsorted, 100'000);
  const std::string tenth = manifestFile(Shape::unsorted, 10'000);
  const std::string hundredth = manifestFile(Shape::unsorted, 1'000);
  const std::string small = manifestDirectory(500, 100);
  const std::pair sortedMemory(inProcess(load, sorted), inProcess(bareParse, sorted));
  const std::pair unsortedMemory(inProcess(load, unsorted), inProcess(bareParse, unsorted));
  const std::string large = largeFile();
  const double encryptPeak = inProcess(encryptFile, large).peak;

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
  constexpr int fewRepetitions = 3;  // of seconds each
  time("each loaded", loadAll, small, fewRepetitions);
  time("all shown", showAll, small, fewRepetitions);
  time("fread", freadFile, large);
  time("ReadXmlFile", readXmlFile, large);
  time("sodium", sodiumCalls, large);
  time("EncryptFile", encryptFile, large);
  run(argc, argv);

  printHead("measured");
  const auto row = [](const std::string& what, const std::string& beside, const char* name, const char* baseName,
                      const std::string& bar) {
    printRow(what, beside, milliseconds(name), milliseconds(baseName), bar);
  };
  row("load, sorted", "bare parse", "load sorted", "parse sorted", "0.42");
  row("load, unsorted", "bare parse", "load unsorted", "parse unsorted", "0.48");
  row("load, sorted", "hand-written", "load sorted", "hand-written sorted", "0.31");
  row("load, unsorted", "hand-written", "load unsorted", "hand-written unsorted", "0.38");
  row("load, 1,000 entries", "bare parse", "load hundredth", "parse hundredth", "-");
  row("load of 100,000 entries", "of 10,000", "load unsorted", "load tenth", "10.0");
  row("bare parse of 100,000 entries", "of 10,000", "parse unsorted", "parse tenth", "-");
  row("command, 500 files of 100 entries", "each loaded by itself", "all shown", "each loaded", "0.50");
  for (const auto& [shape, taken] : {std::pair("sorted", sortedMemory), {"unsorted", unsortedMemory}}) {
    printRow(std::string("peak of a load, ") + shape, "bare parse", taken.first.peak, taken.second.peak, "0.50");
    printRow(std::string("kept after a load, ") + shape, "peak of a bare parse", taken.first.kept, taken.second.peak,
             "-");
  }
  for (const std::string shape : {"sorted", "unsorted"}) {
    for (const std::string reader : {"libxml2", "pugixml", "SAX"}) {
      printRow("load, " + shape, "record filled with " + reader, milliseconds("load " + shape),
               milliseconds(reader + " " + shape), "-");
    }
  }
  row("`ReadXmlFile`, 64 MiB", "one `fread`", "ReadXmlFile", "fread", "1.3");
  row("`EncryptFile`, 64 MiB", "libsodium alone", "EncryptFile", "sodium", "1.25");
  printRow("peak of `EncryptFile`", "input, output, 64 MiB", encryptPeak, 3 * 64, "1.1");
}
