#include "commands/fit/fit_series.hpp"

#include <algorithm>
#include <thread>

#include "base/conversions.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "base/write_file.hpp"
#include "commands/application.hpp"
#include "commands/fit/fit_files.hpp"
#include "commands/modal.hpp"
#include "commands/progress_dialog.hpp"
#include "fit/fit_series.hpp"
#include "fit/pik_file.hpp"
#include "fit/state_vector.hpp"
#include "session/fit.hpp"

namespace vntl {

namespace {

constexpr int series_dialog = 410;
constexpr int model_field = 1761, window_field = 1762, rows_field = 1763, load_pik_button = 1764;
constexpr int start_label = 1765, from_result_before = 1766, from_model = 1767;
constexpr int table_field = 1768, table_note = 1769;
constexpr int widest_note = 60;
constexpr std::size_t widest_source = 40;  // name of the file of a model
constexpr std::size_t most_failures_named = 10;

struct Table_Files {
    std::string csv, seq;
};

struct Series_Order {
    Series_Model model;
    Series_Start start = Series_Start::result_before;
    Table_Files files;
};

// Rows behind the first are the peaks of it while a fit runs.
std::vector<Series_Row> Rows_To_Fit(const Session& session) {
    const Profile_Store& store = session.store;
    std::vector<Series_Row> rows;
    const int last = session.plot.ClickMode == Click_Mode::fit ? std::min(store.nperfiles(), 1) : store.nperfiles();
    for (int row = 1; row <= last; ++row)
        if (store.shown(row))
            rows.push_back({row, std::string(Trim(store.Info(row).file_name)), &store.Pattern(row), Kind_Of_Fit(session, row)});
    return rows;
}

// --- the model ---------------------------------------------------------------------------------------------------------------------

// The state of the fit as a run would start from it: peaks that no starting values have been accepted for get them as the dialog of
// starting values would show them.
Status Present_Model(Session& session, Fit_Kind kind, Series_Model& model) {
    const Calculation_Lists kept = session.lists;
    const bool estimated = std::ranges::any_of(kept.fit.peaks, &Fit_Peak::is_height);
    Status status = Status::Done();
    if (estimated || kept.fit.peaks.empty() || kept.background.empty()) status = Prepare_Starting_Values(session, kind);
    if (status.ok()) {
        Heights_To_Areas(session.lists.fit);
        model = {kind, session.lists.fit, session.lists.background};
    }
    session.lists = kept;
    return status;
}

std::string Counted(std::size_t count, std::string_view thing) {
    return std::to_string(count) + ' ' + std::string(thing) + (count == 1 ? "" : "s");
}

void Show_Model(const std::optional<Series_Model>& model, std::string_view where) {
    if (!model) {
        WDialogPutString(model_field, "No model yet: fit one pattern, or load a PIK file");
        return WDialogPutString(window_field, "");
    }
    const LSQ_State_Vector vs = State_Vector(model->kind, model->state, model->nodes);
    WDialogPutString(model_field, Elide_Middle(where, widest_source) + ": " +
                                      Counted(static_cast<std::size_t>(Active_Peaks(model->state)), "peak") + ", " +
                                      Counted(model->nodes.size(), "background point") + ", " +
                                      Counted(static_cast<std::size_t>(Free_Parameters(vs)), "free parameter"));
    std::string window = "Window: " + IRealToString(model->state.x_ini) + " to " + IRealToString(model->state.x_fin);
    if (model->kind == Fit_Kind::constant_wavelength && model->state.lambda1 > 0)
        window += ", wavelengths " + IRealToString(model->state.lambda1) + ", " + IRealToString(model->state.lambda2);
    WDialogPutString(window_field, window);
}

// --- the table's files -------------------------------------------------------------------------------------------------------------

// A name without a directory stands beside the first pattern; of the two endings one or none need be told.
Table_Files Files_Of(const Session& session, std::string_view typed) {
    std::string stem = In_Directory(session.store.Info(1).directory, std::string(Trim(typed)));
    const std::string_view ending = Extension_Of(stem);
    if (Equal_No_Case(ending, ".csv") || Equal_No_Case(ending, ".seq")) stem.resize(stem.size() - ending.size());
    return {stem + ".csv", stem + ".seq"};
}

// What stands against a name, empty when nothing does.
std::string Objection(const Session& session, const Table_Files& files) {
    const Profile_Store& store = session.store;
    if (File_Part(files.csv, session.config.sep) == ".csv") return "The table needs a name";
    for (const std::string& file : {files.csv, files.seq}) {
        if (!Can_Be_Written(file)) return "This file cannot be written:\n" + file;
        for (int row = 1; row <= store.nperfiles(); ++row)
            if (session.config.Path(store.Info(row).directory, Trim(store.Info(row).file_name)) == file)
                return "This file is the one of profile " + std::to_string(row) + ":\n" + file;
    }
    return {};
}

bool May_Replace(Ask& ask, const Table_Files& files) {
    std::string there;
    for (const std::string& file : {files.csv, files.seq})
        if (IOsFileExists(file)) there += '\n' + file;
    if (there.empty()) return true;
    const std::string text = "A table is there already:" + there + "\nDo you want to replace it?";
    return ask.Box({Box_Buttons::yes_no, Box_Icon::question, 1, text, std::string(warning_title)}) == Box_Answer::yes;
}

// --- the dialog --------------------------------------------------------------------------------------------------------------------

class Series_Dialog {
public:
    Series_Dialog(Application& app, std::span<const Series_Row> rows) : app_(app) {
        const auto fits = std::ranges::find_if(rows, [](const Series_Row& row) { return row.kind.has_value(); });
        Series_Model present;
        if (fits != rows.end() && Present_Model(app.session, *fits->kind, present).ok()) model_ = present;
        WDialogLoad(series_dialog);
        Show_Model(model_, "Present fit");
        WDialogPutString(rows_field, "Profiles to fit: " + std::to_string(rows.size()));
        WDialogPutRadioButton(from_result_before);
        WDialogPutString(table_field, Fit_Stem(app.session) + "_series.csv");
        WDialogShow(0, Show_Kind::modal);
    }
    ~Series_Dialog() { WDialogUnload(); }
    Series_Dialog(const Series_Dialog&) = delete;
    Series_Dialog& operator=(const Series_Dialog&) = delete;

    // Nothing when the user left it.
    std::optional<Series_Order> Run() {
        while (true) {
            const int pressed = Run_Modal(series_dialog);
            if (pressed == load_pik_button)
                Load_Model();
            else if (pressed != button_ok)
                return {};
            else if (std::optional<Series_Order> order = Accepted())
                return order;
        }
    }

private:
    void Load_Model() {
        const std::string chosen = Select_Pik_File(app_.ask);
        if (chosen.empty()) return;
        Series_Model read;
        if (const Status status = Read_Pik_File(chosen, read.state, read.nodes, read.kind); status.failed)
            return Tell_Bad_Pik(app_.ask, status);
        model_ = std::move(read);
        Show_Model(model_, File_Part(chosen, app_.session.config.sep));
    }

    std::optional<Series_Order> Accepted() {
        if (!model_) {
            Error_Box("There is no model to fit: load a PIK file, or fit one pattern first");
            return {};
        }
        Series_Order order{*model_, Series_Start::result_before, Files_Of(app_.session, WDialogGetString(table_field))};
        if (WDialogGetRadioButton(from_result_before) == from_model) order.start = Series_Start::model;
        if (const std::string why = Objection(app_.session, order.files); !why.empty()) {
            Refuse_Field(table_field, why);
            return {};
        }
        if (!May_Replace(app_.ask, order.files)) return {};
        return order;
    }

    Application& app_;
    std::optional<Series_Model> model_;
};

// --- what came of it ---------------------------------------------------------------------------------------------------------------

void Tell_Failures(std::string& text, std::span<const Series_Failure> failures) {
    if (failures.empty()) return;
    text += "\nThese profiles could not be fitted:";
    for (const Series_Failure& failure : failures.first(std::min(failures.size(), most_failures_named)))
        text += "\n" + std::to_string(failure.row) + ", " + failure.file + ": " + failure.why;
    if (failures.size() > most_failures_named) text += "\nand " + std::to_string(failures.size() - most_failures_named) + " more";
}

std::string Account(const Series_Result& result, const Table_Files& files) {
    const std::vector<Series_Fit>& fits = result.table.fits;
    std::string text =
        result.not_tried > 0 ? "Cancelled: " + Counted(static_cast<std::size_t>(result.not_tried), "profile") + " left out.\n" : "";
    if (fits.empty()) {
        text += "No profile was fitted, and no table is written.";
    } else {
        text += Counted(fits.size(), "profile") + " fitted, in the tables\n" + files.csv + "\n" + files.seq;
        const auto unfinished = std::ranges::count(fits, false, &Series_Fit::converged);
        if (unfinished > 0) text += "\nNot converged: " + std::to_string(unfinished);
    }
    Tell_Failures(text, result.failures);
    return text;
}

void Write_And_Tell(Ask& ask, const Series_Result& result, const Table_Files& files) {
    std::vector<std::string> lost;
    if (!result.table.fits.empty()) {
        if (!Replace_File(files.csv, Csv_Text(result.table))) lost.push_back(files.csv);
        if (!Replace_File(files.seq, Seq_Text(result.table))) lost.push_back(files.seq);
    }
    Tell_Lost_Files(ask, lost);
    ask.Information(Account(result, files));
}

int Fits_At_Once(const Session& session) {
    return session.config.threads > 0 ? session.config.threads : static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
}

}  // namespace

Dialog_Resource Fit_Series_Dialog_Resource() {
    return {series_dialog,
            "Fit series",
            {{{.number = model_field, .width = widest_note}},
             {{.number = window_field, .width = widest_note}},
             {{.number = rows_field}, {load_pik_button, Field_Kind::push_button, "&Load PIK..."}},
             {{start_label, Field_Kind::label, "Start each fit from"}},
             {{from_result_before, Field_Kind::radio, "the &result before it", from_result_before}},
             {{from_model, Field_Kind::radio, "the same &first values: those of the model", from_result_before}},
             {{.number = table_field, .kind = Field_Kind::string, .label = "&Table (CSV)", .width = widest_note}},
             {{table_note, Field_Kind::label, "A file .seq beside it holds the same for generic plots"}},
             {{button_ok, Field_Kind::push_button, "Fit all"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

void Fit_Shown_Rows(Application& app) {
    Session& session = app.session;
    const std::vector<Series_Row> rows = Rows_To_Fit(session);
    if (std::ranges::none_of(rows, [](const Series_Row& row) { return row.kind.has_value(); }))
        return app.ask.Information(std::string(fit_not_available));
    const std::optional<Series_Order> order = Series_Dialog(app, rows).Run();
    if (!order) return;
    Series_Result result;
    {
        const auto progress = Start_Progress_Dialog("Fit series", static_cast<int>(rows.size()));
        result = Fit_Series(order->model, rows, order->start, Fits_At_Once(session), *progress);
    }
    Write_And_Tell(app.ask, result, order->files);
}

}  // namespace vntl
