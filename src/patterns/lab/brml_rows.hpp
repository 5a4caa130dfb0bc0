// The rows of a BRML document, taken out of it before it is parsed: they are nearly all of it, and plain.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vntl {

inline constexpr std::string_view row_element = "Datum", run_element = "DatumRun", run_attribute = "number";

// A document in which each run of rows, "<Datum>1,2,3</Datum>" after each other, is one element "DatumRun" with the run's number; its lines
// are numbered as they were. Rows written in another way stay where they are.
struct Brml_Rows {
    explicit Brml_Rows(std::string_view bytes);

    std::string document;
    std::vector<std::string_view> runs;  // parts of the bytes
};

// Goes to the next row of a run; false at its end.
bool Next_Row(std::string_view& run, std::string_view& row);

}  // namespace vntl
