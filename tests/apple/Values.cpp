// Foundation's values: strings, numbers, arrays, dictionaries, data, URLs, user defaults.
#include "SystemObjects.h"

namespace morvel::mac::checked {

Id makeString(std::string_view text) {
    return runtime().make("NSString", std::string(text));
}
Id makeNumber(Number number) {
    return runtime().make("NSNumber", number);
}
Id makeArray(Elements elements) {
    return runtime().make("NSArray", std::move(elements));
}
Id makeDictionary(Entries entries) {
    return runtime().make("NSDictionary", std::move(entries));
}

std::string textOf(Borrowed string) {
    return held<std::string>(string);
}

RawObject valueAt(Borrowed dictionary, Borrowed key) {
    for (const auto& [candidate, value] : held<Entries>(dictionary))
        if (areEqual(candidate, key)) return value.raw();
    return nullptr;
}

namespace {

using Bytes = std::vector<unsigned char>;

struct URL {
    std::string scheme;
    std::string rest;
    bool isFile() const { return scheme == "file"; }
    std::string text() const { return scheme.empty() ? "" : scheme + (isFile() ? "://" : ":") + rest; }
};

template <typename T>
const T& own(const Invocation& invocation) {
    return held<T>(invocation.receiver());
}

template <typename T>
T numberIn(const Invocation& invocation) {
    return std::visit([](auto value) { return static_cast<T>(value); }, own<Number>(invocation));
}

void setValue(const Invocation& invocation, RawObject key, RawObject value) {
    auto& entries = ensured<Entries>(invocation.receiver());
    std::erase_if(entries, [&](const auto& entry) { return areEqual(entry.first, key); });
    if (value) entries.emplace_back(Id(key), Id(value));
}

void reportNil(const Invocation& invocation) {
    runtime().faults().add(FaultKind::BadCall, invocation.selector() + " raises an exception when given nil");
}

void installStrings(Runtime& target) {
    const auto string = target.implementing("NSString");
    string("initWithBytes:length:encoding:", [](Invocation& i) {
        setPayload(i.receiver(),
                   std::string(static_cast<const char*>(i.argument<const void*>(0)), i.argument<std::uint64_t>(1)));
        i.answer<RawObject>(i.receiver());
    });
    string("UTF8String", [](Invocation& i) { i.answer<const char*>(own<std::string>(i).c_str()); });
}

void installNumbers(Runtime& target) {
    const auto number = target.implementing("NSNumber");
    number("+numberWithBool:", [](Invocation& i) { i.answerObject(makeNumber(i.argument<bool>(0))); });
    number("+numberWithDouble:", [](Invocation& i) { i.answerObject(makeNumber(i.argument<double>(0))); });
    number("+numberWithLongLong:", [](Invocation& i) { i.answerObject(makeNumber(i.argument<std::int64_t>(0))); });
    number("boolValue", [](Invocation& i) { i.answer<bool>(numberIn<double>(i) != 0); });
    number("doubleValue", [](Invocation& i) { i.answer<double>(numberIn<double>(i)); });
    for (const char* name : {"longLongValue", "integerValue"})
        number(name, [](Invocation& i) { i.answer<std::int64_t>(numberIn<std::int64_t>(i)); });
}

void installCollections(Runtime& target) {
    const auto array = target.implementing("NSArray");
    array("+arrayWithObjects:count:", [](Invocation& i) {
        const RawObject* const raw = i.argument<RawObject*>(0);
        Elements elements;
        for (std::uint64_t k = 0; k < i.argument<std::uint64_t>(1); ++k) {
            if (!raw[k]) return reportNil(i);
            elements.emplace_back(raw[k]);
        }
        i.answerObject(makeArray(std::move(elements)));
    });
    array("count", [](Invocation& i) { i.answer<std::uint64_t>(own<Elements>(i).size()); });
    array("objectAtIndex:", [](Invocation& i) {
        const auto index = i.argument<std::uint64_t>(0);
        if (index < own<Elements>(i).size()) return i.answerObject(own<Elements>(i)[index]);
        runtime().faults().add(FaultKind::BadCall, "objectAtIndex: is beyond the array's end");
    });
    const auto dictionary = target.implementing("NSDictionary");
    dictionary("+dictionaryWithObjects:forKeys:count:", [](Invocation& i) {
        const RawObject* const values = i.argument<RawObject*>(0);
        const RawObject* const keys = i.argument<RawObject*>(1);
        Entries entries;
        for (std::uint64_t k = 0; k < i.argument<std::uint64_t>(2); ++k) {
            if (!values[k] || !keys[k]) return reportNil(i);
            entries.emplace_back(Id(keys[k]), Id(values[k]));
        }
        i.answerObject(makeDictionary(std::move(entries)));
    });
    dictionary("allKeys", [](Invocation& i) {
        Elements keys;
        for (const auto& entry : own<Entries>(i)) keys.push_back(entry.first);
        i.answerObject(makeArray(std::move(keys)));
    });
    dictionary("objectForKey:", [](Invocation& i) { i.answerObject(Id(valueAt(i.receiver(), i.object(0)))); });
}

void installData(Runtime& target) {
    const auto data = target.implementing("NSData");
    data("+dataWithBytes:length:", [](Invocation& i) {
        const auto* const first = static_cast<const unsigned char*>(i.argument<const void*>(0));
        const auto length = i.argument<std::uint64_t>(1);
        i.answerObject(runtime().make("NSData", length ? Bytes(first, first + length) : Bytes()));
    });
    data("length", [](Invocation& i) { i.answer<std::uint64_t>(own<Bytes>(i).size()); });
    data("bytes", [](Invocation& i) { i.answer<const void*>(own<Bytes>(i).data()); });
}

void installURLs(Runtime& target) {
    const auto url = target.implementing("NSURL");
    url("+fileURLWithPath:", [](Invocation& i) {
        if (!i.object(0)) return reportNil(i);
        i.answerObject(runtime().make("NSURL", URL{"file", textOf(i.object(0))}));
    });
    url("+URLWithString:", [](Invocation& i) {
        const std::string text = textOf(i.object(0));
        const std::size_t colon = text.find(':');
        if (colon == std::string::npos || text.find(' ') != std::string::npos) return;
        const bool isFile = text.starts_with("file://");
        i.answerObject(runtime().make("NSURL", URL{text.substr(0, colon), text.substr(colon + (isFile ? 3 : 1))}));
    });
    url("path", [](Invocation& i) { i.answerObject(own<URL>(i).isFile() ? makeString(own<URL>(i).rest) : Id()); });
    url("scheme", [](Invocation& i) { i.answerObject(makeString(own<URL>(i).scheme)); });
    url("isFileURL", [](Invocation& i) { i.answer<bool>(own<URL>(i).isFile()); });
    url("absoluteString", [](Invocation& i) { i.answerObject(makeString(own<URL>(i).text())); });
}

void installDefaults(Runtime& target) {
    const auto defaults = target.implementing("NSUserDefaults");
    defaults("objectForKey:", [](Invocation& i) { i.answerObject(Id(valueAt(i.receiver(), i.object(0)))); });
    defaults("setObject:forKey:", [](Invocation& i) { setValue(i, i.object(1), i.object(0)); });
    defaults("removeObjectForKey:", [](Invocation& i) { setValue(i, i.object(0), nullptr); });
}

}  // namespace

void installValues(Runtime& target) {
    installStrings(target);
    installNumbers(target);
    installCollections(target);
    installData(target);
    installURLs(target);
    installDefaults(target);
}

}  // namespace morvel::mac::checked
