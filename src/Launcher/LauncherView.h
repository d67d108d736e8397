// What the launcher's popover shows: a search field over the applications that fit what was typed.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Launcher/InstalledApp.h"
#include "Launcher/LauncherList.h"
#include "UI/ScrollView.h"
#include "UI/TextField.h"
#include "Util/Lifetime.h"

namespace morvel {

/// Starts without a query and without applications. The keyboard stays in the field: the arrows move the selection in
/// the list, Return opens what is selected. What was probably meant is selected while one types.
class LauncherView : public ui::View {
public:
    /// Both outlive the view.
    LauncherView(ui::Toolkit& toolkit, IconCache& icons);

    /// Both may destroy the view.
    std::function<void(const InstalledApp&)> onLaunch;
    std::function<void()> onCancel;

    void setApps(std::vector<InstalledApp> apps);
    /// `call`, or nothing once the view is gone.
    template <class Call>
    auto whileAlive(Call call) const {
        return lifetime_.whileAlive(std::move(call));
    }
    const std::string& query() const { return searchField_.text(); }
    /// The entries that the list shows, in the order that `setApps` gave them.
    const std::vector<const InstalledApp*>& filtered() const { return list_.entries(); }

    ui::TextField& searchField() { return searchField_; }
    LauncherList& list() { return list_; }
    ui::ScrollView& scrollView() { return scrollView_; }

protected:
    void layout() override;

private:
    void applyFilter();
    bool commanded(ui::TextCommand command);
    void moveSelection(double places);
    void launch(size_t place);

    std::vector<InstalledApp> apps_;
    std::vector<std::string> names_;  // of the applications, lower-cased once
    ui::TextField searchField_;
    LauncherList list_;
    ui::ScrollView scrollView_;
    Lifetime lifetime_;
};

}  // namespace morvel
