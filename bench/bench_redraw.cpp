// A redraw as a user waits for it: many rows of many points, counts with the noise of counting, through the whole 2D graph and onto the
// window, timed as `print timing` does it.
//
// Two figures stand beside it, measured in the same run: "painter", its ratio to the bare polylines of the same data by the windowing
// system's painter, without antialiasing, markers, axes or texts; and "memory", its ratio to reading the arrays once.
#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <numeric>

#include "base/page.hpp"
#include "bench/synthetic_rows.hpp"
#include "bench/timing.hpp"
#include "commands/ask_user.hpp"
#include "commands/plot/mouse.hpp"
#include "plot/plot.hpp"
#include "session/desk/waterfall.hpp"
#include "session/grid_view.hpp"
#include "session/ranges.hpp"
#include "session/xspace.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"

namespace {

using namespace vntl;

constexpr int window_width = 1200, window_height = 800;

double Best_Of_Three(const std::function<void()>& work) { return std::min({Milliseconds(work), Milliseconds(work), Milliseconds(work)}); }

double Read_Arrays(const Session& session) {
    return Best_Of_Three([&] {
        float sum = 0;
        for (int row = 1; row <= session.store.nperfiles(); ++row) {
            const Diffraction_Pattern_Type& p = session.store.Pattern(row);
            sum = std::accumulate(p.x.begin(), p.x.end(), sum);
            sum = std::accumulate(p.y.begin(), p.y.end(), sum);
        }
        benchmark::DoNotOptimize(sum);
    });
}

double Paint_Polylines(const Session& session) {
    const Plot_State& plot = session.plot;
    const double sx = 0.7 * window_width / (plot.x_view_max - plot.x_view_min),
                 sy = 0.7 * window_height / (plot.y_view_max - plot.y_view_min);
    QImage image(window_width, window_height, QImage::Format_RGB32);
    return Best_Of_Three([&] {
        QPainter painter(&image);
        for (int row = 1; row <= session.store.nperfiles(); ++row) {
            const Diffraction_Pattern_Type& p = session.store.Pattern(row);
            QPolygonF line;
            line.reserve(p.npts);
            for (std::size_t i = 0; i < p.x.size(); ++i)
                line << QPointF((p.x[i] - plot.x_view_min) * sx + 120, (plot.y_view_max - p.y[i]) * sy + 75);
            painter.drawPolyline(line);
        }
    });
}

void Redraw(benchmark::State& state) {
    Session session;
    Fill_Store(session, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)), static_cast<int>(state.range(2)));
    const double painter = Paint_Polylines(session), memory = Read_Arrays(session);
    WindowSelect(main_window);
    WindowResize(window_width, window_height);
    double best = 1e30;
    for (auto _ : state) {
        Plot_Redraw(session);
        best = std::min(best, session.plot.draw_ms);
    }
    state.counters["best_ms"] = best;
    state.counters["painter"] = best / painter;
    state.counters["memory"] = best / memory;
}
BENCHMARK(Redraw)->Args({100, 20000, 40})->Args({2000, 5000, 20})->Iterations(20)->Unit(benchmark::kMillisecond);

double Best_Redraw(Session& session) {
    double best = 1e30;
    for (int i = 0; i < 10; ++i) {
        Plot_Redraw(session);
        best = std::min(best, session.plot.draw_ms);
    }
    return best;
}

// The rows set apart by an offset, in thousandths of the height of one, in the view of all of them. "redraw" is the ratio to the redraw of
// the same rows without; "lines" in thin lines without markers, 1.2 at most.
void Waterfall_Redraw(benchmark::State& state) {
    Session session;
    Fill_Store(session, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)), 20);
    if (state.range(4) != 0) session.look.least_marker_gap = 4;
    WindowSelect(main_window);
    WindowResize(1400, 900);
    const double redraw = Best_Redraw(session);
    Set_Waterfall(session.store, session.plot, {static_cast<float>(state.range(2)) / 1000, false, state.range(3) != 0});
    double best = 1e30;
    for (auto _ : state) best = std::min(best, Best_Redraw(session));
    state.counters["best_ms"] = best;
    state.counters["redraw"] = best / redraw;
}
BENCHMARK(Waterfall_Redraw)
    ->ArgNames({"rows", "points", "offset", "hidden", "lines"})
    ->ArgsProduct({{2000}, {5000}, {10, 100, 1000}, {0, 1}, {0, 1}})
    ->Args({100, 5000, 100, 1, 0})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

// A slider that is dragged: an offset after another, with the view that grows with it. "redraw" is the ratio of a step to a redraw without
// offsets, 2 at most.
void Waterfall_Drag(benchmark::State& state) {
    Session session;
    Fill_Store(session, 100, 5000, 20);
    WindowSelect(main_window);
    WindowResize(1400, 900);
    const double redraw = Best_Redraw(session);
    int place = 0;
    double all = 0;
    for (auto _ : state) {
        place = place % 100 + 1;
        all += Milliseconds([&] {
            Set_Waterfall(session.store, session.plot, {static_cast<float>(place) / 100, false, state.range(0) != 0});
            Plot_Redraw(session);
        });
    }
    const double step = all / static_cast<double>(state.iterations());
    state.counters["step_ms"] = step;
    state.counters["redraw"] = step / redraw;
}
BENCHMARK(Waterfall_Drag)->ArgName("hidden")->Arg(0)->Arg(1)->Iterations(100)->Unit(benchmark::kMillisecond);

// A step of a series of patterns that turns in space, as lines (look 0) or as a surface of that type, in the window of the 2D redraw of the
// same rows. "redraw" is the ratio of the two, 2 at most if a series is to turn as a user drags it.
void Rotation_Step(benchmark::State& state) {
    Session session;
    Fill_Store(session, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)), 20);
    Set_Xspace(session, "2theta");
    WindowSelect(main_window);
    WindowResize(window_width, window_height);
    const double redraw = Best_Redraw(session);
    Plot_State& plot = session.plot;
    if (state.range(2) == 0) {
        Set_Menu_3D(session);
    } else {
        session.prefs.surface.surface_type = static_cast<int>(state.range(2));
        if (Show_Surface_Grid(session, plot.x_view_min, plot.x_view_max).failed) state.SkipWithError("no grid");
        Set_Menu_3D_Surface(session);
    }
    plot.view_elevation = 22;
    double all = 0;
    for (auto _ : state) {
        plot.view_rotation = plot.view_rotation > 143 ? plot.view_rotation - 323 : plot.view_rotation + 37;
        double best = 1e30;
        for (int i = 0; i < 3; ++i) Plot_Redraw(session), best = std::min(best, plot.draw_ms);
        all += best;
    }
    const double step = all / static_cast<double>(state.iterations());
    state.counters["step_ms"] = step;
    state.counters["redraw"] = step / redraw;
}
BENCHMARK(Rotation_Step)
    ->ArgNames({"rows", "points", "look"})
    ->ArgsProduct({{100}, {2000}, {0, 1, 2, 3, 4}})
    ->ArgsProduct({{2000}, {5000}, {0, 1}})
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

// A frame of the film: one row after another, each alone. "redraw" as above.
void Film_Frame(benchmark::State& state) {
    Session session;
    Fill_Store(session, 100, 2000, 20);
    WindowSelect(main_window);
    WindowResize(window_width, window_height);
    const double redraw = Best_Redraw(session);
    double all = 0;
    std::size_t row = 0;
    for (auto _ : state) {
        session.store.profile_shown.reset();
        session.store.profile_shown.set(row);
        row = (row + 1) % 100;
        Plot_Redraw(session);
        all += session.plot.draw_ms;
    }
    const double frame = all / static_cast<double>(state.iterations());
    state.counters["frame_ms"] = frame;
    state.counters["redraw"] = frame / redraw;
}
BENCHMARK(Film_Frame)->Iterations(100)->Unit(benchmark::kMillisecond);

// One move of the mouse over all rows, somewhere else each time, so that the nearest row has to be found in arrays long out of the cache.
// With live reflections it goes along the ticks of 100,000, so that each move finds others; with the list of patterns open the curve under
// the pointer is searched too, and marked on the picture.
void Mouse_Move(benchmark::State& state) {
    constexpr int reflections = 100'000;
    const bool live = state.range(0) == 1;
    Session session;
    session.desk.list_open = state.range(0) == 2;
    Fill_Store(session, 2000, 5000, 20);
    if (live) {
        PRF_Info_Add_Type& info = session.store.Info(1);
        info.kind = Row_Kind::prf;
        info.nphases = 1;
        info.nreflections = reflections;
        for (int i = 0; i < reflections; ++i) info.refl_position.push_back(5.0f + 150.0f * static_cast<float>(i) / reflections);
        info.refl_code.assign(reflections, 1);
        info.refl_phase.assign(reflections, 1);
        info.refl_label.assign(reflections, "(  1  0  0) ph: 1");
        session.prefs.prf.refl_live = true;
        Plot_Ranges(session);
    }
    session.plot.plot_type = Plot_Form::multi;
    Bitmap bitmap(window_width, window_height);
    const Drawn drawn = Draw_Picture(Scene_Of(session), bitmap.Drawing());
    session.plot.drawn = drawn.window;
    session.plot.units = drawn.units;
    const Plot_State& plot = session.plot;
    const double ticks = plot.Page_At({0, plot.diff_base + 0.5 * plot.diff_band}).y;
    Message move{Message_Kind::mouse_move, {}};
    move.record.y = live ? ticks : 0.4 * page_height;
    unsigned place = 0;
    Ask_User ask(session.config);
    for (auto _ : state) {
        place = (place + 97) % 600;
        move.record.x = (0.2 + 0.001 * place) * page_width;
        MouseMovement_Main(session, ask, move);
    }
    if (session.interface.status[1].rfind("Pointed Pattern", 0) != 0) state.SkipWithError("no row found");
    if (live && session.plot.hits.entries.empty()) state.SkipWithError("no reflection found");
    if (session.desk.list_open && session.plot.pointed_row == 0) state.SkipWithError("no curve found");
}
BENCHMARK(Mouse_Move)->ArgName("live_or_list")->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    vntl::WInitialise(argc, argv, true);
    vntl::WindowOpen(window_width, window_height, "Redraw", "vantrelo");
    vntl::WindowShow();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    vntl::WTerminate();
}
