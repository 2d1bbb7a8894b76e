// Documents made to cost much more than their size, in families: each goes for one thing that the parser
// library, or this one, does for every element, name, declaration or reference.
#ifndef QZJEXXML_FUZZ_HOSTILE_DOCUMENTS_H
#define QZJEXXML_FUZZ_HOSTILE_DOCUMENTS_H

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace hostile {

struct Family {
  const char* name;
  std::string (*document)(std::size_t size);  // of about `size` bytes
};

std::span<const Family> declarationFamilies();

std::vector<Family> families();  // all

// What there is a limit for, and a document that has the given number of it.
struct Limited {
  std::size_t most;
  const char* message;  // of the report of a document with one more
  std::string (*document)(std::size_t number);
};

std::span<const Limited> limited();

}  // namespace hostile

#endif  // QZJEXXML_FUZZ_HOSTILE_DOCUMENTS_H
