#include "instrument/rawmerge.hpp"

#include <algorithm>

#include "base/edit_descriptor.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

constexpr float least_monitor = 99;  // not itself

// Numbers in their columns; blank for those that have no room in them.
template <class... Numbers>
std::string In_Columns(const char* format, const Numbers&... numbers) {
    std::string text;
    const Edit_Format columns(format);
    const bool written = Write_Record(text, columns, numbers...).ok();
    if (!text.empty()) text.pop_back();
    return written && !Contains(text, "*") ? text : std::string();
}

bool Is_One_Line(const std::string& text) {
    return std::none_of(text.begin(), text.end(), [](unsigned char c) { return c < ' '; });
}

// Appends the words about adding.
std::optional<Rawmerge_Fault> Add_Adding(const Rawmerge_Input& input, std::string& line) {
    if (input.adding == Rawmerge_Adding::all) line += " -add ";
    if (input.adding == Rawmerge_Adding::blocks) {
        const std::string block = In_Columns("(I4)", input.block);
        if (input.block < 1 || block.empty()) return Rawmerge_Fault{Rawmerge_Item::block, "A block has 1 to 9999 numors"};
        line += " -add N " + block;
    }
    if (input.adding == Rawmerge_Adding::temperatures) {
        const std::string interval = In_Columns("(F8.3)", input.interval);
        if (!(input.interval >= 0) || interval.empty()) return Rawmerge_Fault{Rawmerge_Item::interval, "It must be from 0 to 9999.999"};
        line += " -add T " + interval;
    }
    return {};
}

}  // namespace

std::optional<Rawmerge_Fault> Rawmerge_Line(const Rawmerge_Input& input, std::string& line) {
    if (!Is_One_Line(input.data_directory)) return Rawmerge_Fault{Rawmerge_Item::data_directory, "Its name has a line end"};
    std::string text = "-ins " + input.instrument + " -dir " + input.data_directory + " -num " +
                       std::string(Trim_Left(In_Columns("(2I8)", input.first, input.last)));
    if (!(input.monitor <= least_monitor)) {
        const std::string monitor = In_Columns("(F12.2)", input.monitor);
        if (!(input.monitor > least_monitor) || monitor.empty())
            return Rawmerge_Fault{Rawmerge_Item::monitor, "It must be below 1000000000"};
        text += " -nor " + std::string(Trim_Left(monitor));
    }
    text += input.instrument_5 ? " -fmt 2" : " -fmt 1";
    if (input.prepends_code) {
        const std::string_view code = Trim(input.codefile);
        if (code.empty() || !Is_One_Line(input.codefile)) return Rawmerge_Fault{Rawmerge_Item::codefile, "The codefile is missing"};
        text += " -cod " + std::string(code);
    }
    if (input.appends_temperature) text += " -lab T";
    const std::optional<Rawmerge_Fault> fault = Add_Adding(input, text);
    if (!fault) line = std::move(text);
    return fault;
}

}  // namespace vntl
