// The one drag that can be going on over the simulated windows: of a view of ours, or of another program's things.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "UI/Toolkit.h"
#include "sim/SimSurface.h"

namespace morvel::sim {

class SimToolkit;

struct SimPasteboard : ui::DragPasteboard {
    bool hasType(std::string_view type) const override { return strings.contains(type); }
    std::optional<std::string> string(std::string_view type) const override {
        const auto found = strings.find(type);
        return found == strings.end() ? std::nullopt : std::optional(found->second);
    }
    std::vector<std::string> filePaths() const override { return files; }
    bool hasFileURLs() const override { return hasType(ui::kFileURLType); }

    static SimPasteboard ofFile(const std::string& path) {
        SimPasteboard pasteboard;
        pasteboard.strings = {{std::string(ui::kFileURLType), "file://" + path}};
        pasteboard.files = {path};
        return pasteboard;
    }
    static SimPasteboard ofText(const std::string& type, const std::string& text) {
        SimPasteboard pasteboard;
        pasteboard.strings = {{type, text}};
        return pasteboard;
    }

    std::map<std::string, std::string, std::less<>> strings;  // by type
    std::vector<std::string> files;
};

class SimDrags {
public:
    explicit SimDrags(SimToolkit& toolkit) : toolkit_(toolkit) {}

    /// What `Toolkit::beginDrag` does. Refused while `refuses`.
    void begin(const ui::DragItem& item, std::function<void(ui::DragOperation)> ended);
    bool refuses = false;
    bool isActive() const { return pasteboard_ != nullptr; }
    /// The window under the drag, only to be compared: it may be gone; and where in it.
    const SimSurface* surface() const { return surface_; }
    Point<ViewSpace> location() const { return location_; }

    // --- What a person does ---
    /// Presses the view and pulls it until it is dragged; a view that is not dragged then fails the test.
    void pull(ui::View& view);
    /// Comes with something from another program, over none of our windows yet.
    void bring(SimPasteboard pasteboard);
    /// Moves over the view, this far right of its middle; the answer is what a drop would do.
    ui::DragOperation over(ui::View& view, double dx = 0);
    /// Leaves our windows.
    void away();
    /// Lets go where the drag is; what the place did with it.
    ui::DragOperation drop();
    /// The drag ends without a drop: the person gave it up, or its program died.
    void cancel();

private:
    bool isInside() const;
    void finish(ui::DragOperation done);
    ui::DragInfo info() const { return {location_, *pasteboard_}; }

    SimToolkit& toolkit_;
    std::unique_ptr<SimPasteboard> pasteboard_;
    std::function<void(ui::DragOperation)> ended_;
    SimSurface* surface_ = nullptr;  // under the drag; compared with the living ones before use
    Point<ViewSpace> location_;
    ui::DragOperation operation_ = ui::DragOperation::None;
};

}  // namespace morvel::sim
