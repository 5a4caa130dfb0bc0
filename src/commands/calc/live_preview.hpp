// Curves over the picture that follow the fields of a dialog, and go with it. The rows are not touched.
#pragma once

#include <utility>
#include <vector>

#include "plot/plot.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

class Live_Preview {
public:
    Live_Preview(Session& session, int dialog) : session_(session), dialog_(dialog) {}
    ~Live_Preview() {
        session_.plot.preview.clear();
        Plot_Repaint(session_);
    }
    Live_Preview(const Live_Preview&) = delete;
    Live_Preview& operator=(const Live_Preview&) = delete;

    // In the place of those before. The dialog is the selected one behind it.
    void Show(std::vector<Preview_Curve> curves) {
        session_.plot.preview = std::move(curves);
        Plot_Repaint(session_);
        WDialogSelect(dialog_);
    }

private:
    Session& session_;
    int dialog_;
};

}  // namespace vntl
