#include "fit/fit_series.hpp"

#include <algorithm>
#include <cmath>
#include <deque>

namespace vntl {

namespace {

constexpr float no_chi2 = 1e30f;  // from here on the sum of squares has left single precision, or nothing was fitted
constexpr std::string_view other_variable = "The model is not one for this type of data";
constexpr std::string_view no_memory = "There is not enough memory for the fit";
constexpr std::string_view no_number = "NaN has been detected, the initial parameters are surely wrong!";

struct Step {
    Fit_Problem problem;  // with what was found
    Fit_Result result;
    bool stopped = false;
};

Step Run_Step(Fit_Problem problem, Work_Control& control) {
    Step step;
    step.result = Run_Fit(problem, control);
    step.problem = std::move(problem);
    step.stopped = control.Cancelled();
    return step;
}

// Texts of a failure stand behind the name of its row.
std::string Reason(const Status& status) {
    constexpr std::string_view mark = "ERROR: ";
    return status.message.starts_with(mark) ? status.message.substr(mark.size()) : status.message;
}

std::string Why_It_Is_No_Result(const Step& step, const Series_Row& row) {
    const float chi2 = step.problem.state.chi2;
    const auto& parameters = step.result.vs.parameters;
    if (std::isnan(chi2) || !std::ranges::all_of(parameters, [](const LSQ_Parameter& p) { return std::isfinite(p.pv); }))
        return std::string(no_number);
    if (!(chi2 < no_chi2)) return step.result.run.infout;
    Fit_Problem again;
    return Reason(Make_Fit_Problem(step.problem.kind, step.problem.state, step.problem.nodes, *row.pattern, again));
}

class Series {
public:
    Series(const Series_Model& model, std::span<const Series_Row> rows, Series_Start start, int at_once, Progress& progress)
        : now_(model),
          rows_(rows),
          start_(start),
          most_(start == Series_Start::model ? static_cast<std::size_t>(std::max(at_once, 1)) : 1),
          progress_(progress) {}

    Series_Result Run() {
        while (true) {
            while (next_ < rows_.size() && running_.size() < most_) Begin(rows_[next_++]);
            if (running_.empty()) break;
            if (!Wait()) {
                result_.not_tried = static_cast<int>(rows_.size() - next_ + running_.size());
                break;
            }
        }
        std::ranges::sort(result_.failures, {}, &Series_Failure::row);
        return std::move(result_);
    }

private:
    struct Running {
        const Series_Row* row;
        Long_Work<Step> work;
    };

    void Fail(const Series_Row& row, std::string why) { result_.failures.push_back({row.row, row.file, std::move(why)}); }

    void Begin(const Series_Row& row) {
        if (row.kind != now_.kind) return Fail(row, std::string(other_variable));
        Fit_Problem problem;
        if (const Status status = Make_Fit_Problem(now_.kind, now_.state, now_.nodes, *row.pattern, problem); status.failed)
            return Fail(row, Reason(status));
        running_.push_back({&row, Long_Work<Step>([problem = std::move(problem)](Work_Control& control) mutable {
                                return Run_Step(std::move(problem), control);
                            })});
    }

    // Takes over the first of those that run; false when the user has cancelled meanwhile, finished or not.
    bool Wait() {
        Running& first = running_.front();
        const int done = static_cast<int>(result_.table.fits.size() + result_.failures.size());
        bool go_on = progress_.Go_On(done, "Profile " + std::to_string(first.row->row) + ": " + first.row->file);
        progress_.Wait([&](std::chrono::milliseconds time) {
            go_on = go_on && !progress_.Cancelled();
            if (!go_on)
                for (Running& running : running_) running.work.Control().Cancel();
            return first.work.Ready_Within(time);
        });
        const std::optional<Step> step = first.work.Take();
        if (step && step->stopped) return false;
        Take(*first.row, step);
        running_.pop_front();
        return go_on;
    }

    void Take(const Series_Row& row, const std::optional<Step>& step) {
        if (!step) return Fail(row, std::string(no_memory));
        if (std::string why = Why_It_Is_No_Result(*step, row); !why.empty()) return Fail(row, std::move(why));
        const Fit_State& state = step->problem.state;
        Series_Fit fit{row.row, row.file, row.pattern->TSample, state.chi2, state.reached, !step->result.run.lsq_error, {}, {}};
        fit.agreement = Agreement_Of(step->problem.data, Weights_Of(step->problem.data), step->result.c.npvar);
        Series_Table& table = result_.table;
        table.names.clear();
        for (const LSQ_Parameter& parameter : step->result.vs.parameters) {
            if (parameter.code == 0) continue;
            table.names.push_back(parameter.nampar);
            fit.values.push_back({parameter.pv, parameter.spv});
        }
        table.fits.push_back(std::move(fit));
        if (start_ == Series_Start::model) return;
        now_.state = state;
        now_.nodes = step->problem.nodes;
    }

    Series_Model now_;  // what the next fit starts from
    std::span<const Series_Row> rows_;
    Series_Start start_;
    std::size_t most_;
    Progress& progress_;
    Series_Result result_;
    std::size_t next_ = 0;
    std::deque<Running> running_;
};

}  // namespace

Series_Result Fit_Series(const Series_Model& model, std::span<const Series_Row> rows, Series_Start start, int at_once, Progress& progress) {
    return Series(model, rows, start, at_once, progress).Run();
}

}  // namespace vntl
