// The command that lists the texts for who translates them.
#ifndef MENU_CLI_TEXTS_H
#define MENU_CLI_TEXTS_H

#include "command.h"

namespace cli {

Action texts;

}  // namespace cli

#endif  // MENU_CLI_TEXTS_H
