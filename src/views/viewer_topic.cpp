// The viewer of area detectors, as scripts print it.
#include <algorithm>
#include <span>

#include "base/extremes.hpp"
#include "views/viewer_2d.hpp"
#include "views/views.hpp"

namespace vntl {

namespace {

using Values = std::span<const float>;

Json Rows_Of_Reals(const Matrix3d& matrix) {
    Json rows = Json::array();
    for (const Vector3d& row : matrix) rows.push_back(Json_Reals(row));
    return rows;
}

// Rows of `columns` values.
Json Rows_Of_Picture(Values z, std::size_t columns) {
    Json rows = Json::array();
    for (std::size_t at = 0; at + columns <= z.size() && columns > 0; at += columns) rows.push_back(Json_Reals(z.subspan(at, columns)));
    return rows;
}

Json Size_Of_Picture(const Viewer2D& viewer) {
    const Extremes found = Finite_Extremes(viewer.frame_z);
    return {{"nx", viewer.frame_x.size()},
            {"ny", viewer.frame_y.size()},
            {"min", found.Found() ? Json_Real(found.low) : Json()},
            {"max", found.Found() ? Json_Real(found.high) : Json()}};
}

const char* Name_Of(View_Axis axis) {
    constexpr std::array<const char*, 3> names = {"H-View", "K-View", "L-View"};
    return names.at(static_cast<std::size_t>(axis));
}

// --- the whole of it ---------------------------------------------------------------------------------------------------------------

Json Numbers_Of_Runs(const Frame_Store& runs) {
    Json numbers = Json::array();
    for (int index = 1; index <= runs.size(); ++index) numbers.push_back(runs.Run(index).numor);
    return numbers;
}

Json Viewer_Json(const Viewer2D& viewer, const std::string& instrument) {
    const Reciprocal_Volume& volume = viewer.volume;
    const Json built = {{"nh", volume.h.count}, {"nk", volume.k.count}, {"nl", volume.l.count}};
    return {{"numors", Numbers_Of_Runs(viewer.numors)},
            {"current_numor", viewer.current_numor},
            {"current_frame", viewer.current_frame},
            {"nframes", viewer.nframes},
            {"nx_pixels", viewer.nx_pixels},
            {"ny_pixels", viewer.ny_pixels},
            {"frame_z", Size_Of_Picture(viewer)},
            {"plot_kind", viewer.plot_kind},
            {"side_plot", viewer.side_plot},
            {"intensity_scale", static_cast<int>(viewer.intensity_scale)},
            {"select_kind", viewer.select_kind},
            {"bitmap", viewer.bitmap},
            {"recip_mode", viewer.recip_mode},
            {"projection_mode", viewer.projection_mode},
            {"view_axis", Name_Of(viewer.view_axis)},
            {"ub", viewer.ub_known ? Rows_Of_Reals(viewer.ub) : Json()},
            {"ub_inverse", viewer.ub_known ? Rows_Of_Reals(viewer.ub_inverse) : Json()},
            {"volume", volume.empty() ? Json() : built},
            {"section_x", viewer.section_known ? Json_Reals(viewer.section_x) : Json()},
            {"section_y", viewer.section_known ? Json_Reals(viewer.section_y) : Json()},
            {"window", viewer_window},
            {"panel", viewer_panel},
            {"instrument", Json_Text(instrument)},
            {"directory", viewer.directory},
            {"listed", viewer.listed.size()},
            {"title", Json_Text(viewer.title)},
            {"x_label", Json_Text(viewer.x_label)},
            {"y_label", Json_Text(viewer.y_label)},
            {"x_view_min", Json_Real(viewer.plot.x_view_min)},
            {"x_view_max", Json_Real(viewer.plot.x_view_max)},
            {"y_view_min", Json_Real(viewer.plot.y_view_min)},
            {"y_view_max", Json_Real(viewer.plot.y_view_max)},
            {"status", Json_Texts(viewer.status)},
            {"message", viewer.hint.empty() ? viewer.message : viewer.hint}};
}

// --- what is in it -----------------------------------------------------------------------------------------------------------------

Json Frame_Json(const Viewer2D& viewer, bool full) {
    Json frame = Size_Of_Picture(viewer);
    double sum = 0;
    for (const float z : viewer.frame_z)
        if (std::isfinite(z)) sum += static_cast<double>(z);
    frame["sum"] = Json_Real(sum);
    if (full) {
        frame["x"] = Json_Reals(viewer.frame_x);
        frame["y"] = Json_Reals(viewer.frame_y);
        frame["z"] = Rows_Of_Picture(viewer.frame_z, viewer.frame_x.size());
    }
    return {{"frame", std::move(frame)}};
}

Json Volume_Json(const Reciprocal_Volume& volume, bool full) {
    const std::pair<const char*, const Volume_Axis&> axes[] = {{"h", volume.h}, {"k", volume.k}, {"l", volume.l}};
    Json all;
    for (const auto& [name, axis] : axes) all[std::string("n") + name] = axis.count;
    for (const auto& [name, axis] : axes) {
        all[std::string(name) + "min"] = Json_Real(axis.min);
        all[std::string(name) + "max"] = Json_Real(axis.max);
    }
    for (const auto& [name, axis] : axes) all[std::string("d") + name] = Json_Real(axis.step);
    for (const auto& [name, axis] : axes) all[std::string("first_n") + name] = axis.first_count;
    all["used"] = volume.used;
    all["dropped"] = volume.dropped;
    all["used_counts"] = volume.used_counts;
    all["dropped_counts"] = volume.dropped_counts;
    all["filled"] = volume.filled;
    if (full) {
        for (const auto& [name, axis] : axes) {
            Json& values = all[std::string(name) + "_values"] = Json::array();
            for (int cell = 1; cell <= axis.count; ++cell) values.push_back(Json_Real(axis.Value(cell)));
        }
        all["z"] = Json_Reals(volume.z);  // l slowest, then k, then h
    }
    return {{"volume", std::move(all)}};
}

Json Line_Json(const char* name, const Line_Plot& line) { return {{name, {{"x", Json_Reals(line.x)}, {"y", Json_Reals(line.y)}}}}; }

// --- topics ------------------------------------------------------------------------------------------------------------------------

// Whether the words behind a topic are none, or "full".
Status Read_Full(const std::string& topic, Words words, bool& full) {
    full = words.size() == 1 && words[0] == "full";
    return words.empty() || full ? Status::Done() : Status::Fail("usage: print " + topic + " [full]");
}

Status Print_Frame(const Viewer2D& viewer, Words words, const Put_Line& put) {
    bool full = false;
    if (Status status = Read_Full("frame", words, full); status.failed) return status;
    put(Frame_Json(viewer, full));
    return Status::Done();
}

Status Print_Pixel(const Viewer2D& viewer, Words words, const Put_Line& put) {
    double px = 0, py = 0;
    int frame = 0;
    if (words.size() != 3 || !Parse_Real(words[0], px) || !Parse_Real(words[1], py) || !Parse_Integer(words[2], frame))
        return Status::Fail("usage: print pixel PX PY FRAME");
    if (!viewer.geometry) return Status::Fail(viewer.no_geometry);
    Frame_Setting setting;
    if (Status status = Setting_Of_Frame(viewer.Run(), frame, setting); status.failed) return status;
    Vector3d z1{};
    if (Status status = Get_z1_from_pixel(px, py, frame, viewer.Run(), *viewer.geometry, z1); status.failed) return status;
    const Detector_Angles angles = viewer.geometry->Angles(px, py, setting.gamma);
    const std::optional<Vector3d> hkl = Indices_Of_Pixel(viewer, px, py, frame);
    put({{"pixel",
          {{"gamma", Json_Real(angles.gamma)},
           {"nu", Json_Real(angles.nu)},
           {"z1", Json_Reals(z1)},
           {"hkl", hkl ? Json_Reals(*hkl) : Json()}}}});
    return Status::Done();
}

Status Print_Volume(const Viewer2D& viewer, Words words, const Put_Line& put) {
    bool full = false;
    if (Status status = Read_Full("volume", words, full); status.failed) return status;
    if (viewer.volume.empty()) return Status::Fail("no volume of reciprocal space has been built");
    put(Volume_Json(viewer.volume, full));
    return Status::Done();
}

Status Print_Line(const char* name, const Line_Plot& line, Words words, const Put_Line& put, const char* absent) {
    if (!words.empty()) return Status::Fail(std::string("usage: print ") + name);
    if (line.x.empty()) return Status::Fail(absent);
    put(Line_Json(name, line));
    return Status::Done();
}

// A topic of what a run that is shown gives.
template <class Print>
Topic Of_Run(const Application& app, std::string_view name, Print print) {
    return {name, [&viewer = app.viewer, print](Words words, const Put_Line& put) {
                if (!WindowIsOpen(viewer_window)) return Status::Fail("the viewer of area detectors is not open");
                if (!viewer.Holds_Run()) return Status::Fail("no run is shown in the viewer");
                return print(viewer, words, put);
            }};
}

Status Print_Viewer(const Application& app, Words words, const Put_Line& put) {
    if (!words.empty()) return Status::Fail("usage: print viewer");
    if (!WindowIsOpen(viewer_window)) return Status::Fail("the viewer of area detectors is not open");
    put({{"viewer", Viewer_Json(app.viewer, app.instrument.Current_Instrm.name_inst)}});
    return Status::Done();
}

}  // namespace

std::vector<Topic> Viewer_Topics(const Application& app) {
    return {{"viewer", [&app](Words words, const Put_Line& put) { return Print_Viewer(app, words, put); }},
            Of_Run(app, "frame", Print_Frame),
            Of_Run(app, "pixel", Print_Pixel),
            Of_Run(app, "volume", Print_Volume),
            Of_Run(app, "section",
                   [](const Viewer2D& viewer, Words words, const Put_Line& put) {
                       return Print_Line("section", Section_Of(viewer), words, put, "no line has been drawn over the picture");
                   }),
            Of_Run(app, "omega", [](const Viewer2D& viewer, Words words, const Put_Line& put) {
                return Print_Line("omega", Omega_Of(viewer), words, put, "the run has no frames");
            })};
}

}  // namespace vntl
