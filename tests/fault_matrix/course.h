// The language of the tables in this folder: what a function of the provider does, step by step,
// and what each platform function on its way gives when it works and when it fails.
//
//   {mainLog("START"), takesLock(),
//    ask("vconf_set_str", kNameKey, "TV Three")
//        .works({mainLog("Device Name set to TV Three"), gives("0")})
//        .fails({systemLog("wifi_direct_set_device_name::status [0xfffffff7]"), gives("-9")}),
//    unlocks()}
//
// In a text, {key} stands for the key that was asked for, {result} for the result given so far,
// {ap} and {connection} for the number of the access point or connection that was last handed out,
// {timer} for the id of the timer that was last started, {NAME} for what sets() has named so.
#ifndef FAULT_MATRIX_COURSE_H
#define FAULT_MATRIX_COURSE_H

#include <cerrno>
#include <map>
#include <string>
#include <vector>

#include "journal.h"

using namespace fake_platform;  // NOLINT(google-build-using-namespace): the tests' vocabulary

// What a failing function returns: in a text [-9], [0xfffffff7].
inline constexpr int kFailure = -9;
inline constexpr int kLockFailure = EDEADLK;
inline constexpr char kLockFunction[] = "pthread_mutex_lock";
inline constexpr char kLogFunction[] = "__dlog_print";

struct Step;
using Steps = std::vector<Step>;

struct Step {
  enum class Kind {
    kLines,
    kGroup,
    kCall,
    kRefused,
    kLock,
    kAnswer,
    kPrint,
    kTimerStart,
    kTimerStop,
    kWatch,
    kSetting,
    kWhenSet,
    kEnd
  };

  // Lines that always follow, or several steps as one.
  Step(const Journal::Piece& piece) : lines(piece) {}  // NOLINT(google-explicit-constructor)
  Step(const Journal& journal) : lines(journal) {}     // NOLINT(google-explicit-constructor)
  Step(Steps steps);                                   // NOLINT(google-explicit-constructor)
  Step(Kind its, std::string its_text) : kind(its), text(std::move(its_text)) {}

  // What follows a platform call; by default just the next step.
  Step works(Steps steps) &&;
  Step fails(Steps steps) &&;
  // When it fails although its work is done and its output written; by default as fails().
  Step failsWithOutput(Steps steps) &&;

  Kind kind = Kind::kLines;
  Journal::Piece lines;  // of a call: the call itself
  std::string text;      // the function's name, the answer, what is printed
  std::string outputs;   // of an answer
  Steps group;           // of a call: what follows when it works
  Steps failing;
  Steps failingWithOutput;
  bool toldApart = false;
};

// A call of a platform function.
template <typename... Arguments>
Step ask(const char* function, const Arguments&... arguments) {
  Step step(Step::Kind::kCall, function);
  step.lines = call(function, arguments...);
  return step;
}

// A call that the platform always refuses, because of its arguments.
template <typename... Arguments>
Step refused(const char* function, const Arguments&... arguments) {
  Step step = ask(function, arguments...);
  step.kind = Step::Kind::kRefused;
  return step;
}

// Takes the lock; if that fails, its error is raised and nothing follows.
Step takesLock();

// The result, and what the outputs hold; the last one counts.
Step gives(const std::string& result, const std::string& outputs = "");
inline constexpr char kUntouched[] = "untouched";
// An exception that leaves, the outputs untouched.
Step raises(const std::string& exception);

// A line on standard output.
Step prints(const std::string& line);

// The refresh timer starts, or restarts.
Step startsTimer();
// The running timer ends.
Step endsTimer();

// The saved networks are watched from here on; nothing happens if they already are.
Step watchesNetworks();

// From here on {name} stands for this text, "null" for none; and what follows only when there is
// one.
Step sets(const std::string& name, const std::string& value);
Step whenSet(const std::string& name, Steps steps);

// Ends the call here: later steps of the table are skipped.
Step ends();

// How a platform function fails while a provider's function is called twice.
enum class Mode { kNever, kAlways, kFirstCall, kSecondCall, kThirdCall, kAlwaysWithOutput };
const char* nameOf(Mode mode);

struct Fault {
  std::string function;
  Mode mode = Mode::kNever;
};

// The expected run.
struct Outcome {
  Journal journal;
  std::string answer;
  std::string printed;
  bool operator==(const Outcome&) const = default;
};
void PrintTo(const Outcome& run, std::ostream* out);

// What was already requested from the platform when a walk begins.
struct Beginning {
  int accessPoints = 0;
  bool networksAreWatched = false;
};

// "RESULT" or "RESULT, OUTPUTS".
std::string answerOf(const std::string& result, const std::string& outputs);

// Walks through the steps of run after run under a fault. It knows of the platform what the tables
// name by number, and what is left open.
class Walker {
 public:
  Walker() = default;
  explicit Walker(const Beginning& beginning)
      : accessPoint_(beginning.accessPoints),
        isWatched_(beginning.networksAreWatched),
        subscriptions_(beginning.networksAreWatched ? 1 : 0) {}

  // Sets this fault and restarts the count of its calls.
  void arm(const Fault& fault);
  Outcome walk(const Steps& steps, const std::string& key);
  // Whether the next attempt to take the lock fails.
  bool nextLockFails() const { return fault_.function == kLockFunction && fails(calls_ + 1); }

  // Whether anything has failed since arm().
  bool hasFailed() const { return hasFailed_; }

  void timerHasEnded() { timerRuns_ = false; }
  // The access points handed out and not destroyed.
  int openAccessPoints() const { return openAccessPoints_; }
  int openConnections() const { return openConnections_; }
  std::size_t subscriptions() const { return subscriptions_; }
  // Texts that the provider never frees, because the platform may own them: a product's device
  // name.
  int keptTexts() const { return keptTexts_; }

 private:
  bool fails(int call) const;
  bool walkAll(const Steps& steps);
  bool walkOne(const Step& step);
  bool walkCall(const Step& step);
  bool walkLock();
  bool walkWatch();
  void walkLog();
  bool isOnNoConnection(const Step& step) const;
  void walkTimerStart();
  void addLines(const Journal::Piece& piece);
  void follow(const std::string& function, bool isDone);
  std::string filled(std::string text) const;

  Fault fault_;
  int calls_ = 0;  // of the function that fails
  bool hasFailed_ = false;
  Outcome run_;
  std::string key_;
  std::string result_;
  int accessPoint_ = 0;
  int openAccessPoints_ = 0;
  int connection_ = 0;
  int openConnections_ = 0;
  bool isWatched_ = false;
  std::size_t subscriptions_ = 0;
  int keptTexts_ = 0;
  int timer_ = 0;
  bool timerRuns_ = false;
  std::map<std::string, std::string> settings_;
};

#endif  // FAULT_MATRIX_COURSE_H
