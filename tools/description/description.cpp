#include "description/description.h"

#include "description/description_parser.h"
#include "io/quoting.h"
#include "io/standard_streams.h"
#include "manifest/kiv_data_load.h"
#include "tree/node_attribute.h"

#include <qzjexxml/qzjexxml.h>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include <algorithm>
#include <fstream>
#include <new>
#include <tuple>
#include <utility>

namespace tool {

std::optional<std::string> Element::value(const char16_t* attribute) const {
  jexxml::NodeAttribute read(const_cast<xercesc::DOMNode*>(node), attribute);
  read.fetch();
  return read.missing ? std::nullopt : std::optional(read.getText());
}

std::string Element::attributesText(Which which, bool areCut) const {
  std::string text;
  for (const AttributeKind& attribute : kind->attributes) {
    if (which == Which::all || attribute.required == (which == Which::required)) {
      if (const auto given = value(attribute.parserName.c_str())) {
        text += ' ' + attribute.name + '=' + (areCut ? inQuotes(*given) : '"' + *given + '"');
      }
    }
  }
  return text;
}

Description::Description(std::string name, const Rules& ignored) : file(std::move(name)), ignoredRules(ignored) {
  try {
    input.emplace(file);
    std::uint32_t start = 1;
    std::ifstream(input->path(), std::ios::binary).read(reinterpret_cast<char*>(&start), sizeof start);
    if (start == 0) {
      throw Failure("the file starts with NUL bytes, so it is not XML");
    }
    bool wasRead = false;
    const std::string diagnostics = diagnosticsOf([&] { wasRead = ReadXmlFile(input->path(), bytes); });
    if (!wasRead) {
      throw Failure(diagnostics.substr(0, diagnostics.find('\n')));
    }
    parse();
  } catch (const Failure& failure) {
    report(Rule::unreadable, Position{}, failure.what());
  }
}

Description::~Description() = default;

void Description::parse() {
  parser = std::make_unique<DescriptionParser>(*this);
  try {
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.data), bytes.length, "");
    source.setCopyBufToStream(false);
    parser->parse(source);
  } catch (const jexxml::DocumentRefused&) {  // already reported
  } catch (const xercesc::XMLException& exception) {
    report(Rule::notLoadable, Position{}, textOf(exception.getMessage()));
  } catch (const xercesc::OutOfMemoryException&) {
    throw std::bad_alloc();
  }
}

// Asks the suppressions first, because a suppression counts as used even if the rule is ignored.
bool Description::isWanted(Rule rule, const Anchor& anchor) {
  constexpr std::size_t most = 1'000;
  if (suppressions.silence(anchor.suppressions, rule) || ignoredRules.test(static_cast<std::size_t>(rule))) {
    return false;
  }
  ++warnings;
  if (warnings == most + 1 && !ignoredRules.test(static_cast<std::size_t>(Rule::moreWarnings))) {
    findings.push_back({positionOf(anchor), Rule::moreWarnings, "there are more warnings, which are not shown"});
  }
  return warnings <= most;
}

bool Description::build(jexxml::KivMaster& tree) {
  tree.document = parser->document();
  return isBuilt(diagnosticsOf([&] { jexxml::buildWithinLimit(tree, parser->memoryLeft()); }));
}

bool Description::build(jexxml::NoxMaster& tree) {
  tree.document = parser->document();
  return isBuilt(diagnosticsOf([&] { jexxml::buildNoxMaster(tree); }));
}

bool Description::isBuilt(const std::string& diagnostics) {
  const bool isLimit = diagnostics.starts_with("The file map");
  if (!diagnostics.empty()) {
    report(isLimit ? Rule::overLimit : Rule::notLoadable, Position{}, diagnostics.substr(0, diagnostics.find('\n')));
  }
  return diagnostics.empty();
}

void Description::finishFindings() {
  if (!hasErrors()) {
    if (positions.hasInvalidUtf8()) {
      parser->reportBadByte({}, true);
    }
    for (const auto& [position, reason] : suppressions.unused()) {
      report(Rule::unusedSuppression, Anchor{Token::comment, position, {}, 0}, [&, text = reason] { return text; });
    }
  }
  std::ranges::stable_sort(
      findings, {}, [](const Finding& finding) { return std::tuple(finding.position.line, finding.position.column); });
}

void Description::writeFindings(JsonWriter& json) const {
  json.beginArray();
  for (const auto& [position, rule, text] : findings) {
    json.beginObject().key("severity").text(isError(rule) ? "error" : "warning").key("rule").text(nameOf(rule));
    if (position.line != 0) {
      json.key("line").number(position.line).key("column").number(position.column);
    }
    json.key("message").text(text).end();
  }
  json.end();
}

ExitStatus Description::reportUnloadable() const {
  if (findings.front().rule == Rule::unreadable) {
    return tool::report(file, findings.front().text);
  }
  return tool::report(file, "cannot be loaded", diagnosticsOf([&] {
                        KIVData* record = nullptr;
                        InitKIVData(input->path(), &record);
                        TermKIVData(&record);
                      }));
}

std::string Description::placeOf(const Position& position) const {
  return file + ':' + std::to_string(std::max<std::uint64_t>(position.line, 1)) + ':' +
         std::to_string(std::max<std::uint64_t>(position.column, 1));
}

bool Description::hasErrors() const { return std::ranges::any_of(findings, isError, &Finding::rule); }

}  // namespace tool
