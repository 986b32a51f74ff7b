#include "SoundServer.h"

#include <cstdlib>

#include "support/Eventually.h"

namespace kestrune::test {
namespace fs = std::filesystem;

PrivateSession::PrivateSession() {
  for (const char* name :
       {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "PULSE_SERVER", "PULSE_COOKIE",
        "PULSE_CLIENTCONFIG", "PULSE_RUNTIME_PATH", "PIPEWIRE_REMOTE", "PIPEWIRE_RUNTIME_DIR"}) {
    unsetenv(name);
  }
  setenv("LC_ALL", "C.UTF-8", 1);
  setenv("HOME", folder.path().c_str(), 1);
  for (const auto& [name, directory] :
       {std::pair("XDG_RUNTIME_DIR", "run"), std::pair("XDG_CONFIG_HOME", "config"),
        std::pair("XDG_STATE_HOME", "state"), std::pair("XDG_CACHE_HOME", "cache")}) {
    fs::create_directory(folder / directory);
    setenv(name, (folder / directory).c_str(), 1);
  }
  // Created by whichever of server and client comes first, and the server gives up if it comes second.
  fs::create_directory(folder / "run/pulse");
  for (const char* directory : {"run", "run/pulse"})
    fs::permissions(folder / directory, fs::perms::owner_all);
}

std::unique_ptr<ChildProcess> PrivateSession::start(const std::string& program,
                                                    const std::string& arguments) const {
  return std::make_unique<ChildProcess>(program + " " + arguments, folder / (program + ".log"));
}

void SoundServer::launchPipeWire() {
  const auto configure = [this](const std::string& file, const std::string& text) {
    session_.folder.write("config/wireplumber/" + file + ".lua.d/51-no-hardware.lua", text);
  };
  configure(
      "main",
      "alsa_monitor.enabled = false\nv4l2_monitor.enabled = false\nlibcamera_monitor.enabled = false\n");
  configure("bluetooth", "bluez_monitor.enabled = false\n");
  const std::string address = "unix:path=" + session_.runtimeFolder() + "/bus";
  setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
  if (!bus_) bus_ = session_.start("dbus-daemon", "--session --nofork --address=" + address);
  processes_.push_back(session_.start("pipewire"));
  // The others exit if they find no server.
  EXPECT_TRUE(eventually([] { return std::system("pw-cli info 0 >/dev/null 2>&1") == 0; }));
  for (const char* other : {"wireplumber", "pipewire-pulse"}) processes_.push_back(session_.start(other));
}

void SoundServer::start() {
  std::string command = "pactl info";
  if (kind_ == Kind::pipeWire) {
    launchPipeWire();
    // The server answers before its parts have found each other. The dummy device is the last to appear.
    command = "pactl set-default-sink auto_null";
  } else {
    // Without its own start file, and so without a search for hardware.
    processes_.push_back(
        session_.start("pulseaudio",
                       "-n --daemonize=no --exit-idle-time=-1 --disallow-exit --use-pid-file=no"
                       " --load=module-native-protocol-unix"));
  }
  command += " >/dev/null 2>&1";
  EXPECT_TRUE(eventually([&] { return std::system(command.c_str()) == 0; })) << session_.complaints();
}

void SoundServer::kill() {
  while (!processes_.empty()) processes_.pop_back();
}

std::string SoundServer::control(const std::string& arguments) {
  std::string output = outputOf("pactl " + arguments);
  if (output.ends_with('\n')) output.pop_back();
  return output;
}

std::string SoundServer::addSink(const std::string& name, const std::string& description, int rate,
                                 int channels) const {
  return control("load-module module-null-sink sink_name=" + name + " rate=" + std::to_string(rate) +
                 " channels=" + std::to_string(channels) +
                 " sink_properties=device.description=" + description);
}

void SoundServer::addSource(const std::string& name, const std::string& description) const {
  if (kind_ == Kind::pulseAudio) {
    control("load-module module-null-source channels=1 source_name=" + name + " description=" + description);
  } else {
    control("load-module module-null-sink media.class=Audio/Source/Virtual channel_map=mono sink_name=" +
            name + " sink_properties=device.description=" + description);
  }
}

std::unique_ptr<ChildProcess> SoundServer::play(const std::string& sink) const {
  return session_.start("pacat", "--playback --raw --latency-msec=50 --device=" + sink + " /dev/zero");
}

std::unique_ptr<ChildProcess> SoundServer::record(const std::string& source) const {
  return session_.start("pacat", "--record --raw --latency-msec=50 --device=" + source + " /dev/null");
}

}  // namespace kestrune::test
