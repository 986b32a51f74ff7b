#include <algorithm>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "texts/Catalogue.h"
#include "texts/CatalogueData.h"

namespace kestrune {
namespace {

// The "%…" of a format, in any order.
std::string specifiers(const std::string& format) {
  std::string found;
  for (std::size_t at = format.find('%'); at != std::string::npos; at = format.find('%', at + 1)) {
    const auto end = format.find_first_of("@df", at);
    const auto digitsOnly = format.find_first_not_of("0123456789.$", at + 1);
    if (end != std::string::npos && end == digitsOnly) found += format[end];
  }
  std::ranges::sort(found);
  return found;
}

TEST(Catalogue, hasBothLanguages) {
  const Catalogue english;
  const Catalogue spanish("es");
  EXPECT_EQ(english.text("Usage history"), "Usage history");
  EXPECT_EQ(spanish.text("Usage history"), "Historial de uso");
  EXPECT_EQ(english.text("no such key"), "no such key");
  EXPECT_EQ(Catalogue("fr").text("macOS"), "Linux") << "the words of this desktop";
}

TEST(Catalogue, everyKeyHasSpanishWithTheSameArgumentsAndNoForeignNames) {
  const auto entries = nlohmann::json::parse(catalogueData());
  const Catalogue catalogue;
  EXPECT_GT(entries.size(), 200U);
  for (const auto& [key, texts] : entries.items()) {
    ASSERT_TRUE(texts.contains("es")) << key;
    const std::string spanish = texts["es"];
    const std::string english = texts.value("en", key);
    EXPECT_FALSE(spanish.empty()) << key;
    EXPECT_EQ(specifiers(english), specifiers(key)) << key;
    EXPECT_EQ(specifiers(spanish), specifiers(key)) << key;
    // Pieces that stand beside figures keep the blanks that part them.
    EXPECT_EQ(spanish.starts_with(' '), key.starts_with(' ')) << key;
    EXPECT_EQ(spanish.ends_with(' '), key.ends_with(' ')) << key;
    for (const auto* foreign : {"macOS", "Finder", "App Store", "System Settings", "Menu bar"}) {
      EXPECT_EQ((spanish + std::string(catalogue.text(key))).find(foreign), std::string::npos) << key;
    }
  }
}

}  // namespace
}  // namespace kestrune
