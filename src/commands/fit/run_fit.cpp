#include "commands/fit/run_fit.hpp"

#include <chrono>
#include <cmath>
#include <mutex>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "commands/application.hpp"
#include "commands/fit/fit_dialogs.hpp"
#include "commands/fit/fit_files.hpp"
#include "commands/progress_dialog.hpp"
#include "fit/listing.hpp"
#include "fit/state_vector.hpp"
#include "plot/plot.hpp"
#include "session/changes.hpp"
#include "toolkit/window.hpp"

namespace vntl {

namespace {

using Clock = std::chrono::steady_clock;
constexpr auto between_curves = std::chrono::milliseconds(150);
constexpr std::string_view no_number =
    "NaN has been detected, the initial parameters are surely wrong! Re-start with less peaks or new parameters ....";
constexpr std::string_view no_memory = "There is not enough memory for the fit";
constexpr float before_first = 1e8f;  // chi-square that the first run is compared with

// What the thread of the fit has found last, for the thread of the window.
class Latest_Iteration {
public:
    void Put(Fit_Iteration iteration) {
        const std::lock_guard lock(mutex_);
        latest_ = std::move(iteration);
    }
    std::optional<Fit_Iteration> Take() {
        const std::lock_guard lock(mutex_);
        return std::exchange(latest_, {});
    }

private:
    std::mutex mutex_;
    std::optional<Fit_Iteration> latest_;
};

struct Run {
    Fit_Problem problem;  // with what was found
    Fit_Result result;
    bool stopped = false;  // by the user
};

// Shows how far a fit is: the status bar tells every iteration, the curve follows.
class Fit_Watch {
public:
    Fit_Watch(Session& session, const Fit_Problem& problem) : session_(session), problem_(problem) {}

    void Show(const Fit_Iteration& iteration) {
        const std::string text = " => Iteration number: " + std::to_string(iteration.number) +
                                 "  Chi2=" + std::string(Trim(IRealToString(iteration.chi2, "(f15.5)")));
        session_.interface.Passing_Text(text);
        WindowSelect(main_window);
        WindowOutStatusBar(1, text);
        if (Clock::now() - last_curve_ < between_curves) return;
        Show_Fitted_Curve(session_, problem_, iteration.yc);
        Plot_Redraw(session_);
        last_curve_ = Clock::now();
    }

private:
    Session& session_;
    const Fit_Problem& problem_;
    Clock::time_point last_curve_ = Clock::now();
};

// One run of the solver in a thread of its own; nothing where memory ran out.
std::optional<Run> Run_Once(Session& session, const Fit_Problem& problem) {
    Latest_Iteration latest;
    Long_Work<Run> work([problem = Fit_Problem(problem), &latest](Work_Control& control) mutable {
        Run run;
        run.result = Run_Fit(problem, control, [&latest](Fit_Iteration iteration) { latest.Put(std::move(iteration)); });
        run.problem = std::move(problem);
        run.stopped = control.Cancelled();
        return run;
    });
    Fit_Watch watch(session, problem);
    const auto progress = Start_Progress_Dialog("Refinement", problem.state.Ncyc, "Stop");
    progress->Wait([&](std::chrono::milliseconds time) {
        const bool ready = work.Ready_Within(time);
        if (const auto iteration = latest.Take()) {
            watch.Show(*iteration);
            progress->Go_On(iteration->number, "Iteration " + std::to_string(iteration->number));
        }
        if (progress->Cancelled()) work.Control().Cancel();
        return ready;
    });
    return work.Take();
}

// Runs until it has converged, changes nothing more, or the user has enough.
std::optional<Run> Run_To_The_End(Application& app, Fit_Problem problem) {
    float before = before_first;
    while (true) {
        std::optional<Run> run = Run_Once(app.session, problem);
        if (!run || run->stopped || run->problem.state.reached) return run;
        const float chi2 = run->problem.state.chi2;
        if (!(std::fabs(chi2 - before) > run->result.c.tol)) return run;
        before = chi2;
        const Message_Box question{Box_Buttons::yes_no, Box_Icon::question, 1, "Convergence not reached!. Do you want continue?",
                                   std::string(information_title)};
        if (app.ask.Box(question) != Box_Answer::yes) return run;
        problem = std::move(run->problem);
    }
}

// `with_previous`: goes back together with the starting values.
void Fit(Application& app, Fit_Kind kind, bool with_previous) {
    Session& session = app.session;
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(1);
    Fit_Problem problem;
    if (const Status status = Make_Fit_Problem(kind, session.lists.fit, session.lists.background, pattern, problem); status.failed)
        return app.ask.Information(status.message);
    Keep_First_Row(session.store);
    const std::string heading = Listing_Heading(kind, problem.state, problem.nodes, pattern.title, pattern.scat_var,
                                                Free_Parameters(State_Vector(kind, problem.state, problem.nodes)));

    std::optional<Run> run;
    bool kept = false;
    {
        Row_Change change(session, "fit" + Of_Profiles(session, {1}), {1}, part_curves);
        run = Run_To_The_End(app, problem);
        if (run && !std::isnan(run->problem.state.chi2)) {
            run->problem.state.done = true;
            Keep_Fit(session, run->problem, run->result);
            change.Keep(with_previous);
            kept = true;
        }
    }
    if (!kept) {
        Set_Fit_Overlay(session);
        Plot_Redraw(session);
        return app.ask.Information(std::string(run ? no_number : no_memory));
    }
    Plot_Redraw(session);
    const std::vector<std::string> lost = Write_Fit_Files(session, run->problem, run->result, heading);
    app.ask.Information(End_Of_Fit_Text(run->problem.state.infout, run->problem.state.chi2, session.config.Line_End()));
    Tell_Lost_Files(app.ask, lost);
}

}  // namespace

void Fit_With_Dialog(Application& app, Fit_Kind kind) {
    Session& session = app.session;
    bool kept = false;
    {
        Row_Change change(session, "starting values of the fit");
        if (const Status status = Prepare_Starting_Values(session, kind); status.failed) return app.ask.Information(status.message);
        if (Edit_Starting_Values(app, kind).failed) return;
        kept = change.Keep();
    }
    Fit(app, kind, kept);
}

}  // namespace vntl
