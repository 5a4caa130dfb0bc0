// The state of a fit, as scripts print it.
#include <type_traits>

#include "session/fit.hpp"
#include "session/session.hpp"

namespace vntl {

Json Fit_Json(const Session& session) {
    const Fit_State& fit = session.lists.fit;
    const auto each = [](const auto& values, auto member) {
        Json list = Json::array();
        for (const Fit_Value& value : values)
            if constexpr (std::is_same_v<decltype(member), int Fit_Value::*>)
                list.push_back(value.*member);
            else
                list.push_back(Json_Real(value.*member));
        return list;
    };
    const Fit_Kind kind = Kind_Of_Fit(session).value_or(Fit_Kind::constant_wavelength);
    const bool flight = kind == Fit_Kind::time_of_flight;
    Json peaks = Json::array();
    for (const Fit_Peak& peak : fit.peaks) {
        Json entry{{"pos", Json_Real(peak.pos.value)},
                   {"intensity", Json_Real(peak.intensity.value)},
                   {"shift_width", Json_Real(peak.shift_width.value)}};
        if (flight) entry["shift_alpha"] = Json_Real(peak.shift_alpha.value);
        if (flight) entry["shift_beta"] = Json_Real(peak.shift_beta.value);
        entry["shift_eta"] = Json_Real(peak.shift_eta.value);
        entry["active"] = peak.active ? 1 : 0;
        entry["marked"] = peak.marked;
        entry["half_x"] = Json_Real(peak.half_x);
        entry["half_y"] = Json_Real(peak.half_y);
        entry["flags"] = Json::array();
        entry["sd"] = Json::array();
        for (const Fit_Value* value : Values_Of(kind, peak)) {
            entry["flags"].push_back(value->flag);
            entry["sd"].push_back(Json_Real(value->sd));
        }
        peaks.push_back(std::move(entry));
    }
    Json background = Json::array();
    for (const Background_Mark& node : session.lists.background)
        background.push_back({{"x", Json_Real(node.x)}, {"y", Json_Real(node.y)}, {"flag", node.flag}, {"sd", Json_Real(node.sd)}});
    return {{"fit",
             {{"x_ini", Json_Real(fit.x_ini)},
              {"y_ini", Json_Real(fit.y_ini)},
              {"x_ini_set", fit.lower_set},
              {"x_fin", Json_Real(fit.x_fin)},
              {"y_fin", Json_Real(fit.y_fin)},
              {"x_fin_set", fit.upper_set},
              {"Nbac", session.lists.background.size()},
              {"Npeak", fit.peaks.size()},
              {"Ncyc", fit.Ncyc},
              {"lambda1", Json_Real(fit.lambda1)},
              {"lambda2", Json_Real(fit.lambda2)},
              {"ratio", Json_Real(fit.ratio.value)},
              {"ratio_flag", fit.ratio.flag},
              {"ratio_sd", Json_Real(fit.ratio.sd)},
              {"lambda_ratio", Json_Real(fit.lambda_ratio())},
              {"Inst", fit.Two_Wavelengths() ? 1 : 0},
              {"d2tof", Json_Real(fit.d2tof)},
              {"asym", each(fit.asym, &Fit_Value::value)},
              {"asym_flag", each(fit.asym, &Fit_Value::flag)},
              {"asym_sd", each(fit.asym, &Fit_Value::sd)},
              {"prof", each(fit.prof, &Fit_Value::value)},
              {"prof_flag", each(fit.prof, &Fit_Value::flag)},
              {"prof_sd", each(fit.prof, &Fit_Value::sd)},
              {"corrmax", fit.corrmax},
              {"constr", fit.constr},
              {"iw", fit.iw},
              {"percent", Json_Real(fit.percent)},
              {"reached", fit.reached},
              {"chi2", Json_Real(fit.chi2)},
              {"infout", fit.infout},
              {"peaks_ready", fit.peaks_ready},
              {"pik_loaded", fit.pik_loaded},
              {"fit_done", fit.done},
              {"peaks", peaks},
              {"background", background}}}};
}

}  // namespace vntl
