// The model, as scripts print it.
#include "views/model_3d.hpp"
#include "views/views.hpp"

namespace vntl {

namespace {

Json Model(const Model3D& model, bool full) {
    const W3d_View view = View_Of(model);
    Json all{{"render_mode", model.render_mode},
             {"azimuth", Json_Real(model.view.azimuth)},
             {"elevation", Json_Real(model.view.elevation)},
             {"distance", Json_Real(model.view.distance)},
             {"eye", Json_Reals(view.eye)},
             {"light", Json_Reals(view.light)},
             {"scale", Json_Reals(model.scale)},
             {"spin_step", Json_Real(model.spin_step)},
             {"vertices", model.shown->vertices.size()},
             {"facets", model.shown->Facets()},
             {"model_colour", model.model_colour},
             {"edge_colour", model.edge_colour}};
    if (full) {
        all["points"] = Json::array();
        for (const Vec3& point : model.shown->vertices) all["points"].push_back(Json_Reals(point));
    }
    return {{"model3d", all}};
}

Status Print_Model(const Model3D& model, Words words, const Put_Line& put) {
    const bool full = words.size() == 1 && words[0] == "full";
    if (!words.empty() && !full) return Status::Fail("usage: print model3d [full]");
    if (model.shown == nullptr) return Status::Fail("no model is open");
    put(Model(model, full));
    return Status::Done();
}

}  // namespace

Topic Model_3D_Topic(const Application& app) {
    return {"model3d", [&app](Words words, const Put_Line& put) { return Print_Model(app.model, words, put); }};
}

}  // namespace vntl
