#include "document/guard/content_model_cost.h"

#include "document/guard/steps.h"

#include <xercesc/validators/common/ContentSpecNode.hpp>

#include <algorithm>
#include <map>

namespace jexxml {
namespace {

std::uint64_t automatonCost(const std::vector<std::u16string_view>& names) {
  constexpr std::uint64_t stepsForARow = 256;
  constexpr std::uint64_t stepsForACell = 48;
  constexpr std::uint64_t placesInABlock = 1'024;  // of a set of places
  // For a document of 2 GiB; of 5,000 names, the sum stays below 64 bits.
  constexpr std::uint64_t farTooManyPlaces = 34;
  constexpr std::uint64_t farTooManyRows = std::uint64_t{1} << 31U;

  struct Places {
    std::uint64_t count = 0;
    std::size_t first = 0;
    std::size_t last = 0;
  };
  std::map<std::u16string_view, Places> placesOfName;
  std::uint64_t characters = 0;
  for (std::size_t place = 0; place < names.size(); ++place) {
    Places& places = placesOfName[names[place]];
    places.first = places.count++ == 0 ? place : places.first;
    places.last = place;
    characters += 4 + names[place].size();
  }
  std::uint64_t rows = 1;
  std::uint64_t stepsOfRow = stepsForARow;
  for (const auto& [name, places] : placesOfName) {
    rows += (std::uint64_t{1} << std::min(places.count, farTooManyPlaces)) - 1;
    stepsOfRow += stepsForACell + (places.count > 1 ? 4 * (places.last - places.first + placesInABlock / 16) : 0);
  }
  // Each row is compared with those in its bucket: of their sets of places, one in 64 can have the same hash on 64 bit.
  const std::uint64_t rowsCompared = std::min(rows, farTooManyRows);
  const std::uint64_t places = names.size();
  return visitSteps * rowsCompared * (rowsCompared / 64) + 2 * places * characters + places * places * places / 64 +
         rows * (stepsOfRow + placesOfName.size() * (places / placesInABlock) * stepsForACell);
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
    ++model.nodes;
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
