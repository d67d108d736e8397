// The behaviours of the system's own objects that the generic rule does not give: values, collections, views, windows,
// menus, notifications, the application.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "Platform/Mac/objc/Send.h"
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
std::string textOf(Borrowed string);
/// Null when there is none under the key, or this is no dictionary.
RawObject valueAt(Borrowed dictionary, Borrowed key);
/// Equal as isEqual: and CFEqual have it: the same object, or equal values.
bool areEqual(Borrowed left, Borrowed right);

/// Sends by a name that is known at run time, as the system sends to our objects.
template <typename R = void, typename... Arguments>
objc::NativeType<R> tell(Borrowed receiver, const std::string& message, const Arguments&... arguments) {
    return objc::sendRaw<R, Arguments...>(receiver, runtime().selectorNamed(message), arguments...);
}

/// Registers all behaviours, once per process.
void installSystemObjects(Runtime& target);
void installValues(Runtime& target);
void installViews(Runtime& target);
void installForms(Runtime& target);
void installAnimations(Runtime& target);
void installDrags(Runtime& target);
void installEvents(Runtime& target);
void installAppearance(Runtime& target);
void installApplication(Runtime& target);
void installNotifications(Runtime& target);
void installWorkspace(Runtime& target);

/// The lines that were written to the system log; cleared at the beginning of each test.
std::vector<std::string>& logLines();

/// Posts as the system does: to the observers of the default centre, or of NSWorkspace's.
enum class Center { Default, Workspace, Distributed };
void post(Center center, RawObject name, const Id& object, Entries userInfo = {});

}  // namespace morvel::mac::checked
