// All rows from one x space to another.
//
// Everything that can fail is asked before a row is touched: the way there, the constants of the rows, and whether each row's x would
// come out finite and in order. Then nothing can stop the conversion half way.
#include <algorithm>
#include <array>
#include <thread>
#include <utility>
#include <vector>

#include "base/text.hpp"
#include "session/changes.hpp"
#include "session/session.hpp"
#include "session/told_wavelength.hpp"
#include "session/xspace.hpp"
#include "session/xspace_vocabulary.hpp"

namespace vntl {
namespace {

// --- the ways from space to space ----------------------------------------------------------------------------------------------

constexpr std::array two_theta_d{X_Step::two_theta_to_d};
constexpr std::array two_theta_q{X_Step::two_theta_to_d, X_Step::d_q};
constexpr std::array two_theta_s{X_Step::two_theta_to_d, X_Step::d_s};
constexpr std::array tof_d{X_Step::tof_to_d};
constexpr std::array tof_q{X_Step::tof_to_d, X_Step::d_q};
constexpr std::array tof_s{X_Step::tof_to_d, X_Step::d_s};
constexpr std::array d_two_theta{X_Step::d_to_two_theta};
constexpr std::array d_tof{X_Step::d_to_tof};
constexpr std::array d_and_q{X_Step::d_q};
constexpr std::array d_and_s{X_Step::d_s};
constexpr std::array q_two_theta{X_Step::d_q, X_Step::d_to_two_theta};
constexpr std::array q_tof{X_Step::d_q, X_Step::d_to_tof};
constexpr std::array q_s{X_Step::q_to_s};
constexpr std::array s_two_theta{X_Step::d_s, X_Step::d_to_two_theta};
constexpr std::array s_tof{X_Step::d_s, X_Step::d_to_tof};
constexpr std::array s_q{X_Step::s_to_q};

constexpr auto wavelength = Constants_Kind::wavelength, time_of_flight = Constants_Kind::time_of_flight;

struct Cell {
    Space_Kind present, target;
    X_Chain chain;
};

// What is not listed is an unknown space, or the target itself.
constexpr Cell cells[] = {
    {Space_Kind::two_theta, Space_Kind::tof, {{}, {}, "Fault in Vantrelo: Impossible to convert 2theta -> TOF"}},
    {Space_Kind::two_theta, Space_Kind::d, {two_theta_d, wavelength}},
    {Space_Kind::two_theta, Space_Kind::q, {two_theta_q, wavelength}},
    {Space_Kind::two_theta, Space_Kind::s, {two_theta_s, wavelength}},

    {Space_Kind::tof, Space_Kind::two_theta, {{}, {}, "Fault in Vantrelo: Impossible to convert TOF -> 2theta"}},
    {Space_Kind::tof, Space_Kind::d, {tof_d, time_of_flight}},
    {Space_Kind::tof, Space_Kind::q, {tof_q, time_of_flight}},
    {Space_Kind::tof, Space_Kind::s, {tof_s, time_of_flight}},

    {Space_Kind::d, Space_Kind::two_theta, {d_two_theta, {}}},
    {Space_Kind::d, Space_Kind::tof, {d_tof, {}}},
    {Space_Kind::d, Space_Kind::q, {d_and_q, {}}},
    {Space_Kind::d, Space_Kind::s, {d_and_s, {}}},

    {Space_Kind::q, Space_Kind::two_theta, {q_two_theta, {}}},
    {Space_Kind::q, Space_Kind::tof, {q_tof, {}}},
    {Space_Kind::q, Space_Kind::d, {d_and_q, {}}},
    {Space_Kind::q, Space_Kind::s, {q_s, {}}},

    {Space_Kind::s, Space_Kind::two_theta, {s_two_theta, {}}},
    {Space_Kind::s, Space_Kind::tof, {s_tof, {}}},
    {Space_Kind::s, Space_Kind::d, {d_and_s, {}}},
    {Space_Kind::s, Space_Kind::q, {s_q, {}}},

    {Space_Kind::mono, Space_Kind::two_theta, {{}, {}, "Conversion not possible"}},
    {Space_Kind::mono, Space_Kind::tof, {{}, {}, "Conversion not possible"}},
    {Space_Kind::mono, Space_Kind::d, {{}, {}, "Conversion not possible"}},
    {Space_Kind::mono, Space_Kind::q, {{}, {}, "Conversion not possible"}},
    {Space_Kind::mono, Space_Kind::s, {{}, {}, "Conversion not posible"}},
};

constexpr std::string_view unknown_space = "Vantrelo in unknown xspace : {X}";
constexpr std::string_view unknown_space_to_q = "Vantrelo in unknown xspace  : {X}";

// --- the constants of the rows -------------------------------------------------------------------------------------------------

struct Constants_Texts {
    std::string_view file, rows;  // what is wrong: with a file that is loaded, before the names of rows
    std::string_view change;
};
constexpr Constants_Texts wavelength_texts{"lambda<=0 - Value incorrect for ",
                                           "Invalid value of wavelength found in:", "change of wavelengths"};
constexpr Constants_Texts time_of_flight_texts{"vtt1 <= 0 - Value incorrect for ",
                                               "Invalid values of ddt1/dtt2 found for:", "change of dtt1 and dtt2"};

const Constants_Texts& Texts(Constants_Kind kind) { return kind == wavelength ? wavelength_texts : time_of_flight_texts; }

bool Edit_Constants(Session& session, Ask& ask, Constants_Kind kind, const Constants_Check& check) {
    Profile_Store& store = session.store;
    std::vector<Conversion_Constants> rows;
    for (int row = 1; row <= store.nperfiles(); ++row) {
        const X_Constants& conv = store.Pattern(row).conv;
        const std::string file_name(Trim(store.Info(row).file_name));
        rows.push_back({file_name, conv[0], conv[1], kind == wavelength ? Told_Wavelength(store.Pattern(row).title, file_name) : 0});
    }
    if (!ask.Constants_Of_Rows(kind, rows, check)) return false;
    std::vector<int> changed;
    for (int row = 1; row <= std::min(store.nperfiles(), static_cast<int>(rows.size())); ++row) {
        const X_Constants& conv = store.Pattern(row).conv;
        const Conversion_Constants& edited = rows[static_cast<std::size_t>(row - 1)];
        if (edited.first != conv[0] || edited.second != conv[1]) changed.push_back(row);
    }
    if (changed.empty()) return true;
    Row_Change change(session, std::string(Texts(kind).change) + Of_Profiles(session, changed), changed);
    for (const int row : changed) {
        const Conversion_Constants& edited = rows[static_cast<std::size_t>(row - 1)];
        store.Pattern(row).conv[0] = edited.first;
        store.Pattern(row).conv[1] = edited.second;
    }
    change.Keep();
    return true;
}

bool Lacks_Constants(const Profile_Store& store) {
    for (int row = 1; row <= store.nperfiles(); ++row)
        if (!(store.Pattern(row).conv[0] > 0)) return true;
    return false;
}

Wrong_Constants Rows_Without_Constants(Constants_Kind kind, std::span<const Conversion_Constants> rows) {
    Wrong_Constants wrong;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].first > 0) continue;
        wrong.rows.push_back(static_cast<int>(i) + 1);
        wrong.text += rows[i].file_name + '\n';
    }
    if (!wrong.rows.empty()) wrong.text = std::string(Texts(kind).rows) + '\n' + wrong.text;
    return wrong;
}

// The user is asked only where a row lacks its constant, until every row has one; nothing is stored before.
Status Complete_Constants(Session& session, Ask& ask, Constants_Kind kind, bool& asked) {
    if (!Lacks_Constants(session.store)) return Status::Done();
    asked = Edit_Constants(session, ask, kind,
                           [kind](std::span<const Conversion_Constants> rows) { return Rows_Without_Constants(kind, rows); });
    return asked ? Status::Done() : Status::Fail("Conversion of xspace cancelled");
}

Status Change_Constants(Session& session, Ask& ask, Constants_Kind kind) {
    return Edit_Constants(session, ask, kind, {}) ? Status::Done() : Status::Cancel();
}

// --- one row -------------------------------------------------------------------------------------------------------------------

std::size_t Regions(const PRF_Info_Add_Type& info) { return static_cast<std::size_t>(std::clamp(info.nexcl, 0, max_excluded_regions)); }

// Angles and times of flight begin above 0; a region that does not has no place in d.
void Remove_Invalid_Regions(PRF_Info_Add_Type& info, Ask& ask) {
    for (std::size_t i = Regions(info); i > 0; --i) {
        if (info.excl_min[i - 1] > 0 && info.excl_max[i - 1] > 0) continue;
        ask.Information("The excluded region No. " + std::to_string(i) + " of\n" + std::string(Trim(info.file_name)) +
                        " contains an invalid value.\nThis excluded region will be deleted");
        Remove_Excluded_Region(info, static_cast<int>(i));
    }
}

void Convert_Regions(X_Step step, const X_Constants& constants, PRF_Info_Add_Type& info) {
    for (std::size_t i = 0; i < Regions(info); ++i) {
        float &low = info.excl_min[i], &high = info.excl_max[i];
        low = Convert_X(step, low, constants);
        high = Convert_X(step, high, constants);
        if (low > high) std::swap(low, high);
    }
}

// Rows know nothing of each other; many points are worth a thread for each half of them.
void Convert_All_Points(std::span<const X_Step> steps, Profile_Store& store) {
    constexpr long long many_points = 200'000;
    const int rows = store.nperfiles(), half = rows / 2;
    long long points = 0;
    for (int row = 1; row <= rows; ++row) points += store.Pattern(row).npts;
    const auto convert = [steps, &store](int from, int to) {
        for (int row = from; row <= to; ++row) Convert_Points(steps, store.Pattern(row));
    };
    if (half == 0 || points < many_points) return convert(1, rows);
    const std::jthread first_half([&convert, half] { convert(1, half); });
    convert(half + 1, rows);
}

}  // namespace

void Convert_Marks(std::span<const X_Step> steps, const X_Constants& constants, PRF_Info_Add_Type& info, Ask& ask) {
    for (const X_Step step : steps) {
        if (step == X_Step::two_theta_to_d || step == X_Step::tof_to_d) Remove_Invalid_Regions(info, ask);
        Convert_Regions(step, constants, info);
        for (float& position : info.refl_position) position = Convert_X(step, position, constants);
    }
}

X_Chain Chain_Between(const Space* present, Space_Kind target) {
    for (const Cell& cell : cells)
        if (present != nullptr && present->kind == cell.present && target == cell.target) return cell.chain;
    return {{}, {}, target == Space_Kind::q ? unknown_space_to_q : unknown_space};
}

std::string Constants_Refusal(Constants_Kind kind, std::string_view file_name) {
    return std::string(Texts(kind).file) + std::string(Trim(file_name)) + "\nOperation cancelled.";
}

Status Convert_Xspace(Session& session, Ask& ask, X_Space target) {
    Profile_Store& store = session.store;
    const X_Space present = session.plot.xspace;
    if (target == present) return Status::Fail("Same xspace...");
    if ((target == X_Space::two_theta || target == X_Space::tof) && store.mixed_scat_var) return Status::Fail(mixed_scat_var_text);

    const Space* to = Find_Space(target);
    if (to == nullptr || to->kind > Space_Kind::s || target == X_Space::d_spacing) return Status::Fail("Unknown Xspace target");
    const X_Chain chain = Chain_Between(Find_Space(present), to->kind);
    if (!chain.refusal.empty()) return Status::Fail(Replace_All(chain.refusal, "{X}", Told(present)));

    bool asked = false;
    if (chain.constants)
        if (Status status = Complete_Constants(session, ask, *chain.constants, asked); status.failed) return status;
    for (int row = 1; row <= store.nperfiles(); ++row)
        if (Status status = Check_Convertible(chain.steps, store.Pattern(row), std::string(Trim(store.Info(row).file_name))); status.failed)
            return status;

    Row_Change change(session, "conversion to " + std::string(Told(target)), All_Rows(session), part_x);
    if (Turns_Round(chain.steps)) change.Turned();
    for (int row = 1; row <= store.nperfiles(); ++row) Convert_Marks(chain.steps, store.Pattern(row).conv, store.Info(row), ask);
    Convert_All_Points(chain.steps, store);
    Set_Xspace(session, Told(target));
    change.Keep(asked);
    return Status::Done();
}

Status Change_Wavelength(Session& session, Ask& ask) { return Change_Constants(session, ask, wavelength); }
Status Change_Dtt(Session& session, Ask& ask) { return Change_Constants(session, ask, time_of_flight); }

}  // namespace vntl
