// What the checked runtime found wrong. A test fails for every fault that is left at its end; a self-test takes the
// ones it provoked.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace morvel::mac::checked {

enum class FaultKind {
    UnknownClass,
    UnknownSelector,
    WrongReceiver,  // an instance method sent to a class, or the other way round; a message to no object
    ArgumentCount,
    ArgumentType,
    ResultType,
    WrongOverride,
    OverRelease,
    Leak,
    NoPool,
    UnknownFunction,
    WrongFunction,
    UnknownConstant,
    WrongConstant,
    EscapedException,
    BadCall,  // a call that is well typed and still wrong, for example an index out of range
};

struct Fault {
    FaultKind kind;
    std::string text;
};

class Faults {
public:
    void add(FaultKind kind, std::string text) { list_.push_back({kind, std::move(text)}); }
    std::vector<Fault> take() { return std::exchange(list_, {}); }

private:
    std::vector<Fault> list_;
};

}  // namespace morvel::mac::checked
