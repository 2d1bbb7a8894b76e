// WatchedSource: an input source that calls a function before each read.
#pragma once

#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

namespace jexxml {

// `bytes` is the most that the read can return. May throw.
using ReadWatcher = std::function<void(XMLSize_t bytes)>;

// Reads another stream in small pieces, so that Xerces-C never reads far ahead of the callbacks.
struct WatchedStream final : xercesc::BinInputStream {
  WatchedStream(BinInputStream& stream, const ReadWatcher& beforeRead) : watched(stream), watcher(beforeRead) {}

  XMLFilePos curPos() const override { return watched.curPos(); }
  const XMLCh* getContentType() const override { return watched.getContentType(); }
  XMLSize_t readBytes(XMLByte* bytes, XMLSize_t wanted) override {
    constexpr XMLSize_t most = 16'384;  // the first read has to return the whole XML declaration
    watcher(std::min(wanted, most));
    return watched.readBytes(bytes, std::min(wanted, most));
  }

  BinInputStream& watched;
  const ReadWatcher& watcher;
};

// Makes one stream, allocated from `manager`. `source` must outlive this object, which must outlive the stream.
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
