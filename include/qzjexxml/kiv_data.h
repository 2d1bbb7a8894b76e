// KIVData: the record of one archive manifest, and the types of its members.
//
// The record contains std::map, std::vector and std::string. A program therefore has to be built with the same compiler
// and standard library as this library, in the same modes. The offsets of the fields are a binary contract.
//
// Later releases may append fields to KIVData: only InitKIVData creates records and only TermKIVData destroys them, so
// no program depends on the size of KIVData. CStringHolder and FileMapEntry never change their sizes: programs that
// copy or modify a file map depend on them.
#ifndef QZJEXXML_KIV_DATA_H
#define QZJEXXML_KIV_DATA_H

#include <cstddef>
#include <cstring>
#include <map>
#include <string>
#include <vector>

// These modes of libstdc++ change the layout of containers and strings. A program built in one of them would link, but
// crash.
#if defined(_GLIBCXX_DEBUG)
#error "libqzjexxml is built without _GLIBCXX_DEBUG: its record has containers of another layout"
#endif
#if defined(_GLIBCXX_USE_CXX11_ABI) && !_GLIBCXX_USE_CXX11_ABI
#error "libqzjexxml is built with _GLIBCXX_USE_CXX11_ABI=1: its record has strings of another layout"
#endif

// A NUL-terminated text that the holder may own.
class CStringHolder {
 public:
  CStringHolder() = default;

  // Copies an owned text into a block of its own. A text that is not owned is shared.
  CStringHolder(const CStringHolder& other) : isDefault(other.isDefault) { set(other.str, other.owned); }
  CStringHolder& operator=(const CStringHolder& other) {
    if (this != &other) {
      set(other.str, other.owned);
      isDefault = other.isDefault;
    }
    return *this;
  }

  ~CStringHolder() { freeText(); }

  // Replaces the text. If `copy` is true, copies `text` into a block from new[]; otherwise stores only the pointer, and
  // the text must stay valid while it is used. `text` may be null. Does not change `isDefault`. Throws std::bad_alloc
  // when out of memory, and leaves the holder unchanged.
  void set(const char* text, bool copy) {
    char* held = const_cast<char*>(text);
    if (copy && text != nullptr) {
      const std::size_t size = std::strlen(text) + 1;
      held = new char[size];
      std::memcpy(held, text, size);
    }
    freeText();
    str = held;
    owned = copy;
  }

  bool isDefault = true;  // false in every entry of a loaded record
  char* str = nullptr;
  bool owned = false;  // `str` is freed with delete[]

 private:
  void freeText() const {
    if (owned) {
      delete[] str;
    }
  }
};

// The destination of one file of the file map.
struct FileMapEntry {
  CStringHolder holder;  // its text is null in every entry of a loaded record
  std::string target;    // directory (or its rename) + "/" + file name (or its rename)
};

// The content of one archive manifest. All texts are in the locale encoding. They are composed from unchanged attribute
// values: nothing is trimmed or normalised. If several entries have the same key, the record has the last of these
// entries.
struct KIVData {
  // Source path (root path + "/" + directory + "/" + file name) to destination.
  std::map<std::string, FileMapEntry> fileMap;
  // Root macro name to absolute path.
  std::map<std::string, std::string> rootMacros;
  // Search path in document order, with duplicates.
  std::vector<std::string> varnixPath;
  // Always empty.
  std::vector<std::string> reservedStrings;
};

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(offsetof(CStringHolder, isDefault) == 0 && offsetof(CStringHolder, str) == sizeof(char*) &&
                  offsetof(CStringHolder, owned) == 2 * sizeof(char*) && sizeof(CStringHolder) == 3 * sizeof(char*),
              "isDefault, str and owned follow each other, and nothing else");
static_assert(offsetof(FileMapEntry, holder) == 0 && offsetof(FileMapEntry, target) == sizeof(CStringHolder) &&
                  sizeof(FileMapEntry) == sizeof(CStringHolder) + sizeof(std::string),
              "holder and target follow each other, and nothing else");
static_assert(offsetof(KIVData, fileMap) == 0 && offsetof(KIVData, rootMacros) == sizeof(decltype(KIVData::fileMap)) &&
                  offsetof(KIVData, varnixPath) == 2 * sizeof(decltype(KIVData::fileMap)),
              "the maps and the vectors follow each other");
static_assert(offsetof(KIVData, reservedStrings) - offsetof(KIVData, varnixPath) == sizeof(std::vector<std::string>));
#pragma GCC diagnostic pop

#endif  // QZJEXXML_KIV_DATA_H
