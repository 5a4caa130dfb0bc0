#include <algorithm>

#include "base/text.hpp"
#include "instrument/numor_parts.hpp"
#include "instrument/read_numor.hpp"

namespace vntl {

namespace {

struct Crystal_Reader {
    std::string_view instrument;
    std::string_view letters;  // in the name that the file tells
    bool has_point_detector;   // some of its runs were measured so
};
constexpr Crystal_Reader crystal_readers[] = {
    {"R6", "R6", false}, {"R11", "R11", true}, {"R17", "R17", true}, {"R18", "R18", false}, {"R18_HB", "R18", false}};

const Crystal_Reader* Find_Reader(std::string_view name) {
    for (const Crystal_Reader& reader : crystal_readers)
        if (reader.instrument == name) return &reader;
    return nullptr;
}

void Take_Integers(const Numor_Source& source, SXTAL_Numor_Type& numor) {
    numor.manip = source.I(4);
    numor.nbang = Angles_Of_Frame(source.I(5));
    numor.nframes = source.I(7);
    numor.icalc = source.I(9);
    numor.nbdata = source.I(24);
    for (std::size_t i = 0; i < numor.icdesc.size(); ++i) numor.icdesc[i] = source.I(25 + i);
}

void Take_Reals(const Numor_Source& source, SXTAL_Numor_Type& numor) {
    Take_Common_Reals(source, numor);
    for (std::size_t i = 0; i < 3; ++i) {
        numor.hmin[i] = source.F(1 + i);
        numor.hmax[i] = source.F(22 + i);
        numor.dh[i] = source.F(25 + i);
        for (std::size_t k = 0; k < 3; ++k) numor.ub[i][k] = source.F(9 + 3 * i + k);
    }
    numor.phi = source.F(4);
    numor.chi = source.F(5);
    numor.omega = source.F(6);
    numor.gamma = source.F(7);
    numor.psi = source.F(8);
    numor.coupling = source.F(43);
}

Status Read_Crystal(const Crystal_Reader& reader, Numor_Source& source, const std::optional<Frame_Selection>& wanted,
                    SXTAL_Numor_Type& numor) {
    if (Status status = Read_Header_Integers(source, source.blocks.Find('I')); status.failed) return status;
    Take_Integers(source, numor);
    if (Status status = Read_Header_Reals(source); status.failed) return status;
    Take_Reals(source, numor);
    numor.notice = " => Reading ASCII files";
    if (reader.has_point_detector && numor.nbdata == 1)
        return Status::Fail("This numor was made using Point detector in the " + std::string(reader.instrument) + " Instrument");
    Frame_Layout layout{.nframes = numor.nframes, .nbdata = numor.nbdata, .nbang = numor.nbang, .step = numor.scans[1]};
    if (wanted) {
        if (wanted->first < 1 || wanted->last < wanted->first || wanted->last > numor.nframes)
            return Status::Fail(" Invalid frames selection.");
        layout.first = wanted->first;
        layout.last = wanted->last;
    }
    const Frames_Read read = Read_Frames(Find_Data_Blocks(source, layout), layout, numor);
    Take_Time_And_Monitor(numor);
    return Frames_Problem(read, Where_In_Frame(read));
}

}  // namespace

Status No_SXTAL_Reader(const std::string& name) { return Status::Fail(" Not Implemented for the SXTAL Instrument name: " + name); }

bool Is_SXTAL_Numor_Instrument(std::string_view instrument) { return Find_Reader(Upper(Trim(instrument))) != nullptr; }

Status Read_Numor_Text(std::string_view text, const std::string& file, std::string_view instrument, SXTAL_Numor_Type& numor,
                       std::optional<Frame_Selection> frames) {
    numor = {};
    const std::string name = Upper(Trim(instrument));
    const Crystal_Reader* const reader = Find_Reader(name);
    if (!reader) return No_SXTAL_Reader(name);
    Numor_Source source;
    if (Status status = Read_Numor_Texts(text, file, name, reader->letters, source, numor); status.failed) return status;
    return Read_Crystal(*reader, source, frames, numor);
}

Status Read_Numor(const std::string& file, std::string_view instrument, SXTAL_Numor_Type& numor, std::optional<Frame_Selection> frames) {
    numor = {};
    const std::string name = Upper(Trim(instrument));
    if (!Find_Reader(name)) return No_SXTAL_Reader(name);
    std::string text;
    if (Status status = Open_Numor(file, name, text); status.failed) return status;
    return Read_Numor_Text(text, file, name, numor, frames);
}

}  // namespace vntl
