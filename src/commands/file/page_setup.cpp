#include "commands/file/page_setup.hpp"

#include <algorithm>
#include <optional>

#include "base/text.hpp"
#include "commands/file/file_entry.hpp"
#include "commands/modal.hpp"

namespace vntl {

namespace {

constexpr int page_dialog = 489;
enum Field {
    printer_field = 4701,
    file_field,
    browse_button,
    paper_field,
    portrait_field,
    landscape_field,
    paper_frame,
    margins_frame,
    picture_frame,
    left_field,
    right_field,
    top_field,
    bottom_field,
    centre_field,
    scale_field,
    per_cent_label,
    copies_field
};
constexpr File_Entry::Fields file_fields{file_field, browse_button};
constexpr Save_Form pdf_form{"Print to file", "Portable Document Format (*.pdf)|*.pdf|", ".pdf", "Overwrite graphic file?", {}};
constexpr const char* file_in_place = "PDF file";
constexpr int most_copies = 999, largest_scale = 1000;
constexpr double least_room = 10;  // mm between the margins

struct Margin {
    int field;
    const char* label;
    double Page_Setup::*margin;
};
constexpr Margin margins[] = {{left_field, "&Left", &Page_Setup::left},
                              {right_field, "&Right", &Page_Setup::right},
                              {top_field, "&Top", &Page_Setup::top},
                              {bottom_field, "&Bottom", &Page_Setup::bottom}};

Dialog_Field Entry(const Margin& margin) {
    return {.number = margin.field, .kind = Field_Kind::real, .label = margin.label, .width = 8, .format = "(f8.1)"};
}

void Fill(const std::vector<std::string>& printers, const Page_Setup& setup) {
    std::vector<std::string> targets = printers, papers;
    targets.emplace_back(file_in_place);
    for (const Paper& paper : Papers()) papers.emplace_back(paper.name);
    WDialogPutMenu(printer_field, targets, 1);
    WDialogPutString(file_field, setup.file);
    WDialogPutMenu(paper_field, papers, static_cast<int>(setup.paper) + 1);
    WDialogPutRadioButton(setup.landscape ? landscape_field : portrait_field);
    for (const Margin& margin : margins) WDialogPutReal(margin.field, static_cast<float>(setup.*margin.margin));
    WDialogPutCheckBox(centre_field, setup.centre ? 1 : 0);
    WDialogPutInteger(scale_field, static_cast<int>(setup.scale));
    WDialogPutInteger(copies_field, setup.copies);
}

bool Into_File(const std::vector<std::string>& printers) { return WDialogGetMenu(printer_field) > static_cast<int>(printers.size()); }

// A file has a name and no copies.
void Enable(const std::vector<std::string>& printers) {
    const bool file = Into_File(printers);
    for (const int field : {file_field, browse_button}) WDialogFieldState(field, file ? field_enabled : field_disabled);
    WDialogFieldState(copies_field, file ? field_disabled : field_enabled);
}

bool Take_Margins(Page_Setup& setup) {
    for (const Margin& margin : margins) {
        const std::optional<float> value = Number_In_Field(margin.field, Replace_All(margin.label, "&", ""));
        if (!value) return false;
        setup.*margin.margin = *value;
        if (*value >= 0) continue;
        Refuse_Field(margin.field, "A margin is not less than 0");
        return false;
    }
    const Rect inside = Inside_Margins(setup);
    const bool narrow = inside.x2 - inside.x1 < least_room, low = inside.y2 - inside.y1 < least_room;
    if (narrow || low) Refuse_Field(narrow ? left_field : top_field, "The margins leave no room on the paper");
    return !narrow && !low;
}

bool Take_Whole(int field, const char* name, int hi, int& target) {
    const std::optional<int> value = WDialogGetInteger(field);
    if (!value) Refuse_Field(field, std::string(name) + ": a whole number from 1 to " + std::to_string(hi));
    target = value.value_or(target);
    return value.has_value();
}

// False, and the dialog stays, where something is refused.
bool Take(const std::vector<std::string>& printers, File_Entry& entry, Page_Setup& setup) {
    Page_Setup taken;
    taken.paper = static_cast<std::size_t>(std::max(1, WDialogGetMenu(paper_field)) - 1);
    taken.landscape = WDialogGetRadioButton(portrait_field) != portrait_field;
    taken.centre = WDialogGetCheckBox(centre_field) != 0;
    int scale = 0;
    if (!Take_Margins(taken) || !Take_Whole(scale_field, "Scale", largest_scale, scale)) return false;
    taken.scale = scale;
    if (Into_File(printers)) {
        const std::optional<std::string> file = entry.Take();
        if (!file) return false;
        taken.file = *file;
    } else {
        taken.printer = printers[static_cast<std::size_t>(std::max(1, WDialogGetMenu(printer_field)) - 1)];
        if (!Take_Whole(copies_field, "Copies", most_copies, taken.copies)) return false;
    }
    setup = taken;
    return true;
}

}  // namespace

Dialog_Resource Page_Setup_Resource() {
    const auto radio = [](int number, const char* label) {
        return Dialog_Field{.number = number, .kind = Field_Kind::radio, .label = label, .group = portrait_field};
    };
    const auto frame = [](int number, const char* label, std::vector<std::vector<Dialog_Field>> rows) {
        return std::vector<Dialog_Field>{{.number = number, .kind = Field_Kind::frame, .label = label, .pages = {{"", std::move(rows)}}}};
    };
    return {
        page_dialog,
        "Page Setup",
        {{{.number = printer_field, .kind = Field_Kind::menu, .label = "&Printer"}},
         File_Entry::Row(file_fields, "&File"),
         frame(paper_frame, "Paper",
               {{{.number = paper_field, .kind = Field_Kind::menu, .label = "P&aper"},
                 {.number = copies_field, .kind = Field_Kind::integer, .label = "C&opies:", .width = 6, .lo = 1, .hi = most_copies}},
                {radio(portrait_field, "Portra&it"), radio(landscape_field, "Lan&dscape")}}),
         frame(margins_frame, "Margins in millimetres", {{Entry(margins[0]), Entry(margins[1])}, {Entry(margins[2]), Entry(margins[3])}}),
         frame(picture_frame, "Picture between the margins",
               {{{.number = scale_field, .kind = Field_Kind::integer, .label = "Scal&e", .width = 6, .lo = 1, .hi = largest_scale},
                 {per_cent_label, Field_Kind::label, "% of the largest that fits"}},
                {{centre_field, Field_Kind::check_box, "Ce&ntre"}}}),
         {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

bool Page_Setup_Dialog(Configuration& config, Ask& ask, const std::vector<std::string>& printers, Page_Setup& setup) {
    File_Entry entry(file_fields, config, ask, pdf_form);
    WDialogLoad(page_dialog);
    Fill(printers, setup);
    Enable(printers);
    WDialogShow(printer_field, Show_Kind::modal);
    bool taken = false;
    for (int button = 0; !taken && button != button_cancel;) {
        button = Run_Modal(page_dialog, {.changed = [&](int) { Enable(printers); }});
        if (button == browse_button)
            entry.Browse(page_dialog);
        else if (button == button_ok)
            taken = Take(printers, entry, setup);
    }
    WDialogUnload();
    return taken;
}

}  // namespace vntl
