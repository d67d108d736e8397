#include "sim/SimAccessibility.h"

#include <algorithm>
#include <sstream>
#include <type_traits>

#include "Platform/AXNames.h"

namespace morvel::sim {

namespace {

/// Every handle is an object of its own, so that code which compares handles by address fails here too.
struct SimElementImpl : AXElementImpl {
    explicit SimElementImpl(ElementID i) : id(i) {}
    bool equals(const AXElementImpl& other) const override {
        return static_cast<const SimElementImpl&>(other).id == id;
    }
    size_t hash() const override { return std::hash<ElementID>{}(id); }

    ElementID id;
};

}  // namespace

class SimObserver : public AXObserver {
public:
    SimObserver(SimAccessibility& ax, std::shared_ptr<SimAccessibility::ObserverState> state)
        : ax_(ax), state_(std::move(state)) {}
    AXError addNotification(const AXElement& element, std::string_view name) override {
        return ax_.subscribe(*state_, element, name);
    }

private:
    SimAccessibility& ax_;  // the desktop's
    std::shared_ptr<SimAccessibility::ObserverState> state_;
};

AXElement SimAccessibility::applicationElement(ProcessID pid) {
    return handle(applicationID(pid));
}

AXAnswer SimAccessibility::attribute(const AXElement& element, std::string_view name) {
    const ElementID id = idOf(element);
    if (const AXError error = reach(id); error != AXError::Success) return error;
    const SimElement& target = elements_.at(id);
    if (const auto fault = target.failing.find(name); fault != target.failing.end()) return fault->second;
    const auto found = target.attributes.find(name);
    return found == target.attributes.end() ? AXAnswer(AXError::NoValue) : AXAnswer(found->second);
}

AXError SimAccessibility::setAttribute(const AXElement& element, std::string_view name, const AXValue& value) {
    const ElementID id = idOf(element);
    journal_.add({std::string(name) + "=" + textOf(value), elements_.at(id).pid, id});
    if (const AXError error = reach(id); error != AXError::Success) return error;
    if (onSet) return onSet(id, name, value);
    elements_.at(id).attributes.insert_or_assign(std::string(name), value);
    return AXError::Success;
}

AXError SimAccessibility::performAction(const AXElement& element, std::string_view name) {
    const ElementID id = idOf(element);
    journal_.add({std::string(name), elements_.at(id).pid, id});
    if (const AXError error = reach(id); error != AXError::Success) return error;
    return onAction ? onAction(id, name) : AXError::Success;
}

void SimAccessibility::startAction(const AXElement& element, std::string_view name) {
    mainLoop_.post([this, element, name = std::string(name)] { performAction(element, name); });
}

std::optional<WindowNumber> SimAccessibility::windowNumber(const AXElement& element) {
    const SimElement& target = elements_.at(idOf(element));
    return target.isDead ? std::nullopt : target.number;
}

std::unique_ptr<AXObserver> SimAccessibility::makeObserver(ProcessID pid, Notice notice) {
    if (processes_[pid].refusesObserver) return nullptr;
    auto state = std::make_shared<ObserverState>(ObserverState{pid, std::move(notice), {}});
    observers_.push_back(state);
    return std::make_unique<SimObserver>(*this, std::move(state));
}

ElementID SimAccessibility::add(SimElement element) {
    elements_.emplace(++lastID_, std::move(element));
    return lastID_;
}

AXElement SimAccessibility::handle(ElementID id) const {
    return AXElement(std::make_shared<SimElementImpl>(id));
}

ElementID SimAccessibility::applicationID(ProcessID pid) {
    const auto [at, isNew] = applications_.try_emplace(pid);
    if (isNew) at->second = add({.pid = pid, .attributes = {{"AXRole", std::string(ax::kApplicationRole)}}});
    return at->second;
}

void SimAccessibility::forgetApplication(ProcessID pid) {
    elements_.at(applicationID(pid)).isDead = true;
    applications_.erase(pid);
    processes_.erase(pid);
}

void SimAccessibility::notify(ElementID id, std::string_view name) {
    const ProcessID pid = elements_.at(id).pid;
    const ElementID application = applicationID(pid);
    std::erase_if(observers_, [](const auto& weak) { return weak.expired(); });
    for (const auto& weak : observers_) {
        const auto observer = weak.lock();
        if (observer->pid != pid) continue;
        for (const auto& [element, subscribed] : observer->subscribed) {
            if (subscribed != name || (element != id && element != application)) continue;
            mainLoop_.post([weak, handle = handle(id), name = std::string(name)] {
                if (const auto alive = weak.lock()) alive->notice(handle, name);
            });
        }
    }
}

size_t SimAccessibility::subscriptions(ProcessID pid) const {
    size_t count = 0;
    for (const auto& weak : observers_)
        if (const auto observer = weak.lock(); observer && observer->pid == pid) count += observer->subscribed.size();
    return count;
}

AXError SimAccessibility::subscribe(ObserverState& observer, const AXElement& element, std::string_view name) {
    const ElementID id = idOf(element);
    if (const AXError error = reach(id); error != AXError::Success) return error;
    SimProcess& process = processes_[observer.pid];
    const bool isApplication = id == applicationID(observer.pid);
    if (!isApplication && process.onlyApplicationSubscriptions) return AXError::Unsupported;
    const auto refusal = process.refusals.find(name);
    if (isApplication && refusal != process.refusals.end() && refusal->second > 0) {
        --refusal->second;
        return AXError::Failure;
    }
    if (observer.subscribed.emplace(id, name).second) return AXError::Success;
    ++repeatedSubscriptions;
    return AXError::AlreadyRegistered;
}

AXError SimAccessibility::reach(ElementID id) {
    const SimElement& element = elements_.at(id);
    ++calls_[element.pid];
    if (!trusted) return AXError::ApiDisabled;
    if (processes_[element.pid].isHung) return AXError::CannotComplete;
    return element.isDead ? AXError::InvalidElement : AXError::Success;
}

ElementID SimAccessibility::idOf(const AXElement& element) const {
    return static_cast<const SimElementImpl&>(element.impl()).id;
}

std::string textOf(const AXValue& value) {
    std::ostringstream out;
    std::visit(
        [&out]<class T>(const T& v) {
            if constexpr (std::is_same_v<T, bool>) {
                out << (v ? "true" : "false");
            } else if constexpr (std::is_same_v<T, Point<AXSpace>>) {
                out << '[' << v.x << ',' << v.y << ']';
            } else if constexpr (std::is_same_v<T, Size>) {
                out << '[' << v.width << ',' << v.height << ']';
            } else if constexpr (std::is_same_v<T, AXElement>) {
                out << "element";
            } else if constexpr (std::is_same_v<T, std::vector<AXElement>>) {
                out << v.size() << " elements";
            } else {
                out << v;
            }
        },
        value);
    return out.str();
}

}  // namespace morvel::sim
