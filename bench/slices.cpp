// Measures the slices of a load, and compares each with the least that it could cost.
#include "document/parse_document.h"
#include "manifest/populate_kiv_data.h"
#include "manifests.h"
#include "measure.h"

#include <qzjexxml/qzjexxml.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace bench;

// The seconds of processor time that `part` takes.
double secondsOf(const auto& part) {
  const double begin = processorSeconds();
  part();
  return processorSeconds() - begin;
}

double reading(const std::string& path) {
  KIVByteArray bytes;
  return secondsOf([&] { ReadXmlFile(path.c_str(), bytes); });
}

// With one read into a new block.
double readingAtLeast(const std::string& path) {
  std::unique_ptr<char[]> block;
  return secondsOf([&] {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (fstat(file, &status) != 0) {
      std::abort();
    }
    const auto size = static_cast<std::size_t>(status.st_size);
    block.reset(new char[size]);
    if (read(file, block.get(), size) != status.st_size) {
      std::abort();
    }
    close(file);
  });
}

// The bytes of a manifest, as input for a parser.
struct Source {
  explicit Source(const std::string& path) {
    ReadXmlFile(path.c_str(), bytes);
    input.emplace(reinterpret_cast<const XMLByte*>(bytes.data), bytes.length, "bench");
    input->setCopyBufToStream(false);
  }

  KIVByteArray bytes;
  std::optional<xercesc::MemBufInputSource> input;
};

// A document that was parsed as in a load.
struct Document {
  explicit Document(const std::string& path) : source(path) {
    seconds = secondsOf([this] { document = jexxml::parseDocument(*source.input, source.bytes.length); });
  }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() {
    jexxml::gParser.reset();
    jexxml::gErrorReporter.reset();
  }

  Source source;
  jexxml::DOMNode* document = nullptr;
  double seconds = 0;
};

double parsing(const std::string& path) { return Document(path).seconds; }

// With Xerces-C, but without a document.
double parsingAtLeast(const std::string& path) {
  const Source source(path);
  xercesc::SAXParser parser;
  parser.setDoNamespaces(true);
  parser.setValidationScheme(xercesc::SAXParser::Val_Auto);
  return secondsOf([&] { parser.parse(*source.input); });
}

double filling(const std::string& path) {
  const Document parsed(path);
  KIVData record;
  jexxml::KivMaster master{parsed.document, nullptr};
  jexxml::buildKivMaster(master);
  return secondsOf([&] { jexxml::populateKivData(master, record); });
}

// From strings that are already in the order of the record.
double fillingAtLeast(const std::string& path) {
  std::vector<std::pair<std::string, std::string>> files;
  KIVData* loaded = nullptr;
  InitKIVData(path.c_str(), &loaded);
  for (const auto& [source, entry] : loaded->fileMap) {
    files.emplace_back(source, entry.target);
  }
  TermKIVData(&loaded);
  KIVData record;
  return secondsOf([&] {
    for (const auto& [source, target] : files) {
      FileMapEntry& entry = record.fileMap.try_emplace(record.fileMap.end(), source)->second;
      entry.target = target;
      entry.holder.isDefault = false;
    }
  });
}

struct Slice {
  const char* name;
  PartOfWork work;
  const char* leastName;
  PartOfWork least;
};

constexpr Slice slices[] = {
    {"reading", reading, "one `read` into a fresh block", readingAtLeast},
    {"parsing", parsing, "Xerces-C without a document", parsingAtLeast},
    {"the record", filling, "a record filled from ready strings", fillingAtLeast},
};

}  // namespace

int main(int argc, char* argv[]) {
  xercesc::XMLPlatformUtils::Initialize();
  const std::pair<std::string, std::string> files[] = {{"sorted", manifestFile(Shape::sorted, 100'000)},
                                                       {"unsorted", manifestFile(Shape::unsorted, 100'000)}};
  for (const auto& [shape, path] : files) {
    for (const Slice& slice : slices) {
      timePart(slice.name + (", " + shape), slice.work, path);
      timePart(slice.leastName + (", " + shape), slice.least, path);
    }
  }
  run(argc, argv);
  printHead("slice of a load");
  for (const Slice& slice : slices) {
    for (const auto& [shape, path] : files) {
      printRow(slice.name + (", " + shape), slice.leastName, milliseconds(slice.name + (", " + shape)),
               milliseconds(slice.leastName + (", " + shape)), "-");
    }
  }
  xercesc::XMLPlatformUtils::Terminate();
}
