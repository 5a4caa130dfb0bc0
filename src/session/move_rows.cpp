#include "session/move_rows.hpp"

#include "calc/rescale.hpp"
#include "session/changes.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

// Nothing is done to any row before all of them have been looked at.
template <class Stays_Finite>
Status Check_Rows(const Profile_Store& store, const std::vector<int>& rows, Stays_Finite stays_finite) {
    for (const int row : rows)
        if (!stays_finite(store.Pattern(row)))
            return Status::Fail("Values of " + store.Info(row).file_name + " would leave the range of numbers");
    return Status::Done();
}

}  // namespace

Status Offset_Rows(Session& session, const std::vector<int>& rows, float dx, float dy) {
    Profile_Store& store = session.store;
    const auto stays_finite = [=](const auto& pattern) { return Stays_Finite_X(pattern, 1, dx) && Stays_Finite_Y(pattern, 1, dy); };
    if (Status status = Check_Rows(store, rows, stays_finite); status.failed) return status;
    Row_Change change(session, "shift" + Of_Profiles(session, rows), rows, part_x | part_y | part_curves);
    for (const int row : rows) Offset_Row(store.Pattern(row), store.Info(row), dx, dy);
    change.Keep();
    return Status::Done();
}

Status Scale_X_Of_Rows(Session& session, const std::vector<int>& rows, float a, float b) {
    Profile_Store& store = session.store;
    const auto stays_finite = [=](const auto& pattern) { return Stays_Finite_X(pattern, a, b); };
    if (Status status = Check_Rows(store, rows, stays_finite); status.failed) return status;
    Row_Change change(session, "scaling of x" + Of_Profiles(session, rows), rows, part_x);
    if (a < 0) change.Turned();
    for (const int row : rows) Scale_X_Of_Row(store.Pattern(row), store.Info(row), a, b);
    change.Keep();
    return Status::Done();
}

Status Scale_Y_Of_Rows(Session& session, const std::vector<int>& rows, float a, float b) {
    Profile_Store& store = session.store;
    const auto stays_finite = [=](const auto& pattern) { return Stays_Finite_Y(pattern, a, b); };
    if (Status status = Check_Rows(store, rows, stays_finite); status.failed) return status;
    Row_Change change(session, "scaling of y" + Of_Profiles(session, rows), rows, part_y | part_curves);
    for (const int row : rows) Scale_Y_Of_Row(store.Pattern(row), a, b);
    change.Keep();
    return Status::Done();
}

}  // namespace vntl
