// The behaviours of the system's own objects that the generic rule does not give: values, collections, views, windows,
// menus, notifications, the application.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "Runtime.h"

namespace morvel::mac::checked {

/// A number's value and what it was made from.
using Number = std::variant<bool, std::int64_t, double>;
using Elements = std::vector<Id>;
using Entries = std::vector<std::pair<Id, Id>>;  // keys and values

Id makeString(std::string_view text);
Id makeNumber(Number number);
Id makeArray(Elements elements);
Id makeDictionary(Entries entries);
/// The text of a string object; empty for anything else.
std::string textOf(RawObject string);
/// Equal as isEqual: and CFEqual have it: the same object, or equal values.
bool areEqual(RawObject left, RawObject right);

/// Registers all behaviours, once per process.
void installSystemObjects(Runtime& runtime);
void installValues(Runtime& runtime);
void installViews(Runtime& runtime);
void installForms(Runtime& runtime);
void installAnimations(Runtime& runtime);
void installDrags(Runtime& runtime);
void installEvents(Runtime& runtime);
void installAppearance(Runtime& runtime);
void installApplication(Runtime& runtime);
void installNotifications(Runtime& runtime);
void installWorkspace(Runtime& runtime);

/// Posts as the system does: to the observers of the default centre, or of NSWorkspace's.
enum class Center { Default, Workspace, Distributed };
void post(Center center, RawObject name, const Id& object, Entries userInfo = {});

}  // namespace morvel::mac::checked
