#include "session/pattern_json.hpp"

#include <algorithm>

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

}  // namespace

void Put_Pattern_Head(Json& object, const Diffraction_Pattern_Type& p) {
    object["title"] = Json_Text(p.title);
    object["radiation"] = Json_Text(p.radiation);
    object["scat_var"] = Json_Text(p.scat_var);
    object["legend_x"] = Json_Text(p.legend_x);
    object["legend_y"] = Json_Text(p.legend_y);
    object["instr"] = Json_Text(p.instr);
    object["filename"] = Json_Text(p.filename);
    object["filepath"] = Json_Text(p.filepath);
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
    for (const auto& [name, value] : reals) object[name] = Json_Real(value);
    object["bank"] = p.bank;
    object["npts"] = p.npts;
    object["npts_claimed"] = p.npts_claimed;
    const std::pair<const char*, bool> flags[] = {{"constant_step", p.constant_step},
                                                  {"has_y", p.has_y},
                                                  {"has_ycalc", p.has_ycalc},
                                                  {"has_bgr", p.has_bgr},
                                                  {"has_sigma", p.has_sigma},
                                                  {"sigma_is_variance", p.sigma_is_variance},
                                                  {"per_second", p.per_second},
                                                  {"al_x", p.al_x},
                                                  {"al_y", p.al_y},
                                                  {"al_ycalc", p.al_ycalc},
                                                  {"al_bgr", p.al_bgr},
                                                  {"al_sigma", p.al_sigma},
                                                  {"al_istat", p.al_istat}};
    for (const auto& [name, value] : flags) object[name] = value;
    object["conv"] = Json_Reals(p.conv);
}

void Put_Pattern_Arrays(Json& object, const Diffraction_Pattern_Type& p, int first, int last) {
    const auto from = static_cast<std::size_t>(first - 1), to = static_cast<std::size_t>(last);
    const std::pair<const char*, const std::vector<float>*> reals[] = {
        {"x", &p.x}, {"y", &p.y}, {"sigma", &p.sigma}, {"ycalc", &p.ycalc}, {"bgr", &p.bgr}};
    for (const auto& [name, values] : reals)
        if (!values->empty()) object[name] = Array(*values, from, to);
    if (!p.istat.empty()) object["istat"] = Array(p.istat, from, to);
    if (!p.nd.empty()) object["nd"] = Array(p.nd, from, to);
}

}  // namespace vntl
