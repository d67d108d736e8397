// A simulated window of another program, seen from its user's side.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Platform/Accessibility.h"
#include "sim/Journal.h"

namespace morvel::sim {

class Desktop;
class SimApp;

/// How a window is opened. The frame is in AXSpace.
struct WindowSpec {
    double x = 100;
    double y = 100;
    double width = 640;
    double height = 480;
    std::string title = "Untitled";
    std::optional<std::string> subrole = "AXStandardWindow";
    bool isFullScreen = false;
    bool hasCloseButton = true;
    int layer = 0;
    std::optional<SpaceID> space = {};  ///< by default the current one of the display under its centre
};

class SimWindow {
public:
    /// Made by `SimApp::open`.
    SimWindow(Desktop& desktop, SimApp& app, const WindowSpec& spec);

    ElementID element() const { return element_; }
    WindowNumber number() const { return number_; }
    SimApp& app() { return app_; }
    bool isOpen() const { return open_; }
    bool isMinimized() const { return minimized_; }
    bool isFocused() const;
    const Rect<AXSpace>& frame() const { return frame_; }
    double height() const { return frame_.height; }
    double width() const { return frame_.width; }
    const std::string& title() const { return title_; }

    // --- What its user and its application do ---
    void setTitle(const std::string& title);
    void setFrame(const Rect<AXSpace>& frame);
    void setFullScreen(bool fullScreen);
    void minimize();
    void restore();
    void focus();
    void close();
    /// Closes without any notice.
    void vanish();

    // --- Faults ---
    void failReading(std::string_view attribute, AXError error = AXError::NoValue);
    void healReading(std::string_view attribute);
    bool asksBeforeClosing = false;  ///< pressing its close button opens a question that nobody answers
    /// What the application makes of a frame that is written from outside; by default it takes it.
    std::function<Rect<AXSpace>(const Rect<AXSpace>& current, const Rect<AXSpace>& wanted)> placement;

private:
    friend class Desktop;
    friend class SimApp;
    void set(std::string_view attribute, AXValue value);
    void writeFrame(const Rect<AXSpace>& wanted);
    void raise();
    void leaveFocus();

    Desktop& desktop_;
    SimApp& app_;
    ElementID element_ = 0;
    ElementID closeButton_ = 0;  // 0: it has none
    WindowNumber number_;
    Rect<AXSpace> frame_;
    std::string title_;
    bool open_ = true;
    bool minimized_ = false;
};

}  // namespace morvel::sim
