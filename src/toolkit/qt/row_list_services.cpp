#include "toolkit/qt/application.hpp"
#include "toolkit/qt/main_window.hpp"
#include "toolkit/qt/row_list.hpp"

namespace vntl {

namespace {

Window* Selected() { return The_Toolkit().Find_Window(The_Toolkit().selected_window); }
Row_List* Open_List() {
    Window* window = Selected();
    Row_List* list = window == nullptr ? nullptr : window->list();
    return list == nullptr || list->isHidden() ? nullptr : list;
}

}  // namespace

void WListOpen(const Row_List_Resource& list, int width) {
    if (Window* window = Selected()) window->Open_List(list, width);
}
void WListClose() {
    if (Window* window = Selected()) window->Close_List();
}
bool WListIsOpen() { return Open_List() != nullptr; }
void WListPut(std::vector<Row_List_Row> rows) {
    if (Row_List* list = Open_List()) list->Put(std::move(rows));
}
void WListChoose(const std::vector<int>& rows) {
    if (Row_List* list = Open_List()) list->Choose(rows);
}
void WListPoint(int row) {
    if (Row_List* list = Open_List()) list->Point(row);
}
Row_List_View Describe_List() {
    const Row_List* list = Open_List();
    return list == nullptr ? Row_List_View{} : list->Describe();
}

}  // namespace vntl
