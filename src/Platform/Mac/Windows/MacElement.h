// What stands behind an accessibility element of this host.
#pragma once

#include "Platform/Accessibility.h"
#include "Platform/Mac/apple/Accessibility.h"

namespace morvel::mac {

/// Keeps the system's reference. Two references are the same element where the system says that they are equal.
class MacElement : public AXElementImpl {
public:
    /// The process is asked of the reference, which knows it without asking anybody.
    explicit MacElement(CFRef<AXUIElementRef> reference);

    static AXElement wrap(CFRef<AXUIElementRef> reference) {
        return AXElement(std::make_shared<const MacElement>(std::move(reference)));
    }
    /// `element` was made by this host.
    static const MacElement& of(const AXElement& element) { return static_cast<const MacElement&>(element.impl()); }

    bool equals(const AXElementImpl& other) const override;
    size_t hash() const override;

    /// Null where the system refused to make one; every question about it then fails.
    AXUIElementRef reference() const { return reference_.get(); }
    ProcessID pid() const { return pid_; }

private:
    const CFRef<AXUIElementRef> reference_;
    ProcessID pid_;
};

}  // namespace morvel::mac
