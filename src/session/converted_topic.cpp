#include "session/converted_topic.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/os.hpp"
#include "instrument/data_directories.hpp"
#include "instrument/numors_to_pattern.hpp"
#include "instrument/read_numor.hpp"
#include "session/pattern_json.hpp"

namespace vntl {

namespace {

constexpr std::string_view usage = "usage: print converted INSTRUMENT FILE.. [cal FILE] [norm V] [bank N]";
constexpr std::array<std::string_view, 3> options = {"cal", "norm", "bank"};

// What the words ask for.
struct Wanted {
    std::string instrument;
    std::vector<std::string> files;
    std::string calibration;  // blank: none
    std::optional<float> norm = {};
    int bank = 0;
};

// Each option stands once, with its value behind it.
Status Read_Options(Words words, Wanted& wanted) {
    std::array<bool, options.size()> given{};
    if (words.size() % 2 != 0) return Status::Fail(usage);
    for (; !words.empty(); words = words.subspan(2)) {
        const auto option = static_cast<std::size_t>(std::find(options.begin(), options.end(), words[0]) - options.begin());
        if (option == options.size() || std::exchange(given[option], true)) return Status::Fail(usage);
        double value = 0;
        if (words[0] == "cal") wanted.calibration = words[1];
        if (words[0] == "norm") {
            if (!Parse_Real(words[1], value)) return Status::Fail("norm needs a number, not " + words[1]);
            wanted.norm = static_cast<float>(value);
        }
        if (words[0] == "bank" && (!Parse_Integer(words[1], wanted.bank) || wanted.bank < 1))
            return Status::Fail("bank needs a whole number from 1 on, not " + words[1]);
    }
    return Status::Done();
}

// The first word behind the instrument is a file whatever its name; names go on to the first option.
Status Read_Words(Words words, Wanted& wanted) {
    if (words.size() < 2) return Status::Fail(usage);
    const auto option = std::find_first_of(words.begin() + 2, words.end(), options.begin(), options.end());
    wanted.instrument = words[0];
    wanted.files.assign(words.begin() + 1, option);
    return Read_Options({option, words.end()}, wanted);
}

Status Read_Runs(const std::string& directory, const Wanted& wanted, std::vector<Powder_Numor_Type>& runs) {
    for (const std::string& name : wanted.files) {
        const std::string file = In_Directory(directory, name);
        std::string bytes;
        if (Status status = Read_Run_Bytes(file, bytes); status.failed) return status;
        Status status = Read_Numor_Text(bytes, file, wanted.instrument, runs.emplace_back());
        if (status.failed) return With_File(status, file);
    }
    return Status::Done();
}

Status Print_Converted(const std::string& directory, Words words, const Put_Line& put) {
    Wanted wanted;
    std::vector<Powder_Numor_Type> runs;
    Calibration_Detector_Type cal;
    Diffraction_Pattern_Type pattern;
    std::vector<std::string> warnings;
    if (Status status = Read_Words(words, wanted); status.failed) return status;
    Numor_Conversion how{.vnorm = wanted.norm, .bank = wanted.bank};
    if (!wanted.calibration.empty()) {
        Status status = Read_Calibration_File(In_Directory(directory, wanted.calibration), wanted.instrument, cal);
        if (status.failed) return status;
        how.cal = &cal;
    }
    if (Status status = Read_Runs(directory, wanted, runs); status.failed) return status;
    const std::vector<bool> active(runs.size(), true);
    if (Status status = PowderNumors_To_DiffPattern(runs, active, pattern, how, warnings); status.failed) return status;
    Json converted = Json::object();
    Put_Pattern_Head(converted, pattern);
    Put_Pattern_Arrays(converted, pattern, 1, pattern.npts);
    put({{"converted", std::move(converted)}, {"warnings", Json_Texts(warnings)}});
    return Status::Done();
}

}  // namespace

Topic Converted_Topic(const std::string& directory) {
    return {"converted", [directory](Words words, const Put_Line& put) { return Print_Converted(directory, words, put); }};
}

}  // namespace vntl
