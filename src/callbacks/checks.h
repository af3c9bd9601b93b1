// What the checks and other callbacks ask about the product and its state. Callers hold
// ProviderMutex.
#ifndef VENTARO_CHECKS_H
#define VENTARO_CHECKS_H

// Whether the product has the business option.
bool IsB2BOptionSupported();

// Whether the screen is split in a multi-view mode in which the device name must not change.
bool IsMultiViewControlMode();

// In spite of its name, whether the product falls under the energy regulation: it reads no radio. A
// flag that cannot be read counts as set.
bool IsWiFiON();

#endif  // VENTARO_CHECKS_H
