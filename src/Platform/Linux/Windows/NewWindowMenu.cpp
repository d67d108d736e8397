#include "Platform/Linux/Windows/NewWindowMenu.h"

#include "Platform/AXNames.h"

namespace morvel::x11 {

namespace {

AXElement part(XElement::Kind kind, ProcessID pid) {
    return AXElement(std::make_shared<XElement>(kind, pid, XCB_WINDOW_NONE, 0));
}

}  // namespace

AXAnswer NewWindowMenu::menuBar(ProcessID pid) const {
    if (!workspace_.canOpenNewWindow(pid)) return AXError::NoValue;
    return AXValue(part(XElement::Kind::MenuBar, pid));
}

AXAnswer NewWindowMenu::attribute(const XElement& element, std::string_view name) const {
    if (element.kind == XElement::Kind::MenuBar) {
        if (name != ax::kChildren) return AXError::Unsupported;
        return AXValue(std::vector{part(XElement::Kind::NewWindowItem, element.pid)});
    }
    if (name == ax::kTitle) return AXValue(std::string("New Window"));
    if (name == ax::kMenuItemCmdChar) return AXValue(std::string("N"));
    if (name == ax::kMenuItemCmdModifiers) return AXValue(0.0);
    return AXError::Unsupported;
}

AXError NewWindowMenu::performAction(const XElement& element, std::string_view name) {
    if (element.kind != XElement::Kind::NewWindowItem || name != ax::kPress) return AXError::Unsupported;
    return workspace_.openNewWindow(element.pid) ? AXError::Success : AXError::InvalidElement;
}

}  // namespace morvel::x11
