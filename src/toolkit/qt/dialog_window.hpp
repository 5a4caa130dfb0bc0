// A dialog on the screen, laid out from its resource.
#pragma once

#include <QDialog>
#include <map>
#include <memory>
#include <vector>

#include "toolkit/qt/dialog_fields.hpp"

class QButtonGroup;

namespace vntl {

class Dialog_Window : public QDialog {
public:
    Dialog_Window(const Dialog_Resource& resource, QWidget* parent);
    ~Dialog_Window() override;

    int number() const { return number_; }
    Dialog_Widget* Field(int number) const;
    const std::vector<std::unique_ptr<Dialog_Widget>>& fields() const { return fields_; }
    QButtonGroup* Group(int number);

    void reject() override;  // Escape and the close box press the cancelling button

private:
    int number_;
    std::vector<std::unique_ptr<Dialog_Widget>> fields_;
    std::map<int, QButtonGroup*> groups_;
};

}  // namespace vntl
