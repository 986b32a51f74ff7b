#pragma once

#include <memory>

#include "platform/Applications.h"
#include "platform/AudioService.h"
#include "providers/AudioSnapshot.h"
#include "providers/HistoryRing.h"
#include "runtime/Published.h"
#include "runtime/Task.h"
#include "runtime/WorkLane.h"

namespace kestrune {

// Polls the sound service off the main thread. A failed reading is published as an empty snapshot. Main
// thread only.
class AudioProvider : public std::enable_shared_from_this<AudioProvider> {
 public:
  struct Services {
    // Both are used in the lane only.
    platform::AudioService& audio;
    platform::Applications& applications;
    WorkLane& lane;
  };

  // Reads nothing. Loop and services must outlive the provider and the lane's work.
  AudioProvider(MainLoop& loop, const Services& services);
  // Stops polling.
  ~AudioProvider();
  AudioProvider(const AudioProvider&) = delete;
  AudioProvider& operator=(const AudioProvider&) = delete;

  // Starts the loop, which reads and then sleeps for the interval. Readings never overlap.
  void start(Duration interval);

  Published<AudioSnapshot> current;  // empty until the first reading
  Published<HistoryRing<AudioSnapshot>> history{HistoryRing<AudioSnapshot>(60)};
  bool paused = false;  // the polling loop skips its readings while set

 private:
  static bool isDue(const std::weak_ptr<AudioProvider>& provider);
  static Task poll(MainLoop& loop, std::weak_ptr<AudioProvider> provider, Services services,
                   Duration interval);
  void publish(AudioSnapshot snapshot);

  MainLoop& loop_;
  Services services_;
  Task pollTask_;
};

}  // namespace kestrune
