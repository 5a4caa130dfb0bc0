// Runs of powder diffractometers as rows: they take the place of all rows that are there.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "session/load.hpp"

namespace vntl {

struct Read_File;
struct Session;
class Ask;

// Where runs come from.
struct Run_Sources {
    std::function<std::string(const std::string& file)> place = {};  // where a run really lies, called in any thread
    std::map<std::string, std::string> unpacked = {};  // plain files that stand for compressed ones, removed when they are read
    std::vector<Message_Box> refusals = {};            // what the box at the end tells besides
};

// Each run, compressed or not, becomes a row, past those that fail, which one box tells at the end. The old rows leave when the first new
// one is ready, and stay where none is.
Open_Result Open_Numors(Session&, Ask&, const std::vector<std::string>& files, const std::string& instrument,
                        const Run_Sources& sources = {});

// Runs beside the rows that are there, by the instrument that each names itself.
Open_Result Open_Numor_Beside(Session&, Ask&, const std::string& file);

// Whether a file is a run, compressed or not, by its first line.
bool Is_Numor(const std::string& file);

// A run, in any thread. The instrument is the one that it names itself where none is given.
Read_File Read_Numor_File(const std::string& file, const std::string& instrument = {}, const std::string& plain = {});

}  // namespace vntl
