#include "charts/topics.hpp"

namespace vntl {

namespace {

Json Curve(const Generic_Curve& curve) {
    return {{"legend", Json_Text(curve.legend)}, {"x", Json_Reals(curve.x)},       {"y", Json_Reals(curve.y)},
            {"sigma", Json_Reals(curve.sigma)},  {"has_errbar", curve.has_errbar}, {"has_marker", curve.has_marker},
            {"no_line", curve.no_line},          {"has_legend", curve.has_legend}};
}

Json Plots(const Generic_Plots& plots) {
    Json curves = Json::array();
    for (const Generic_Curve& curve : plots.curves) curves.push_back(Curve(curve));
    Json object = {{"plot_kind", Plot_Kind_Name(plots.plot_kind)}, {"title", Json_Text(plots.title)},
                   {"legend_x", Json_Text(plots.legend_x)},        {"legend_y", Json_Text(plots.legend_y)},
                   {"file_name", Json_Text(plots.file_name)},      {"nblocks", plots.nblocks},
                   {"param_names", Json_Texts(plots.param_names)}, {"curves", curves}};
    if (plots.plot_kind == Plot_Kind::pie) object["slices"] = Json_Texts(plots.slices);
    return {{"generic", object}};
}

}  // namespace

Topic Generic_Topic(const Generic_Plots& plots) {
    return Plain_Topic("generic", [&plots] { return Plots(plots); });
}

}  // namespace vntl
