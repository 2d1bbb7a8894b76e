// Readers of an open file stream. KIVFileReader reads a whole file, or parts of it through a transform that a subclass
// implements. KIVFileReaderWithoutTransform is the subclass that does not transform the bytes.
//
// The order of the fields and of the virtual functions is a binary contract. All functions are inline.
#ifndef QZJEXXML_KIV_FILE_READER_H
#define QZJEXXML_KIV_FILE_READER_H

#include <qzjexxml/export.h>
#include <qzjexxml/kiv_byte_array.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <utility>

// The parameter of KIVFileReader::readAll. The readers of this library ignore it.
struct KIVReadParam {
  KIVReadParam() = default;
  KIVReadParam(const KIVReadParam&) = delete;
  KIVReadParam& operator=(const KIVReadParam&) = delete;
  // Takes the block and its ownership from the other parameter, which then has the default values.
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
  bool ownsBlock = false;  // the destructor frees `block` with delete[]
};

// Reads a stream that the caller opened in binary mode. The caller keeps the stream alive as long as the reader; the
// reader never opens, closes or deletes it. The functions print nothing, and throw nothing but std::bad_alloc. Only one
// thread at a time may use a reader.
class QZJEXXML_EXPORT KIVFileReader {
 public:
  // `file` may be null: then there is nothing to read.
  explicit KIVFileReader(std::ifstream* file) : stream(file), more(streamIsGood()) {}
  KIVFileReader(const KIVFileReader&) = delete;
  KIVFileReader& operator=(const KIVFileReader&) = delete;
  virtual ~KIVFileReader() = default;

  // The name of the transform, never null.
  virtual const char* transformName() = 0;

  // Reads up to `count` bytes through the transform into `buffer`. Returns the number of bytes stored; 0 at the end of
  // the file; -1 if the stream is null or failed. If `count` is 0 or less, stores nothing and returns 0, or -1 if the
  // stream is null or failed.
  virtual int doRead(char* buffer, int count) = 0;

  // Resets the error code, then returns what doRead returns.
  virtual int read(char* buffer, int count) {
    error = 0;
    return doRead(buffer, count);
  }

  // Reads all bytes of the file, without the transform. Does not change the read position. Returns an array in the
  // reader, which is valid until the next readAll or the destruction of the reader. The caller may move from it.
  //
  // The array is empty if the stream is null, closed, not good, or has no size (a pipe); if the file is empty or has 2
  // GiB or more; and if reading fails (a directory). A failed read never leaves part of the file in the array. If the
  // file shrinks during the read, the array holds the bytes that are left.
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

  // False after a read has reached the end of the file, and if the stream was not good when the reader was created.
  virtual bool hasMore() { return more; }

  // The error code of the last operation. In the readers of this library it is always 0, which means no error.
  virtual int lastError() { return error; }

  virtual bool isOk() { return error == 0; }

  // 0 if the stream is good; -1000 if it is null or has no open file; -1001 if one of failbit, badbit and eofbit is
  // set.
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

  // Reads the next `size` bytes of the stream, or fewer if the file has become shorter. Returns an empty array if
  // reading fails. Clears the state of the stream, but keeps badbit if reading fails after the first byte.
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

// Returns the bytes of the file unchanged.
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
