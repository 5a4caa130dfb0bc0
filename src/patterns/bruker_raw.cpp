#include "patterns/bruker_raw.hpp"

namespace vntl {

bool Is_Bruker_Raw(std::string_view) { return false; }

Status Read_Bruker_Raw(std::string_view, std::vector<Diffraction_Pattern_Type>&, Read_Notes&) { return Status::Fail("not yet"); }

}  // namespace vntl
