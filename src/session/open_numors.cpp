#include "session/open_numors.hpp"

#include <utility>

#include "base/os.hpp"
#include "instrument/data_directories.hpp"
#include "instrument/numors_to_pattern.hpp"
#include "instrument/read_numor.hpp"
#include "session/load_all.hpp"
#include "session/read_files.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

// One run alone, as it was counted.
Status Convert(const std::string& file, const std::string& plain, const std::string& instrument, Read_File& read) {
    std::string bytes;
    Status status = Read_Run_Bytes(plain, bytes);
    if (status.failed) return status;
    std::vector<Powder_Numor_Type> run(1);
    const std::string name = instrument.empty() ? Instrument_Of_Text(bytes) : instrument;
    if (status = Read_Numor_Text(bytes, file, name, run.front()); status.failed) return status;
    return PowderNumors_To_DiffPattern(run, {true}, read.patterns.front(), {}, read.warnings);
}

}  // namespace

Read_File Read_Numor_File(const std::string& file, const std::string& instrument, const std::string& plain) {
    Read_File read{.path = file};
    read.patterns.resize(1);
    read.status = Convert(file, plain.empty() ? file : plain, instrument, read);
    Diffraction_Pattern_Type& pattern = read.patterns.front();
    pattern.filename = File_Part(file);
    pattern.filepath = file.substr(0, file.size() - pattern.filename.size());
    if (!plain.empty()) IOsDeleteFile(plain);
    return read;
}

bool Is_Numor(const std::string& file) {
    constexpr std::size_t first_lines = 256;
    std::string head;
    return Read_Run_Head(file, first_lines, head).ok() && Looks_Like_Numor(head);
}

Open_Result Open_Numors(Session& session, Ask& ask, const std::vector<std::string>& files, const std::string& instrument,
                        const Run_Sources& sources) {
    const auto read = [&instrument, &sources](const std::string& file) {
        const auto plain = sources.unpacked.find(file);
        if (plain != sources.unpacked.end()) return Read_Numor_File(file, instrument, plain->second);
        return Read_Numor_File(sources.place ? sources.place(file) : file, instrument);
    };
    Open_Result result = Load_All(session, ask, {.paths = files, .refusals = sources.refusals, .replaces = true}, read);
    if (result.opened) session.store.profiles_uniform = true;
    return result;
}

Open_Result Open_Numor_Beside(Session& session, Ask& ask, const std::string& file) {
    return Load_All(session, ask, {.paths = {file}}, [](const std::string& path) { return Read_Numor_File(path); });
}

}  // namespace vntl
