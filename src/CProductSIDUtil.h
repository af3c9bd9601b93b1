// What kind of product this is, and the product's words in translated texts.
#ifndef VENTARO_CPRODUCTSIDUTIL_H
#define VENTARO_CPRODUCTSIDUTIL_H

#include <cstddef>
#include <string>

// Stateless: the feature flags are read again on every call. Callers hold ProviderMutex.
class CProductUtil {
 public:
  // The values are not consecutive: callers distinguish only 0, 1 and everything else.
  enum ProductType : int {
    PRODUCT_TYPE_SCREEN = 0,  // tunerless
    PRODUCT_TYPE_TV = 1,
    PRODUCT_TYPE_ORLEX = 3,  // modular large display, first generation
    PRODUCT_TYPE_PROJECTOR = 6,
    PRODUCT_TYPE_NON_MICRO_LED = 7,  // modular large display, second generation
    PRODUCT_TYPE_SMART_MONITOR = 8,
  };

  // Help texts are cut to this size in bytes, NUL included.
  static constexpr std::size_t kTextSize = 2048;

  static bool IsProductTunerless();

  // Returns a ProductType, and puts the translated product name into `productName`.
  static int GetProductType(std::string& productName);

  // Fills the token "<<A>>" of a text with the product name. "<<B>>" and "<<C>>" stand for words
  // that this product line does not have, and stay as they are.
  static void AddProductNameInSID(std::string& text);

  // The same without changing `text`: returns `text` itself if it has no such token, otherwise a
  // copy in `filled`.
  static const char* WithProductName(const char* text, std::string& filled);

  // The string ID of the device's name, untranslated.
  static std::string GetDeviceNameString();

  // Replaces every occurrence of `token` in `text`, also those that a replacement brings in, and
  // copies the first `size` - 1 bytes of the result into `buffer`, which holds `size` zeroes. Ends
  // also when a replacement brings the token in for ever. `text` and `replacement` must not be
  // null: std::logic_error.
  static void ReplaceText(char* buffer, const char* text, const char* token,
                          const char* replacement, std::size_t size);
};

#endif  // VENTARO_CPRODUCTSIDUTIL_H
