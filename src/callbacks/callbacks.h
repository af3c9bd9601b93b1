// What the callbacks share: the lock, and the functions that fill the table's slots. The callbacks
// themselves are internal to their files.
#ifndef VENTARO_CALLBACKS_H
#define VENTARO_CALLBACKS_H

#include <mutex>

#include "ventaro/data_provider.h"

// Serialises the callbacks and guards the provider's objects. Not recursive: no callback calls
// another.
extern constinit std::mutex ProviderMutex;
using ProviderLock = std::lock_guard<std::mutex>;

void installValueCallbacks(data_provider_cbs& table);
void installListCallbacks(data_provider_cbs& table);
void installDisplayNameCallbacks(data_provider_cbs& table);
void installHelpTextCallbacks(data_provider_cbs& table);
void installStringValueCallbacks(data_provider_cbs& table);
void installIconPathCallbacks(data_provider_cbs& table);
void installMessageBoxCallbacks(data_provider_cbs& table);

#endif  // VENTARO_CALLBACKS_H
