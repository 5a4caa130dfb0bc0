// What is told of an instrument, and the text of its file.
#include <algorithm>
#include <array>
#include <span>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "instrument/instrument_file.hpp"
#include "instrument/instrument_text.hpp"

namespace vntl {

namespace {

constexpr std::string_view no_surface = " => No resolution surface has been provided";
constexpr std::string_view surface_heading = "RESOLUTION SURFACE OF THE INSTRUMENT: ";
constexpr std::size_t number_width = 12;

std::size_t Motors(int told) { return static_cast<std::size_t>(std::clamp(told, 0, most_motors)); }

std::string Columns(std::span<const float> values, std::size_t width = number_width) {
    std::string text;
    for (const float value : values) text += Number_Column(value, width);
    return text;
}

// A motor: its name, then limits, offset and velocity below their heads in the file.
std::string Named(const std::string& name, std::span<const float> values) {
    constexpr std::array<std::size_t, 4> widths = {8, 9, 10, 10};
    const std::size_t characters = Characters(name);
    std::string line = name + std::string(characters < motor_name_width ? motor_name_width - characters : 0, ' ');
    for (std::size_t i = 0; i < values.size(); ++i) line += Number_Column(values[i], widths[i]);
    return line;
}

bool Holds(const Real_Table& table) { return table.columns > 0 && !table.values.empty(); }

std::span<const float> Row_Of(const Real_Table& table, std::size_t row) {
    const auto columns = static_cast<std::size_t>(table.columns);
    return std::span(table.values).subspan(row * columns, columns);
}

std::size_t Whole_Rows(const Real_Table& table) {
    return Holds(table)
               ? std::min(static_cast<std::size_t>(std::max(table.rows, 0)), table.values.size() / static_cast<std::size_t>(table.columns))
               : 0;
}

class Listing {
public:
    std::vector<std::string> Lines(const Diffractometer_Type& of) {
        Frame();
        General(of);
        Detector(of);
        Motors_Of(of);
        Orientation(of);
        Limits(of);
        Tables(of);
        return std::move(lines_);
    }
    void Frame() {
        constexpr std::string_view title = " ---   INFORMATION ABOUT THE CURRENT INSTRUMENT AND ORIENTATION MATRIX   --- ";
        const std::string edge = ' ' + std::string(title.size() - 2, '-');
        for (const std::string_view line : {std::string_view(edge), title, std::string_view(edge)}) lines_.emplace_back(line);
    }
    void Put(std::string_view label, std::string_view text) { lines_.push_back(std::string(label) + In_One_Line(text)); }
    std::vector<std::string> lines() && { return std::move(lines_); }

private:
    void Put(std::string_view label, float value, const std::string& unit = {}) {
        Put(label, IRealToString(value) + (unit.empty() ? "" : ' ' + unit));
    }
    void Put(std::string_view label, int value) { Put(label, IntegerToString(value)); }
    void Put(std::string_view label, std::span<const float> values) { Put(label, Columns(values)); }
    void Put(std::string_view label, float first, float second) { Put(label, std::array{first, second}); }

    void General(const Diffractometer_Type& of) {
        const bool laue = Contains(Lower(of.geom), "laue");
        Put("INFO: ", of.info);
        Put("NAME: ", of.name_inst);
        Put("GEOM: ", of.geom);
        Put("BL_FRAME: ", of.BL_frame);
        Put("DIST_UNITS: ", of.dist_units);
        Put("ANGL_UNITS: ", of.angl_units);
        Put("DET_TYPE: ", of.detector_type);
        Put("DIST_SDETR: ", of.dist_samp_detector, of.dist_units);
        if (!laue || of.wave > 0) Put("WAVELENGTH: ", of.wave, "Angstroms");
        if (laue) {
            Put("LAMBDA_MIN: ", of.wave_min, "Angstroms");
            Put("LAMBDA_MAX: ", of.wave_max, "Angstroms");
        }
    }
    void Detector(const Diffractometer_Type& of) {
        Put("HORIZ_SIZE: ", of.horiz, of.dist_units);
        Put("VERT_SIZE: ", of.vert, of.dist_units);
        Put("ANODE_GAP: ", of.agap, of.dist_units);
        Put("CATHODE_GAP: ", of.cgap, of.dist_units);
        Put("HORIZ_PXEL: ", of.np_horiz);
        Put("VERT_PXEL: ", of.np_vert);
        Put("GN_CENTRE: ", of.gamma_c, of.nu_c);
        Put("ROT_ORDER: ", of.rot_order);
        Put("TILT_ANGLES: ", of.tilt);
        Put("IGEOM: ", of.igeom);
        Put("IPSD: ", of.ipsd);
    }
    void Motors_Of(const Diffractometer_Type& of) {
        Put("NUMBER_ANG: ", of.num_ang);
        if (of.num_ang > 0) Put("  Names of Angular Motors, Limits (Min-Max), Offsets and velocities (deg/s):   ", "");
        for (std::size_t i = 0; i < Motors(of.num_ang); ++i)
            Put("    ",
                Named(of.ang_names[i], std::array{of.ang_limits[i][0], of.ang_limits[i][1], of.ang_offsets[i], of.ang_velocity[i]}));
        for (std::size_t i = 0; i < Motors(of.num_ang); ++i) {
            if (of.range_time[i].empty()) continue;
            Put("RANGE_TIME: ", of.ang_names[i]);
            for (const auto& [range, time] : of.range_time[i]) Put("    ", Columns(std::array{range, time}));
        }
        Put("NUMBER_DISP: ", of.num_disp);
        if (of.num_disp > 0) Put("  Names of Displacement Motors, Limits (Min-Max) and Offsets:   ", "");
        for (std::size_t i = 0; i < Motors(of.num_disp); ++i)
            Put("    ", Named(of.disp_names[i], std::array{of.disp_limits[i][0], of.disp_limits[i][1], of.disp_offsets[i]}));
        Put("DET_OFFSET: ", of.det_offsets);
        Put("DISP_CENTRE: ", of.disp_centre);
    }
    void Orientation(const Diffractometer_Type& of) {
        Put("e1_COMPNT: ", of.e1);
        Put("e2_COMPNT: ", of.e2);
        Put("e3_COMPNT: ", of.e3);
        Put("UB_MATRIX: ", "");
        for (const Vector3& row : of.UB) Put("    ", Columns(row, 16));
        Put("UB_INVERSE: ", "");
        for (const Vector3& row : of.UB_inverse) Put("    ", Columns(row, 16));
    }
    void Limits(const Diffractometer_Type& of) {
        Put("D_MIN: ", of.d_min, "Angstroms");
        Put("GAM+_LIMITS: ", of.gamma_p_min, of.gamma_p_max);
        Put("GAM-_LIMITS: ", of.gamma_n_min, of.gamma_n_max);
        Put("NU_LIMITS: ", of.nu_min, of.nu_max);
        Put("X_LIMITS: ", of.x_min, of.x_max);
        Put("Z_LIMITS: ", of.z_min, of.z_max);
    }
    // Of millions of pixels the extremes tell enough.
    void Tables(const Diffractometer_Type& of) {
        Put("ALPHA_FILE: ", of.alpha_file);
        if (Holds(of.alphas)) {
            const auto [least, most] = std::ranges::minmax(of.alphas.values);
            Put("ALPHAS: ", IntegerToString(of.alphas.columns) + " x " + IntegerToString(of.alphas.rows) + " efficiencies from " +
                                IRealToString(least) + " to " + IRealToString(most));
        } else {
            Put("ALPHAS: ", "all 1");
        }
        constexpr std::size_t most_values = 100000;
        const Real_Table& surface = of.resolution_surface;
        if (!Holds(surface)) return Put(no_surface, "");
        Put(surface_heading, IntegerToString(surface.columns) + " x " + IntegerToString(surface.rows));
        const std::size_t rows = Whole_Rows(surface);
        std::size_t listed = std::min(rows, std::max<std::size_t>(1, most_values / static_cast<std::size_t>(surface.columns)));
        for (std::size_t row = 0; row < listed; ++row) Put("    ", Columns(Row_Of(surface, row)));
        if (listed < rows) Put("    ", "and " + std::to_string(rows - listed) + " rows more");
    }

    std::vector<std::string> lines_;
};

// Keywords with their values, a line each.
class Instrument_Writer {
public:
    std::string Text(const Diffractometer_Type& of) {
        General(of);
        Detector(of);
        Limits(of);
        Orientation(of);
        Motors_Of(of);
        Displacements_Of(of);
        Tables(of);
        return std::move(text_);
    }

private:
    void Line(std::string_view line) { text_.append(Trim_Right(line)).append("\n"); }
    void Put(std::string_view keyword, std::string_view value) {
        constexpr std::size_t value_column = 19;
        std::string line(keyword);
        line.resize(std::max(line.size() + 1, value_column), ' ');
        Line(line + In_One_Line(value));
    }
    void Put(std::string_view keyword, std::span<const float> values) { Put(keyword, Trim_Left(Columns(values))); }
    void Put(std::string_view keyword, float value) { Put(keyword, std::span(&value, 1)); }
    void Put(std::string_view keyword, float first, float second) { Put(keyword, std::array{first, second}); }
    void Rows(const Real_Table& table) {
        for (std::size_t row = 0; row < Whole_Rows(table); ++row) Line(Columns(Row_Of(table, row)));
    }

    void General(const Diffractometer_Type& of) {
        Put("INFO", of.info);
        Put("NAME", of.name_inst);
        Put("GEOM", of.geom);
        if (of.igeom != Geometry_Code(of.geom)) Put("IGEOM", IntegerToString(of.igeom));
        Put("BLFR", of.BL_frame);
        Put("DIST_UNITS", of.dist_units);
        Put("ANGL_UNITS", of.angl_units);
        Put("WAVE", of.wave);
        Put("WAVE_LIMITS", of.wave_min, of.wave_max);
    }
    void Detector(const Diffractometer_Type& of) {
        Put("DET_TYPE", (of.detector_type.empty() ? "" : of.detector_type + ' ') + "ipsd " + IntegerToString(of.ipsd));
        Put("DIST_DET", of.dist_samp_detector);
        Put("DIM_XZP", IRealToString(of.horiz) + "  " + IRealToString(of.vert) + "  " + IntegerToString(of.np_horiz) + "  " +
                           IntegerToString(of.np_vert));
        Put("GAPS_CA_AN", of.cgap, of.agap);
        Put("GN_CENTRE", of.gamma_c, of.nu_c);
        Put("ROT_ORDER", of.rot_order);
        Put("TILT_ANGLES", of.tilt);
        Put("DET_OFF", of.det_offsets);
    }
    void Limits(const Diffractometer_Type& of) {
        Put("RESOL", of.d_min);
        Put("GAM+_LIMITS", of.gamma_p_min, of.gamma_p_max);
        Put("GAM-_LIMITS", of.gamma_n_min, of.gamma_n_max);
        Put("NU_LIMITS", of.nu_min, of.nu_max);
        Put("X_LIMITS", of.x_min, of.x_max);
        Put("Z_LIMITS", of.z_min, of.z_max);
    }
    void Orientation(const Diffractometer_Type& of) {
        std::array<float, 9> setting{};
        for (std::size_t i = 0; i < 3; ++i) {
            setting[i] = of.e1[i];
            setting[3 + i] = of.e2[i];
            setting[6 + i] = of.e3[i];
        }
        Put("SETTING", Trim_Left(Columns(setting, 1)));
        if (of.UB == unit_matrix) return;
        Line("UBMAT");
        for (const Vector3& row : of.UB) Line(Columns(row, 16));
    }
    void Motors_Of(const Diffractometer_Type& of) {
        const std::size_t count = Motors(of.num_ang);
        if (count == 0) return;
        Put("NUM_ANG", std::to_string(count));
        Line("ANG_LIMITS         Min      Max    Offset  Velocity(deg/s)");
        for (std::size_t i = 0; i < count; ++i)
            Motor(of.ang_names[i], std::array{of.ang_limits[i][0], of.ang_limits[i][1], of.ang_offsets[i], of.ang_velocity[i]});
        if (std::ranges::all_of(of.range_time, [](const auto& times) { return times.empty(); })) return;
        Line("RANGE_TIME");
        for (std::size_t i = 0; i < count; ++i) {
            Line("  " + Word_Text(In_One_Line(of.ang_names[i])) + "  " + std::to_string(of.range_time[i].size()));
            for (const auto& [range, time] : of.range_time[i]) Line(Columns(std::array{range, time}));
        }
    }
    void Motor(const std::string& name, std::span<const float> values) { Line("  " + Named(Word_Text(In_One_Line(name)), values)); }
    void Displacements_Of(const Diffractometer_Type& of) {
        const std::size_t count = Motors(of.num_disp);
        if (count > 0) {
            Put("NUM_DISP", std::to_string(count));
            Line("DISP_LIMITS        Min      Max    Offset");
            for (std::size_t i = 0; i < count; ++i)
                Motor(of.disp_names[i], std::array{of.disp_limits[i][0], of.disp_limits[i][1], of.disp_offsets[i]});
        }
        Put("DISP_CENTRE", of.disp_centre);
    }
    void Tables(const Diffractometer_Type& of) {
        if (!of.alpha_file.empty()) Put("ALPHA_FILE", of.alpha_file);
        if (Holds(of.alphas)) {
            Line("DET_ALPHAS");
            Rows(of.alphas);
        }
        if (!Holds(of.resolution_surface)) return Line(no_surface);
        Line(surface_heading);
        Put("RESOLUTION_SURFACE", IntegerToString(of.resolution_surface.columns) + "  " + IntegerToString(of.resolution_surface.rows));
        Rows(of.resolution_surface);
    }

    std::string text_;
};

}  // namespace

std::vector<std::string> Write_Current_Instrm_data(const Instrument_State& state) {
    Listing listing;
    if (state.Current_Instrm_Set) return listing.Lines(state.Current_Instrm);
    listing.Frame();
    listing.Put(" No instrument is set", "");
    return std::move(listing).lines();
}

std::string Instrm_File_Text(const Diffractometer_Type& instrument) { return Instrument_Writer().Text(instrument); }

}  // namespace vntl
