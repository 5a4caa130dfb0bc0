#include "commands/profiles/file_information.hpp"

#include <algorithm>
#include <string>
#include <vector>

#include "commands/modal.hpp"
#include "session/file_information.hpp"
#include "session/session.hpp"
#include "toolkit/window.hpp"

namespace vntl {

namespace {

constexpr int information_dialog = 470;
enum Field { profile = 1850, table, copy };
enum Column { name = 1, value };

void Show_Row(const Session& session, int row) {
    const Head_Facts facts = File_Information(session.store, row);
    std::vector<std::string> names, values;
    for (const Head_Fact& fact : facts) {
        names.push_back(fact.name);
        values.push_back(fact.value);
    }
    WGridRows(table, static_cast<int>(facts.size()));
    WGridPutString(table, name, names);
    WGridPutString(table, value, values);
    for (const int column : {name, value}) WGridState(table, column, field_read_only);
}

std::string As_Text(const Head_Facts& facts) {
    std::string text;
    for (const Head_Fact& fact : facts) text += fact.name + '\t' + fact.value + '\n';
    return text;
}

}  // namespace

Dialog_Resource File_Information_Dialog_Resource() {
    Dialog_Field choice{profile, Field_Kind::menu, "&Profile"}, grid{table, Field_Kind::grid};
    choice.width = 44;
    grid.columns = {{"What", Cell_Kind::string, "", 28}, {"As the file tells it", Cell_Kind::string, "", 46}};
    grid.rows_seen = 13;
    return {information_dialog,
            "File information",
            {{choice}, {grid}, {{copy, Field_Kind::push_button, "&Copy the table"}}, {{button_ok, Field_Kind::push_button, "Close"}}}};
}

void File_Information_Dialog(const Session& session) {
    const Profile_Store& store = session.store;
    if (store.nperfiles() == 0) return;
    std::vector<std::string> profiles;
    for (int row = 1; row <= store.nperfiles(); ++row) profiles.push_back(std::to_string(row) + "  " + store.Info(row).file_name);
    const std::vector<int> in_list = store.Chosen_Rows();
    int row = in_list.empty() ? std::max(1, store.First_Shown()) : in_list.front();
    WDialogLoad(information_dialog);
    WDialogPutMenu(profile, profiles, row);
    Show_Row(session, row);
    WDialogShow(profile, Show_Kind::modal);
    const Modal_Routines routines{.changed = [&](int field) {
        const int chosen = field == profile ? WDialogGetMenu(profile) : 0;
        if (chosen < 1 || chosen > store.nperfiles() || chosen == row) return;
        row = chosen;
        Show_Row(session, row);
    }};
    while (Run_Modal(information_dialog, routines) == copy) WClipboardPutText(As_Text(File_Information(store, row)));
    WDialogUnload();
}

}  // namespace vntl
