// ParserLibrary: Xerces-C, started.
#pragma once

#include <optional>
#include <string>

namespace jexxml {

// Xerces-C counts its starts, and each has its stop: an object of this class starts it, and stops it at its end. A
// start that runs out of memory leaves Xerces-C half started. Then it can be neither started nor stopped any more.
class ParserLibrary {
 public:
  // Throws std::bad_alloc where Xerces-C is half started, also by this start, or there is less than a mebibyte for it.
  ParserLibrary();
  ParserLibrary(const ParserLibrary&) = delete;
  ParserLibrary& operator=(const ParserLibrary&) = delete;
  ~ParserLibrary();

  // Why Xerces-C did not start, in the locale encoding; empty when it did.
  const std::optional<std::string>& failure() const { return whyNot; }

 private:
  std::optional<std::string> whyNot;
};

}  // namespace jexxml
