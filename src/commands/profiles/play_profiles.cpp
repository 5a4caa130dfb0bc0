#include "commands/profiles/play_profiles.hpp"

#include <algorithm>

#include "base/conversions.hpp"
#include "commands/modal.hpp"
#include "plot/plot.hpp"
#include "toolkit/window.hpp"

namespace vntl {

namespace {

constexpr int play_dialog = 418, film_timer = 1;
enum Field { file_name = 1841, title, temperature, progress, speed, slow_end, fast_end, repeat, reverse, keep };
enum Button { start = 2002, pause, back, step = 2006 };

constexpr int slowest = 2, fastest = 100, speed_at_first = 10;  // tenths of a file per second
int Interval() { return 10000 / std::clamp(WDialogGetTrackbar(speed), slowest, fastest); }

constexpr float unknown_temperature = 0.0001f, celsius_offset = 273.16f;  // kelvin
std::string Temperature_Text(float kelvin) {
    constexpr std::string_view format = "(f8.2)";
    return IRealToString(kelvin, format) + " K   " + IRealToString(kelvin - celsius_offset, format) + " C";
}

// Rows are shown alike, one at a time; however the film ends, rows shown and styles are then as they were before it.
class Film {
public:
    explicit Film(Session& session)
        : session_(session), shown_before_(session.store.profile_shown), styles_before_(session.prefs.profile_styles) {
        session_.prefs.profile_styles.fill(styles_before_.front());
    }
    ~Film() {
        Set_Timer(0);
        session_.store.profile_shown = shown_before_;
        session_.prefs.profile_styles = styles_before_;
    }
    Film(const Film&) = delete;
    Film& operator=(const Film&) = delete;

    void Run(int interval);  // milliseconds, 0: it stands still
    void Follow_Speed();
    void Back_To_Start();
    void Step(bool by_timer);

private:
    static void Set_Timer(int interval) {
        WindowSelect(main_window);
        WMessageTimer(interval, film_timer, true);
    }
    void Show(int row);
    auto& Shown() { return session_.store.profile_shown; }

    Session& session_;
    const decltype(Profile_Store::profile_shown) shown_before_;
    const decltype(Preferences::profile_styles) styles_before_;
    int row_ = 1;       // on the screen
    int interval_ = 0;  // of the timer that runs
};

void Film::Run(int interval) {
    interval_ = interval;
    Set_Timer(interval);
    for (const int button : {start, step}) WDialogFieldState(button, interval == 0 ? field_enabled : field_disabled);
}

void Film::Follow_Speed() {
    if (interval_ != 0 && interval_ != Interval()) Run(Interval());
}

void Film::Show(int row) {
    const Diffraction_Pattern_Type& pattern = session_.store.Pattern(row);
    row_ = row;
    Shown().set(static_cast<std::size_t>(row - 1));
    WDialogPutProgressBar(progress, row);
    WDialogPutString(progress, std::to_string(row) + " of " + std::to_string(session_.store.nperfiles()));
    WDialogPutString(file_name, session_.store.Info(row).file_name);
    WDialogPutString(title, pattern.title);
    if (pattern.TSample > unknown_temperature) WDialogPutString(temperature, Temperature_Text(pattern.TSample));
    Plot_Redraw(session_);
}

void Film::Back_To_Start() {
    Run(0);
    if (WDialogGetCheckBox(keep) == 0) Shown().reset();
    Show(1);
}

// Beyond its end the film begins anew, with all curves gone, or stands still.
void Film::Step(bool by_timer) {
    const int rows = session_.store.nperfiles();
    const bool backward = WDialogGetCheckBox(reverse) != 0;
    const int next = backward ? row_ - 1 : row_ + 1;
    const bool beyond = next < 1 || next > rows;
    if (beyond && WDialogGetCheckBox(repeat) == 0) {
        if (by_timer) Run(0);
        return;
    }
    if (beyond || WDialogGetCheckBox(keep) == 0) Shown().reset();
    Show(!beyond ? next : backward ? rows : 1);
}

void Fill(const Session& session) {
    for (const int field : {file_name, title, temperature}) WDialogFieldState(field, field_read_only);
    WDialogRangeProgressBar(progress, 1, session.store.nperfiles());
    WDialogPutTrackbar(speed, speed_at_first);
    WDialogPutCheckBox(repeat, 1);
}

// False for the button that leaves, and for Escape.
bool Serve_Button(Film& film, int button) {
    switch (button) {
        case start:
            film.Run(Interval());
            return true;
        case pause:
            film.Run(0);
            return true;
        case back:
            film.Back_To_Start();
            return true;
        case step:
            film.Step(false);
            return true;
        default:
            return false;
    }
}

Dialog_Field Picture_Button(int number, std::string_view label, std::string_view image) {
    return {.number = number, .kind = Field_Kind::push_button, .label = std::string(label), .image = std::string(image)};
}

Dialog_Field Told(int number, std::string_view label) {
    constexpr int characters = 48;
    return {.number = number, .kind = Field_Kind::string, .label = std::string(label), .width = characters};
}

}  // namespace

Dialog_Resource Playing_Dialog_Resource() {
    const Dialog_Field slider = {
        .number = speed, .kind = Field_Kind::trackbar, .label = "Speed", .width = 58, .lo = slowest, .hi = fastest, .unseen_label = true};
    const std::vector<Dialog_Field> speeds = {
        {slow_end, Field_Kind::label, "0.2 files/s"}, slider, {fast_end, Field_Kind::label, "10 files/s"}};
    return {play_dialog,
            "Playing control",
            {{Told(file_name, "Profile :")},
             {Told(title, "Title :")},
             {Told(temperature, "Temperature :")},
             {{.number = progress, .kind = Field_Kind::progress_bar, .label = "Row", .unseen_label = true}},
             {{.kind = Field_Kind::frame, .label = "Speed", .pages = {{{}, {speeds}}}}},
             {{repeat, Field_Kind::check_box, "Auto &repeat"},
              {reverse, Field_Kind::check_box, "Re&verse"},
              {keep, Field_Kind::check_box, "&Keep"}},
             {Picture_Button(back, "&Back", "film/back"), Picture_Button(start, "&Start", "film/start"),
              Picture_Button(pause, "&Pause", "film/pause"), Picture_Button(step, "S&tep", "film/step"),
              Picture_Button(button_cancel, "&Close", "toolbar/close")}}};
}

void Playing_Dialog(Session& session) {
    WDialogLoad(play_dialog);
    Fill(session);
    {
        Film film(session);
        WDialogShow(start, Show_Kind::semi_modeless);
        film.Back_To_Start();
        const auto changed = [&film](int) { film.Follow_Speed(); };
        const auto timer = [&film](int number) {
            if (number == film_timer) film.Step(true);
        };
        while (Serve_Button(film, Run_Modal(play_dialog, {.changed = changed, .timer = timer}))) continue;
    }
    WDialogUnload();
}

}  // namespace vntl
