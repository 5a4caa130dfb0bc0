#include "session/desk/styles.hpp"

#include <algorithm>
#include <array>

#include "base/os.hpp"
#include "base/text.hpp"
#include "session/desk/own_settings.hpp"
#include "session/desk/style_texts.hpp"
#include "session/preference_table.hpp"
#include "session/session.hpp"
#include "session/settings_file.hpp"

namespace vntl {

namespace {

constexpr std::string_view settings_extension = ".set";

// What pictures show, and not how.
constexpr std::array<std::string_view, 4> of_contents = {"excl_show", "excl_ignore_sides", "hide_negative", "refl_live"};
constexpr std::array<std::string_view, 2> of_welcome_page = {"colour_a", "colour_b"};

// Texts are the user's words.
bool Is_Of_Style(const Preference& preference) {
    if (std::ranges::find(of_welcome_page, preference.name) != of_welcome_page.end()) return true;
    const bool of_picture = preference.page != Preference_Page::none && preference.page != Preference_Page::environment;
    return of_picture && preference.place.line > 0 && !std::holds_alternative<std::string>(preference.standard) &&
           std::ranges::find(of_contents, preference.name) == of_contents.end();
}

void Copy(const Preference& preference, const Preferences& from, Preferences& to) {
    std::visit([&](auto* target) { *target = std::get<std::remove_pointer_t<decltype(target)>>(Value_Of(preference, from)); },
               preference.target(to));
}

void Take_Style(const Preferences& from, Preferences& to) {
    for (const Preference& preference : Preference_Table())
        if (Is_Of_Style(preference)) Copy(preference, from, to);
}

const Style_Text* Built_In(std::string_view name) {
    for (const Style_Text& style : Style_Texts())
        if (style.name == name) return &style;
    return nullptr;
}

Status Read_Style(const std::string& name, Preferences& read, Look& look) {
    if (const Style_Text* style = Built_In(name)) return Read_Settings_Text(read, style->text, &look);
    Status status = Read_Preferences(read, name, &look);
    if (status.failed) status.message = "The style " + name + " cannot be used: " + status.message;
    return status;
}

void Check_Menu(Session& session) {
    constexpr std::array<int, 4> commands = {command::style_default, command::style_paper, command::style_screen, command::style_dark};
    for (std::size_t i = 0; i < commands.size(); ++i) session.interface.Check(commands[i], session.style.name == Style_Names()[i]);
}

void Put_In_Force(Session& session, std::string name) {
    session.style.name = std::move(name);
    if (session.style.name == default_style) session.style.own.reset();
    Check_Menu(session);
}

}  // namespace

const std::vector<std::string>& Style_Names() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> all = {std::string(default_style)};
        for (const Style_Text& style : Style_Texts()) all.emplace_back(style.name);
        return all;
    }();
    return names;
}

std::string Style_Name(std::string_view name) {
    for (const std::string& known : Style_Names())
        if (Equal_No_Case(known, Trim(name))) return known;
    return Equal_No_Case(Extension_Of(name), settings_extension) ? std::string(name) : std::string();
}

Status Load_Style(std::string_view name, Preferences& prefs, Look& look) {
    const std::string found = Style_Name(name);
    if (found.empty()) {
        std::string known;
        for (const std::string& style : Style_Names()) known += style + ", ";
        return Status::Fail("There is no style \"" + std::string(name) + "\". There are " + known + "and settings files (.set)");
    }
    Preferences read;
    Look read_look;
    if (found != default_style)
        if (const Status status = Read_Style(found, read, read_look); status.failed) return status;
    Take_Style(read, prefs);
    look = read_look;
    return Status::Done();
}

Status Style_Of_Session(const Session& session, std::string_view name, Preferences& prefs, Look& look) {
    Preferences present = session.prefs;
    Look present_look = session.look;
    if (Style_Name(name) != default_style) {
        if (const Status status = Load_Style(name, present, present_look); status.failed) return status;
    } else if (session.style.own != nullptr) {
        Take_Style(*session.style.own, present);
        present_look = session.style.own_look;
    }
    prefs = std::move(present);
    look = present_look;
    return Status::Done();
}

Status Use_Style(Session& session, std::string_view name) {
    const bool leaves_own = session.style.own == nullptr;
    const auto own = leaves_own ? std::make_shared<const Preferences>(session.prefs) : session.style.own;
    const Look own_look = leaves_own ? session.look : session.style.own_look;
    if (const Status status = Style_Of_Session(session, name, session.prefs, session.look); status.failed) return status;
    session.style.own = own;
    session.style.own_look = own_look;
    Put_In_Force(session, Style_Name(name));
    return Status::Done();
}

Status Choose_Style(Session& session, std::string_view name) {
    const Status status = Use_Style(session, name);
    if (status.ok()) session.desk.style = session.style.name;
    return status;
}

void Take_Settings(Session& session) {
    if (session.style.own != nullptr) session.desk.style = default_style;
    Put_In_Force(session, std::string(default_style));
}

void Settings_Saved(Session& session) {
    if (session.style.own == nullptr) return;
    auto own = std::make_shared<Preferences>();
    Own_Settings(session, *own, session.style.own_look);
    session.style.own = std::move(own);
}

}  // namespace vntl
