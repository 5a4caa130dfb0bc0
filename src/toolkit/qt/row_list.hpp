// The list of rows at the left of a window.
#pragma once

#include <QDockWidget>
#include <QMainWindow>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "toolkit/row_list.hpp"

class QMenu;

namespace vntl {

class Row_List_Rows;
class Row_List_Tree;

// What the list needs of its window.
struct Row_List_Host {
    QMainWindow* window = nullptr;
    int number = 0;
    std::function<void(QMenu&, std::span<const Menu_Entry>)> add_menu;  // entries that the menu bar has already are the same ones
    std::function<void()> leave;                                        // the focus goes to the picture
};

class Row_List : public QDockWidget {
public:
    Row_List(const Row_List_Host& host, const Row_List_Resource& resource);

    void Set_Width(int width);  // 0: a usual one
    void Put(std::vector<Row_List_Row> rows);
    void Choose(const std::vector<int>& rows);
    void Point(int row);
    void Take_Focus();
    Row_List_View Describe() const;

protected:
    void closeEvent(QCloseEvent*) override;
    void resizeEvent(QResizeEvent*) override;

private:
    void Fit_Columns();

    Row_List_Host host_;
    int close_command_;
    QSize window_size_;  // when the list had its size last
    Row_List_Rows* rows_;
    Row_List_Tree* tree_;
};

}  // namespace vntl
