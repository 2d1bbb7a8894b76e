#include "description/token_positions.h"

#include <xercesc/framework/XMLRecognizer.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>

namespace tool {
namespace {

using xercesc::XMLPlatformUtils;
using xercesc::XMLRecognizer;

constexpr std::size_t blockLength = std::size_t{1} << 14U;  // in 16-bit units
constexpr std::size_t nowhere = std::u16string_view::npos;
constexpr std::u16string_view spaces = u" \t\r\n";

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

void TokenPositions::setDeclaration(const XMLCh* encoding, bool isVersion11) {
  if (encoding != nullptr) {
    declaredEncoding = encoding;
  }
  hasMoreLineEnds = isVersion11;
}

// False where that cannot be done.
bool TokenPositions::decode(std::size_t wanted) {
  const std::size_t length = text.size();
  text.resize(length + wanted);
  std::vector<unsigned char> sizes(wanted);
  XMLSize_t eaten = 0;
  XMLSize_t got = 0;
  try {
    got = transcoder->transcodeFrom(bytesOf(file) + decodedBytes, file.length - decodedBytes, text.data() + length,
                                    wanted, eaten, sizes.data());
  } catch (const xercesc::XMLException&) {
    eaten = got = 0;
  }
  text.resize(length + got);
  decodedBytes += eaten;
  return eaten != 0;
}

// Of a block with bytes that cannot be decoded, what stands before them is decoded character by character. False at the
// end of the text.
bool TokenPositions::decodeBlock() {
  if (isDecoded) {
    return false;
  }
  if (transcoder == nullptr) {
    transcoder = transcoderFor(file, declaredEncoding);
  }
  isDecoded = transcoder == nullptr || decodedBytes == file.length;
  if (!isDecoded && !decode(blockLength)) {
    while (decode(1) || decode(2)) {
    }
    isDecoded = true;
  }
  if (indexed == 0 && text.starts_with(u'\uFEFF')) {
    text.erase(0, 1);
  }
  index();
  return !isDecoded;
}

// Without the last unit while more may follow, which tells whether that one ends a line.
void TokenPositions::index() {
  for (; indexed + (isDecoded ? 0 : 1) < text.size(); ++indexed) {
    if (endsLine(indexed)) {
      lineStarts.push_back(static_cast<std::uint32_t>(indexed + 1));
    }
    if ((text[indexed] & 0xFC00U) == 0xDC00U) {
      pairs.push_back(static_cast<std::uint32_t>(indexed));
    }
  }
}

bool TokenPositions::endsLine(std::size_t offset) const {
  const char16_t unit = text[offset];
  if (unit == u'\r') {
    const char16_t next = offset + 1 < text.size() ? text[offset + 1] : u' ';
    return next != u'\n' && !(hasMoreLineEnds && next == u'\u0085');
  }
  return unit == u'\n' || (hasMoreLineEnds && (unit == u'\u0085' || unit == u'\u2028'));
}

std::size_t TokenPositions::offsetOf(const ParserPosition& position) const {
  if (position.line == 0 || position.column == 0 || position.line > lineStarts.size()) {
    return nowhere;
  }
  const std::size_t offset = lineStarts[position.line - 1] + position.column - std::size_t{1};
  return offset > text.size() ? nowhere : offset;
}

Position TokenPositions::positionAt(std::size_t offset) const {
  const auto next = std::ranges::upper_bound(lineStarts, offset);
  const std::size_t lineStart = *std::prev(next);
  const auto pairsBefore = std::ranges::lower_bound(pairs, offset) - std::ranges::lower_bound(pairs, lineStart);
  return {static_cast<std::uint64_t>(next - lineStarts.begin()),
          offset - lineStart - static_cast<std::size_t>(pairsBefore) + 1};
}

// The offset of a position, with the unit behind it decoded.
std::size_t TokenPositions::decodeTo(const ParserPosition& position) {
  std::size_t offset = offsetOf(position);
  while ((offset == nowhere || offset + 1 >= text.size()) && decodeBlock()) {
    offset = offsetOf(position);
  }
  return offset == nowhere ? offsetOf(position) : offset;
}

Position TokenPositions::of(Token token, const ParserPosition& position, std::u16string_view name) {
  const std::size_t offset = decodeTo(position);
  if (offset == nowhere) {
    return {position.line, position.column};
  }
  const std::size_t start = startOf(token, offset, name);
  return positionAt(start == nowhere ? offset : start);
}

std::size_t TokenPositions::startOf(Token token, std::size_t offset, std::u16string_view name) {
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
        const auto attribute = std::ranges::find(
            attributes, name, [&](const Attribute& found) { return part(found.start, found.nameEnd); });
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
std::size_t TokenPositions::startOfTag(std::size_t end) {
  if (end != tagEnd) {
    const std::u16string_view before(text.data(), end);
    tagEnd = end;
    tagStart = before.ends_with(u'>') ? before.rfind(u'<') : nowhere;
    attributes.clear();
  }
  return tagStart;
}

// Without effect when they are known.
void TokenPositions::findAttributes() {
  std::size_t i = attributes.empty() ? text.find_first_of(u" \t\r\n/>", tagStart) : tagEnd;
  for (auto attribute = attributeAt(i); i < tagEnd && attribute; attribute = attributeAt(i)) {
    attributes.push_back(*attribute);
    i = attribute->end == nowhere ? tagEnd : attribute->end + 1;
  }
}

std::u16string_view TokenPositions::part(std::size_t start, std::size_t end) const {
  return std::u16string_view(text).substr(start, end - start);
}

// The attribute at the offset in a tag, or behind the blanks there.
std::optional<TokenPositions::Attribute> TokenPositions::attributeAt(std::size_t offset) const {
  const std::size_t start = text.find_first_not_of(spaces, offset);
  const std::size_t nameEnd = text.find_first_of(u" \t\r\n=<>/\"'", start);
  const std::size_t quote = text.find_first_not_of(u" \t\r\n=", nameEnd);
  if (start == nameEnd || quote == nowhere || (text[quote] != u'"' && text[quote] != u'\'')) {
    return std::nullopt;
  }
  return Attribute{start, nameEnd, quote + 1, text.find(text[quote], quote + 1)};
}

TokenPositions::Value TokenPositions::unclosedValue(const ParserPosition& from, const ParserPosition& to) {
  std::size_t last = decodeTo(to);
  last = std::min(last, text.size());
  std::size_t start = from.line == 0 ? 0 : std::min(offsetOf(from), last);
  start = text.find(u'<', start - (start > 0 ? 1 : 0));  // the parser may be behind it
  while (start < last) {
    std::size_t i = text.find_first_of(u" \t\r\n<>/!?", start + 1);
    for (auto found = i == start + 1 ? std::nullopt : attributeAt(i); found && found->start < last;
         found = attributeAt(i)) {
      const std::u16string_view value = part(found->value, found->end);
      const bool hasMarkup = value.find(u'<') != nowhere;
      i = found->end + 1;
      const bool hasNext = value.find(u'=') != nowhere && text.find_first_of(u" \t\r\n>", i) != i &&
                           text.compare(i, 2, u"/>") != 0;  // up to its quote
      if (hasMarkup || found->end == nowhere || hasNext) {
        return {part(found->start, found->nameEnd), positionAt(found->start), hasMarkup};
      }
    }
    start = text.find(u'<', std::max(i, start + 1));
  }
  return {};
}

// A reference ends the text that the parser has sent; the parser is then behind the '&'.
std::size_t TokenPositions::startOfText(std::size_t offset) {
  constexpr std::u16string_view cdata = u"<![CDATA[";
  if (offset > 0 && text[offset - 1] == u'&') {
    return offset - 1;
  }
  const std::u16string_view blanks = hasMoreLineEnds ? u" \t\r\n\u0085\u2028" : spaces;
  const auto behindBlanks = [&](std::size_t from) {
    std::size_t start = text.find_first_not_of(blanks, from);
    while (start == nowhere && decodeBlock()) {
      start = text.find_first_not_of(blanks, from);
    }
    return start;
  };
  const std::size_t start = behindBlanks(offset);
  return start != nowhere && text.compare(start, cdata.size(), cdata) == 0 ? behindBlanks(start + cdata.size()) : start;
}

Position TokenPositions::ofBadByte(const ParserPosition& at, bool isSoon) {
  const std::size_t offset = decodeTo(at);
  while (isSoon && decodeBlock()) {
  }
  const bool isHere = offset == nowhere || offset + 1 >= text.size();
  return isDecoded && decodedBytes < file.length && (isSoon || isHere) ? positionAt(text.size()) : Position{};
}

bool TokenPositions::isUtf8() const {
  return declaredEncoding.empty() || xercesc::XMLString::compareIString(declaredEncoding.c_str(), u"UTF-8") == 0;
}

}  // namespace tool
