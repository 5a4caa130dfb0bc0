#include "app/script_print.hpp"

#include <algorithm>
#include <ostream>

#include "app/carry_list.hpp"
#include "app/command_table.hpp"
#include "charts/topics.hpp"
#include "commands/application.hpp"
#include "external/programs_topic.hpp"
#include "instrument/instrument_topics.hpp"
#include "session/converted_topic.hpp"
#include "session/space_group_topic.hpp"
#include "session/structure_topic.hpp"
#include "session/topics.hpp"
#include "toolkit/topics.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"
#include "views/views.hpp"

namespace vntl {

namespace {

// --- menu and toolbars -----------------------------------------------------------------------------------------------------------

Json Menu_Item(const Interface_State& state, const Command& command) {
    const auto& labels = state.labels;
    const auto own = labels.find(command.id);
    const std::string label = own != labels.end() ? own->second : Plain_Label(command.label);
    return {{"id", command.id},
            {"label", Json_Text(label)},
            {"enabled", state.Enabled(command.id)},
            {"checked", state.Checked(command.id)},
            {"built", command.built()}};
}

// Of the window selected last; a child's commands stand in its menu alone.
Json Child_Menu_Item(int id) {
    return {{"id", id},
            {"label", Json_Text(Plain_Label(WMenuGetString(id)))},
            {"enabled", WMenuGetState(id, menu_enabled) == 1},
            {"checked", WMenuGetState(id, menu_checked) == 1},
            {"built", true}};
}

// Of the window in front: one command, or all.
Status Print_Menu(const Interface_State& state, Words words, const Put_Line& put) {
    std::vector<int> ids;
    const int window = Window_Of(WindowFront());
    WindowSelect(window);
    if (window == main_window)
        for (const Command& command : Command_Table()) ids.push_back(command.id);
    else
        ids = WMenuCommands();
    if (!words.empty()) {
        int id = 0;
        if (words.size() > 1 || !Parse_Integer(words[0], id) || std::find(ids.begin(), ids.end(), id) == ids.end())
            return Status::Fail("there is no command " + words[0]);
        ids = {id};
    }
    for (const int id : ids) put(window == main_window ? Menu_Item(state, *Find_Command(id)) : Child_Menu_Item(id));
    return Status::Done();
}

Json Shown_Toolbars(const Interface_State& state) {
    constexpr std::array<int, 2> rows = {first_toolbar_row, second_toolbar_row};
    Json list = Json::array();
    for (const Toolbar_Resource& table : Toolbars())
        for (std::size_t bar = 0; bar < rows.size(); ++bar) {
            if (state.toolbars[bar] != table.number) continue;
            Json buttons = Json::array();
            for (const int command : table.commands)
                if (command != 0) buttons.push_back(command);
            list.push_back({{"number", table.number}, {"row", rows[bar]}, {"buttons", buttons}});
        }
    return list;
}

std::vector<Topic> Menu_Topics(const Interface_State& state) {
    return {{"menu", [&state](Words words, const Put_Line& put) { return Print_Menu(state, words, put); }},
            Plain_Topic("toolbars", [&state] {
                return Json{{"toolbars", Shown_Toolbars(state)}};
            })};
}

}  // namespace

void Write_Json_Line(std::ostream& output, const Json& object) {
    output << object.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
}

Status Print_State(Application& app, const std::string& directory, std::ostream& output, Words words) {
    if (words.empty()) return Status::Fail("usage: print WHAT");
    const Session& session = app.session;
    const Put_Line put = [&output](const Json& object) { Write_Json_Line(output, object); };
    for (const auto& topics :
         {Store_Topics(session.store), State_Topics(session), Window_Topics(), Menu_Topics(session.interface),
          Instrument_Topics(directory, app.directories, app.instrument),
          std::vector<Topic>{List_Topic(session), Programs_Topic(Suite_In_Use(session.config, session.prefs.environment)),
                             Space_Group_Topic(), Structure_Topic(directory), Converted_Topic(directory), Generic_Topic(app.generic),
                             Model_3D_Topic(app)},
          Viewer_Topics(app)})
        for (const Topic& topic : topics)
            if (topic.name == words.front()) return topic.print(words.subspan(1), put);
    return Status::Fail("there is nothing to print by the name of " + words.front());
}

}  // namespace vntl
