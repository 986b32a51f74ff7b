#pragma once

#include <memory>
#include <string>

struct pa_context;
struct pa_stream;
struct pa_threaded_mainloop;

namespace kestrune::test {

// A stream of the test's own process, for what no tool does.
class PulseStream {
 public:
  enum class Kind { playback, recording, levelMeter };

  // Returns when the stream is there; fails the test if it doesn't come. It begins uncorked.
  PulseStream(Kind kind, const std::string& device);
  ~PulseStream();
  PulseStream(const PulseStream&) = delete;
  PulseStream& operator=(const PulseStream&) = delete;

  void cork(bool isCorked);

 private:
  bool isReady() const;
  void open(Kind kind, const std::string& device);

  pa_threaded_mainloop* loop_;
  pa_context* context_;
  pa_stream* stream_ = nullptr;
};

}  // namespace kestrune::test
