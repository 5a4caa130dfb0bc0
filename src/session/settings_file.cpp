// The settings file, see settings_file.hpp. Headings, lines of numbers and logicals, and lines of one text each:
//
//   <-- Main window Preferences -->
//     800  500   8571010  16711680  T
//   <-- Environment Preferences -->
//     F  T
//   /opt/suite
//
// A heading counts by its place alone. A line of numbers has all its columns filled, so that a line that was lost or cut is noticed; of a
// text the blanks behind it may be missing.
#include "session/settings_file.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/edit_descriptor.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "base/write_file.hpp"
#include "session/desk/styles.hpp"
#include "session/preference_table.hpp"

namespace vntl {

namespace {

constexpr std::size_t largest_file = 1 << 20;
constexpr int identity_line = 2, unzip_line = 13, refine_line = 14, run_line = 15, styles_heading = 16, last_line = 59;
constexpr std::string_view refine_mark = "qx2k";  // in the name of the refinement program
constexpr double largest_colour = 0xffffff;

// Lines that share a message, and the heading that the first of them may be.
struct Section_Row {
    int first, last;
    std::string_view message, heading = {};
};

constexpr Section_Row sections[] = {
    {1, 1, "Error reading line 1 of header", "<<<<< Preferences setting file (do not edit and modify) >>>>>"},
    {identity_line, identity_line, "Error reading line 2 of header"},
    {3, 3, "Error reading line 1 of main window preferences values", "<-- Main window Preferences -->"},
    {4, 4, "Error reading main window preferences values"},
    {5, 5, "Error reading title section environment", "<-- Environment Preferences -->"},
    {6, run_line, "Error reading enviroment preferences values"},
    {styles_heading, styles_heading, "Error reading title section profiles data", "<-- Profile Data Preferences -->"},
    {17, 28, "Error reading setting of profiles data"},
    {29, 29, "Error reading title section graphic 2D", "<-- Graph 2D Preferences -->"},
    {30, 38, "Error reading graphic 2D preferences values"},
    {39, 43, "Error reading PRF preferences values", "<-- Preferences Profile PRF-->"},
    {44, 48, "Error reading graphic 2D contour preferences values", "<-- Graph 2D Contour Preferences -->"},
    {49, 51, "Error reading graphic 3D preferences values", "<-- Graph 3D Preferences -->"},
    {52, 55, "Error reading graphic 3D Surface preferences values", "<-- Graph 3D Surface Preferences -->"},
    {56, last_line, "Error reading QuickView preferences values", "<-- QuickView PRF Preferences -->"},
};

const Section_Row& Section_Of(int line) {
    return *std::find_if(std::begin(sections), std::end(sections), [line](const Section_Row& row) { return line <= row.last; });
}

// The values of one line in their order; a heading has none.
struct Settings_Line {
    std::vector<const Preference*> items;
    Edit_Format format;

    bool Is_Text() const { return !items.empty() && std::holds_alternative<std::string>(items.front()->standard); }
};

std::vector<Settings_Line> Lines_Of_Table() {
    std::map<std::pair<int, int>, const Preference*> places;
    for (const Preference& preference : Preference_Table())
        for (const Settings_Place place : {preference.place, preference.second_place}) places[{place.line, place.item}] = &preference;
    std::array<std::vector<const Preference*>, last_line + 1> items;
    for (const auto& [place, preference] : places)
        if (place.first > 0) items[static_cast<std::size_t>(place.first)].push_back(preference);
    std::vector<Settings_Line> lines;
    for (const auto& row : items) {
        std::string edits;
        for (const Preference* preference : row) edits.append(edits.empty() ? "" : ",").append(preference->edit);
        lines.push_back({row, Edit_Format("(" + (row.empty() ? "a" : edits) + ")")});
    }
    return lines;
}

const Settings_Line& Line_Of_File(int number) {
    static const std::vector<Settings_Line> lines = Lines_Of_Table();
    return lines[static_cast<std::size_t>(number)];
}

// --- writing -------------------------------------------------------------------------------------------------------------------------

std::string Heading(int number, const Configuration& config) {
    if (number == identity_line) return config.program_name + ' ' + config.program_version + ' ' + config.program_date;
    return std::string(Section_Of(number).heading);
}

// The names of programs begin with their first letter.
bool Is_Shifted_Left(const Preference& preference) { return preference.place.line == refine_line || preference.place.line == run_line; }

// Cut or filled to its width. A control character would break the line.
std::string Padded(const Preference& preference, const std::string& value) {
    std::string text = To_Utf8(value);
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, ' ');
    if (Is_Shifted_Left(preference)) text = Trim_Left(text);
    const auto width = static_cast<std::size_t>(preference.hi);
    text = std::string(Cut(text, width));
    return text.append(width - Characters(text), ' ');
}

// --- reading -------------------------------------------------------------------------------------------------------------------------

bool Is_Filled(const Edit_Format& format, std::string_view line) {
    std::size_t at = 0;
    for (const Edit_Item& item : format.items()) {
        const auto width = static_cast<std::size_t>(item.width);
        const std::string_view field = at < line.size() ? line.substr(at, width) : std::string_view();
        if (field.size() < width || Trim(field).empty() || Contains(field, ",")) return false;
        at += width;
    }
    return true;
}

bool Read_Numbers(const Settings_Line& line, std::string_view text, Preferences& prefs) {
    if (!Is_Filled(line.format, text)) return false;
    Edit_Reader reader(line.format, text);
    for (const Preference* preference : line.items) {
        const auto read = [&](auto* value) {
            using Value = std::remove_pointer_t<decltype(value)>;
            if constexpr (std::is_same_v<Value, bool>) {
                reader.Read(*value);
            } else if constexpr (!std::is_same_v<Value, std::string>) {
                constexpr bool is_colour = std::is_same_v<Value, Colour>;
                double number = 0;  // which has room for every number of ten columns
                if (!reader.Read(number)) return;
                *value = static_cast<Value>(
                    std::clamp(number, is_colour ? 0.0 : double(preference->lo), is_colour ? largest_colour : double(preference->hi)));
            }
        };
        std::visit(read, preference->target(prefs));
    }
    return reader.status().ok();
}

bool Read_Text(const Preference& preference, std::string_view line, Preferences& prefs) {
    const std::string kept = Kept_Text(line, static_cast<std::size_t>(preference.hi));
    std::string_view text = Trim_Right(kept);
    if (Is_Shifted_Left(preference)) {
        text = Trim_Left(text);
        if (text.empty()) return true;  // a blank line leaves the program of the system
    }
    return Set_Preference(prefs, preference.name, text).ok();
}

bool Read_Line(const Settings_Line& line, std::string_view text, Preferences& prefs) {
    if (line.items.empty()) return true;
    return line.Is_Text() ? Read_Text(*line.items.front(), text, prefs) : Read_Numbers(line, text, prefs);
}

// Which of the two lines before the heading of the styles stand in a file: older ones lack one or both.
struct Optional_Lines {
    bool refine = true, run = true;
};

// Looks ahead from the first of them. A heading that somebody changed is known by its "<"; nothing tells whose a single line is but the
// name of the refinement program.
Optional_Lines Find_Optional_Lines(Line_Cursor cursor) {
    std::vector<std::string_view> lines;
    for (std::string_view line; lines.size() < 3 && cursor.Next(line);) lines.push_back(line);
    const auto find = [&](auto is_heading) { return std::find_if(lines.begin(), lines.end(), is_heading); };
    auto heading = find([](std::string_view line) { return Trim(line) == Section_Of(styles_heading).heading; });
    if (heading == lines.end()) heading = find([](std::string_view line) { return Contains(line, "<"); });
    if (heading == lines.end() || heading - lines.begin() == 2) return {true, true};
    const bool one = heading != lines.begin(), of_refine = one && Contains(lines.front(), refine_mark);
    return {of_refine, one && !of_refine};
}

bool Is_There(int line, const Optional_Lines& optional) {
    return (line != refine_line || optional.refine) && (line != run_line || optional.run);
}

// A line is missing before the optional ones when the refinement program took the place of the last one before them.
bool Moved_Up(const Optional_Lines& optional, const Preferences& prefs) {
    return !(optional.refine && optional.run) && Contains(prefs.environment.cmd_unzip, refine_mark);
}

// What the title tells of a saturation belonged to another run of the program.
void Drop_Saturation_Mark(std::string& title) {
    const std::size_t at = title.find(saturation_mark);
    if (at != std::string::npos) title = std::string(Trim_Right(std::string_view(title).substr(0, at)));
}

}  // namespace

std::string Settings_File(const Configuration& config, const Preferences& prefs, Settings_Mode mode) {
    const std::string directory = Settings_Directory(config, prefs.environment.quendrix_dir, mode);
    return directory.empty() ? std::string() : config.Path(directory, config.set_file);
}

std::string Settings_Text(const Preferences& prefs, const Configuration& config, const Look& look) {
    std::string text;
    for (int number = 1; number <= last_line; ++number) {
        const Settings_Line& line = Line_Of_File(number);
        Edit_Writer writer(line.format, text);
        if (line.items.empty()) writer.Write(Heading(number, config));
        for (const Preference* preference : line.items) {
            const auto write = [&](const auto& value) {
                if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::string>)
                    writer.Write(Padded(*preference, value));
                else
                    writer.Write(value);
            };
            std::visit(write, Value_Of(*preference, prefs));
        }
        writer.Finish();
    }
    return text + Look_Text(look);
}

Status Write_Preferences(const Preferences& prefs, const Configuration& config, Settings_Mode mode, const Look& look) {
    const std::string failure = "Unable to write setting file", file = Settings_File(config, prefs, mode);
    if (file.empty()) return Status::Fail_File(failure);
    Make_Home_Settings(config);
    return Replace_File(file, Settings_Text(prefs, config, look)) ? Status::Done() : Status::Fail_File(failure + ": " + file);
}

Status Read_Settings_Text(Preferences& prefs, std::string_view text, Look* look) {
    Preferences read = prefs;
    Optional_Lines optional;
    Line_Cursor cursor(text);
    for (int number = 1; number <= last_line; ++number) {
        if (number == refine_line) optional = Find_Optional_Lines(cursor);
        if (number == refine_line && Moved_Up(optional, read)) return Status::Fail_File(Section_Of(unzip_line).message);
        if (!Is_There(number, optional)) continue;
        std::string_view line;
        if (!cursor.Next(line) || !Read_Line(Line_Of_File(number), line, read)) return Status::Fail_File(Section_Of(number).message);
    }
    Drop_Saturation_Mark(read.contour.contour_title);
    prefs = std::move(read);
    if (look == nullptr) return Status::Done();
    *look = Look();
    Read_Look_Text(*look, cursor.Rest());
    return Status::Done();
}

Status Read_Preferences(Preferences& prefs, const std::string& file, Look* look) {
    Text_File text;
    if (text.Open(file, largest_file + 1).failed || text.Text().size() > largest_file)
        return Status::Fail_File("Unable to read setting file");
    return Read_Settings_Text(prefs, text.Text(), look);
}

}  // namespace vntl
