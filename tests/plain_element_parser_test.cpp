// A document that this library adds the plain elements to is the one that the parser library makes, node by node and
// link by link, with the same reports.
#include "document/plain_element_parser.h"

#include "document/error_reporter.h"
#include "hostile_parts.h"
#include "support/captured_stderr.h"

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <map>
#include <string>

namespace jexxml {
namespace {

using namespace xercesc;

// All nodes, a line each: type and names, and links as numbers in the order in which nodes are come upon.
class Description {
 public:
  void add(const DOMNode& node) {
    text += std::to_string(node.getNodeType());
    for (const XMLCh* string :
         {node.getNodeName(), node.getLocalName(), node.getPrefix(), node.getNamespaceURI(), node.getNodeValue()}) {
      text += ' ';
      for (; string != nullptr && *string != 0; ++string) {
        text += static_cast<char>(*string);
      }
      text += string == nullptr ? '-' : '.';
    }
    link({&node, node.getParentNode(), node.getFirstChild(), node.getLastChild(), node.getPreviousSibling(),
          node.getNextSibling()});
    if (const auto* attribute = dynamic_cast<const DOMAttr*>(&node)) {
      link({attribute->getOwnerElement()});
      text += std::to_string(attribute->getSpecified()) + std::to_string(attribute->isId());
    }
    text += '\n';
    for (const DOMNode* child = node.getFirstChild(); child != nullptr; child = child->getNextSibling()) {
      add(*child);
    }
    const DOMNamedNodeMap* attributes = node.getAttributes();
    for (XMLSize_t i = 0; attributes != nullptr && i < attributes->getLength(); ++i) {
      EXPECT_EQ(attributes->getNamedItem(attributes->item(i)->getNodeName()), attributes->item(i));
      add(*attributes->item(i));
    }
  }

  std::string text;

 private:
  void link(std::initializer_list<const DOMNode*> nodes) {
    for (const DOMNode* node : nodes) {
      text += std::to_string(numbers.emplace(node, numbers.size()).first->second) += ' ';
    }
  }

  std::map<const DOMNode*, std::size_t> numbers;
};

template <typename Parser>
std::string parsed(const std::string& document) {
  CapturedStderr captured;
  JexXmlErrorReporter reporter;
  const MemBufInputSource source(reinterpret_cast<const XMLByte*>(document.data()), document.size(), "JexXml");
  Parser parser;
  parser.setDoNamespaces(true);
  parser.setValidationScheme(XercesDOMParser::Val_Auto);
  parser.setCreateEntityReferenceNodes(true);
  parser.setErrorHandler(&reporter);
  parser.parse(source);
  Description description;
  if (parser.getDocument() != nullptr) {
    description.add(*parser.getDocument());
  }
  return description.text + captured.take();
}

std::string attributes(std::size_t step) {
  return hostile::join(1000, "", [&](std::size_t i) { return hostile::named(" a", i * step % 1000) + "=''"; });
}

TEST(PlainElementParser, MakesTheSameDocument) {
  const std::string entities =
      "<!DOCTYPE r [<!ELEMENT r ANY><!ELEMENT b ANY><!ATTLIST b d CDATA 'default' i ID #IMPLIED n NMTOKENS ' x  y '>"
      "<!ENTITY e '<b>in<b/>side</b><!-- c -->'><!ENTITY f '&e;<b f=\"1\">&e;</b>'>]>";
  const std::string documents[] = {
      "<r/>",
      "<r a=''/>",
      "<r><b/></r>",
      "<r>text<b/>text<b></b><b> </b></r>",
      "<r><b z='1' y='2' x='3' zz='' Z='&lt;&#65;'/><b b='1' a='2'/></r>",
      "<r><!-- first --><b/><!-- between --><?p i?><b/><![CDATA[c]]><b/><?last?></r><!-- after -->",
      "<!-- before --><?p i?><r><b><c><d/></c></b><b/></r>",
      "<r xmlns='u'><b a='1'/><c xmlns=''><d e='2'/></c><f/></r>",
      "<r xmlns:p='u'><p:b a='1' p:a='2'/><c p:d='3' e='4'><f/></c><g xmlns:q='v'><q:h/></g></r>",
      "<r xml:lang='en'><b xml:space='preserve' a=''/></r>",
      "<r><b xmlns:p='u' xmlnsx='1'/><b xmlnsx='1'/></r>",
      "<r" + attributes(7) + "><b" + attributes(999) + "/></r>",
      "<r><n><n><n><n><n><b/></n></n><b/></n></n></n></r>",
      entities + "<r>&e;<b/>&f;<b i='x'/>&amp;<c/></r>",
      entities + "<r><b>&f;&e;</b>&e;<!-- c -->&e;</r>",
      "<!DOCTYPE r><r><b a='1'/></r>",
      // Broken ones.
      "<r><b a='1' a='2'/><b/></r>",
      "<r><p:b/><b/></r>",
      "<r><b p:a='1'/></r>",
      "<r><b></c></r>",
      "<r><b/>",
      "<r/><r/>",
      "<r><b a=1/></r>",
      "<r xmlns:p=''/>",
      "<r><b>&undeclared;</b></r>",
      "<r></r></r>",
      entities + "<r><x y='1'/></r>",
  };
  XMLPlatformUtils::Initialize();
  for (const std::string& document : documents) {
    EXPECT_EQ(parsed<PlainElementParser>(document), parsed<XercesDOMParser>(document)) << document.substr(0, 200);
  }
  XMLPlatformUtils::Terminate();
}

}  // namespace
}  // namespace jexxml
