// Description: a description file as a load reads it, with findings about it.
#pragma once

#include "description/rules.h"
#include "description/suppressions.h"
#include "description/token_positions.h"
#include "description/vocabulary.h"
#include "io/input_file.h"
#include "io/json_writer.h"
#include "io/messages.h"
#include "manifest/kiv_nodes.h"
#include "project/nox_nodes.h"

#include <qzjexxml/kiv_byte_array.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

struct Finding {
  Position position;
  Rule rule;
  std::string text;
};

// The token that a finding refers to.
struct Anchor {
  Token token = Token::tag;
  ParserPosition position;
  std::u16string_view attribute;
  SuppressionGroup suppressions = 0;  // of its element
};

// An element that a load uses.
struct Element {
  // Returns the value in the locale encoding, or nothing for an absent attribute.
  std::optional<std::string> value(const char16_t* attribute) const;

  // Returns NAME="VALUE" of each attribute that it has, each after a space. If `areCut`, cuts long values.
  enum class Which { required, others, all };
  std::string attributesText(Which which, bool areCut = false) const;

  Anchor tag() const { return {Token::tag, end, {}, suppressions}; }
  Anchor attribute(std::u16string_view name) const { return {Token::attribute, end, name, suppressions}; }

  const ElementKind* kind;
  std::size_t parent;  // index of the parent element; the root element is its own parent
  ParserPosition end;  // of the tag
  SuppressionGroup suppressions;
  const xercesc::DOMNode* node;
};

class DescriptionParser;

class Description {
 public:
  // Reads and parses the file as a load does, and adds findings, except warnings of the ignored rules. Throws
  // std::bad_alloc. REQUIRES: Xerces-C is started while this object lives.
  explicit Description(std::string name, const Rules& ignored = Rules().set());
  ~Description();

  // Adds a warning, unless it is suppressed or the file has a thousand warnings. `textOf` returns the text.
  void report(Rule rule, const Anchor& anchor, const auto& textOf) {
    if (isWanted(rule, anchor)) {
      findings.push_back({positionOf(anchor), rule, textOf()});
    }
  }

  // Adds an error.
  void report(Rule rule, const Position& position, const std::string& text) {
    findings.push_back({position, rule, text});
  }

  // Builds a load's tree over the document. Adds an error and returns false on failure. REQUIRES: hasErrors() is false.
  bool build(jexxml::KivMaster& tree);
  bool build(jexxml::NoxMaster& tree);

  // Adds the unused suppressions, and sorts the findings by position.
  void finishFindings();

  // [{"severity":"error","rule":"not-valid","line":2,"column":1,"message":"..."}, ...], without unknown positions.
  void writeFindings(JsonWriter& json) const;

  // Reports why the file does not load, with the diagnostics of a load. Returns fileFailed.
  ExitStatus reportUnloadable() const;

  Position positionOf(const Anchor& anchor) { return positions.of(anchor.token, anchor.position, anchor.attribute); }

  // "FILE:LINE:COLUMN", with 1:1 for an unknown position.
  std::string placeOf(const Position& position) const;
  std::string placeOf(const Anchor& anchor) { return placeOf(positionOf(anchor)); }

  bool isManifest() const { return root == &manifestVocabulary(); }
  bool hasErrors() const;
  std::uint32_t fileSize() const { return bytes.length; }

  const std::string file;                           // name
  const ElementKind* root = &manifestVocabulary();  // by the content, otherwise by the attribute `type`
  bool showsKind = false;                           // false if it may be of either kind
  std::vector<Element> elements;                    // in document order, the root element first
  std::vector<Finding> findings;

 private:
  friend DescriptionParser;

  void parse();
  bool isWanted(Rule rule, const Anchor& anchor);
  bool isBuilt(const std::string& diagnostics);

  std::optional<InputFile> input;
  KIVByteArray bytes;
  Rules ignoredRules;
  TokenPositions positions{bytes};
  Suppressions suppressions;
  std::size_t warnings = 0;
  std::unique_ptr<DescriptionParser> parser;
};

}  // namespace tool
