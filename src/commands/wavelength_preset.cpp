#include "commands/wavelength_preset.hpp"

#include <cmath>
#include <utility>
#include <vector>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "calc/anode_lines.hpp"

namespace vntl {

namespace {

constexpr int custom = 1;
constexpr float same = 1.5e-6f;  // fields round to six decimals

struct Entry {
    std::string text;
    Wavelength_Preset preset;
};

// The lines alone first, so that an entry has the same number in every dialog.
std::vector<Entry> Entries() {
    std::vector<Entry> entries = {{"Custom", {}}};
    const auto add = [&entries](const Anode_Lines& lines, const char* text, double lambda1, double lambda2 = 0, float ratio = 0) {
        entries.push_back({std::string(lines.anode) + ' ' + text, {static_cast<float>(lambda1), static_cast<float>(lambda2), ratio}});
    };
    for (const Anode_Lines& lines : anode_lines) {
        add(lines, "K-alpha1", lines.alpha1);
        add(lines, "K-alpha2", lines.alpha2);
        add(lines, "K-alpha1+2 (mean)", lines.Mean());
    }
    for (const Anode_Lines& lines : anode_lines) add(lines, "K-alpha1 and K-alpha2", lines.alpha1, lines.alpha2, alpha2_to_alpha1);
    return entries;
}
constexpr std::size_t entries_of_one_line = 1 + 3 * anode_lines.size();

float Wavelength_In(int field) {
    float wavelength = 0;
    return IStringToReal(WDialogGetString(field), wavelength) ? wavelength : 0;
}

}  // namespace

Dialog_Field Preset_Field(std::string label, bool doublets) {
    std::vector<Entry> entries = Entries();
    if (!doublets) entries.resize(entries_of_one_line);
    Dialog_Field field{.number = preset_menu, .kind = Field_Kind::menu, .label = std::move(label), .width = 22};
    for (Entry& entry : entries) field.choices.push_back(std::move(entry.text));
    return field;
}

std::function<void(int)> Minding_Preset(std::function<void(const Wavelength_Preset&)> fill) {
    return [fill = std::move(fill), entries = Entries()](int changed) {
        const int chosen = WDialogGetMenu(preset_menu);
        if (changed == preset_menu && chosen > custom && chosen <= static_cast<int>(entries.size()))
            fill(entries[static_cast<std::size_t>(chosen - 1)].preset);
    };
}

std::function<void(int)> Minding_Preset(int field) {
    return [field, choose = Minding_Preset([field](const Wavelength_Preset& preset) {
                       WDialogPutString(field, Trim(IRealToString(preset.lambda1, "(f10.6)")));
                       WDialogPutReal(field, preset.lambda1);  // with the decimals of a field of numbers
                   })](int changed) {
        choose(changed);
        if (changed == field) Show_Preset_Of(Wavelength_In(field));
    };
}

void Show_Preset_Of(float wavelength) {
    const std::vector<Entry> entries = Entries();
    int shown = custom;
    for (std::size_t i = 1; i < entries_of_one_line; ++i)
        if (std::fabs(entries[i].preset.lambda1 - wavelength) < same) shown = static_cast<int>(i) + 1;
    WDialogPutOption(preset_menu, shown);
}

}  // namespace vntl
