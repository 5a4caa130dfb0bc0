#include "session/desk/styles.hpp"

#include "base/text.hpp"
#include "session/session.hpp"

namespace vntl {

const std::vector<std::string>& Style_Names() {
    static const std::vector<std::string> names = {std::string(default_style)};
    return names;
}

Status Load_Style(std::string_view name, Preferences&, Look&) { return Status::Fail("There is no style " + std::string(name)); }

Status Choose_Style(Session&, std::string_view name) {
    return Equal_No_Case(name, default_style) ? Status::Done() : Status::Fail("There is no style " + std::string(name));
}

std::string Look_Text(const Look&) { return {}; }
void Read_Look_Text(Look&, std::string_view) {}

}  // namespace vntl
