// The module's entry: introduces the bar as a program of the toolkit "Morvel" on the accessibility bus.
#include <atk-bridge.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/Linux/Accessibility/Module/AtkTree.h"

namespace morvel::x11 {

namespace {

constexpr const char* kAddressVariable = "AT_SPI_BUS_ADDRESS";

// ATK asks for the root by a function without an argument.
AtkObject* applicationRoot = nullptr;

void introduceToolkit() {
    auto* util = ATK_UTIL_CLASS(g_type_class_ref(ATK_TYPE_UTIL));
    util->get_root = [] { return applicationRoot; };
    util->get_toolkit_name = [] { return "Morvel"; };
    util->get_toolkit_version = [] { return MORVEL_VERSION; };
}

/// The bridge takes the address from the environment, which the programs that the bar starts must not inherit: to them
/// it may be out of date.
bool startBridge(const char* busAddress) {
    const char* set = std::getenv(kAddressVariable);
    const auto before = set ? std::optional<std::string>(set) : std::nullopt;
    setenv(kAddressVariable, busAddress, 1);
    const bool isStarted = atk_bridge_adaptor_init(nullptr, nullptr) == 0;
    before ? setenv(kAddressVariable, before->c_str(), 1) : unsetenv(kAddressVariable);
    return isStarted;
}

class BridgedTree : public AtkTree {
public:
    BridgedTree() { applicationRoot = application(); }
    ~BridgedTree() override {
        if (isStarted_) atk_bridge_adaptor_cleanup();
        applicationRoot = nullptr;
    }
    bool start(const char* busAddress) { return isStarted_ = startBridge(busAddress); }

private:
    bool isStarted_ = false;
};

}  // namespace
}  // namespace morvel::x11

extern "C" __attribute__((visibility("default"))) morvel::x11::AccessibilityBridge* morvelMakeAccessibilityBridge(
    const char* version, const char* busAddress) {
    using namespace morvel::x11;
    if (std::string_view(version) != MORVEL_VERSION) return nullptr;
    introduceToolkit();
    auto tree = std::make_unique<BridgedTree>();
    return tree->start(busAddress) ? tree.release() : nullptr;
}
