#include "document/guard/tag_tables.h"

#include "document/guard/steps.h"

#include <algorithm>
#include <utility>

namespace jexxml {

std::u16string_view localPart(std::u16string_view name) { return name.substr(name.find(u':') + 1); }

// The first table may have grown once with a few attributes, which are not followed.
std::uint64_t TagTables::bucketsFor(std::size_t attributes) const {
  constexpr std::size_t grownWithAFew = 57;
  return (attributes == 0 ? 0 : std::max(first.modulus(), grownWithAFew)) +
         (attributes > few && second ? second->modulus() : 0);
}

std::uint64_t TagTables::costOf(GivenAttributes given, std::uint64_t definitions, bool isComplete) {
  // To visit a name takes longer when they do not stay in the processor's cache.
  const std::uint64_t toVisit = comparisonSteps + std::min<std::uint64_t>(given.size() / 200, 100);
  std::uint64_t steps = 0;
  for (const xercesc::KVStringPair* attribute : given) {
    const std::u16string_view name = attribute->getKey() != nullptr ? attribute->getKey() : u"";
    std::uint64_t compared = definitions;
    if (given.size() <= few) {
      compared += given.size();
    } else {
      compared += first.add(name) + (second ? 2 * second->add(localPart(name)) : 0);
    }
    steps += (toVisit + name.size()) * compared;
  }
  if (given.size() > few) {
    first.clear(isComplete);
    if (second) {
      second->clear(isComplete);
    }
  }
  return steps;
}

std::size_t TagTables::Table::add(std::u16string_view name) {
  if (names.size() >= buckets.modulus() * 4) {
    Buckets larger(buckets.modulus() * 8 + 1);
    std::swap(buckets, larger);
    if (!before) {
      before = std::move(larger);
    }
    for (const Buckets::Hash& hash : names) {
      buckets.add(hash);
    }
  }
  return buckets.add(names.emplace_back(name));
}

void TagTables::Table::clear(bool keepBuckets) {
  if (before && !keepBuckets) {
    buckets = std::move(*before);
  }
  before.reset();
  for (const Buckets::Hash& hash : names) {
    buckets.clear(hash);
  }
  names.clear();
}

}  // namespace jexxml
