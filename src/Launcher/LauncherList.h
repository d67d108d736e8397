// The launcher's list of applications, of which only the part that is to be seen exists.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Launcher/InstalledApp.h"
#include "Launcher/LauncherRow.h"

namespace morvel {

/// The document of a scroll view. However many applications there are, it has as many rows as can be seen, and loads
/// no other icons; scrolling hands a row that left at one end the application that came at the other.
class LauncherList : public ui::View {
public:
    /// Both outlive the list. `onPick` is told the place of the clicked application and may destroy the list.
    LauncherList(ui::Toolkit& toolkit, IconCache& icons, std::function<void(size_t)> onPick);

    /// The applications in order; they outlive their being shown here.
    void setEntries(std::vector<const InstalledApp*> entries, std::optional<size_t> selected);
    void select(std::optional<size_t> place);
    /// What is to be seen now, in this view's space.
    void setVisible(const Rect<ViewSpace>& visible);

    const std::vector<const InstalledApp*>& entries() const { return entries_; }
    std::optional<size_t> selected() const { return selected_; }
    static double topOf(size_t place) { return static_cast<double>(place) * LauncherRow::kHeight; }

    Size intrinsicSize() const override { return {0, topOf(entries_.size())}; }  // as wide as there is room
    ui::AccessibilityRole accessibilityRole() const override { return ui::AccessibilityRole::List; }

private:
    void showRows();
    LauncherRow& rowFor(size_t place);
    void rowClicked(const LauncherRow& row);

    ui::Toolkit& toolkit_;
    IconCache& icons_;
    std::function<void(size_t)> onPick_;
    std::vector<const InstalledApp*> entries_;
    std::optional<size_t> selected_;
    Rect<ViewSpace> visible_;
    std::vector<std::unique_ptr<LauncherRow>> rows_;  // the application at a place is in row `place % rows_.size()`
    size_t first_ = 0, end_ = 0;                      // the places that have rows now
};

}  // namespace morvel
