// Foundation's values: strings, numbers, arrays, dictionaries, URLs, user defaults.
#include <cmath>

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

std::string textOf(RawObject string) {
    const auto* const text = payloadOf<std::string>(string);
    return text ? *text : std::string();
}

namespace {

double asDouble(const Number& number) {
    return std::visit([](auto value) { return static_cast<double>(value); }, number);
}

template <typename T>
T* payload(const Invocation& invocation) {
    return payloadOf<T>(invocation.receiver());
}

std::int64_t asInteger(const Number& number) {
    return std::visit([](auto value) { return static_cast<std::int64_t>(value); }, number);
}

RawObject valueAt(RawObject dictionary, RawObject key) {
    const auto* const entries = payloadOf<Entries>(dictionary);
    if (!entries) return nullptr;
    for (const auto& [candidate, value] : *entries) {
        if (areEqual(candidate.raw(), key)) return value.raw();
    }
    return nullptr;
}

void setValue(Entries& entries, RawObject key, RawObject value) {
    std::erase_if(entries, [&](const auto& entry) { return areEqual(entry.first.raw(), key); });
    if (value) entries.emplace_back(Id(key), Id(value));
}

void reportNil(const Invocation& invocation) {
    runtime().faults().add(FaultKind::BadCall, invocation.selector() + " raises an exception when given nil");
}

void installStrings(Runtime& runtime) {
    runtime.implement("NSString", "initWithBytes:length:encoding:", [](Invocation& i) {
        const auto* const bytes = static_cast<const char*>(const_cast<void*>(i.argument<const void*>(0)));
        setPayload(i.receiver(), std::string(bytes, i.argument<std::uint64_t>(1)));
        i.answer<RawObject>(i.receiver());
    });
    runtime.implement("NSString", "+stringWithUTF8String:", [](Invocation& i) {
        i.answerObject(makeString(i.argument<const char*>(0)));
    });
    runtime.implement("NSString", "UTF8String", [](Invocation& i) {
        const auto* const text = payload<std::string>(i);
        i.answer<const char*>(text ? text->c_str() : "");
    });
    runtime.implement("NSString", "length",
                      [](Invocation& i) { i.answer<std::uint64_t>(textOf(i.receiver()).size()); });
    runtime.implement("NSString",
                      "isEqualToString:", [](Invocation& i) { i.answer<bool>(areEqual(i.receiver(), i.object(0))); });
}

void installNumbers(Runtime& runtime) {
    runtime.implement("NSNumber",
                      "+numberWithBool:", [](Invocation& i) { i.answerObject(makeNumber(i.argument<bool>(0))); });
    runtime.implement("NSNumber",
                      "+numberWithDouble:", [](Invocation& i) { i.answerObject(makeNumber(i.argument<double>(0))); });
    runtime.implement("NSNumber", "+numberWithLongLong:", [](Invocation& i) {
        i.answerObject(makeNumber(i.argument<std::int64_t>(0)));
    });
    runtime.implement("NSNumber", "boolValue",
                      [](Invocation& i) { i.answer<bool>(asDouble(*payload<Number>(i)) != 0); });
    runtime.implement("NSNumber", "doubleValue",
                      [](Invocation& i) { i.answer<double>(asDouble(*payload<Number>(i))); });
    for (const char* name : {"longLongValue", "integerValue"}) {
        runtime.implement("NSNumber", name,
                          [](Invocation& i) { i.answer<std::int64_t>(asInteger(*payload<Number>(i))); });
    }
}

void installCollections(Runtime& runtime) {
    runtime.implement("NSArray", "+arrayWithObjects:count:", [](Invocation& i) {
        const RawObject* const raw = i.argument<RawObject*>(0);
        Elements elements;
        for (std::uint64_t k = 0; k < i.argument<std::uint64_t>(1); ++k) {
            if (!raw[k]) return reportNil(i);
            elements.emplace_back(raw[k]);
        }
        i.answerObject(makeArray(std::move(elements)));
    });
    runtime.implement("NSArray", "count", [](Invocation& i) {
        const auto* const elements = payload<Elements>(i);
        i.answer<std::uint64_t>(elements ? elements->size() : 0);
    });
    runtime.implement("NSArray", "objectAtIndex:", [](Invocation& i) {
        const auto* const elements = payload<Elements>(i);
        const auto index = i.argument<std::uint64_t>(0);
        if (elements && index < elements->size()) return i.answerObject((*elements)[index]);
        checked::runtime().faults().add(FaultKind::BadCall, "objectAtIndex: is beyond the array's end");
    });
    runtime.implement("NSDictionary", "+dictionaryWithObjects:forKeys:count:", [](Invocation& i) {
        const RawObject* const values = i.argument<RawObject*>(0);
        const RawObject* const keys = i.argument<RawObject*>(1);
        Entries entries;
        for (std::uint64_t k = 0; k < i.argument<std::uint64_t>(2); ++k) {
            if (!values[k] || !keys[k]) return reportNil(i);
            setValue(entries, keys[k], values[k]);
        }
        i.answerObject(makeDictionary(std::move(entries)));
    });
    runtime.implement("NSDictionary", "count", [](Invocation& i) {
        const auto* const entries = payload<Entries>(i);
        i.answer<std::uint64_t>(entries ? entries->size() : 0);
    });
    runtime.implement("NSDictionary", "allKeys", [](Invocation& i) {
        Elements keys;
        if (const auto* const entries = payload<Entries>(i)) {
            for (const auto& entry : *entries) keys.push_back(entry.first);
        }
        i.answerObject(makeArray(std::move(keys)));
    });
    runtime.implement("NSDictionary",
                      "objectForKey:", [](Invocation& i) { i.answerObject(Id(valueAt(i.receiver(), i.object(0)))); });
}

void installData(Runtime& runtime) {
    using Bytes = std::vector<unsigned char>;
    runtime.implement("NSData", "+dataWithBytes:length:", [](Invocation& i) {
        const auto* const first = static_cast<const unsigned char*>(i.argument<const void*>(0));
        const auto length = i.argument<std::uint64_t>(1);
        i.answerObject(checked::runtime().make("NSData", length ? Bytes(first, first + length) : Bytes()));
    });
    runtime.implement("NSData", "length", [](Invocation& i) {
        i.answer<std::uint64_t>(payload<Bytes>(i) ? payload<Bytes>(i)->size() : 0);
    });
    runtime.implement("NSData", "bytes", [](Invocation& i) {
        i.answer<const void*>(payload<Bytes>(i) ? payload<Bytes>(i)->data() : nullptr);
    });
}

void installURLs(Runtime& runtime) {
    struct URL {
        std::string scheme;
        std::string rest;
    };
    runtime.implement("NSURL", "+fileURLWithPath:", [](Invocation& i) {
        if (!i.object(0)) return reportNil(i);
        i.answerObject(checked::runtime().make("NSURL", URL{"file", textOf(i.object(0))}));
    });
    runtime.implement("NSURL", "+URLWithString:", [](Invocation& i) {
        const std::string text = textOf(i.object(0));
        const std::size_t colon = text.find(':');
        if (colon == std::string::npos || text.find(' ') != std::string::npos) return;
        const std::string scheme = text.substr(0, colon);
        const bool isFile = scheme == "file" && text.substr(colon).starts_with("://");
        i.answerObject(checked::runtime().make("NSURL", URL{scheme, text.substr(colon + (isFile ? 3 : 1))}));
    });
    runtime.implement("NSURL", "path", [](Invocation& i) {
        const auto* const url = payload<URL>(i);
        i.answerObject(url && url->scheme == "file" ? makeString(url->rest) : Id());
    });
    runtime.implement("NSURL", "scheme", [](Invocation& i) {
        const auto* const url = payload<URL>(i);
        i.answerObject(url ? makeString(url->scheme) : Id());
    });
    runtime.implement("NSURL", "isFileURL", [](Invocation& i) {
        const auto* const url = payload<URL>(i);
        i.answer<bool>(url && url->scheme == "file");
    });
    runtime.implement("NSURL", "absoluteString", [](Invocation& i) {
        const auto* const url = payload<URL>(i);
        i.answerObject(makeString(url ? url->scheme + (url->scheme == "file" ? "://" : ":") + url->rest : ""));
    });
}

void installDefaults(Runtime& runtime) {
    const auto entriesOf = [](const Invocation& i) -> Entries& {
        if (!payload<Entries>(i)) setPayload(i.receiver(), Entries{});
        return *payload<Entries>(i);
    };
    runtime.implement("NSUserDefaults",
                      "objectForKey:", [](Invocation& i) { i.answerObject(Id(valueAt(i.receiver(), i.object(0)))); });
    runtime.implement("NSUserDefaults", "setObject:forKey:", [entriesOf](Invocation& i) {
        setValue(entriesOf(i), i.object(1), i.object(0));
    });
    runtime.implement("NSUserDefaults", "removeObjectForKey:", [entriesOf](Invocation& i) {
        setValue(entriesOf(i), i.object(0), nullptr);
    });
}

}  // namespace

void installValues(Runtime& runtime) {
    installStrings(runtime);
    installNumbers(runtime);
    installCollections(runtime);
    installData(runtime);
    installURLs(runtime);
    installDefaults(runtime);
}

}  // namespace morvel::mac::checked
