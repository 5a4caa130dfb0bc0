#include "commands/progress_dialog.hpp"

#include <chrono>

#include "base/text.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

namespace {

constexpr int progress_dialog = 402;
constexpr int field_title = 1001, field_name = 1002, field_bar = 1003;
constexpr std::size_t widest_name = 48;

using Clock = std::chrono::steady_clock;
constexpr auto patience = std::chrono::milliseconds(400), between_looks = std::chrono::milliseconds(40);

class Progress_Dialog : public Progress {
public:
    Progress_Dialog(std::string_view title, int total, std::string_view button) : title_(title), button_(button), total_(total) {}
    ~Progress_Dialog() override {
        if (!shown_) return;
        WDialogSelect(progress_dialog);
        WDialogUnload();
    }

    bool Go_On(int done, std::string_view what) override {
        done_ = done;
        what_ = what;
        Show_And_Look();
        return !cancelled_;
    }
    bool Cancelled() const override { return cancelled_; }

    void Wait(const std::function<bool(std::chrono::milliseconds)>& ready_within) override {
        while (!ready_within(between_looks)) Show_And_Look();
    }

private:
    void Show_And_Look() {
        if (Clock::now() - last_look_ < (shown_ ? between_looks : patience)) return;
        if (!shown_) Show();
        WDialogSelect(progress_dialog);
        WDialogPutProgressBar(field_bar, done_);
        WDialogPutString(field_name, Elide_Middle(what_, widest_name));
        Look();
        last_look_ = Clock::now();
    }

    void Show() {
        shown_ = true;
        WDialogLoad(progress_dialog);
        WDialogPutString(field_title, title_);
        WDialogPutString(button_cancel, button_);
        WDialogRangeProgressBar(field_bar, 0, total_);
        WDialogShow(button_cancel, Show_Kind::modal);
    }

    // Takes what waits, without waiting.
    void Look() {
        while (const auto message = WMessagePeek()) {
            const bool pressed = message->kind == Message_Kind::push_button && message->record.win == progress_dialog;
            const bool escape = message->kind == Message_Kind::key_down && message->record.value1 == key_escape;
            if (pressed || escape)
                cancelled_ = true;
            else
                Serve_Meanwhile(*message);
        }
    }

    std::string title_, button_, what_;
    int total_, done_ = 0;
    bool shown_ = false, cancelled_ = false;
    Clock::time_point last_look_ = Clock::now();
};

}  // namespace

Dialog_Resource Progress_Dialog_Resource() {
    return {progress_dialog,
            "Vantrelo",
            {{{field_title, Field_Kind::label, "", 0, "", true}},
             {{field_name, Field_Kind::label}},
             {{field_bar, Field_Kind::progress_bar}},
             {{button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

std::unique_ptr<Progress> Start_Progress_Dialog(std::string_view title, int total, std::string_view button) {
    return std::make_unique<Progress_Dialog>(title, total, button);
}

}  // namespace vntl
