// Rows of the store, as scripts print them.
#include "session/store.hpp"
#include "session/topics.hpp"

namespace vntl {

namespace {

template <typename T>
Json Array(const std::vector<T>& values, std::size_t first, std::size_t last) {
    Json array = Json::array();
    for (std::size_t i = first; i < std::min(last, values.size()); ++i) {
        if constexpr (std::is_floating_point_v<T>)
            array.push_back(Json_Real(values[i]));
        else
            array.push_back(values[i]);
    }
    return array;
}

void Pattern_Scalars(Json& row, const Diffraction_Pattern_Type& p) {
    row["title"] = Json_Text(p.title);
    row["radiation"] = Json_Text(p.radiation);
    row["scat_var"] = Json_Text(p.scat_var);
    row["legend_x"] = Json_Text(p.legend_x);
    row["legend_y"] = Json_Text(p.legend_y);
    row["instr"] = Json_Text(p.instr);
    row["filename"] = Json_Text(p.filename);
    row["filepath"] = Json_Text(p.filepath);
    const std::pair<const char*, float> reals[] = {{"xmin", p.xmin},
                                                   {"xmax", p.xmax},
                                                   {"ymin", p.ymin},
                                                   {"ymax", p.ymax},
                                                   {"scal", p.scal},
                                                   {"monitor", p.monitor},
                                                   {"norm_monitor", p.norm_monitor},
                                                   {"count_time", p.count_time},
                                                   {"step", p.step},
                                                   {"TSample", p.TSample},
                                                   {"TSetting", p.TSetting}};
    for (const auto& [name, value] : reals) row[name] = Json_Real(value);
    row["bank"] = p.bank;
    row["npts"] = p.npts;
    row["npts_claimed"] = p.npts_claimed;
    const std::pair<const char*, bool> flags[] = {{"constant_step", p.constant_step},
                                                  {"has_y", p.has_y},
                                                  {"has_ycalc", p.has_ycalc},
                                                  {"has_bgr", p.has_bgr},
                                                  {"has_sigma", p.has_sigma},
                                                  {"sigma_is_variance", p.sigma_is_variance},
                                                  {"al_x", p.al_x},
                                                  {"al_y", p.al_y},
                                                  {"al_ycalc", p.al_ycalc},
                                                  {"al_bgr", p.al_bgr},
                                                  {"al_sigma", p.al_sigma},
                                                  {"al_istat", p.al_istat}};
    for (const auto& [name, value] : flags) row[name] = value;
    row["conv"] = Json_Reals(p.conv);
}

void Info_Scalars(Json& row, const PRF_Info_Add_Type& info) {
    row["file_name"] = Json_Text(info.file_name);
    row["directory"] = Json_Text(info.directory);
    row["origin_note"] = Json_Text(info.origin_note);
    row["kind"] = Told(info.kind);
    row["format"] = Json_Text(info.format);
    row["nphases"] = info.nphases;
    row["nreflections"] = info.nreflections;
    row["chi2"] = Json_Real(info.chi2);
    row["x_shift_total"] = Json_Real(info.x_shift_total);
    row["y_mult_total"] = Json_Real(info.y_mult_total);
    row["nexcl"] = info.nexcl;
}

Json Data_Of_Row(const Profile_Store& store, int n, int first, int last) {
    const Diffraction_Pattern_Type& p = store.Pattern(n);
    const auto from = static_cast<std::size_t>(first - 1), to = static_cast<std::size_t>(last);
    Json row{{"row", n}};
    const std::pair<const char*, const std::vector<float>*> reals[] = {
        {"x", &p.x}, {"y", &p.y}, {"sigma", &p.sigma}, {"ycalc", &p.ycalc}, {"bgr", &p.bgr}};
    for (const auto& [name, values] : reals)
        if (!values->empty()) row[name] = Array(*values, from, to);
    if (!p.istat.empty()) row["istat"] = Array(p.istat, from, to);
    if (!p.nd.empty()) row["nd"] = Array(p.nd, from, to);
    return row;
}

Json Reflections_Of_Row(const Profile_Store& store, int n) {
    const PRF_Info_Add_Type& info = store.Info(n);
    Json list = Json::array();
    for (std::size_t i = 0; i < info.refl_position.size(); ++i)
        list.push_back({{"position", Json_Real(info.refl_position[i])},
                        {"phase", info.refl_phase[i]},
                        {"code", info.refl_code[i]},
                        {"tag", i < info.refl_tag.size() ? Json_Real(info.refl_tag[i]) : Json(0)},
                        {"label", Json_Text(info.refl_label[i])}});
    return {{"row", n}, {"reflections", list}};
}

Json Excluded_Of_Row(const Profile_Store& store, int n) {
    const PRF_Info_Add_Type& info = store.Info(n);
    Json list = Json::array();
    for (std::size_t i = 0; i < static_cast<std::size_t>(info.nexcl); ++i)
        list.push_back(Json::array({Json_Real(info.excl_min[i]), Json_Real(info.excl_max[i])}));
    return {{"row", n}, {"excluded", list}};
}

// The row that a word names; fails when it is no row of the store.
Status Row_Number(const Profile_Store& store, std::string_view what, Words words, int& row) {
    if (words.empty() || !Parse_Integer(words[0], row)) return Status::Fail("usage: print " + std::string(what) + " N");
    if (row < 1 || row > store.nperfiles()) return Status::Fail("there is no row " + words[0]);
    return Status::Done();
}

Status Print_Rows(const Profile_Store& store, Words words, const Put_Line& put) {
    if (!words.empty()) return Status::Fail("usage: print WHAT");
    for (int n = 1; n <= store.nperfiles(); ++n) {
        Json row{{"row", n}};
        Pattern_Scalars(row, store.Pattern(n));
        Info_Scalars(row, store.Info(n));
        row["shown"] = store.shown(n);
        row["show_ycalc_of"] = store.show_ycalc_of[static_cast<std::size_t>(n - 1)];
        row["show_bgr_of"] = store.show_bgr_of[static_cast<std::size_t>(n - 1)];
        put(row);
    }
    return Status::Done();
}

Status Print_Data(const Profile_Store& store, Words words, const Put_Line& put) {
    int row = 0;
    if (const Status status = Row_Number(store, "data", words, row); status.failed) return status;
    int first = 1, last = store.Pattern(row).npts;
    const bool range = words.size() == 3;
    if ((words.size() != 1 && !range) || (range && (!Parse_Integer(words[1], first) || !Parse_Integer(words[2], last))))
        return Status::Fail("usage: print data N [FIRST LAST]");
    if (first < 1 || last < first) return Status::Fail("points run from 1 upward");
    put(Data_Of_Row(store, row, first, last));
    return Status::Done();
}

Topic Topic_Of_A_Row(const Profile_Store& store, std::string_view name, Json (*make)(const Profile_Store&, int row)) {
    return {name, [&store, name, make](Words words, const Put_Line& put) {
                int row = 0;
                const Status status = Row_Number(store, name, words, row);
                if (status.ok()) put(make(store, row));
                return status;
            }};
}

}  // namespace

std::vector<Topic> Store_Topics(const Profile_Store& store) {
    return {{"rows", [&store](Words words, const Put_Line& put) { return Print_Rows(store, words, put); }},
            {"data", [&store](Words words, const Put_Line& put) { return Print_Data(store, words, put); }},
            Topic_Of_A_Row(store, "reflections", Reflections_Of_Row),
            Topic_Of_A_Row(store, "excluded", Excluded_Of_Row)};
}

}  // namespace vntl
