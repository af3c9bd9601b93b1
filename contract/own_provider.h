// What this repository's provider promises beyond ventaro/data_provider.h, which is for any
// provider with its keys. For those who call libventaro.so itself.
#ifndef CONTRACT_OWN_PROVIDER_H
#define CONTRACT_OWN_PROVIDER_H

#include "promises.h"

namespace contract {

// Over every platform, whatever fails.
const Promises& ownPromises();

// Those and more: over a platform whose functions do not fail, with a device name, in English.
const Promises& ownPromisesInEnglish();

// To be called before a list goes back. A list of one entry has a second record without a text,
// which no count covers. The framework of a TV loses it; here it is freed, so that the leaks that
// are found are others.
void freeUncovered(void** items, int count);

}  // namespace contract

#endif  // CONTRACT_OWN_PROVIDER_H
