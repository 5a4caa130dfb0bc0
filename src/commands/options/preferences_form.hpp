// The dialog "Preferences" as a table: which field of which page shows which preference.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "session/preference_table.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

inline constexpr int preferences_dialog = 460;
enum Preferences_Field {
    apply_button = button_ok,
    exit_button = button_cancel,
    save_global_button = 4001,
    save_local_button,
    load_local_button,
    pages_field,
    told_field,       // what was saved or loaded
    prf_file_field,   // the refined profile that is drawn
    prf_style_field,  // and its line on the page of profile data
};

// The texts of a menu, for values that begin at `first` and rise by `step`.
struct Menu_Values {
    std::span<const char* const> texts = {};
    int first = 1, step = 1;
};

struct Preference_Field {
    int number = 0;
    std::string name;  // as boxes tell of it: its label, behind the row that it belongs to
    const Preference* preference = nullptr;
    Field_Kind kind = Field_Kind::string;  // as the type of the preference has it
    Menu_Values menu = {};
    int lo = 0, hi = 0;  // of a whole number
};

// A button "..." that chooses the path in a field: a directory, or a file by a filter.
struct Path_Button {
    int number = 0, field = 0;
    const char* title = "";
    const char* filter = "";  // empty: a directory is chosen
};

struct Preferences_Form {
    Dialog_Resource resource;
    std::vector<Preference_Field> fields;
    std::vector<Path_Button> paths;

    const Preference_Field* With_Number(int number) const;
    int Number_Of(std::string_view preference) const;  // of its field
};

const Preferences_Form& The_Preferences_Form();

// The pages in the order of their tabs; a tab counts from 1.
int Tab_Of(Preference_Page page);

}  // namespace vntl
