#include "toolkit/qt/row_list.hpp"

#include <QAbstractTableModel>
#include <QApplication>
#include <QCloseEvent>
#include <QHeaderView>
#include <QIcon>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTreeView>
#include <algorithm>
#include <memory>
#include <utility>

#include "base/text.hpp"
#include "toolkit/qt/application.hpp"
#include "toolkit/qt/bitmap_qt.hpp"

namespace vntl {

namespace {

constexpr const char* rows_type = "application/x-vantrelo-rows";
constexpr int usual_name = 20, usual_number = 8;  // characters, of a list that has no width of its own yet
constexpr int least_width = 100;                  // pixels
constexpr double largest_share = 0.33;            // of the window, until the user draws it wider

QString Text(const std::string& text) { return QString::fromStdString(text); }

int Side_Of_Swatch() { return QFontMetrics(QApplication::font()).height() * 3 / 5; }

}  // namespace

// The rows as the view asks for them, a cell at a time.
class Row_List_Rows : public QAbstractTableModel {
public:
    Row_List_Rows(int window, std::vector<std::string> columns) : window_(window), columns_(std::move(columns)) {}

    const std::vector<Row_List_Row>& rows() const { return rows_; }
    const Row_List_Row& row(int row) const { return rows_[static_cast<std::size_t>(row - 1)]; }

    // True where there are other rows, not only other texts in them.
    bool Put(std::vector<Row_List_Row> rows) {
        if (rows.size() != rows_.size()) {
            beginResetModel();
            rows_ = std::move(rows);
            endResetModel();
            return true;
        }
        const auto [first, other] = std::mismatch(rows_.begin(), rows_.end(), rows.begin());
        if (first == rows_.end()) return false;
        const auto place = static_cast<int>(first - rows_.begin());
        rows_ = std::move(rows);
        emit dataChanged(index(place, 0), index(rowCount() - 1, columnCount() - 1));
        return false;
    }

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : static_cast<int>(rows_.size()); }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : static_cast<int>(columns_.size()); }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
        if (role == Qt::DisplayRole) return Text(columns_[static_cast<std::size_t>(section)]);
        if (role == Qt::TextAlignmentRole) return Alignment(section);
        return {};
    }

    QVariant data(const QModelIndex& at, int role) const override {
        if (!at.isValid() || at.row() >= rowCount()) return {};
        const Row_List_Row& row = rows_[static_cast<std::size_t>(at.row())];
        const auto column = static_cast<std::size_t>(at.column());
        switch (role) {
            case Qt::DisplayRole:
            case Qt::EditRole:
                return column < row.cells.size() ? Text(row.cells[column]) : QString();
            case Qt::ToolTipRole:
                return Text(row.tip);
            case Qt::TextAlignmentRole:
                return Alignment(at.column());
            case Qt::CheckStateRole:
                return column == 0 ? QVariant(row.ticked ? Qt::Checked : Qt::Unchecked) : QVariant();
            case Qt::DecorationRole:
                return column == 0 ? QVariant(Swatch(Q_Colour(row.colour))) : QVariant();
            default:
                return {};
        }
    }

    Qt::ItemFlags flags(const QModelIndex& at) const override {
        if (!at.isValid()) return Qt::ItemIsDropEnabled;
        const Qt::ItemFlags all = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
        return at.column() == 0 ? all | Qt::ItemIsUserCheckable | Qt::ItemIsEditable : all;
    }

    // The row itself stays as it is until the program puts another one.
    bool setData(const QModelIndex& at, const QVariant& value, int role) override {
        const int row = at.row() + 1;
        if (role == Qt::CheckStateRole) {
            Post_Message({Message_Kind::list_ticked, {.win = window_, .value1 = value.toInt() == Qt::Unchecked ? 0 : 1, .rows = {row}}});
        } else if (role == Qt::EditRole && value.toString() != data(at, Qt::EditRole).toString()) {
            Post_Message({Message_Kind::list_renamed, {.win = window_, .value1 = row, .files = {value.toString().toStdString()}}});
        }
        return false;
    }

    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override { return {rows_type}; }
    QMimeData* mimeData(const QModelIndexList& indexes) const override {
        dragged_.clear();
        for (const QModelIndex& index : indexes) dragged_.push_back(index.row() + 1);
        std::sort(dragged_.begin(), dragged_.end());
        dragged_.erase(std::unique(dragged_.begin(), dragged_.end()), dragged_.end());
        auto* data = new QMimeData;
        data->setData(rows_type, "rows");
        return data;
    }
    // Behind the last row where none is under the hand.
    bool dropMimeData(const QMimeData*, Qt::DropAction, int row, int, const QModelIndex&) override {
        const int before = (row < 0 ? rowCount() : row) + 1;
        Post_Message({Message_Kind::list_moved, {.win = window_, .value1 = before, .rows = dragged_}});
        return false;
    }

private:
    static int Alignment(int column) {
        const Qt::Alignment horizontal = column == 0 ? Qt::AlignLeft : Qt::AlignRight;
        return static_cast<int>((horizontal | Qt::AlignVCenter).toInt());
    }

    // A border keeps a colour that is that of the list in sight. A chosen row shows the same colour: it is that of the curve.
    static QIcon Swatch(const QColor& colour) {
        const double ratio = qApp->devicePixelRatio();
        const int side = Side_Of_Swatch();
        QPixmap picture(QSize(side, side) * ratio);
        picture.setDevicePixelRatio(ratio);
        picture.fill(colour);
        QPainter painter(&picture);
        painter.setPen(QApplication::palette().color(QPalette::Mid));
        painter.drawRect(QRectF(0, 0, side, side).adjusted(0.5, 0.5, -0.5, -0.5));
        painter.end();
        QIcon icon(picture);
        icon.addPixmap(picture, QIcon::Selected);
        return icon;
    }

    int window_;
    std::vector<std::string> columns_;
    std::vector<Row_List_Row> rows_;
    mutable std::vector<int> dragged_;
};

class Row_List_Tree : public QTreeView {
public:
    Row_List_Tree(const Row_List_Host& host, Row_List_Rows& rows, const Row_List_Resource& resource)
        : host_(host), rows_(rows), empty_(Text(resource.empty)), delete_command_(resource.delete_command) {
        setModel(&rows);
        setAccessibleName(Text(resource.title));
        setRootIsDecorated(false);
        setUniformRowHeights(true);
        setIconSize({Side_Of_Swatch(), Side_Of_Swatch()});
        setAllColumnsShowFocus(true);
        setTextElideMode(Qt::ElideMiddle);
        setSelectionMode(QAbstractItemView::ExtendedSelection);
        setDragDropMode(QAbstractItemView::InternalMove);
        setDragEnabled(true);
        setEditTriggers(QAbstractItemView::DoubleClicked);
        setFrameShape(QFrame::NoFrame);
        setMouseTracking(true);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        header()->setStretchLastSection(false);
        header()->setSectionsMovable(false);
        header()->setMinimumSectionSize(1);
        header()->setSectionResizeMode(QHeaderView::Fixed);
        header()->setSectionResizeMode(0, QHeaderView::Stretch);
        host_.add_menu(menu_, resource.menu);
    }

    void Choose(const std::vector<int>& rows) {
        if (rows == Chosen()) return;
        QItemSelection selection;
        for (const int row : rows) {
            if (row < 1 || row > rows_.rowCount()) continue;
            selection.select(rows_.index(row - 1, 0), rows_.index(row - 1, rows_.columnCount() - 1));
        }
        given_ = true;
        selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
        const bool elsewhere = !rows.empty() && std::find(rows.begin(), rows.end(), currentIndex().row() + 1) == rows.end();
        if (elsewhere) selectionModel()->setCurrentIndex(rows_.index(rows.front() - 1, 0), QItemSelectionModel::NoUpdate);
        given_ = false;
    }

    std::vector<int> Chosen() const {
        std::vector<int> rows;
        for (const QModelIndex& index : selectionModel()->selectedRows()) rows.push_back(index.row() + 1);
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    void Point(int row) {
        if (row == pointed_) return;
        pointed_ = row;
        viewport()->update();
        if (row > 0 && row <= rows_.rowCount() && !underMouse()) scrollTo(rows_.index(row - 1, 0));
    }
    int pointed() const { return pointed_; }

    QSize sizeHint() const override { return {width_, 200}; }
    void Set_Width(int width) {
        width_ = width;
        updateGeometry();
    }

    // Whether what the user has chosen is still to be told.
    bool Is_Ahead() const {
        const auto& queue = The_Toolkit().queue;
        return std::any_of(queue.begin(), queue.end(),
                           [this](const Message& m) { return m.kind == Message_Kind::list_chosen && m.record.win == host_.number; });
    }

protected:
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override {
        QTreeView::selectionChanged(selected, deselected);
        if (!given_) Post_Message({Message_Kind::list_chosen, {.win = host_.number, .rows = Chosen()}});
    }

    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override {
        QTreeView::currentChanged(current, previous);
        if (!given_ && hasFocus() && current.isValid() && QApplication::mouseButtons() == Qt::NoButton) Tell_Pointed(current.row() + 1);
    }

    // A click on a check box leaves the rows chosen that are.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override {
        const auto* mouse = dynamic_cast<const QMouseEvent*>(event);
        if (mouse != nullptr && mouse->button() == Qt::LeftButton && On_Check_Box(index, mouse->position().toPoint()))
            return QItemSelectionModel::NoUpdate;
        return QTreeView::selectionCommand(index, event);
    }

    // One of the chosen rows stands for all of them.
    void mouseReleaseEvent(QMouseEvent* event) override {
        const QModelIndex index = indexAt(event->position().toPoint());
        const std::vector<int> chosen = Chosen();
        const bool ticks = event->button() == Qt::LeftButton && index.isValid() && state() != DraggingState && index == pressed_ &&
                           On_Check_Box(index, event->position().toPoint());
        pressed_ = QModelIndex();
        if (!ticks || chosen.size() < 2 || !std::binary_search(chosen.begin(), chosen.end(), index.row() + 1))
            return QTreeView::mouseReleaseEvent(event);
        Tick(chosen, !rows_.row(index.row() + 1).ticked);
        setState(NoState);
    }
    void mousePressEvent(QMouseEvent* event) override {
        pressed_ = indexAt(event->position().toPoint());
        QTreeView::mousePressEvent(event);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        const QModelIndex index = indexAt(event->position().toPoint());
        if (On_Check_Box(index, event->position().toPoint())) return mousePressEvent(event);
        QTreeView::mouseDoubleClickEvent(event);
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        QTreeView::mouseMoveEvent(event);
        if (event->buttons() == Qt::NoButton) Tell_Pointed(indexAt(event->position().toPoint()).row() + 1);
    }
    bool viewportEvent(QEvent* event) override {
        if (event->type() == QEvent::Leave) Tell_Pointed(0);
        return QTreeView::viewportEvent(event);
    }

    // Keys that the menu of the window has too are the list's as long as it has the focus.
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ShortcutOverride) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_F2 || key == Qt::Key_Delete || key == Qt::Key_F6) event->accept();
        }
        return QTreeView::event(event);
    }

    void keyPressEvent(QKeyEvent* event) override {
        const int key = event->key();
        const std::vector<int> chosen = Chosen();
        const bool moves = (key == Qt::Key_Up || key == Qt::Key_Down) && event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
        if (moves && !chosen.empty())
            Post_Message({Message_Kind::list_moved, {.win = host_.number, .value2 = key == Qt::Key_Up ? -1 : 1}});
        else if (key == Qt::Key_Space && currentIndex().isValid() && event->modifiers() == Qt::NoModifier)
            Tick(chosen.empty() ? std::vector<int>{currentIndex().row() + 1} : chosen, !rows_.row(currentIndex().row() + 1).ticked);
        else if (key == Qt::Key_F2 && currentIndex().isValid())
            edit(rows_.index(currentIndex().row(), 0));
        else if (key == Qt::Key_Delete)
            Post_Message({Message_Kind::command, {.win = host_.number, .value1 = delete_command_}});
        else if (key == Qt::Key_Escape || key == Qt::Key_F6)
            host_.leave();
        else if (!moves)
            QTreeView::keyPressEvent(event);
    }

    // By the key, at the row that has the focus.
    void contextMenuEvent(QContextMenuEvent* event) override {
        const QRect row = visualRect(currentIndex());
        const bool by_key = event->reason() == QContextMenuEvent::Keyboard && row.isValid();
        menu_.popup(by_key ? viewport()->mapToGlobal(row.center()) : event->globalPos());
    }

    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        if (index.row() + 1 == pointed_) {
            QColor mark = palette().color(QPalette::Highlight);
            mark.setAlpha(60);
            painter->fillRect(option.rect, mark);
        }
        QTreeView::drawRow(painter, option, index);
    }

    void paintEvent(QPaintEvent* event) override {
        QTreeView::paintEvent(event);
        if (rows_.rowCount() > 0) return;
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
        painter.drawText(viewport()->rect().adjusted(8, 8, -8, -8), Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, empty_);
    }

private:
    bool On_Check_Box(const QModelIndex& index, QPoint at) const {
        if (!index.isValid() || index.column() != 0) return false;
        QStyleOptionViewItem option;
        initViewItemOption(&option);
        option.rect = visualRect(index);
        option.features |= QStyleOptionViewItem::HasCheckIndicator;
        return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).adjusted(-2, -2, 2, 2).contains(at);
    }

    void Tick(const std::vector<int>& rows, bool on) {
        Post_Message({Message_Kind::list_ticked, {.win = host_.number, .value1 = on ? 1 : 0, .rows = rows}});
    }

    void Tell_Pointed(int row) {
        if (std::exchange(told_pointed_, row) != row) Post_Message({Message_Kind::list_pointed, {.win = host_.number, .value1 = row}});
    }

    Row_List_Host host_;
    Row_List_Rows& rows_;
    QString empty_;
    int delete_command_;
    int width_ = least_width;
    int pointed_ = 0, told_pointed_ = 0;
    bool given_ = false;  // the program chooses
    QPersistentModelIndex pressed_;
    QMenu menu_;
};

Row_List::Row_List(const Row_List_Host& host, const Row_List_Resource& resource)
    : QDockWidget(Text(resource.title), host.window), host_(host), close_command_(resource.close_command) {
    setFeatures(QDockWidget::DockWidgetClosable);
    setAllowedAreas(Qt::LeftDockWidgetArea);
    rows_ = new Row_List_Rows(host.number, resource.columns);
    rows_->setParent(this);
    tree_ = new Row_List_Tree(host, *rows_, resource);
    tree_->setMinimumWidth(least_width);
    setWidget(tree_);
    Fit_Columns();
}

// As wide as the longest of a sample of texts; a column without any goes. The first one has what is left.
void Row_List::Fit_Columns() {
    const QFontMetrics metrics(tree_->font());
    const int gap = metrics.horizontalAdvance("0") * 2;
    for (int column = 1; column < rows_->columnCount(); ++column) {
        const std::string* longest = nullptr;
        for (const Row_List_Row& row : rows_->rows()) {
            const std::string& text = row.cells[static_cast<std::size_t>(column)];
            if (longest == nullptr || text.size() > longest->size()) longest = &text;
        }
        tree_->setColumnHidden(column, longest != nullptr && longest->empty());
        const QString heading = rows_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        const int texts = std::max(metrics.horizontalAdvance(heading), longest == nullptr ? 0 : metrics.horizontalAdvance(Text(*longest)));
        tree_->header()->resizeSection(column, texts + gap);
    }
}

void Row_List::Set_Width(int width) {
    if (width <= 0) {
        const int letters = usual_name + usual_number * (rows_->columnCount() - 1);
        const QFontMetrics metrics(tree_->font());
        width = metrics.horizontalAdvance('0') * letters + 3 * metrics.height();  // check box, colour and gaps
        width = std::min(width, static_cast<int>(largest_share * host_.window->width()));
    }
    width = std::max(width, least_width);
    const bool drawn_now = isVisible() && (QApplication::mouseButtons() & Qt::LeftButton) != 0;
    if (drawn_now) return;  // by its edge, which knows better
    tree_->Set_Width(width);
    if (isVisible()) host_.window->resizeDocks({this}, {width}, Qt::Horizontal);
}

void Row_List::Put(std::vector<Row_List_Row> rows) {
    for (Row_List_Row& row : rows) row.cells.resize(static_cast<std::size_t>(std::max(1, rows_->columnCount())));
    rows_->Put(std::move(rows));
    Fit_Columns();
}

void Row_List::Choose(const std::vector<int>& rows) {
    if (!tree_->Is_Ahead()) tree_->Choose(rows);
}

void Row_List::Point(int row) { tree_->Point(row); }
void Row_List::Take_Focus() { tree_->setFocus(Qt::ShortcutFocusReason); }
Row_List_View Row_List::Describe() const { return {width(), rows_->rows(), tree_->Chosen(), tree_->pointed()}; }

// The program decides.
void Row_List::closeEvent(QCloseEvent* event) {
    event->ignore();
    Post_Message({Message_Kind::command, {.win = host_.number, .value1 = close_command_}});
}

// Drawn by its edge; a window that changes its size tells nothing of what the user wants the list to be.
void Row_List::resizeEvent(QResizeEvent* event) {
    QDockWidget::resizeEvent(event);
    const bool of_window = std::exchange(window_size_, host_.window->size()) != host_.window->size();
    const bool by_hand = (QApplication::mouseButtons() & Qt::LeftButton) != 0 && !of_window;
    if (by_hand && event->size().width() != event->oldSize().width())
        Post_Message({Message_Kind::list_width, {.win = host_.number, .value1 = width()}});
}

}  // namespace vntl
