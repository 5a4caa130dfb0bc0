// Wavelengths, or dtt1 and dtt2, from an instrument parameter file to rows of the store.
//
// A row takes the bank that has its own number; one without a number, and one of angles whose number the file does not have, the first.
// That a bank of time of flight is another one's neighbour does not make its difC the neighbour's, so a row of flight whose bank is missing
// gets nothing. Constants change while x is what was measured, 2theta or TOF: rows over d, Q or s came there by those that they have.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "base/ask.hpp"
#include "base/status.hpp"
#include "patterns/instrument_parameters.hpp"

namespace vntl {

struct Open_Result;
struct Session;

// Reads a file whole. The message names it.
Status Read_Instrument_File(const std::string& path, std::vector<Instrument_Bank>& banks);

// Asks for the file where `name` is blank, and which rows take which of its banks; one step of undo. The message tells why not: no rows, x
// neither 2theta nor TOF, a file that cannot be read or tells of the other kind of measurement. `notice` tells what was taken.
Status Constants_From_File(Session&, Ask&, const std::string& name, std::string& notice);

// The same for a file that is opened; what fails is told to the user.
Open_Result Open_Constants_File(Session&, Ask&, const std::string& name);

// --- for the files that lie beside patterns --------------------------------------------------------------------------------------

// The rows are of angles, or of times; constants of that kind can be given to them.
bool Takes_Constants(const Session&);

// The number of the bank that a row shows, as far as the row or its file tells it, else 0.
int Number_Of_Bank(const Session&, int row);

// The bank of the rows' kind with a number, or null; 0 for the first of that kind.
const Instrument_Bank* Find_Bank(const Session&, std::span<const Instrument_Bank> banks, int number);

struct Row_Bank {
    int row;
    const Instrument_Bank* bank;
};
// One step of undo, whose text begins with `what`.
void Give_Constants(Session&, const std::string& what, std::span<const Row_Bank> rows);

// "dtt1 = 22600.248 µs/Å, dtt2 = -0.9009177 µs/Å²", and "difB = 2.6234658 µsÅ, zero = -8.5176424 µs" of what nothing makes use of, empty
// for nothing.
std::string Told_Constants(const Instrument_Bank& bank);
std::string Told_Unused(const Instrument_Bank& bank);

}  // namespace vntl
