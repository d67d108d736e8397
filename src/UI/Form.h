// A window of controls in tabs as plain data, each bound by functions to what it shows and changes; a host shows it
// with native controls.
#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "UI/Color.h"
#include "UI/Image.h"
#include "Util/Geometry.h"

namespace morvel::ui {

struct FormToggle {
    std::function<bool()> isOn;
    std::function<void(bool)> set;
};

struct FormPicker {
    std::vector<std::string> titles;
    std::function<size_t()> selected;  ///< an index of `titles`
    std::function<void(size_t)> select;
};

/// Sets while it is dragged, and shows its value as a whole number.
struct FormSlider {
    double least = 0;
    double greatest = 1;
    std::function<double()> value;
    std::function<void(double)> set;
};

struct FormStepper {
    int least = 0;
    int greatest = 1;
    std::function<int()> value;
    std::function<void(int)> set;
};

/// Colours with alpha.
struct FormColorWell {
    std::function<RGBA()> color;
    std::function<void(RGBA)> set;
};

struct FormListRow {
    std::string id;
    ImageRef image;      ///< null for none
    std::string title;   ///< truncated in the middle
    std::string detail;  ///< what the row's tooltip says
    bool operator==(const FormListRow&) const = default;
};

struct FormList {
    std::function<std::vector<FormListRow>()> rows;
    std::string buttonTitle;  ///< of the button in each row
    std::function<void(const std::string& id)> press;
    std::string emptyText;
};

/// A field for one line of text. Return or the button hands the text over; the field is emptied when it was taken.
struct FormEntry {
    std::string placeholder;
    std::string buttonTitle;
    std::function<bool(const std::string& text)> take;
};

struct FormText {
    std::function<std::string()> text;
};

struct FormLink {
    std::string title;
    std::function<void()> open;
};

struct FormButton {
    std::string title;
    std::function<void()> press;
};

enum class PathKind { Folder, ExistingFile, NewFile };

/// A button that first asks for a place in the file system.
struct FormPathButton {
    std::string title;
    PathKind kind = PathKind::Folder;
    std::string dialogTitle;
    std::string suggestedName;  ///< of a new file
    /// The absolute path; not called when the person thinks better of it.
    std::function<void(const std::string& path)> chosen;
};

struct FormControl {
    std::string label;  ///< empty for what says itself what it is
    std::string help;   ///< wraps below the control
    std::variant<FormToggle, FormPicker, FormSlider, FormStepper, FormColorWell, FormList, FormEntry, FormText,
                 FormLink, FormButton, FormPathButton>
        kind;
    std::function<bool()> isEnabled = nullptr;  ///< none: always
    std::function<bool()> isVisible = nullptr;  ///< none: always
};

struct FormSection {
    std::string heading;
    std::vector<FormControl> controls;
};

struct FormTab {
    std::string identifier;
    std::string title;
    std::vector<FormSection> sections;
};

/// Opens with its first tab. Above the tabs' controls stands a search field (see FormSearch.h).
struct Form {
    std::string title;
    Size contentSize;
    std::string searchPlaceholder;
    std::string nothingFound;  ///< shown while the search finds no control
    std::vector<FormTab> tabs;
};

/// The window; destroying it closes it. Closing it by hand hides it, and it opens again as it was left.
class FormWindowPeer {
public:
    virtual ~FormWindowPeer() = default;
    /// Shows it, or brings it to the front of all windows, with the keyboard's focus.
    virtual void bringToFront() = 0;
    /// Shows all values anew, and what is enabled and visible now. Never called inside a function of the form.
    virtual void refresh() = 0;
};

}  // namespace morvel::ui
