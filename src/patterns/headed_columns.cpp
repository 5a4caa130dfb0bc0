#include "patterns/headed_columns.hpp"

namespace vntl {

bool Is_Headed_Columns(std::string_view) { return false; }

Status Read_Headed_Columns(std::string_view, std::vector<Diffraction_Pattern_Type>&, Read_Notes&) { return Status::Fail("not yet"); }

}  // namespace vntl
