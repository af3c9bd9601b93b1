/*
 * data_provider.h: the ABI between the menu framework and a data provider.
 *
 * Plain C (C11 and later) and C++ (C++17 and later). The framework loads the provider's shared
 * library, calls create_provider() once, and from then on calls the functions of the table that it
 * got, and the exported checks, in any order.
 *
 * Conventions
 *  1. Keys. A menu key ("menu/network/WiFiOnOff") is a NUL-terminated string that the caller owns.
 *     It must not be null. A callback treats a key that it does not know as its fallback item,
 *     never as an error, unless it says otherwise.
 *  2. Text. All text is UTF-8 and NUL-terminated, except where a size is stated without a NUL.
 *     Text is cut between bytes, which may be inside a character. The text of a list entry is
 *     markup, for a text widget: "&amp;" "&lt;" "&gt;" stand for a character, "&#x202d;" for the
 *     one of that number, "<br/>" for a line feed, "<tab/>" for a tab. If it begins with "SID_", it
 *     is a string ID instead ("SID_USER_INPUT", the entry for a typed name), and the framework
 *     shows its translation, dgettext(VENTARO_TEXT_DOMAIN, text). All other text is plain and is
 *     shown unchanged.
 *  3. Ownership. A string handed out through a `char**` is a block of the C heap. It belongs to
 *     the caller, who returns it through release_string(). get_current_value_sid() and
 *     get_messagebox_info() write into the caller's own buffers instead; the text from
 *     get_list_item_display_value() stays part of its list. Lists return through free_list_items(),
 *     the table through delete_provider(). No pointer that a caller passes in is kept.
 *  4. Outputs. An output pointer must not be null. Where a function says that it leaves an output
 *     untouched, its value from before the call remains.
 *  5. Results. Each function states what its int result means.
 *  6. Locks. Every function carries a tag:
 *       [locked]     holds the provider's one process-wide, non-recursive lock while it works. Such
 *                    functions may be called from any thread, and wait for each other.
 *       [lock-free]  never takes that lock, so never waits for a [locked] function.
 *     No function of the provider may be called from inside another one.
 *  7. Exceptions. A [locked] function raises std::system_error when the lock cannot be taken. Other
 *     exceptions are named at their functions; when memory runs out, std::bad_alloc may leave any
 *     of them. After any exception, the lock is free again, nothing has leaked, and the outputs are
 *     untouched.
 *  8. Loading and unloading. Loading the library already calls the platform's services. Load and
 *     unload it on the thread that runs GLib's default main context: the refresh timer fires there,
 *     without the lock. No other thread may be inside the library when it is unloaded, and
 *     everything that it handed out must have been returned. The store keeps the library's
 *     subscription to the saved networks, and must not call into an unloaded library. If nothing
 *     iterates the main context, the menu is not asked to refresh after a Wi-Fi switch.
 *  9. Language. Texts come from gettext, translated at each call. Before it asks for the first
 *     one, the framework calls setlocale(LC_ALL, ...) with a locale whose encoding is UTF-8
 *     ("C.UTF-8" will do), and names the language in the environment variable LANGUAGE: "ko", or
 *     "ko:en" to fall back to English. Without LANGUAGE, the locale's own language applies. A later
 *     change of LANGUAGE takes effect when setlocale() changes the locale (to "C", and back), which
 *     must happen while no thread is inside the provider. In a program that never calls
 *     setlocale(), in the locale "C" or "POSIX", and for a language without a catalogue, the texts
 *     are string IDs ("COM_WI_FI"); in a locale of another encoding, texts are in that encoding.
 *     The catalogues are <language>/LC_MESSAGES/ventaro.mo below platform_mkpath(44, "res/locale"),
 *     the folder to which create_provider() binds VENTARO_TEXT_DOMAIN; the framework must not bind
 *     it to another.
 * 10. Refresh. The framework subscribes to the store's key VENTARO_STORE_REFRESH. Eight seconds
 *     after the last Wi-Fi switch, it is set to VENTARO_REFRESH_WHOLE_MENU: the framework asks
 *     again for everything that it shows. After a change of the saved networks, it is set to
 *     VENTARO_REFRESH_NETWORK_MENU: the framework asks again for the items of the network menu.
 */
#ifndef VENTARO_DATA_PROVIDER_H
#define VENTARO_DATA_PROVIDER_H

#include <stdbool.h>
#include <stddef.h>

#if defined(__GNUC__)
#define VENTARO_EXPORT __attribute__((visibility("default")))
#else
#define VENTARO_EXPORT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* What the framework does after the user chose an entry of an option list. 32 bits wide. */
typedef enum ITEM_FOLLOWING_ACTION_TYPE {
  ITEM_FOLLOWING_ACTION_NONE = 0,        /* nothing more */
  ITEM_FOLLOWING_ACTION_REFRESH = 1,     /* ask for the item's value again */
  ITEM_FOLLOWING_ACTION_MESSAGE_BOX = 2, /* first confirm with get_messagebox_info() */
} ITEM_FOLLOWING_ACTION_TYPE;

/*
 * The keys that a framework passes. Letter case matters. The framework decides which items a menu
 * has, and in which order. It asks for each item's name, help text and icons, and whether the item
 * is shown and may be used.
 */
/* Items without a value. */
#define VENTARO_KEY_NETWORK "menu/general/network"
#define VENTARO_KEY_NETWORK_STATUS "menu/network/networkstatus"
#define VENTARO_KEY_NETWORK_SETTINGS "menu/network/networksettings"
#define VENTARO_KEY_RESET_NETWORK "menu/network/ResetNetwork"
#define VENTARO_KEY_EXPERT_SETTINGS "menu/network/expertsettings"
#define VENTARO_KEY_EASY_CONNECTION "menu/network/expertsettings/easyconnect"
#define VENTARO_KEY_POWER_ON_WITH_MOBILE_NOT_US "menu/network/MobileDeviceTV_NOT_US"
#define VENTARO_KEY_SELECT_DEVICE_NAME "menu/network/devicename/selectdevicename"
#define VENTARO_KEY_INSTALL_CERTIFICATE "menu/network/InstallCertificate"
#define VENTARO_KEY_CERTIFICATE_LIST "menu/network/CertificateList"
#define VENTARO_KEY_CERTIFICATE_MANAGER "menu/network/CertificateManager"
/* Items with a value, which is one entry of their option list. */
#define VENTARO_KEY_WIFI "menu/network/WiFiOnOff"
#define VENTARO_KEY_WIFI_DIRECT "menu/network/expertsettings/wifidirect"
#define VENTARO_KEY_WIRED_EAP "menu/network/WiredEAP"
#define VENTARO_KEY_POWER_ON_WITH_MOBILE_US "menu/network/MobileDeviceTV_US"
/* The same; the last entry stands for a name that the user types, which goes to set_string(). */
#define VENTARO_KEY_DEVICE_NAME "menu/network/devicename"
/* Saved networks, the first and the second. */
#define VENTARO_KEY_SAVED_NETWORK_1 "menu/network/SavedAP1"
#define VENTARO_KEY_SAVED_NETWORK_2 "menu/network/SavedAP2"
/* Only for get_list_items(): the states that a saved network can be in, "disconnected", "loading"
 * and "connected". They are not choices: set_int() with the network's own key connects, and
 * get_second_icon_path() tells which state it is in. */
#define VENTARO_KEY_SAVED_NETWORK_1_STATES "SAVEDAP1_NAME_KEY"
#define VENTARO_KEY_SAVED_NETWORK_2_STATES "SAVEDAP2_NAME_KEY"
/* Only for get_module_info(). */
#define VENTARO_KEY_OWNER "provider/owner"
#define VENTARO_KEY_MAIN_COMPONENT "provider/main-component"
#define VENTARO_KEY_SUB_COMPONENT "provider/sub-component"

/* The keys of the configuration store that a framework and its providers share. */
/* An int that a provider sets to have the menu refreshed. */
#define VENTARO_STORE_REFRESH "db/menu/refresh_menu"
#define VENTARO_REFRESH_WHOLE_MENU 1
#define VENTARO_REFRESH_NETWORK_MENU 100002
/* The TV's language, a string such as "ko_KR". The framework turns it into LANGUAGE. */
#define VENTARO_STORE_LANGUAGE "db/menu_widget/language"

/* The gettext domain of the texts. */
#define VENTARO_TEXT_DOMAIN "ventaro"

/* Sizes in bytes. */
/* The block of a name, a help text or an icon path, NUL included. */
#define VENTARO_TEXT_SIZE 2048
/* The block of a list entry's text. A long text fills it without a NUL. */
#define VENTARO_LIST_TEXT_SIZE 256
/* The block that get_module_info() returns, NUL included. */
#define VENTARO_MODULE_INFO_SIZE 255
/* The space that get_current_value_sid() needs in the caller's buffer, NUL included. */
#define VENTARO_CURRENT_VALUE_SIZE 2048
/* The space that get_messagebox_info() needs in the caller's buffers, NUL included. */
#define VENTARO_MESSAGE_TEXT_SIZE 1024
#define VENTARO_MESSAGE_BUTTON_SIZE 512

/* The path from get_second_icon_path() that asks for the busy animation instead of an image. */
#define VENTARO_ICON_BUSY "loading"

/* A slot without a meaning; it stays null. */
typedef void (*data_provider_reserved)(void);

/*
 * The callback table: 60 function pointers and nothing else. The framework finds a callback by its
 * position, so a position never changes its meaning. Any slot may be null: the provider does not
 * offer that callback, and the framework does without it. A provider without release_string() or
 * free_list_items() keeps ownership of the strings or lists that it hands out. This provider fills
 * every slot that has a name.
 */
typedef struct data_provider_cbs {
  /* [locked] Sets the item's value: the chosen position of a two-choice list or of the device-name
   * list. Returns what the setting reports:
   *   Wi-Fi                  1, or -1 when the radio did not switch
   *   Wi-Fi Direct           0, or the store's error
   *   wired 802.1X           0, or the store's error; -1 for a value that is not in its list, and
   *                          for every value until that list was asked for with get_list_items()
   *   power on with mobile   the new mode, 1 or 0; -1 when it did not switch or cannot be read back
   *   device name            0, or the store's error; -1 for the entry of a typed name and beyond
   *   a saved network        always -1; connects to it, and ignores `value`
   * For a saved network raises Json::LogicError when the saved-network document is misshapen. */
  int (*set_int)(const char* key, int value); /* 0 */
  data_provider_reserved reserved_1;
  data_provider_reserved reserved_2;
  data_provider_reserved reserved_3;
  data_provider_reserved reserved_4;
  data_provider_reserved reserved_5;
  /* [locked] Stores `value` (not null, the caller's) as the device name, whatever the key. Returns
   * the store's result: 0, or its error code, and then the old name stays. */
  int (*set_string)(const char* key, const char* value); /* 6 */
  data_provider_reserved reserved_7;
  /* [locked] Reads the item's value. `*value` is read for the log, so set it first. Returns 1 for
   * Wi-Fi and Wi-Fi Direct, the value itself for wired 802.1X and power on with mobile, 0 for the
   * device name. A setting of Wi-Fi Direct or wired 802.1X that cannot be read counts as Off. For
   * the others returns -1 when the value cannot be read; `*value` is then what the Wi-Fi service
   * left there for Wi-Fi, 0 for a device-name list of one entry, and otherwise untouched. */
  int (*get_int)(const char* key, int* value); /* 8 */
  data_provider_reserved reserved_9;
  data_provider_reserved reserved_10;
  /* [locked] The item's value as text: the translated word On or Off for the four settings, the
   * device name for every other key. Gives the caller a new string in `*value`, null when memory
   * runs out. Before the call, `*value` must be null or a terminated string, because it is logged:
   * a setting that cannot be read leaves it untouched. Returns 1 in all these cases; -1, with
   * `*value` untouched, when there is no device name; never 0. */
  int (*get_string)(const char* key, char** value); /* 11 */
  /* [lock-free] Takes back a string that a callback handed out. Returns 0, or 1 for null. */
  int (*release_string)(char* str); /* 12 */
  /* [locked] The item's name, translated. A key that is a prefix of known keys gets the name of the
   * first of them, except for VENTARO_KEY_WIRED_EAP, which must match as a whole. Gives the caller
   * a block of VENTARO_TEXT_SIZE bytes, the text cut to fit; empty when the key is unknown. Returns
   * 0. Raises Json::LogicError when the saved-network document is misshapen. */
  int (*get_display_name)(const char* key, char** value); /* 13 */
  /* [locked] The item's help text, translated. Keys match as for get_display_name(). Gives the
   * caller a block of VENTARO_TEXT_SIZE bytes, the text cut to fit; empty when the key is unknown.
   * Returns 0; -1 when memory runs out, with `*value` untouched. Raises std::logic_error when the
   * store has no VENTARO_STORE_LANGUAGE. */
  int (*get_help_text)(const char* key, char** value); /* 14 */
  data_provider_reserved reserved_15;
  /* [locked] The item's option list. A saved network's is under its _STATES key; a key without a
   * list gets that of the device name. Gives the caller an array of `*count` items, to be returned
   * through free_list_items() with that count. Null only when memory runs out (then `*count` is
   * 3). */
  const void** (*get_list_items)(const char* key, int* count); /* 16 */
  /* [locked] The entry's text: markup or a string ID, which the list still owns. It has at most
   * VENTARO_LIST_TEXT_SIZE bytes, and no NUL when it fills all of them; null for an entry beyond
   * the list's count. Returns 0; a null item leaves `*value` untouched. */
  int (*get_list_item_display_value)(void* item, char** value); /* 17 */
  data_provider_reserved reserved_18;
  data_provider_reserved reserved_19;
  /* [locked] The entry's value. Returns 0; a null item leaves `*value` untouched. */
  int (*get_list_item_int_value)(void* item, int* value); /* 20 */
  data_provider_reserved reserved_21;
  data_provider_reserved reserved_22;
  /* [locked] What follows when the user chooses the entry. Returns 0; a null item leaves `*type`
   * untouched. */
  int (*get_list_item_following_action_type)(void* item, ITEM_FOLLOWING_ACTION_TYPE* type); /* 23 */
  /* [locked] Takes back a list, its entries and their texts. A `count` below 1 releases the array
   * alone. Returns 0. */
  int (*free_list_items)(void** items, int count); /* 24 */
  data_provider_reserved reserved_25;
  data_provider_reserved reserved_26;
  data_provider_reserved reserved_27;
  data_provider_reserved reserved_28;
  data_provider_reserved reserved_29;
  data_provider_reserved reserved_30;
  data_provider_reserved reserved_31;
  data_provider_reserved reserved_32;
  data_provider_reserved reserved_33;
  data_provider_reserved reserved_34;
  data_provider_reserved reserved_35;
  data_provider_reserved reserved_36;
  data_provider_reserved reserved_37;
  /* [lock-free] Copies the device name, cut to fit, into the caller's buffer `*value` of at
   * least VENTARO_CURRENT_VALUE_SIZE bytes, which must hold a terminated string before the call.
   * Returns 0; -1, with the buffer untouched, when there is no device name. */
  int (*get_current_value_sid)(const char* key, char** value); /* 38 */
  /* [locked] The confirmation box, the same for every key. Appends to the caller's terminated
   * buffers: less than VENTARO_MESSAGE_TEXT_SIZE bytes to `text`, less than
   * VENTARO_MESSAGE_BUTTON_SIZE each to `first` and `second`, and a NUL to each. `*type` becomes 2.
   * Returns 0. */
  int (*get_messagebox_info)(const char* key, char* text, char* first, char* second,
                             int* type); /* 39 */
  data_provider_reserved reserved_40;
  data_provider_reserved reserved_41;
  data_provider_reserved reserved_42;
  data_provider_reserved reserved_43;
  /* [locked] Information about the provider: VENTARO_KEY_OWNER, VENTARO_KEY_MAIN_COMPONENT and
   * VENTARO_KEY_SUB_COMPONENT give the caller a block of VENTARO_MODULE_INFO_SIZE bytes. Any other
   * key leaves `*value` untouched. Returns 0. */
  int (*get_module_info)(const char* key, char** value); /* 44 */
  data_provider_reserved reserved_45;
  data_provider_reserved reserved_46;
  data_provider_reserved reserved_47;
  data_provider_reserved reserved_48;
  /* [locked] The icon at the item's title: an image path in a block of VENTARO_TEXT_SIZE bytes, for
   * a saved network its signal strength, for every other key full signal. Returns 0. Raises
   * Json::LogicError when the saved-network document has a wrong shape. */
  int (*get_title_icon_path)(const char* key, char** path); /* 49 */
  /* [locked] The icon at the item's side: an image path, VENTARO_ICON_BUSY, or the empty text, in a
   * block of VENTARO_TEXT_SIZE bytes. VENTARO_KEY_SAVED_NETWORK_1 stands for the first saved
   * network, every other key for the second. Returns 0. Raises Json::LogicError when the
   * saved-network document has a wrong shape. */
  int (*get_second_icon_path)(const char* key, char** path); /* 50 */
  data_provider_reserved reserved_51;
  data_provider_reserved reserved_52;
  data_provider_reserved reserved_53;
  data_provider_reserved reserved_54;
  data_provider_reserved reserved_55;
  data_provider_reserved reserved_56;
  data_provider_reserved reserved_57;
  data_provider_reserved reserved_58;
  data_provider_reserved reserved_59;
} data_provider_cbs;

/* [locked] Gives the caller a new table in `*cbs` (not null). May be called again, for a second
 * table. Returns 0. */
VENTARO_EXPORT int create_provider(data_provider_cbs** cbs);

/* [locked] Takes back the table `*cbs` (which may be null); `*cbs` itself is not changed and then
 * dangles. Returns 0, or 1 when `cbs` is null. */
VENTARO_EXPORT int delete_provider(data_provider_cbs** cbs);

/* [locked] Whether the item is shown. The same for every key; false only on business products
 * without network support. `value` is not examined. */
VENTARO_EXPORT bool check_visibility_int(const char* key, int value);

/* [lock-free] Always true. */
VENTARO_EXPORT bool check_visibility_string(const char* key, const char* value);
VENTARO_EXPORT bool check_visibility_double(const char* key, double value);
VENTARO_EXPORT bool check_visibility_bool(const char* key, bool value);

/* [locked] Whether the item may be used: a saved network if there is one at its position; the
 * device name unless the screen is split or, on a business product, the user is not the
 * administrator; everything else always. `value` is not examined. Raises Json::LogicError when the
 * saved-network document has a wrong shape. */
VENTARO_EXPORT bool check_enable_int(const char* key, int value);

/* [lock-free] Always true. */
VENTARO_EXPORT bool check_enable_string(const char* key, const char* value);
VENTARO_EXPORT bool check_enable_double(const char* key, double value);
VENTARO_EXPORT bool check_enable_bool(const char* key, bool value);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* VENTARO_DATA_PROVIDER_H */
