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

constexpr int firstLookMilliseconds = 150;

enum class Asleep : std::uint8_t { leave, start };

QDBusMessage readAll(Asleep portal) {
  auto question =
      QDBusMessage::createMethodCall(portalName, portalPath, settingsInterface, QStringLiteral("ReadAll"));
  question << QStringList(appearance);
  question.setAutoStartService(portal == Asleep::start);
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

// A colour with a part out of range says that there is none.
std::optional<std::array<double, 3>> accentIn(const QVariant& value) {
  if (!value.canConvert<QDBusArgument>()) return std::nullopt;
  const auto argument = value.value<QDBusArgument>();
  if (argument.currentSignature() != QLatin1String("(ddd)")) return std::nullopt;
  std::array<double, 3> color{};
  argument.beginStructure();
  for (double& part : color) argument >> part;
  argument.endStructure();
  const auto isPart = [](double part) { return part >= 0 && part <= 1; };
  return std::ranges::all_of(color, isPart) ? std::optional(color) : std::nullopt;
}

// Absent: it is no answer to the question.
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
  // No sender is given, since the library would wait for the bus to tell who that is.
  bus_.connect(QString(), portalPath, settingsInterface, QStringLiteral("SettingChanged"), {appearance},
               QString(), this, SLOT(look()));
  followOwner(bus_, portalName, this, SLOT(lookAtNewOwner(QString, QString, QString)));
  const auto answer = bus_.call(readAll(Asleep::leave), QDBus::Block, firstLookMilliseconds);
  if (const auto first = appearanceIn(answer)) {
    current_ = *first;
  } else {
    adoptAnswer(readAll(Asleep::start));
  }
}

void DesktopAppearance::look() {
  adoptAnswer(readAll(Asleep::leave));
}

// One that has gone is not called back.
void DesktopAppearance::lookAtNewOwner(const QString&, const QString&, const QString& now) {
  if (!now.isEmpty()) look();
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
