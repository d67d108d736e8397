// Plays recorded traces of applications, elements and notices to an observer manager and writes down the events.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "Vectors.h"
#include "WindowSource/AXObserverManager.h"
#include "sim/Desktop.h"

namespace morvel {

/// The traces know subscriptions on applications alone.
class TraceWorld {
public:
    TraceWorld();

    /// One step of a trace; returns the events that it led to.
    vectors::Json play(const vectors::Json& step);
    /// Makes the element out of the attributes of the recorded cases, on the defaults.
    void element(int number, const vectors::Json& attributes);
    const WindowStore& store() const { return store_; }

private:
    using Json = vectors::Json;
    using ElementID = sim::ElementID;

    void apply(const Json& step);
    void process(ProcessID pid, const Json& description);
    void change(int number, const Json& attributes);
    void changeOne(int number, const std::string& key, const Json& value);
    void set(ElementID id, std::string_view attribute, std::optional<AXValue> value);
    void elementsOf(ProcessID pid, std::string_view attribute, const Json& numbers);
    Json told(const WindowEvent& event);
    Json nameOf(const std::optional<WindowID>& id);

    sim::Desktop desktop_;
    WindowIDMint mint_{1};
    WindowStore store_;
    std::map<int, ElementID> elements_;
    std::map<WindowID, std::string> names_;
    Json events_ = Json::array();
    Subscription recording_;
    std::unique_ptr<AXObserverManager> manager_;
};

}  // namespace morvel
