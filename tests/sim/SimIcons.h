// Images that are only their names, and a count of how often each was made.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>

#include "Platform/Icons.h"

namespace morvel::sim {

struct SimImage : ui::Image {
    SimImage(std::string n, Size s) : name(std::move(n)), points(s) {}
    Size size() const override { return points; }

    std::string name;  ///< where it came from, such as "app:com.example.editor"
    Size points;
};

/// The name of an image that `SimIcons` made; empty for none.
inline std::string imageName(const ui::ImageRef& image) {
    const auto* sim = dynamic_cast<const SimImage*>(image.get());
    return sim ? sim->name : std::string();
}

class SimIcons : public Icons {
public:
    ui::ImageRef applicationIcon(const std::string& bundleID) override { return make("app:" + bundleID, kIconSize); }
    ui::ImageRef processIcon(ProcessID pid) override { return make("pid:" + std::to_string(pid.value), kIconSize); }
    ui::ImageRef fileIcon(const std::string& path) override { return make("file:" + path, kIconSize); }
    ui::ImageRef symbol(const std::string& name, double pointSize) override {
        return make("symbol:" + name, {pointSize, pointSize});
    }
    ui::ImageRef empty(Size size) override { return make("empty", size); }
    ui::ImageRef baked(const ui::ImageRef& image, Size size) override {
        return image ? make("baked:" + imageName(image), size) : nullptr;
    }

    std::set<std::string> missing;     ///< names that give no image
    std::map<std::string, int> loads;  ///< how often each name was asked for

private:
    static constexpr Size kIconSize{32, 32};

    ui::ImageRef make(const std::string& name, Size size) {
        ++loads[name];
        if (missing.contains(name)) return nullptr;
        return std::make_shared<SimImage>(name, size);
    }
};

}  // namespace morvel::sim
