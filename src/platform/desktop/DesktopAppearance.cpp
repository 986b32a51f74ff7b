#include "platform/desktop/DesktopAppearance.h"

#include <algorithm>
#include <utility>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QMap>
#include <QStringList>
#include <QVariantMap>

#include "platform/desktop/SessionBus.h"

namespace kestrune::desktop {
namespace {

const auto portalName = QStringLiteral("org.freedesktop.portal.Desktop");
const auto portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const auto appearance = QStringLiteral("org.freedesktop.appearance");

constexpr int firstAnswerMilliseconds = 150;

enum class AutoStart : std::uint8_t { no, yes };

QDBusMessage readAll(AutoStart autoStart) {
  auto question =
      QDBusMessage::createMethodCall(portalName, portalPath, settingsInterface, QStringLiteral("ReadAll"));
  question << QStringList(appearance);
  question.setAutoStartService(autoStart == AutoStart::yes);
  return question;
}

Appearance::Scheme schemeIn(const QVariant& value) {
  switch (value.toUInt()) {
    case 1:
      return Appearance::Scheme::dark;
    case 2:
      return Appearance::Scheme::light;
    default:
      return Appearance::Scheme::noPreference;
  }
}

// Components out of range mean that no accent is set.
std::optional<std::array<double, 3>> accentIn(const QVariant& value) {
  if (!value.canConvert<QDBusArgument>()) return std::nullopt;
  const auto argument = value.value<QDBusArgument>();
  if (argument.currentSignature() != QLatin1String("(ddd)")) return std::nullopt;
  std::array<double, 3> color{};
  argument.beginStructure();
  for (double& component : color) argument >> component;
  argument.endStructure();
  const auto isInRange = [](double component) { return component >= 0 && component <= 1; };
  return std::ranges::all_of(color, isInRange) ? std::optional(color) : std::nullopt;
}

// Absent: an error, or an answer of another type.
std::optional<Appearance> appearanceIn(const QDBusMessage& answer) {
  if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != QLatin1String("a{sa{sv}}")) {
    return std::nullopt;
  }
  const auto all = qdbus_cast<QMap<QString, QVariantMap>>(answer.arguments().constFirst());
  const QVariantMap settings = all.value(appearance);
  return Appearance{.scheme = schemeIn(settings.value(QStringLiteral("color-scheme"))),
                    .accent = accentIn(settings.value(QStringLiteral("accent-color")))};
}

}  // namespace

DesktopAppearance::DesktopAppearance(QDBusConnection bus, std::function<void()> changed)
    : bus_(std::move(bus)), changed_(std::move(changed)) {
  // With a sender given, Qt would block to look up its owner.
  bus_.connect(QString(), portalPath, settingsInterface, QStringLiteral("SettingChanged"), {appearance},
               QString(), this, SLOT(refresh()));
  followOwner(bus_, portalName, this, SLOT(ownerChanged(QString, QString, QString)));
  const auto answer = bus_.call(readAll(AutoStart::no), QDBus::Block, firstAnswerMilliseconds);
  if (const auto first = appearanceIn(answer)) {
    current_ = *first;
  } else {
    adoptAnswer(readAll(AutoStart::yes));
  }
}

void DesktopAppearance::refresh() {
  adoptAnswer(readAll(AutoStart::no));
}

void DesktopAppearance::ownerChanged(const QString&, const QString&, const QString& now) {
  if (!now.isEmpty()) refresh();
}

void DesktopAppearance::adoptAnswer(const QDBusMessage& question) {
  auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    answer->deleteLater();
    if (const auto next = appearanceIn(answer->reply())) adopt(*next);
  });
}

void DesktopAppearance::adopt(const Appearance& next) {
  if (std::exchange(current_, next) != next) changed_();
}

}  // namespace kestrune::desktop
