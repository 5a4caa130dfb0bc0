// Message boxes and the common dialogs of the desktop.
#include <QAbstractButton>
#include <QClipboard>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <array>

#include "toolkit/qt/application.hpp"
#include "toolkit/qt/bitmap_qt.hpp"
#include "toolkit/qt/dialog_fields.hpp"

namespace vntl {

namespace {

struct Button_Row {
    QMessageBox::StandardButton button;
    Box_Answer answer;
};

// Buttons of each set in their order; the last one is what closing the box means.
std::span<const Button_Row> Buttons_Of(Box_Buttons buttons) {
    static constexpr std::array<Button_Row, 1> ok = {{{QMessageBox::Ok, Box_Answer::ok}}};
    static constexpr std::array<Button_Row, 2> ok_cancel = {{{QMessageBox::Ok, Box_Answer::ok}, {QMessageBox::Cancel, Box_Answer::cancel}}};
    static constexpr std::array<Button_Row, 2> retry = {
        {{QMessageBox::Retry, Box_Answer::retry}, {QMessageBox::Cancel, Box_Answer::cancel}}};
    static constexpr std::array<Button_Row, 2> yes_no = {{{QMessageBox::Yes, Box_Answer::yes}, {QMessageBox::No, Box_Answer::no}}};
    static constexpr std::array<Button_Row, 3> yes_no_cancel = {
        {{QMessageBox::Yes, Box_Answer::yes}, {QMessageBox::No, Box_Answer::no}, {QMessageBox::Cancel, Box_Answer::cancel}}};
    static constexpr std::array<Button_Row, 3> abort = {
        {{QMessageBox::Abort, Box_Answer::abort}, {QMessageBox::Retry, Box_Answer::retry}, {QMessageBox::Ignore, Box_Answer::ignore}}};
    switch (buttons) {
        case Box_Buttons::ok:
            return ok;
        case Box_Buttons::ok_cancel:
            return ok_cancel;
        case Box_Buttons::retry_cancel:
            return retry;
        case Box_Buttons::yes_no:
            return yes_no;
        case Box_Buttons::yes_no_cancel:
            return yes_no_cancel;
        case Box_Buttons::abort_retry_ignore:
            return abort;
    }
    return ok;
}

constexpr std::array<QMessageBox::Icon, 5> icons = {QMessageBox::NoIcon, QMessageBox::Critical, QMessageBox::Question, QMessageBox::Warning,
                                                    QMessageBox::Information};

// "Data (*.dat)|*.dat;*.xy|" as the desktop's dialog wants it. "*.*" means every file, and not those alone that have a point.
QStringList Name_Filters(std::string_view filter) {
    const QStringList parts = QString::fromUtf8(filter.data(), static_cast<qsizetype>(filter.size())).split('|');
    QStringList names;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns;
        for (const QString& pattern : parts[i + 1].split(';', Qt::SkipEmptyParts))
            patterns << (pattern == "*.*" ? QString("*") : pattern) << pattern.toUpper();
        patterns.removeDuplicates();
        names << parts[i].section('(', 0, 0).trimmed() + " (" + patterns.join(' ') + ')';
    }
    names << "All files (*)";
    return names;
}

std::vector<std::string> Chosen_Files(std::string_view filter, Select_Kind kind, const std::string& name, std::string_view title,
                                      const std::string& directory) {
    QFileDialog dialog(The_Toolkit().Owner(), Q(title), directory.empty() ? QDir::currentPath() : Q(directory));
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(Name_Filters(filter));
    const bool save = kind == Select_Kind::save || kind == Select_Kind::save_unasked;
    dialog.setOption(QFileDialog::DontConfirmOverwrite, kind == Select_Kind::save_unasked);
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : kind == Select_Kind::open ? QFileDialog::ExistingFile : QFileDialog::ExistingFiles);
    if (!name.empty()) dialog.selectFile(Q(name));
    std::vector<std::string> files;
    if (dialog.exec() == QDialog::Accepted)
        for (const QString& file : dialog.selectedFiles()) files.push_back(file.toStdString());
    return files;
}

// The text stands in the box; of one with more lines than a screen bears only the first line does, and those behind it can be scrolled.
// Called when the icon is there, which decides on the layout.
void Put_Text(QMessageBox& window, const QString& text) {
    constexpr qsizetype most_lines = 24;
    constexpr int lines_seen = 14, columns_seen = 90;
    auto* const grid = qobject_cast<QGridLayout*>(window.layout());
    auto* const buttons = window.findChild<QDialogButtonBox*>();
    if (text.count('\n') < most_lines || grid == nullptr || buttons == nullptr) return window.setText(text);
    const qsizetype end = text.indexOf('\n');
    window.setText(text.left(end));
    auto* const rest = new QPlainTextEdit(text.mid(end + 1).trimmed(), &window);
    rest->setReadOnly(true);
    rest->setTabChangesFocus(true);
    rest->setMinimumSize(columns_seen * rest->fontMetrics().averageCharWidth(), lines_seen * rest->fontMetrics().lineSpacing());
    const int row = grid->rowCount(), columns = grid->columnCount();
    grid->removeWidget(buttons);
    grid->addWidget(rest, row, 0, 1, columns);
    grid->addWidget(buttons, row + 1, 0, 1, columns);
}

}  // namespace

bool Box_Offers(Box_Buttons buttons, Box_Answer answer) {
    for (const Button_Row& row : Buttons_Of(buttons))
        if (row.answer == answer) return true;
    return false;
}

Box_Answer Box_Default(const Message_Box& box) {
    const auto rows = Buttons_Of(box.buttons);
    const int last = static_cast<int>(rows.size());
    return rows[static_cast<std::size_t>(std::clamp(box.default_button, 1, last) - 1)].answer;
}

Box_Answer WMessageBox(const Message_Box& box) {
    Toolkit& toolkit = The_Toolkit();
    const auto rows = Buttons_Of(box.buttons);
    QMessageBox window(toolkit.Owner());
    window.setTextFormat(Qt::PlainText);
    window.setWindowTitle(QString::fromStdString(box.title));
    window.setIcon(icons[static_cast<std::size_t>(box.icon)]);
    Put_Text(window, QString::fromStdString(box.text));
    for (const Button_Row& row : rows) {
        QPushButton* button = window.addButton(row.button);
        if (row.answer == Box_Default(box)) window.setDefaultButton(button);
    }
    window.setEscapeButton(rows.back().button);
    if (toolkit.stand_in != nullptr) {
        const Box_Answer answer = toolkit.stand_in->Answer_Box(box);
        for (const Button_Row& row : rows)
            if (row.answer == answer) QTimer::singleShot(0, window.button(row.button), &QAbstractButton::click);
    }
    window.exec();
    const auto pressed = window.standardButton(window.clickedButton());
    Box_Answer answer = rows.back().answer;
    for (const Button_Row& row : rows)
        if (row.button == pressed) answer = row.answer;
    if (toolkit.witness != nullptr) toolkit.witness->Saw_Answer(box, answer);
    return answer;
}

std::vector<std::string> WSelectFile(std::string_view filter, Select_Kind kind, const std::string& name, std::string_view title,
                                     const std::string& directory) {
    Toolkit& toolkit = The_Toolkit();
    const auto files =
        toolkit.stand_in != nullptr ? toolkit.stand_in->Answer_Select(kind) : Chosen_Files(filter, kind, name, title, directory);
    if (toolkit.witness != nullptr) toolkit.witness->Saw_Files(files);
    return files;
}

std::optional<std::string> WSelectDir(const std::string& directory, std::string_view title) {
    Toolkit& toolkit = The_Toolkit();
    std::optional<std::string> chosen;
    if (toolkit.stand_in != nullptr)
        chosen = toolkit.stand_in->Answer_Directory();
    else if (const QString name = QFileDialog::getExistingDirectory(toolkit.Owner(), Q(title), Q(directory)); !name.isEmpty())
        chosen = name.toStdString();
    if (toolkit.witness != nullptr) toolkit.witness->Saw_Directory(chosen);
    return chosen;
}

std::optional<Colour> WSelectColour(Colour present) {
    Toolkit& toolkit = The_Toolkit();
    std::optional<Colour> chosen;
    if (toolkit.stand_in != nullptr)
        chosen = toolkit.stand_in->Answer_Colour();
    else if (const QColor colour = QColorDialog::getColor(Q_Colour(present), toolkit.Owner()); colour.isValid())
        chosen = WRGB(colour.red(), colour.green(), colour.blue());
    if (toolkit.witness != nullptr) toolkit.witness->Saw_Colour(chosen);
    return chosen;
}

void WClipboardPutBitmap(const Bitmap& bitmap) { QApplication::clipboard()->setImage(bitmap.implementation().image); }
void WClipboardPutText(const std::string& text) { QApplication::clipboard()->setText(QString::fromStdString(text)); }
std::string WClipboardText() { return QApplication::clipboard()->text().toStdString(); }

}  // namespace vntl
