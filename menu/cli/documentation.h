// The commands and variables as data, from which scripts/command-documents makes README's table,
// the man page and the completion.
#ifndef MENU_CLI_DOCUMENTATION_H
#define MENU_CLI_DOCUMENTATION_H

#include <json/value.h>

namespace cli {

// {"commands": [{"words", "help", "more", "arguments": [{"name", "synopsis", "help", "offers"}]}],
// "variables": [{"name", "help", "option", "offers"}]}, without the rows of groups.
Json::Value documentation();

}  // namespace cli

#endif  // MENU_CLI_DOCUMENTATION_H
