// Calls every callback that takes a key with every key that the provider knows, with all their
// prefixes, with longer keys, and with keys in other letter case. every_key_table.cpp says what
// answers, every_key_answers.cpp how.
#include <set>
#include <string>

#include "every_key_answers.h"
#include "provider_test.h"

namespace {

class EveryKey : public ProviderTest {
 protected:
  // No two answers are equal.
  void SetUp() override {
    ProviderTest::SetUp();
    useLanguage("none");
    store().set("db/menu/network/devicename/default_tv_name", "TV One");
    store().set("db/menu_widget/language", "en");
    store().set("db/menu/network/wiredeap", 1);
    store().set("memory/multiscreen/state", "{}");
    flags().setBool("setting.eu_energy_regulation", false);
    setWakeOnMobile(true);
    publish(2);
    create();
    listItems("menu/network/WiredEAP");    // otherwise the wired switch refuses every value
    displayName("menu/network/SavedAP1");  // from here on the saved networks are watched
    startAnew();
  }

  // Restores what setting a value may have changed.
  static void startAnew() {
    store().set(kTvName, "TV Two");
    setRadio(1);
    setWakeOnMobile(true);
    store().set("db/menu/network/wiredeap", 1);
    clearJournal();
  }

  static void publish(int networks) {
    store().set(kDocument,
                R"({"count": )" + std::to_string(networks) +
                    R"(, "values": [{"SSID": "Net One", "SIGNAL_STRENGTH": -88, "STATUS": "a"},)"
                    R"( {"SSID": "Net Two", "SIGNAL_STRENGTH": -80, "STATUS": "Connecting"}]})");
  }

  // ---- check_enable_int ----

  Answer checkEnableInt(const std::string& key) const {
    clearJournal();
    const bool yes = entries().check_enable_int(key.c_str(), 1);
    return {yes ? "true" : "false", journal()};
  }

  // ---- get_int, set_int, get_string ----

  Answer getIntOf(const std::string& key) const {
    clearJournal();
    const IntAnswer answer = getInt(key.c_str());
    return {std::to_string(answer.result) + ", " + std::to_string(answer.value), journal()};
  }

  Answer setIntOf(const std::string& key) const {
    startAnew();
    const int result = setInt(key.c_str(), 0);
    Answer answer{std::to_string(result), journal()};
    startAnew();
    return answer;
  }

  Answer getStringOf(const std::string& key) const {
    clearJournal();
    OwnedText text;
    const int result = table().get_string(key.c_str(), text.out());
    return {std::to_string(result) + ", " + text.str(), journal()};
  }

  // ---- get_display_name, get_help_text ----

  Answer displayNameOf(const std::string& key) const {
    clearJournal();
    OwnedText text;
    const int result = table().get_display_name(key.c_str(), text.out());
    return {std::to_string(result) + ", " + text.str(), journal()};
  }

  Answer helpTextOf(const std::string& key) const {
    clearJournal();
    OwnedText text;
    const int result = table().get_help_text(key.c_str(), text.out());
    Journal lines;
    for (const Journal::Piece& each :
         {mainLog("START"), mainLog("Key does not Match"), mainLog("END")}) {
      if (logLines().contains(each)) lines = {lines, each};
    }
    return {std::to_string(result) + ", " + text.str(), lines};
  }

  // ---- get_list_items ----

  Answer listItemsOf(const std::string& key) const {
    clearJournal();
    const OptionList list = listItems(key.c_str());
    Answer answer{"", journal()};
    for (int i = 0; i < list.count(); ++i) {
      answer.result += list.text(i) + " " + std::to_string(list.value(i)) + " " +
                       std::to_string(list.action(i)) + ", ";
    }
    return answer;
  }

  // ---- get_title_icon_path, get_second_icon_path ----

  Answer iconOf(int (*callback)(const char*, char**), const std::string& key) const {
    clearJournal();
    OwnedText path;
    const int result = callback(key.c_str(), path.out());
    return {std::to_string(result) + ", " + path.str(), journal()};
  }

  // ---- Those that never look at the key ----

  void expectTheSameForAllKeys(const std::string& key) const {
    clearJournal();
    EXPECT_EQ(table().set_string(key.c_str(), "TV Two"), 0);
    EXPECT_EQ(journal(),
              (Journal{locks(), mainLog("START"), call("vconf_set_str", kTvName, "TV Two"),
                       mainLog("Device Name set to TV Two"), unlocks()}));

    clearJournal();
    std::string buffer(VENTARO_CURRENT_VALUE_SIZE, '\0');
    char* value = buffer.data();
    EXPECT_EQ(table().get_current_value_sid(key.c_str(), &value), 0);
    EXPECT_STREQ(buffer.c_str(), "TV Two");
    EXPECT_EQ(journal(), (Journal{mainLog("START"), call("vconf_get_str", kTvName),
                                  mainLog("********* Value: TV Two **********"), mainLog("END")}));

    clearJournal();
    char text[VENTARO_MESSAGE_TEXT_SIZE] = "";
    char first[VENTARO_MESSAGE_BUTTON_SIZE] = "";
    char second[VENTARO_MESSAGE_BUTTON_SIZE] = "";
    int type = 77;
    EXPECT_EQ(table().get_messagebox_info(key.c_str(), text, first, second, &type), 0);
    EXPECT_STREQ(text, "TV_SID_SETTINGS_MIX_CASEP_SOME_FEATURES_NOT_AVAIL_GO_AHEAD");
    EXPECT_STREQ(first, "SID_YES");
    EXPECT_STREQ(second, "SID_NO");
    EXPECT_EQ(type, 2);

    clearJournal();
    EXPECT_TRUE(entries().check_visibility_int(key.c_str(), 0));
    EXPECT_EQ(journal(), (Journal{locks(), b2bOption(), unlocks()}));
    clearJournal();
    EXPECT_TRUE(entries().check_visibility_string(key.c_str(), ""));
    EXPECT_TRUE(entries().check_visibility_double(key.c_str(), 0));
    EXPECT_TRUE(entries().check_visibility_bool(key.c_str(), false));
    EXPECT_EQ(journal(), Journal());
    EXPECT_TRUE(entries().check_enable_string(key.c_str(), ""));
    EXPECT_TRUE(entries().check_enable_double(key.c_str(), 0));
    EXPECT_TRUE(entries().check_enable_bool(key.c_str(), false));
    EXPECT_EQ(journal(), (Journal{mainLog("check_enable_string"), mainLog("check_enable_double"),
                                  mainLog("check_enable_bool")}));
    EXPECT_TRUE(moduleInfo(key.c_str()).isNull());
  }
};

TEST_F(EveryKey, IsAnsweredByEveryCallbackAsTheTableSays) {
  const std::set<std::string> keys = allKeys();
  EXPECT_GT(keys.size(), 900U);
  for (const std::string& key : keys) {
    SCOPED_TRACE("key \"" + key + "\"");
    const Row row = expectedOf(key);
    EXPECT_EQ(checkEnableInt(key), enabled(key, row.checkEnableInt, false, 2));
    EXPECT_EQ(getIntOf(key), intOf(key, row.getInt));
    EXPECT_EQ(getStringOf(key), textOf(row.getString));
    EXPECT_EQ(displayNameOf(key), nameOf(key, row.displayName));
    EXPECT_EQ(helpTextOf(key), helpOf(row.helpText));
    EXPECT_EQ(listItemsOf(key), listOf(key, row.listItems));
    EXPECT_EQ(iconOf(table().get_title_icon_path, key), titleOf(key, row.titleIcon));
    EXPECT_EQ(iconOf(table().get_second_icon_path, key), statusOf(key, row.secondIcon));
    EXPECT_EQ(setIntOf(key), setOf(key, row.setInt));
    expectTheSameForAllKeys(key);
    if (HasFailure()) break;  // the other keys would fail in the same way
  }

  // What disables an item must not disable another.
  publish(1);
  store().set("memory/multiscreen/state",
              R"({"end": {"style": "PAP_FN"}, "status": "PostCondition"})");
  for (const std::string& key : keys) {
    EXPECT_EQ(checkEnableInt(key), enabled(key, expectedOf(key).checkEnableInt, true, 1)) << key;
    if (HasFailure()) break;
  }
}

}  // namespace
