#include "patterns/lab/bruker_raw.hpp"

#include "patterns/lab/bruker_versions.hpp"

namespace vntl {

namespace {

using namespace std::string_view_literals;

// A text that begins with "RAW2" has letters or line ends where the number of ranges stands.
bool Is_Raw_2(std::string_view head) {
    Byte_View bytes(head);
    const unsigned ranges = bytes.U2(4);
    return head.starts_with("RAW2") && bytes.Whole() && ranges >= 1 && ranges <= most_ranges;
}

}  // namespace

void Tube_Lines::Give(Diffraction_Pattern_Type& p, double used) const {
    const float line = Wavelength_Of(alpha1), measured = Wavelength_Of(used);
    p.conv[0] = line > 0 ? line : measured > 0 ? measured : Wavelength_Of(mean);
    p.conv[1] = Wavelength_Of(alpha2);
    p.conv[2] = ratio > 0 && ratio <= 10 ? static_cast<float>(ratio) : 0;
    p.conv[3] = Wavelength_Of(beta);
}

bool Is_Bruker_Raw(std::string_view head) {
    if (head.starts_with("RAW1.01\0"sv) || head.starts_with("RAW4.00\0"sv)) return true;
    return (head.starts_with("RAW ") && Is_Raw_1_Block(Byte_View(head), 0)) || Is_Raw_2(head);
}

Status Read_Bruker_Raw(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    patterns.clear();
    if (bytes.starts_with("RAW1.01")) return Read_Raw_101(bytes, patterns, notes);
    if (bytes.starts_with("RAW4.00")) return Read_Raw_400(bytes, patterns, notes);
    if (bytes.starts_with("RAW ")) return Read_Raw_1(bytes, patterns, notes);
    if (bytes.starts_with("RAW2")) return Read_Raw_2(bytes, patterns, notes);
    const bool version = bytes.starts_with("RAW") && bytes.size() > 4 && bytes[3] >= '0' && bytes[3] <= '9';
    return Status::Fail(version ? "This is a RAW file of a version that is not read" : "This is no RAW file of Bruker or Siemens");
}

}  // namespace vntl
