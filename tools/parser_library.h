// ParserLibrary: the parser library, started.
#ifndef QZJEXXML_TOOLS_PARSER_LIBRARY_H
#define QZJEXXML_TOOLS_PARSER_LIBRARY_H

namespace tool {

// Keeps the parser library started over many loads, which takes longer than a small file. Where it does not start, the
// loads say so. Throws std::bad_alloc.
class ParserLibrary {
 public:
  ParserLibrary();
  ParserLibrary(const ParserLibrary&) = delete;
  ParserLibrary& operator=(const ParserLibrary&) = delete;
  ~ParserLibrary();

 private:
  bool started = false;
};

}  // namespace tool

#endif  // QZJEXXML_TOOLS_PARSER_LIBRARY_H
