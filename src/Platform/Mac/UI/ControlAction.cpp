// The object that a control sends its action to.
#include "Platform/Mac/UI/ControlAction.h"

#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "Platform/Mac/objc/Associated.h"
#include "Platform/Mac/objc/Subclass.h"

namespace morvel::mac {

namespace {

constexpr objc::AssociationKey kTargetKey{};

struct ControlTarget {
    static constexpr const char* kClassName = "MorvelControlTarget";
    std::function<void()> act;

    void perform(Id) {
        const auto call = act;  // may end the control and this target with it
        call();
    }

    static NSObject make(std::function<void()> act) {
        using Class = objc::Subclass<ControlTarget>;
        [[maybe_unused]] static const objc::RawClass registered =
            Class("NSObject").adds<&ControlTarget::perform>(selectors::controlUsed).registered();
        auto target = std::make_unique<ControlTarget>();
        target->act = std::move(act);
        return Class::create<NSObject>(std::move(target), selectors::init);
    }
};

}  // namespace

void setAction(const NSControl& control, std::function<void()> act) {
    const NSObject target = ControlTarget::make(std::move(act));
    objc::setAssociated(control, kTargetKey, target);  // controls do not keep their target
    control.setTarget(target);
    control.setAction(selectors::controlUsed);
}

}  // namespace morvel::mac
