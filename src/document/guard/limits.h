// What one document may cost, and the messages that report one that costs more.
//
// The parser library alone takes minutes, or all of the memory, for some documents of a few kilobytes: what it does for
// an element, name or declaration often grows with those before it. So each document has two budgets, a base and a
// factor times its size: bytes of memory, and steps of work. A step is a character that is compared, hashed or copied,
// about half a nanosecond. Honest documents mostly stay below a quarter of either.
#ifndef QZJEXXML_DOCUMENT_GUARD_LIMITS_H
#define QZJEXXML_DOCUMENT_GUARD_LIMITS_H

#include <cstdint>

namespace jexxml {

struct Limit {
  std::uint64_t most;
  const char16_t* message;
};

// Memory runs out last: what takes memory is charged as work too, so that both builds, whose pointers differ, refuse
// the same documents.
constexpr Limit memoryLimit(std::uint64_t documentSize) {
  return {(std::uint64_t{48} << 20U) + 512 * documentSize, u"the document takes far more memory than its size"};
}

constexpr Limit workLimit(std::uint64_t documentSize) {
  return {100'000'000 + 1'000 * documentSize, u"the document takes far more work than its size"};
}

struct Budgets {
  explicit constexpr Budgets(std::uint64_t documentSize)
      : size(documentSize), memory(memoryLimit(documentSize)), work(workLimit(documentSize)) {}

  std::uint64_t size;
  Limit memory;
  Limit work;
};

// What no budget can hold: the stack, which recursion through elements and content models takes, and the patience of
// who reads the errors.
inline constexpr Limit depthLimit = {1'000, u"the document nests elements deeper than 1,000"};
inline constexpr Limit modelLimit = {5'000, u"a content model of the document has more than 5,000 names"};
inline constexpr Limit errorLimit = {1'000, u"the document has more than 1,000 errors"};
inline constexpr Limit errorTextLimit = {100'000,
                                         u"the messages for the document's errors are too long"};  // characters

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_LIMITS_H
