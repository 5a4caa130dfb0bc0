#include "session/desk/style_topic.hpp"

#include <type_traits>

#include "session/desk/look_table.hpp"
#include "session/desk/row_styles.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

Json Look_Json(const Look& look) {
    Json all;
    for (const Look_Row& row : Look_Table()) {
        const auto put = [&](auto member) {
            const auto& value = look.*member;
            if constexpr (std::is_same_v<std::decay_t<decltype(value)>, float>)
                all[std::string(row.name)] = Json_Real(value);
            else
                all[std::string(row.name)] = value;
        };
        std::visit(put, row.member);
    }
    return all;
}

Json Series_Json(const Session& session) {
    const Row_Styles styles(session.store, session.prefs, session.look, session.desk.series_by_temperature);
    if (!styles.Is_Series()) return nullptr;
    return {{"by_temperature", styles.By_Temperature()}, {"first", Json_Real(styles.First())}, {"last", Json_Real(styles.Last())}};
}

}  // namespace

Topic Style_Topic(const Session& session) {
    return Plain_Topic("style", [&session] {
        const Json style = {{"name", Json_Text(session.style.name)}, {"look", Look_Json(session.look)}, {"series", Series_Json(session)}};
        return Json{{"style", style}};
    });
}

}  // namespace vntl
