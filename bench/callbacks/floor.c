#define _GNU_SOURCE /* strnlen, strdup */
#include "floor.h"

#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "floor_log.h"

/* The header makes a macro of it in C, for another symbol than the provider's. */
char* dgettext(const char* domain, const char* sid);
char* bindtextdomain(const char* domain, const char* folder);
int vconf_get_int(const char* key, int* value);
int vconf_set_int(const char* key, int value);
char* vconf_get_str(const char* key);
int vconf_set_str(const char* key, const char* value);
int vconf_get_bool(const char* key, int* value);
int system_info_get_custom_bool(const char* key, bool* value);
int system_info_get_custom_int(const char* key, int* value);
int system_info_get_custom_string(const char* key, char** value);
int wifi_initialize(void);
int wifi_get_connected_ap(void** ap);
int wifi_ap_get_frequency(void* ap, int* mhz);
int wifi_ap_destroy(void* ap);
int wifi_get_enable_qx(int* state);
int wifi_set_enable_qx(int enable);
int connection_profile_enable_ethernet_eap(void* profile, bool enable);
int util_get_wakeOnMobile_mode(bool* enabled);
int util_set_wakeOnMobile_mode(bool enable);
const char* platform_mkpath(int root, const char* relative);
char* evas_textblock_text_utf8_to_markup(const void* object, const char* utf8);
unsigned g_timeout_add_seconds(unsigned seconds, int (*function)(void*), void* data);
int g_source_remove(unsigned id);
/* C++; this is what the linker calls it. */
void combine_strings(
    char* buffer, size_t capacity, const char* text, const char* first, const char* second,
    const char* third,
    const char* fourth) __asm__("_ZN11CStringUtil16CombinateStringsEPcmPKcS2_S2_S2_S2_");

#define FLAG(name) "com.norvane/featureconf/" name

enum { kBlock = 2048, kListText = 256, kModuleInfo = 255 };

struct item {
  char* text;
  int value;
  ITEM_FOLLOWING_ACTION_TYPE action;
};

static const char kDocumentKey[] = "db/menu/network/TopSavedAP";
static const char kNameKey[] = "db/menu/network/devicename/tv_name";

static pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;
static unsigned timer;
static char* default_name;
static char profile;

/* ---- Helpers ---- */

static const char* translate(const char* sid) {
  return dgettext("ventaro", sid);
}

static void fill(char* block, const char* text, size_t size) {
  memcpy(block, text, strnlen(text, size - 1));
}

static void read_document(void) {
  char* text = vconf_get_str(kDocumentKey);
  floor_read_document(text);
  free(text);
}

static void log_network(int position) {
  LOG_MAIN(" AP Name = %s status = %s ", floor_ssid(position), floor_status(position));
}

static bool direct_is_on(void) {
  void* ap = NULL;
  int mhz = 0;
  int preference = 0;
  wifi_initialize();
  LOG_MAIN("Wifi init succeeded\n");
  wifi_get_connected_ap(&ap);
  wifi_ap_get_frequency(ap, &mhz);
  LOG_MAIN("Frequency : %d\n", mhz);
  wifi_ap_destroy(ap);
  vconf_get_int("db/menu/network/wifidirect", &preference);
  return mhz > 5915 && preference < 2;
}

static bool wired_is_on(void) {
  int choice = 0;
  vconf_get_int("db/menu/network/wiredeap", &choice);
  return choice != 0;
}

static bool mobile_is_on(void) {
  bool enabled = false;
  util_get_wakeOnMobile_mode(&enabled);
  LOG_MAIN("Request to get wakeOnMobile mode succeeded : ");
  LOG_MAIN("wakeOnMobile Enabled\n");
  LOG_MAIN("_IsPowerOnWithMobileEnable =>%d", 1);
  return enabled;
}

static bool is_regulated(void) {
  bool regulated = true;
  LOG_MAIN("START");
  system_info_get_custom_bool(FLAG("setting.eu_energy_regulation"), &regulated);
  LOG_MAIN("[WifiOFFON => %d]", regulated);
  return regulated;
}

static bool is_b2b(void) {
  bool supported = false;
  system_info_get_custom_bool(FLAG("product.b2b_option_support"), &supported);
  LOG_MAIN("supported = %s", supported ? "true" : "false");
  return supported;
}

/* What the product is, and its name, translated. */
static int product_type(const char** name) {
  bool flag = false;
  int generation = 0;
  system_info_get_custom_bool(FLAG("broadcast.removable_rf_tuner_support"), &flag);
  LOG_MAIN("Tunerless support = %d", flag);
  system_info_get_custom_int(FLAG("orlex_version"), &generation);
  system_info_get_custom_bool(FLAG("projector_feature_support"), &flag);
  system_info_get_custom_bool(FLAG("product.smart_monitor_feature_support"), &flag);
  *name = translate("COM_SID_TV");
  return 1;
}

/* Every "<<A>>" of the text replaced, up to what a block holds. */
static void fill_in(char* target, const char* text, const char* name) {
  char* end = target;
  const size_t name_size = strlen(name);
  for (const char* token = strstr(text, "<<A>>"); token != NULL; token = strstr(text, "<<A>>")) {
    end = mempcpy(end, text, (size_t)(token - text));
    end = mempcpy(end, name, name_size);
    text = token + 5;
  }
  strcpy(end, text);
}

static void append(char* buffer, const char* text, size_t most) {
  const size_t size = strnlen(text, most);
  char* end = buffer + strlen(buffer);
  memcpy(end, text, size);
  end[size] = '\0';
}

/* ---- The provider ---- */

void floor_start(void) {
  free(default_name);
  default_name = vconf_get_str("db/menu/network/devicename/default_tv_name");
}

int floor_create_provider(data_provider_cbs** cbs, const data_provider_cbs* table) {
  pthread_mutex_lock(&lock);
  LOG_MAIN("START");
  bindtextdomain("ventaro", platform_mkpath(44, "res/locale"));
  translate("SID_OFF");
  translate("SID_ON");
  translate("SID_OFF");
  translate("SID_ON");
  *cbs = calloc(1, sizeof(data_provider_cbs));
  memcpy(*cbs, table, sizeof(data_provider_cbs));
  LOG_MAIN("END");
  pthread_mutex_unlock(&lock);
  return 0;
}

int floor_delete_provider(data_provider_cbs** cbs) {
  pthread_mutex_lock(&lock);
  LOG_MAIN("START");
  free(*cbs);
  LOG_MAIN("END");
  pthread_mutex_unlock(&lock);
  return 0;
}

/* ---- Names ---- */

int floor_get_display_name(const char* key, char** value, floor_name name, const char* sid) {
  LOG_MAIN("START");
  pthread_mutex_lock(&lock);
  LOG_MAIN("Key ---->%s\n", key);
  char* block = calloc(1, kBlock);
  if (name == FLOOR_RESET) LOG_MAIN("START");
  if (name == FLOOR_EXPERT) LOG_MAIN("-expertsettings ->%s\n", key);
  if (name == FLOOR_UNKNOWN) {
    LOG_MAIN("Key does not Match");
  } else {
    fill(block, translate(sid), kBlock);
  }
  *value = block;
  pthread_mutex_unlock(&lock);
  return 0;
}

int floor_get_network_name(const char* key, char** value, int position) {
  LOG_MAIN("START");
  pthread_mutex_lock(&lock);
  LOG_MAIN("Key ---->%s\n", key);
  char* block = calloc(1, kBlock);
  read_document();
  log_network(position);
  fill(block, floor_ssid(position), kBlock);
  *value = block;
  pthread_mutex_unlock(&lock);
  return 0;
}

/* ---- Help ---- */

int floor_get_help_text(const char* key, char** value, floor_help help, const char* sid,
                        const char* second) {
  (void)key;
  LOG_MAIN("START");
  pthread_mutex_lock(&lock);
  char* block = calloc(1, kBlock);
  free(vconf_get_str("db/menu_widget/language"));
  if (help == FLOOR_HELP_PLAIN) {
    fill(block, translate(sid), kBlock);
  } else if (help == FLOOR_HELP_TWO_LINES) {
    const char* first = translate(sid);
    const size_t size = strlen(first);
    memcpy(block, first, size);
    block[size] = '\n';
    fill(block + size + 1, translate(second), kBlock - size - 1);
  } else if (help == FLOOR_HELP_FEATURES) {
    char features[kBlock];
    char* end = stpcpy(features, translate("COM_SCREEN_SHARING"));
    end = stpcpy(end, ", ");
    stpcpy(end, translate("TV_SID_CONNECT_KELVO"));
    combine_strings(block, kBlock, translate(sid), features, NULL, "", "");
  } else {
    LOG_MAIN("Key does not Match");
  }
  *value = block;
  LOG_MAIN("END");
  pthread_mutex_unlock(&lock);
  return 0;
}

int floor_get_product_help(const char* key, char** value, bool asks_type, bool names_device,
                           const char* sid) {
  const char* name;
  const char* text;
  char work[kBlock];
  (void)key;
  LOG_MAIN("START");
  pthread_mutex_lock(&lock);
  char* block = calloc(1, kBlock);
  free(vconf_get_str("db/menu_widget/language"));
  if (asks_type) product_type(&name);
  if (names_device) {
    char* device;
    system_info_get_custom_string(FLAG("product.device_sid"), &device);
    LOG_MAIN("product device SID [%s]", device);
    LOG_MAIN("product device name [%s]", device);
    const char* device_name = translate(device);
    text = translate(sid);
    LOG_MAIN("original text:%s", text);
    fill_in(work, text, device_name);
    LOG_MAIN("replaced text:%s", work);
    LOG_MAIN("result text:%s", work);
    text = work;
  } else {
    text = translate(sid);
  }
  const int type = product_type(&name);
  LOG_MAIN("Product type =>%d", type);
  fill_in(block, text, name);
  *value = block;
  LOG_MAIN("END");
  pthread_mutex_unlock(&lock);
  return 0;
}

/* ---- Values ---- */

static void log_device_name(const char* name, int* value) {
  if (strcmp(default_name, name) == 0) {
    LOG_MAIN("dName==%s\n", name);
    *value = 0;
  } else {
    *value = 1;
  }
  LOG_MAIN("value=%d\n", *value);
}

static int item_int(floor_item item, int* value) {
  switch (item) {
    case FLOOR_WIFI: {
      const int result = wifi_get_enable_qx(value);
      LOG_MAIN("wifi_get_power_state  ret = [%d], value = [%d]", result, *value);
      return 1;
    }
    case FLOOR_DIRECT:
      *value = direct_is_on();
      LOG_MAIN("getInt , value after changing = %d", *value);
      return 1;
    case FLOOR_WIRED:
      *value = wired_is_on();
      return *value;
    case FLOOR_MOBILE:
      *value = mobile_is_on();
      LOG_MAIN("connection_get_wakeOnMobile_mode set to %d", *value);
      return *value;
    default: {
      char* name = vconf_get_str(kNameKey);
      log_device_name(name, value);
      free(name);
      return 0;
    }
  }
}

int floor_get_int(const char* key, int* value, floor_item item) {
  LOG_MAIN("START");
  pthread_mutex_lock(&lock);
  LOG_SYSTEM("Key ---->%s::Value------>%d\n", key, *value);
  const int result = item_int(item, value);
  LOG_SYSTEM("status------>%d\n", result);
  LOG_MAIN("END");
  pthread_mutex_unlock(&lock);
  return result;
}

static int no_timer(void* data) {
  (void)data;
  return 0;
}

static int set_item_int(floor_item item, int value) {
  switch (item) {
    case FLOOR_WIFI: {
      const int result = wifi_set_enable_qx(value);
      vconf_set_int("memory/menu/network/wifionui_enabled", value);
      LOG_MAIN("wifi_set_power_state ret = [%d], value = [%d]", result, value);
      if (timer != 0) g_source_remove(timer);
      timer = g_timeout_add_seconds(2, no_timer, NULL);
      return 1;
    }
    case FLOOR_DIRECT: {
      const int preference = value == 1 ? 1 : 2;
      const int result = vconf_set_int("db/menu/network/wifidirect", preference);
      LOG_MAIN("Set Int Status=%d::%d", result, preference);
      return result;
    }
    case FLOOR_WIRED:
      connection_profile_enable_ethernet_eap(&profile, value);
      return vconf_set_int("db/menu/network/wiredeap", value);
    case FLOOR_MOBILE: {
      LOG_MAIN("m_MobileDeviceTVList Value for provider is %d ", value);
      LOG_MAIN("Enter the wakeOnMobile Mode Value Enable ->1 ,Disable ->0:\n");
      util_set_wakeOnMobile_mode(value);
      LOG_MAIN("Request to change wakeOnMobile Mode succeeded");
      const int mode = mobile_is_on();
      LOG_MAIN("status %d ", mode);
      return mode;
    }
    default: {
      const int result = vconf_set_str(kNameKey, default_name);
      LOG_MAIN("Device Name set to %s", default_name);
      return result;
    }
  }
}

int floor_set_int(const char* key, int value, floor_item item) {
  LOG_MAIN("START");
  pthread_mutex_lock(&lock);
  LOG_SYSTEM("Key ---->%s::Value------>%d\n", key, value);
  const int result = set_item_int(item, value);
  LOG_MAIN("END");
  pthread_mutex_unlock(&lock);
  return result;
}

int floor_connect(const char* key, int value, int position) {
  LOG_MAIN("START");
  pthread_mutex_lock(&lock);
  LOG_SYSTEM("Key ---->%s::Value------>%d\n", key, value);
  read_document();
  log_network(position);
  vconf_set_str("memory/NW-Daemon/Command", floor_connect_command(floor_ssid(position)));
  LOG_MAIN("END");
  pthread_mutex_unlock(&lock);
  return -1;
}

static void put_on_off(bool on, char** value) {
  *value = strdup(translate(on ? "SID_ON" : "SID_OFF"));
}

static int item_string(floor_item item, char** value) {
  int state = 0;
  switch (item) {
    case FLOOR_WIFI: {
      const int result = wifi_get_enable_qx(&state);
      LOG_MAIN("connection_get_wakeOnMobile_mode set to %d", result);
      put_on_off(state >= 1, value);
      LOG_MAIN("CWiFiOnOffObj.setOnOffStatus==%s", *value);
      return 1;
    }
    case FLOOR_DIRECT: {
      const bool on = direct_is_on();
      LOG_MAIN("setOnOffStatus %d", on);
      put_on_off(on, value);
      LOG_MAIN("CWiFiDirectObj.setOnOffStatus==%s", *value);
      return 1;
    }
    case FLOOR_WIRED:
      put_on_off(wired_is_on(), value);
      LOG_MAIN("CWiredEAPObj.setOnOffStatus==%s", *value);
      return 1;
    case FLOOR_MOBILE: {
      const bool on = mobile_is_on();
      LOG_MAIN("connection_get_wakeOnMobile_mode set to %d", on);
      put_on_off(on, value);
      LOG_MAIN("CMobileDeviceTVObj.setOnOffStatus==%s", *value);
      return 1;
    }
    default: {
      /* The store's block is the caller's, and so is the one that is handed out. */
      char* name = vconf_get_str(kNameKey);
      LOG_MAIN("wifi_direct_get_device_name::status [0x%04x]", 0);
      *value = strdup(name);
      free(name);
      return 1;
    }
  }
}

int floor_get_string(const char* key, char** value, floor_item item) {
  (void)key;
  pthread_mutex_lock(&lock);
  LOG_MAIN("START");
  const int result = item_string(item, value);
  LOG_MAIN("END");
  pthread_mutex_unlock(&lock);
  return result;
}

int floor_set_string(const char* key, const char* value) {
  (void)key;
  pthread_mutex_lock(&lock);
  LOG_MAIN("START");
  const int result = vconf_set_str(kNameKey, value);
  LOG_MAIN("Device Name set to %s", value);
  pthread_mutex_unlock(&lock);
  return result;
}

int floor_get_current_value_sid(const char* key, char** value) {
  (void)key;
  LOG_MAIN("START");
  char* name = vconf_get_str(kNameKey);
  const size_t size = strnlen(name, VENTARO_CURRENT_VALUE_SIZE - 1);
  memcpy(*value, name, size);
  (*value)[size] = '\0';
  LOG_MAIN("********* Value: %s **********", *value);
  LOG_MAIN("END");
  free(name);
  return 0;
}

int floor_release_string(char* text) {
  LOG_MAIN("START");
  LOG_MAIN("******* Value[%s]", text);
  free(text);
  LOG_MAIN("END");
  return 0;
}

/* ---- Icons ---- */

int floor_get_title_icon_path(const char* key, char** path, int position) {
  static const char kNetworkIcon[] =
      "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
      "systemsetup/icon_wifi/oobe_icon_n_wifi_";
  static const char kOtherIcon[] =
      "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
      "systemsetup/icon_wifi/oobe_icon_n_wifi_4.png";
  pthread_mutex_lock(&lock);
  LOG_MAIN("START");
  LOG_MAIN("key = %s", key);
  char* block = calloc(1, kBlock);
  if (position < 0) {
    memcpy(block, kOtherIcon, sizeof(kOtherIcon));
  } else {
    read_document();
    const int strength = floor_strength(position);
    LOG_MAIN(" AP Name = %s status = %s SignalStrength =  %u", floor_ssid(position),
             floor_status(position), (unsigned)strength);
    memcpy(block, kNetworkIcon, sizeof(kNetworkIcon) - 1);
    const int level = (strength > -89) + (strength > -83) + (strength > -75) + (strength > -64);
    block[sizeof(kNetworkIcon) - 1] = (char)('0' + level);
    memcpy(block + sizeof(kNetworkIcon), ".svg", 4);
  }
  *path = block;
  pthread_mutex_unlock(&lock);
  return 0;
}

int floor_get_second_icon_path(const char* key, char** path, int position) {
  static const char kCheckIcon[] =
      "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
      "systemsetup/r_icon_xs_check.png";
  pthread_mutex_lock(&lock);
  LOG_MAIN("key = %s", key);
  char* block = calloc(1, kBlock);
  LOG_MAIN("START");
  read_document();
  log_network(position);
  if (strcmp(floor_status(position), "Connected") == 0) {
    int contrast = 0;
    vconf_get_int("db/menu/system/accessibility/highcontrast", &contrast);
    LOG_MAIN("Not high contrast mode");
    memcpy(block, kCheckIcon, sizeof(kCheckIcon));
  }
  *path = block;
  pthread_mutex_unlock(&lock);
  return 0;
}

/* ---- Lists ---- */

static void* new_item(char* text, int value, ITEM_FOLLOWING_ACTION_TYPE action) {
  struct item* item = calloc(1, sizeof(struct item));
  *item = (struct item){text, value, action};
  return item;
}

static char* list_text(const char* text) {
  char* block = calloc(1, kListText);
  memcpy(block, text, strnlen(text, kListText));
  return block;
}

static char* markup_text(const char* text) {
  static const char kOverride[] = "&#x202d;";
  char* markup = evas_textblock_text_utf8_to_markup(NULL, text);
  char* block = calloc(1, kListText);
  const size_t start = sizeof(kOverride) - 1;
  memcpy(block, kOverride, start);
  memcpy(block + start, markup, strnlen(markup, kListText - start));
  free(markup);
  return block;
}

const void** floor_get_list_items(const char* key, int* count, floor_item item) {
  static const ITEM_FOLLOWING_ACTION_TYPE kActions[][2] = {
      [FLOOR_WIFI] = {ITEM_FOLLOWING_ACTION_MESSAGE_BOX, ITEM_FOLLOWING_ACTION_NONE},
      [FLOOR_DIRECT] = {ITEM_FOLLOWING_ACTION_REFRESH, ITEM_FOLLOWING_ACTION_REFRESH},
      [FLOOR_WIRED] = {ITEM_FOLLOWING_ACTION_REFRESH, ITEM_FOLLOWING_ACTION_REFRESH},
      [FLOOR_MOBILE] = {ITEM_FOLLOWING_ACTION_NONE, ITEM_FOLLOWING_ACTION_MESSAGE_BOX},
      [FLOOR_NAME] = {ITEM_FOLLOWING_ACTION_NONE, ITEM_FOLLOWING_ACTION_REFRESH},
  };
  pthread_mutex_lock(&lock);
  LOG_MAIN("START");
  LOG_MAIN("Key ---->%s::\n", key);
  char* first;
  char* second;
  if (item == FLOOR_NAME) {
    char* markup = markup_text(default_name);
    first = markup;
    second = list_text("SID_USER_INPUT");
  } else {
    const char* off = translate("SID_OFF");
    const char* on = translate("SID_ON");
    LOG_MAIN("listSize==%d\n", 2);
    first = list_text(off);
    second = list_text(on);
  }
  void** items = calloc(2, sizeof(void*));
  ITEM_FOLLOWING_ACTION_TYPE second_action = kActions[item][1];
  if (item == FLOOR_WIFI && is_regulated()) second_action = ITEM_FOLLOWING_ACTION_MESSAGE_BOX;
  items[0] = new_item(first, 0, kActions[item][0]);
  items[1] = new_item(second, 1, second_action);
  if (item == FLOOR_WIRED) {
    LOG_MAIN("pDisplayValue[0]=%s::%s", first, first);
    LOG_MAIN("pDisplayValue[1]=%s::%s", second, second);
  }
  *count = 2;
  pthread_mutex_unlock(&lock);
  return (const void**)items;
}

const void** floor_get_state_items(const char* key, int* count) {
  static const char* const kStates[] = {"disconnected", "loading", "connected"};
  pthread_mutex_lock(&lock);
  LOG_MAIN("START");
  LOG_MAIN("Key ---->%s::\n", key);
  void** items = calloc(3, sizeof(void*));
  for (int i = 0; i < 3; ++i) {
    char* text = calloc(1, kBlock);
    strcpy(text, kStates[i]);
    items[i] = new_item(text, i, ITEM_FOLLOWING_ACTION_NONE);
  }
  *count = 3;
  pthread_mutex_unlock(&lock);
  return (const void**)items;
}

int floor_get_list_item_display_value(void* item, char** value) {
  const struct item* entry = item;
  pthread_mutex_lock(&lock);
  LOG_MAIN("START");
  *value = entry->text;
  LOG_MAIN("pDisplayValue = %s::%d", entry->text, entry->value);
  pthread_mutex_unlock(&lock);
  return 0;
}

int floor_get_list_item_int_value(void* item, int* value) {
  pthread_mutex_lock(&lock);
  LOG_MAIN("START");
  *value = ((const struct item*)item)->value;
  LOG_MAIN("END");
  pthread_mutex_unlock(&lock);
  return 0;
}

int floor_get_list_item_following_action_type(void* item, ITEM_FOLLOWING_ACTION_TYPE* type) {
  pthread_mutex_lock(&lock);
  LOG_MAIN("START");
  *type = ((const struct item*)item)->action;
  pthread_mutex_unlock(&lock);
  return 0;
}

int floor_free_list_items(void** items, int count) {
  pthread_mutex_lock(&lock);
  LOG_MAIN("START");
  for (int i = 0; i < count; ++i) {
    struct item* entry = items[i];
    free(entry->text);
    free(entry);
  }
  free(items);
  pthread_mutex_unlock(&lock);
  return 0;
}

/* ---- The rest ---- */

int floor_get_messagebox_info(const char* key, char* text, char* first, char* second, int* type) {
  char message[VENTARO_MESSAGE_TEXT_SIZE] = {0};
  (void)key;
  pthread_mutex_lock(&lock);
  LOG_MAIN("START");
  const char* go_ahead = translate("TV_SID_SETTINGS_MIX_CASEP_SOME_FEATURES_NOT_AVAIL_GO_AHEAD");
  combine_strings(message, sizeof(message), go_ahead, translate("COM_WI_FI"), NULL, "", "");
  is_regulated();
  append(text, message, VENTARO_MESSAGE_TEXT_SIZE - 1);
  append(first, translate("SID_YES"), VENTARO_MESSAGE_BUTTON_SIZE - 1);
  append(second, translate("SID_NO"), VENTARO_MESSAGE_BUTTON_SIZE - 1);
  *type = 2;
  LOG_MAIN("END");
  pthread_mutex_unlock(&lock);
  return 0;
}

int floor_get_module_info(const char* key, char** value, const char* text) {
  (void)key;
  pthread_mutex_lock(&lock);
  if (text != NULL) {
    char* block = calloc(1, kModuleInfo);
    strcpy(block, text);
    *value = block;
  }
  pthread_mutex_unlock(&lock);
  return 0;
}

bool floor_check_visibility_int(const char* key, int value) {
  (void)key;
  (void)value;
  pthread_mutex_lock(&lock);
  const bool visible = !is_b2b();
  if (!visible) {
    int supported = 0;
    system_info_get_custom_int(FLAG("network.network_support"), &supported);
    LOG_MAIN("Network is not supported.");
  }
  pthread_mutex_unlock(&lock);
  return visible;
}

bool floor_check_visibility_string(const char* key, const char* value) {
  (void)key;
  (void)value;
  return true;
}

bool floor_check_visibility_double(const char* key, double value) {
  (void)key;
  (void)value;
  return true;
}

bool floor_check_visibility_bool(const char* key, bool value) {
  (void)key;
  (void)value;
  return true;
}

bool floor_check_enable_int(const char* key, int value) {
  (void)value;
  pthread_mutex_lock(&lock);
  LOG_MAIN("key = %s", key);
  pthread_mutex_unlock(&lock);
  return true;
}

bool floor_check_enable_network(const char* key, int value, int position) {
  (void)value;
  pthread_mutex_lock(&lock);
  LOG_MAIN("key = %s", key);
  char* text = vconf_get_str(kDocumentKey);
  const size_t count = floor_read_document(text);
  free(text);
  LOG_MAIN("Saved AP Count %d", (int)count);
  pthread_mutex_unlock(&lock);
  return count > (size_t)position;
}

bool floor_check_enable_name(const char* key, int value) {
  const char* style;
  const char* status;
  (void)value;
  pthread_mutex_lock(&lock);
  LOG_MAIN("key = %s", key);
  char* text = vconf_get_str("memory/multiscreen/state");
  LOG_MAIN("Vconf for Multiview: [%s]", text);
  floor_parse_state(text, &style, &status);
  LOG_MAIN("parsingSuccessful[%s]  root [%s] ", "true", text);
  free(text);
  LOG_MAIN("EndStyle=%s", style);
  LOG_MAIN("Status=%s", status);
  const bool enabled = !is_b2b();
  if (!enabled) {
    int administrator = 0;
    vconf_get_bool("memory/ephotel/hotelmenu/hotelfactorymode", &administrator);
  }
  pthread_mutex_unlock(&lock);
  return enabled;
}

bool floor_check_enable_string(const char* key, const char* value) {
  (void)key;
  (void)value;
  LOG_MAIN("check_enable_string");
  return true;
}

bool floor_check_enable_double(const char* key, double value) {
  (void)key;
  (void)value;
  LOG_MAIN("check_enable_double");
  return true;
}

bool floor_check_enable_bool(const char* key, bool value) {
  (void)key;
  (void)value;
  LOG_MAIN("check_enable_bool");
  return true;
}
