#include "commands.h"

#include "call.h"
#include "command_line.h"
#include "completion.h"
#include "expectations.h"
#include "host_commands.h"
#include "menu_commands.h"
#include "shell.h"
#include "texts.h"
#include "watch.h"

namespace cli {

namespace {

constexpr Argument kJson{"[--json]", "Write JSON", Takes::kNothing};
constexpr Argument kBrief{"[--brief]", "Only names and values", Takes::kNothing};
constexpr Argument kAll{"[--all]", "All that the provider says, icons too, as a pipe gets it",
                        Takes::kNothing};
constexpr Argument kKeys{"[--keys]", "With each item's key", Takes::kNothing};
constexpr Argument kYes{"[--yes]", "Answer the box with yes", Takes::kNothing};
constexpr Argument kWait{
    "[--wait]", "Wait until the menu is asked to refresh, eight seconds after a Wi-Fi switch",
    Takes::kNothing};
constexpr Argument kNoWait{
    "[--no-wait]", "Only ask; the process that runs the network service connects", Takes::kNothing};
constexpr Argument kType{"[--type int|bool|string]", "The value's type; default: the type it had",
                         Takes::kOneOfItsOffers, "int bool string"};
constexpr Argument kCount{"[--count N]", "End after N values", Takes::kPositiveInt};

constexpr Argument kLanguage{"[--language L]", "Its name, as \"ko\"; default: the menu's language",
                             Takes::kText};

constexpr Argument kKey{"KEY", "The item's menu key, or its last parts, in any letter case",
                        Takes::kText, "@MENU_KEYS@", menuKeys};
constexpr Argument kAnyKey{"KEY",
                           "Any key, also one outside the menu, exactly as the provider gets it",
                           Takes::kText, "", menuKeys};
constexpr Argument kCallback{"CALLBACK", "As get_int or check_enable_int", Takes::kText, "",
                             callbacks};
constexpr Argument kCallValue{
    "[VALUE]", "What to set or check; an entry's number in the list of KEY; null: a null pointer"};
constexpr Argument kEntry{"INDEX", "The entry's number or text, in any letter case", Takes::kText,
                          "", choices};
constexpr Argument kValue{"VALUE", "The entry's number or text, in any letter case", Takes::kText,
                          "", choices};
constexpr Argument kShown{"VALUE", "What the item shows, in any letter case, or the entry's number",
                          Takes::kText, "", choices};
constexpr Argument kWithin{"[--within SECONDS]", "For how long; default: 60", Takes::kPositiveInt};
constexpr Argument kPosition{"POSITION", "1 or 2", Takes::kInt, "1 2"};
constexpr Argument kText{"TEXT", "The name"};
constexpr Argument kStoreKey{"KEY", "db/... or memory/...", Takes::kText, "", storeKeys};
constexpr Argument kStoreKeys{"KEY...", "db/... or memory/...", Takes::kTexts, "", storeKeys};
constexpr Argument kStoreValue{"VALUE", "A number, true or false, or a text"};
constexpr Argument kPrefix{"[PREFIX]", "How the keys begin; without it, all keys", Takes::kText, "",
                           storeKeys};
constexpr Argument kScenario{"SCENARIO", "Its name or path", Takes::kText, "FILES @SCENARIOS@",
                             scenarios};
constexpr Argument kFunction{"FUNCTION", "The platform function", Takes::kText, "",
                             faultyFunctions};
constexpr Argument kAFunction{"[FUNCTION]", "The platform function; without it, all", Takes::kText,
                              "", faultyFunctions};
constexpr Argument kCode{"CODE", "A number other than 0", Takes::kInt};
constexpr Argument kFlag{"FLAG", "The flag's name", Takes::kText, "", featureFlags};
constexpr Argument kAFlag{"[FLAG]", "The flag's name; without it, all", Takes::kText, "",
                          featureFlags};
constexpr Argument kFlagValue{"VALUE", "A number, true or false, or a text"};
constexpr Argument kResetYes{"[--yes]", "Do not ask", Takes::kNothing};

int runShell(Session& session, const Arguments& /*arguments*/) {
  return shell(session, commands());
}

// A row stays in one piece, which the formatter would take apart.
// clang-format off
constexpr Command kCommands[] = {
    {"show", "Show the whole menu", show, {kBrief, kAll, kKeys, kJson},
     "Each item has its name, value, help text, choices with what follows them, and the box that "
     "would ask first. Hidden and disabled items are marked. On a terminal the current choice is "
     "marked as well, and icons are left out. \"--product all\" shows the menu of every product, one after the "
     "other."},
    {"get", "Show one item", get, {kKey, kBrief, kAll, kKeys, kJson}},
    {"watch", "Show the menu, and again whenever it changes, until Ctrl-C", watch, {kJson},
     "On a terminal it is drawn anew in its place, with the time and a mark at what changed. With "
     "--json each item is a line, and again when it changes."},
    {"list", "Show an item's option list, and what follows a choice", list, {kKey, kJson}},
    {"box", "Show the box that asks before an item is changed", box, {kKey, kJson}},
    {"choose", "Choose an entry of an item's list, as a person does", choose,
     {kKey, kEntry, kYes, kJson}, "Asks first where the entry says so."},
    {"set", "Set an item's value without asking", set, {kKey, kValue, kWait, kJson}},
    {"connect", "Connect to the first or second saved network, and show how it goes", connect,
     {kPosition, kNoWait, kJson}},
    {"wait", "Wait until an item shows a value", wait, {kKey, kShown, kWithin, kJson},
     "When the time is over, that is an error with an exit code of its own."},
    {"expect", "Make sure that an item shows a value", expect, {kKey, kShown, kJson},
     "When it shows another one, that is an error with an exit code of its own."},
    {"name", "Give the TV a name", name, {kText, kJson}},
    {"call", "Call one function of the provider, and show exactly what it did", call,
     {kCallback, kAnyKey, kCallValue, kJson},
     "For those who write a provider or a framework: a callback of the table or an exported check, "
     "with any key. Outputs that it left alone are shown as untouched; what it hands out is given "
     "back."},
    {"texts", "Show all texts of a language beside the English, with where each appears", texts,
     {kLanguage, kJson},
     "For translators. A text comes with its string ID, its length, and the items, callbacks, states and products that show it, "
     "as the provider tells when it is asked; one that is not translated, or as long as its place, is marked. "
     "All products are asked, unless --product names one."},

    {"store", "Read, write and watch the configuration store"},
    {"store get", "Show a value of the store", storeGet, {kStoreKey, kJson}},
    {"store list", "Show all values whose keys begin with PREFIX", storeList, {kPrefix, kJson}},
    {"store set", "Store a value", storeSet, {kStoreKey, kStoreValue, kType, kJson},
     "Other programs that use the store see it at once."},
    {"store unset", "Remove a value of the store", storeUnset, {kStoreKey, kJson},
     "Other programs that use the store see it at once. A factory setting comes back when the store is next opened."},
    {"store watch", "Show a key's value whenever it is set, until Ctrl-C", storeWatch,
     {kStoreKeys, kCount, kJson}},

    {"network", "The simulated network"},
    {"network serve", "Run the network service by itself, until Ctrl-C", networkServe},
    {"network load", "Start the simulated network over with a scenario", networkLoad, {kScenario}},

    {"product", "The products whose menu can be shown"},
    {"product list", "Show the products: their names and what they are", productList, {kJson},
     "\"ventaro --product NAME\" shows the menu of one."},

    {"fault", "Platform functions that are made to fail"},
    {"fault list", "Show the functions that can be made to fail, and with which code each does", faultList, {kJson},
     "0 is a function that works."},
    {"fault set", "Let a platform function fail with a code, until it is cleared", faultSet, {kFunction, kCode, kJson}},
    {"fault clear", "Let a platform function work again, or all", faultClear, {kAFunction}},

    {"feature", "The product's feature flags"},
    {"feature list", "Show the feature flags as they are", featureList, {kJson}},
    {"feature set", "Override a feature flag of the product while the TV runs", featureSet, {kFlag, kFlagValue, kJson}},
    {"feature clear", "Let a feature flag be as the product has it, or all", featureClear, {kAFlag}},

    {"reset", "Make the TV as it left the factory", reset, {kResetYes},
     "Forgets all of the store, and starts the network over. Asks first."},

    {"shell", "Read commands line by line; \"exit\" ends", runShell, {},
     "The provider is loaded once, and its timers run. On a terminal lines can be edited, Tab completes commands, keys, "
     "values and options, and what changes later is shown above the line; Ctrl-C ends a command or a line, Ctrl-D the "
     "shell. \"help\" is --help."},
};
// clang-format on

}  // namespace

std::span<const Command> commands() {
  return kCommands;
}

int runCommand(Session& session, const std::vector<std::string>& words) {
  return runCommandLine(kCommands, session, words);
}

}  // namespace cli
