#include "solid/w3d_file.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <type_traits>

#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "solid/vec3.hpp"

namespace vntl {

namespace {

constexpr std::string_view first_line = "w3d 1", gap_word = "gap";
constexpr std::array<std::string_view, 6> mode_words = {"wireframe", "hidden_lines", "unlit", "flat", "gouraud", "phong"};

// What a file may ask for: far more than a solid of ours holds, and not too much to be drawn.
constexpr float farthest = 1e6f, nearest_eye = 1e-3f;
constexpr int most_sections = 200, most_sides = 200;
constexpr std::size_t most_rod_facets = 1'000'000, most_letters = 500;
constexpr float direction_tolerance = 1e-3f;

// ---- writing

class Lines {
public:
    template <class... Values>
    void Add(std::string_view word, const Values&... values) {
        text_ += word;
        (Value(values), ...);
        text_ += '\n';
    }
    std::string Text() { return std::move(text_); }

private:
    void Value(std::string_view word) { (text_ += ' ') += word; }
    void Value(const Vec3& at) {
        for (const float number : at) Value(number);
    }
    template <class Number>
    requires std::is_arithmetic_v<Number>
    void Value(Number number) {
        std::array<char, 32> digits;
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        Value(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
    }

    std::string text_;
};

constexpr std::array<std::pair<char, char>, 4> escapes = {{{'"', '"'}, {'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}}};  // what stands for what

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        const auto* const escape = std::ranges::find(escapes, c, &std::pair<char, char>::first);
        if (escape == escapes.end())
            quoted += c;
        else
            (quoted += '\\') += escape->second;
    }
    return quoted + '"';
}

// ---- reading

// What is wrong with a line; nullptr for nothing.
using Problem = const char*;
constexpr Problem no_problem = nullptr, bad_numbers = "its numbers are wrong", bad_material = "no such material";

class W3d_Reader {
public:
    explicit W3d_Reader(std::string_view text) : lines_(text) {}

    Status Read() {
        std::string_view line;
        if (!lines_.Next(line) || Trim(line) != first_line) return Status::Fail_File("this is no solid, or one of another version");
        while (!ended_ && lines_.Next(line)) {
            line = Trim(line);
            if (line.empty() || line.front() == '#') continue;
            if (const Problem problem = Take(line)) return Failure(problem);
        }
        if (!ended_) return Failure("the end is missing");
        while (lines_.Next(line))
            if (line = Trim(line); !line.empty() && line.front() != '#') return Failure("something stands behind the end");
        return has_eye_ && has_light_ ? Status::Done() : Failure("eye or light is missing");
    }
    W3d solid;
    W3d_View view;

private:
    Status Failure(Problem problem) const {
        return Status::Fail_File("line " + std::to_string(std::max(1, lines_.Number())) + ": " + problem);
    }

    Problem Take(std::string_view line) {
        rest_ = line;
        const std::string_view word = Word();
        struct Row {
            std::string_view word;
            Problem (W3d_Reader::*take)();
        };
        static constexpr Row rows[] = {
            {"v", &W3d_Reader::Vertex},    {"material", &W3d_Reader::Material}, {"eye", &W3d_Reader::Eye},
            {"light", &W3d_Reader::Light}, {"mode", &W3d_Reader::Mode},         {"background", &W3d_Reader::Background},
            {"edges", &W3d_Reader::Edges}, {"sheet", &W3d_Reader::Sheet},       {"rod", &W3d_Reader::Rod},
            {"text", &W3d_Reader::Text},   {"end", &W3d_Reader::End},
        };
        for (const Row& row : rows) {
            if (row.word != word) continue;
            const Problem problem = (this->*row.take)();
            return problem != no_problem || rest_.empty() ? problem : "something stands behind its numbers";
        }
        return "it begins with no word of a solid";
    }

    Problem Vertex() {
        if (solid.vertices.size() == max_w3d_vertices) return "too many vertices";
        Vec3 at;
        if (!Number(at[0])) return bad_numbers;
        const std::string_view before = rest_;
        if (!Number(at[1])) {
            rest_ = before;
            if (Word() != gap_word) return bad_numbers;
            at[1] = std::numeric_limits<float>::quiet_NaN();
        }
        if (!Number(at[2])) return bad_numbers;
        solid.vertices.push_back(at);
        return no_problem;
    }

    Problem Material() {
        int number = 0;
        Colour colour = 0;
        if (!Material_Number(number) || !Read_Colour(colour)) return bad_numbers;
        solid.materials[static_cast<std::size_t>(number - 1)] = colour;
        return no_problem;
    }
    Problem Eye() {
        has_eye_ = true;
        return Place(view.eye) && Length(view.eye) >= nearest_eye ? no_problem : bad_numbers;
    }
    Problem Light() {
        has_light_ = true;
        return Place(view.light) ? no_problem : bad_numbers;
    }
    Problem Mode() {
        const auto* const mode = std::ranges::find(mode_words, Word());
        if (mode == mode_words.end()) return "no such mode";
        view.mode = static_cast<Render_Mode>(mode - mode_words.begin());
        return no_problem;
    }
    Problem Background() { return Read_Colour(view.background) ? no_problem : bad_numbers; }
    Problem Edges() { return Read_Colour(view.edge_colour) ? no_problem : bad_numbers; }

    Problem Sheet() {
        constexpr int most = static_cast<int>(max_w3d_vertices);
        W3d_Sheet sheet;
        int first = 0;
        if (!Whole(first, 1, most) || !Whole(sheet.columns, 1, most) || !Whole(sheet.rows, 1, most)) return bad_numbers;
        if (!Material_Number(sheet.material)) return bad_material;
        sheet.first = static_cast<std::size_t>(first - 1);
        const std::size_t columns = static_cast<std::size_t>(sheet.columns), vertices = columns * static_cast<std::size_t>(sheet.rows);
        if (sheet.first < taken_ || sheet.first + vertices > solid.vertices.size()) return "its vertices do not stand before it";
        const Vec3* const at = solid.vertices.data() + sheet.first;
        for (std::size_t k = 0; k < vertices; ++k)
            if (at[k][0] != at[k % columns][0] || at[k][2] != at[k - k % columns][2]) return "its vertices stand in no columns and rows";
        if (!Runs_One_Way(columns, [at](std::size_t i) { return at[i][0]; }) ||
            !Runs_One_Way(vertices / columns, [at, columns](std::size_t k) { return at[k * columns][2]; }))
            return "its columns or rows neither rise nor fall";
        taken_ = sheet.first + vertices;
        solid.sheets.push_back(sheet);
        return no_problem;
    }
    template <class At>
    static bool Runs_One_Way(std::size_t lines, const At& at) {
        for (std::size_t i = 1; i < lines; ++i)
            if (at(i) == at(i - 1) || (at(i) > at(i - 1)) != (at(1) > at(0))) return false;
        return true;
    }

    Problem Rod() {
        W3d_Rod rod;
        if (!Place(rod.from) || !Place(rod.to) || !Number(rod.radius_from, 0) || !Number(rod.radius_to, 0)) return bad_numbers;
        if (!Whole(rod.sections, 1, most_sections) || !Whole(rod.sides, 3, most_sides)) return bad_numbers;
        if (!Material_Number(rod.material)) return bad_material;
        rod_facets_ += static_cast<std::size_t>(rod.sections * rod.sides);
        if (rod_facets_ > most_rod_facets) return "too many rods";
        solid.rods.push_back(rod);
        return no_problem;
    }

    Problem Text() {
        W3d_Text text;
        if (!Whole(text.font, 101, 104) || !Place(text.at) || !Place(text.along) || !Place(text.upward)) return bad_numbers;
        if (!Number(text.width, 0) || !Number(text.height, 0) || !Number(text.depth, 0)) return bad_numbers;
        const auto near = [](float value, float wanted) { return std::fabs(value - wanted) <= direction_tolerance; };
        if (!near(Length(text.along), 1) || !near(Length(text.upward), 1) || !near(Dot(text.along, text.upward), 0))
            return "its directions are not of length 1 at a right angle";
        if (!Material_Number(text.material)) return bad_material;
        if (!Unquoted(text.text)) return "its text is not in quotes";
        letters_ += Characters(text.text);
        if (letters_ > most_letters) return "too many letters";
        solid.texts.push_back(std::move(text));
        return no_problem;
    }

    Problem End() {
        ended_ = true;
        return no_problem;
    }

    std::string_view Word() {
        const std::string_view word = rest_.substr(0, rest_.find_first_of(" \t"));
        rest_ = Trim_Left(rest_.substr(word.size()));
        return word;
    }
    bool Number(float& value, float least = -farthest) {
        const char* const last = rest_.data() + rest_.size();
        const char* const end = Parse_Float(rest_.data(), last, value);
        return Behind(end) && value >= least && value <= farthest;
    }
    bool Whole(int& value, int least, int most) {
        const char* end = rest_.data();
        return Parse_Int(end, rest_.data() + rest_.size(), value) && Behind(end) && value >= least && value <= most;
    }
    // Goes on behind what was read, if something was, and it ended there.
    bool Behind(const char* end) {
        const std::size_t length = static_cast<std::size_t>(end - rest_.data());
        if (length == 0 || (length < rest_.size() && rest_[length] != ' ' && rest_[length] != '\t')) return false;
        rest_ = Trim_Left(rest_.substr(length));
        return true;
    }
    bool Place(Vec3& at) { return Number(at[0]) && Number(at[1]) && Number(at[2]); }
    bool Material_Number(int& number) { return Whole(number, 1, w3d_materials); }
    bool Read_Colour(Colour& colour) {
        std::array<int, 3> parts{};
        for (int& part : parts)
            if (!Whole(part, 0, 255)) return false;
        colour = WRGB(static_cast<unsigned>(parts[0]), static_cast<unsigned>(parts[1]), static_cast<unsigned>(parts[2]));
        return true;
    }
    bool Unquoted(std::string& text) {
        if (rest_.empty() || rest_.front() != '"') return false;
        std::string found;
        for (std::size_t i = 1; i < rest_.size(); ++i) {
            if (rest_[i] == '"') {
                rest_ = Trim_Left(rest_.substr(i + 1));
                text = To_Utf8(found);
                return true;
            }
            if (rest_[i] != '\\') {
                found += rest_[i];
                continue;
            }
            const auto* const escape = std::ranges::find(escapes, ++i < rest_.size() ? rest_[i] : ' ', &std::pair<char, char>::second);
            if (escape == escapes.end()) return false;
            found += escape->first;
        }
        return false;
    }

    Line_Cursor lines_;
    std::string_view rest_;  // of the line
    std::size_t taken_ = 0;  // vertices up to the last one of a sheet
    std::size_t rod_facets_ = 0, letters_ = 0;
    bool has_eye_ = false, has_light_ = false, ended_ = false;
};

}  // namespace

std::string W3d_Text_Of(const W3d& solid, const W3d_View& view) {
    Lines lines;
    const auto colour = [&lines](std::string_view word, Colour c) { lines.Add(word, Red(c), Green(c), Blue(c)); };
    lines.Add(first_line);
    for (int number = 1; number <= w3d_materials; ++number) {
        const Colour c = solid.Material(number);
        lines.Add("material", number, Red(c), Green(c), Blue(c));
    }
    lines.Add("eye", view.eye);
    lines.Add("light", view.light);
    lines.Add("mode", mode_words[static_cast<std::size_t>(view.mode)]);
    colour("background", view.background);
    colour("edges", view.edge_colour);
    for (const Vec3& at : solid.vertices) {
        if (std::isfinite(at[1]))
            lines.Add("v", at);
        else
            lines.Add("v", at[0], gap_word, at[2]);
    }
    for (const W3d_Sheet& sheet : solid.sheets) lines.Add("sheet", sheet.first + 1, sheet.columns, sheet.rows, sheet.material);
    for (const W3d_Rod& rod : solid.rods)
        lines.Add("rod", rod.from, rod.to, rod.radius_from, rod.radius_to, rod.sections, rod.sides, rod.material);
    for (const W3d_Text& text : solid.texts)
        lines.Add("text", text.font, text.at, text.along, text.upward, text.width, text.height, text.depth, text.material,
                  std::string_view(Quoted(text.text)));
    lines.Add("end");
    return lines.Text();
}

Status Read_W3d_Text(std::string_view text, W3d& solid, W3d_View& view) {
    W3d_Reader reader(text);
    Status status = reader.Read();
    if (status.failed) return status;
    solid = std::move(reader.solid);
    view = reader.view;
    return status;
}

// The first line is looked at before the rest is read: a huge file that is no solid costs nothing.
Status Read_W3d(const std::string& file, W3d& solid, W3d_View& view) {
    Text_File text;
    Status status = text.Open(file, 2 * first_line.size());
    if (status.failed) return status;
    if (Trim_Left(text.Text()).starts_with(first_line)) status = text.Open(file);
    if (status.failed) return status;
    status = Read_W3d_Text(text.Text(), solid, view);
    if (status.failed) status.message = "The solid cannot be read: " + file + ", " + status.message;
    return status;
}

}  // namespace vntl
