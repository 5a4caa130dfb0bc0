// Hall symbols: lattice, inversion, up to four rotations with translations, and a change of basis.
#include <cmath>
#include <optional>

#include "base/scan.hpp"
#include "base/text.hpp"
#include "crystal/close_group.hpp"
#include "crystal/space_group.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_hall_rotations = 4;
constexpr std::string_view axis_letters = "XYZ'\"*", translation_letters = "ABCNUVWD";

// The rotation by 360/order degrees about z, and the two-fold axes a-b and a+b across it.
constexpr Rotation two_z = {-1, 0, 0, 0, -1, 0, 0, 0, 1}, three_z = {0, -1, 0, 1, -1, 0, 0, 0, 1}, four_z = {0, -1, 0, 1, 0, 0, 0, 0, 1},
                   six_z = {1, -1, 0, 1, 0, 0, 0, 0, 1}, two_a_less_b = {0, -1, 0, -1, 0, 0, 0, 0, -1},
                   two_a_and_b = {0, 1, 0, 1, 0, 0, 0, 0, -1}, three_cube = {0, 0, 1, 1, 0, 0, 0, 1, 0};

// The rotation about x or y that is the given one about z.
Rotation About(const Rotation& about_z, char axis) {
    const int shift = axis == 'X' ? 1 : axis == 'Y' ? 2 : 0;
    Rotation turned;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            turned[static_cast<std::size_t>((i + shift) % 3 * 3 + (j + shift) % 3)] = about_z[static_cast<std::size_t>(i * 3 + j)];
    return turned;
}

Status Wrong_Axis() { return Status::Fail("Axes rotation wrong"); }

// One rotation of the symbol: "-4BD", "2\"C", "31".
class Hall_Rotation {
public:
    Hall_Rotation(char previous_axis, int previous_order, std::size_t place)
        : main_axis_(previous_axis), previous_order_(previous_order), place_(place) {}

    Status Read(std::string_view text, Seitz& seitz) {
        const bool improper = text.starts_with('-');
        if (improper) text.remove_prefix(1);
        if (text.empty() || !Contains("12346", text.substr(0, 1))) return Wrong_Axis();
        order_ = text.front() - '0';
        text.remove_prefix(1);
        char axis = Usual_Axis();
        if (!text.empty() && Contains(axis_letters, text.substr(0, 1))) {
            axis = text.front();
            text.remove_prefix(1);
        }
        if (!Set_Rotation(axis)) return Wrong_Axis();
        if (improper) rot_ = -rot_;
        std::array<int, 3> tr = {};
        for (const char c : text)
            if (!Add_Translation(c, tr)) return Wrong_Axis();
        seitz.rot = rot_;
        for (std::size_t i = 0; i < 3; ++i) seitz.tr[i] = static_cast<std::int8_t>(tr[i] % twelfths);
        return Status::Done();
    }

    char Main_Axis() const { return main_axis_; }
    int Order() const { return order_; }

private:
    // The first rotation is along c; a second one of order 2 along a behind 2 and 4, and along a-b behind 3 and 6; a third one of order 3
    // along the diagonal of the cube.
    char Usual_Axis() const {
        if (order_ == 1 || place_ == 0) return 'Z';
        if (place_ == 1 && order_ == 2) return previous_order_ == 2 || previous_order_ == 4 ? 'X' : '\'';
        return order_ == 3 ? '*' : 'Z';
    }

    bool Set_Rotation(char axis) {
        if (axis == '*') {
            rot_ = three_cube;
            return order_ == 3;
        }
        if (axis == '\'' || axis == '"') {
            rot_ = About(axis == '"' ? two_a_and_b : two_a_less_b, main_axis_);
            return order_ == 2;
        }
        if (order_ != 1) main_axis_ = axis;
        rot_ = order_ == 1 ? no_rotation : About(order_ == 2 ? two_z : order_ == 3 ? three_z : order_ == 4 ? four_z : six_z, axis);
        principal_ = order_ != 1;
        return true;
    }

    // A digit is a screw along the axis, in parts of its order.
    bool Add_Translation(char c, std::array<int, 3>& tr) const {
        if (c >= '1' && c <= '5') {
            if (!principal_ || c - '0' >= order_) return false;
            tr[static_cast<std::size_t>(main_axis_ - 'X')] += twelfths / order_ * (c - '0');
            return true;
        }
        constexpr std::array<std::array<int, 3>, 8> translations = {
            {{6, 0, 0}, {0, 6, 0}, {0, 0, 6}, {6, 6, 6}, {3, 0, 0}, {0, 3, 0}, {0, 0, 3}, {3, 3, 3}}};
        const std::size_t letter = translation_letters.find(c);
        if (letter == std::string_view::npos) return false;
        for (std::size_t i = 0; i < 3; ++i) tr[i] += translations[letter][i];
        return true;
    }

    char main_axis_;
    int previous_order_, order_ = 1;
    std::size_t place_;
    bool principal_ = false;
    Rotation rot_ = no_rotation;
};

using Matrix = std::array<std::array<double, 3>, 3>;

// x' = matrix x + shift.
struct Change_Of_Basis {
    Matrix matrix = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    std::array<double, 3> shift = {};
};

// Sums of terms "1/2x", "-y", "0.25", with an optional "*" between number and letter.
bool Read_Row(std::string_view text, std::array<double, 3>& row, double& shift) {
    double sign = 1;
    while (!Trim(text).empty()) {
        text = Trim(text);
        if (text.front() == '+' || text.front() == '-') {
            sign = text.front() == '-' ? -1 : 1;
            text.remove_prefix(1);
            continue;
        }
        const std::size_t digits = std::min(text.find_first_not_of("0123456789./"), text.size());
        double value = 1;
        if (digits > 0) {
            const std::string_view number = text.substr(0, digits);
            const std::size_t slash = number.find('/');
            double divisor = 1;
            if (!Parse_Real(number.substr(0, slash), value)) return false;
            if (slash != std::string_view::npos && (!Parse_Real(number.substr(slash + 1), divisor) || divisor == 0)) return false;
            value /= divisor;
            text.remove_prefix(digits);
            if (text.starts_with('*')) text.remove_prefix(1);
        }
        const std::size_t letter = text.empty() ? std::string_view::npos : std::string_view("XYZ").find(text.front());
        if (letter != std::string_view::npos) {
            row[letter] += sign * value;
            text.remove_prefix(1);
        } else if (digits > 0)
            shift += sign * value;
        else
            return false;
        sign = 1;
    }
    return true;
}

bool Read_Change(std::string_view text, Change_Of_Basis& change) {
    if (text.find(',') == std::string_view::npos) {
        std::vector<std::string_view> words;
        if (Get_Words(text, words, 4, 20).failed || words.size() != 3) return false;
        for (std::size_t i = 0; i < 3; ++i) {
            int value = 0;
            if (!Parse_Integer(words[i], value)) return false;
            change.shift[i] = value / static_cast<double>(twelfths);
        }
        return true;
    }
    change.matrix = {};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t comma = text.find(',');
        if ((comma == std::string_view::npos) != (i == 2) || !Read_Row(text.substr(0, comma), change.matrix[i], change.shift[i]))
            return false;
        text.remove_prefix(std::min(text.size(), comma + 1));
    }
    return true;
}

double Determinant(const Matrix& m) {
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

Matrix Inverse(const Matrix& m) {
    Matrix inverse;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            inverse[j][i] =
                (m[(i + 1) % 3][(j + 1) % 3] * m[(i + 2) % 3][(j + 2) % 3] - m[(i + 1) % 3][(j + 2) % 3] * m[(i + 2) % 3][(j + 1) % 3]) /
                Determinant(m);
    return inverse;
}

// A value as the whole number that it must be.
std::optional<int> Whole(double value) {
    const double whole = std::round(value);
    if (!(std::abs(value - whole) < 1e-6) || std::abs(whole) > 1e4) return {};
    return static_cast<int>(whole);
}

// V W V^-1 of each operator, and V of the unit translations, which become centring vectors of a larger cell.
bool Transform(const Change_Of_Basis& change, std::vector<Seitz>& generators) {
    const Matrix inverse = Inverse(change.matrix);
    std::vector<Seitz> result;
    const auto keep = [&](const Matrix& rot, const std::array<double, 3>& tr) {
        Seitz seitz;
        for (std::size_t i = 0; i < 9; ++i) {
            const std::optional<int> entry = Whole(rot[i / 3][i % 3]);
            if (!entry || std::abs(*entry) > 100) return false;
            seitz.rot[i] = static_cast<std::int8_t>(*entry);
        }
        for (std::size_t i = 0; i < 3; ++i) {
            const std::optional<int> t = Whole(tr[i] * twelfths);
            if (!t) return false;
            seitz.tr[i] = static_cast<std::int8_t>((*t % twelfths + twelfths) % twelfths);
        }
        result.push_back(seitz);
        return true;
    };
    for (const Seitz& old : generators) {
        Matrix rot = {};
        std::array<double, 3> tr = change.shift;
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = 0; j < 3; ++j) {
                tr[i] += change.matrix[i][j] * old.tr[j] / twelfths;
                for (std::size_t k = 0; k < 3; ++k)
                    for (std::size_t l = 0; l < 3; ++l) rot[i][l] += change.matrix[i][j] * old.rot[j * 3 + k] * inverse[k][l];
            }
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = 0; j < 3; ++j) tr[i] -= rot[i][j] * change.shift[j];
        if (!keep(rot, tr)) return false;
    }
    constexpr Matrix unit = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    for (std::size_t j = 0; j < 3; ++j)
        if (!keep(unit, {change.matrix[0][j], change.matrix[1][j], change.matrix[2][j]})) return false;
    generators = std::move(result);
    return true;
}

// A unit translation of the new cell must be a translation of the crystal: then the number of lattice points follows the volume.
Status Change_Basis(std::string_view text, std::vector<Seitz>& generators) {
    Change_Of_Basis change;
    const Status wrong = Status::Fail("Wrong change of basis (" + std::string(text) + ")");
    if (!Read_Change(text, change)) return wrong;
    const double volume = std::abs(Determinant(change.matrix));
    if (!(volume > 1e-3 && volume < 1e3)) return wrong;
    Closed_Group before, after;
    if (Status status = Close_Group(generators, before); status.failed) return status;
    if (!Transform(change, generators)) return wrong;
    if (Status status = Close_Group(generators, after); status.failed) return status;
    const double points = static_cast<double>(before.lattice.size()) / volume;
    return std::abs(static_cast<double>(after.lattice.size()) - points) < 1e-6 ? Status::Done() : wrong;
}

}  // namespace

Status Parse_Hall_Symbol(std::string_view symbol, std::vector<Seitz>& generators) {
    const std::string capitals = Upper(Trim(symbol));
    std::string_view text = capitals;
    generators.clear();
    if (text.starts_with('-')) {
        generators.push_back({inversion, {}});
        text = Trim(text.substr(1));
    }
    std::vector<Translation12> lattice;
    if (text.empty() || Lattice_From_Letter(text.front(), lattice).failed) return Status::Fail(" IBRAVL is Equal Zero");
    for (std::size_t i = 1; i < lattice.size(); ++i) generators.push_back({no_rotation, lattice[i]});
    text.remove_prefix(1);
    const std::size_t open = text.find('(');
    std::vector<std::string_view> words;
    if (Get_Words(text.substr(0, open), words, most_hall_rotations + 1, 20).failed || words.empty() || words.size() > most_hall_rotations)
        return Wrong_Axis();
    char axis = 'Z';
    int order = 0;
    for (std::size_t place = 0; place < words.size(); ++place) {
        if (words[place] == "1" && words.size() > 1) return Wrong_Axis();  // no rotation at all
        Hall_Rotation rotation(axis, order, place);
        Seitz seitz;
        if (const Status status = rotation.Read(words[place], seitz); status.failed) return status;
        generators.push_back(seitz);
        axis = rotation.Main_Axis();
        order = rotation.Order();
    }
    if (open == std::string_view::npos) return Status::Done();
    const std::size_t close = text.find(')', open);
    if (close == std::string_view::npos || !Trim(text.substr(close + 1)).empty()) return Wrong_Axis();
    return Change_Basis(text.substr(open + 1, close - open - 1), generators);
}

}  // namespace vntl
