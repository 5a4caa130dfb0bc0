#include "instrument/instrument_topics.hpp"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "base/os.hpp"
#include "instrument/calibration.hpp"
#include "instrument/data_directories.hpp"
#include "instrument/instrument_file.hpp"
#include "instrument/read_numor.hpp"

namespace vntl {

namespace {

// A list of the lists of real numbers.
template <class Rows>
Json Rows_Of_Reals(const Rows& rows) {
    Json list = Json::array();
    for (const auto& row : rows) list.push_back(Json_Reals(row));
    return list;
}

// The first `count` of the motors.
template <class Values>
std::span<const typename Values::value_type> Used(const Values& values, int count) {
    return std::span(values).first(std::clamp<std::size_t>(static_cast<std::size_t>(std::max(count, 0)), 0, values.size()));
}

// --- runs --------------------------------------------------------------------------------------------------------------------------

Json Frames_Json(const Frame_Values& values) {
    Json list = Json::array();
    for (std::size_t frame = 0; frame < values.frames(); ++frame) list.push_back(Json_Reals(values.Frame(frame)));
    return list;
}

Json Head_Json(const Numor_Head& numor) {
    return {{"numor", numor.numor},
            {"manip", numor.manip},
            {"icalc", numor.icalc},
            {"header", Json_Text(numor.header)},
            {"instrm", Json_Text(numor.instrm)},
            {"title", Json_Text(numor.title)},
            {"scantype", Json_Text(numor.scantype)},
            {"angles", Json_Reals(numor.angles)},
            {"scans", Json_Reals(numor.scans)},
            {"monitor", Json_Real(numor.monitor)},
            {"time", Json_Real(numor.time)},
            {"wave", Json_Real(numor.wave)},
            {"conditions", Json_Reals(numor.conditions)},
            {"nbdata", numor.nbdata},
            {"nframes", numor.nframes},
            {"nbang", numor.nbang},
            {"icdesc", numor.icdesc}};
}

Json Numor_Json(const Powder_Numor_Type& numor) { return Head_Json(numor); }

Json Numor_Json(const SXTAL_Numor_Type& numor) {
    Json run = Head_Json(numor);
    run["hmin"] = Json_Reals(numor.hmin);
    run["hmax"] = Json_Reals(numor.hmax);
    run["dh"] = Json_Reals(numor.dh);
    run["ub"] = Rows_Of_Reals(numor.ub);
    run["phi"] = Json_Real(numor.phi);
    run["chi"] = Json_Real(numor.chi);
    run["omega"] = Json_Real(numor.omega);
    run["gamma"] = Json_Real(numor.gamma);
    run["psi"] = Json_Real(numor.psi);
    run["coupling"] = Json_Real(numor.coupling);
    run["notice"] = Json_Text(numor.notice);
    return run;
}

template <class Numor>
Status Print_Run(const std::string& file, const std::string& instrument, const Put_Line& put) {
    Numor numor;
    if (Status status = Read_Numor(file, instrument, numor); status.failed) return With_File(status, file);
    Json run = Numor_Json(numor);
    run["tmc_ang"] = Frames_Json(numor.tmc_ang);
    run["counts"] = Frames_Json(numor.counts);
    put({{"numor", std::move(run)}});
    return Status::Done();
}

Status Print_Numor(const std::string& directory, Words words, const Put_Line& put) {
    if (words.size() != 2) return Status::Fail("usage: print numor FILE INSTRUMENT");
    const std::string file = In_Directory(directory, words[0]);
    return Is_SXTAL_Numor_Instrument(words[1]) ? Print_Run<SXTAL_Numor_Type>(file, words[1], put)
                                               : Print_Run<Powder_Numor_Type>(file, words[1], put);
}

// --- calibrations ------------------------------------------------------------------------------------------------------------------

// Cells as a list a detector.
template <class Cells, class One>
Json Detectors_Json(const Calibration_Detector_Type& cal, const Cells& cells, One one) {
    Json list = Json::array();
    for (int detector = 0; detector < cal.ndet; ++detector) {
        Json points = Json::array();
        for (int point = 0; point < cal.npoints_det; ++point) points.push_back(one(cells[cal.Cell(point, detector)]));
        list.push_back(std::move(points));
    }
    return list;
}

// Places of points count from 1.
Json Order_Json(const std::vector<int>& order) {
    Json list = Json::array();
    for (const int point : order) list.push_back(point + 1);
    return list;
}

Status Print_Calibration(const std::string& directory, Words words, const Put_Line& put) {
    if (words.size() != 2) return Status::Fail("usage: print calibration FILE INSTRUMENT");
    Calibration_Detector_Type cal;
    if (Status status = Read_Calibration_File(In_Directory(directory, words[0]), words[1], cal); status.failed) return status;
    put({{"calibration",
          {{"cal_instrument", Json_Text(cal.cal_instrument)},
           {"ndet", cal.ndet},
           {"npoints_det", cal.npoints_det},
           {"cal_pos", Json_Reals(cal.cal_pos)},
           {"cal_effic", Detectors_Json(cal, cal.cal_effic, [](float value) { return Json(Json_Real(value)); })},
           {"cal_active", Detectors_Json(cal, cal.cal_active, [](bool value) { return Json(value); })},
           {"cal_index", Order_Json(cal.cal_index)}}}});
    return Status::Done();
}

// --- instruments -------------------------------------------------------------------------------------------------------------------

Json Table_Json(const Real_Table& table) {
    Json list = Json::array();
    if (table.columns < 1) return list;
    const auto columns = static_cast<std::size_t>(table.columns);
    for (std::size_t at = 0; at + columns <= table.values.size(); at += columns)
        list.push_back(Json_Reals(std::span(table.values).subspan(at, columns)));
    return list;
}

// Where none was told all are 1, which millions of pixels need no list for.
Json Alphas_Json(const Diffractometer_Type& d) {
    constexpr long long most_listed = 1 << 16;
    const long long pixels = static_cast<long long>(d.np_horiz) * d.np_vert;
    if (!d.alphas.values.empty() || pixels < 1 || pixels > most_listed) return Table_Json(d.alphas);
    return Table_Json({d.np_horiz, d.np_vert, std::vector<float>(static_cast<std::size_t>(pixels), 1.0f)});
}

Json Times_Json(std::span<const std::vector<std::pair<float, float>>> motors) {
    Json list = Json::array();
    for (const auto& pairs : motors) {
        Json of_motor = Json::array();
        for (const auto& [range, time] : pairs) of_motor.push_back({Json_Real(range), Json_Real(time)});
        list.push_back(std::move(of_motor));
    }
    return list;
}

void Limits_Json(Json& record, const Diffractometer_Type& d) {
    const std::pair<const char*, float> limits[] = {{"d_min", d.d_min},
                                                    {"gamma_p_min", d.gamma_p_min},
                                                    {"gamma_p_max", d.gamma_p_max},
                                                    {"gamma_n_min", d.gamma_n_min},
                                                    {"gamma_n_max", d.gamma_n_max},
                                                    {"nu_min", d.nu_min},
                                                    {"nu_max", d.nu_max},
                                                    {"x_min", d.x_min},
                                                    {"x_max", d.x_max},
                                                    {"z_min", d.z_min},
                                                    {"z_max", d.z_max}};
    for (const auto& [name, value] : limits) record[name] = Json_Real(value);
}

// Of the motors those that the instrument has.
void Motors_Json(Json& record, const Diffractometer_Type& d) {
    record["num_ang"] = d.num_ang;
    record["ang_names"] = Json_Texts(Used(d.ang_names, d.num_ang));
    record["ang_limits"] = Rows_Of_Reals(Used(d.ang_limits, d.num_ang));
    record["ang_offsets"] = Json_Reals(Used(d.ang_offsets, d.num_ang));
    record["ang_velocity"] = Json_Reals(Used(d.ang_velocity, d.num_ang));
    record["range_time"] = Times_Json(Used(d.range_time, d.num_ang));
    record["num_disp"] = d.num_disp;
    record["disp_names"] = Json_Texts(Used(d.disp_names, d.num_disp));
    record["disp_limits"] = Rows_Of_Reals(Used(d.disp_limits, d.num_disp));
    record["disp_offsets"] = Json_Reals(Used(d.disp_offsets, d.num_disp));
}

Json Instrument_Json(const Diffractometer_Type& d) {
    Json record{{"info", Json_Text(d.info)},
                {"name_inst", Json_Text(d.name_inst)},
                {"geom", Json_Text(d.geom)},
                {"BL_frame", Json_Text(d.BL_frame)},
                {"dist_units", Json_Text(d.dist_units)},
                {"angl_units", Json_Text(d.angl_units)},
                {"detector_type", Json_Text(d.detector_type)},
                {"dist_samp_detector", Json_Real(d.dist_samp_detector)},
                {"wave", Json_Real(d.wave)},
                {"wave_min", Json_Real(d.wave_min)},
                {"wave_max", Json_Real(d.wave_max)},
                {"vert", Json_Real(d.vert)},
                {"horiz", Json_Real(d.horiz)},
                {"np_vert", d.np_vert},
                {"np_horiz", d.np_horiz},
                {"agap", Json_Real(d.agap)},
                {"cgap", Json_Real(d.cgap)},
                {"gamma_c", Json_Real(d.gamma_c)},
                {"nu_c", Json_Real(d.nu_c)},
                {"rot_order", Json_Text(d.rot_order)},
                {"tilt", Json_Reals(d.tilt)}};
    Limits_Json(record, d);
    record["igeom"] = d.igeom;
    record["ipsd"] = d.ipsd;
    for (const auto& [name, vector] : {std::pair{"e1", &d.e1}, {"e2", &d.e2}, {"e3", &d.e3}}) record[name] = Json_Reals(*vector);
    record["UB"] = Rows_Of_Reals(d.UB);
    record["UB_inverse"] = Rows_Of_Reals(d.UB_inverse);
    Motors_Json(record, d);
    record["det_offsets"] = Json_Reals(d.det_offsets);
    record["disp_centre"] = Json_Reals(d.disp_centre);
    record["alpha_file"] = Json_Text(d.alpha_file);
    record["alphas"] = Alphas_Json(d);
    record["resolution_surface"] = Table_Json(d.resolution_surface);
    return record;
}

// A file becomes the current instrument. As long as none is, the default stands in its place, which is not set by that.
Status Print_Instrument(const std::string& directory, Instrument_State& current, Words words, const Put_Line& put) {
    if (words.size() > 1) return Status::Fail("usage: print instrument [FILE]");
    std::vector<std::string> warnings;
    if (!words.empty())
        if (Status status = Read_Current_Instrm(In_Directory(directory, words[0]), current, warnings); status.failed) return status;
    Instrument_State shown = current;
    if (!current.Current_Instrm_Set) Set_Default_Instrument(shown);
    Json line{{"instrument", Instrument_Json(shown.Current_Instrm)}, {"Current_Instrm_Set", current.Current_Instrm_Set}};
    if (!words.empty()) line["warnings"] = Json_Texts(warnings);
    put(line);
    return Status::Done();
}

// --- files of runs -----------------------------------------------------------------------------------------------------------------

Status Print_Found(Data_Directories& directories, Words words, const Put_Line& put) {
    int numor = 0;
    std::optional<Reactor_Cycle> cycle;
    if (words.size() == 4) cycle.emplace();
    if ((words.size() != 2 && !cycle) || !Parse_Integer(words[0], numor) ||
        (cycle && (!Parse_Integer(words[2], cycle->year) || !Parse_Integer(words[3], cycle->cycle))))
        return Status::Fail("usage: print found NUMOR INSTRUMENT [YEAR CYCLE]");
    Found_Run found;
    if (Status status = Get_Absolute_Data_Path(directories, numor, words[1], cycle, found); status.failed) return status;
    put({{"found", {{"path", found.path}, {"actual_path", found.actual_path}}}});
    return Status::Done();
}

}  // namespace

std::vector<Topic> Instrument_Topics(const std::string& directory, Data_Directories& directories, Instrument_State& current) {
    return {{"numor", [directory](Words words, const Put_Line& put) { return Print_Numor(directory, words, put); }},
            {"calibration", [directory](Words words, const Put_Line& put) { return Print_Calibration(directory, words, put); }},
            {"instrument",
             [directory, &current](Words words, const Put_Line& put) { return Print_Instrument(directory, current, words, put); }},
            {"found", [&directories](Words words, const Put_Line& put) { return Print_Found(directories, words, put); }}};
}

}  // namespace vntl
