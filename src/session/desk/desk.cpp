#include "session/desk/desk.hpp"

#include <array>
#include <cstdio>
#include <type_traits>
#include <variant>
#include <vector>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "base/write_file.hpp"
#include "session/configuration.hpp"
#include "session/preferences.hpp"

namespace vntl {

namespace {

constexpr std::size_t largest_file = 1 << 16;
constexpr double least_export = 10, largest_export = 2000;  // millimetres

struct Remembered {
    std::string_view name;
    std::variant<bool Desk::*, int Desk::*, double Desk::*, std::string Desk::*> member;
    double lo = 0, hi = 0;  // of a number
};

const std::vector<Remembered>& Table() {
    static const std::vector<Remembered> table = {
        {"list_open", &Desk::list_open},
        {"list_width", &Desk::list_width, 0, 4000},
        {"style", &Desk::style},
        {"series_by_temperature", &Desk::series_by_temperature},
        {"export_width", &Desk::export_width, least_export, largest_export},
        {"export_height", &Desk::export_height, least_export, largest_export},
        {"export_dpi", &Desk::export_dpi, 20, 2400},
        {"export_style", &Desk::export_style},
        {"export_folder", &Desk::export_folder},
    };
    return table;
}

// To a thousandth.
std::string Rounded(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.3f", value);
    return text.data();
}

void Set(Desk& desk, const Remembered& row, std::string_view value) {
    double number = 0;
    const bool in_range = Parse_Real(value, number) && number >= row.lo && number <= row.hi;
    const auto set = [&](auto member) {
        auto& target = desk.*member;
        using Value = std::remove_reference_t<decltype(target)>;
        if constexpr (std::is_same_v<Value, bool>) {
            if (value == "0" || value == "1") target = value == "1";
        } else if constexpr (std::is_same_v<Value, std::string>) {
            target = value;
        } else if (in_range) {
            target = static_cast<Value>(number);
        }
    };
    std::visit(set, row.member);
}

std::string Value(const Desk& desk, const Remembered& row) {
    const auto text = [&](auto member) {
        const auto& value = desk.*member;
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::string>)
            return Replace_All(Replace_All(value, "\n", " "), "\r", " ");
        else if constexpr (std::is_same_v<std::decay_t<decltype(value)>, double>)
            return Rounded(value);
        else
            return std::to_string(static_cast<int>(value));
    };
    return std::visit(text, row.member);
}

}  // namespace

std::string Desk_Text(const Desk& desk) {
    std::string text;
    for (const Remembered& row : Table()) text.append(row.name).append(" ").append(Value(desk, row)).append("\n");
    return text;
}

void Read_Desk_Text(Desk& desk, std::string_view text) {
    Line_Cursor lines(text);
    for (std::string_view line; lines.Next(line);) {
        const std::size_t blank = line.find(' ');
        if (blank == std::string_view::npos) continue;
        for (const Remembered& row : Table())
            if (row.name == line.substr(0, blank)) Set(desk, row, Trim(line.substr(blank)));
    }
}

std::string Desk_File(const Configuration& config, const Environment_Prefs& environment) {
    const std::string directory = Settings_Directory(config, environment.quendrix_dir, Settings_Mode::global);
    return directory.empty() ? std::string() : config.Path(directory, "vantrelo.desk");
}

void Read_Desk(Desk& desk, const std::string& file) {
    Text_File text;
    if (!file.empty() && text.Open(file, largest_file).ok()) Read_Desk_Text(desk, text.Text());
}

void Write_Desk(const Desk& desk, const std::string& file) {
    Desk present;
    Read_Desk(present, file);
    if (file.empty() || Desk_Text(present) == Desk_Text(desk)) return;
    Replace_File(file, Desk_Text(desk));
}

}  // namespace vntl
