// WatchedSource: another input source, with a call before each piece that is read of it.
#ifndef QZJEXXML_XML_WATCHED_SOURCE_H
#define QZJEXXML_XML_WATCHED_SOURCE_H

#include <xercesc/sax/InputSource.hpp>

#include <cstddef>
#include <functional>

namespace jexxml {

// REQUIRES: the other source outlives it, and both outlive the streams made of it.
class WatchedSource final : public xercesc::InputSource {
 public:
  // `onRead` gets the number of bytes that are asked for, and may throw.
  WatchedSource(const xercesc::InputSource& other, std::function<void(std::size_t)> onRead);

  xercesc::BinInputStream* makeStream() const override;

 private:
  const xercesc::InputSource& source;
  std::function<void(std::size_t)> beforeRead;
};

}  // namespace jexxml

#endif  // QZJEXXML_XML_WATCHED_SOURCE_H
