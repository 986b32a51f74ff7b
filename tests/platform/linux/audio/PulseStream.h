#pragma once

#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <pulse/pulseaudio.h>

#include "support/Eventually.h"

namespace kestrune::test {

// A stream of the test's own process, for what no command-line tool does. It starts uncorked.
class PulseStream {
  template <class Action>
  auto locked(Action action) const {
    pa_threaded_mainloop_lock(loop_);
    const std::unique_ptr<pa_threaded_mainloop, void (*)(pa_threaded_mainloop*)> lock(
        loop_, pa_threaded_mainloop_unlock);
    return action();
  }
  template <class Condition>
  void waitFor(Condition condition) const {
    EXPECT_TRUE(eventually([&] { return locked(condition); }));
  }

 public:
  enum class Kind { playback, recording, levelMeter };

  PulseStream(Kind kind, const std::string& device) {
    pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    pa_threaded_mainloop_start(loop_);
    waitFor([this] { return pa_context_get_state(context_) == PA_CONTEXT_READY; });
    locked([&] { stream_ = opened(kind, device); });
    waitFor([this] { return pa_stream_get_state(stream_) == PA_STREAM_READY; });
  }
  ~PulseStream() {
    pa_threaded_mainloop_stop(loop_);
    pa_stream_disconnect(stream_);
    pa_stream_unref(stream_);
    pa_context_disconnect(context_);
    pa_context_unref(context_);
    pa_threaded_mainloop_free(loop_);
  }
  PulseStream(const PulseStream&) = delete;
  PulseStream& operator=(const PulseStream&) = delete;

  void cork(bool isCorked) {
    pa_operation_unref(locked([&] { return pa_stream_cork(stream_, isCorked ? 1 : 0, nullptr, nullptr); }));
  }

 private:
  pa_stream* opened(Kind kind, const std::string& device) const {
    // A level meter asks for as many samples as it draws frames.
    const std::uint32_t rate = kind == Kind::levelMeter ? 25 : 44100;
    const pa_sample_spec format{.format = PA_SAMPLE_S16LE, .rate = rate, .channels = 1};
    pa_stream* const stream = pa_stream_new(context_, "test", &format, nullptr);
    if (kind == Kind::playback) {
      pa_stream_connect_playback(stream, device.c_str(), nullptr, PA_STREAM_NOFLAGS, nullptr, nullptr);
    } else {
      const auto flags = kind == Kind::levelMeter ? PA_STREAM_PEAK_DETECT : PA_STREAM_NOFLAGS;
      pa_stream_connect_record(stream, device.c_str(), nullptr, flags);
    }
    return stream;
  }

  pa_threaded_mainloop* loop_ = pa_threaded_mainloop_new();
  pa_context* context_ = pa_context_new(pa_threaded_mainloop_get_api(loop_), "test");
  pa_stream* stream_ = nullptr;
};

}  // namespace kestrune::test
