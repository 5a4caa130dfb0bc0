// The column at the left of a window that a panel stands in.
#pragma once

#include <QScrollArea>

namespace vntl {

// As wide as the panel needs, whatever the font, with room for the bar that scrolls it.
class Panel_Column : public QScrollArea {
public:
    explicit Panel_Column(QWidget* panel);

    void Let_Go();  // of the panel, which belongs to somebody else

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Fit();
};

}  // namespace vntl
