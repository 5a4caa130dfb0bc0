#include "charts/topics.hpp"

namespace vntl {

namespace {

Json Reals(const std::vector<float>& values) {
    Json list = Json::array();
    for (const float value : values) list.push_back(Json_Real(value));
    return list;
}

Json Texts(const std::vector<std::string>& texts) {
    Json list = Json::array();
    for (const std::string& text : texts) list.push_back(Json_Text(text));
    return list;
}

Json Curve(const Generic_Curve& curve) {
    return {{"legend", Json_Text(curve.legend)},
            {"x", Reals(curve.x)},
            {"y", Reals(curve.y)},
            {"sigma", Reals(curve.sigma)},
            {"has_errbar", curve.has_errbar},
            {"has_marker", curve.has_marker},
            {"no_line", curve.no_line},
            {"has_legend", curve.has_legend}};
}

Json Plots(const Generic_Plots& plots) {
    Json curves = Json::array();
    for (const Generic_Curve& curve : plots.curves) curves.push_back(Curve(curve));
    Json object = {{"plot_kind", Plot_Kind_Name(plots.plot_kind)}, {"title", Json_Text(plots.title)},
                   {"legend_x", Json_Text(plots.legend_x)},        {"legend_y", Json_Text(plots.legend_y)},
                   {"file_name", Json_Text(plots.file_name)},      {"nblocks", plots.nblocks},
                   {"param_names", Texts(plots.param_names)},      {"curves", curves}};
    if (plots.plot_kind == Plot_Kind::pie) object["slices"] = Texts(plots.slices);
    return {{"generic", object}};
}

}  // namespace

Topic Generic_Topic(const Generic_Plots& plots) {
    return Plain_Topic("generic", [&plots] { return Plots(plots); });
}

}  // namespace vntl
