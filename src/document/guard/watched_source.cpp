#include "document/guard/watched_source.h"

#include <xercesc/util/BinInputStream.hpp>

#include <utility>

namespace jexxml {
namespace {

using xercesc::BinInputStream;

class WatchedStream final : public BinInputStream {
 public:
  WatchedStream(BinInputStream& other, const std::function<void(std::size_t)>& onRead)
      : stream(other), beforeRead(onRead) {}

  XMLFilePos curPos() const override { return stream.curPos(); }
  const XMLCh* getContentType() const override { return stream.getContentType(); }

  XMLSize_t readBytes(XMLByte* const buffer, const XMLSize_t count) override {
    beforeRead(count);
    return stream.readBytes(buffer, count);
  }

 private:
  BinInputStream& stream;
  const std::function<void(std::size_t)>& beforeRead;
};

}  // namespace

WatchedSource::WatchedSource(const xercesc::InputSource& other, xercesc::MemoryManager& manager,
                             std::function<void(std::size_t)> onRead)
    : InputSource(other.getSystemId(), &manager), source(other), beforeRead(std::move(onRead)) {}

WatchedSource::~WatchedSource() = default;

BinInputStream* WatchedSource::makeStream() const {
  stream.reset(source.makeStream());
  return new (getMemoryManager()) WatchedStream(*stream, beforeRead);
}

}  // namespace jexxml
