// A new orientation in an instrument file: the lines of the wavelength and of the matrix change, all others keep their bytes.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "base/edit_descriptor.hpp"
#include "base/free_form.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "base/write_file.hpp"
#include "instrument/instrument_file.hpp"
#include "instrument/instrument_text.hpp"
#include "instrument/pixel_geometry.hpp"

namespace vntl {

namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

struct New_Lines {
    std::string wave;                 // blank where the wavelength stays
    std::array<std::string, 3> rows;  // of the matrix
};

// The columns of a record without its line end. They must read back as the values, to half a unit of the last decimal: numbers too large
// for their columns, or that fill them and touch their neighbours, do not.
template <std::size_t N>
bool Written(const Edit_Format& format, const std::array<float, N>& values, double half_unit, std::string& columns,
             std::array<float, N>& back) {
    columns.clear();
    if (Write_Record(columns, format, std::span<const float>(values)).failed || columns.empty()) return false;
    columns.pop_back();
    if (!Read_Free_Reals(columns, back)) return false;
    for (std::size_t i = 0; i < N; ++i) {
        const double value = values[i], rounding = std::fabs(value) * std::numeric_limits<float>::epsilon();
        if (!(std::fabs(back[i] - value) <= half_unit + rounding)) return false;
    }
    return true;
}

Status Make_Lines(const Matrix3& ub, std::optional<float> wave, New_Lines& lines) {
    static const Edit_Format row_format("(3F16.9)"), wave_format("(F10.5)");
    Matrix3 inverse, written;
    if (!Invert_Matrix(ub, inverse)) return Status::Fail("The UB-matrix cannot be inverted: the file is not changed");
    for (std::size_t i = 0; i < 3; ++i)
        if (!Written(row_format, ub[i], 0.5e-9, lines.rows[i], written[i]))
            return Status::Fail("The UB-matrix holds numbers too large for the file: the file is not changed");
    if (!Invert_Matrix(written, inverse))
        return Status::Fail("The UB-matrix is too small for the nine decimals of the file: the file is not changed");
    if (!wave) return Status::Done();
    std::array<float, 1> back{};
    if (!(*wave > 0) || !Written(wave_format, std::array{*wave}, 0.5e-5, lines.wave, back) || !(back[0] > 0))
        return Status::Fail("The wavelength must be positive and fit into the file (0.00001 to 9999 angstroms): the file is not changed");
    lines.wave.insert(0, "WAVE ");
    return Status::Done();
}

// Walks the lines of a description as its reader does, so that a motor of the name WAVE is no wavelength.
class Section_Lines {
public:
    // Whether a line that is not passed over belongs to the names of motors or to their times.
    bool Take(std::string_view line) {
        if (pairs_ > 0) return --pairs_, true;
        if (motors_ == 0) return false;
        --motors_;
        std::string name;
        if (with_pairs_ && Take_Word(line, name)) pairs_ = std::max(0, Count(line));
        return true;
    }
    void Keyword(const Keyword_Line& line) {
        if (line.word == "NUM_ANG") angles_ = Count(line.value);
        if (line.word == "NUM_DISP") displacements_ = Count(line.value);
        with_pairs_ = line.word == "RANGE_TIME";
        if (with_pairs_ || line.word == "ANG_LIMITS") motors_ = angles_;
        if (line.word == "DISP_LIMITS") motors_ = displacements_;
    }

private:
    static int Count(std::string_view text) {
        float value = 0;
        if (!Read_Free_Reals(text, {&value, 1}) || !(value >= 0) || !(value < 1e9f)) return 0;
        return static_cast<int>(value);
    }

    int angles_ = 0, displacements_ = 0;
    int motors_ = 0, pairs_ = 0;  // lines that are to come
    bool with_pairs_ = false;
};

class Updated_File {
public:
    Updated_File(std::string_view text, const New_Lines& lines) : new_(lines) {
        Line_Cursor cursor(text);
        std::string_view line;
        while (cursor.Next(line)) {
            const char* const behind = line.data() + line.size();
            const std::string_view end(behind, static_cast<std::size_t>(cursor.Rest().data() - behind));
            if (usual_end_.empty()) usual_end_ = end;
            Add(line, end, cursor.Number());
        }
        if (usual_end_.empty()) usual_end_ = "\n";
        const int behind_last = cursor.Number() + 1;
        Add_Rows(behind_last);
        if (!wave_found_ && !new_.wave.empty()) Insert(new_.wave, behind_last);
        if (ub_found_) return;
        Insert("UBMAT", behind_last);
        rows_due_ = new_.rows.size();
        Add_Rows(behind_last);
    }

    const std::string& text() const { return text_; }
    int first_changed() const { return first_changed_; }  // line, from 1

private:
    void Add(std::string_view line, std::string_view end, int number) {
        if (Is_Passed_Over(line)) return Keep(line, end);
        if (rows_due_ > 0 && Is_Number_Line(line)) return Change(new_.rows[new_.rows.size() - rows_due_--], end, number);
        Add_Rows(number);
        if (sections_.Take(line)) return Keep(line, end);
        const Keyword_Line keyword = Split_Keyword(line);
        sections_.Keyword(keyword);
        if (keyword.word == "UBMAT") {
            ub_found_ = true;
            rows_due_ = new_.rows.size();
        }
        if (keyword.word != "WAVE" || new_.wave.empty()) return Keep(line, end);
        wave_found_ = true;
        Change(new_.wave, end, number);
    }
    void Keep(std::string_view line, std::string_view end) { text_.append(line).append(end); }
    void Change(std::string_view line, std::string_view end, int number) {
        if (first_changed_ == 0) first_changed_ = number;
        Keep(line, end);
    }
    // A line of its own, also behind a last line that has no end.
    void Insert(std::string_view line, int number) {
        if (!text_.empty() && text_.back() != '\n' && text_.back() != '\r') text_ += usual_end_;
        Change(line, usual_end_, number);
    }
    // Those that the file lacks.
    void Add_Rows(int number) {
        for (; rows_due_ > 0; --rows_due_) Insert(new_.rows[new_.rows.size() - rows_due_], number);
    }

    const New_Lines& new_;
    Section_Lines sections_;
    std::string text_;
    std::string_view usual_end_;
    std::size_t rows_due_ = 0;
    int first_changed_ = 0;
    bool ub_found_ = false, wave_found_ = false;
};

// In four columns, or as many as it needs.
std::string Line_Number(int number) {
    const std::string digits = std::to_string(number);
    return std::string(digits.size() < 4 ? 4 - digits.size() : 0, ' ') + digits;
}

Status Update_File(const std::string& filename, const Matrix3& ub, std::optional<float> wave) {
    Text_File file;
    if (Status status = Open_Description(filename, file); status.failed) return status;
    std::string updated;
    int line = 0;
    if (Status status = Instrm_Text_With_UB(file.Text(), ub, wave, updated, line); status.failed) return status;
    const Status unwritten = Status::Fail_File("Error updating the file: " + filename + " at line:" + Line_Number(line));
    if (!Can_Be_Written(filename)) return unwritten;
    const std::string mark(file.Marked() ? byte_order_mark : ""), backup = filename + ".bak";
    if (!Replace_File(backup, mark + std::string(file.Text()))) return Status::Fail_File("Error opening the backup file: " + backup);
    return Replace_File(filename, mark + updated) ? Status::Done() : unwritten;
}

}  // namespace

bool Invert_Matrix(const Matrix3& matrix, Matrix3& inverse) {
    Matrix3d whole{}, inverted{};
    for (std::size_t i = 0; i < 9; ++i) whole[i / 3][i % 3] = static_cast<double>(matrix[i / 3][i % 3]);
    if (!Invert(whole, inverted)) return false;
    Matrix3 made;
    for (std::size_t i = 0; i < 9; ++i) {
        made[i / 3][i % 3] = static_cast<float>(inverted[i / 3][i % 3]);
        if (!std::isfinite(made[i / 3][i % 3])) return false;
    }
    inverse = made;
    return true;
}

Status Instrm_Text_With_UB(std::string_view text, const Matrix3& ub, std::optional<float> wave, std::string& updated, int& first_changed) {
    New_Lines lines;
    if (Status status = Make_Lines(ub, wave, lines); status.failed) return status;
    const std::string_view described = Without_End_Mark(text);
    const Updated_File made(described, lines);
    updated = made.text() + std::string(text.substr(described.size()));
    first_changed = made.first_changed();
    return Status::Done();
}

Status Update_Current_Instrm_UB(const std::string& filename, const Matrix3& ub, std::optional<float> wave, Instrument_State& state) {
    if (!state.Current_Instrm_Set) return Status::Fail(" Current Instrument not set! (call subroutine: Read_Current_Instrm) ");
    if (Status status = Update_File(filename, ub, wave); status.failed) return status;
    Diffractometer_Type& current = state.Current_Instrm;
    current.UB = ub;
    Invert_Matrix(ub, current.UB_inverse);
    if (wave) current.wave = *wave;
    state.Current_Orient = {true, current.UB, current.UB_inverse, current.wave};
    return Status::Done();
}

}  // namespace vntl
