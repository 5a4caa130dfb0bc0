#include "commands/instrument/select_instrument_dialog.hpp"

#include <algorithm>
#include <array>
#include <vector>

#include "base/text.hpp"
#include "commands/modal.hpp"
#include "instrument/instrument_names.hpp"

namespace vntl {

namespace {

constexpr int instrument_dialog = 443;
enum Instrument_Field { group_menu = 4450, type_menu, name_menu };
constexpr std::size_t name_width = 4;

// Places in the groups, the types of a group, the names of a type.
struct Choice {
    std::size_t group = 0, type = 0, name = 0;

    const Instrument_Group& Group() const { return Instrument_Groups()[group]; }
    const Instrument_Kind& Type() const { return Group().types[type]; }
    std::string Name() const { return name < Type().names.size() ? std::string(Type().names[name]) : std::string(); }
};

std::string As_Told(std::string_view name) { return std::string(Trim(Cut(name, name_width))); }

// Behind "_" stands a form of the detector.
Choice Choice_Of(std::string_view instrument) {
    instrument = Trim(instrument.substr(0, instrument.find('_')));
    for (Choice choice; choice.group < Instrument_Groups().size(); ++choice.group)
        for (choice.type = 0; choice.type < choice.Group().types.size(); ++choice.type)
            for (choice.name = 0; choice.name < choice.Type().names.size(); ++choice.name)
                if (Equal_No_Case(As_Told(choice.Name()), instrument)) return choice;
    return {};
}

template <class Rows, class Text>
void Put_Menu(int field, const Rows& rows, Text text, std::size_t chosen) {
    std::vector<std::string> choices;
    for (const auto& row : rows) choices.emplace_back(text(row));
    WDialogPutMenu(field, choices, static_cast<int>(chosen) + 1);
}

void Show_Names(const Choice& choice) {
    Put_Menu(
        name_menu, choice.Type().names, [](std::string_view name) { return name; }, choice.name);
}
void Show_Types(const Choice& choice) {
    Put_Menu(
        type_menu, choice.Group().types, [](const Instrument_Kind& kind) { return kind.type; }, choice.type);
    Show_Names(choice);
}

std::size_t Chosen(int field) { return static_cast<std::size_t>(std::max(1, WDialogGetMenu(field)) - 1); }

// A menu above another one refills it.
void Follow(int field, Choice& choice) {
    if (field == group_menu) Show_Types(choice = {.group = Chosen(group_menu)});
    if (field == type_menu) Show_Names(choice = {.group = choice.group, .type = Chosen(type_menu)});
    if (field == name_menu) choice.name = Chosen(name_menu);
}

}  // namespace

Dialog_Resource Select_Instrument_Dialog_Resource() {
    const auto menu = [](int field, const char* label) {
        return std::vector<Dialog_Field>{{.number = field, .kind = Field_Kind::menu, .label = label, .width = 50}};
    };
    return {instrument_dialog,
            "KVR Instrument",
            {menu(group_menu, "Instrument &Group:"),
             menu(type_menu, "Instrument &Type:"),
             menu(name_menu, "Instrument &Name:"),
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

std::string Select_Instrument_Dialog(std::string_view proposed) {
    Choice choice = Choice_Of(proposed);
    WDialogLoad(instrument_dialog);
    Put_Menu(
        group_menu, Instrument_Groups(), [](const Instrument_Group& group) { return group.name; }, choice.group);
    Show_Types(choice);
    WDialogShow(name_menu, Show_Kind::modal);
    const bool taken = Run_Modal(instrument_dialog, {.changed = [&choice](int field) { Follow(field, choice); }}) == button_ok;
    WDialogUnload();
    return taken ? As_Told(choice.Name()) : std::string();
}

}  // namespace vntl
