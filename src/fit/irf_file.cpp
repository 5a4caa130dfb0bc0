#include "fit/irf_file.hpp"

#include <algorithm>
#include <cmath>
#include <functional>

#include "base/free_form.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "fit/written.hpp"

namespace vntl {

namespace {

constexpr std::size_t title_columns = 150, key_columns = 5, most_profile_rows = 2;
constexpr int asymmetry_in_table = 8;  // ireso of a table whose rows end in S_L and D_L

bool Are_Finite(std::span<const float> values) {
    return std::ranges::all_of(values, [](float v) { return std::isfinite(v); });
}

bool Read_Finite(std::string_view text, std::span<float> values) { return Read_Free_Reals(text, values) && Are_Finite(values); }

// The reals behind a key; nothing, as if the key were not there, where they cannot be read.
template <std::size_t n>
bool Take(std::string_view rest, std::optional<std::array<float, n>>& values) {
    std::array<float, n> read{};
    if (!Read_Finite(rest, read)) return false;
    values = read;
    return true;
}
bool Take(std::string_view rest, std::optional<float>& value) {
    float read = 0;
    if (!Read_Finite(rest, {&read, 1})) return false;
    value = read;
    return true;
}

std::string First_Word(std::string_view text) {
    text = Trim(text);
    return Upper(text.substr(0, text.find_first_of(" \t,")));
}

void Take_Job(std::string_view rest, Irf_File& irf) {
    constexpr std::string_view words[] = {"XR", "XRC", "NEUT", "NEUC", "TOF", "TOFC"};
    const std::string word = First_Word(rest);
    const auto found = std::ranges::find(words, std::string_view(word));
    if (found != std::end(words)) irf.jobt = static_cast<int>(found - std::begin(words)) + 1;
}

void Take_Geometry(std::string_view rest, Irf_File& irf) {
    struct Geometry {
        std::string_view word;
        int number;
    };
    constexpr Geometry geometries[] = {{"BRAG", 1}, {"DEBY", 2}, {"SYNC", 3}, {"PSD", 4}, {"TRMB", 5}, {"TRMF", 6}};
    const std::string word = First_Word(rest);
    for (const Geometry& known : geometries) {
        if (!word.starts_with(known.word)) continue;
        const bool has_value = known.number >= 3 && known.number <= 5;
        const std::string_view behind = Trim(rest);
        float value = 0;
        if (has_value && !Read_Finite(behind.substr(std::min(word.size(), behind.size())), {&value, 1})) return;
        irf.geometry = known.number;
        irf.geometry_value = value;
    }
}

void Take_Profile(std::string_view rest, Irf_File& irf) {
    Free_Form_Reader reader(rest);
    int number = 0;
    std::array<float, 3> values{};
    if (!reader.Read(number, std::span<float>(values)) || reader.given() != 4 || !Are_Finite(values)) return;
    irf.profile = number;
    irf.profile_values = values;
}

void Take_D2tof(std::string_view rest, Irf_File& irf) {
    constexpr int with_second_constant = 6;
    std::array<float, 2> values{};
    const std::size_t count = irf.ireso == with_second_constant ? 2 : 1;
    if (Read_Finite(rest, std::span(values).first(count))) irf.d2tof = values[0];
}

struct Key {
    std::string_view word;
    void (*take)(std::string_view rest, Irf_File& irf);
};
constexpr Key keys[] = {
    {"JOBT", Take_Job},
    {"PROF", Take_Profile},
    {"THRG", [](std::string_view rest, Irf_File& irf) { Take(rest, irf.range); }},
    {"WAVE", [](std::string_view rest, Irf_File& irf) { Take(rest, irf.wavelengths); }},
    {"GEOM", Take_Geometry},
    {"CTHM", [](std::string_view rest, Irf_File& irf) { Take(rest, irf.cthm); }},
    {"RKK", [](std::string_view rest, Irf_File& irf) { Take(rest, irf.rkk); }},
    {"ASYM", [](std::string_view rest, Irf_File& irf) { Take(rest, irf.asym); }},
    {"D2TOF", Take_D2tof},
    {"TWOTH", [](std::string_view rest, Irf_File& irf) { Take(rest, irf.twoth); }},
    {"TOFRG", [](std::string_view rest, Irf_File& irf) { Take(rest, irf.range); }},
    {"D2TOT", [](std::string_view rest, Irf_File& irf) { Take(rest, irf.d2tot); }},
    {"SIGMA", [](std::string_view rest, Irf_File& irf) { Take(rest, irf.sigma); }},
    {"GAMMA", [](std::string_view rest, Irf_File& irf) { Take(rest, irf.gamma); }},
    {"ALFBE", [](std::string_view rest, Irf_File& irf) { Take(rest, irf.alfbe); }},
    {"ALFBT", [](std::string_view rest, Irf_File& irf) { Take(rest, irf.alfbt); }},
};

// The numbers at the begin of a line; what follows the first word that is none does not count.
std::vector<float> Numbers_Of(std::string_view line) {
    constexpr std::size_t most = 7;  // more than any row has
    std::vector<float> numbers;
    for (std::size_t n = 1; n <= most; ++n) {
        std::vector<float> longer(n);
        if (!Read_Finite(line, longer)) break;
        numbers = std::move(longer);
    }
    return numbers;
}

// A line without a key: how many numbers it has says what it is.
void Take_Row(const std::vector<float>& row, Irf_File& irf) {
    switch (row.size()) {
        case 1:
            if (row[0] >= 0 && row[0] < 1e6f && row[0] == std::round(row[0])) irf.table_length = static_cast<int>(row[0]);
            return;
        case 5:
            if (irf.ireso == 0) {
                irf.ireso = asymmetry_in_table;
                irf.asym = {row[3], row[4]};
            }
            [[fallthrough]];
        case 3:
            irf.table.push_back({row[0], row[1], row[2]});
            return;
        case 6:
            if (irf.profile_rows.size() < most_profile_rows) irf.profile_rows.push_back({row[0], row[1], row[2], row[3], row[4], row[5]});
            return;
        default:
            return;
    }
}

int Resolution_Kind(std::string_view title) {
    const std::string lower = Lower(title);
    const std::size_t at = lower.find("ireso");
    if (at == std::string::npos) return 0;
    const std::size_t digits = lower.find_first_of("0123456789", at);
    if (digits == std::string::npos) return 0;
    const std::string number = lower.substr(digits, std::min<std::size_t>(lower.find_first_not_of("0123456789", digits) - digits, 6));
    return std::stoi(number);
}

// Where f has a root between two places of different signs: R. P. Brent, Algorithms for Minimization without Derivatives (1973), ch. 4.
double Brent_Root(const std::function<double(double)>& f, double a, double b, double tolerance) {
    double fa = f(a), fb = f(b), c = a, fc = fa, step = b - a, before = step;
    for (int i = 0; i < 100 && fb != 0; ++i) {
        if ((fb > 0) == (fc > 0)) {
            c = a, fc = fa;
            before = step = b - a;
        }
        if (std::fabs(fc) < std::fabs(fb)) {
            a = b, b = c, c = a;
            fa = fb, fb = fc, fc = fa;
        }
        const double near = 2e-16 * std::fabs(b) + tolerance / 2, half = (c - b) / 2;
        if (std::fabs(half) <= near) break;
        if (std::fabs(before) >= near && std::fabs(fa) > std::fabs(fb)) {
            // The secant, or the inverse parabola through three points; p/q from b.
            const double s = fb / fa;
            double p = 2 * half * s, q = 1 - s;
            if (a != c) {
                const double u = fa / fc, r = fb / fc;
                p = s * (2 * half * u * (u - r) - (b - a) * (r - 1));
                q = (u - 1) * (r - 1) * (s - 1);
            }
            q = p > 0 ? -q : q;
            p = std::fabs(p);
            const bool good = 2 * p < std::min(3 * half * q - std::fabs(near * q), std::fabs(before * q));
            before = good ? step : half;
            step = good ? p / q : half;
        } else {
            before = step = half;
        }
        a = b, fa = fb;
        b += std::fabs(step) > near ? step : std::copysign(near, half);
        fb = f(b);
    }
    return b;
}

}  // namespace

Status Read_Irf_File(const std::string& name, Irf_File& irf) {
    irf = {};
    const std::string file = Extension_Of(name).empty() ? name + ".irf" : name;
    Text_File text;
    if (text.Open(file).failed) return Status::Fail_File("Error when openning the IRF File: " + file);
    if (!Read_Irf_Text(text.Text(), irf)) return Status::Fail_File("Error reading IRF File: " + file);
    return Status::Done();
}

bool Read_Irf_Text(std::string_view text, Irf_File& irf) {
    Line_Cursor lines(text);
    std::string_view line;
    if (!lines.Next(line)) return false;
    irf.title = Kept_Text(line, title_columns);
    irf.ireso = Resolution_Kind(irf.title);
    while (lines.Next(line)) {
        line = Trim(line);
        if (line.empty() || line.front() == '!' || line.front() == '#') continue;
        const std::string_view start = line.substr(0, key_columns);
        const std::string word = Upper(start.substr(0, start.find_first_of(" \t")));
        const auto key = std::ranges::find(keys, std::string_view(word), &Key::word);
        if (key != std::end(keys))
            key->take(line.substr(word.size()), irf);
        else
            Take_Row(Numbers_Of(line), irf);
    }
    return true;
}

void Apply_Irf(const Irf_File& irf, Fit_Kind kind, Fit_State& state) {
    const auto put = [&state](std::size_t parameter, float value) { state.prof[parameter].value = value; };
    if (kind == Fit_Kind::constant_wavelength) {
        if (irf.wavelengths) {
            state.lambda1 = (*irf.wavelengths)[0];
            state.lambda2 = (*irf.wavelengths)[1];
            state.ratio.value = (*irf.wavelengths)[2];
        }
        if (irf.asym)
            for (std::size_t i = 0; i < 2; ++i) state.asym[i].value = (*irf.asym)[i];
        if (irf.profile_rows.empty()) return;
        constexpr CW_Profile order[] = {prof_u, prof_v, prof_w, prof_x, prof_eta0, prof_z};
        for (std::size_t i = 0; i < std::size(order); ++i) put(order[i], irf.profile_rows.front()[i]);
        return;
    }
    if (irf.d2tof) state.d2tof = *irf.d2tof;
    if (irf.sigma) {
        put(prof_sig2, (*irf.sigma)[0]);
        put(prof_sig1, (*irf.sigma)[1]);
        put(prof_sig0, (*irf.sigma)[2]);
    }
    for (const auto& decays : {irf.alfbe, irf.alfbt}) {
        if (!decays) continue;
        put(prof_alpha, (*decays)[2]);
        put(prof_beta, (*decays)[1]);
    }
}

std::optional<Width_Parts> Split_Width(float fwhm, float eta) {
    constexpr double tolerance = 3e-8;
    if (!(fwhm >= 1e-6f) || !(eta <= 1) || !(eta >= 1e-6f)) return {};
    const double q =
        Brent_Root([eta](double r) { return ((0.11116 * r - 0.47719) * r + 1.36603) * r - static_cast<double>(eta); }, 0, 1, tolerance);
    // In units of H, so that the tolerance holds for every width.
    const double g = Brent_Root(
        [q](double w) {
            return ((((w + 2.69269 * q) * w + 2.42843 * q * q) * w + 4.47163 * q * q * q) * w + 0.07842 * q * q * q * q) * w +
                   q * q * q * q * q - 1;
        },
        0, 1, tolerance);
    return Width_Parts{static_cast<float>(g * fwhm), static_cast<float>(q * fwhm)};
}

std::string Irf_Text(const Fit_State& fitted, std::span<const float> fwhm, std::span<const float> eta, bool new_file) {
    std::string text;
    if (new_file) text = "! Resolution function (IRESO=8) : 2theta(deg.)   HG(deg.)   HL(deg.)   S_L   D_L\n";
    if (new_file) text += Written("(5X,I3)", static_cast<int>(fwhm.size())) + "    <<<< Include number of points in the following list\n";
    std::size_t i = 0;
    for (const Fit_Peak& peak : fitted.peaks) {
        if (!peak.active || i >= fwhm.size()) continue;
        const std::optional<Width_Parts> parts = Split_Width(fwhm[i], eta[i]);
        ++i;
        const float s_l = fitted.asym[0].value, d_l = fitted.asym[1].value;
        if (parts)
            text += Written("(5(1X,F12.6))", peak.pos.value, parts->gaussian, parts->lorentzian, s_l, d_l) + "\n";
        else
            text += Written("(1X,F12.6,2A,2(1X,F12.6))", peak.pos.value, "    ******", "    ******", s_l, d_l) + "\n";
    }
    return text;
}

}  // namespace vntl
