// Reading of instrument files: a row of a table for each keyword, with the routine that takes its values.
#include "instrument/instrument_file.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <span>
#include <utility>

#include "base/free_form.hpp"
#include "base/os.hpp"
#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "instrument/instrument_text.hpp"

namespace vntl {

namespace {

constexpr std::string_view efficiency_clause = ", reading the efficiency of 2D-detector";
constexpr std::string_view surface_clause = ", reading the resolution surface of 2D-detector";

bool Are_Finite(std::span<const float> values) {
    for (const float value : values)
        if (!std::isfinite(value)) return false;
    return true;
}

bool Take_Reals(std::string_view text, std::span<float> values) { return Read_Free_Reals(text, values) && Are_Finite(values); }

// A count of motors, pixels or pairs; "32.0" is one.
bool Take_Count(std::string_view text, int least, int most, int& count) {
    float value = 0;
    if (!Take_Reals(text, {&value, 1}) || !(value >= static_cast<float>(least)) || !(value <= static_cast<float>(most))) return false;
    count = static_cast<int>(value);
    return static_cast<float>(count) == value;
}

// All numbers of a line, up to a comment. False where anything else stands.
bool Append_Reals(std::string_view line, std::vector<float>& values) {
    const char* at = line.data();
    const char* const end = at + line.size();
    const auto separator = [](char c) { return c == ' ' || c == '\t' || c == ','; };
    for (;;) {
        while (at < end && separator(*at)) ++at;
        if (at == end || *at == '!' || *at == '#') return true;
        float value = 0;
        const char* const behind = Parse_Float(at, end, value);
        if (behind == at || (behind < end && !separator(*behind)) || !std::isfinite(value)) return false;
        values.push_back(value);
        at = behind;
    }
}

std::string Kept(std::string_view text, std::size_t width) { return std::string(Trim(Kept_Text(text, width))); }

class Instrument_Reader {
public:
    Instrument_Reader(std::string_view text, const std::string& filename, std::vector<std::string>& warnings)
        : lines_(text), filename_(filename), warnings_(warnings) {}

    Status Read(Diffractometer_Type& instrument, bool& ub_read);

private:
    using Routine = bool (Instrument_Reader::*)(std::string_view value);
    struct Keyword {
        std::string_view word;
        Routine routine;
        std::string_view clause = {};
    };
    static const Keyword keywords[];

    // Each takes what stands behind its keyword, and the lines below. False: the clause of the keyword, or the failure that it tells.
    template <auto Field, std::size_t Width>
    bool Text(std::string_view value) {
        made_.*Field = Kept(value, Width);
        return true;
    }
    template <auto... Members>
    bool Reals(std::string_view value) {
        std::array<float, sizeof...(Members)> values{};
        if (!Take_Reals(value, values)) return false;
        std::size_t i = 0;
        ((made_.*Members = values[i++]), ...);
        return true;
    }
    // Lengths, which are not negative.
    template <auto... Members>
    bool Lengths(std::string_view value) {
        return Reals<Members...>(value) && ((made_.*Members >= 0) && ...);
    }
    template <auto Vector>
    bool Three(std::string_view value) {
        return Take_Reals(value, made_.*Vector);
    }
    bool Geometry(std::string_view value);
    bool Code_Of_Geometry(std::string_view value);
    bool Detector_Type(std::string_view value);
    bool Detector_Size(std::string_view value);
    bool Gaps(std::string_view value);
    bool Wave_Limits(std::string_view value);
    bool Setting(std::string_view value);
    bool UB_Matrix(std::string_view value);
    bool Number_Of_Motors(std::string_view value);
    bool Number_Of_Displacements(std::string_view value);
    bool Motors(std::string_view value);
    bool Displacements(std::string_view value);
    bool Times(std::string_view value);
    bool Times_Of_Motor(int motor, std::array<bool, most_motors>& read);
    bool Alpha_File(std::string_view value);
    bool Alphas(std::string_view value);
    bool Surface(std::string_view value);

    Status Missing() const;
    void Tell_Defaults() const;
    Status Check_Alphas();
    void Order_Gaps();
    void Forget_Other_Motors();
    bool Next_Line(std::string_view& line);
    static bool Take_Matrix(Line_Cursor& lines, std::vector<float>& values);
    Status Fault(std::string_view clause) const { return Status::Fail_File("Error in file: " + filename_ + std::string(clause)); }
    bool Fail(Status status) {
        failure_ = std::move(status);
        return false;
    }

    Line_Cursor lines_;
    const std::string& filename_;
    std::vector<std::string>& warnings_;
    Diffractometer_Type made_;
    Status failure_;  // of a routine that tells more than the clause of its keyword
    int igeom_ = -1;  // told; else the text of the geometry tells it
    int motors_told_ = -1, displacements_told_ = -1;
    int motors_read_ = 0, displacements_read_ = 0;
    bool size_read_ = false, wave_limits_read_ = false, ub_read_ = false;
    std::set<std::string_view> read_;  // keywords
    std::string alphas_from_;          // the file that holds the efficiencies
};

using Instrument = Diffractometer_Type;
using Reader = Instrument_Reader;

const Instrument_Reader::Keyword Instrument_Reader::keywords[] = {
    {"INFO", &Reader::Text<&Instrument::info, info_width>},
    {"NAME", &Reader::Text<&Instrument::name_inst, name_inst_width>},
    {"GEOM", &Reader::Geometry},
    {"IGEOM", &Reader::Code_Of_Geometry, ", reading the code of the geometry"},
    {"BLFR", &Reader::Text<&Instrument::BL_frame, frame_width>},
    {"DIST_UNITS", &Reader::Text<&Instrument::dist_units, dist_units_width>},
    {"ANGL_UNITS", &Reader::Text<&Instrument::angl_units, angl_units_width>},
    {"DET_TYPE", &Reader::Detector_Type, ", reading the type of detector (ipsd)"},
    {"DIST_DET", &Reader::Lengths<&Instrument::dist_samp_detector>, ", reading the distance sample-detector"},
    {"WAVE", &Reader::Lengths<&Instrument::wave>, ", reading the wavelength"},
    {"WAVE_LIMITS", &Reader::Wave_Limits, ", reading the wavelength limits"},
    {"WAV_LIMITS", &Reader::Wave_Limits, ", reading the wavelength limits"},
    {"DIM_XZP", &Reader::Detector_Size, ", reading the dimensions of the detector"},
    {"DIM_XZ", &Reader::Detector_Size, ", reading the dimensions of the detector"},
    {"DIM_XY", &Reader::Detector_Size, ", reading the dimensions of the detector"},
    {"GAPS_CA_AN", &Reader::Gaps, ", reading the gaps between anodes and between cathodes"},
    {"GAPS_DET", &Reader::Gaps, ", reading the gaps between anodes and between cathodes"},
    {"GN_CENTRE", &Reader::Reals<&Instrument::gamma_c, &Instrument::nu_c>, ", reading Gamma and Nu of detector centre"},
    {"GAMMA_NU_CENTRE", &Reader::Reals<&Instrument::gamma_c, &Instrument::nu_c>, ", reading Gamma and Nu of detector centre"},
    {"ROT_ORDER", &Reader::Text<&Instrument::rot_order, word_width>},
    {"TILT_ANGLES", &Reader::Three<&Instrument::tilt>, ", reading the Tilt Angles"},
    {"RESOL", &Reader::Lengths<&Instrument::d_min>, ", reading the resolution d_min value"},
    {"GAM+_LIMITS", &Reader::Reals<&Instrument::gamma_p_min, &Instrument::gamma_p_max>, ", reading the Gamma(positive) limits"},
    {"GAM-_LIMITS", &Reader::Reals<&Instrument::gamma_n_min, &Instrument::gamma_n_max>, ", reading the Gamma(negative) limits"},
    {"NU_LIMITS", &Reader::Reals<&Instrument::nu_min, &Instrument::nu_max>, ", reading the Nu limits"},
    {"X_LIMITS", &Reader::Reals<&Instrument::x_min, &Instrument::x_max>, ", reading the X limits"},
    {"Z_LIMITS", &Reader::Reals<&Instrument::z_min, &Instrument::z_max>, ", reading the Z limits"},
    {"SETTING", &Reader::Setting, ", reading the setting vectors"},
    {"UBMAT", &Reader::UB_Matrix, ", reading the UB-matrix"},
    {"NUM_ANG", &Reader::Number_Of_Motors, ", reading the number of angular motors"},
    {"ANG_LIMITS", &Reader::Motors, ", reading the angular names, limits, offsets and velocities"},
    {"RANGE_TIME", &Reader::Times, ", reading section of pairs range - time"},
    {"NUM_DISP", &Reader::Number_Of_Displacements, ", reading the number of displacement motors"},
    {"DISP_LIMITS", &Reader::Displacements, ", reading the displacement limits"},
    {"DET_OFF", &Reader::Three<&Instrument::det_offsets>, ", reading the detector offsets"},
    {"DISP_CENTRE", &Reader::Three<&Instrument::disp_centre>, ", reading the centre of the displacements"},
    {"ALPHA_FILE", &Reader::Alpha_File, efficiency_clause},
    {"DET_ALPHAS", &Reader::Alphas, efficiency_clause},
    {"RESOLUTION_SURFACE", &Reader::Surface, ", reading the dimension of resolution surface of the 2D-detector"},
};

// The next line of a section.
bool Instrument_Reader::Next_Line(std::string_view& line) {
    while (lines_.Next(line))
        if (!Is_Passed_Over(line)) return true;
    return false;
}

// The numbers of the lines that follow, up to the next keyword. No place is kept for more of them than there are.
bool Instrument_Reader::Take_Matrix(Line_Cursor& lines, std::vector<float>& values) {
    std::string_view line;
    for (Line_Cursor before = lines; lines.Next(line); before = lines) {
        if (Is_Passed_Over(line)) continue;
        if (!Is_Number_Line(line)) {
            lines = before;
            return true;
        }
        if (!Append_Reals(line, values)) return false;
    }
    return true;
}

bool Instrument_Reader::Geometry(std::string_view value) {
    made_.igeom = Geometry_Code(value);  // of the whole text
    return Text<&Instrument::geom, geom_width>(value);
}

bool Instrument_Reader::Code_Of_Geometry(std::string_view value) {
    constexpr int last_geometry = 3;
    return Take_Count(value, 0, last_geometry, igeom_);
}

// "Flat_rect ipsd 2": the code may be absent, and so may the word before it.
bool Instrument_Reader::Detector_Type(std::string_view value) {
    constexpr std::string_view label = "ipsd";
    constexpr std::string_view behind_label = " \t=:0123456789";
    constexpr int last_detector = 3;
    made_.detector_type.clear();
    for (bool first = true; !value.empty(); first = false) {
        const std::string_view word = value.substr(0, value.find_first_of(" \t"));
        const std::string_view behind = value.size() < label.size() ? std::string_view() : value.substr(label.size());
        if (Equal_No_Case(word.substr(0, label.size()), label) && (behind.empty() || behind_label.find(behind[0]) != behind_label.npos)) {
            const std::size_t digit = behind.find_first_not_of(" \t=:");
            return digit != behind.npos && Take_Count(behind.substr(digit), 1, last_detector, made_.ipsd);
        }
        if (first) made_.detector_type = Kept(word, word_width);
        value = Trim_Left(value.substr(word.size()));
    }
    return !made_.detector_type.empty();
}

bool Instrument_Reader::Detector_Size(std::string_view value) {
    constexpr float most_pixels = 1e6f;
    std::array<float, 4> read{};
    if (!Take_Reals(value, read)) return false;
    for (const float item : read)
        if (!(item > 0)) return false;
    for (const std::size_t pixels : {2, 3})
        if (read[pixels] > most_pixels || read[pixels] != std::round(read[pixels])) return false;
    made_.horiz = read[0];
    made_.vert = read[1];
    made_.np_horiz = static_cast<int>(read[2]);
    made_.np_vert = static_cast<int>(read[3]);
    return size_read_ = true;
}

bool Instrument_Reader::Gaps(std::string_view value) { return Lengths<&Instrument::cgap, &Instrument::agap>(value); }

bool Instrument_Reader::Wave_Limits(std::string_view value) {
    return wave_limits_read_ = Lengths<&Instrument::wave_min, &Instrument::wave_max>(value);
}

bool Instrument_Reader::Setting(std::string_view value) {
    std::array<float, 9> read{};
    if (!Take_Reals(value, read)) return false;
    Vector3* const vectors[] = {&made_.e1, &made_.e2, &made_.e3};
    for (std::size_t i = 0; i < read.size(); ++i) (*vectors[i / 3])[i % 3] = read[i];
    return true;
}

bool Instrument_Reader::UB_Matrix(std::string_view) {
    for (Vector3& row : made_.UB) {
        std::string_view line;
        if (!Next_Line(line) || !Take_Reals(line, row)) return false;
    }
    return ub_read_ = Invert_Matrix(made_.UB, made_.UB_inverse);
}

bool Instrument_Reader::Number_Of_Motors(std::string_view value) {
    if (!Take_Count(value, 0, most_motors, motors_told_)) return false;
    made_.num_ang = motors_told_;
    return true;
}

bool Instrument_Reader::Number_Of_Displacements(std::string_view value) {
    if (!Take_Count(value, 0, most_motors, displacements_told_)) return false;
    made_.num_disp = displacements_told_;
    return true;
}

// A name, the limits, then what may be absent: offset, and velocity of motors that have one.
bool Take_Motor(std::string_view line, std::string& name, std::array<float, 2>& limits, std::span<float> others) {
    std::array<float, 4> values = {NAN, NAN};
    std::span<float> read = std::span(values).first(2 + others.size());
    std::ranges::copy(others, read.begin() + 2);
    if (!Take_Word(line, name)) return false;
    name = Kept(name, motor_name_width);
    Free_Form_Reader reader(line);
    if (!reader.Read(read) && !reader.ended()) return false;
    if (!Are_Finite(read)) return false;
    limits = {values[0], values[1]};
    std::ranges::copy(read.subspan(2), others.begin());
    return true;
}

bool Instrument_Reader::Motors(std::string_view) {
    if (motors_told_ < 0) return Fail(Fault(", Number of angular motors missing!"));
    for (std::size_t i = 0; i < static_cast<std::size_t>(made_.num_ang); ++i) {
        std::string_view line;
        std::array<float, 2> others = {0, 1};
        if (!Next_Line(line) || !Take_Motor(line, made_.ang_names[i], made_.ang_limits[i], others)) return false;
        made_.ang_offsets[i] = others[0];
        made_.ang_velocity[i] = others[1];
    }
    motors_read_ = made_.num_ang;
    return true;
}

bool Instrument_Reader::Displacements(std::string_view) {
    if (displacements_told_ < 0) return Fail(Fault(", Number of displacement motors missing!"));
    for (std::size_t i = 0; i < static_cast<std::size_t>(made_.num_disp); ++i) {
        std::string_view line;
        std::array<float, 1> offset = {0};
        if (!Next_Line(line) || !Take_Motor(line, made_.disp_names[i], made_.disp_limits[i], offset)) return false;
        made_.disp_offsets[i] = offset[0];
    }
    displacements_read_ = made_.num_disp;
    return true;
}

bool Instrument_Reader::Times(std::string_view) {
    if (motors_told_ < 0) return Fail(Fault(", the number of angular motors is needed before giving range_time values"));
    std::array<bool, most_motors> read{};
    for (int motor = 0; motor < made_.num_ang; ++motor)
        if (!Times_Of_Motor(motor, read)) return false;
    return true;
}

// The motors stand in their order, or in another one where their names are known.
bool Instrument_Reader::Times_Of_Motor(int motor, std::array<bool, most_motors>& read) {
    std::string_view line;
    if (!Next_Line(line)) return false;
    std::string name;
    int pairs = 0;
    const bool named = Take_Word(line, name);
    name = Kept(name, motor_name_width);
    const auto is_it = [&](int i) {
        const auto at = static_cast<std::size_t>(i);
        return !read[at] && (i >= motors_read_ || Equal_No_Case(made_.ang_names[at], name));
    };
    if (!is_it(motor))
        for (motor = 0; motor < made_.num_ang && !is_it(motor);) ++motor;
    Free_Form_Reader reader(line);
    if (!named || motor == made_.num_ang || !reader.Read(pairs) || reader.given() != 1 || pairs < 0)
        return Fail(Fault(", reading name of motor and number of pairs range - time"));
    read[static_cast<std::size_t>(motor)] = true;
    std::vector<std::pair<float, float>>& times = made_.range_time[static_cast<std::size_t>(motor)];
    times.clear();
    for (int i = 0; i < pairs; ++i) {
        std::array<float, 2> pair{};
        if (!Next_Line(line)) return false;
        if (!Take_Reals(line, pair)) return Fail(Fault(", reading pairs range - time for motor: " + name));
        times.emplace_back(pair[0], pair[1]);
    }
    return true;
}

// The file of efficiencies lies beside the description, unless its name says where.
bool Instrument_Reader::Alpha_File(std::string_view value) {
    made_.alpha_file = Kept(value, alpha_file_width);
    const std::string place = In_Directory(std::string(Directory_Part(filename_)), made_.alpha_file);
    if (made_.alpha_file.empty() || !IOsFileExists(place))
        return Fail(Status::Fail_File("Error the alpha file: " + made_.alpha_file + ", does not exist!"));
    Text_File file;
    made_.alphas = {};
    alphas_from_ = made_.alpha_file;
    Status fault = Status::Fail_File("Error in file: " + alphas_from_ + std::string(efficiency_clause));
    if (file.Open(place, largest_description).failed) return Fail(std::move(fault));
    Line_Cursor lines(Without_End_Mark(file.Text()));
    if (!Take_Matrix(lines, made_.alphas.values) || !lines.At_End()) return Fail(std::move(fault));
    return true;
}

bool Instrument_Reader::Alphas(std::string_view) {
    made_.alphas = {};
    alphas_from_ = filename_;
    return Take_Matrix(lines_, made_.alphas.values);
}

bool Instrument_Reader::Surface(std::string_view value) {
    Free_Form_Reader reader(value);
    std::array<int, 2> size{};
    if (!reader.Read(std::span<int>(size)) || reader.given() != size.size() || size[0] < 1 || size[1] < 1) return false;
    Real_Table surface{size[0], size[1], {}};
    const auto places = static_cast<unsigned long long>(size[0]) * static_cast<unsigned long long>(size[1]);
    if (!Take_Matrix(lines_, surface.values) || surface.values.size() != places) return Fail(Fault(surface_clause));
    made_.resolution_surface = std::move(surface);
    return true;
}

// What has no default: the size of the detector, and the limits of what the file says that there is.
Status Instrument_Reader::Missing() const {
    if (!size_read_) return Fault(", the dimensions of the detector (DIM_XZP) are missing");
    if (motors_read_ < made_.num_ang) return Fault(", the limits of the angular motors (ANG_LIMITS) are missing");
    if (displacements_read_ < made_.num_disp) return Fault(", the limits of the displacement motors (DISP_LIMITS) are missing");
    if (Contains(Lower(made_.geom), "laue") && !wave_limits_read_) return Fault(", the wavelength limits (WAVE_LIMITS) are missing");
    return Status::Done();
}

// Limits that stand at their defaults because the file is silent.
void Instrument_Reader::Tell_Defaults() const {
    std::string silent;
    for (const std::string_view limits : {"GAM+_LIMITS", "GAM-_LIMITS", "NU_LIMITS", "X_LIMITS", "Z_LIMITS"})
        if (!read_.contains(limits)) silent += (silent.empty() ? "" : ", ") + std::string(limits);
    if (!silent.empty()) warnings_.push_back(filename_ + ": limits that the file does not tell stand at their defaults: " + silent);
}

Status Instrument_Reader::Check_Alphas() {
    if (alphas_from_.empty()) return Status::Done();
    if (made_.alphas.values.size() != static_cast<std::size_t>(made_.np_horiz) * static_cast<std::size_t>(made_.np_vert))
        return Status::Fail_File("Error in file: " + alphas_from_ + std::string(efficiency_clause));
    made_.alphas.columns = made_.np_horiz;
    made_.alphas.rows = made_.np_vert;
    return Status::Done();
}

// Gaps are the pitch of the wires, so that pixels tell which is which where their number differs.
void Instrument_Reader::Order_Gaps() {
    constexpr float tolerance = 0.02f;
    const float vertical = made_.vert / static_cast<float>(made_.np_vert), horizontal = made_.horiz / static_cast<float>(made_.np_horiz);
    const auto fit = [&](float cathodes, float anodes) {
        return std::fabs(cathodes - vertical) <= tolerance * vertical && std::fabs(anodes - horizontal) <= tolerance * horizontal;
    };
    if (fit(made_.cgap, made_.agap) || !fit(made_.agap, made_.cgap)) return;
    std::swap(made_.agap, made_.cgap);
    warnings_.push_back(filename_ +
                        ": the gap of the anodes stands before that of the cathodes (GAPS_CA_AN). By the size of the detector and its "
                        "pixels they were exchanged.");
}

void Instrument_Reader::Forget_Other_Motors() {
    const Diffractometer_Type none;
    for (auto i = static_cast<std::size_t>(made_.num_ang); i < most_motors; ++i) {
        made_.ang_names[i] = none.ang_names[i];
        made_.ang_limits[i] = none.ang_limits[i];
        made_.ang_offsets[i] = none.ang_offsets[i];
        made_.ang_velocity[i] = none.ang_velocity[i];
        made_.range_time[i].clear();
    }
    for (auto i = static_cast<std::size_t>(made_.num_disp); i < most_motors; ++i) {
        made_.disp_names[i] = none.disp_names[i];
        made_.disp_limits[i] = none.disp_limits[i];
        made_.disp_offsets[i] = none.disp_offsets[i];
    }
}

Status Instrument_Reader::Read(Diffractometer_Type& instrument, bool& ub_read) {
    made_.igeom = Geometry_Code(made_.geom);
    std::string_view line;
    while (Next_Line(line)) {
        const Keyword_Line found = Split_Keyword(line);
        const auto keyword = std::ranges::find(keywords, found.word, &Keyword::word);
        if (keyword == std::ranges::end(keywords)) continue;
        read_.insert(keyword->word);
        if ((this->*keyword->routine)(found.value)) continue;
        return failure_.failed ? failure_ : Fault(keyword->clause);
    }
    if (Status status = Missing(); status.failed) return status;
    if (Status status = Check_Alphas(); status.failed) return status;
    Tell_Defaults();
    Order_Gaps();
    Forget_Other_Motors();
    if (igeom_ >= 0) made_.igeom = igeom_;
    instrument = std::move(made_);
    ub_read = ub_read_;
    return Status::Done();
}

}  // namespace

Status Read_Instrm_Text(std::string_view text, const std::string& filename, Diffractometer_Type& instrument, bool& ub_read,
                        std::vector<std::string>& warnings) {
    return Instrument_Reader(Without_End_Mark(Without_Mark(text)), filename, warnings).Read(instrument, ub_read);
}

Status Read_Current_Instrm(const std::string& filename, Instrument_State& state, std::vector<std::string>& warnings) {
    Text_File file;
    if (Status status = Open_Description(filename, file); status.failed) return status;
    Diffractometer_Type read;
    bool ub_read = false;
    if (Status status = Read_Instrm_Text(file.Text(), filename, read, ub_read, warnings); status.failed) return status;
    if (ub_read) state.Current_Orient = {true, read.UB, read.UB_inverse, read.wave};
    state.Current_Instrm = std::move(read);
    state.Current_Instrm_Set = true;
    return Status::Done();
}

}  // namespace vntl
