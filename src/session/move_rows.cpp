#include "session/move_rows.hpp"

#include <algorithm>
#include <cmath>

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

// Where the rows are to stand apart by `step` more than they do, row i moves by i - 1 of that.
float Moved_By(int row, float step) { return static_cast<float>(row - 1) * step; }

void Set_X_Limits(Diffraction_Pattern_Type& pattern) {
    if (pattern.x.empty()) return;
    pattern.xmin = pattern.x.front();
    pattern.xmax = pattern.x.back();
}

Status No_Refined_Profile(const Session& session) {
    return session.store.prf_loaded ? Status::Fail("Profile PRF in memory. Operation not permitted") : Status::Done();
}

float To_Monitor(float y, float monitor, float own_monitor) { return y * monitor / own_monitor; }

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

Status Shift_Permitted(const Session& session) { return No_Refined_Profile(session); }

Status Shift_Rows(Session& session, Row_Shift shift) {
    if (Status status = Shift_Permitted(session); status.failed) return status;
    if (shift == session.shift) return Status::Done();
    Profile_Store& store = session.store;
    const float dx = shift.x - session.shift.x, dy = shift.y - session.shift.y;
    const std::vector<int> rows = All_Rows(session);
    for (const int row : rows) {
        const auto stays_finite = [&](const auto& pattern) {
            return Stays_Finite_X(pattern, 1, Moved_By(row, dx)) && Stays_Finite_Y(pattern, 1, Moved_By(row, dy));
        };
        if (Status status = Check_Rows(store, {row}, stays_finite); status.failed) return status;
    }
    Row_Change change(session, "shift" + Of_Profiles(session, rows), rows, part_x | part_y | part_curves);
    for (const int row : rows) {
        Diffraction_Pattern_Type& pattern = store.Pattern(row);
        if (row > 1) Offset_Row(pattern, store.Info(row), Moved_By(row, dx), Moved_By(row, dy));
        Set_X_Limits(pattern);
        Set_Y_Limits(pattern);
    }
    session.shift = shift;
    change.Keep();
    return Status::Done();
}

Status Normalization_Permitted(const Session& session) {
    const Profile_Store& store = session.store;
    if (Status status = No_Refined_Profile(session); status.failed) return status;
    if (!store.profiles_uniform) return Status::Fail("Normalization impossible: non-uniform profiles");
    for (int row = 1; row <= store.nperfiles(); ++row)
        if (!(store.Pattern(row).monitor >= 1) || !std::isfinite(store.Pattern(row).monitor))
            return Status::Fail("Normalization impossible: some profile has no valid monitor");
    return Status::Done();
}

float Average_Monitor(const Session& session) {
    const Profile_Store& store = session.store;
    double sum = 0;
    for (int row = 1; row <= store.nperfiles(); ++row) sum += static_cast<double>(store.Pattern(row).monitor);
    return std::max(1.0f, static_cast<float>(sum / std::max(1, store.nperfiles())));
}

Status Normalize_Rows(Session& session, float monitor) {
    if (Status status = Normalization_Permitted(session); status.failed) return status;
    if (!(monitor >= 1)) monitor = Average_Monitor(session);
    Profile_Store& store = session.store;
    const std::vector<int> rows = All_Rows(session);
    const auto stays_finite = [monitor](const auto& pattern) {
        return std::all_of(pattern.y.begin(), pattern.y.end(),
                           [&](float y) { return std::isfinite(To_Monitor(y, monitor, pattern.monitor)) || !std::isfinite(y); });
    };
    if (Status status = Check_Rows(store, rows, stays_finite); status.failed) return status;
    Row_Change change(session, "normalization" + Of_Profiles(session, rows), rows, part_y);
    for (const int row : rows) {
        Diffraction_Pattern_Type& pattern = store.Pattern(row);
        for (float& y : pattern.y) y = To_Monitor(y, monitor, pattern.monitor);
        Set_Y_Limits(pattern);
    }
    change.Keep();
    return Status::Done();
}

}  // namespace vntl
