#include "patterns/philips_rd.hpp"

namespace vntl {

bool Is_Philips_Rd(std::string_view) { return false; }

Status Read_Philips_Rd(std::string_view, std::vector<Diffraction_Pattern_Type>&, Read_Notes&) { return Status::Fail("not yet"); }

}  // namespace vntl
