#include "patterns/head_sample.hpp"

#include <algorithm>
#include <cmath>

#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace {

constexpr std::size_t line_width = 400;
constexpr std::string_view marks = "#'!;%*/\" \t{";
constexpr double zero_celsius = 273.15, hottest = 5000;

std::string_view Without_Marks(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(marks), line.size()));
    return line;
}

std::string Letters(std::string_view text) {
    std::string letters;
    for (const char c : Lower(text))
        if (c >= 'a' && c <= 'z') letters += c;
    return letters;
}

std::string_view Unquoted(std::string_view text) {
    text = Trim(text);
    while (!text.empty() && (text.back() == ',' || text.back() == '}')) text = Trim_Right(text.substr(0, text.size() - 1));
    if (text.size() > 1 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front())
        text = Trim(text.substr(1, text.size() - 2));
    return text;
}

bool Is_Sample_Name(std::string_view name) {
    for (const char* word : {"sample", "samplename", "usersamplename", "samplelabel", "sampleid", "sampletitle", "specimen"})
        if (name == word) return true;
    return false;
}

enum class Scale { none, kelvin, celsius };

Scale Scale_At(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t([=:"), text.size()));
    for (const char* degrees : {"degrees", "degree", "deg.", "deg", "\xC2\xB0", "\xC2\xBA"})
        if (text.starts_with(degrees)) {
            text = Trim_Left(text.substr(std::string_view(degrees).size()));
            break;
        }
    std::size_t n = 0;
    while (n < text.size() && text[n] >= 'a' && text[n] <= 'z') ++n;
    const std::string_view word = text.substr(0, n);
    if (word == "k" || word == "kelvin" || word == "kelvins") return Scale::kelvin;
    return word == "c" || word == "celsius" || word == "degc" ? Scale::celsius : Scale::none;
}

// Words that may stand in front of "temperature" where it is that of the sample.
bool Is_Of_Sample(std::string_view before) {
    const std::size_t cut = before.find_last_of(",;|{");
    const std::string letters = Letters(cut == std::string_view::npos ? before : before.substr(cut + 1));
    for (const char* word : {"", "sample", "samplemean", "meansample", "mean", "average", "actual", "measured", "measurement"})
        if (letters == word) return true;
    return false;
}

}  // namespace

std::optional<float> Kelvin_Of_Line(std::string_view line) {
    const std::string lower = Lower(line.substr(0, line_width));
    const std::string_view text = lower;
    for (std::size_t at = text.find("temp"); at != std::string_view::npos; at = text.find("temp", at + 4)) {
        std::string_view behind = text.substr(at + 4);
        if (behind.starts_with("erature")) behind.remove_prefix(7);
        if (!behind.empty() && ((behind.front() >= 'a' && behind.front() <= 'z'))) continue;
        if (!Is_Of_Sample(text.substr(0, at))) continue;
        Scale scale = Scale_At(behind);
        const std::size_t digits = behind.find_first_of("+-0123456789");
        if (digits == std::string_view::npos) continue;
        if (scale == Scale::none && behind.find_first_not_of(" \t=:\"'") != digits) continue;  // another word stands between
        behind.remove_prefix(digits);
        double value = 0;
        const char* const end = behind.data() + behind.size();
        const char* const stop = Parse_Double(behind.data(), end, value);
        if (stop == behind.data() || !std::isfinite(value)) continue;
        if (scale == Scale::none) scale = Scale_At({stop, static_cast<std::size_t>(end - stop)});
        if (scale == Scale::none) continue;
        const double kelvin = scale == Scale::celsius ? value + zero_celsius : value;
        if (kelvin > 0 && kelvin < hottest) return static_cast<float>(kelvin);
    }
    return std::nullopt;
}

void Head_Sample::Take_Line(std::string_view line) {
    if (!kelvin_) kelvin_ = Kelvin_Of_Line(line);
    line = Without_Marks(line.substr(0, line_width));
    const std::size_t sign = line.find_first_of("=:");
    if (sign == std::string_view::npos) {  // "sample Si", and no sentence
        constexpr std::string_view word = "sample ";
        const std::string_view rest = line.starts_with(word) ? Trim(line.substr(word.size())) : std::string_view{};
        if (sample_.empty() && !rest.empty() && std::count(rest.begin(), rest.end(), ' ') < 3) sample_ = Kept_Text(rest, title_width);
        return;
    }
    const std::string name = Letters(line.substr(0, sign));
    std::string& text = Is_Sample_Name(name) ? sample_ : title_;
    if ((&text == &title_ && name != "title") || !text.empty()) return;
    text = Kept_Text(Unquoted(line.substr(sign + 1)), title_width);
}

void Head_Sample::Give(Diffraction_Pattern_Type& pattern) const {
    if (pattern.title.empty()) pattern.title = sample_.empty() ? title_ : sample_;
    if (kelvin_ && !(pattern.TSample > 0)) pattern.TSample = *kelvin_;
}

}  // namespace vntl
