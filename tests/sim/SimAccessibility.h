// Accessibility elements with arbitrary attributes, and the faults that other people's programs have.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Platform/Accessibility.h"
#include "Platform/MainLoop.h"
#include "sim/Journal.h"

namespace morvel::sim {

/// What stands behind an element. An attribute that is not in `attributes` answers `NoValue`.
struct SimElement {
    ProcessID pid;
    std::map<std::string, AXValue, std::less<>> attributes = {};
    std::map<std::string, AXError, std::less<>> failing = {};  ///< attributes that cannot be read, and how they answer
    std::optional<WindowNumber> number = {};
    bool isDead = false;  ///< answers `InvalidElement` from now on
};

/// How one process behaves towards observers and callers.
struct SimProcess {
    bool isHung = false;                               ///< every call answers `CannotComplete`
    bool refusesObserver = false;                      ///< no observer can be made
    bool onlyApplicationSubscriptions = false;         ///< an observer can only subscribe on the application's element
    std::map<std::string, int, std::less<>> refusals;  ///< of the next subscriptions on the application, by name
};

class SimAccessibility : public Accessibility {
public:
    SimAccessibility(MainLoop& mainLoop, Journal& journal) : mainLoop_(mainLoop), journal_(journal) {}

    bool isTrusted() const override { return trusted; }
    bool isTrustedAfterPrompt() override {
        ++prompts;
        return trusted;
    }
    void openPermissionSettings() override { journal_.add({"openPermissionSettings", {}, {}}); }
    AXElement applicationElement(ProcessID pid) override;
    AXAnswer attribute(const AXElement& element, std::string_view name) override;
    AXError setAttribute(const AXElement& element, std::string_view name, const AXValue& value) override;
    AXError performAction(const AXElement& element, std::string_view name) override;
    /// In a later turn: whoever starts it sees nothing of it yet.
    void startAction(const AXElement& element, std::string_view name) override;
    std::optional<WindowNumber> windowNumber(const AXElement& element) override;
    std::unique_ptr<AXObserver> makeObserver(ProcessID pid, Notice notice) override;

    // --- For tests and for the desktop ---
    ElementID add(SimElement element);
    SimElement& at(ElementID id) { return elements_.at(id); }
    AXElement handle(ElementID id) const;
    ElementID idOf(const AXElement& element) const;
    ElementID applicationID(ProcessID pid);
    /// Forgets the element of an application whose process number may be used again.
    void forgetApplication(ProcessID pid);
    SimProcess& process(ProcessID pid) { return processes_[pid]; }

    /// Sends the notice in a later turn to every subscription that covers it: the element's own and its application's.
    void notify(ElementID id, std::string_view name);
    /// Subscriptions that are in force for the process, on any of its elements.
    size_t subscriptions(ProcessID pid) const;

    /// A call that asked the element or its process for something, since the start.
    int calls(ProcessID pid) const {
        const auto found = calls_.find(pid);
        return found == calls_.end() ? 0 : found->second;
    }

    int repeatedSubscriptions = 0;  ///< that were in force already
    bool trusted = true;
    int prompts = 0;
    /// Plays the application's side of a write or an action; without them a write just stores the value.
    std::function<AXError(ElementID, std::string_view, const AXValue&)> onSet;
    std::function<AXError(ElementID, std::string_view)> onAction;

    struct ObserverState {
        ProcessID pid;
        Notice notice;
        std::set<std::pair<ElementID, std::string>> subscribed;
    };

private:
    friend class SimObserver;
    AXError subscribe(ObserverState& observer, const AXElement& element, std::string_view name);
    /// Counts the call; anything but Success is its answer.
    AXError reach(ElementID id);

    MainLoop& mainLoop_;
    Journal& journal_;
    ElementID lastID_ = 0;
    std::map<ElementID, SimElement> elements_;
    std::map<ProcessID, ElementID> applications_;
    std::map<ProcessID, SimProcess> processes_;
    std::map<ProcessID, int> calls_;
    std::vector<std::weak_ptr<ObserverState>> observers_;
};

/// "true", "[10,20]" and so on, as the journal writes values.
std::string textOf(const AXValue& value);

}  // namespace morvel::sim
