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

void Buckets::add(const Hash& hash) {
  const std::size_t inNarrow = ++narrow[hash.narrow % modulus()];
  const std::size_t inWide = ++wide[static_cast<std::size_t>(hash.wide % modulus())];
  most = std::max({most, inNarrow, inWide});
}

void NameTable::add(std::u16string_view name) {
  const Buckets::Hash hash(name);
  const auto [begin, end] = names.equal_range(hash.wide);
  if (std::any_of(begin, end, [&](const auto& entry) { return entry.second.first == name; })) {
    return;
  }
  if (names.size() >= buckets.modulus() * 3 / 4) {
    buckets = Buckets(buckets.modulus() * 2 + 1);
    for (const auto& entry : names) {
      buckets.add(entry.second.second);
    }
  }
  names.emplace(hash.wide, std::pair(std::u16string(name), hash));
  buckets.add(hash);
}

}  // namespace jexxml
