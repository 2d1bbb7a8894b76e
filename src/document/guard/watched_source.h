// WatchedSource: an input source that tells before each read.
#pragma once

#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

namespace jexxml {

// Called with the number of bytes that a read may give. May throw.
using ReadWatcher = std::function<void(XMLSize_t bytes)>;

// Gives what another stream gives, a little at a time, so that Xerces-C never has much that the callbacks have not
// seen.
struct WatchedStream final : xercesc::BinInputStream {
  WatchedStream(BinInputStream& stream, const ReadWatcher& beforeRead) : watched(stream), watcher(beforeRead) {}

  XMLFilePos curPos() const override { return watched.curPos(); }
  const XMLCh* getContentType() const override { return watched.getContentType(); }
  XMLSize_t readBytes(XMLByte* bytes, XMLSize_t wanted) override {
    constexpr XMLSize_t most = 16'384;  // more than an XML declaration, which Xerces-C looks for in its first read
    watcher(std::min(wanted, most));
    return watched.readBytes(bytes, std::min(wanted, most));
  }

  BinInputStream& watched;
  const ReadWatcher& watcher;
};

// The source that it watches outlives it, and it outlives its one stream, which is allocated from `manager`.
class WatchedSource final : public xercesc::InputSource {
 public:
  WatchedSource(const InputSource& source, xercesc::MemoryManager* manager, ReadWatcher beforeRead)
      : InputSource(source.getSystemId(), manager), watcher(std::move(beforeRead)), stream(source.makeStream()) {}

  xercesc::BinInputStream* makeStream() const override {
    return stream == nullptr ? nullptr : new (getMemoryManager()) WatchedStream(*stream, watcher);
  }

 private:
  const ReadWatcher watcher;
  const std::unique_ptr<xercesc::BinInputStream> stream;
};

}  // namespace jexxml
