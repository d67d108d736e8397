// A form as a window with a row of tabs and a search field on top.
#pragma once

#include <memory>
#include <vector>

#include "Platform/Mac/UI/Form/FormPage.h"
#include "UI/Form.h"

namespace morvel::mac {

class MacFormWindow : public ui::FormWindowPeer {
public:
    /// Made in the middle of the screen, not shown yet.
    explicit MacFormWindow(ui::Form form);
    ~MacFormWindow() override;

    void bringToFront() override;
    void refresh() override;

private:
    void addHeader(const NSView& content);
    void addPages(const NSView& content);
    size_t currentTab() const;

    const ui::Form form_;
    NSWindow window_;
    NSSegmentedControl tabs_;
    NSSearchField search_;
    NSTextField nothingFound_;
    std::vector<std::unique_ptr<FormPage>> pages_;
    Lifetime lifetime_;  // ends first, and with it what the controls do
};

}  // namespace morvel::mac
