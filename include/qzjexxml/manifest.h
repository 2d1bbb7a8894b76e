// The library for C++ programs. A Manifest frees its record itself. A function that fails throws an exception that
// contains the diagnostics. Everything here is inline and calls the functions of qzjexxml.h, which write diagnostics to
// std::cerr.
//
//   const qzjexxml::Manifest manifest = qzjexxml::loadManifest("manifest.xml");  // throws qzjexxml::LoadError
//
// Every function throws std::bad_alloc when out of memory.
//
// Restrictions:
// - Only one load may run at a time in the whole process, on any thread.
// - To collect the diagnostics, every function replaces the buffer of std::cerr, and restores it before it returns or
//   throws. The whole process shares that buffer: during the call, no other thread may write to std::cerr or call a
//   function of this header.
// - If a load runs out of memory while it starts Xerces-C, every later load throws std::bad_alloc.
#ifndef QZJEXXML_MANIFEST_H
#define QZJEXXML_MANIFEST_H

#include <qzjexxml/qzjexxml.h>

#include <cstdio>
#include <cstring>
#include <iostream>
#include <map>
#include <memory>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace qzjexxml {

namespace detail {

// Collects what is written to std::cerr during its lifetime.
class Diagnostics {
 public:
  Diagnostics() : standard(std::cerr.rdbuf(&collected)) {}
  Diagnostics(const Diagnostics&) = delete;
  Diagnostics& operator=(const Diagnostics&) = delete;
  ~Diagnostics() { std::cerr.rdbuf(standard); }

  std::string text() const {
    if (std::cerr.fail()) {  // a diagnostic could not be stored
      throw std::bad_alloc();
    }
    return collected.str();
  }

 private:
  std::stringbuf collected;
  std::streambuf* standard;
};

inline std::string withoutTrailingLineFeeds(const std::string& text) {
  return text.substr(0, text.find_last_not_of('\n') + 1);
}

}  // namespace detail

// Thrown when a description file does not load. what() returns the diagnostics without trailing line feeds;
// docs/diagnostics.md lists them. They call every document "JexXml", so the caller has to add the name of the file.
class QZJEXXML_EXPORT LoadError : public std::runtime_error {
 public:
  explicit LoadError(const std::string& diagnostics)
      : std::runtime_error(detail::withoutTrailingLineFeeds(diagnostics)) {
    constexpr const char* report = "%*[A-Za-z ]\"JexXml\", line %lu, column %lu";  // of an Error or a Fatal Error
    if (std::sscanf(what(), report, &firstLine, &firstColumn) != 2) {
      firstLine = firstColumn = 0;
    }
  }

  // The position of the first error, counted from 1. Both are 0 if the diagnostics have no position, as for a missing
  // file.
  unsigned long line() const noexcept { return firstLine; }
  unsigned long column() const noexcept { return firstColumn; }

 private:
  unsigned long firstLine = 0;
  unsigned long firstColumn = 0;
};

namespace detail {

// Any diagnostic means that the load failed.
template <typename Load>
void runLoad(Load load) {
  const Diagnostics diagnostics;
  load();
  if (const std::string text = diagnostics.text(); !text.empty()) {
    throw LoadError(text);
  }
}

// `function` returns whether it succeeded. It fails without a diagnostic if libqzkivbtcrypto fails.
template <typename Function>
void runOnFile(Function function) {
  const Diagnostics diagnostics;
  if (!function()) {
    const std::string text = diagnostics.text();
    throw std::runtime_error(text.empty() ? "the crypto library refuses the passphrase or the file"
                                          : withoutTrailingLineFeeds(text));
  }
}

// The exported functions read the passphrase up to its NUL, and do not modify it.
inline char* passphraseText(const std::string& passphrase) {
  if (passphrase.find('\0') != std::string::npos) {
    throw std::runtime_error("the passphrase contains a NUL byte");
  }
  return const_cast<char*>(passphrase.c_str());
}

}  // namespace detail

// The record of an archive manifest; kiv_data.h describes its texts. A Manifest that was moved from may only be
// assigned to or destroyed.
class QZJEXXML_EXPORT Manifest {
 public:
  // Takes ownership of a record that InitKIVData created. REQUIRES: `owned` is not null.
  explicit Manifest(KIVData* owned) noexcept : record(owned) {}

  // References into the record. For a temporary, the functions return values, so that the reference in `for (... :
  // loadManifest(name).fileMap())` does not dangle.
  const std::map<std::string, FileMapEntry>& fileMap() const& { return record->fileMap; }
  const std::map<std::string, std::string>& rootMacros() const& { return record->rootMacros; }
  const std::vector<std::string>& searchPath() const& { return record->varnixPath; }
  std::map<std::string, FileMapEntry> fileMap() && { return std::move(record->fileMap); }
  std::map<std::string, std::string> rootMacros() && { return std::move(record->rootMacros); }
  std::vector<std::string> searchPath() && { return std::move(record->varnixPath); }

 private:
  struct Term {
    void operator()(KIVData* owned) const { TermKIVData(&owned); }
  };

  std::unique_ptr<KIVData, Term> record;
};

// Loads an archive manifest. Throws LoadError.
inline Manifest loadManifest(const std::string& fileName) {
  KIVData* record = nullptr;
  try {
    detail::runLoad([&] { InitKIVData(fileName.c_str(), &record); });
  } catch (...) {
    TermKIVData(&record);
    throw;
  }
  return Manifest(record);
}

// Loads a project description to check it. Throws LoadError.
inline void checkProject(const std::string& fileName) {
  void* handle = nullptr;
  detail::runLoad([&] { InitNOXData(fileName.c_str(), &handle); });
}

// Returns the bytes of a file. Throws std::runtime_error with the diagnostics of ReadXmlFile, also for an empty file.
inline std::string readFile(const std::string& fileName) {
  KIVByteArray bytes;
  detail::runOnFile([&] { return ReadXmlFile(fileName.c_str(), bytes); });
  return {bytes.data, bytes.length};
}

// Encrypts a file into another file as EncryptFile does. Throws std::runtime_error.
inline void encryptFile(const std::string& fileName, const std::string& passphrase) {
  char* text = detail::passphraseText(passphrase);
  detail::runOnFile([&] { return EncryptFile(fileName.c_str(), text); });
}

// Returns the plaintext of an encrypted file. The caller has to wipe it. Throws std::runtime_error.
inline std::string decryptFile(const std::string& fileName, const std::string& passphrase) {
  struct Plaintext : KIVByteArray {
    ~Plaintext() override {
      if (data != nullptr) {
        explicit_bzero(data, length);
      }
    }
  } bytes;
  char* text = detail::passphraseText(passphrase);
  detail::runOnFile([&] { return DecryptXmlFile(fileName.c_str(), bytes, text); });
  return {bytes.data, bytes.length};
}

}  // namespace qzjexxml

#endif  // QZJEXXML_MANIFEST_H
