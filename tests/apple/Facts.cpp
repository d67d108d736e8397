// Reading and searching the tables.
#include "Facts.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace morvel::mac::checked {

namespace {

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    if (text.empty()) return parts;
    std::size_t start = 0;
    for (std::size_t end = text.find(separator); end != std::string::npos; end = text.find(separator, start)) {
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

/// Calls `row` with the fields of every line but the first, which names the columns.
template <typename Row>
void readTable(const std::string& path, std::size_t columns, Row row) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path);
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
        auto fields = split(line, '\t');
        fields.resize(std::max(columns, fields.size()));
        row(fields);
    }
}

std::string methodKey(const std::string& owner, bool toClass, const std::string& selector) {
    return owner + (toClass ? " + " : " - ") + selector;
}

}  // namespace

Facts::Facts(const std::string& folder) {
    readTable(folder + "/classes.tsv", 4, [&](const auto& f) { classes_[f[0]] = {f[1], split(f[3], ',')}; });
    readTable(folder + "/protocols.tsv", 2, [&](const auto& f) { protocols_[f[0]] = split(f[1], ','); });
    readTable(folder + "/methods.tsv", 6, [&](const auto& f) {
        methods_.try_emplace(methodKey(f[0], f[1] == "+", f[2]), MethodFact{f[3], split(f[4], ','), f[5]});
    });
    for (const char* table : {"/functions.tsv", "/stated_functions.tsv"}) {
        readTable(folder + table, 4, [&](const auto& f) { functions_[f[0]] = {f[2], split(f[3], ',')}; });
    }
    readTable(folder + "/constants.tsv", 3, [&](const auto& f) { constants_[f[0]] = {f[1], f[2]}; });
}

const MethodFact* Facts::declaredBy(const std::string& owner, bool toClass, const std::string& selector) const {
    if (const auto* found = find(methods_, methodKey(owner, toClass, selector))) return found;
    const auto protocol = protocols_.find(owner);
    if (protocol == protocols_.end()) return nullptr;
    for (const auto& inherited : protocol->second) {
        // NSObject is a class and a protocol of the same name, and inherits from itself in neither role.
        if (inherited == owner) continue;
        if (const auto* found = declaredBy(inherited, toClass, selector)) return found;
    }
    return nullptr;
}

const MethodFact* Facts::understoodBy(const std::string& className, bool toClass, const std::string& selector) const {
    std::string name = className;
    while (const auto* cls = classNamed(name)) {
        if (const auto* found = find(methods_, methodKey(name, toClass, selector))) return found;
        for (const auto& protocol : cls->protocols) {
            if (const auto* found = declaredBy(protocol, toClass, selector)) return found;
        }
        if (cls->superclass.empty()) {
            // A class object is an instance of the root class, too.
            return toClass ? find(methods_, methodKey(name, false, selector)) : nullptr;
        }
        name = cls->superclass;
    }
    return nullptr;
}

}  // namespace morvel::mac::checked
