#include "platform/linux/audio/PulseConnection.h"

#include <algorithm>

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/mainloop.h>
#include <pulse/operation.h>

#include "platform/linux/audio/PulseCopies.h"

namespace kestrune::platform {
namespace {

constexpr const char* ownName = "Kestrune";

// Called by the library for each item of a list and once more at the end, without an item. `list` is the
// vector that collects the copies.
template <typename Info>
void append(pa_context*, const Info* info, int end, void* list) {
  using Copy = decltype(pulseCopy(*info));
  if (end == 0 && info != nullptr) static_cast<std::vector<Copy>*>(list)->push_back(pulseCopy(*info));
}

void copyDefaults(pa_context*, const pa_server_info* info, void* facts) {
  if (info != nullptr) copyPulseDefaults(*info, *static_cast<PulseFacts*>(facts));
}

}  // namespace

void PulseConnection::FreeLoop::operator()(pa_mainloop* loop) const {
  pa_mainloop_free(loop);
}

void PulseConnection::CloseContext::operator()(pa_context* context) const {
  pa_context_disconnect(context);
  pa_context_unref(context);
}

void PulseConnection::CancelOperation::operator()(pa_operation* operation) const {
  pa_operation_cancel(operation);
  pa_operation_unref(operation);
}

PulseConnection::~PulseConnection() {
  disconnect();
}

std::optional<PulseFacts> PulseConnection::read(Deadline deadline) {
  processPending(deadline);
  if (!isReady() && !connect(deadline)) {
    disconnect();
    return std::nullopt;
  }
  PulseFacts facts;
  Operations operations = ask(facts);
  const auto isAnswered = [&] {
    return std::ranges::none_of(operations, [](const auto& operation) {
      return pa_operation_get_state(operation.get()) == PA_OPERATION_RUNNING;
    });
  };
  const bool isWhole = iterateUntil(isAnswered, deadline) && isReady();
  operations.clear();
  if (isWhole) return facts;
  disconnect();
  return std::nullopt;
}

bool PulseConnection::isReady() const {
  return context_ && pa_context_get_state(context_.get()) == PA_CONTEXT_READY;
}

bool PulseConnection::connect(Deadline deadline) {
  disconnect();
  ++connectionNumber_;
  loop_.reset(pa_mainloop_new());
  if (!loop_) return false;
  context_.reset(pa_context_new(pa_mainloop_get_api(loop_.get()), ownName));
  if (!context_) return false;
  if (pa_context_connect(context_.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) return false;
  return iterateUntil([this] { return isReady(); }, deadline);
}

void PulseConnection::disconnect() {
  context_.reset();
  loop_.reset();
}

// If the server has exited since the last read, this is where its closed socket is noticed.
void PulseConnection::processPending(Deadline deadline) {
  while (isReady() && iterate(0) > 0 && std::chrono::steady_clock::now() < deadline) {
  }
}

template <typename Condition>
bool PulseConnection::iterateUntil(Condition isDone, Deadline deadline) {
  while (!isDone()) {
    if (PA_CONTEXT_IS_GOOD(pa_context_get_state(context_.get())) == 0) return false;
    const auto left =
        std::chrono::ceil<std::chrono::microseconds>(deadline - std::chrono::steady_clock::now());
    constexpr std::chrono::microseconds maxWait = std::chrono::minutes(1);
    if (left.count() <= 0 || iterate(static_cast<int>(std::min(left, maxWait).count())) < 0) return false;
  }
  return true;
}

// Runs the library's loop once, waiting at most `microseconds`. Below 0: failure; 0: nothing happened.
int PulseConnection::iterate(int microseconds) {
  pa_mainloop* const loop = loop_.get();
  if (pa_mainloop_prepare(loop, microseconds) < 0 || pa_mainloop_poll(loop) < 0) return -1;
  return pa_mainloop_dispatch(loop);
}

// Sends all queries at once, so that they take one round trip.
PulseConnection::Operations PulseConnection::ask(PulseFacts& facts) {
  pa_context* const context = context_.get();
  Operations operations;
  const auto add = [&](pa_operation* operation) {
    if (operation != nullptr) operations.emplace_back(operation);
  };
  add(pa_context_get_server_info(context, copyDefaults, &facts));
  add(pa_context_get_sink_info_list(context, append<pa_sink_info>, &facts.sinks));
  add(pa_context_get_source_info_list(context, append<pa_source_info>, &facts.sources));
  add(pa_context_get_client_info_list(context, append<pa_client_info>, &facts.clients));
  add(pa_context_get_sink_input_info_list(context, append<pa_sink_input_info>, &facts.playing));
  add(pa_context_get_source_output_info_list(context, append<pa_source_output_info>, &facts.recording));
  return operations;
}

}  // namespace kestrune::platform
