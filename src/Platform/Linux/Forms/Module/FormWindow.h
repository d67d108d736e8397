// A form as a GTK window: a row of tabs and the search field on top, below them the page of the chosen tab.
#pragma once

#include <memory>
#include <vector>

#include "Platform/Linux/Forms/Module/FormRow.h"
#include "UI/Form.h"

namespace morvel::x11 {

class FormWindow : public ui::FormWindowPeer {
public:
    explicit FormWindow(ui::Form form);
    ~FormWindow() override;

    void bringToFront() override;
    void refresh() override;

private:
    struct Section {
        GtkWidget* whole;
        std::vector<std::unique_ptr<FormRow>> rows;
    };
    struct Page {
        GtkWidget* whole;
        std::vector<Section> sections;
    };

    GtkWidget* makeHeader();
    Page makePage(const ui::FormTab& tab);
    Section makeSection(const ui::FormSection& section);
    /// The place of the page that is shown.
    size_t currentTab() const;

    const ui::Form form_;
    GtkWidget* window_;
    GtkWidget* stack_;
    GtkWidget* search_;
    GtkWidget* nothingFound_;
    std::vector<Page> pages_;
};

}  // namespace morvel::x11
