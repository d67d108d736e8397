// The API facts of facts/*.tsv: which classes, methods, functions and constants exist, and with which types.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvel::mac::checked {

struct MethodFact {
    std::string result;
    std::vector<std::string> arguments;
    std::string resultType;  // readable, with _Nullable where nil may come back
};

struct FunctionFact {
    std::string result;
    std::vector<std::string> arguments;
};

struct ConstantFact {
    std::string encoding;
    std::string value;  // empty for an exported symbol
};

struct ClassFact {
    std::string superclass;  // empty for a root
    std::vector<std::string> protocols;
};

class Facts {
public:
    /// Reads the tables; throws std::runtime_error when one is missing, since nothing could be checked then.
    explicit Facts(const std::string& folder);

    const ClassFact* classNamed(const std::string& name) const { return find(classes_, name); }
    bool hasProtocol(const std::string& name) const { return protocols_.contains(name); }
    const FunctionFact* function(const std::string& name) const { return find(functions_, name); }
    const ConstantFact* constant(const std::string& name) const { return find(constants_, name); }

    /// Declared by this class itself, or by this protocol or one it inherits.
    const MethodFact* declaredBy(const std::string& owner, bool toClass, const std::string& selector) const;
    /// What an object of the class understands: the class, its superclasses, and the protocols of each.
    const MethodFact* understoodBy(const std::string& className, bool toClass, const std::string& selector) const;

private:
    template <typename T>
    static const T* find(const std::map<std::string, T>& table, const std::string& name) {
        const auto found = table.find(name);
        return found == table.end() ? nullptr : &found->second;
    }

    std::map<std::string, ClassFact> classes_;
    std::map<std::string, std::vector<std::string>> protocols_;  // name to what it inherits
    std::map<std::string, MethodFact> methods_;                  // "owner + selector" or "owner - selector"
    std::map<std::string, FunctionFact> functions_;
    std::map<std::string, ConstantFact> constants_;
};

}  // namespace morvel::mac::checked
