#include "document/document_builder.h"

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>

#include <algorithm>

namespace jexxml {

using xercesc::XMLString;

void refuseOperation() { throw xercesc::DOMException(xercesc::DOMException::NOT_SUPPORTED_ERR); }

// The element refers to the name in its declaration, which lives as long as the parser.
void DocumentBuilder::startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                                   const Attributes& attributes, XMLSize_t attributeCount, bool isEmpty, bool isRoot) {
  if (openEntities == 0) {
    auto* element = std::pmr::polymorphic_allocator<>(&arena).new_object<ElementNode>(
        declaration.getFullName(), copyAttributes(attributes, attributeCount));
    *links.back() = element;
    links.back() = &element->nextSibling;
    links.push_back(&element->firstChild);
    fCurrentNode = element;
    ++counted.elements;
  }
  if (isEmpty) {
    endElement(declaration, uriId, isRoot, prefix);
  }
}

void DocumentBuilder::endElement(const xercesc::XMLElementDecl& /*declaration*/, unsigned int /*uriId*/,
                                 bool /*isRoot*/, const XMLCh* /*prefix*/) {
  if (openEntities == 0) {
    links.pop_back();
  }
}

// Compares each name first with the name at its position in the tag before, which is mostly the same.
std::span<AttributeNode> DocumentBuilder::copyAttributes(const Attributes& attributes, XMLSize_t count) {
  auto* copies = std::pmr::polymorphic_allocator<AttributeNode>(&arena).allocate(count);
  lastNames.resize(std::max(lastNames.size(), count));
  for (XMLSize_t i = 0; i < count; ++i) {
    const xercesc::XMLAttr& given = *attributes.elementAt(i);
    if (!XMLString::equals(lastNames[i], given.getQName())) {
      lastNames[i] = intern(given.getQName());
    }
    new (copies + i) AttributeNode(lastNames[i], copy(given.getValue()));
  }
  counted.attributes += count;
  return {copies, count};
}

const XMLCh* DocumentBuilder::intern(const XMLCh* name) {
  auto found = names.find(std::u16string_view(name));
  if (found == names.end()) {
    found = names.emplace(name).first;
  }
  return found->c_str();
}

const XMLCh* DocumentBuilder::copy(const XMLCh* text) {
  const XMLSize_t length = XMLString::stringLen(text);
  auto* characters = std::pmr::polymorphic_allocator<XMLCh>(&arena).allocate(length + 1);
  std::copy_n(text, length + 1, characters);
  counted.characters += length;
  return characters;
}

}  // namespace jexxml
