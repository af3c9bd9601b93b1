// How items and values are written: for people, or as JSON for programs.
#ifndef MENU_CLI_OUTPUT_H
#define MENU_CLI_OUTPUT_H

#include <json/value.h>

#include <map>
#include <string>
#include <vector>

#include "../host/menu_model.h"
#include "platform/host/config_store.h"

namespace cli {

enum class Format { kText, kJson };

// How much a person is shown of an item; JSON always tells all.
enum class Detail { kLine, kAll };

void printItems(const std::vector<menu::Item>& items, Format format, Detail detail);
void printItem(const menu::Item& item, Format format, Detail detail = Detail::kLine);

// One of several that follow each other; JSON takes one line each.
void printUpdate(const menu::Item& item, Format format);
void printUpdate(const std::vector<menu::Item>& items, Format format);

void printList(const std::vector<menu::Provider::ListEntry>& entries, Format format);
void printBox(const menu::Provider::MessageBox& box, Format format);

// "key = value", or {"key": ..., "type": ..., "value": ...}. An update takes one line of JSON.
void printValue(const std::string& key, const platform::host::StoreValue& value, Format format);
void printUpdate(const std::string& key, const platform::host::StoreValue& value, Format format);
void printValues(const std::map<std::string, platform::host::StoreValue>& values, Format format);

// Keeps standard output for what this program prints: what a provider prints goes to standard error
// from now on. To be called before anything is printed.
void claimStandardOutput();

// Whether all that was printed has been written.
bool standardOutputIsWritten();

// On standard output, with a line feed, at once.
void printLine(const std::string& line);

// A document that is read by itself, over several lines.
void printJson(const Json::Value& value);

// One of several documents, on one line.
void printJsonLine(const Json::Value& value);

// The callbacks that failed while the items were read, on standard error. Returns whether any did.
bool printProblems(const std::vector<menu::Item>& items);

}  // namespace cli

#endif  // MENU_CLI_OUTPUT_H
