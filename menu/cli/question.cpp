#include "question.h"

#include <unistd.h>

#include <iostream>

#include "../host/main_loop.h"
#include "../host/typed_name.h"
#include "exit_codes.h"
#include "platform/host/visible_text.h"
#include "session.h"
#include "stream.h"

namespace cli {

namespace {

using platform::host::visibleLine;
using platform::host::visibleText;

// By its number or as the button says, in any letter case; the button's first letters are enough.
bool isAnswer(const std::string& typed, const char* number, const std::string& button) {
  return typed == number || (!typed.empty() && menu::beginsPath(typed, button));
}

}  // namespace

std::optional<int> endUnlessYes(Session& session, const menu::Provider::MessageBox& box) {
  const menu::Interruption interruption;
  if (isatty(STDIN_FILENO) == 0) {
    complain("nobody is here to answer \"" + box.text + "\"; --yes answers \"" + box.yes + "\"");
    return kUnanswered;
  }
  std::cerr << visibleText(box.text) << "\n1 " << visibleLine(box.yes) << "\n2 "
            << visibleLine(box.no) << "\n";
  while (true) {
    std::cerr << "? " << std::flush;
    const auto answer = session.readLine(interruption);
    if (!answer) break;
    const bool isYes = isAnswer(*answer, "1", box.yes);
    if (isYes == isAnswer(*answer, "2", box.no)) continue;  // neither, or the start of both
    if (isYes) return std::nullopt;
    std::cerr << "Nothing was changed.\n";
    return kDone;
  }
  std::cerr << "\nNothing was changed.\n";
  return interruption.isAsked() ? interruption.exitCode() : kUnanswered;
}

}  // namespace cli
