// The classic layout: one array behind the other, in fixed columns.
//
//     120.000   5.000 0.05000     200        last x, first x, step, version
//      2    231   1.54056   1.54439   0.01200   0.00000   0.00000
//     45   30  0  1                          reflections of each phase, then its propagation vectors
//       1021    1034 ...                     observed intensities, eight a line, then as many calculated ones
//     142639489 ...                          a code for each reflection, eight a line, then their positions, ten a line
//           1                                excluded regions, and a line of two limits for each
//      0.00000   0.00000   0.50000           of each phase with vectors: these, and their number for each of its reflections
#include <algorithm>

#include "base/edit_descriptor.hpp"
#include "base/text.hpp"
#include "patterns/neutron_tools.hpp"
#include "patterns/plain_columns.hpp"
#include "patterns/prf_tools.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr int phases_on_a_line = 8;
constexpr int numbers_line = 4;  // of the file: where the numbers of phases and points stand

// --- numbers of reflections and vectors ----------------------------------------------------------------------------------------

// With fewer than eight phases the numbers of vectors stand in one of three places; the end of the line tells which.
enum class Vectors_Place {
    next_fields,   // in those of "(8I5,8I3)" that follow
    wide_fields,   // the same, but all of five columns
    behind_eight,  // in its fields of three columns, behind eight places for reflections
};

Vectors_Place Place_Of_Vectors(std::string_view line, int nphases) {
    constexpr int wide = 5, narrow = 3, behind = wide * phases_on_a_line;
    const int length = static_cast<int>(line.size()), counts = 2 * nphases;
    if (nphases >= phases_on_a_line || length <= behind) return Vectors_Place::next_fields;
    if (length == behind + narrow * nphases) return Vectors_Place::behind_eight;
    if (length == behind + narrow * (counts - phases_on_a_line)) return Vectors_Place::next_fields;
    if (length == wide * counts) return Vectors_Place::wide_fields;
    const std::string_view between =
        line.substr(static_cast<std::size_t>(wide * nphases), static_cast<std::size_t>(behind - wide * nphases));
    return between.find_first_not_of(" 0") == std::string_view::npos ? Vectors_Place::behind_eight : Vectors_Place::next_fields;
}

Status Read_Up_To_Eight(Prf_File& file, Prf_Phases& phases) {
    static const Edit_Format next("(8I5,8I3)"), wide("(16I5)"), vectors_behind("(40X,8I3)");
    std::string_view line;
    bool good = file.lines.Next(line);
    line = Trim_Right(line);
    const Vectors_Place place = Place_Of_Vectors(line, phases.Number());
    if (place == Vectors_Place::behind_eight)
        good = Read_Record(line, next, phases.reflections).ok() && Read_Record(line, vectors_behind, phases.vectors).ok();
    else
        good = good && Read_Record(line, place == Vectors_Place::wide_fields ? wide : next, phases.reflections, phases.vectors).ok();
    return good ? Status::Done() : Status::Fail("ERROR: reading nphases <= 8");
}

Status Read_More_Than_Eight(Prf_File& file, Prf_Phases& phases) {
    const Edit_Format format("(" + std::to_string(phases.Number()) + "I5)");
    if (!Read_Fixed(file.lines, format, phases.reflections)) return Status::Fail("ERROR: reading nphases > 8 (Part 1)");
    if (!Read_Fixed(file.lines, format, phases.vectors)) return Status::Fail("ERROR: reading nphases > 8 (Part 2)");
    return Status::Done();
}

Status Read_Phases(Prf_File& file, Prf_Phases& phases) {
    const bool few = phases.Number() <= phases_on_a_line;
    if (Status status = few ? Read_Up_To_Eight(file, phases) : Read_More_Than_Eight(file, phases); status.failed) return status;
    return Allocate_Phases(file, phases,
                           few ? "ERROR: reading nphases <= 8" : "ERROR: reading nphases > 8: a negative number of reflections or vectors");
}

// --- intensities, eight a line, each in seven columns and a blank --------------------------------------------------------------

bool Take_Intensity(const char* at, float& value) {
    return Take_Whole<1, 7, 8>(at - 1, value) || Take_Real(at, at + 7, value);  // what stands before a line belongs to the file too
}

bool Read_Intensities(Line_Cursor& lines, std::vector<float>& values) {
    static const Edit_Format format("(8(F7.0,1X))");
    constexpr std::size_t a_line = 8, width = 8;
    std::string_view line;
    for (std::size_t i = 0; i < values.size(); i += a_line) {
        const std::span<float> row = std::span(values).subspan(i, std::min(a_line, values.size() - i));
        if (!lines.Next(line)) return false;
        std::size_t taken = 0;
        if (line.size() >= width * row.size() - 1)
            while (taken < row.size() && Take_Intensity(line.data() + width * taken, row[taken])) ++taken;
        if (taken == row.size()) continue;
        Edit_Reader careful(format, line.substr(width * taken));
        if (!careful.Read(row.subspan(taken))) return false;
    }
    return true;
}

// --- reflections ---------------------------------------------------------------------------------------------------------------

// A list without entries is an empty line, or none.
template <class Number>
bool Read_List(Line_Cursor& lines, const Edit_Format& format, std::vector<Number>& list) {
    if (!list.empty()) return Read_Fixed(lines, format, list);
    std::string_view line;
    const Line_Cursor before = lines;
    if (lines.Next(line) && !Trim(line).empty()) lines = before;
    return true;
}

// Propagation vectors of a phase, and the number of the vector of each of its reflections, 0 for none.
Status Read_Vectors_Of_Phase(Prf_File& file, const Prf_Phases& phases, int phase, std::span<Prf_Reflection> reflections) {
    static const Edit_Format vector("(3F10.5)"), numbers("(24I3)");
    const auto place = static_cast<std::size_t>(phase - 1);
    for (int j = 1; j <= phases.vectors[place]; ++j)
        if (!Read_Fixed(file.lines, vector, std::span(Propagation_Vector(file.info, phases, phase, j), 3)))
            return Status::Fail("ERROR: reading propagation vectors");
    std::vector<int> tags(static_cast<std::size_t>(phases.reflections[place]));
    if (!Read_List(file.lines, numbers, tags)) return Status::Fail("ERROR: reading indices of propagation vectors");
    auto tag = tags.begin();
    for (Prf_Reflection& r : reflections)
        if (phases.Phase_Of(r.phase) == phase && tag != tags.end()) r.tag = *tag++;
    return Status::Done();
}

Status Read_Reflections(Prf_File& file, const Prf_Phases& phases, std::vector<Prf_Reflection>& reflections) {
    static const Edit_Format codes_format("(8I10)"), positions_format("(10F8.3)");
    std::vector<int> codes(file.info.refl_code.size());
    std::vector<float> positions(codes.size());
    if (!Read_List(file.lines, codes_format, codes)) return Status::Fail("ERROR: loading reflection codes");
    if (!Read_List(file.lines, positions_format, positions) || !Is_Finite(positions))
        return Status::Fail("ERROR: loading angular positions of reflections");
    reflections.reserve(codes.size());
    for (std::size_t i = 0; i < codes.size(); ++i) {
        reflections.push_back(Decode_Reflection(codes[i]));
        reflections.back().position = positions[i];
    }
    return phases.Number() > 0 || codes.empty() ? Status::Done() : Status::Fail("ERROR: loading reflection codes");
}

Status Read_Excluded(Prf_File& file) {
    static const Edit_Format number("(I8)"), two("(2F8.2)");
    const auto pair = [](std::string_view line, std::span<float> limits) { return Read_Record(line, two, limits).ok(); };
    int count = 0;
    if (!Read_Fixed(file.lines, number, count)) return Status::Fail("ERROR: reading number of excluded regions");
    return Read_Regions(file, count, pair) ? Status::Done() : Status::Fail("ERROR: reading excluded regions");
}

Status Read_Marks(Prf_File& file, const Prf_Phases& phases) {
    std::vector<Prf_Reflection> reflections;
    if (Status status = Read_Reflections(file, phases, reflections); status.failed) return status;
    if (Status status = Read_Excluded(file); status.failed) return status;
    for (int phase = 1; phase <= phases.Number(); ++phase)
        if (phases.vectors[static_cast<std::size_t>(phase - 1)] > 0)
            if (Status status = Read_Vectors_Of_Phase(file, phases, phase, reflections); status.failed) return status;
    for (std::size_t i = 0; i < reflections.size(); ++i) Set_Reflection(file.info, phases, i, reflections[i]);
    return Status::Done();
}

}  // namespace

Status Read_Prf_Classic(Prf_File& file) {
    static const Edit_Format range("(2F8.3,F8.5,I8)"), numbers("(I3,I7,5F10.5)");
    constexpr std::string_view bad_range = "ERROR: thmax,thmin,ste,ivers";
    constexpr std::string_view bad_numbers = "ERROR: nphases,npts,lambda1,lambda2,glb1,glb8,glb9";
    Diffraction_Pattern_Type& p = file.pattern;
    int version = 0, nphases = 0, npts = 0;
    float last = 0, first = 0, step = 0;
    Prf_Shift shift;
    if (!Read_Fixed(file.lines, range, last, first, step, version) || !All_Finite(last, first, step)) return Status::Fail(bad_range);
    if (!Read_Fixed(file.lines, numbers, nphases, npts, p.conv[0], p.conv[1], shift.zero, shift.cosine, shift.sine) ||
        !All_Finite(p.conv[0], p.conv[1], shift.zero, shift.cosine, shift.sine))
        return Status::Fail(bad_numbers);
    if (Status status = Check_Phases(nphases, numbers_line); status.failed) return status;
    if (Status status = Allocate_Points(file, npts, numbers_line, "ERROR: npts <= 0"); status.failed) return status;

    Prf_Phases phases(nphases);
    if (Status status = Read_Phases(file, phases); status.failed) return status;
    if (!Read_Intensities(file.lines, p.y)) return Status::Fail("ERROR: reading Yobs values");
    if (!Read_Intensities(file.lines, p.ycalc)) return Status::Fail("ERROR: reading Ycalc values");
    if (Status status = Read_Marks(file, phases); status.failed) return status;

    p.scat_var = "2theta";
    p.xmin = first;
    p.step = step;
    Set_Grid(p);
    if (!Take_Shift_Off(shift, file)) return Status::Fail(bad_range);
    Set_Ranges(p);
    if (shift.Constant()) p.step = step;
    p.constant_step = shift.Constant();
    Set_Count_Variances(p);
    return Status::Done();
}

}  // namespace vntl
