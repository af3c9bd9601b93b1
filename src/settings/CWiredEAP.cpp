#include "settings/CWiredEAP.h"

#include <cstdio>

#include "log.h"
#include "platform/config_store.h"

namespace {

constexpr char kChoiceKey[] = "db/menu/network/wiredeap";
constexpr int kRegisteredProfiles = 0;
constexpr int kEthernet = 2;

bool storedChoice() {
  int choice = 0;
  vconf_get_int(kChoiceKey, &choice);
  return choice != 0;
}

}  // namespace

CWiredEAP::CWiredEAP() {
  connection_create(&m_connection);
  m_GetConnectionProfile();
}

CWiredEAP::~CWiredEAP() {
  if (m_connection == nullptr) return;
  if (connection_destroy(m_connection) == 0) {
    LOG_MAIN("[connection_destroy success]");
  } else {
    LOG_MAIN("[Connection destroy fail]");
  }
  m_connection = nullptr;
}

int CWiredEAP::getInt(const char* /*key*/, int* value) {
  *value = storedChoice() ? 1 : 0;
  return *value;
}

int CWiredEAP::setInt(const char* key, int value) {
  // A value is a position in the list, so it means nothing before the list was first requested.
  if (value < 0 || value >= m_itemTexts.count()) {
    // Readers of the log know this failure by the device name's message.
    LOG_MAIN("set_device_name::status [0x%04x]", static_cast<unsigned>(-1));
    return -1;
  }
  if (value != 0) {
    m_EnableEAP();
  } else {
    m_DisableEAP();
  }
  const int result = vconf_set_int(kChoiceKey, value);
  if (result != 0) {
    LOG_MAIN("vconf KEY [%s] is fail value [%d]  and status=%d !!!!!!!!!!", key, value, result);
  }
  return result;
}

void CWiredEAP::m_GetConnectionProfile() {
  if (connection_get_profile_iterator(m_connection, kRegisteredProfiles, &m_profileIterator) != 0) {
    LOG_MAIN("Fail to get profile iterator\n");
    return;
  }
  while (connection_profile_iterator_has_next(m_profileIterator)) {
    if (connection_profile_iterator_next(m_profileIterator, &m_ethernetProfile) != 0) {
      LOG_MAIN("Fail to get profile handle\n");
      return;
    }
    int type = 0;
    if (connection_profile_get_type(m_ethernetProfile, &type) != 0) {
      LOG_MAIN("Fail to get profile type\n");
      return;
    }
    if (type == kEthernet) {
      LOG_MAIN("profile type ethernet");
      return;
    }
    m_ethernetProfile = nullptr;
  }
}

void CWiredEAP::m_EnableEAP() {
  if (m_ethernetProfile == nullptr) return;
  // Printed, not logged, here and below: people look for these two failures on standard output.
  if (connection_profile_enable_ethernet_eap(m_ethernetProfile, true) != 0) {
    std::puts("Failed to Enable EAP over Ethernet");
  }
}

void CWiredEAP::m_DisableEAP() {
  if (m_ethernetProfile == nullptr) return;
  if (connection_profile_enable_ethernet_eap(m_ethernetProfile, false) != 0) {
    std::puts("Failed to disable EAP over Ethernet");
  }
}

void CWiredEAP::fillList() {
  m_itemTexts.fill();
}

const char** CWiredEAP::getListItems(const char* /*key*/, int* count) {
  fillList();
  LOG_MAIN("listSize==%d\n", m_itemTexts.count());
  return m_itemTexts.copy(count);
}

void CWiredEAP::setOnOffStatus(char** text) {
  putOnOffText(storedChoice(), text);
}
