#include "ui/qt/theme/Theme.h"

#include <algorithm>
#include <cmath>

#include <QGuiApplication>

#include "texts/TextFormat.h"

namespace kestrune::ui::qt {
namespace {

QFont::Weight weightOf(FontWeight weight) {
  switch (weight) {
    case FontWeight::medium:
      return QFont::Medium;
    case FontWeight::semibold:
      return QFont::DemiBold;
    case FontWeight::regular:
      break;
  }
  return QFont::Normal;
}

std::optional<double> widestDigitIfUneven(const QFontMetricsF& metrics) {
  double narrowest = unlimited;
  double widest = 0;
  for (char digit = '0'; digit <= '9'; ++digit) {
    const double advance = metrics.horizontalAdvance(QLatin1Char(digit));
    narrowest = std::min(narrowest, advance);
    widest = std::max(widest, advance);
  }
  if (widest - narrowest < 0.01) return std::nullopt;
  return widest;
}

}  // namespace

Theme::KnownFont::KnownFont(const QFont& of) : font(of), metrics(of) {}

Theme::Theme(const Catalogue& catalogue) : catalogue_(catalogue) {
  refresh();
}

bool Theme::refresh() {
  const ColorScheme scheme = colorSchemeFor(QGuiApplication::palette());
  const QFont font = QGuiApplication::font();
  if (generation_ > 0 && scheme == scheme_ && font == applicationFont_) return false;
  scheme_ = scheme;
  applicationFont_ = font;
  fonts_.clear();
  pictures_.clear();
  ++generation_;
  return true;
}

QColor Theme::color(const Color& color, double opacity) const {
  QColor resolved = scheme_.of(color.role);
  if (color.role == ColorRole::rgb) {
    const auto channel = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    resolved = QColor::fromRgbF(channel(color.red), channel(color.green), channel(color.blue));
  }
  const double alpha = resolved.alphaF() * color.opacity * opacity;
  resolved.setAlphaF(static_cast<float>(std::clamp(alpha, 0.0, 1.0)));
  return resolved;
}

const Theme::KnownFont& Theme::known(const Font& font) {
  const std::tuple key(font.size, font.weight, font.monospacedDigits);
  const auto found = fonts_.find(key);
  if (found != fonts_.end()) return found->second;

  QFont made = applicationFont_;
  made.setPixelSize(std::max(1, static_cast<int>(std::lround(font.size))));
  made.setWeight(weightOf(font.weight));
  // Kerning moves digits closer together.
  if (font.monospacedDigits) made.setKerning(false);
  KnownFont& entry = fonts_.emplace(key, KnownFont(made)).first->second;
  if (font.monospacedDigits) entry.digitCell = widestDigitIfUneven(entry.metrics);
  return entry;
}

const QFont& Theme::font(const Font& font) {
  return known(font).font;
}

const QFontMetricsF& Theme::metrics(const Font& font) {
  return known(font).metrics;
}

std::optional<double> Theme::digitCell(const Font& font) {
  return known(font).digitCell;
}

QString Theme::text(const TextContent& content) const {
  if (!content.isKey) return QString::fromStdString(content.string);
  const std::string_view shown = catalogue_.text(content.string);
  if (content.arguments.empty()) {
    return QString::fromUtf8(shown.data(), static_cast<qsizetype>(shown.size()));
  }
  const std::vector<TextArgument> arguments(content.arguments.begin(), content.arguments.end());
  return QString::fromStdString(formatText(shown, arguments));
}

QPixmap Theme::symbol(const std::string& name, double size, const QColor& color, double devicePixelRatio) {
  return pictures_.picture("symbols/" + name, size, size, color, devicePixelRatio);
}

QPixmap Theme::image(const std::string& name, double width, double height, const QColor& color,
                     double devicePixelRatio) {
  return pictures_.picture("images/" + name, width, height, color, devicePixelRatio);
}

QString withoutMnemonic(QString text) {
  return text.replace(u'&', QStringLiteral("&&"));
}

}  // namespace kestrune::ui::qt
