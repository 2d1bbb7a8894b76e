#include "document/guard/tag_tables.h"

#include <algorithm>

namespace jexxml {

std::u16string_view localPart(std::u16string_view name) { return name.substr(name.find(u':') + 1); }

std::uint64_t TagTables::costOf(GivenAttributes given, std::uint64_t definitions) {
  // To visit a name takes longer when they do not stay in the processor's cache.
  const std::uint64_t visitSteps = 8 + std::min<std::uint64_t>(given.size() / 200, 100);
  std::uint64_t steps = 0;
  for (const xercesc::KVStringPair* attribute : given) {
    const std::u16string_view name = attribute->getKey() != nullptr ? attribute->getKey() : u"";
    std::uint64_t compared = definitions;
    if (given.size() <= few) {
      compared += given.size();
    } else {
      compared += first.add(name) + (second ? 2 * second->add(localPart(name)) : 0);
    }
    steps += (visitSteps + name.size()) * compared;
  }
  if (given.size() > few) {
    first.clear();
    if (second) {
      second->clear();
    }
  }
  return steps;
}

std::size_t TagTables::Table::add(std::u16string_view name) {
  if (names.size() >= buckets.modulus() * 4) {
    buckets = Buckets(buckets.modulus() * 8 + 1);
    for (const Buckets::Hash& hash : names) {
      buckets.add(hash);
    }
  }
  return buckets.add(names.emplace_back(name));
}

void TagTables::Table::clear() {
  names.clear();
  buckets = Buckets(buckets.modulus());
}

}  // namespace jexxml
