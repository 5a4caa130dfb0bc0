#include "patterns/asc.hpp"

namespace vntl {

bool Is_Asc(std::string_view) { return false; }

Status Read_Asc(std::string_view, std::vector<Diffraction_Pattern_Type>&, Read_Notes&) { return Status::Fail("not yet"); }

}  // namespace vntl
