// NameTable: the names in one of the parser library's hash tables, in the same buckets.
#ifndef QZJEXXML_DOCUMENT_GUARD_NAME_TABLE_H
#define QZJEXXML_DOCUMENT_GUARD_NAME_TABLE_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace jexxml {

// Adds up how many names stand in each bucket. A look-up compares the names of one bucket one after another. The parser
// library's hash has no seed, so that a document can have as many names as it likes in one bucket. Its tables grow at
// three quarters of their buckets, so that other documents have a handful.
//
// The hash is as wide as a pointer. Both widths are followed, and the fuller bucket counts, so that both builds refuse
// the same documents.
class Buckets {
 public:
  struct Hash {
    explicit Hash(std::u16string_view name);

    std::uint32_t narrow = 0;
    std::uint64_t wide = 0;
  };

  explicit Buckets(std::size_t modulus) : narrow(modulus), wide(modulus) {}

  // Returns how many names the bucket holds already.
  std::size_t add(const Hash& hash);

  // Empties the buckets of a name.
  void clear(const Hash& hash) { inNarrow(hash) = inWide(hash) = 0; }

  std::size_t modulus() const { return narrow.size(); }

  // Names in it.
  std::size_t fullest() const { return most; }

 private:
  std::uint32_t& inNarrow(const Hash& hash) { return narrow[hash.narrow % modulus()]; }
  std::uint32_t& inWide(const Hash& hash) { return wide[static_cast<std::size_t>(hash.wide % modulus())]; }

  std::vector<std::uint32_t> narrow;
  std::vector<std::uint32_t> wide;
  std::size_t most = 0;
};

class NameTable {
 public:
  // With the number of buckets that the parser library begins with.
  explicit NameTable(std::size_t modulus) : buckets(modulus) {}

  // Adds a name, once however often it is added.
  void add(std::u16string_view name);

  std::size_t fullestBucket() const { return buckets.fullest(); }

 private:
  std::map<std::u16string, Buckets::Hash, std::less<>> names;
  Buckets buckets;
};

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_NAME_TABLE_H
