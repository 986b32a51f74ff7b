#include <gmock/gmock.h>

#include "platform/linux/network/NetDev.h"

namespace kestrune::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* header =
    "Inter-|   Receive                                                |  Transmit\n"
    " face |bytes    packets errs drop fifo frame compressed multicast|bytes    packets errs drop fifo colls "
    "carrier compressed\n";

// A line as the kernel prints it.
std::string line(const std::string& name, const std::string& received, const std::string& sent) {
  return name + ":" + received + " 2 3 4 5 6 7 8 " + sent + " 10 11 12 13 14 15 16\n";
}

// "name received sent", or "name -" for an interface without counters.
std::vector<std::string> parsed(const std::string& text) {
  std::vector<std::string> lines;
  for (const auto& link : parseNetDev(text)) {
    const auto& counters = link.counters;
    lines.push_back(link.name + (counters ? " " + std::to_string(counters->received) + " " +
                                                std::to_string(counters->sent)
                                          : std::string(" -")));
  }
  return lines;
}

TEST(NetDevTest, namesMayBeOdd) {
  EXPECT_THAT(parsed(header), IsEmpty());
  EXPECT_THAT(parsed(line("eth0:1", "5", "6") + line("a|b", " 7", "8") + line("  \xff\x01\"", " 9", "1") +
                     line("123", "456", "7")),
              ElementsAre("eth0:1 5 6", "a|b 7 8", "\xff\x01\" 9 1", "123 456 7"));
}

TEST(NetDevTest, invalidLinesAreLeftOut) {
  const std::string whole = line("eth0", " 1", "2");
  for (const std::string bad :
       {"\n", ":\n", "garbage\n", "eth1: 1 2 3\n", "eth1: x 2 3 4 5 6 7 8 9\n",
        "eth1: 1 2 3 4 5 6 7 8 -9 1\n", ": 1 2 3 4 5 6 7 8 9 1\n", "blank : 1 2 3 4 5 6 7 8 9 1\n",
        "two words: 1 2 3 4 5 6 7 8 9 1\n", "eth1: 1a 2 3 4 5 6 7 8 9 1\n"}) {
    EXPECT_THAT(parsed(bad + whole), ElementsAre("eth0 1 2")) << bad;
  }
  const std::string last = line("eth1", " 3", "4");
  for (std::size_t length = 0; length < last.size(); ++length) {
    EXPECT_THAT(parsed(whole + last.substr(0, length)), ElementsAre("eth0 1 2")) << length;
  }
}

TEST(NetDevTest, implausibleCountersAreAbsent) {
  EXPECT_THAT(parsed(line("a", " 18446744073709551616", "1") + line("b", " 1", "18446744073709551615") +
                     line("c", " 99999999999999999999999999", "99999999999999999999999999") +
                     line("d", " 1152921504606846976", "1") + line("e", " 1152921504606846977", "1")),
              ElementsAre("a -", "b -", "c -", "d 1152921504606846976 1", "e -"));
}

}  // namespace
}  // namespace kestrune::platform
