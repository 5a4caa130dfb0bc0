// Adding rows from files: the Load sequence that every command uses, and the pattern command that rests on it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/ask.hpp"
#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "session/load_notes.hpp"

namespace vntl {

struct Configuration;
struct Session;

enum class Load_Result {
    added,
    table_full,  // 2000 rows; told to the user
    failed,      // the reader or a check failed; told to the user
    refused,     // the x space refused the file, which is told to the user, or the user did, which the notes tell
};

// What a reader made of a file: a pattern, or why there is none.
struct Fresh_Pattern {
    Status status;
    Diffraction_Pattern_Type pattern;
    int read = 0, left_out = 0;  // points of the file, and those of them without a number
};

// A file becomes row nperfiles + 1: limit, checks, trimming, kind, x space, recent files. Nothing changes unless the result is `added`.
Load_Result Load_Row(Session&, Ask&, const std::string& path, const std::string& format, Fresh_Pattern fresh, Load_Notes&);

// The first step of that sequence: true where the table has no room for a row, which is told to the user.
bool Table_Is_Full(const Session&, Ask&);

// The steps between it and the trimmed pattern, whose x rises strictly and whose x and y are numbers: what failed, told to
// the user, or nothing. For rows that bring more than a pattern.
std::optional<Load_Result> Check_For_Row(Session&, Ask&, const std::string& path, Fresh_Pattern& fresh, Load_Notes&);

// Just before the row: nothing can be undone any more, the file is a recent one, what it lacks is counted, and the views begin anew. The
// last step that can fail.
void Note_Coming_Row(Session&, const std::string& full_path, const Fresh_Pattern& fresh, Load_Notes&);

// The one name of a file that is named in a directory, or in the present one.
std::string Absolute_Path(const Configuration&, const std::string& path, const std::string& directory);
std::string Absolute_Path(const Configuration&, const std::string& path);

// The end of every loading command: purges the last row and sets `profiles_uniform`. `rows_before`: rows when the command began.
void Finish_Load(Session&, int rows_before);

// What a loading command did; `failed` when a reader or a check failed or the table was full, `cancelled` when nothing was chosen.
struct Open_Result {
    int rows_added = 0;
    bool failed = false;
    bool cancelled = false;
    double read_ms = 0;       // from opening the first file to the last row, without dialogs
    std::string notice = {};  // for the status bar, empty for none
    bool opened = false;      // rows came, or another profile in the place of one
};

// Opens the files that the user selects, or the one named, each by the format that its name tells; the user is asked once about all those
// whose names do not tell it. Names are read from the last to the first.
Open_Result Open_Pattern_File(Session&, Ask&, const std::string& name = {});

// Opens the files of the lists that the user selects, or of the one named. A name that does not tell its format is asked about as in a
// selection. A file that fails ends the command and leaves no profile at all; one that the x space refuses is passed over.
Open_Result Open_Buffer_File(Session&, Ask&, const std::string& name = {});

// Opens raw files of diffractometers with many detectors, each detector a row: those that the user selects, or the one named. He is asked
// once whether their counts are divided by the efficiencies.
Open_Result Open_Raw_File(Session&, Ask&, const std::string& name = {});

// Opens one file by its extension, or by its contents where that is unknown, as recent files do: "Bad name: len_trim=0",
// "Bad name: without extension", "Unknown file extension " as the failure's message, shown by the caller.
Status Open_File_By_Extension(Session&, Ask&, const std::string& name, Open_Result& result);

// Opens several files of a command line, left to right, each by the registry of readers. The files of a list stand in its place; where
// there is one the user is asked about names that do not tell their format.
Open_Result Open_Files(Session&, Ask&, const std::vector<std::string>& names, std::optional<int> format_code = {});

}  // namespace vntl
