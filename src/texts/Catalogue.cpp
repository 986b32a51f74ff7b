#include "texts/Catalogue.h"

#include <nlohmann/json.hpp>

#include "texts/CatalogueData.h"

namespace kestrune {

Catalogue::Catalogue(std::string_view language) {
  const auto entries = nlohmann::json::parse(catalogueData());
  for (const auto& [key, texts] : entries.items()) {
    for (const auto& wanted : {std::string(language), std::string("en")}) {
      const auto found = texts.find(wanted);
      if (found == texts.end()) continue;
      texts_.emplace(key, found->get<std::string>());
      break;
    }
  }
}

std::string_view Catalogue::text(std::string_view key) const {
  const auto found = texts_.find(key);
  return found == texts_.end() ? key : std::string_view(found->second);
}

}  // namespace kestrune
