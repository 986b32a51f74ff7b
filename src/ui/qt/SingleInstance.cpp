#include "ui/qt/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QVariantMap>

#include "platform/desktop/SessionBus.h"

namespace kestrune::ui::qt {
namespace {

constexpr int answerMilliseconds = 3000;
const auto serviceName = QStringLiteral("org.kestrune.Kestrune");
const auto objectPath = QStringLiteral("/org/kestrune/Kestrune");
const auto interfaceName = QStringLiteral("org.freedesktop.Application");
const auto activateMethod = QStringLiteral("Activate");
const auto activateActionMethod = QStringLiteral("ActivateAction");
const auto settingsAction = QStringLiteral("settings");
const auto tokenKey = QStringLiteral("activation-token");

}  // namespace

// The freedesktop interface of a running application, as far as a program without files has one.
class SingleInstance::Service final : public QDBusVirtualObject {
 public:
  explicit Service(Activate activate) : activate_(std::move(activate)) {}

  QString introspect(const QString&) const override {
    return QStringLiteral(
        "<interface name=\"org.freedesktop.Application\">"
        "<method name=\"Activate\"><arg type=\"a{sv}\" name=\"platform_data\" direction=\"in\"/></method>"
        "<method name=\"ActivateAction\"><arg type=\"s\" name=\"action_name\" direction=\"in\"/>"
        "<arg type=\"av\" name=\"parameter\" direction=\"in\"/>"
        "<arg type=\"a{sv}\" name=\"platform_data\" direction=\"in\"/></method>"
        "</interface>");
  }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    const QVariantList arguments = message.arguments();
    const bool isAction = message.member() == activateActionMethod;
    if (!isAction && message.member() != activateMethod) return false;
    if (isAction && arguments.value(0).toString() != settingsAction) {
      connection.send(message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such action")));
      return true;
    }
    connection.send(message.createReply());
    const auto data = qdbus_cast<QVariantMap>(arguments.value(isAction ? 2 : 0));
    activate_(isAction ? Request::settings : Request::window, data.value(tokenKey).toString());
    return true;
  }

 private:
  Activate activate_;
};

SingleInstance::SingleInstance(Activate activate)
    : service_(std::make_unique<Service>(std::move(activate))) {}

SingleInstance::~SingleInstance() = default;

SingleInstance::Outcome SingleInstance::claim() {
  auto bus = desktop::sessionBus();
  if (!bus) return Outcome::first;
  // The object is there before the name, so that nobody finds the name without it.
  bus->registerVirtualObject(objectPath, service_.get());
  if (bus->registerService(serviceName)) return Outcome::first;

  auto call = QDBusMessage::createMethodCall(serviceName, objectPath, interfaceName, activateMethod);
  QVariantMap data;
  const QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
  if (!token.isEmpty()) data.insert(tokenKey, token);
  call << data;
  const QDBusMessage answer = bus->call(call, QDBus::Block, answerMilliseconds);
  return answer.type() == QDBusMessage::ReplyMessage ? Outcome::otherCameForward
                                                     : Outcome::otherDoesNotAnswer;
}

void SingleInstance::release() {
  if (auto bus = desktop::sessionBus()) bus->unregisterService(serviceName);
}

}  // namespace kestrune::ui::qt
