#include "setting_test.h"

IntAnswer SettingTest::get(int preset) const {
  clearJournal();
  return getInt(key_, preset);
}

int SettingTest::set(int value) const {
  clearJournal();
  return setInt(key_, value);
}

OwnedText SettingTest::text() const {
  clearJournal();
  return stringValue(key_);
}

OptionList SettingTest::list() const {
  clearJournal();
  return listItems(key_);
}

Journal SettingTest::aroundGetInt(int result, const Journal& object) const {
  const std::string preset = std::to_string(kPreset);
  return {mainLog("START"),
          locks(),
          systemLog("Key ---->" + std::string(key_) + "::Value------>" + preset + "\n"),
          object,
          systemLog("status------>" + std::to_string(result) + "\n"),
          mainLog("END"),
          unlocks()};
}

Journal SettingTest::aroundSetInt(int value, const Journal& object) const {
  return {
      mainLog("START"),
      locks(),
      systemLog("Key ---->" + std::string(key_) + "::Value------>" + std::to_string(value) + "\n"),
      object,
      mainLog("END"),
      unlocks()};
}

Journal SettingTest::aroundGetString(const std::string& text, const Journal& object) const {
  return {locks(),        mainLog("START"),
          object,         mainLog(std::string(object_) + ".setOnOffStatus==" + text),
          mainLog("END"), unlocks()};
}

Journal SettingTest::aroundGetListItems(const Journal& object) const {
  return {locks(), mainLog("START"), mainLog("Key ---->" + std::string(key_) + "::\n"), object,
          unlocks()};
}

Journal fromCall(const Journal& journal, const Journal::Piece& call, int n) {
  Journal found;
  int toGo = n;
  for (const std::string& line : journal.lines()) {
    if (toGo > 0 && line == call.lines.front()) --toGo;
    if (toGo == 0) found.add(line);
  }
  return found;
}
