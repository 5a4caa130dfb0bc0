// Rows of the store, as scripts print them.
#include "session/file_information.hpp"
#include "session/pattern_json.hpp"
#include "session/store.hpp"
#include "session/topics.hpp"

namespace vntl {

namespace {

void Info_Scalars(Json& row, const PRF_Info_Add_Type& info) {
    row["file_name"] = Json_Text(info.file_name);
    row["directory"] = Json_Text(info.directory);
    row["origin_note"] = Json_Text(info.origin_note);
    row["kind"] = Told(info.kind);
    row["format"] = Json_Text(info.format);
    row["nphases"] = info.nphases;
    row["nreflections"] = info.nreflections;
    row["chi2"] = Json_Real(info.chi2);
    row["x_shift_total"] = Json_Real(info.x_shift_total);
    row["y_mult_total"] = Json_Real(info.y_mult_total);
    row["nexcl"] = info.nexcl;
}

Json Data_Of_Row(const Profile_Store& store, int n, int first, int last) {
    Json row{{"row", n}};
    Put_Pattern_Arrays(row, store.Pattern(n), first, last);
    return row;
}

Json Information_Of_Row(const Profile_Store& store, int n) {
    Json facts = Json::array();
    for (const Head_Fact& fact : File_Information(store, n)) facts.push_back({Json_Text(fact.name), Json_Text(fact.value)});
    return {{"row", n}, {"information", std::move(facts)}};
}

Json Reflections_Of_Row(const Profile_Store& store, int n) {
    const PRF_Info_Add_Type& info = store.Info(n);
    Json list = Json::array();
    for (std::size_t i = 0; i < info.refl_position.size(); ++i)
        list.push_back({{"position", Json_Real(info.refl_position[i])},
                        {"phase", info.refl_phase[i]},
                        {"code", info.refl_code[i]},
                        {"tag", i < info.refl_tag.size() ? Json_Real(info.refl_tag[i]) : Json(0)},
                        {"label", Json_Text(info.refl_label[i])}});
    return {{"row", n}, {"reflections", list}};
}

Json Excluded_Of_Row(const Profile_Store& store, int n) {
    const PRF_Info_Add_Type& info = store.Info(n);
    Json list = Json::array();
    for (std::size_t i = 0; i < static_cast<std::size_t>(info.nexcl); ++i)
        list.push_back(Json::array({Json_Real(info.excl_min[i]), Json_Real(info.excl_max[i])}));
    return {{"row", n}, {"excluded", list}};
}

// The row that a word names; fails when it is no row of the store.
Status Row_Number(const Profile_Store& store, std::string_view what, Words words, int& row) {
    if (words.empty() || !Parse_Integer(words[0], row)) return Status::Fail("usage: print " + std::string(what) + " N");
    if (row < 1 || row > store.nperfiles()) return Status::Fail("there is no row " + words[0]);
    return Status::Done();
}

Status Print_Rows(const Profile_Store& store, Words words, const Put_Line& put) {
    if (!words.empty()) return Status::Fail("usage: print WHAT");
    for (int n = 1; n <= store.nperfiles(); ++n) {
        Json row{{"row", n}};
        Put_Pattern_Head(row, store.Pattern(n));
        Info_Scalars(row, store.Info(n));
        row["shown"] = store.shown(n);
        row["show_ycalc_of"] = store.show_ycalc_of[static_cast<std::size_t>(n - 1)];
        row["show_bgr_of"] = store.show_bgr_of[static_cast<std::size_t>(n - 1)];
        put(row);
    }
    return Status::Done();
}

Status Print_Data(const Profile_Store& store, Words words, const Put_Line& put) {
    int row = 0;
    if (const Status status = Row_Number(store, "data", words, row); status.failed) return status;
    int first = 1, last = store.Pattern(row).npts;
    const bool range = words.size() == 3;
    if ((words.size() != 1 && !range) || (range && (!Parse_Integer(words[1], first) || !Parse_Integer(words[2], last))))
        return Status::Fail("usage: print data N [FIRST LAST]");
    if (first < 1 || last < first) return Status::Fail("points run from 1 upward");
    put(Data_Of_Row(store, row, first, last));
    return Status::Done();
}

Topic Topic_Of_A_Row(const Profile_Store& store, std::string_view name, Json (*make)(const Profile_Store&, int row)) {
    return {name, [&store, name, make](Words words, const Put_Line& put) {
                int row = 0;
                const Status status = Row_Number(store, name, words, row);
                if (status.ok()) put(make(store, row));
                return status;
            }};
}

}  // namespace

std::vector<Topic> Store_Topics(const Profile_Store& store) {
    return {{"rows", [&store](Words words, const Put_Line& put) { return Print_Rows(store, words, put); }},
            {"data", [&store](Words words, const Put_Line& put) { return Print_Data(store, words, put); }},
            Topic_Of_A_Row(store, "information", Information_Of_Row),
            Topic_Of_A_Row(store, "reflections", Reflections_Of_Row),
            Topic_Of_A_Row(store, "excluded", Excluded_Of_Row)};
}

}  // namespace vntl
