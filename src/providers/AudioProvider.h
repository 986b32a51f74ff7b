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

// Takes a census of the sound service, off the main thread, again and again. Its failures are published as
// emptiness. Main thread only.
class AudioProvider : public std::enable_shared_from_this<AudioProvider> {
 public:
  struct Services {
    platform::AudioService& audio;  // used in the lane only, as is `applications`
    platform::Applications& applications;
    WorkLane& lane;
  };

  // Reads nothing. Loop and services must outlive the provider and the lane's work.
  AudioProvider(MainLoop& loop, const Services& services);
  // Ends the polling.
  ~AudioProvider();
  AudioProvider(const AudioProvider&) = delete;
  AudioProvider& operator=(const AudioProvider&) = delete;

  // Begins the loop, which reads first and then sleeps for the interval; readings never overlap.
  void start(Duration interval);

  Published<AudioSnapshot> current;  // empty until the first reading is there
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
