// How items and values are written: for people, or as JSON for programs.
#ifndef MENU_CLI_OUTPUT_H
#define MENU_CLI_OUTPUT_H

#include <json/value.h>

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
void printList(const std::vector<menu::Provider::ListEntry>& entries, Format format);
void printBox(const menu::Provider::MessageBox& box, Format format);

// "key = value", or {"key": ..., "type": ..., "value": ...}.
void printValue(const std::string& key, const platform::host::StoreValue& value, Format format);

// On standard output, with a line feed, at once.
void printLine(const std::string& line);
void printJson(const Json::Value& value);

// The callbacks that failed while the items were read, on standard error. Returns whether any did.
bool printProblems(const std::vector<menu::Item>& items);

}  // namespace cli

#endif  // MENU_CLI_OUTPUT_H
