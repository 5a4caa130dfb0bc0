// The settings file: a file with other bytes in some place gives preferences that are written and read again to the same text, or a message
// and no change. The first four bytes tell the place.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "session/preferences.hpp"
#include "session/settings_file.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const vntl::Configuration config;
    static const std::string defaults = vntl::Settings_Text(vntl::Preferences(), config);
    if (size < 4) return 0;
    const std::size_t from = std::min(defaults.size(), data[0] * std::size_t(256) + data[1]), count = data[2] * std::size_t(256) + data[3];
    std::string file = defaults;
    file.replace(from, count, reinterpret_cast<const char*>(data) + 4, size - 4);

    vntl::Preferences prefs, again;
    const vntl::Status status = vntl::Read_Settings_Text(prefs, file);
    const std::string text = vntl::Settings_Text(prefs, config);
    if (status.failed ? text != defaults : vntl::Read_Settings_Text(again, text).failed || vntl::Settings_Text(again, config) != text)
        std::abort();
    return 0;
}
