#include "document/guard/name_table.h"

#include <algorithm>

namespace jexxml {
namespace {

// XMLString::hash, a letter at a time.
template <typename Word>
void continueHash(Word& hash, char16_t letter) {
  hash = hash * 38 + (hash >> 24U) + letter;
}

}  // namespace

Buckets::Hash::Hash(std::u16string_view name) {
  for (const char16_t letter : name) {
    continueHash(narrow, letter);
    continueHash(wide, letter);
  }
}

std::size_t Buckets::add(const Hash& hash) {
  const std::size_t before = std::max(inNarrow(hash)++, inWide(hash)++);
  most = std::max(most, before + 1);
  return before;
}

void NameTable::add(std::u16string_view name) {
  if (names.contains(name)) {
    return;
  }
  if (names.size() >= buckets.modulus() * 3 / 4) {
    buckets = Buckets(buckets.modulus() * 2 + 1);
    for (const auto& [earlier, hash] : names) {
      buckets.add(hash);
    }
  }
  buckets.add(names.emplace(name, name).first->second);
}

}  // namespace jexxml
