// The list of rows at the left of a window.
#pragma once

#include <QDockWidget>
#include <string>
#include <vector>

#include "toolkit/row_list.hpp"

namespace vntl {

class Row_List_Rows;
class Row_List_Tree;
class Window;

class Row_List : public QDockWidget {
public:
    Row_List(Window& window, const Row_List_Resource& resource);

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

    Window& window_;
    int close_command_;
    QSize window_size_;  // when the list had its size last
    Row_List_Rows* rows_;
    Row_List_Tree* tree_;
};

}  // namespace vntl
