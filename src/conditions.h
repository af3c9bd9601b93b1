// What the menu depends on: the product and its state, read again each time. Callers hold
// ProviderMutex.
#ifndef VENTARO_CONDITIONS_H
#define VENTARO_CONDITIONS_H

// Whether the product has the business option.
bool IsB2BOptionSupported();

// Whether the screen is split in a multi-view mode that forbids changing the device name.
bool IsMultiViewControlMode();

// Despite its name, this tells whether the product falls under the energy regulation; it does not
// ask the radio. A flag that cannot be read counts as set.
bool IsWiFiON();

// Whether the TV may be given another name: not while the screen is split, and on a business
// product only by its administrator.
bool mayChangeDeviceName();

#endif  // VENTARO_CONDITIONS_H
