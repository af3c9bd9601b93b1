// The fixtures of the tests of what CProductUtil fills into texts.
#ifndef PRODUCT_TEXTS_TEST_H
#define PRODUCT_TEXTS_TEST_H

#include <vector>

#include "product_test.h"
#include "texts.h"

inline constexpr char kToken[] = "<<A>>";
inline constexpr std::size_t kSize = 2048;
inline constexpr std::size_t kMost = kSize - 1;

inline std::string repeated(const std::string& text, std::size_t size) {
  std::string result;
  while (result.size() < size) result += text;
  return result;
}

class ReplaceText : public Product {
 protected:
  // The text that comes back in a buffer of zeroes.
  static std::string replaced(const std::string& text, const std::string& replacement,
                              const char* token = kToken, std::size_t size = kSize) {
    std::vector<char> buffer(size);
    clearJournal();
    CProductUtil::ReplaceText(buffer.data(), text.c_str(), token, replacement.c_str(), size);
    EXPECT_EQ(buffer.back(), '\0');
    return buffer.data();
  }

  static Journal lines(const std::string& original, const std::string& replaced,
                       const std::string& result) {
    return {mainLog("original text:" + original), mainLog("replaced text:" + replaced),
            mainLog("result text:" + result)};
  }
};

class AddProductName : public Product {
 protected:
  // The text with the name of a television that is called so.
  static std::string named(const std::string& name, std::string text) {
    callTelevision(name);
    clearJournal();
    CProductUtil::AddProductNameInSID(text);
    return text;
  }

  static void callTelevision(const std::string& name) {
    setFlags(kTv);
    useTexts({{"COM_SID_TV", name}});
    bindCatalogues();
  }
};

#endif  // PRODUCT_TEXTS_TEST_H
