// The platform log: a file of lines.
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "platform/config_store.h"
#include "platform/log.h"
#include "platform_test.h"
#include "process.h"

namespace platform_tests {
namespace {

constexpr int kOther = 1;
constexpr std::size_t kMebibyte = std::size_t{1} << 20;

class PlatformLog : public PlatformTest {
 protected:
  // What the lines say, without time and process.
  std::vector<std::string> texts() const {
    std::vector<std::string> found;
    for (const std::string& line : linesOf(logFile())) {
      const auto process = line.find(' ') + 1;
      found.push_back(line.substr(line.find(' ', process) + 1));
    }
    return found;
  }

  static int log(const std::string& message) {
    return __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "TAG", "%s", message.c_str());
  }
};

TEST_F(PlatformLog, HasInEachLineTheTimeTheProcessTheBufferTheTagAndTheMessage) {
  EXPECT_EQ(__dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "TAG", "%s is %d", "five", 5), 9);
  const auto lines = linesOf(logFile());
  ASSERT_EQ(lines.size(), 1U);
  const std::regex form(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3} (\d+) main TAG: five is 5)");
  std::smatch match;
  ASSERT_TRUE(std::regex_match(lines[0], match, form)) << lines[0];
  EXPECT_EQ(match[1], std::to_string(getpid()));
}

TEST_F(PlatformLog, NamesTheBuffers) {
  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "TAG", "a");
  __dlog_print(PLATFORM_LOG_SYSTEM, PLATFORM_LOG_INFO, "TAG", "b");
  __dlog_print(kOther, PLATFORM_LOG_INFO, "TAG", "c");
  EXPECT_EQ(texts(), (std::vector<std::string>{"main TAG: a", "system TAG: b", "other TAG: c"}));
}

TEST_F(PlatformLog, HasOneLinePerCallWhateverTheTextHolds) {
  log("one\ntwo\n\nthree\n\n");
  log("\n");
  log("");
  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "A\nTAG\n", "text");
  EXPECT_EQ(texts(), (std::vector<std::string>{"main TAG: one two  three",
                                               "main TAG: ", "main TAG: ", "main A TAG: text"}));
}

TEST_F(PlatformLog, TakesATextAsItIs) {
  const std::vector<std::string> messages = {"{} {0} {name} }{", "100 % %s %n", "\u00fcber \uac70",
                                             "back\\slash"};
  for (const std::string& message : messages) EXPECT_GE(log(message), 0);
  std::vector<std::string> expected;
  for (const std::string& message : messages) expected.push_back("main TAG: " + message);
  EXPECT_EQ(texts(), expected);
}

TEST_F(PlatformLog, ShowsWhatATerminalWouldObeyAndWhatIsNoCharacter) {
  const std::string message = "\x1b[31m\tred\u009b\u202e cut \xed\x95";
  EXPECT_EQ(log(message), static_cast<int>(message.size()));
  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "T\rAG", "text");
  EXPECT_EQ(texts(), (std::vector<std::string>{R"(main TAG: \u001b[31m\u0009red\u009b\u202e cut )"
                                               "\ufffd\ufffd",
                                               R"(main T\u000dAG: text)"}));
}

TEST_F(PlatformLog, TakesAFormatWithoutArguments) {
  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "TAG", "plain 100%% {}");
  EXPECT_EQ(texts(), std::vector<std::string>{"main TAG: plain 100% {}"});
}

TEST_F(PlatformLog, TakesNullPointers) {
  const char* volatile none = nullptr;
  EXPECT_GE(__dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "TAG", "null is %s", none), 0);
  EXPECT_GE(__dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, none, "no tag"), 0);
  // Hides the format from the compiler's check.
  int (*const print)(int, int, const char*, const char*, ...) = &__dlog_print;
  EXPECT_LT(print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "TAG", nullptr), 0);
  EXPECT_EQ(texts(), (std::vector<std::string>{"main TAG: null is (null)", "main -: no tag"}));
}

TEST_F(PlatformLog, TakesAMessageOfAnyLength) {
  for (const std::size_t size : {std::size_t{255}, std::size_t{4096}, 2 * kMebibyte}) {
    const std::string message(size, 'x');
    EXPECT_EQ(log(message), static_cast<int>(size));
    EXPECT_EQ(texts().back(), "main TAG: " + message);
  }
}

TEST_F(PlatformLog, KeepsThreeOldFiles) {
  const std::string half(kMebibyte / 2, 'x');
  for (int i = 0; i < 20; ++i) log(std::to_string(i) + half);
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(stateFolder() / "log")) {
    files.push_back(entry.path().filename());
    EXPECT_LE(entry.file_size(), kMebibyte);
  }
  std::ranges::sort(files);
  EXPECT_EQ(files, (std::vector<std::string>{"platform.1.log", "platform.2.log", "platform.3.log",
                                             "platform.log"}));
  EXPECT_TRUE(texts().back().starts_with("main TAG: 19x"));
}

TEST_F(PlatformLog, HasTheWholeLinesOfAllThreads) {
  constexpr int kLines = 500;
  std::vector<std::thread> threads;
  for (const char letter : {'a', 'b', 'c', 'd'}) {
    threads.emplace_back([letter] {
      for (int i = 0; i < kLines; ++i) log(std::string(100, letter));
    });
  }
  for (std::thread& thread : threads) thread.join();
  const auto lines = texts();
  for (const char letter : {'a', 'b', 'c', 'd'}) {
    EXPECT_EQ(std::ranges::count(lines, "main TAG: " + std::string(100, letter)), kLines);
  }
}

TEST_F(PlatformLog, HasTheWholeLinesOfAllProcesses) {
  constexpr int kLines = 500;
  const auto write = [](char letter) {
    return [letter](Channel& /*test*/) {
      for (int i = 0; i < kLines; ++i) log(std::string(100, letter));
    };
  };
  Process first(write('a'));
  Process second(write('b'));
  first.join();
  second.join();
  const auto lines = texts();
  for (const char letter : {'a', 'b'}) {
    EXPECT_EQ(std::ranges::count(lines, "main TAG: " + std::string(100, letter)), kLines);
  }
}

TEST_F(PlatformLog, GoesToStandardErrorWhenAsked) {
  setenv("VENTARO_LOG", "stderr", 1);
  testing::internal::CaptureStderr();
  log("seen live");
  const std::string output = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(output.ends_with(" main TAG: seen live\n")) << output;
  EXPECT_FALSE(std::filesystem::exists(logFile()));
}

TEST_F(PlatformLog, GoesToItsFileWhenAnUnknownPlaceIsAskedFor) {
  setenv("VENTARO_LOG", "somewhere", 1);
  log("text");
  EXPECT_EQ(texts(), std::vector<std::string>{"main TAG: text"});
}

TEST_F(PlatformLog, ThatCannotBeWrittenCostsNothing) {
  write("state/log", "a file in the way");
  log("lost");
  EXPECT_NE(vconf_set_int("", 1), 0);
  EXPECT_EQ(vconf_set_int("db/key", 1), 0);
  EXPECT_EQ(readFile(stateFolder() / "log"), "a file in the way");
}

TEST_F(PlatformLog, InAFolderOfAnotherUserCostsNothing) {
  std::filesystem::create_directory(stateFolder());
  std::filesystem::permissions(stateFolder(), std::filesystem::perms(0555));
  inOwnProcess([] {
    becomeOrdinaryUser();
    log("lost");
  });
  EXPECT_FALSE(std::filesystem::exists(logFile()));
}

TEST_F(PlatformLog, ThatIsALinkAPipeOrAFolderIsNotWrittenAndStandardErrorSaysSo) {
  std::filesystem::create_directories(stateFolder() / "log");
  const std::string target = write("target", "left as it is");
  const auto expectRefused = [&](const std::string& reason) {
    inOwnProcess([&] {
      testing::internal::CaptureStderr();
      log("lost");
      EXPECT_EQ(testing::internal::GetCapturedStderr(),
                "ventaro: no log is kept: " + logFile().string() + reason + "; move it away\n");
    });
    std::filesystem::remove(logFile());
  };
  std::filesystem::create_symlink(target, logFile());
  expectRefused(" is a link");
  ASSERT_EQ(mkfifo(logFile().c_str(), 0600), 0);
  expectRefused(" is not a file");
  std::filesystem::create_directory(logFile());
  expectRefused(" is not a file");
  EXPECT_EQ(readFile(target), "left as it is");
}

TEST_F(PlatformLog, InAFolderThatIsALinkIsNotWritten) {
  std::filesystem::create_directories(stateFolder());
  std::filesystem::create_directory(folder() / "elsewhere");
  std::filesystem::create_directory_symlink(folder() / "elsewhere", stateFolder() / "log");
  log("lost");
  EXPECT_TRUE(std::filesystem::is_empty(folder() / "elsewhere"));
}

TEST_F(PlatformLog, ThatOthersCouldReadIsTheUsersAloneFromThenOn) {
  write("state/log/platform.log", "of an earlier version\n");
  std::filesystem::permissions(logFile(), std::filesystem::perms(0644));
  log("text");
  EXPECT_EQ(std::filesystem::status(logFile()).permissions(), std::filesystem::perms(0600));
  EXPECT_EQ(linesOf(logFile()).size(), 2U);
}

TEST_F(PlatformLog, OnAFullDiskCostsNothing) {
  inOwnProcess([] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1000, 1000};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    for (int i = 0; i < 100; ++i) log("a line of some length");
  });
  EXPECT_LE(std::filesystem::file_size(logFile()), 1000U);
  EXPECT_EQ(texts().front(), "main TAG: a line of some length");
}

}  // namespace
}  // namespace platform_tests
