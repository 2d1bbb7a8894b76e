// Readers over an open file stream: KIVFileReader, which reads a file whole or piece by piece through
// a transform that a subclass supplies, and KIVFileReaderWithoutTransform, which passes the bytes on.
//
// The order of the fields and of the virtual functions is a binary contract. All of it is inline.
#ifndef QZJEXXML_KIV_FILE_READER_H
#define QZJEXXML_KIV_FILE_READER_H

#include <qzjexxml/export.h>
#include <qzjexxml/kiv_byte_array.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <utility>

// The parameter of KIVFileReader::readAll, which the readers of this library ignore.
struct KIVReadParam {
  KIVReadParam() = default;
  KIVReadParam(const KIVReadParam&) = delete;
  KIVReadParam& operator=(const KIVReadParam&) = delete;
  // Takes over the other's block, with its ownership; the other is as if default-constructed afterwards.
  KIVReadParam(KIVReadParam&& other) noexcept {
    std::swap(enabled, other.enabled);
    std::swap(block, other.block);
    std::swap(ownsBlock, other.ownsBlock);
  }
  ~KIVReadParam() {
    if (ownsBlock) {
      delete[] block;
    }
  }

  bool enabled = true;
  char* block = nullptr;   // from new[]
  bool ownsBlock = false;  // `block` is freed with delete[] when the parameter dies
};

// Reads from a stream that its caller opened, in binary mode, and keeps alive as long as the reader:
// the reader never opens, closes or deletes it. No operation prints anything; the only exception is
// std::bad_alloc. One thread at a time.
class QZJEXXML_EXPORT KIVFileReader {
 public:
  // `file` may be null: such a reader has nothing to read.
  explicit KIVFileReader(std::ifstream* file) : stream(file), more(streamIsGood()) {}
  KIVFileReader(const KIVFileReader&) = delete;
  KIVFileReader& operator=(const KIVFileReader&) = delete;
  virtual ~KIVFileReader() = default;

  // The name of the transform, never null.
  virtual const char* transformName() = 0;

  // Reads up to `count` bytes through the transform into `buffer`. Returns how many were delivered,
  // 0 at the end of the file, or -1 when the stream is null or failed. A `count` of 0 or less reads
  // nothing: 0, or -1 as for other counts.
  virtual int doRead(char* buffer, int count) = 0;

  // Resets the error code, then returns what doRead returns.
  virtual int read(char* buffer, int count) {
    error = 0;
    return doRead(buffer, count);
  }

  // Reads the file's raw bytes, from its first to its last whatever the read position, which stays
  // as it was. Returns an array inside the reader: it is valid until the next readAll or the
  // reader's end, and may be moved from.
  //
  // The array is empty when the stream is missing, closed, not good or cannot be sized (a pipe), when
  // the file is empty or of 2 GiB or more, and when reading fails (a directory); it is never partly filled.
  // Of a file that shrinks meanwhile it holds what was left.
  virtual KIVByteArray& readAll() {
    error = 0;
    return readAll(KIVReadParam());
  }

  virtual KIVByteArray& readAll([[maybe_unused]] KIVReadParam param) {
    error = 0;
    bytes.clear();
    if (!streamIsGood()) {
      return bytes;
    }
    const std::streampos position = stream->tellg();
    const std::streamoff size = stream->seekg(0, std::ios::end).tellg();
    stream->seekg(0);
    if (!stream->good()) {
      stream->clear();  // a stream that cannot be sized can still be read piece by piece
      return bytes;
    }
    if (size > 0 && size <= INT32_MAX) {
      bytes = readBlock(static_cast<std::uint32_t>(size));
    }
    stream->seekg(position);
    return bytes;
  }

  // False once a read has met the end of the file, and for a reader over a stream that was not good.
  virtual bool hasMore() { return more; }

  // The error code of the last operation. The readers of this library never set another than 0, no error.
  virtual int lastError() { return error; }

  virtual bool isOk() { return error == 0; }

  // 0 for a good stream, -1000 for one that is null or has no open file, -1001 for one with any of
  // the flags fail, bad and end of file.
  virtual int streamStatus() {
    if (stream == nullptr || !stream->is_open()) {
      return -1000;
    }
    return stream->good() ? 0 : -1001;
  }

 protected:
  std::ifstream* stream;  // not owned
  KIVByteArray bytes;
  bool more;
  std::int32_t error = 0;

 private:
  static constexpr bool hasItsLayout();

  bool streamIsGood() const { return stream != nullptr && stream->is_open() && stream->good(); }

  // The next `size` bytes of the stream, or all up to the end of a file that has become shorter; none when
  // reading fails, which leaves the stream's bad flag set unless not even the first byte can be read.
  KIVByteArray readBlock(std::uint32_t size) {
    KIVByteArray block;
    if (stream->peek() == std::ifstream::traits_type::eof()) {  // a directory, whose size may be 2 GiB
      stream->clear();
      return block;
    }
    block.data = new char[size];
    block.length = size;
    stream->read(block.data, static_cast<std::streamsize>(size));
    const auto got = static_cast<std::uint32_t>(stream->gcount());
    if (stream->bad() || got == 0) {
      block.clear();
    } else {
      block.length = got;
    }
    if (!stream->bad()) {
      stream->clear();
    }
    return block;
  }
};

constexpr bool KIVFileReader::hasItsLayout() {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
  static_assert(offsetof(KIVFileReader, stream) == sizeof(void*), "the virtual-table pointer comes first");
  static_assert(offsetof(KIVFileReader, bytes) == 2 * sizeof(void*), "bytes follow stream");
  static_assert(offsetof(KIVFileReader, more) == 2 * sizeof(void*) + sizeof(KIVByteArray), "more follows bytes");
  static_assert(offsetof(KIVFileReader, error) > offsetof(KIVFileReader, more), "error follows more");
#pragma GCC diagnostic pop
  return true;
}

// Delivers the file's bytes as they are.
class QZJEXXML_EXPORT KIVFileReaderWithoutTransform : public KIVFileReader {
 public:
  explicit KIVFileReaderWithoutTransform(std::ifstream* file) : KIVFileReader(file) {}

  const char* transformName() override { return ""; }

  int doRead(char* buffer, int count) override {
    if (stream == nullptr) {
      return -1;
    }
    int delivered = 0;
    if (stream->good() && count > 0) {
      delivered = static_cast<int>(stream->read(buffer, count).gcount());
    }
    if (stream->eof()) {
      more = false;
      return delivered;
    }
    return stream->good() ? delivered : -1;
  }
};

#endif  // QZJEXXML_KIV_FILE_READER_H
