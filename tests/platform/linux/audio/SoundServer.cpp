#include "SoundServer.h"

#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "Eventually.h"

namespace kestrune::test {
namespace {

namespace fs = std::filesystem;

// Also one that died leaves its socket behind.
bool isListening(const std::string& socketPath) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  EXPECT_LT(socketPath.size(), sizeof address.sun_path);
  socketPath.copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
  const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const bool isConnected = connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(fd);
  return isConnected;
}

class PulseAudio final : public SoundServer {
 public:
  void kill() override { daemon_.reset(); }
  ChildProcess& process() override { return *daemon_; }
  std::string addSink(const std::string& name, const std::string& description, int rate,
                      int channels) override {
    return loadModule({"module-null-sink", "sink_name=" + name, "rate=" + std::to_string(rate),
                       "channels=" + std::to_string(channels),
                       "sink_properties=device.description=" + description});
  }
  std::string addSource(const std::string& name, const std::string& description) override {
    return loadModule(
        {"module-null-source", "source_name=" + name, "description=" + description, "channels=1"});
  }

 protected:
  std::string question() const override { return "pactl info"; }
  void launch() override {
    // Without its own start file, and so without a look for hardware.
    daemon_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                                 "--disallow-exit", "--use-pid-file=no",
                                 "--load=module-native-protocol-unix"},
        session.log("pulseaudio"));
  }

 private:
  std::unique_ptr<ChildProcess> daemon_;
};

class PipeWire final : public SoundServer {
 public:
  void kill() override {
    pulse_.reset();
    manager_.reset();
    pipewire_.reset();
  }
  ChildProcess& process() override { return *pulse_; }
  std::string addSink(const std::string& name, const std::string& description, int rate,
                      int channels) override {
    return loadModule({"module-null-sink", "sink_name=" + name, "rate=" + std::to_string(rate),
                       "channels=" + std::to_string(channels),
                       "sink_properties=device.description=" + description});
  }
  std::string addSource(const std::string& name, const std::string& description) override {
    return loadModule({"module-null-sink", "media.class=Audio/Source/Virtual", "sink_name=" + name,
                       "sink_properties=device.description=" + description, "channel_map=mono"});
  }

 protected:
  // It begins to answer before its parts have found each other. The device that stands for none, where there
  // is no other, is the last to come.
  std::string question() const override { return "pactl set-default-sink auto_null"; }
  void launch() override {
    session.write(
        "config/wireplumber/main.lua.d/51-no-hardware.lua",
        "alsa_monitor.enabled = false\nv4l2_monitor.enabled = false\nlibcamera_monitor.enabled = false\n");
    session.write("config/wireplumber/bluetooth.lua.d/51-no-hardware.lua", "bluez_monitor.enabled = false\n");
    if (!bus_) bus_ = started({"dbus-daemon", "--session", "--nofork", "--address=" + busAddress()});
    pipewire_ = started({"pipewire"});
    // The others end when they find no server.
    const std::string socket = session.runtimeFolder() + "/pipewire-0";
    EXPECT_TRUE(eventually([&] { return isListening(socket); }));
    manager_ = started({"wireplumber"});
    pulse_ = started({"pipewire-pulse"});
  }

 private:
  std::string busAddress() const { return "unix:path=" + session.runtimeFolder() + "/bus"; }
  std::unique_ptr<ChildProcess> started(const std::vector<std::string>& command) {
    setenv("DBUS_SESSION_BUS_ADDRESS", busAddress().c_str(), 1);
    return std::make_unique<ChildProcess>(command, session.log(command.front()));
  }

  std::unique_ptr<ChildProcess> bus_;
  std::unique_ptr<ChildProcess> pipewire_;
  std::unique_ptr<ChildProcess> manager_;
  std::unique_ptr<ChildProcess> pulse_;
};

}  // namespace

PrivateSession::PrivateSession() {
  for (const char* name :
       {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "PULSE_SERVER", "PULSE_COOKIE",
        "PULSE_CLIENTCONFIG", "PULSE_RUNTIME_PATH", "PIPEWIRE_REMOTE", "PIPEWIRE_RUNTIME_DIR"}) {
    unsetenv(name);
  }
  setenv("LC_ALL", "C.UTF-8", 1);
  setenv("HOME", folder_.path().c_str(), 1);
  for (const auto& [name, folder] :
       {std::pair("XDG_RUNTIME_DIR", "run"), std::pair("XDG_CONFIG_HOME", "config"),
        std::pair("XDG_STATE_HOME", "state"), std::pair("XDG_CACHE_HOME", "cache")}) {
    const std::string path = folder_ / folder;
    fs::create_directory(path);
    fs::permissions(path, fs::perms::owner_all);
    setenv(name, path.c_str(), 1);
  }
  // Made by whichever of server and client comes first, and the server gives up where it comes second.
  fs::create_directory(folder_ / "run/pulse");
  fs::permissions(folder_ / "run/pulse", fs::perms::owner_all);
}

std::string PrivateSession::complaints() const {
  std::string all;
  for (const auto& entry : fs::directory_iterator(folder_.path())) {
    if (entry.path().extension() != ".log") continue;
    all += entry.path().filename().string() + ":\n" + folder_.read(entry.path().filename().string());
  }
  return all;
}

void SoundServer::start() {
  launch();
  const auto isAnswering = [this] { return std::system((question() + " >/dev/null 2>&1").c_str()) == 0; };
  EXPECT_TRUE(eventually(isAnswering)) << session.complaints();
}

std::string SoundServer::control(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "pactl");
  return outputOf(arguments);
}

std::string SoundServer::loadModule(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "load-module");
  std::string number = control(std::move(arguments));
  if (number.ends_with('\n')) number.pop_back();
  return number;
}

std::unique_ptr<ChildProcess> SoundServer::play(const std::string& sink) {
  return std::make_unique<ChildProcess>(
      std::vector<std::string>{"pacat", "--playback", "--raw", "--latency-msec=50", "--device=" + sink,
                               "/dev/zero"},
      session.log("pacat"));
}

std::unique_ptr<ChildProcess> SoundServer::record(const std::string& source) {
  return std::make_unique<ChildProcess>(
      std::vector<std::string>{"pacat", "--record", "--raw", "--latency-msec=50", "--device=" + source,
                               "/dev/null"},
      session.log("pacat"));
}

std::unique_ptr<SoundServer> makePulseAudio() {
  return std::make_unique<PulseAudio>();
}

std::unique_ptr<SoundServer> makePipeWire() {
  return std::make_unique<PipeWire>();
}

}  // namespace kestrune::test
