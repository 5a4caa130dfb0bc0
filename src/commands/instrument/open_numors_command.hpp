// Runs of the institute's diffractometers: those that the user selects, or those of a range of numbers.
#pragma once

#include <string>

namespace vntl {

struct Application;

inline constexpr const char* numor_filter = "Numor Data File |*.*;*.Z|";  // of selectors

// Finds the directories of runs, which the session keeps, and of temporary files; the first thing that a command about runs does.
void Find_Directories(Application&);

// The instrument that measured a file: by the directories of its path, or as the user tells, to whom the one that the file names itself is
// proposed. At most four capital letters; blank where the user leaves the question.
std::string Instrument_Of_File(const std::string& file);

void Open_Selected_Numors(Application&);
void Open_Numors_Of_Instrument(Application&);

}  // namespace vntl
