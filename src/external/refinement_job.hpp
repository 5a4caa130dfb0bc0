// A run of the refinement program, or of one like it: what its control file tells beforehand, the names that it goes by, and its result.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"

namespace vntl {

// Whether the job needs the name of a data file: not where the control file tells of several patterns, each with a file of its own, nor
// where a pattern is only calculated. `head`: the first lines of the file, see refinement_job.cpp. Fails, and `needs` stays as it was, for
// a file without a line, and where no number stands for the kind of job.
Status Needs_Data(std::string_view head, bool& needs);

// The same for a file, of which 64 kB are read at most. The message names it.
Status File_Needs_Data(const std::string& control_file, bool& needs);

// Names of a run, from the file that the user chose.
struct Run_Names {
    std::string directory;  // in which the program runs
    std::string base;       // of the chosen file, without directory and extension
    bool is_new = false;    // the chosen file ends in ".new": it becomes the control file

    std::string With(std::string_view ending) const;  // directory, base, ending
    std::string Control_File() const { return With(".pcr"); }
    // Where the result may stand, the first place first.
    std::vector<std::string> Results() const { return {With(".prf"), With("_1.prf")}; }
};
Run_Names Names_Of_Run(std::string_view chosen);  // a full path

// The data file that has the name of the run; blank where there is none.
std::string Data_Of_Run(const Run_Names& names, const std::function<bool(const std::string&)>& exists);

// A ".new" becomes the control file, and the one that was there its ".bak". A failure leaves the control file as it was.
Status Take_New(const Run_Names& names, const std::string& chosen);

// The files in which a result is awaited, as they were before the run.
class Awaited_Results {
public:
    explicit Awaited_Results(std::vector<std::string> files);

    // The first one that the run has written; blank without one.
    std::string Written() const;
    // The first one that is there, whoever wrote it.
    std::string There() const;
    const std::string& First() const { return files_.front(); }

private:
    // Whatever writes a file anew changes one of these.
    struct Stamp {
        std::int64_t seconds = 0, nanoseconds = 0, size = 0;
        std::uint64_t device = 0, number = 0;
        bool operator==(const Stamp&) const = default;
    };
    static std::optional<Stamp> Stamp_Of(const std::string& file);

    std::vector<std::string> files_;
    std::vector<std::optional<Stamp>> before_;
};

}  // namespace vntl
