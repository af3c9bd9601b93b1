// The messages about a JSON file written by the user.
#include "platform/host/json_file.h"

#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "platform/host/errors.h"
#include "platform_test.h"

namespace platform_tests {
namespace {

using platform::host::ConfigurationError;
using platform::host::JsonFile;

class AJsonFile : public PlatformTest {
 protected:
  // The message about a file of that content, without the file's name before it.
  std::string messageAbout(const std::string& content) const {
    return withoutName(write("file.json", content), [](const JsonFile& /*file*/) {});
  }

  // The message when `read` reads a file of that content.
  template <typename Read>
  std::string messageOf(const std::string& content, const Read& read) const {
    return withoutName(write("file.json", content), read);
  }

  template <typename Read>
  std::string withoutName(const std::string& path, const Read& read) const {
    try {
      read(JsonFile(path));
    } catch (const ConfigurationError& error) {
      const std::string message = error.what();
      EXPECT_TRUE(message.starts_with(path)) << message;
      return message.substr(path.size());
    }
    return "no error";
  }
};

TEST_F(AJsonFile, GivesItsMembers) {
  const JsonFile file(
      write("file.json",
            R"({"text": "é", "number": -5, "flag": true, "array": [1], "object": {"a": 1}})"));
  EXPECT_EQ(file.path(), folder() / "file.json");
  EXPECT_EQ(file.text(file.root(), "text"), "\u00e9");
  EXPECT_EQ(file.integer(file.root(), "number"), -5);
  EXPECT_TRUE(file.flag(file.root(), "flag"));
  EXPECT_EQ(file.array(file.root(), "array")[0].asInt(), 1);
  EXPECT_EQ(file.integer(file.dictionary(file.root(), "object"), "a"), 1);
}

TEST_F(AJsonFile, ThatIsMissingIsNamed) {
  EXPECT_EQ(withoutName(folder() / "missing.json", [](const JsonFile& /*file*/) {}),
            ": cannot be read: No such file or directory");
}

TEST_F(AJsonFile, ThatIsNoRegularFileIsRefusedAtOnce) {
  const std::string fifo = folder() / "fifo.json";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  EXPECT_EQ(withoutName(fifo, [](const JsonFile& /*file*/) {}),
            ": cannot be read: it is a FIFO, not a file");
  for (const char* device : {"/dev/zero", "/dev/null"}) {
    EXPECT_EQ(withoutName(device, [](const JsonFile& /*file*/) {}),
              ": cannot be read: it is a device, not a file");
  }
}

TEST_F(AJsonFile, HasAtMostAMebibyte) {
  const std::string content = R"({"text": "")";
  const std::string blanks((std::size_t{1} << 20) - content.size() - 1, ' ');
  EXPECT_EQ(messageAbout(content + blanks + "}"), "no error");
  EXPECT_EQ(messageAbout(content + blanks + " }"),
            ": cannot be read: it has more than 1048576 bytes");
}

TEST_F(AJsonFile, ThatIsAFolderCannotBeRead) {
  std::filesystem::create_directory(folder() / "folder.json");
  EXPECT_EQ(withoutName(folder() / "folder.json", [](const JsonFile& /*file*/) {}),
            ": cannot be read: Is a directory");
}

TEST_F(AJsonFile, BelowAFileCannotBeRead) {
  EXPECT_EQ(withoutName(write("file", "{}") + "/under.json", [](const JsonFile& /*file*/) {}),
            ": cannot be read: Not a directory");
}

TEST_F(AJsonFile, ThatIsNotJsonIsNamedWithItsLine) {
  EXPECT_EQ(messageAbout(""), ":1: Syntax error: value, object or array expected.");
  EXPECT_EQ(messageAbout("\n\nnonsense"), ":3: Syntax error: value, object or array expected.");
  EXPECT_EQ(messageAbout("{\n  \"a\": 1,\n  \"b\" 2\n}"),
            ":3: Missing ':' after object member name");
  EXPECT_EQ(messageAbout("{\n  \"a\": [1, 2\n"), ":3: Missing ',' or ']' in array declaration");
  EXPECT_EQ(messageAbout("{\"a\": 1\n,}"), ":2: Missing '}' or object member name");
}

TEST_F(AJsonFile, MayNotSayMoreThanStrictJsonSays) {
  EXPECT_EQ(messageAbout("{}\n{}"), ":2: Extra non-whitespace after JSON value.");
  EXPECT_EQ(messageAbout("{\"a\": 1,\n\"a\": 2}"), ":2: Duplicate key: 'a'");
  EXPECT_NE(messageAbout("// a comment\n{}"), "no error");
  EXPECT_NE(messageAbout("{\"a\": NaN}"), "no error");
}

TEST_F(AJsonFile, MustHoldAnObject) {
  EXPECT_EQ(messageAbout("[1, 2]"), ":1: expected an object");
  EXPECT_EQ(messageAbout("5"),
            ":1: A valid JSON document must be either an array or an object value.");
}

TEST_F(AJsonFile, ThatIsNestedTooDeepIsRefused) {
  EXPECT_EQ(messageAbout("{\"a\": " + std::string(100'000, '[')), ": nested too deep");
}

TEST_F(AJsonFile, WithoutAMemberIsNamedWithTheLineOfTheObject) {
  const auto readText = [](const JsonFile& file) { file.text(file.root(), "name"); };
  EXPECT_EQ(messageOf("\n{}", readText), ":2: member \"name\" is missing: expected a string");
  EXPECT_EQ(messageOf("{\n \"below\":\n {\n } }",
                      [](const JsonFile& file) {
                        file.flag(file.dictionary(file.root(), "below"), "on");
                      }),
            ":3: member \"on\" is missing: expected true or false");
}

TEST_F(AJsonFile, WithAMemberOfAnotherTypeIsNamedWithTheLineOfTheMember) {
  const std::string start = "{\n\n\"member\":\n";
  const auto text = [](const JsonFile& file) { file.text(file.root(), "member"); };
  EXPECT_EQ(messageOf(start + "5}", text), ":4: member \"member\": expected a string, found 5");
  EXPECT_EQ(messageOf(start + "null}", text),
            ":4: member \"member\": expected a string, found nothing");
  const auto number = [](const JsonFile& file) { file.integer(file.root(), "member"); };
  EXPECT_EQ(messageOf(start + "\"5\"}", number),
            ":4: member \"member\": expected an integer, found \"5\"");
  EXPECT_EQ(messageOf(start + "2.5}", number),
            ":4: member \"member\": expected an integer, found 2.5");
  EXPECT_EQ(messageOf(start + "2147483648}", number),
            ":4: member \"member\": expected an integer, found 2147483648");
  EXPECT_EQ(messageOf(start + "true}", number),
            ":4: member \"member\": expected an integer, found true");
  const auto flag = [](const JsonFile& file) { file.flag(file.root(), "member"); };
  EXPECT_EQ(messageOf(start + "0}", flag),
            ":4: member \"member\": expected true or false, found 0");
  const auto array = [](const JsonFile& file) { file.array(file.root(), "member"); };
  EXPECT_EQ(messageOf(start + "{\"a\": 1}}", array),
            ":4: member \"member\": expected an array, found {\"a\":1}");
  const auto dictionary = [](const JsonFile& file) { file.dictionary(file.root(), "member"); };
  EXPECT_EQ(messageOf(start + "[1, 2]}", dictionary),
            ":4: member \"member\": expected an object, found [1,2]");
}

TEST_F(AJsonFile, ShowsOfALongWrongValueItsBeginning) {
  EXPECT_EQ(messageOf("{\"member\": \"" + std::string(1000, 'x') + "\"}",
                      [](const JsonFile& file) { file.integer(file.root(), "member"); }),
            ":1: member \"member\": expected an integer, found \"" + std::string(59, 'x') + "...");
}

TEST_F(AJsonFile, HasNoMembersBelowWhatIsNoObject) {
  EXPECT_EQ(messageOf("{\"list\": [\n  5\n]}",
                      [](const JsonFile& file) {
                        file.text(file.array(file.root(), "list")[0], "name");
                      }),
            ":2: member \"name\": expected an object, found 5");
}

}  // namespace
}  // namespace platform_tests
