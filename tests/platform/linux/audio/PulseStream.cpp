#include "PulseStream.h"

#include <cstdint>
#include <vector>

#include <gtest/gtest.h>
#include <pulse/pulseaudio.h>

#include "Eventually.h"

namespace kestrune::test {
namespace {

class Locked {
 public:
  explicit Locked(pa_threaded_mainloop* loop) : loop_(loop) { pa_threaded_mainloop_lock(loop); }
  ~Locked() { pa_threaded_mainloop_unlock(loop_); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;

 private:
  pa_threaded_mainloop* loop_;
};

void writeSilence(pa_stream* stream, std::size_t size, void*) {
  const std::vector<char> silence(size);
  pa_stream_write(stream, silence.data(), size, nullptr, 0, PA_SEEK_RELATIVE);
}

void dropRecorded(pa_stream* stream, std::size_t, void*) {
  const void* data = nullptr;
  std::size_t size = 0;
  while (pa_stream_peek(stream, &data, &size) == 0 && size > 0) pa_stream_drop(stream);
}

}  // namespace

PulseStream::PulseStream(Kind kind, const std::string& device)
    : loop_(pa_threaded_mainloop_new()),
      context_(pa_context_new(pa_threaded_mainloop_get_api(loop_), "test")) {
  pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
  pa_threaded_mainloop_start(loop_);
  const auto isConnected = [this] {
    const Locked locked(loop_);
    return pa_context_get_state(context_) == PA_CONTEXT_READY;
  };
  EXPECT_TRUE(eventually(isConnected));
  open(kind, device);
  EXPECT_TRUE(eventually([this] { return isReady(); }));
}

void PulseStream::open(Kind kind, const std::string& device) {
  const Locked locked(loop_);
  // A level meter asks for as many samples as it paints pictures.
  const std::uint32_t rate = kind == Kind::levelMeter ? 25 : 44100;
  const pa_sample_spec format{.format = PA_SAMPLE_S16LE, .rate = rate, .channels = 1};
  stream_ = pa_stream_new(context_, "test", &format, nullptr);
  if (kind == Kind::playback) {
    pa_stream_set_write_callback(stream_, writeSilence, nullptr);
    pa_stream_connect_playback(stream_, device.c_str(), nullptr, PA_STREAM_NOFLAGS, nullptr, nullptr);
  } else {
    const auto flags = kind == Kind::levelMeter ? PA_STREAM_PEAK_DETECT : PA_STREAM_NOFLAGS;
    pa_stream_set_read_callback(stream_, dropRecorded, nullptr);
    pa_stream_connect_record(stream_, device.c_str(), nullptr, flags);
  }
}

PulseStream::~PulseStream() {
  pa_threaded_mainloop_stop(loop_);
  pa_stream_disconnect(stream_);
  pa_stream_unref(stream_);
  pa_context_disconnect(context_);
  pa_context_unref(context_);
  pa_threaded_mainloop_free(loop_);
}

void PulseStream::cork(bool isCorked) {
  const Locked locked(loop_);
  pa_operation_unref(pa_stream_cork(stream_, isCorked ? 1 : 0, nullptr, nullptr));
}

bool PulseStream::isReady() const {
  const Locked locked(loop_);
  return pa_stream_get_state(stream_) == PA_STREAM_READY;
}

}  // namespace kestrune::test
