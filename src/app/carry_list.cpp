#include "app/carry_list.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "app/command_table.hpp"
#include "base/conversions.hpp"
#include "base/text.hpp"
#include "commands/application.hpp"
#include "session/desk/pattern_list.hpp"
#include "toolkit/row_list.hpp"

namespace vntl {

namespace {

constexpr int menu_commands[] = {command::show_chosen,
                                 command::hide_chosen,
                                 command::show_all,
                                 0,
                                 command::rename_pattern,
                                 command::delete_chosen,
                                 0,
                                 command::sort_profiles,
                                 command::copy_profile,
                                 command::offset_align,
                                 command::scale_y,
                                 command::scale_x,
                                 0,
                                 command::file_information};

Row_List_Resource Resource() {
    Row_List_Resource list{"Patterns", "No pattern is open",  {"Name", "Points", "T (K)", "\u03bb (\u00c5)"},
                           {},         command::pattern_list, command::delete_chosen};
    for (const int id : menu_commands) list.menu.push_back(Menu_Entry_Of(id));
    return list;
}

std::string Number(float value) { return value > 0 ? IRealToString(value) : std::string(); }

std::vector<Row_List_Row> Texts(const std::vector<Listed_Row>& rows) {
    std::vector<Row_List_Row> texts;
    texts.reserve(rows.size());
    for (const Listed_Row& row : rows)
        texts.push_back(
            {row.shown, row.colour, {row.name, std::to_string(row.points), Number(row.temperature), Number(row.wavelength)}, row.file});
    return texts;
}

struct Word {
    std::string_view word, usage;
    Message_Kind kind;
};
constexpr std::array<Word, 6> words_of_kinds = {{{"choose", "list choose [N ...]", Message_Kind::list_chosen},
                                                 {"tick", "list tick N ... on|off", Message_Kind::list_ticked},
                                                 {"move", "list move up|down|N ... before M", Message_Kind::list_moved},
                                                 {"rename", "list rename N TEXT", Message_Kind::list_renamed},
                                                 {"point", "list point N", Message_Kind::list_pointed},
                                                 {"width", "list width N", Message_Kind::list_width}}};

constexpr int largest_width = 4000;  // pixels, as the desk remembers it

using List = std::vector<std::string>;

bool Numbers(List::const_iterator first, List::const_iterator last, std::vector<int>& numbers) {
    for (; first != last; ++first) {
        int number = 0;
        if (!Parse_Integer(*first, number)) return false;
        numbers.push_back(number);
    }
    return true;
}

// Behind the first word.
bool Take_Words(Message_Kind kind, const List& rest, WIN_MESSAGE& record) {
    const std::size_t n = rest.size();
    switch (kind) {
        case Message_Kind::list_chosen:
            return Numbers(rest.begin(), rest.end(), record.rows);
        case Message_Kind::list_ticked:
            if (n < 2 || (rest.back() != "on" && rest.back() != "off")) return false;
            record.value1 = rest.back() == "on" ? 1 : 0;
            return Numbers(rest.begin(), rest.end() - 1, record.rows);
        case Message_Kind::list_moved:
            record.value2 = n != 1 ? 0 : rest[0] == "up" ? -1 : rest[0] == "down" ? 1 : 0;
            if (record.value2 != 0) return true;
            return n >= 3 && rest[n - 2] == "before" && Parse_Integer(rest.back(), record.value1) &&
                   Numbers(rest.begin(), rest.end() - 2, record.rows);
        case Message_Kind::list_renamed:
            if (n != 2) return false;
            record.files = {rest[1]};
            return Parse_Integer(rest[0], record.value1);
        default:
            return n == 1 && Parse_Integer(rest[0], record.value1);
    }
}

Status Check_Rows(const Session& session, Message_Kind kind, const WIN_MESSAGE& record) {
    const int rows = session.store.nperfiles();
    const auto fail = [](int row) { return Status::Fail("there is no row " + std::to_string(row)); };
    for (const int row : record.rows)
        if (row < 1 || row > rows) return fail(row);
    const bool place = kind == Message_Kind::list_moved && record.value2 == 0;
    if (kind == Message_Kind::list_width && (record.value1 < 1 || record.value1 > largest_width))
        return Status::Fail("a list cannot have that width");
    if (kind == Message_Kind::list_renamed && (record.value1 < 1 || record.value1 > rows)) return fail(record.value1);
    if (kind == Message_Kind::list_pointed && (record.value1 < 0 || record.value1 > rows)) return fail(record.value1);
    if (place && (record.value1 < 1 || record.value1 > rows + 1)) return fail(record.value1);
    return Status::Done();
}

Json Row_Json(const Session& session, const Listed_Row& row, int number) {
    return {{"row", number},
            {"shown", row.shown},
            {"colour", row.colour},
            {"text", Json_Text(row.name)},
            {"points", row.points},
            {"temperature", Json_Real(row.temperature)},
            {"wavelength", Json_Real(row.wavelength)},
            {"chosen", session.store.is_chosen(number)}};
}

// What the session has for the list, and beside it what the window shows.
Json List_Json(const Session& session) {
    const std::vector<Listed_Row> listed = Listed_Rows(session);
    const Row_List_View view = (WindowSelect(main_window), Describe_List());
    Json rows = Json::array();
    for (std::size_t i = 0; i < listed.size(); ++i) rows.push_back(Row_Json(session, listed[i], static_cast<int>(i) + 1));
    return {
        {"list", session.desk.list_open},
        {"width", view.width},
        {"pointed", session.plot.pointed_row},
        {"rows", std::move(rows)},
        {"carried", view.rows == Texts(listed) && view.chosen == session.store.Chosen_Rows() && view.pointed == session.plot.pointed_row}};
}

}  // namespace

bool Carry_List(Application& app, bool rows_stay) {
    const Session& session = app.session;
    WindowSelect(main_window);
    List_On_Window& on_window = app.list;
    const bool open = session.desk.list_open, was_open = WListIsOpen();
    if (!open) {
        if (was_open) WListClose();
        on_window = {};
        return was_open;
    }
    const bool other_width = !was_open || on_window.width != session.desk.list_width;
    if (other_width) WListOpen(Resource(), session.desk.list_width);
    on_window.width = session.desk.list_width;
    if (!was_open || !rows_stay) {
        std::vector<Listed_Row> rows = Listed_Rows(session);
        if (!was_open || rows != on_window.rows) {
            WListPut(Texts(rows));
            on_window.rows = std::move(rows);
        }
    }
    WListChoose(session.store.Chosen_Rows());
    WListPoint(session.plot.pointed_row);
    return other_width;
}

Status List_Message(const Session& session, const std::vector<std::string>& words, Message& message) {
    const auto known = std::find_if(words_of_kinds.begin(), words_of_kinds.end(),
                                    [&](const Word& row) { return words.size() > 1 && row.word == words[1]; });
    if (known == words_of_kinds.end()) return Status::Fail("usage: list open|close|choose|tick|move|rename|point|width ...");
    message = {known->kind, {}};
    if (!Take_Words(known->kind, {words.begin() + 2, words.end()}, message.record))
        return Status::Fail("usage: " + std::string(known->usage));
    return Check_Rows(session, known->kind, message.record);
}

std::vector<std::string> List_Words(const Message& message) {
    const WIN_MESSAGE& record = message.record;
    const auto known =
        std::find_if(words_of_kinds.begin(), words_of_kinds.end(), [&](const Word& row) { return row.kind == message.kind; });
    if (known == words_of_kinds.end()) return {};
    List words = {"list", std::string(known->word)};
    for (const int row : record.rows) words.push_back(std::to_string(row));
    const std::string value = std::to_string(record.value1);
    if (message.kind == Message_Kind::list_ticked) words.push_back(record.value1 != 0 ? "on" : "off");
    if (message.kind == Message_Kind::list_moved && record.rows.empty()) words.push_back(record.value2 < 0 ? "up" : "down");
    if (message.kind == Message_Kind::list_moved && !record.rows.empty()) words.insert(words.end(), {"before", value});
    if (message.kind == Message_Kind::list_renamed) words.insert(words.end(), {value, record.files.empty() ? "" : record.files.front()});
    if (message.kind == Message_Kind::list_pointed || message.kind == Message_Kind::list_width) words.push_back(value);
    return words;
}

Topic List_Topic(const Session& session) {
    return Plain_Topic("list", [&session] { return List_Json(session); });
}

}  // namespace vntl
