// TagTables: what it costs the parser library to find that no attribute of a tag is given twice.
#ifndef QZJEXXML_DOCUMENT_GUARD_TAG_TABLES_H
#define QZJEXXML_DOCUMENT_GUARD_TAG_TABLES_H

#include "document/guard/name_table.h"

#include <xercesc/util/KVStringPair.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace jexxml {

// The attributes that a tag gives, as they stand in it.
using GivenAttributes = std::span<const xercesc::KVStringPair* const>;

// The name of an attribute without a prefix.
std::u16string_view localPart(std::u16string_view name);

// The parser library looks each attribute up in the definitions of its element and among the attributes before it. A
// few are compared with all; more are put into two tables, by their names and by what stands after the prefix. The
// tables are emptied after a tag, and keep their buckets; they grow eightfold when there are four names to a bucket.
class TagTables {
 public:
  static constexpr std::size_t few = 100;

  // The second table is made for the first tag with more than a few attributes.
  void makeSecond(std::size_t modulus) { second.emplace(modulus); }
  bool hasSecond() const { return second.has_value(); }

  // Of both that a tag with so many attributes uses: each is walked through when it is emptied.
  std::uint64_t bucketsFor(std::size_t attributes) const;

  // Steps of work for a tag, of an element with so many definitions. Of an attribute that is just being read, what is
  // known counts, and buckets that the tables grow by are not kept.
  std::uint64_t costOf(GivenAttributes given, std::uint64_t definitions, bool isComplete);

 private:
  class Table {
   public:
    explicit Table(std::size_t modulus) : buckets(modulus) {}

    std::size_t modulus() const { return buckets.modulus(); }

    // Returns how many names this one is compared with.
    std::size_t add(std::u16string_view name);
    void clear(bool keepBuckets);

   private:
    std::vector<Buckets::Hash> names;
    Buckets buckets;
    std::optional<Buckets> before;  // they grew
  };

  Table first{7};
  std::optional<Table> second;
};

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_TAG_TABLES_H
