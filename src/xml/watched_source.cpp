#include "xml/watched_source.h"

#include <xercesc/util/BinInputStream.hpp>

#include <memory>
#include <utility>

namespace jexxml {
namespace {

using xercesc::BinInputStream;

class WatchedStream final : public BinInputStream {
 public:
  WatchedStream(BinInputStream* adopted, const std::function<void(std::size_t)>& onRead)
      : stream(adopted), beforeRead(onRead) {}

  XMLFilePos curPos() const override { return stream->curPos(); }
  const XMLCh* getContentType() const override { return stream->getContentType(); }

  XMLSize_t readBytes(XMLByte* const buffer, const XMLSize_t count) override {
    beforeRead(count);
    return stream->readBytes(buffer, count);
  }

 private:
  std::unique_ptr<BinInputStream> stream;
  const std::function<void(std::size_t)>& beforeRead;
};

}  // namespace

WatchedSource::WatchedSource(const xercesc::InputSource& other, std::function<void(std::size_t)> onRead)
    : InputSource(other.getSystemId()), source(other), beforeRead(std::move(onRead)) {}

BinInputStream* WatchedSource::makeStream() const {
  return new (getMemoryManager()) WatchedStream(source.makeStream(), beforeRead);
}

}  // namespace jexxml
