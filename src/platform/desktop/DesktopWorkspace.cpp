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

#include "platform/desktop/OpeningCommand.h"
#include "platform/desktop/SessionBus.h"

namespace kestrune::desktop {
namespace {

// Goes on as the program, with nothing of what this process arranged for itself. Other threads may have held
// locks when this process was copied, so that only what is safe in a signal handler may be called here.
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

// Starts it as nobody's child, so that nobody has to wait for its end. False if it isn't installed. (The
// library's own way would hand down which signals this process blocks.)
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

void openAddress(const std::string& url) {
  const std::string desktops = qgetenv("XDG_CURRENT_DESKTOP").toStdString();
  for (auto& command : openingCommands(desktops, url)) {
    if (startDetached(std::move(command))) return;
  }
}

// One that is slow may still do what it was asked for.
bool hasRefused(const QDBusPendingCall& answer) {
  const auto error = answer.error().type();
  return answer.isError() && error != QDBusError::NoReply && error != QDBusError::TimedOut;
}

// Calls the file manager, which may have to be started first. Where it can't, `directory` is opened.
void askFileManager(const char* method, const std::string& url, const std::string& directory) {
  const auto bus = sessionBus();
  if (!bus) return openAddress(directory);
  const auto service = QStringLiteral("org.freedesktop.FileManager1");
  auto call = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/FileManager1"),
                                             service, QString::fromLatin1(method));
  call << QStringList{QString::fromStdString(url)} << QString();
  auto* const answer = new QDBusPendingCallWatcher(bus->asyncCall(call));
  QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer, [answer, directory] {
    answer->deleteLater();
    if (hasRefused(*answer)) openAddress(directory);
  });
}

}  // namespace

void DesktopWorkspace::open(const platform::FileLocation& directory) {
  askFileManager("ShowFolders", fileURL(directory), fileURL(directory));
}

void DesktopWorkspace::reveal(const platform::FileLocation& file) {
  askFileManager("ShowItems", fileURL(file), fileURL(file.parent()));
}

void DesktopWorkspace::openURL(const std::string& url) {
  openAddress(url);
}

}  // namespace kestrune::desktop
