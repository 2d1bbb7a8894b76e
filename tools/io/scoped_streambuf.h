// ScopedStreambuf: a standard stream with another buffer.
#pragma once

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
