// ScopedStreambuf: a standard stream with another buffer.
#ifndef QZJEXXML_TOOLS_IO_SCOPED_STREAMBUF_H
#define QZJEXXML_TOOLS_IO_SCOPED_STREAMBUF_H

#include <ostream>
#include <streambuf>

namespace tool {

// Lends the stream the buffer while it lives.
class ScopedStreambuf {
 public:
  ScopedStreambuf(std::ostream& lent, std::streambuf* buffer) : stream(lent), standard(lent.rdbuf(buffer)) {}
  ScopedStreambuf(const ScopedStreambuf&) = delete;
  ScopedStreambuf& operator=(const ScopedStreambuf&) = delete;
  ~ScopedStreambuf() {
    const std::ios::iostate state = stream.rdstate();  // which a change of the buffer clears
    stream.rdbuf(standard);
    stream.setstate(state);
  }

 private:
  std::ostream& stream;
  std::streambuf* standard;
};

}  // namespace tool

#endif  // QZJEXXML_TOOLS_IO_SCOPED_STREAMBUF_H
