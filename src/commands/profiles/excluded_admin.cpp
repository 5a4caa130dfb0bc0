#include "commands/profiles/excluded_admin.hpp"

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "commands/modal.hpp"
#include "commands/profiles/excluded_regions.hpp"
#include "plot/plot.hpp"
#include "session/changes.hpp"

namespace vntl {

namespace {

constexpr int admin_dialog = 417;
enum Field { regions_tree = 1751, insert, delete_one, delete_all, leave };

// What an item of the tree stands for.
struct Tree_Item {
    int row;
    int region;  // from 1; 0 for the item of the row itself
};

std::string Region_Text(const PRF_Info_Add_Type& info, int region) {
    const auto place = static_cast<std::size_t>(region - 1);
    const auto number = [](float value) { return std::string(Trim(IRealToString(value, "(f12.4)"))); };
    return "(" + IntegerToString(region, "(i2)") + ") " + number(info.excl_min[place]) + " /" + number(info.excl_max[place]);
}

// The items in the order of their numbers in the tree. The item "No excluded regions" stands for its row, which has none to delete.
std::vector<Tree_Item> Fill_Tree(const Session& session) {
    std::vector<Tree_Item> items;
    WDialogClearField(regions_tree);
    for (int row = 1; row <= session.store.nperfiles(); ++row) {
        const PRF_Info_Add_Type& info = session.store.Info(row);
        const int parent = WDialogInsertTreeViewItem(regions_tree, 0, info.file_name);
        items.push_back({row, 0});
        for (int region = 1; region <= info.nexcl; ++region) {
            WDialogInsertTreeViewItem(regions_tree, parent, Region_Text(info, region));
            items.push_back({row, region});
        }
        if (info.nexcl > 0) continue;
        WDialogInsertTreeViewItem(regions_tree, parent, "No excluded regions");
        items.push_back({row, 0});
    }
    return items;
}

bool Confirmed(Ask& ask, std::string text) {
    return ask.Box({Box_Buttons::yes_no, Box_Icon::question, 2, std::move(text), "Confirmation...."}) == Box_Answer::yes;
}

void Delete_Regions(PRF_Info_Add_Type& info) {
    while (info.nexcl > 0) Remove_Excluded_Region(info, info.nexcl);
}

// These three are true when regions have come or gone.
bool Delete_Chosen(Session& session, Ask& ask, Tree_Item item) {
    PRF_Info_Add_Type& info = session.store.Info(item.row);
    if (info.nexcl < 1) return false;
    if (item.region == 0) {
        if (!Confirmed(ask, "Do you want to delete ALL excluded regions\nof profile: " + info.file_name + " ?")) return false;
        Row_Change change(session, "deletion of excluded regions" + Of_Profiles(session, {item.row}), {item.row});
        Delete_Regions(info);
        change.Keep();
        return true;
    }
    const std::string number = std::to_string(item.region);
    if (!Confirmed(ask, "Do you want to delete the excluded region\nNo " + number + " of profile: " + info.file_name + " ?")) return false;
    Row_Change change(session, "deletion of an excluded region" + Of_Profiles(session, {item.row}), {item.row});
    Remove_Excluded_Region(info, item.region);
    change.Keep();
    return true;
}

bool Delete_All(Session& session, Ask& ask) {
    if (!Confirmed(ask, "Do you want to delete ALL excluded regions\nof ALL profiles?")) return false;
    Row_Change change(session, "deletion of all excluded regions", All_Rows(session));
    for (const int row : All_Rows(session)) Delete_Regions(session.store.Info(row));
    change.Keep();
    return true;
}

bool Insert_Another(Session& session, Ask& ask) {
    const Status status = Insert_Excluded_Region(session, ask);
    WDialogSelect(admin_dialog);
    if (status.to_tell()) ask.Error(status.message);
    return status.ok();
}

}  // namespace

Dialog_Resource Admin_Excluded_Dialog_Resource() {
    return {admin_dialog,
            "Admin. Excluded Regions",
            {{{regions_tree, Field_Kind::tree, "Regions"}},
             {{insert, Field_Kind::push_button, "&Insert"},
              {delete_one, Field_Kind::push_button, "&Delete"},
              {delete_all, Field_Kind::push_button, "Delete &all"},
              {leave, Field_Kind::push_button, "&Return"}}}};
}

void Excluded_Regions_Admin(Session& session, Ask& ask) {
    WDialogLoad(admin_dialog);
    std::vector<Tree_Item> items = Fill_Tree(session);
    WDialogShow(regions_tree, Show_Kind::modal);
    while (true) {
        const int pressed = Run_Modal(admin_dialog), chosen = WDialogGetTreeView(regions_tree);
        bool changed = false;
        if (pressed == insert)
            changed = Insert_Another(session, ask);
        else if (pressed == delete_one)
            changed = chosen >= 1 && Delete_Chosen(session, ask, items.at(static_cast<std::size_t>(chosen - 1)));
        else if (pressed == delete_all)
            changed = Delete_All(session, ask);
        else
            break;
        if (!changed) continue;
        items = Fill_Tree(session);
        Plot_Redraw(session);
    }
    WDialogUnload();
}

}  // namespace vntl
