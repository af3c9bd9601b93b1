// What this repository's provider promises beyond ventaro/data_provider.h, which applies to any
// provider with its keys. For programs that call libventaro.so itself.
#ifndef CONTRACT_OWN_PROVIDER_H
#define CONTRACT_OWN_PROVIDER_H

#include "promises.h"

namespace contract {

// On every platform, whatever fails.
const Promises& ownPromises();

// Those and more, for a platform whose functions do not fail, with a device name, in English.
const Promises& ownPromisesInEnglish();

// Call this before a list is returned. A list of one entry has a second record, without a text,
// that its count does not cover. A TV's framework leaks it; it is freed here so that leak checkers
// report only other leaks.
void freeUncovered(void** items, int count);

}  // namespace contract

#endif  // CONTRACT_OWN_PROVIDER_H
