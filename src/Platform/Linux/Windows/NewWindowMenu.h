// The menu bar that an application would have on this system: the one item of it that others ask for.
#pragma once

#include "Platform/Linux/Applications/XWorkspace.h"
#include "Platform/Linux/Windows/XElement.h"

namespace morvel::x11 {

/// Applications have no menu bar that others could read here, but many say in their desktop entries how they open a new
/// window. To whoever looks for it by its keyboard shortcut it is a "New Window" item with Command-N.
class NewWindowMenu {
public:
    /// The workspace outlives this.
    explicit NewWindowMenu(XWorkspace& workspace) : workspace_(workspace) {}

    static bool isPart(const XElement& element) {
        return element.kind == XElement::Kind::MenuBar || element.kind == XElement::Kind::NewWindowItem;
    }
    /// The application's attribute AXMenuBar: no value where it opens no windows on request.
    AXAnswer menuBar(ProcessID pid) const;
    AXAnswer attribute(const XElement& element, std::string_view name) const;
    AXError performAction(const XElement& element, std::string_view name);

private:
    XWorkspace& workspace_;
};

}  // namespace morvel::x11
