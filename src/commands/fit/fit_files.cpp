#include "commands/fit/fit_files.hpp"

#include "base/edit_descriptor.hpp"
#include "base/os.hpp"
#include "base/text_file.hpp"
#include "base/write_file.hpp"
#include "fit/irf_file.hpp"
#include "fit/listing.hpp"
#include "fit/pik_file.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr const char* curves_name = "lorvane_obscalc.xyy";

std::string Listing(const Session& session, const Fit_Problem& problem, const Fit_Result& result, const std::string& heading) {
    return heading + End_Of_Fit_Text(problem.state.infout, problem.state.chi2, session.config.Line_End()) + "\n\n" +
           Listing_Values(problem.kind, problem.state, problem.nodes) +
           Info_LSQ_Output(0, problem.data, Weights_Of(problem.data), result.c, result.vs, result.run);
}

// Points of row 1 with its curve, and the rows of single peaks beside them.
std::string Curves(const Profile_Store& store) {
    static const Edit_Format format("(F12.4,17F12.2)");
    std::string text;
    const Diffraction_Pattern_Type& first = store.Pattern(1);
    for (std::size_t i = 0; i < first.x.size(); ++i) {
        Edit_Writer line(format, text);
        line.Write(first.x[i], first.y[i], first.ycalc[i]);
        for (int row = 2; row <= store.nperfiles(); ++row) line.Write(store.Pattern(row).y[i]);
        line.Finish();
    }
    return text;
}

// What stands in the resolution file stays in front.
bool Extend_Irf(const std::string& file, const Fit_Problem& problem, const Fit_Result& result) {
    std::string text;
    const bool is_new = !IOsFileExists(file);
    if (!is_new) {
        Text_File old;
        if (old.Open(file).failed) return false;
        text = old.Text();
        if (!text.empty() && text.back() != '\n') text += '\n';
    }
    return Replace_File(file, text + Irf_Text(problem.state, result.fwhm, result.eta, is_new));
}

}  // namespace

std::vector<std::string> Write_Fit_Files(const Session& session, const Fit_Problem& problem, const Fit_Result& result,
                                         const std::string& heading) {
    std::vector<std::string> lost;
    const auto write = [&lost](const std::string& file, const auto& put) {
        if (!put(file)) lost.push_back(file);
    };
    const auto replace = [&write](const std::string& file, const std::string& text) {
        write(file, [&text](const std::string& name) { return Replace_File(name, text); });
    };
    const std::string stem = Fit_Stem(session);
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(1);
    replace(stem + "_pf.out", Listing(session, problem, result, heading));
    if (problem.state.output == Fit_Output::irf && problem.kind == Fit_Kind::constant_wavelength)
        write(stem + "_pf.irf", [&](const std::string& file) { return Extend_Irf(file, problem, result); });
    if (session.store.nperfiles() > 1) replace(session.config.Path(session.store.Info(1).directory, curves_name), Curves(session.store));
    replace(Pik_Name(problem.kind, problem.state, problem.nodes, stem),
            Pik_Text(problem.kind, problem.state, problem.nodes, pattern.title, pattern.scat_var));
    return lost;
}

void Tell_Lost_Files(Ask& ask, const std::vector<std::string>& lost) {
    if (lost.empty()) return;
    std::string text = "These files could not be written:";
    for (const std::string& file : lost) text += "\n" + file;
    ask.Error(Status::Fail_File(text));
}

std::string Select_Pik_File(Ask& ask) {
    const std::vector<std::string> chosen =
        ask.Select_Files("Select PIK/NEW file to open", "Input PIK/NEW File (*.pik,*.new)|*.pik;*.new|");
    return chosen.empty() ? std::string() : chosen.front();
}

void Tell_Bad_Pik(Ask& ask, const Status& status) {
    ask.Information(status.message);
    ask.Error(Status::Fail_File("Error Reading the PIK file!"));
}

}  // namespace vntl
