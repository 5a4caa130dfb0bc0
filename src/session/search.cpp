#include "session/search.hpp"

#include <cmath>

#include "base/edit_descriptor.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "base/write_file.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr float steps_apart = 3;  // peaks nearer than this many steps are one
constexpr float any_distance = -1;
constexpr int most_peaks = max_peaks - 1;  // the last slot is for a peak that the user adds

constexpr std::string_view no_row = "There is no profile to search";
constexpr std::string_view too_many_peaks = "Maximum number of peaks reached!";
constexpr std::string_view too_many_points = "Max num. points for background";

// A file of found points, and what is said when it cannot be written.
struct Found_File {
    std::string_view name, heading, not_opened, not_written;
};
constexpr Found_File peak_file{"peak.aps", "! peak_position   peak_intensity   background",
                               " Problem opening the 'peak.aps' file: please check the file properties. ",
                               " Problem writing in the 'peak.xy' file. Please check the file properties ! "};
constexpr Found_File background_file{"background.xy", "! position      background_value", " Problem opening the 'background.xy' file",
                                     " Problem writing in the 'background.xy' file: please check file properties ! "};

std::string Text_Of(const PKB_Type& found, const Diffraction_Pattern_Type& pattern, const Found_File& file) {
    static const Edit_Format columns("(3F15.5)");
    std::string text = "! Data file: " + std::string(Trim_Right(pattern.filename)) +
                       "\n! Format:    " + std::string(Trim_Right(pattern.instr)) + "\n" + std::string(file.heading) + "\n";
    for (std::size_t i = 0; i < found.x.size(); ++i) {
        Edit_Writer line(columns, text);
        line.Write(found.x[i], found.y[i]);
        if (!found.bgr.empty()) line.Write(found.bgr[i]);
        line.Finish();
    }
    return text;
}

// In the working directory, over what is there.
Status Write_Found(const Session& session, const PKB_Type& found, const Found_File& file) {
    const std::string directory = IOsDirName();
    if (directory.empty()) return Status::Fail_File(file.not_opened);  // somebody has removed it
    const std::string path = session.config.Path(directory, file.name);
    if (Replace_File(path, Text_Of(found, session.store.Pattern(1), file))) return Status::Done();
    return Status::Fail_File(Can_Be_Written(path) ? file.not_written : file.not_opened);
}

// Searches what is seen of row 1, and writes what is found, if anything is.
Status Search_View(const Session& session, Search_Mode mode, PKB_Type& found) {
    if (session.store.nperfiles() == 0) return Status::Fail(no_row);
    const Plot_State& plot = session.plot;
    Search_Parameters parameters = session.search;
    if (plot.xspace != X_Space::two_theta) parameters.search_radiation = 1;
    Status status = Search_Pattern(session.store.Pattern(1), plot.x_view_min, plot.x_view_max, mode, parameters, found);
    if (status.failed || found.np == 0) return status;
    return Write_Found(session, found, mode == Search_Mode::background ? background_file : peak_file);
}

void Store_Wavelengths(Session& session) {
    if (session.store.nperfiles() == 0) return;
    const Search_Radiation radiation = Radiation_Of_Search(session.search.search_radiation, session.store.Pattern(1).conv[0]);
    Fit_State& fit = session.lists.fit;
    fit.lambda1 = radiation.lambda1;
    fit.lambda2 = radiation.lambda2;
    fit.ratio.value = radiation.ratio;
}

// The peaks that are further than `nearest` from the last one taken; the first is compared with 0.
Status Take_Peaks(const PKB_Type& found, float nearest, Session& session) {
    if (found.np > most_peaks) return Status::Fail(too_many_peaks);
    std::vector<Peak_Mark>& peaks = session.lists.peaks;
    peaks.clear();
    session.lists.peaks_found_in = session.plot.xspace;
    float last = 0;
    for (std::size_t i = 0; i < found.x.size(); ++i) {
        if (!(std::fabs(found.x[i] - last) > nearest)) continue;
        last = found.x[i];
        peaks.push_back({found.x[i], found.y[i], found.bgr[i]});
    }
    return Status::Done();
}

}  // namespace

Status Find_Peaks(Session& session) {
    Store_Wavelengths(session);
    PKB_Type found;
    if (Status status = Search_View(session, Search_Mode::peaks, found); status.failed) return status;
    return Take_Peaks(found, steps_apart * session.store.Pattern(1).step, session);
}

Status Find_Satellites(Session& session) {
    PKB_Type found;
    if (Status status = Search_View(session, Search_Mode::satellites, found); status.failed) return status;
    return Take_Peaks(found, any_distance, session);
}

Status Find_Background(Session& session) {
    PKB_Type found;
    if (Status status = Search_View(session, Search_Mode::background, found); status.failed) return status;
    if (found.np > max_background_points) return Status::Fail(too_many_points);
    std::vector<Background_Mark>& points = session.lists.background;
    points.clear();
    session.lists.background_found_in = session.plot.xspace;
    for (std::size_t i = 0; i < found.x.size(); ++i) points.push_back({found.x[i], found.y[i]});
    return Status::Done();
}

}  // namespace vntl
