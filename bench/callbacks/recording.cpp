#include "recording.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <map>
#include <set>
#include <span>
#include <stdexcept>
#include <utility>
#include <vector>

bool recording::isOn = false;

namespace {

using recording::kUnwritten;
using recording::literal;

constexpr char kName = '\1';          // placeholder for a block's name, known only at the end
constexpr char kUntouched = '~';      // each byte of the caller's buffers before the call
constexpr std::size_t kShortest = 2;  // of a text that is searched for in others

struct Statement {
  std::string text;
  const void* block = nullptr;  // the named block
};

struct Block {
  std::size_t size;
  bool isZeroed;
  std::size_t statement;  // that allocates it
};

std::vector<Statement> statements;
std::map<const void*, Block> blocks;       // allocated, not freed, and not the platform's
std::map<const void*, std::string> names;  // names of blocks that may be freed or handed out
std::set<std::string> texts;               // the platform's
std::map<std::string, std::size_t> looks;  // the statement that reads a text without copying it
std::map<const void*, std::string> platformsWork;
bool hasHandle = false;
int handedOverCount = 0;

// The recorder's own calls are not recorded.
class Pause {
 public:
  Pause() { recording::isOn = false; }
  ~Pause() { recording::isOn = true; }
  Pause(const Pause&) = delete;
  Pause& operator=(const Pause&) = delete;
};

void add(std::string text, const void* block = nullptr) {
  statements.push_back({std::move(text), block});
}

void begin(const Outputs& outputs) {
  statements.clear();
  blocks.clear();
  texts.clear();
  looks.clear();
  platformsWork.clear();
  hasHandle = false;
  handedOverCount = 0;
  names = {{outputs.text, "text"}, {outputs.table, "*table"}, {outputs.items, "items"}};
  for (int i = 0; outputs.items != nullptr && i < outputs.number; ++i) {
    const std::string entry = "items[" + std::to_string(i) + "]";
    names[outputs.entry(i)] = entry;
    names[outputs.entry(i)->text] = "static_cast<ListEntry*>(" + entry + ")->text";
  }
  names.erase(nullptr);
}

// The platform's longest text that `content` begins with, or nothing.
std::string platformsTextAt(std::string_view content) {
  std::string longest;
  for (const std::string& text : texts) {
    if (content.starts_with(text) && text.size() > longest.size()) longest = text;
  }
  return longest;
}

std::string callOf(const char* function, std::initializer_list<std::string> arguments) {
  std::string all;
  for (const std::string& argument : arguments)
    all.append(all.empty() ? "" : ", ").append(argument);
  return std::string(function).append("(").append(all).append(")");
}

// An expression that writes the content: a text of unknown length for what the platform returned, a
// constant for the rest.
std::string written(std::string to, std::string_view content, std::size_t room) {
  std::string constant;
  const auto flush = [&] {
    if (!constant.empty()) to = callOf("constant", {to, literal(constant)});
    constant.clear();
  };
  while (!content.empty()) {
    const std::string text = platformsTextAt(content);
    if (text.empty()) {
      constant += content.front();
      content.remove_prefix(1);
      continue;
    }
    flush();
    to = callOf("given", {to, literal(text), std::to_string(room - 1)});
    content.remove_prefix(text.size());
    if (looks.contains(text)) statements[looks[text]] = {};
  }
  flush();
  return to;
}

void fill(const std::string& name, const void* start, std::size_t size, char untouched) {
  const std::string_view all(static_cast<const char*>(start), size);
  const std::string_view content = all.substr(0, all.find_last_not_of(untouched) + 1);
  const bool isDone = platformsWork[start] == content;
  if (!content.empty() && !isDone) add(written(name, content, size) + ";");
}

// Names a block that the callback hands out.
const Block& handOut(const void* start, const std::string& name) {
  const auto found = blocks.find(start);
  if (found == blocks.end()) throw std::logic_error("what was handed out is no new block");
  names[start] = name;
  return found->second;
}

void handOutText(const void* text, const std::string& name) {
  const Block& block = handOut(text, name);
  fill(name, text, block.size, block.isZeroed ? '\0' : kUnwritten);
}

void handOutList(const Outputs& outputs) {
  handOut(outputs.items, "made");
  for (int i = 0; i < outputs.number; ++i) {
    const std::string number = std::to_string(i);
    const ListEntry& entry = *outputs.entry(i);
    handOut(&entry, "entry" + number);
    handOutText(entry.text, "text" + number);
    add(callOf("enter", {"made", number, "entry" + number, "text" + number,
                         std::to_string(entry.value), std::to_string(entry.action)}) +
        ";");
  }
}

void giveOutputs(const Case& each, const Outputs& outputs) {
  const auto gives = [&](const char* parameter) {
    return each.prototype.find(parameter) != std::string::npos;
  };
  if (gives("** text") && outputs.text != nullptr) {
    handOutText(outputs.text, "made");
    add("*text = static_cast<char*>(made);");
  }
  if (gives("** table") && outputs.table != nullptr) {
    handOut(outputs.table, "made");
    add("*table = copyOfTable(made);");
  }
  if (outputs.items != nullptr) handOutList(outputs);
  if (gives("* word")) add("*word = " + literal(outputs.word) + ";");
  if (gives("* number")) add("*number = " + std::to_string(outputs.number) + ";");
  if (gives("** value")) fill("*value", outputs.value.data(), outputs.value.size(), kUntouched);
  if (gives("* message")) {
    fill("message", outputs.message.data(), outputs.message.size(), kUntouched);
    fill("first", outputs.first.data(), outputs.first.size(), kUntouched);
    fill("second", outputs.second.data(), outputs.second.size(), kUntouched);
  }
  add(outputs.items != nullptr ? "return static_cast<const void**>(made);"
                               : "return " + std::to_string(outputs.result) + ";");
}

// Of the allocated blocks, only those handed out get a name and are written.
std::string body() {
  std::string all;
  for (auto& [text, block] : statements) {
    const std::size_t place = text.find(kName);
    if (place != std::string::npos) {
      if (!names.contains(block)) continue;
      text.replace(place, 1, names[block]);
    }
    if (!text.empty()) all += "  " + text + "\n";
  }
  return all;
}

// NOLINTBEGIN(clang-analyzer-valist.Uninitialized): the caller has started them.
// The argument that a conversion of a format takes; `end` is its last character.
std::string argument(const char* end, std::va_list& arguments) {
  switch (*end) {
    case 's':
      return recording::shown(va_arg(arguments, const char*));
    case 'p':
      return recording::shown(va_arg(arguments, const void*));
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'c':
      if (end[-1] != 'l' && end[-1] != 'z') return recording::shown(va_arg(arguments, int));
      return std::to_string(va_arg(arguments, long)) + "L";
    default:
      throw std::logic_error("a log line's format has a conversion that is not known");
  }
}
// NOLINTEND(clang-analyzer-valist.Uninitialized)

}  // namespace

namespace recording {

std::string of(const Case& each, Function side) {
  Outputs outputs;
  stand_in::answers = each.answers;
  each.callOnce(side, outputs);  // without what it logs only once
  for (auto buffer : {std::span<char>(outputs.value), std::span<char>(outputs.message),
                      std::span<char>(outputs.first), std::span<char>(outputs.second)}) {
    std::ranges::fill(buffer, kUntouched);
  }
  if (each.prepare) each.prepare(outputs);
  begin(outputs);
  isOn = true;
  each.call(side, outputs);
  isOn = false;
  giveOutputs(each, outputs);
  outputs.giveBack();
  return body();
}

std::string literal(const std::string& text) {
  constexpr unsigned kDigit = 8;
  std::string all = "\"";
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (std::isprint(byte) != 0 && character != '"' && character != '\\') {
      all += character;
    } else {
      all += '\\';
      for (const unsigned place : {kDigit * kDigit, kDigit, 1U}) {
        all += static_cast<char>('0' + byte / place % kDigit);
      }
    }
  }
  return all + "\"";
}

void taken(const void* block, std::size_t size, bool isZeroed) {
  const Pause pause;
  blocks[block] = {size, isZeroed, statements.size()};
  names.erase(block);
  add(std::string("void* ") + kName + (isZeroed ? " = calloc(1, " : " = malloc(") +
          std::to_string(size) + ");",
      block);
}

void freed(const void* block) {
  const Pause pause;
  if (const auto taking = blocks.find(block); taking != blocks.end()) {
    statements[taking->second.statement] = {};
    blocks.erase(taking);
  } else if (names.contains(block)) {
    add("free(" + names[block] + ");");
    names.erase(block);
  }
}

void statement(const std::string& text) {
  const Pause pause;
  add(text);
}

char* given(char* text) {
  const Pause pause;
  if (std::string_view(text).size() >= kShortest) texts.emplace(text);
  return text;
}

char* handedOver(char* block) {
  given(block);
  const Pause pause;
  const std::string name = "given" + std::to_string(++handedOverCount);
  statements[blocks.at(block).statement] = {};
  blocks.erase(block);
  names[block] = name;
  Statement& last = *std::ranges::find_if(statements.rbegin(), statements.rend(),
                                          [](const Statement& each) { return !each.text.empty(); });
  last.text.insert(0, "char* " + name + " = ");
  looks[block] = statements.size();
  add(callOf("look", {name, literal(block)}) + ";");
  return block;
}

std::string shown(const char* text) {
  return text != nullptr ? literal(text) : "nullptr";
}

std::string shown(const void* handle) {
  if (handle == nullptr) return "nullptr";
  return hasHandle ? "handle_" : "&other_";
}

std::string shown(void** /*result*/) {
  hasHandle = true;
  return "&handle_";
}

std::string shownBuffer(char* buffer, const char* text) {
  const Pause pause;
  texts.emplace(text);
  if (!blocks.contains(buffer)) return "room_";
  platformsWork[buffer] = text;
  return std::string("static_cast<char*>(") + kName + ")";
}

std::string shownFormat(const char* format, std::va_list& arguments) {
  std::string all = literal(format);
  for (const char* at = format; *at != '\0'; ++at) {
    if (*at != '%' || *++at == '%') continue;
    while (std::isalpha(static_cast<unsigned char>(*at)) == 0 || *at == 'l' || *at == 'z') ++at;
    all += ", " + argument(at, arguments);
  }
  return all;
}

}  // namespace recording
