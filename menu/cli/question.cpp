#include "question.h"

#include <unistd.h>

#include <iostream>

#include "../host/main_loop.h"
#include "exit_codes.h"
#include "session.h"
#include "stream.h"

namespace cli {

std::optional<int> endUnlessYes(Session& session, const menu::Provider::MessageBox& box) {
  const menu::Interruption interruption;
  if (isatty(STDIN_FILENO) == 0) {
    complain("nobody is here to answer \"" + box.text + "\"; --yes answers \"" + box.yes + "\"");
    return kUnanswered;
  }
  std::cerr << box.text << "\n1 " << box.yes << "\n2 " << box.no << "\n? " << std::flush;
  const auto answer = session.readLine(interruption);
  if (answer == "1" || answer == box.yes) return std::nullopt;
  std::cerr << "Nothing was changed.\n";
  return kDone;
}

}  // namespace cli
