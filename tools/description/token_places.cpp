#include "description/token_places.h"

#include <utf8.h>
#include <xercesc/framework/XMLRecognizer.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLException.hpp>

#include <algorithm>
#include <memory>

namespace tool {
namespace {

using xercesc::XMLPlatformUtils;
using xercesc::XMLRecognizer;

constexpr std::size_t blockLength = std::size_t{1} << 14U;  // in 16-bit units
constexpr std::size_t nowhere = std::u16string_view::npos;
constexpr std::u16string_view spaces = u" \t\r\n";

bool isLowSurrogate(char16_t unit) { return (unit & 0xFC00U) == 0xDC00U; }

const XMLByte* bytesOf(const KIVByteArray& file) { return reinterpret_cast<const XMLByte*>(file.data); }

// As the parser chooses it: by the first bytes where these tell, else by the declaration. Null when there is none.
std::unique_ptr<xercesc::XMLTranscoder> transcoderFor(const KIVByteArray& file,
                                                      const std::u16string& declaredEncoding) {
  const XMLRecognizer::Encodings first = XMLRecognizer::basicEncodingProbe(bytesOf(file), file.length);
  xercesc::XMLTransService& service = *XMLPlatformUtils::fgTransService;
  xercesc::XMLTransService::Codes result;
  const bool isTold = first == XMLRecognizer::UTF_16L || first == XMLRecognizer::UTF_16B ||
                      first == XMLRecognizer::UCS_4L || first == XMLRecognizer::UCS_4B;
  return std::unique_ptr<xercesc::XMLTranscoder>(
      isTold || declaredEncoding.empty() ? service.makeNewTranscoderFor(first, result, blockLength)
                                         : service.makeNewTranscoderFor(declaredEncoding.c_str(), result, blockLength));
}

}  // namespace

void TokenPlaces::setDeclaration(const XMLCh* encoding, bool isVersion11) {
  if (encoding != nullptr) {
    declaredEncoding = encoding;
  }
  hasMoreLineEnds = isVersion11;
}

// Of a block with bytes that cannot be decoded, what stands before them is decoded a pair at a time.
void TokenPlaces::decode() {
  constexpr std::size_t pair = 2;
  const auto transcoder = transcoderFor(file, declaredEncoding);
  std::vector<unsigned char> sizes(blockLength);
  std::size_t wanted = blockLength;
  std::size_t done = 0;
  bool goesOn = transcoder != nullptr;
  while (goesOn && done < file.length) {
    const std::size_t length = text.size();
    text.resize(length + wanted);
    XMLSize_t eaten = 0;
    XMLSize_t got = 0;
    try {
      got = transcoder->transcodeFrom(bytesOf(file) + done, file.length - done, text.data() + length, wanted, eaten,
                                      sizes.data());
      goesOn = eaten != 0;
    } catch (const xercesc::XMLException&) {
      goesOn = wanted != pair;
      wanted = pair;
    }
    text.resize(length + got);
    done += eaten;
  }
  if (text.starts_with(u'\uFEFF')) {
    text.erase(0, 1);
  }
}

void TokenPlaces::index() {
  Block block{.line = 1, .lineStart = 0, .pairs = 0};
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i % blockLength == 0) {
      blocks.push_back(block);
    }
    if (endsLine(i)) {
      ++block.line;
      block.lineStart = i + 1;
    }
    block.pairs += isLowSurrogate(text[i]) ? 1 : 0;
  }
  if (text.size() % blockLength == 0) {
    blocks.push_back(block);
  }
}

bool TokenPlaces::endsLine(std::size_t offset) const {
  const char16_t unit = text[offset];
  if (unit == u'\r') {
    const char16_t next = offset + 1 < text.size() ? text[offset + 1] : u' ';
    return next != u'\n' && !(hasMoreLineEnds && next == u'\u0085');
  }
  return unit == u'\n' || (hasMoreLineEnds && (unit == u'\u0085' || unit == u'\u2028'));
}

std::size_t TokenPlaces::offsetOf(const ParserPlace& place) const {
  const auto next = std::ranges::lower_bound(blocks, place.line, {}, &Block::line);
  std::size_t lineStart = nowhere;
  if (next != blocks.end() && next->line == place.line) {
    lineStart = next->lineStart;
  } else if (next != blocks.begin()) {
    std::uint32_t line = std::prev(next)->line;
    std::size_t offset = static_cast<std::size_t>(next - blocks.begin() - 1) * blockLength;
    for (; line < place.line && offset < text.size(); ++offset) {
      line += endsLine(offset) ? 1 : 0;
    }
    lineStart = line == place.line ? offset : nowhere;
  }
  const std::size_t inLine = place.column - std::size_t{1};
  return place.column == 0 || lineStart == nowhere || inLine > text.size() - lineStart ? nowhere : lineStart + inLine;
}

std::size_t TokenPlaces::pairsBefore(std::size_t offset) const {
  const std::size_t block = offset / blockLength;
  const auto from = text.begin() + static_cast<std::ptrdiff_t>(block * blockLength);
  return blocks[block].pairs + static_cast<std::size_t>(std::count_if(
                                   from, text.begin() + static_cast<std::ptrdiff_t>(offset), isLowSurrogate));
}

Place TokenPlaces::placeAt(std::size_t offset) const {
  const std::size_t block = offset / blockLength;
  std::uint64_t line = blocks[block].line;
  std::size_t lineStart = blocks[block].lineStart;
  for (std::size_t i = block * blockLength; i < offset; ++i) {
    if (endsLine(i)) {
      ++line;
      lineStart = i + 1;
    }
  }
  return {line, offset - lineStart - (pairsBefore(offset) - pairsBefore(lineStart)) + 1};
}

Place TokenPlaces::of(Token token, const ParserPlace& place, std::u16string_view name) {
  if (!isDecoded) {
    isDecoded = true;
    decode();
    index();
  }
  const std::size_t offset = offsetOf(place);
  if (offset == nowhere) {
    return {place.line, place.column};
  }
  const std::size_t start = startOf(token, offset, name);
  return placeAt(start == nowhere ? offset : start);
}

std::size_t TokenPlaces::startOf(Token token, std::size_t offset, std::u16string_view name) {
  const std::u16string_view before(text.data(), offset);
  switch (token) {
    case Token::here:
      return before.ends_with(u'>') ? before.rfind(u'<') : nowhere;
    case Token::tag:
      return startOfTag(offset);
    case Token::insideTag:
      return before.rfind(u'<');
    case Token::attribute:
      if (startOfTag(offset) != nowhere) {
        findAttributes();
        const auto attribute = std::ranges::find(attributes, name, &Attribute::name);
        return attribute == attributes.end() ? tagStart : attribute->start;
      }
      return nowhere;
    case Token::text:
      return startOfText(offset);
    case Token::reference:
      return before.ends_with(u';') ? before.rfind(u'&') : nowhere;
    case Token::comment:
      return before.ends_with(u'>') ? before.rfind(u"<!--") : nowhere;
  }
  return nowhere;
}

// No value has a '<'.
std::size_t TokenPlaces::startOfTag(std::size_t end) {
  if (end != tagEnd) {
    const std::u16string_view before(text.data(), end);
    tagEnd = end;
    tagStart = before.ends_with(u'>') ? before.rfind(u'<') : nowhere;
    attributes.clear();
  }
  return tagStart;
}

// Without effect when they are known.
void TokenPlaces::findAttributes() {
  const std::u16string_view tag = std::u16string_view(text).substr(tagStart, tagEnd - tagStart);
  std::size_t i = attributes.empty() ? tag.find_first_of(u" \t\r\n/>") : nowhere;
  while ((i = tag.find_first_not_of(spaces, i)) != nowhere && tag[i] != u'/' && tag[i] != u'>') {
    const std::size_t nameEnd = tag.find_first_of(u" \t\r\n=", i);
    const std::size_t quote = tag.find_first_of(u"\"'", nameEnd);
    if (quote == nowhere) {
      return;
    }
    attributes.push_back({tag.substr(i, nameEnd - i), tagStart + i});
    i = tag.find(tag[quote], quote + 1);
    i += i == nowhere ? 0 : 1;
  }
}

// Where the parser has sent the text before a reference, it is behind the '&'.
std::size_t TokenPlaces::startOfText(std::size_t offset) const {
  constexpr std::u16string_view cdata = u"<![CDATA[";
  if (offset > 0 && text[offset - 1] == u'&') {
    return offset - 1;
  }
  const std::u16string_view blanks = hasMoreLineEnds ? u" \t\r\n\u0085\u2028" : spaces;
  const std::size_t start = text.find_first_not_of(blanks, offset);
  return start != nowhere && text.compare(start, cdata.size(), cdata) == 0
             ? text.find_first_not_of(blanks, start + cdata.size())
             : start;
}

Place TokenPlaces::ofBadByte() const {
  const char* start = file.data;
  const char* end = start + file.length;
  const char* bad = utf8::find_invalid(start, end);
  if (bad == end) {
    return {};
  }
  const std::string_view good(start, static_cast<std::size_t>(bad - start));
  const std::string_view line = good.substr(good.rfind('\n') + 1);
  return {static_cast<std::uint64_t>(std::ranges::count(good, '\n')) + 1,
          static_cast<std::uint64_t>(utf8::distance(line.begin(), line.end())) + 1};
}

}  // namespace tool
