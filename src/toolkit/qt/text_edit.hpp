// The text of an editor window, and the file that it came from.
#pragma once

#include <QPlainTextEdit>
#include <string>

#include "base/status.hpp"

namespace vntl {

class Text_Edit : public QPlainTextEdit {
public:
    explicit Text_Edit(int window);

    Status Load(const std::string& file);
    Status Save(const std::string& file);
    const std::string& file() const { return file_; }
    bool Find(const QString& text, bool match_case);

protected:
    void keyPressEvent(QKeyEvent*) override;

private:
    int window_;
    std::string file_;
    bool latin1_ = false;  // the bytes of the file were no UTF-8
    bool marked_ = false;  // a byte-order mark stood in front
    int usual_end_ = 0;    // kind of line end that most of its lines had
};

}  // namespace vntl
