#include "platform/linux/files/KeptFile.h"

#include <fcntl.h>
#include <unistd.h>

namespace kestrune::platform {
namespace {

constexpr std::size_t firstBufferSize = 4096;
constexpr std::size_t maxBufferSize = std::size_t{1} << 22U;

}  // namespace

std::optional<std::string_view> KeptFile::read() {
  if (file_) {
    if (const auto text = readOnce()) return text;
  }
  file_ = UniqueFd(open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file_) return std::nullopt;
  auto text = readOnce();
  if (!text) file_ = UniqueFd();
  return text;
}

std::optional<std::string_view> KeptFile::readOnce() {
  if (buffer_.empty()) buffer_.resize(firstBufferSize);
  std::size_t length = 0;
  while (true) {
    // The kernel generates the text again for offset 0; later offsets continue that text.
    const ssize_t size =
        pread(file_.get(), buffer_.data() + length, buffer_.size() - length, static_cast<off_t>(length));
    if (size < 0) return std::nullopt;
    length += static_cast<std::size_t>(size);
    if (size == 0) return std::string_view(buffer_.data(), length);
    if (length < buffer_.size()) continue;
    if (buffer_.size() >= maxBufferSize) return std::nullopt;
    buffer_.resize(buffer_.size() * 2);
  }
}

}  // namespace kestrune::platform
