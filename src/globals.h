// The provider's one set of objects. They are constructed when the library is loaded, call the
// platform from then on, and live until it is unloaded.
#ifndef VENTARO_GLOBALS_H
#define VENTARO_GLOBALS_H

#include <string>

#include "settings/CMobileDeviceTV.h"
#include "settings/CWiFiDirect.h"
#include "settings/CWiFiOnOff.h"
#include "settings/CWiredEAP.h"
#include "settings/DeviceNameListInterface.h"

// Names of projector features. No decision depends on them.
extern const std::string SOLVENA_FMS;
extern const std::string PROJECTOR_FMS;

extern DeviceNameListInterface devicenameInterface;
extern CMobileDeviceTV CMobileDeviceTVObj;
extern CWiFiOnOff CWiFiOnOffObj;
extern CWiFiDirect CWiFiDirectObj;
extern CWiredEAP CWiredEAPObj;

#endif  // VENTARO_GLOBALS_H
