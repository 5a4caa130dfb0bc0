#include "session/quick_view.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

#include "base/conversions.hpp"
#include "base/natural_order.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "session/load_all.hpp"
#include "session/read_files.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view progress_title = "Analizing directory for PRF files";
constexpr std::string_view no_file_text = "No PRF/XRF file in the selected directory ";
constexpr std::string_view too_many_text = "Too many PRF/XRF (> 400) files in the selected directory ";
constexpr std::string_view no_valid_text = "No valid PRF file in the selected directory";
constexpr std::string_view unknown_format_text = "Unkown format files:", unknown_format_title = "Attention";
constexpr std::string_view not_now_text = "Unable to add profile to main\nwindow in mode 2D contour, 3D, 3D Surf\nor fitting";
constexpr std::string_view not_now_title = "Warning";

constexpr float zero_celsius = 273.16f;     // as the line of the status bar has always told it
constexpr float foot = 0.2f, base = 0.14f;  // shares of the intensities' span, under the lowest of them
constexpr float flat_margin = 0.05f;        // of a constant value, kept on both sides of it
constexpr double narrowest_zoom = 0.02;     // in units of x
constexpr float largest_intensity = 1e37f;  // leaves room for the margins in single precision
constexpr std::size_t file_text = 0, number_text = 1, x_text = 2, y_text = 3;

// --- the files of a directory ----------------------------------------------------------------------------------------------------

// Names of profile files, those of refinements before those of fitted peaks, each in natural order. One more than may be looked through is
// as good as all.
Status Profile_Names(const std::string& directory, std::vector<std::string>& names) {
    std::array<std::vector<std::string>, 2> found;
    std::error_code error, of_entry;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end; entry.increment(error)) {
        std::string name = entry->path().filename().string();
        const std::string extension = Lower(Extension_Of(name));
        if ((extension != ".prf" && extension != ".xrf") || entry->is_directory(of_entry)) continue;
        found[extension == ".xrf"].push_back(std::move(name));
        if (found[0].size() + found[1].size() > max_quick_files) break;
    }
    if (error) return Status::Fail_File("The directory " + directory + " cannot be read: " + error.message());
    for (std::vector<std::string>& kind : found) {
        std::sort(kind.begin(), kind.end(), [](const std::string& a, const std::string& b) {
            const std::weak_ordering order = Compare_Natural(a, b);
            return order != 0 ? order < 0 : a < b;
        });
        names.insert(names.end(), kind.begin(), kind.end());
    }
    return Status::Done();
}

std::string Temperature_Text(float kelvin) {
    return "   Temperature: " + IRealToString(kelvin, "(f8.2)") + " K -- " + IRealToString(kelvin - zero_celsius, "(f8.2)") + " C";
}

struct Walk {
    std::vector<Quick_File> files;
    std::string failed;  // names of those that could not be read, each behind the start of a line
};

// False where the user ends it.
bool Read_Each(const Configuration& config, Ask& ask, const std::string& directory, const std::vector<std::string>& names, Walk& walk) {
    std::vector<std::string> paths;
    for (const std::string& name : names) paths.push_back(config.Path(directory, name));
    const auto progress = ask.Start_Progress(progress_title, static_cast<int>(names.size()));
    Files_Ahead ahead(paths, Read_Refined_File, config.threads);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!progress->Go_On(static_cast<int>(i), names[i])) return false;
        const Read_File file = ahead.Take(*progress);
        if (progress->Cancelled()) return false;
        if (file.status.failed)
            walk.failed += '\n' + names[i];
        else
            walk.files.push_back({names[i], Temperature_Text(file.patterns.front().TSample)});
    }
    return true;
}

// The list of files that were found; none of them is in hand yet.
void Take_List(Quick_View& quick, const std::string& directory, std::vector<Quick_File> files) {
    Quick_View fresh;
    fresh.open = quick.open;
    fresh.directory = directory;
    fresh.files = std::move(files);
    quick = std::move(fresh);
}

// --- the file in hand --------------------------------------------------------------------------------------------------------------

std::string Path_In_Hand(const Session& session) {
    const Quick_View& quick = session.quick_view;
    return session.config.Path(quick.directory, quick.files[static_cast<std::size_t>(quick.index - 1)].name);
}

// Here and now: a thread for one file would cost more than it brings.
Read_File Read_Alone(const std::string& path) {
    try {
        return Read_Refined_File(path);
    } catch (const std::bad_alloc&) {
        return {.path = path, .status = Status::Fail(out_of_memory)};
    }
}

// A constant value is shown in the middle of a narrow range.
float Flat_Margin(float value) { return value == 0 ? 1 : flat_margin * std::fabs(value); }

void Find_Range(const Diffraction_Pattern_Type& pattern, Plot_State& plot) {
    const auto [left, right] = std::minmax(pattern.xmin, pattern.xmax);
    const float at_side = left < right ? 0 : Flat_Margin(left);
    plot.x_all_min = left - at_side;
    plot.x_all_max = right + at_side;
    const float low = std::clamp(pattern.ymin, -largest_intensity, largest_intensity);
    const float high = std::clamp(pattern.ymax, -largest_intensity, largest_intensity);
    const bool flat = !(low < high);
    const float span = flat ? Flat_Margin(low) : high - low;
    plot.y_all_min = low - (flat ? span : foot * span);
    plot.y_all_max = high + (flat ? span : 0);
    plot.diff_base = low - base * span;
}

}  // namespace

bool Look_Through(Session& session, Ask& ask, const std::string& directory) {
    std::vector<std::string> names;
    Status status = Profile_Names(directory, names);
    if (status.ok() && names.empty()) status = Status::Fail(no_file_text);
    if (status.ok() && names.size() > max_quick_files) status = Status::Fail(too_many_text);
    Walk walk;
    if (status.failed) ask.Error(status);
    if (status.failed || !Read_Each(session.config, ask, directory, names, walk)) return false;
    Take_List(session.quick_view, directory, std::move(walk.files));
    if (!walk.failed.empty())
        ask.Box({Box_Buttons::ok, Box_Icon::exclamation, 1, std::string(unknown_format_text) + walk.failed,
                 std::string(unknown_format_title), true});
    status = session.quick_view.files.empty() ? Status::Fail(no_valid_text) : Show_Quick_File(session, 1);
    if (status.failed) ask.Error(status);
    return true;
}

Status Show_Quick_File(Session& session, int index) {
    Quick_View& quick = session.quick_view;
    quick.index = index;
    const Quick_File& file = quick.files[static_cast<std::size_t>(index - 1)];
    const std::string path = Path_In_Hand(session);
    Read_File read = Read_Alone(path);
    quick.pattern = read.status.ok() ? std::move(read.patterns.front()) : Diffraction_Pattern_Type();
    quick.info = std::move(read.info);
    quick.plot = {};
    quick.status = {};
    quick.status[file_text] = path + file.temperature;
    quick.status[number_text] = "( " + std::to_string(index) + " / " + std::to_string(quick.Count()) + " )";
    if (read.status.failed) return Status::Fail_File("ERROR in file: " + file.name + '\n' + std::string(Trim(read.status.message)));
    Find_Range(quick.pattern, quick.plot);
    Show_Whole(quick);
    return Status::Done();
}

void Read_Out(Quick_View& quick, Plot_State::Place page) {
    const View view = quick.plot.Shown_View();
    const Plot_State::Place at = quick.plot.Data_At(page);
    const bool inside = view.Drawable() && at.x >= view.x1 && at.x <= view.x2 && at.y >= view.y1 && at.y <= view.y2;
    quick.status[x_text] = inside ? "X= " + IRealToString(static_cast<float>(at.x), "(f12.4)") : "";
    quick.status[y_text] = inside ? "Y= " + IRealToString(static_cast<float>(at.y), "(f12.1)") : "";
}

void Show_View(Quick_View& quick, const View& view) {
    if (quick.plot.Show(view)) quick.plot.drawn = quick.plot.units = view;
}

void Zoom_To(Quick_View& quick, const Rubber_Shape& rectangle) {
    const Plot_State::Place a = quick.plot.Data_At({rectangle.x0, rectangle.y0}), b = quick.plot.Data_At({rectangle.x1, rectangle.y1});
    const auto [x1, x2] = std::minmax({static_cast<float>(a.x), static_cast<float>(b.x)});
    const auto [y1, y2] = std::minmax({static_cast<float>(a.y), static_cast<float>(b.y)});
    const View view{x1, x2, y1, y2};
    if (std::fabs(a.x - b.x) > narrowest_zoom && view.Drawable()) Show_View(quick, view);
}

void Show_Whole(Quick_View& quick) { Show_View(quick, quick.plot.Whole_Range()); }

Open_Result Hand_Over(Session& session, Ask& ask) {
    const Quick_View& quick = session.quick_view;
    const Plot_Form form = session.plot.plot_type;
    if (form != Plot_Form::none && form != Plot_Form::single && form != Plot_Form::multi) {
        ask.Box({Box_Buttons::ok, Box_Icon::exclamation, 1, std::string(not_now_text), std::string(not_now_title)});
        return {.cancelled = true};
    }
    const auto copy = [&quick](const std::string& path) {
        return Read_File{.path = path, .refined = true, .patterns = {quick.pattern}, .info = quick.info, .handed_over = true};
    };
    return Load_All(session, ask, {.paths = {Path_In_Hand(session)}}, copy);
}

}  // namespace vntl
