#include "platform/desktop/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QThread>
#include <QVariantMap>

#include "platform/desktop/SessionBus.h"

namespace kestrune::desktop {
namespace {

constexpr int answerMilliseconds = 3000;
const auto serviceName = QStringLiteral("org.kestrune.Kestrune");
const auto objectPath = QStringLiteral("/org/kestrune/Kestrune");
const auto interfaceName = QStringLiteral("org.freedesktop.Application");
const auto activateMethod = QStringLiteral("Activate");
const auto activateActionMethod = QStringLiteral("ActivateAction");
const auto settingsAction = QStringLiteral("settings");
const auto tokenKey = QStringLiteral("activation-token");
constexpr int maxTries = 3;

// An instance that has lost the name saves its data and leaves the bus when it exits.
void awaitExit(const QDBusConnection& bus, const QString& instance) {
  QElapsedTimer waited;
  waited.start();
  while (bus.interface()->isServiceRegistered(instance) && waited.elapsed() < answerMilliseconds) {
    QThread::msleep(10);
  }
}

// Whether no other instance has the name; also true if the bus refuses the name to everyone.
bool takeName(const QDBusConnection& bus, SingleInstance::Start start) {
  const bool isHeadless = start == SingleInstance::Start::headless;
  const QString before = bus.interface()->serviceOwner(serviceName);
  const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
      bus.interface()->registerService(serviceName,
                                       isHeadless ? QDBusConnectionInterface::DontQueueService
                                                  : QDBusConnectionInterface::ReplaceExistingService,
                                       isHeadless ? QDBusConnectionInterface::AllowReplacement
                                                  : QDBusConnectionInterface::DontAllowReplacement);
  if (!reply.isValid()) return true;
  if (reply.value() != QDBusConnectionInterface::ServiceRegistered) return false;
  if (!before.isEmpty()) awaitExit(bus, before);
  return true;
}

QDBusMessage activation() {
  auto call = QDBusMessage::createMethodCall(serviceName, objectPath, interfaceName, activateMethod);
  QVariantMap data;
  const QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
  if (!token.isEmpty()) data.insert(tokenKey, token);
  call << data;
  call.setAutoStartService(false);
  return call;
}

}  // namespace

// The org.freedesktop.Application interface, without its method for opening files.
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

  // Any program on the bus may call, with any arguments.
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    const bool isAction = message.member() == activateActionMethod;
    const bool isKnown = message.interface().isEmpty() || message.interface() == interfaceName;
    if (!isKnown || (!isAction && message.member() != activateMethod)) return false;
    const QVariantList arguments = message.arguments();
    const auto expected = isAction ? QStringLiteral("sava{sv}") : QStringLiteral("a{sv}");
    if (message.signature() != expected || (isAction && arguments[0].toString() != settingsAction)) {
      connection.send(message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such action")));
      return true;
    }
    connection.send(message.createReply());
    const auto data = qdbus_cast<QVariantMap>(arguments[isAction ? 2 : 0]);
    activate_(isAction ? Request::settings : Request::window, data.value(tokenKey).toString());
    return true;
  }

 private:
  Activate activate_;
};

SingleInstance::SingleInstance(Activate activate, std::function<void()> makeRoom)
    : service_(std::make_unique<Service>(std::move(activate))), makeRoom_(std::move(makeRoom)) {}

SingleInstance::~SingleInstance() = default;

SingleInstance::Outcome SingleInstance::claim(Start start) {
  auto bus = sessionBus();
  if (!bus) return Outcome::first;
  // Before the name, so that nobody finds the name without the object.
  bus->registerVirtualObject(objectPath, service_.get());
  if (start == Start::headless) {
    QObject::connect(bus->interface(), &QDBusConnectionInterface::serviceUnregistered, service_.get(),
                     [this](const QString& name) {
                       if (name == serviceName) makeRoom_();
                     });
  }
  for (int i = 0; i < maxTries; ++i) {
    if (takeName(*bus, start)) return Outcome::first;
    if (start == Start::quiet) return Outcome::otherRuns;
    const QDBusMessage answer = bus->call(activation(), QDBus::Block, answerMilliseconds);
    if (answer.type() == QDBusMessage::ReplyMessage) return Outcome::otherRuns;
    if (QDBusError(answer).type() == QDBusError::NoReply) break;
    // The other instance may just have exited.
  }
  return Outcome::otherDoesNotAnswer;
}

void SingleInstance::release() {
  if (auto bus = sessionBus()) bus->unregisterService(serviceName);
}

}  // namespace kestrune::desktop
