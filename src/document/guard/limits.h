// What one document may cost, and the messages that report a document that costs more.
//
// Xerces-C alone takes minutes, or all of the memory, for some documents of a few kilobytes. So each document has two
// budgets, a base and a factor times its size: bytes of memory, and steps of work. A step takes about half a
// nanosecond. Real descriptions stay below a tenth of either.
#pragma once

#include <cstdint>

namespace jexxml {

struct Limit {
  std::uint64_t most;
  const char16_t* message;
};

struct Budgets {
  explicit constexpr Budgets(std::uint64_t documentSize)
      : memory{(std::uint64_t{24} << 20U) + 384 * documentSize, u"the document takes far more memory than its size"},
        work{600'000'000 + 1'300 * documentSize, u"the document takes far more work than its size"} {}

  Limit memory;
  Limit work;
};

// Elements and content models take stack: Xerces-C walks through both by recursion.
inline constexpr Limit depthLimit = {1'000, u"the document nests elements deeper than 1,000"};
inline constexpr Limit modelLimit = {2'000, u"a content model of the document has more than 2,000 names and operators"};

// Each open entity has a reader of 160 KB, and is compared with each that is opened within it.
inline constexpr Limit entityLimit = {64, u"the document nests entities deeper than 64"};

// Much of what Xerces-C does when the declarations end grows with their square.
inline constexpr Limit typeLimit = {std::uint64_t{64} << 10U,
                                    u"the document type declaration does not end in the first 64 KiB"};

// Each value is compared with all that are allowed, and they with each other.
inline constexpr Limit enumerationLimit = {1'000, u"an enumeration of the document has more than 1,000 characters"};

// For the patience of who reads them. The text of the last error counts too.
inline constexpr Limit errorLimit = {1'000, u"the document has more than 1,000 errors"};
inline constexpr Limit errorTextLimit = {99'900, u"the messages for the document's errors are too long"};  // characters

}  // namespace jexxml
