// The document in which the network service publishes the saved networks, as tests write it, and
// the journal of reading it.
#ifndef SAVED_NETWORK_DOCUMENT_H
#define SAVED_NETWORK_DOCUMENT_H

#include <string>
#include <vector>

#include "fake_platform.h"

inline constexpr char kSavedNetworksKey[] = "db/menu/network/TopSavedAP";

// An element of the document. The texts are put between quotes unchanged: JSON escapes are up to
// the test.
inline std::string network(const std::string& ssid, int strength, const std::string& status) {
  return R"({"SSID": ")" + ssid + R"(", "SIGNAL_STRENGTH": )" + std::to_string(strength) +
         R"(, "STATUS": ")" + status + R"("})";
}

// A document of these elements with this count.
inline std::string document(const std::string& count, const std::vector<std::string>& elements) {
  std::string values;
  for (const std::string& element : elements) values += (values.empty() ? "" : ", ") + element;
  return R"({"count": )" + count + R"(, "values": [)" + values + "]}";
}
inline std::string document(int count, const std::vector<std::string>& elements) {
  return document(std::to_string(count), elements);
}

// What is logged for a network, both when it is read and when its name or status is asked for.
inline fake_platform::Journal::Piece networkLog(const std::string& ssid,
                                                const std::string& status) {
  return fake_platform::mainLog(" AP Name = " + ssid + " status = " + status + " ");
}

// A document of two networks, and its reading.
inline const std::string kHomeAndOffice =
    document(2, {network("Home", -60, "Connected"), network("Office", -80, "Saved")});

inline fake_platform::Journal readingHomeAndOffice() {
  return {fake_platform::call("vconf_get_str", kSavedNetworksKey), networkLog("Home", "Connected"),
          networkLog("Office", "Saved")};
}

// A document of one network, and its reading.
inline const std::string kHomeOnly = document(1, {network("Home", -60, "Connected")});

inline fake_platform::Journal readingHomeOnly() {
  return {fake_platform::call("vconf_get_str", kSavedNetworksKey), networkLog("Home", "Connected")};
}

#endif  // SAVED_NETWORK_DOCUMENT_H
