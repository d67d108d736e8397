// The settings that a desktop publishes to all programs on the X server, followed as they change.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Platform/Linux/System/SelectionOwner.h"
#include "Util/Lifetime.h"

namespace morvel::x11 {

/// Main thread only. Known once made, which waits for the server; afterwards nothing waits. Where nobody publishes
/// settings there are none.
class PublishedSettings {
public:
    /// The connection outlives it.
    explicit PublishedSettings(XConnection& connection);

    /// Whether they say that programs show no animations.
    bool animationsAreOff() const;
    /// What the theme of the desktop's programs is called.
    std::optional<std::string> theme() const;

    [[nodiscard]] Subscription observeChanges(std::function<void()> changed) {
        return changed_.subscribe(std::move(changed));
    }

private:
    void followPublisher();
    void read();
    void take(std::string_view published);

    XConnection& connection_;
    SelectionOwner publisher_;
    std::string published_;
    Signal<> changed_;
    Subscription publisherChanges_, propertyChanges_;
    Lifetime lifetime_;
};

}  // namespace morvel::x11
