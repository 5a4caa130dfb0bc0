#include "session/desk/row_styles.hpp"

#include "session/store.hpp"

namespace vntl {

Row_Styles::Row_Styles(const Profile_Store&, const Preferences& prefs, const Look&, bool) : prefs_(prefs) {}

ProfileStyle Row_Styles::Of(int row) const { return prefs_.Style_Of_Row(row); }

}  // namespace vntl
