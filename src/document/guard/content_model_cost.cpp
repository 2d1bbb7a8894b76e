#include "document/guard/content_model_cost.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

namespace jexxml {

std::uint64_t contentModelCost(const xercesc::ContentSpecNode* model) {
  // A row takes memory and time of its own, about that of so many cells.
  constexpr std::uint64_t cellsForARow = 16;
  constexpr std::uint64_t farTooManyPlaces = 40;

  std::map<std::u16string_view, std::uint64_t> placesOfName;
  std::uint64_t places = 0;
  // A model of many names is as deep as it is long, so that recursion would not do.
  std::vector<const xercesc::ContentSpecNode*> toVisit = {model};
  while (!toVisit.empty()) {
    const xercesc::ContentSpecNode* node = toVisit.back();
    toVisit.pop_back();
    if (node == nullptr) {
      continue;
    }
    if (const xercesc::QName* name = node->getElement()) {
      ++places;
      ++placesOfName[name->getRawName()];
    }
    toVisit.push_back(node->getFirst());
    toVisit.push_back(node->getSecond());
  }
  std::uint64_t rows = 1;
  for (const auto& [name, count] : placesOfName) {
    rows += std::uint64_t{1} << std::min(count, farTooManyPlaces);
  }
  return model == nullptr ? 0 : places * places + rows * (placesOfName.size() + cellsForARow);
}

}  // namespace jexxml
