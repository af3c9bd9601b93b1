#include "globals.h"

// They share one file because the order is part of the behaviour: each constructor may call the
// platform.
std::vector<std::string> DeviceNameListInterface::m_DevicenameList;
std::string DeviceNameListInterface::m_DefaultDeviceName;
bool DeviceNameListInterface::m_IsFillDeviceNameList = false;

const std::string SOLVENA_FMS = "com.norvane/featureconf/projector.engine_type";
const std::string PROJECTOR_FMS = "com.norvane/featureconf/projector_feature_support";

DeviceNameListInterface devicenameInterface;
CMobileDeviceTV CMobileDeviceTVObj;
CWiFiOnOff CWiFiOnOffObj;
CWiFiDirect CWiFiDirectObj;
CWiredEAP CWiredEAPObj;
