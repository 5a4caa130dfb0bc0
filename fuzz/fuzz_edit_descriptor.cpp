// Formats and lines from a stranger: the first line of the input is a format, by which the rest is read and the values are written again;
// the rest is also read free-form.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/edit_descriptor.hpp"
#include "base/free_form.hpp"

namespace {

using namespace vntl;

constexpr std::size_t most_output = 1 << 20;

Edit_Reader::Next_Line Lines(std::string_view text) {
    return [text](std::string_view& line) mutable {
        if (text.empty()) return false;
        line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        return true;
    };
}

void Read_Mixed(const Edit_Format& format, std::string_view text) {
    Edit_Reader reader(format, Lines(text));
    int n = 0;
    double x = 0;
    bool flag = false;
    std::string word;
    reader.Read(n, x, flag, word);
    reader.Read_Text(word, 3);
}

void Read_Numbers(const Edit_Format& format, std::string_view text) {
    std::vector<float> values(50);
    Edit_Reader reader(format, Lines(text));
    reader.Read(values);
    std::string out;
    Edit_Writer writer(format, out);
    for (float value : values)
        if (!writer.Write(value) || !writer.Write(static_cast<double>(value) * 1e200) || out.size() > most_output) break;
    writer.Finish();
    std::vector<int> whole(50);
    Edit_Reader integers(format, Lines(text));
    integers.Read(whole);
    out.clear();
    Edit_Writer whole_writer(format, out);
    whole_writer.Write(whole);
    out.clear();
    (void)Write_Record(out, format, text, true, text);
}

void Read_Free(std::string_view text) {
    std::vector<float> values(20);
    std::vector<std::string> words(3);
    int n = 0;
    double x = 0;
    Free_Form_Reader reader(text);
    while (!reader.At_End() && reader.Read(n, x, values, words)) {
    }
    if (reader.given() > 25) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string_view first = input.substr(0, input.find('\n'));
    const std::string_view rest = input.substr(std::min(input.size(), first.size() + 1));
    const Edit_Format format(first);
    Read_Mixed(format, rest);
    Read_Numbers(format, rest);
    Read_Free(rest);
    return 0;
}
