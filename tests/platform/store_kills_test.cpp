// Writers that are killed again and again, at random moments.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "platform/config_store.h"
#include "platform_test.h"
#include "process.h"

namespace platform_tests {
namespace {

constexpr int kRounds = 1000;
constexpr int kKeys = 20;  // of each writer

// What a writer's keys hold: the number of the last write that was acknowledged; 0 for none.
using Acknowledged = std::array<int, kKeys>;

std::string keyOf(int writer, int index) {
  return "db/writer" + std::to_string(writer) + "/" + std::to_string(index);
}

// Small and large ones, so that a kill falls into transactions of every size.
std::string valueOf(int number) {
  return std::to_string(number) + ":" + std::string(number % 5 == 0 ? 20'000U : 10U, 'v');
}

// What is stored under the key, as the number of its write; 0 when there is nothing.
int storedNumber(const std::string& key) {
  const auto value = store().get(key);
  if (!value) return 0;
  const auto text = std::get<std::string>(*value);
  const int number = std::stoi(text);
  EXPECT_TRUE(text == valueOf(number)) << key << " holds what nobody wrote";
  return number;
}

// A write in progress may have completed too, so the stored one may be later than the last
// acknowledged one.
void expectNothingLost(int writer, const Acknowledged& acknowledged) {
  for (int i = 0; i < kKeys; ++i) {
    EXPECT_GE(storedNumber(keyOf(writer, i)), acknowledged.at(static_cast<std::size_t>(i)))
        << keyOf(writer, i);
  }
}

// Writes for ever, and reports the number of each finished write.
class Writer {
 public:
  Writer(int writer, const Acknowledged& acknowledged)
      : acknowledged_(acknowledged), process_([writer, acknowledged](Channel& test) {
          expectNothingLost(writer, acknowledged);
          const int last = *std::ranges::max_element(acknowledged);
          for (int number = last + 1; !testing::Test::HasFailure(); ++number) {
            const std::string key = keyOf(writer, number % kKeys);
            if (vconf_set_str(key.c_str(), valueOf(number).c_str()) == 0) {
              test.sendLine(std::to_string(number));
            }
          }
        }) {}

  // Waits for one more acknowledgement. False when the writer is gone.
  bool receiveLine() {
    const auto line = process_.channel().receiveLine();
    if (!line) return false;
    const int number = std::stoi(*line);
    acknowledged_.at(static_cast<std::size_t>(number % kKeys)) = number;
    return true;
  }

  // Kills it, reads the rest of its output, and returns what it has acknowledged.
  const Acknowledged& kill() {
    process_.kill();
    while (receiveLine()) {
    }
    return acknowledged_;
  }

 private:
  Acknowledged acknowledged_;
  Process process_;
};

class Kills : public PlatformTest {};

TEST_F(Kills, LoseNothingThatWasAcknowledgedAndHoldNobodyUp) {
  std::mt19937 random(20261120);
  std::vector<std::unique_ptr<Writer>> writers;
  for (const int i : {0, 1}) writers.push_back(std::make_unique<Writer>(i, Acknowledged{}));
  for (int round = 0; round < kRounds; ++round) {
    const int victim = static_cast<int>(random() % 2);
    auto& killed = writers[static_cast<std::size_t>(victim)];
    auto& survivor = writers[static_cast<std::size_t>(1 - victim)];
    for (auto count = random() % 6; count > 0; --count) {
      ASSERT_TRUE(killed->receiveLine());
      ASSERT_TRUE(survivor->receiveLine());
    }
    // At some moment during its next write.
    for (auto spins = random() % 500'000; spins > 0; --spins) asm volatile("");
    const Acknowledged acknowledged = killed->kill();
    ASSERT_TRUE(survivor->receiveLine()) << "a lock stays held after round " << round;
    killed = std::make_unique<Writer>(victim, acknowledged);
  }
  for (const int i : {0, 1}) {
    const Acknowledged acknowledged = writers[static_cast<std::size_t>(i)]->kill();
    inOwnProcess([&] { expectNothingLost(i, acknowledged); });
  }
  store().set("db/afterwards", 1);
}

}  // namespace
}  // namespace platform_tests
