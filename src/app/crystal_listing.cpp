#include "app/crystal_listing.hpp"

#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "app/number_words.hpp"
#include "base/text.hpp"
#include "crystal/reflections.hpp"

namespace vntl {

namespace {

constexpr double degrees = 180 / std::numbers::pi;

Status Read_Cell(const std::string& text, Crystal_Cell_Type& cell) {
    std::array<float, 6> constants = {};
    if (!Read_Numbers(text, constants)) return Status::Fail("The cell needs six numbers: a b c in angstroms, alpha beta gamma in degrees");
    return Set_Crystal_Cell({constants[0], constants[1], constants[2]}, {constants[3], constants[4], constants[5]}, cell);
}

// sin(theta)/lambda up to an angle.
Status Read_Limit(const std::string& wavelength, const std::string& angle, double& lambda, float& limit) {
    double two_theta = 0;
    if (!Parse_Real(wavelength, lambda) || !(lambda > 0)) return Status::Fail("Bad wavelength");
    if (!Parse_Real(angle, two_theta) || !(two_theta > 0 && two_theta <= 180))
        return Status::Fail("The largest 2theta must lie above 0 and not above 180 degrees");
    limit = static_cast<float>(std::sin(two_theta / 2 / degrees) / lambda);
    return Status::Done();
}

}  // namespace

Status List_Group(const std::string& symbol, std::string& text) {
    Space_Group_Type group;
    if (Status status = Set_SpaceGroup(symbol, group); status.failed) return status;
    for (const std::string& line : List_Space_Group(group, true)) text += line + '\n';
    return Status::Done();
}

Status List_Reflections(const std::vector<std::string>& words, std::string& text) {
    if (words.size() != 4) return Status::Fail("Reflections need a cell, a space group, a wavelength and the largest 2theta");
    Crystal_Cell_Type cell;
    Space_Group_Type group;
    Reflection_List_Type list;
    double lambda = 0;
    float limit = 0;
    if (Status status = Read_Cell(words[0], cell); status.failed) return status;
    if (Status status = Set_SpaceGroup(words[1], group); status.failed) return status;
    if (Status status = Read_Limit(words[2], words[3], lambda, limit); status.failed) return status;
    if (Status status = Hkl_Uni_Reflect(cell, group, true, 0, limit, "s", list); status.failed) return status;
    char line[120];
    for (const Reflection_Type& r : list.Ref) {
        const double d = Hkl_D(r.H, cell);
        std::snprintf(line, sizeof line, "%4d %4d %4d %4d %11.6f %10.5f\n", r.H[0], r.H[1], r.H[2], r.Mult, d,
                      2 * degrees * std::asin(std::min(1.0, lambda / (2 * d))));
        text += line;
    }
    return Status::Done();
}

}  // namespace vntl
