// What the numbers along an axis of a NeXus file are, by its units and its name.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vntl {

// Of the abscissa of a pattern.
struct Nexus_Axis {
    std::string scat_var, legend;  // blank for an angle, which `angle` names
    std::string angle;             // the name of an axis of a diffractometer; blank for the scattering angle
    double factor = 1;             // to degrees, 1/angstrom, angstroms, microseconds
    bool guessed = false;          // no units were told
};

// Nothing where it is no scale of patterns.
std::optional<Nexus_Axis> Nexus_Axis_Of(std::string_view name, std::string_view units, std::string_view long_name);

// A value in angstroms, kelvin, seconds by its units, in which a file that tells none is taken to be as well. Nothing for other units.
std::optional<double> Nexus_Angstroms(double value, std::string_view units);
std::optional<double> Nexus_Kelvin(double value, std::string_view units);
std::optional<double> Nexus_Seconds(double value, std::string_view units);

// The wavelength of radiation by its energy: of photons, or of neutrons. Without units keV, or eV where no keV can be so many.
std::optional<double> Wavelength_Of_Energy(double energy, std::string_view units, bool neutrons);

}  // namespace vntl
