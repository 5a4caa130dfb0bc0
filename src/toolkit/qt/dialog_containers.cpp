// Tabs and trees.
#include <QTabWidget>
#include <QTreeWidget>
#include <algorithm>
#include <vector>

#include "base/text.hpp"
#include "toolkit/qt/dialog_fields.hpp"

namespace vntl {

namespace {

class Tab_Field : public Tab_Widget {
public:
    explicit Tab_Field(const Dialog_Field& field) : Tab_Widget(field), tabs_(new QTabWidget) {
        QObject::connect(tabs_, &QTabWidget::currentChanged, tabs_, [this] {
            if (!putting_) changed();
        });
    }
    QWidget* widget() override { return tabs_; }
    std::string Value() const override { return std::to_string(tabs_->currentIndex() + 1); }
    std::optional<double> Number() const override { return tabs_->currentIndex() + 1; }
    void Put_Number(double value, std::string_view) override {
        putting_ = true;
        tabs_->setCurrentIndex(static_cast<int>(value) - 1);
        putting_ = false;
    }
    void Add_Page(QWidget* page, const std::string& title) override { tabs_->addTab(page, Q(title)); }
    void Page_State(int page, int state) override {
        if (page >= 1 && page <= tabs_->count()) tabs_->setTabEnabled(page - 1, state != field_disabled);
    }
    void Clear() override {}
    Status Set(const std::string& value) override {
        int page = 0;
        for (int i = 0; i < tabs_->count(); ++i)
            if (Bare_Label(tabs_->tabText(i).toStdString()) == Bare_Label(value)) page = i + 1;
        if (page == 0 && !Parse_Integer(value, page)) page = 0;
        if (page < 1 || page > tabs_->count()) return Status::Fail("there is no page " + value);
        if (!tabs_->isTabEnabled(page - 1)) return Status::Fail("the page " + value + " is disabled");
        tabs_->setCurrentIndex(page - 1);
        return Status::Done();
    }

private:
    QTabWidget* tabs_;
    bool putting_ = false;  // the program turns the page, not the user
};

// The chosen item is the highlighted one: the item that the focus enters at is not chosen by that.
class Tree : public QTreeWidget {
public:
    QTreeWidgetItem* Chosen() const { return currentItem() != nullptr && currentItem()->isSelected() ? currentItem() : nullptr; }
};

class Tree_Field : public Tree_Widget {
public:
    explicit Tree_Field(const Dialog_Field& field) : Tree_Widget(field), tree_(new Tree) {
        tree_->setHeaderHidden(true);
        tree_->setMinimumSize(tree_->fontMetrics().averageCharWidth() * 30, tree_->fontMetrics().height() * 8);
        QObject::connect(tree_, &QTreeWidget::itemSelectionChanged, tree_, [this] {
            if (!putting_) changed();
        });
    }
    QWidget* widget() override { return tree_; }
    std::string Value() const override { return Path(); }
    std::optional<double> Number() const override {
        const auto found = std::find(items_.begin(), items_.end(), tree_->Chosen());
        return found == items_.end() ? 0 : static_cast<double>(found - items_.begin() + 1);
    }
    void Put_Number(double value, std::string_view) override {
        const auto item = static_cast<std::size_t>(value);
        putting_ = true;
        tree_->setCurrentItem(item >= 1 && item <= items_.size() ? items_[item - 1] : nullptr);
        putting_ = false;
    }
    int Insert(int parent, std::string_view text) override {
        const QStringList label(Q(text));
        const auto over = static_cast<std::size_t>(parent);
        auto* item = over >= 1 && over <= items_.size() ? new QTreeWidgetItem(items_[over - 1], label) : new QTreeWidgetItem(tree_, label);
        items_.push_back(item);
        if (item->parent() != nullptr) item->parent()->setExpanded(true);
        return static_cast<int>(items_.size());
    }
    std::string Path() const override { return tree_->Chosen() == nullptr ? std::string() : Path_Of(tree_->Chosen()); }
    Status Select(const std::string& path) override {
        for (QTreeWidgetItem* item : items_) {
            if (Path_Of(item) != path) continue;
            tree_->setCurrentItem(item);
            return Status::Done();
        }
        return Status::Fail("the tree has no item " + path);
    }
    void Clear() override {
        putting_ = true;
        items_.clear();
        tree_->clear();
        putting_ = false;
    }

private:
    static std::string Path_Of(const QTreeWidgetItem* item) {
        const std::string own = item->text(0).toStdString();
        return item->parent() == nullptr ? own : Path_Of(item->parent()) + '/' + own;
    }

    Tree* tree_;
    std::vector<QTreeWidgetItem*> items_;
    bool putting_ = false;  // the program chooses, not the user
};

}  // namespace

std::unique_ptr<Dialog_Widget> Build_Container(const Dialog_Field& field) {
    if (field.kind == Field_Kind::tab) return std::make_unique<Tab_Field>(field);
    return std::make_unique<Tree_Field>(field);
}

}  // namespace vntl
