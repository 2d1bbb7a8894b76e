// What one document may cost, and the messages for documents that exceed a budget or limit.
//
// Without limits, Xerces-C takes minutes, or all memory, for some documents of a few kilobytes. Therefore each document
// has two budgets: bytes of memory, and steps of work. Each budget is a constant plus a factor times the size of the
// document. A step takes about half a nanosecond. Real descriptions need less than a tenth of each budget.
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

// Xerces-C recurses into elements and content models, which takes stack.
inline constexpr Limit depthLimit = {1'000, u"the document nests elements deeper than 1,000"};
inline constexpr Limit modelLimit = {2'000, u"a content model of the document has more than 2,000 names and operators"};

// Each open entity has a reader of 160 KB. A newly opened entity is compared with all open entities.
inline constexpr Limit entityLimit = {64, u"the document nests entities deeper than 64"};

// Much of the work that Xerces-C does at the end of the declarations is quadratic in their size.
inline constexpr Limit dtdLimit = {std::uint64_t{64} << 10U,
                                   u"the document type declaration does not end in the first 64 KiB"};

// Each value is compared with all allowed values, and the allowed values with each other.
inline constexpr Limit enumerationLimit = {1'000, u"an enumeration of the document has more than 1,000 characters"};

// Nobody reads more errors. The text of the error that exceeds the limit counts too.
inline constexpr Limit errorLimit = {1'000, u"the document has more than 1,000 errors"};
inline constexpr Limit errorTextLimit = {99'900, u"the messages for the document's errors are too long"};  // characters

}  // namespace jexxml
