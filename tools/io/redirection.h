// Redirection: a standard stream with another buffer.
#ifndef QZJEXXML_TOOLS_IO_REDIRECTION_H
#define QZJEXXML_TOOLS_IO_REDIRECTION_H

#include <ostream>
#include <streambuf>

namespace tool {

// Lends the stream the buffer while it lives.
class Redirection {
 public:
  Redirection(std::ostream& lent, std::streambuf* buffer) : stream(lent), standard(lent.rdbuf(buffer)) {}
  Redirection(const Redirection&) = delete;
  Redirection& operator=(const Redirection&) = delete;
  ~Redirection() {
    const std::ios::iostate state = stream.rdstate();  // which a change of the buffer clears
    stream.rdbuf(standard);
    stream.setstate(state);
  }

 private:
  std::ostream& stream;
  std::streambuf* standard;
};

}  // namespace tool

#endif  // QZJEXXML_TOOLS_IO_REDIRECTION_H
