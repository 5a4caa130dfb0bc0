// The text of an editor window, and the file that it came from.
#pragma once

#include <QPlainTextEdit>
#include <string>

#include "base/source_text.hpp"
#include "base/status.hpp"

namespace vntl {

class Text_Edit : public QPlainTextEdit {
public:
    explicit Text_Edit(int window);

    Status Load(const std::string& file);
    Status Save(const std::string& file);
    bool Changed_On_Disk(const std::string& file) const;
    const std::string& file() const { return file_; }
    bool Find(const QString& text, bool match_case);

protected:
    void keyPressEvent(QKeyEvent*) override;

private:
    int window_;
    std::string file_;
    Source_Text source_;  // what was read or written last
};

}  // namespace vntl
