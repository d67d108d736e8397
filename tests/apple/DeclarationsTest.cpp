// Everything our headers say about the system, compared with the published API: also what no test ever calls.
#include "Declarations.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "RuntimeTest.h"

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

/// A selector written elsewhere would escape the checks of the wrappers' messages.
TEST(Sources, WriteSelectorsOnlyInTheWrappers) {
    const std::filesystem::path root = MORVEL_MAC_SOURCES_FOLDER;
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        const std::string name = std::filesystem::relative(entry.path(), root).string();
        if (!entry.is_regular_file() || name.starts_with("apple/") || name.starts_with("objc/")) continue;
        std::ifstream file(entry.path());
        const std::string text(std::istreambuf_iterator<char>(file), {});
        EXPECT_EQ(text.find("\"_sel"), std::string::npos) << name;
        EXPECT_EQ(text.find("sel_registerName"), std::string::npos) << name;
        ++files;
    }
    EXPECT_GT(files, 2U);
}

}  // namespace
}  // namespace morvel::mac::checked
