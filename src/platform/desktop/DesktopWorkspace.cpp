#include "platform/desktop/DesktopWorkspace.h"

#include <cerrno>
#include <csignal>

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFile>
#include <QStandardPaths>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/desktop/SessionBus.h"
#include "platform/desktop/SettingsCommand.h"

namespace kestrune::desktop {
namespace {

// Becomes the program, without anything that this process arranged for itself. Other threads may have held
// locks at the fork, so only async-signal-safe functions may be called here.
[[noreturn]] void become(char* const* command) {
  sigset_t none{};
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  std::signal(SIGPIPE, SIG_DFL);
  const int null = open("/dev/null", O_RDWR);
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(null, file);
  if (null > STDERR_FILENO) close(null);
  execv(command[0], command);
  _exit(EXIT_FAILURE);
}

// Starts the command as nobody's child, so that nobody has to wait for its end. False if it isn't installed.
// (QProcess::startDetached would pass on the signals that this process blocks.)
bool startDetached(CommandLine command) {
  const QString program = QStandardPaths::findExecutable(QString::fromStdString(command.front()));
  if (program.isEmpty()) return false;
  command.front() = QFile::encodeName(program).toStdString();
  std::vector<char*> pointers;
  pointers.reserve(command.size() + 1);
  for (auto& part : command) pointers.push_back(part.data());
  pointers.push_back(nullptr);

  const pid_t parent = fork();
  if (parent == 0) {
    setsid();
    if (fork() == 0) become(pointers.data());
    _exit(EXIT_SUCCESS);
  }
  while (parent > 0 && waitpid(parent, nullptr, 0) < 0 && errno == EINTR) {
  }
  return parent > 0;
}

// The address of a file whose path may be any bytes.
std::string fileURL(const platform::FileLocation& location) {
  const QByteArray path = QByteArray::fromStdString(location.path());
  return "file://" + path.toPercentEncoding("/").toStdString();
}

void startFirst(std::vector<CommandLine> commands) {
  for (auto& command : commands) {
    if (startDetached(std::move(command))) return;
  }
}

void openFolder(const std::string& url) {
  startFirst({{"xdg-open", url}, {"gio", "open", url}});
}

// A slow file manager may still do what it was asked for.
bool hasRefused(const QDBusPendingCall& answer) {
  const auto error = answer.error().type();
  return answer.isError() && error != QDBusError::NoReply && error != QDBusError::TimedOut;
}

// Calls the file manager, which the bus starts if need be. If it can't, `directory` is opened instead.
void askFileManager(const char* method, const std::string& url, const std::string& directory) {
  const auto bus = sessionBus();
  if (!bus) return openFolder(directory);
  const auto service = QStringLiteral("org.freedesktop.FileManager1");
  auto call = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/FileManager1"),
                                             service, QString::fromLatin1(method));
  call << QStringList{QString::fromStdString(url)} << QString();
  auto* const answer = new QDBusPendingCallWatcher(bus->asyncCall(call));
  QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer, [answer, directory] {
    answer->deleteLater();
    if (hasRefused(*answer)) openFolder(directory);
  });
}

}  // namespace

void DesktopWorkspace::open(const platform::FileLocation& directory) {
  askFileManager("ShowFolders", fileURL(directory), fileURL(directory));
}

void DesktopWorkspace::reveal(const platform::FileLocation& file) {
  askFileManager("ShowItems", fileURL(file), fileURL(file.parent()));
}

void DesktopWorkspace::openSettings(platform::SettingsPanel panel) {
  startFirst(settingsCommands(qgetenv("XDG_CURRENT_DESKTOP").toStdString(), panel));
}

}  // namespace kestrune::desktop
