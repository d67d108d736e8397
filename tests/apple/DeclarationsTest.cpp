// Everything our headers say about the system, compared with the published API: also what no test ever calls.
#include "Declarations.h"

#include "RuntimeTest.h"
#include "WrittenMessages.h"

#include "Declared.inc"

namespace morvel::mac::checked {
namespace {

class Declarations : public RuntimeTest {};

TEST_F(Declarations, MessagesInWrappersExistWithTheirTypes) {
    ASSERT_GT(writtenMessages().size(), 100U) << "wrappers that are not noted are not checked";
    for (const auto& message : writtenMessages()) runtime().checkWritten(message);
}

TEST_F(Declarations, FunctionsHaveTheirTypes) {
    ASSERT_GT(kDeclaredFunctions.size(), 60U);
    for (const auto& function : kDeclaredFunctions) checkFunction(function);
}

TEST_F(Declarations, ConstantsHaveTheirValues) {
    ASSERT_GT(kDeclaredConstants.size(), 40U);
    for (const auto& constant : kDeclaredConstants) checkConstant(constant);
}

TEST_F(Declarations, ExportedSymbolsHaveTheirTypes) {
    ASSERT_GT(kDeclaredSymbols.size(), 15U);
    for (DeclaredConstant symbol : kDeclaredSymbols) {
        // The facts name this struct by its pointer's typedef.
        if (symbol.name == "_dispatch_main_q") symbol.encoding = "{dispatch_queue_t=}";
        checkConstant(symbol);
    }
}

}  // namespace
}  // namespace morvel::mac::checked
