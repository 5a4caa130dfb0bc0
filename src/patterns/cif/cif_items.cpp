#include "patterns/cif/cif_items.hpp"

#include <algorithm>

#include "base/text.hpp"

namespace vntl {

std::string Cif_Name(std::string_view item) {
    std::string name = Lower(item);
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

void Cif_Heads::Add(std::string_view name) {
    constexpr std::string_view deviation = "_su";
    const bool of_deviations = name.ends_with(deviation);
    const std::string_view measured = of_deviations ? name.substr(0, name.size() - deviation.size()) : name;
    for (std::size_t i = 0; i < cif_column_count; ++i) {
        int& place = of_deviations ? deviations_[i] : places_[i];
        if (cif_columns[i].name == measured && place < 0) place = width_;
    }
    ++width_;
}

const Cif_Column* Cif_Heads::Of(Cif_Role role) const {
    for (std::size_t i = 0; i < cif_column_count; ++i)
        if (cif_columns[i].role == role && places_[i] >= 0) return &cif_columns[i];
    return nullptr;
}

int Cif_Heads::Place(Cif_Role role) const {
    const Cif_Column* const column = Of(role);
    return column == nullptr ? -1 : places_[Number_Of(*column)];
}

int Cif_Heads::Place_Of_Deviation() const {
    const Cif_Column* const y = Of(Cif_Role::y);
    return y == nullptr ? -1 : deviations_[Number_Of(*y)];
}

bool Cif_Heads::Tells_Flight() const {
    for (std::size_t i = 0; i < cif_column_count; ++i)
        if (cif_columns[i].scat_var == "TOF" && places_[i] >= 0) return true;
    return false;
}

void Cif_Heads::Give_Up(Cif_Role role) {
    if (const Cif_Column* const column = Of(role)) places_[Number_Of(*column)] = -1;
}

}  // namespace vntl
