#include "texts.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "fake_platform.h"
#include "language.h"

namespace {

// A folder of this process, gone when the process ends.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = std::filesystem::temp_directory_path() / "ventaro-texts-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder " + pattern);
    path_ = pattern;
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

void addNumber(std::string& bytes, std::size_t number) {
  const auto word = static_cast<std::uint32_t>(number);
  bytes.append(reinterpret_cast<const char*>(&word), sizeof(word));
}

// A compiled catalogue, as msgfmt writes it without a hash table: a header of seven numbers, the
// places of the IDs in their order, the places of the texts, and then all of these.
std::string compiled(const std::map<std::string, std::string>& texts) {
  constexpr std::size_t kHeaderSize = 7 * sizeof(std::uint32_t);
  const std::size_t tableSize = texts.size() * 2 * sizeof(std::uint32_t);
  std::string ids;
  std::string translations;
  std::string heap;
  const auto addPlace = [&](std::string& table, const std::string& text) {
    addNumber(table, text.size());
    addNumber(table, kHeaderSize + 2 * tableSize + heap.size());
    heap += text;
    heap += '\0';
  };
  for (const auto& [id, text] : texts) {
    addPlace(ids, id);
    addPlace(translations, text);
  }
  std::string bytes;
  addNumber(bytes, 0x950412de);
  addNumber(bytes, 0);
  addNumber(bytes, texts.size());
  addNumber(bytes, kHeaderSize);
  addNumber(bytes, kHeaderSize + tableSize);
  addNumber(bytes, 0);
  addNumber(bytes, kHeaderSize + 2 * tableSize);
  return bytes + ids + translations + heap;
}

}  // namespace

// A new language in a new folder each time, because gettext caches what it has read.
void useTexts(const std::map<std::string, std::string>& texts) {
  static const TemporaryFolder folder;
  static int number = 0;
  const std::string language = "written" + std::to_string(++number);
  std::map<std::string, std::string> all = texts;
  all[""] = "Content-Type: text/plain; charset=UTF-8\n";

  const std::filesystem::path root = folder.path() / language;
  const std::filesystem::path directory = root / "res" / "locale" / language / "LC_MESSAGES";
  std::filesystem::create_directories(directory);
  std::ofstream(directory / "ventaro.mo", std::ios::binary) << compiled(all);
  fake_platform::setResourceRoot(root);
  useLanguage(language);
}
