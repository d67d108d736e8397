// The list of written messages, and the comparison of declarations, reported as faults.
#include "Declarations.h"

#include "Runtime.h"

namespace morvel::mac::objc {

bool checkedNoteMessage(const WrittenMessage& message) {
    checked::writtenMessages().push_back(message);
    return true;
}

}  // namespace morvel::mac::objc

namespace morvel::mac::checked {

std::vector<objc::WrittenMessage>& writtenMessages() {
    static std::vector<objc::WrittenMessage> list;  // made before main: it asks nothing of the runtime
    return list;
}

void checkFunction(const DeclaredFunction& function) {
    Faults& faults = runtime().faults();
    const FunctionFact* const fact = runtime().facts().function(function.name);
    if (!fact) return faults.add(FaultKind::UnknownFunction, "there is no function " + function.name);
    std::string ours = function.types.result;
    std::string theirs = fact->result;
    for (std::size_t i = 0; i < function.types.count; ++i) ours += std::string(",") + function.types.arguments[i];
    for (const auto& argument : fact->arguments) theirs += "," + argument;
    if (ours != theirs) {
        faults.add(FaultKind::WrongFunction, function.name + " is declared as " + ours + " and is " + theirs);
    }
}

void checkConstant(const DeclaredConstant& constant) {
    Faults& faults = runtime().faults();
    const ConstantFact* const fact = runtime().facts().constant(constant.name);
    if (!fact) return faults.add(FaultKind::UnknownConstant, "there is no constant " + constant.name);
    if (fact->encoding != constant.encoding || fact->value != constant.value) {
        faults.add(FaultKind::WrongConstant, constant.name + " is " + fact->encoding + " " + fact->value + ", not " +
                                                 constant.encoding + " " + constant.value);
    }
}

}  // namespace morvel::mac::checked
