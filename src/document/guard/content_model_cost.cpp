#include "document/guard/content_model_cost.h"

#include <xercesc/validators/common/ContentSpecNode.hpp>

#include <algorithm>
#include <map>

namespace jexxml {
namespace {

std::uint64_t automatonCost(const std::vector<std::u16string_view>& names) {
  constexpr std::uint64_t cellsForARow = 16;  // which a row costs beside its cells
  constexpr std::uint64_t stepsForACell = 16;
  constexpr std::uint64_t placesInABlock = 64;  // of a set of places
  constexpr std::uint64_t farTooManyPlaces = 40;

  std::map<std::u16string_view, std::uint64_t> placesOfName;
  std::uint64_t characters = 0;
  for (const std::u16string_view name : names) {
    ++placesOfName[name];
    characters += 4 + name.size();
  }
  std::uint64_t rows = 1;
  for (const auto& [name, places] : placesOfName) {
    rows += std::uint64_t{1} << std::min(places, farTooManyPlaces);
  }
  const std::uint64_t places = names.size();
  return 2 * places * characters + places * places * places / placesInABlock +
         rows * (placesOfName.size() + cellsForARow) * stepsForACell;
}

}  // namespace

ContentModel contentModelOf(const xercesc::DTDElementDecl& declaration) {
  ContentModel model;
  // A model of many names is as deep as it is long, so that recursion would not do.
  std::vector<const xercesc::ContentSpecNode*> toVisit = {declaration.getContentSpec()};
  while (!toVisit.empty()) {
    const xercesc::ContentSpecNode* node = toVisit.back();
    toVisit.pop_back();
    if (node == nullptr) {
      continue;
    }
    if (const xercesc::QName* name = node->getElement()) {
      model.names.emplace_back(name->getRawName());
    }
    toVisit.push_back(node->getFirst());
    toVisit.push_back(node->getSecond());
  }
  if (declaration.getModelType() == xercesc::DTDElementDecl::Children) {
    model.cost = automatonCost(model.names);
  }
  return model;
}

}  // namespace jexxml
