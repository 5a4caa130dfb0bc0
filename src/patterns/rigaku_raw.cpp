#include "patterns/rigaku_raw.hpp"

namespace vntl {

bool Is_Rigaku_Raw(std::string_view) { return false; }

Status Read_Rigaku_Raw(std::string_view, std::vector<Diffraction_Pattern_Type>&, Read_Notes&) { return Status::Fail("not yet"); }

}  // namespace vntl
