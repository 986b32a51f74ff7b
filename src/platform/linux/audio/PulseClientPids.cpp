#include "platform/linux/audio/PulseClientPids.h"

#include <unordered_set>
#include <utility>

#include "platform/linux/files/Directory.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"
#include "platform/linux/processes/PidStat.h"
#include "platform/linux/processes/ProcessFiles.h"

namespace kestrune::platform {

PulseClientPids::PulseClientPids(std::string root) : root_(std::move(root)) {}

std::int32_t PulseClientPids::pid(const PulseClient& client) {
  // The kernel vouches for the peer's pid; but the peer may be a server in between.
  if (client.peerPid > 0 && !client.isPeerProxy) return client.peerPid;
  if (client.claimedPid < 1 || client.isOnOtherMachine) return 0;

  const auto [entry, isNew] = known_.try_emplace(client.index);
  Known& known = entry->second;
  if (isNew || known.claimedPid != client.claimedPid || known.claimedBinary != client.claimedBinary) {
    known = {client.claimedPid, client.claimedBinary, resolve(client)};
  }
  return known.pid;
}

void PulseClientPids::retain(const std::vector<PulseClient>& clients) {
  std::unordered_set<std::uint32_t> indexes;
  for (const PulseClient& client : clients) indexes.insert(client.index);
  std::erase_if(known_, [&](const auto& entry) { return !indexes.contains(entry.first); });
}

std::int32_t PulseClientPids::resolve(const PulseClient& client) const {
  const std::string binary(withoutDeleted(client.claimedBinary));
  if (runs(client.claimedPid, binary)) return client.claimedPid;
  return binary.empty() ? 0 : findInSandbox(client.claimedPid, binary);
}

// Whether the process may be a program of that name; an empty name matches any.
bool PulseClientPids::runs(std::int32_t pid, const std::string& binary) const {
  const auto text = readFile(processFile(root_, pid, "stat"));
  const auto stat = text ? parsePidStat(*text) : std::nullopt;
  if (!stat || stat->isKernelThread) return false;
  if (binary.empty() || baseName(executableOf(root_, pid)) == binary) return true;
  // The executable may be hidden. The process name is not, but the kernel truncates it.
  return mayBeTruncated(stat->name) ? binary.starts_with(stat->name) : binary == stat->name;
}

std::int32_t PulseClientPids::findInSandbox(std::int32_t innerPid, const std::string& binary) const {
  for (const std::string& entry : entryNames(below(root_, "proc"))) {
    const auto pid = parseNumber<std::int32_t>(entry);
    if (!pid || *pid < 1 || !runs(*pid, binary)) continue;
    const auto status = readFile(processFile(root_, *pid, "status"));
    if (status && innermostPid(*status) == innerPid) return *pid;
  }
  return 0;
}

std::int32_t innermostPid(std::string_view status) {
  const std::string_view pids = lineAfter(status, "NSpid:\t");
  const auto lastTab = pids.rfind('\t');
  if (lastTab == std::string_view::npos) return 0;
  return parseNumber<std::int32_t>(pids.substr(lastTab + 1)).value_or(0);
}

}  // namespace kestrune::platform
