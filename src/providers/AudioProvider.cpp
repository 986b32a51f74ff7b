#include "providers/AudioProvider.h"

#include <utility>

namespace kestrune {

AudioProvider::AudioProvider(MainLoop& loop, const Services& services) : loop_(loop), services_(services) {}

AudioProvider::~AudioProvider() {
  pollTask_.cancel();
}

void AudioProvider::start(Duration interval) {
  pollTask_.cancel();
  pollTask_ = poll(loop_, weak_from_this(), services_, interval);
}

bool AudioProvider::isDue(const std::weak_ptr<AudioProvider>& provider) {
  const auto strong = provider.lock();
  return strong && !strong->paused;
}

Task AudioProvider::poll(MainLoop&, std::weak_ptr<AudioProvider> provider, Services services,
                         Duration interval) {
  while (!co_await isCancelled()) {
    if (isDue(provider)) {
      auto read = [services] { return audioSnapshot(services.audio.census(), services.applications); };
      AudioSnapshot snapshot = co_await background(services.lane, std::move(read));
      if (const auto strong = provider.lock()) strong->publish(std::move(snapshot));
    }
    co_await sleep(interval);
  }
}

void AudioProvider::publish(AudioSnapshot snapshot) {
  current.set(std::move(snapshot));
  history.modify([&](auto& ring) { ring.append({loop_.clock().now(), *current}); });
}

}  // namespace kestrune
