// Grids: typed cells in rows and columns.
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTableWidget>
#include <cmath>
#include <utility>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "toolkit/qt/dialog_fields.hpp"

namespace vntl {

namespace {

constexpr int usual_rows_seen = 8, most_characters = 160, label_characters = 8;
constexpr int own_state = Qt::UserRole;    // data of a cell: its state, whatever that of the grid is
constexpr int refusal = Qt::UserRole + 1;  // and why it was refused

// A table whose cells are copied and pasted as text, columns parted by TABs.
class Table : public QTableWidget {
public:
    using QTableWidget::QTableWidget;

    // Columns, with their least widths, that divide the room which all columns leave.
    void Share_Room(std::vector<std::pair<int, int>> columns) { shares_room_ = std::move(columns); }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QTableWidget::resizeEvent(event);
        if (shares_room_.empty()) return;
        int room = viewport()->width() - horizontalHeader()->length();
        for (const auto& [column, least] : shares_room_) room += columnWidth(column) - least;
        const int share = std::max(0, room / static_cast<int>(shares_room_.size()));
        for (const auto& [column, least] : shares_room_) setColumnWidth(column, least + share);
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (event->matches(QKeySequence::Copy))
            Copy();
        else if (event->matches(QKeySequence::Paste))
            Paste();
        else
            QTableWidget::keyPressEvent(event);
    }

    // TAB goes from cell to cell, and from the last one on to the next field.
    bool focusNextPrevChild(bool next) override {
        const QModelIndex at = currentIndex();
        const bool at_end = next ? at.row() == rowCount() - 1 && at.column() == columnCount() - 1 : at.row() <= 0 && at.column() <= 0;
        if (at.isValid() && !at_end) return QTableWidget::focusNextPrevChild(next);
        setTabKeyNavigation(false);
        const bool moved = QTableWidget::focusNextPrevChild(next);
        setTabKeyNavigation(true);
        return moved;
    }

private:
    static bool Is_Check(const QTableWidgetItem& item) { return item.data(Qt::CheckStateRole).isValid(); }

    void Copy() const {
        QString text;
        for (const QTableWidgetSelectionRange& range : selectedRanges())
            for (int row = range.topRow(); row <= range.bottomRow(); ++row)
                for (int column = range.leftColumn(); column <= range.rightColumn(); ++column) {
                    const QTableWidgetItem& cell = *item(row, column);
                    text += Is_Check(cell) ? QString::number(cell.checkState() == Qt::Checked) : cell.text();
                    text += column < range.rightColumn() ? '\t' : '\n';
                }
        QApplication::clipboard()->setText(text);
    }

    void Paste() {
        QStringList lines = QApplication::clipboard()->text().split('\n');
        if (lines.last().isEmpty()) lines.removeLast();  // an empty one before it is an empty cell
        for (int i = 0; i < lines.size(); ++i) {
            const QStringList texts = lines[i].split('\t');
            for (int j = 0; j < texts.size(); ++j) {
                QTableWidgetItem* cell = item(currentRow() + i, currentColumn() + j);
                if (cell == nullptr || (cell->flags() & Qt::ItemIsEnabled) == 0) continue;
                if (Is_Check(*cell) && (cell->flags() & Qt::ItemIsUserCheckable) != 0)
                    cell->setCheckState(texts[j].trimmed() == "1" ? Qt::Checked : Qt::Unchecked);
                else if ((cell->flags() & Qt::ItemIsEditable) != 0)
                    cell->setText(texts[j].trimmed());
            }
        }
    }

    std::vector<std::pair<int, int>> shares_room_;
};

class Grid_Field : public Grid_Widget {
public:
    explicit Grid_Field(const Dialog_Field& field)
        : Grid_Widget(field),
          columns_(field.columns),
          states_(field.columns.size(), field_enabled),
          table_(new Table(0, static_cast<int>(field.columns.size()))) {
        QStringList headings;
        const int character = table_->fontMetrics().averageCharWidth();
        std::vector<std::pair<int, int>> wide;
        for (const Grid_Column& column : columns_) headings << Q(column.heading);
        table_->setHorizontalHeaderLabels(headings);
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const int heading = table_->fontMetrics().horizontalAdvance(headings[static_cast<int>(i)]) + 3 * character;
            const int room =
                std::max(heading, columns_[i].kind == Cell_Kind::check_box ? 6 * character : columns_[i].width * character * 6 / 5);
            table_->setColumnWidth(static_cast<int>(i), room);
            if (columns_[i].kind != Cell_Kind::check_box) wide.emplace_back(static_cast<int>(i), room);
            columns_width_ += room;
        }
        const bool check_at_end = !columns_.empty() && columns_.back().kind == Cell_Kind::check_box;
        table_->horizontalHeader()->setStretchLastSection(!check_at_end);
        if (check_at_end) table_->Share_Room(std::move(wide));
        table_->setTabKeyNavigation(true);
        const int rows_seen = field.rows_seen != 0 ? field.rows_seen : usual_rows_seen;
        const int height = table_->verticalHeader()->defaultSectionSize() * (rows_seen + 1);
        table_->setMinimumHeight(height);
        if (rows_seen == field.grid_rows) table_->setMaximumHeight(height);
        Make_Room_For_Labels(character * label_characters);
        Rows(field.grid_rows);
        QObject::connect(table_, &QTableWidget::itemChanged, table_, [this](QTableWidgetItem* item) {
            Mark(*item);
            changed();
            cell_changed(item->column() + 1, item->row() + 1);
        });
    }
    QWidget* widget() override { return table_; }

    void Rows(int rows) override {
        const QSignalBlocker quiet(table_);
        const int before = table_->rowCount();
        table_->setRowCount(std::max(0, rows));
        for (int row = before; row < table_->rowCount(); ++row)
            for (int column = 0; column < table_->columnCount(); ++column) {
                auto* item = new QTableWidgetItem;
                const Cell_Kind kind = columns_[static_cast<std::size_t>(column)].kind;
                if (kind == Cell_Kind::check_box) item->setCheckState(Qt::Unchecked);
                if (kind == Cell_Kind::real || kind == Cell_Kind::integer) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
                table_->setItem(row, column, item);
                Put_State(*item, states_[static_cast<std::size_t>(column)]);
            }
    }
    int Rows() const override { return table_->rowCount(); }

    void Label_Row(int row, std::string_view text) override {
        if (row < 1 || row > Rows()) return;
        table_->setVerticalHeaderItem(row - 1, new QTableWidgetItem(Q(text)));
        Make_Room_For_Labels(table_->fontMetrics().horizontalAdvance(Q(text)) + 4 * table_->fontMetrics().averageCharWidth());
    }

    void Put_Cell(int column, int row, std::string_view text) override {
        QTableWidgetItem* item = At(column, row);
        if (item == nullptr) return;
        const QSignalBlocker quiet(table_);
        Write(*item, text);
    }
    void Put_Cell_Real(int column, int row, double value, std::string_view format) override {
        if (At(column, row) == nullptr) return;
        std::string& own = columns_[static_cast<std::size_t>(column - 1)].format;
        if (!format.empty()) own = format;
        Put_Cell(column, row, Real_Text(value, own));
    }

    std::string Cell(int column, int row) const override {
        const QTableWidgetItem* item = At(column, row);
        if (item == nullptr) return {};
        return Kind(*item) == Cell_Kind::check_box ? (item->checkState() == Qt::Checked ? "1" : "0") : item->text().toStdString();
    }
    bool Valid(int column, int row) const override {
        const QTableWidgetItem* item = At(column, row);
        return item != nullptr && Holds_Value(*item);
    }

    void Mark_Cell_Refused(int column, int row, std::string_view why) override {
        QTableWidgetItem* item = At(column, row);
        if (item == nullptr) return;
        refused_ = true;
        {
            const QSignalBlocker quiet(table_);
            item->setData(refusal, Q(why));
        }
        Mark(*item);
        table_->setCurrentItem(item);
        table_->setFocus();
    }
    void Clear_Refused() override {
        Dialog_Widget::Clear_Refused();
        for (int row = 0; row < table_->rowCount(); ++row)
            for (int column = 0; column < table_->columnCount(); ++column) {
                QTableWidgetItem& item = *table_->item(row, column);
                if (!item.data(refusal).isValid()) continue;
                {
                    const QSignalBlocker quiet(table_);
                    item.setData(refusal, {});
                }
                Mark(item);
            }
    }

    void Cell_State(int column, int row, int state) override {
        const QSignalBlocker quiet(table_);
        if (QTableWidgetItem* item = At(column, row)) Put_State(*item, state);
    }
    void Column_State(int column, int state) override {
        if (column < 1 || column > table_->columnCount()) return;
        states_[static_cast<std::size_t>(column - 1)] = state;
        for (int row = 1; row <= Rows(); ++row) Cell_State(column, row, state);
    }

    Status Set_Cell(const std::string& column_name, int row, const std::string& value) override {
        int column = 0;
        for (std::size_t i = 0; i < columns_.size(); ++i)
            if (Trim(columns_[i].heading) == Trim(column_name)) column = static_cast<int>(i) + 1;
        if (column == 0 && !Parse_Integer(column_name, column)) column = 0;
        QTableWidgetItem* item = At(column, row);
        const std::string place = "cell " + column_name + ' ' + std::to_string(row);
        if (item == nullptr) return Status::Fail("the grid has no " + place);
        const auto needed = Qt::ItemIsEnabled | (Kind(*item) == Cell_Kind::check_box ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
        if ((item->flags() & needed) != needed) return Status::Fail(place + " is disabled");
        if (Kind(*item) == Cell_Kind::check_box && value != "0" && value != "1") return Status::Fail(place + " takes 0 or 1");
        Write(*item, value);
        return Holds_Value(*item) ? Status::Done() : Status::Fail(place + " holds no valid value: " + value);
    }

    void Clear() override {
        for (int row = 1; row <= Rows(); ++row)
            for (int column = 1; column <= table_->columnCount(); ++column) Put_Cell(column, row, {});
    }
    void Set_State(int state) override {
        state_ = state;
        table_->setEnabled(state != field_disabled);
        table_->setEditTriggers(state == field_read_only
                                    ? QTableWidget::NoEditTriggers
                                    : QTableWidget::DoubleClicked | QTableWidget::EditKeyPressed | QTableWidget::AnyKeyPressed);
        const QSignalBlocker quiet(table_);
        for (int column = 1; column <= table_->columnCount(); ++column)
            for (int row = 1; row <= Rows(); ++row) Apply_State(*At(column, row));
    }

private:
    QTableWidgetItem* At(int column, int row) const {
        return column >= 1 && row >= 1 && column <= table_->columnCount() && row <= Rows() ? table_->item(row - 1, column - 1) : nullptr;
    }
    void Make_Room_For_Labels(int width) {
        labels_width_ = std::max(labels_width_, width);
        const int character = table_->fontMetrics().averageCharWidth();
        table_->setMinimumWidth(std::min(labels_width_ + columns_width_ + 4 * character, most_characters * character));
    }
    Cell_Kind Kind(const QTableWidgetItem& item) const { return columns_[static_cast<std::size_t>(item.column())].kind; }

    void Write(QTableWidgetItem& item, std::string_view text) {
        if (Kind(item) == Cell_Kind::check_box)
            item.setCheckState(text == "1" ? Qt::Checked : Qt::Unchecked);
        else
            item.setText(Q(text));
        Mark(item);
    }

    bool Holds_Value(const QTableWidgetItem& item) const {
        const std::string text = item.text().toStdString();
        float real = 0;
        int whole = 0;
        switch (Kind(item)) {
            case Cell_Kind::real:
                return IStringToReal(text, real);
            case Cell_Kind::integer:
                return Parse_Integer(text, whole);
            default:
                return true;
        }
    }

    // An empty cell waits for its number and is not marked.
    void Mark(QTableWidgetItem& item) {
        const QSignalBlocker quiet(table_);
        const bool invalid = !item.text().trimmed().isEmpty() && !Holds_Value(item);
        const bool dark = table_->palette().color(QPalette::Base).lightness() < 128;
        const bool greyed =
            (item.flags() & Qt::ItemIsEnabled) != 0 && Kind(item) != Cell_Kind::check_box && (item.flags() & Qt::ItemIsEditable) == 0;
        const QString why = invalid ? "This is not a number" : item.data(refusal).toString();
        if (!why.isEmpty())
            item.setBackground(dark ? QColor(110, 40, 40) : QColor(255, 214, 214));
        else
            item.setBackground(greyed ? table_->palette().brush(QPalette::AlternateBase) : QBrush());
        item.setToolTip(why);
    }

    void Put_State(QTableWidgetItem& item, int state) {
        item.setData(own_state, state);
        Apply_State(item);
    }

    // The state of a cell, or that of the whole grid where it allows less.
    void Apply_State(QTableWidgetItem& item) {
        const int own = item.data(own_state).toInt();
        const int state = state_ == field_read_only && own == field_enabled ? field_read_only : own;
        const Qt::ItemFlags change = Kind(item) == Cell_Kind::check_box ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable;
        Qt::ItemFlags flags = Qt::ItemIsSelectable;
        if (state != field_disabled) flags |= Qt::ItemIsEnabled;
        if (state == field_enabled) flags |= change;
        item.setFlags(flags);
        Mark(item);
    }

    std::vector<Grid_Column> columns_;
    std::vector<int> states_;  // of whole columns, for rows that come
    Table* table_;
    int columns_width_ = 0, labels_width_ = 0;
};

}  // namespace

std::unique_ptr<Dialog_Widget> Build_Grid(const Dialog_Field& field) { return std::make_unique<Grid_Field>(field); }

}  // namespace vntl
