// WatchedSource: another input source, with a call before each piece that is read of it.
#ifndef QZJEXXML_DOCUMENT_GUARD_WATCHED_SOURCE_H
#define QZJEXXML_DOCUMENT_GUARD_WATCHED_SOURCE_H

#include <xercesc/sax/InputSource.hpp>

#include <cstddef>
#include <functional>
#include <memory>

namespace jexxml {

// Serves one parse, since it keeps the one stream of the other source. REQUIRES: the other source outlives it, and
// nothing is read after its end.
class WatchedSource final : public xercesc::InputSource {
 public:
  // `onRead` gets the number of bytes that are asked for, and may throw. What makeStream returns comes from
  // `manager`.
  WatchedSource(const xercesc::InputSource& other, xercesc::MemoryManager& manager,
                std::function<void(std::size_t)> onRead);
  ~WatchedSource() override;

  xercesc::BinInputStream* makeStream() const override;

 private:
  const xercesc::InputSource& source;
  std::function<void(std::size_t)> beforeRead;
  mutable std::unique_ptr<xercesc::BinInputStream> stream;
};

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_WATCHED_SOURCE_H
