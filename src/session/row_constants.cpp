#include "session/row_constants.hpp"

#include <algorithm>
#include <utility>

#include "base/conversions.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/gsas.hpp"
#include "session/changes.hpp"
#include "session/file_kinds.hpp"
#include "session/load.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr std::size_t head_bytes = 65536;  // of a pattern file, for the number of its bank

bool Of_Flight(const Session& session) { return session.plot.xspace == X_Space::tof; }
std::string_view Told_Kind(bool flight) { return flight ? "constants of time of flight" : "wavelengths"; }
std::string Name_Of(const Session& session, const std::string& path) { return std::string(Trim(File_Part(path, session.config.sep))); }

Status Check_Rows(const Session& session) {
    if (session.store.nperfiles() == 0) return Status::Fail("An instrument file gives constants to profiles: open a pattern first");
    if (Takes_Constants(session)) return Status::Done();
    const X_Space space = session.plot.xspace;
    const bool scale = space == X_Space::d_space || space == X_Space::q_space || space == X_Space::s_space;
    return Status::Fail("Constants can be given while x is 2theta or TOF.\nThe profiles are shown over " + std::string(Told(space)) +
                        (scale ? ": go back by the menu X space first" : ", which no constants convert"));
}

// No bank of the file is of the rows' kind.
Status Other_Kind(const Session& session, const std::string& name) {
    return Status::Fail(name + " tells " + std::string(Told_Kind(!Of_Flight(session))) + ",\nand the profiles are in " +
                        std::string(Told(session.plot.xspace)));
}

// What is proposed for a row: its own bank where the file has it.
int Proposed_Bank(const Session& session, std::span<const Instrument_Bank> banks, int row) {
    const Instrument_Bank& first = *Find_Bank(session, banks, 0);
    const int own = banks.size() > 1 || first.numbered ? Number_Of_Bank(session, row) : 0;
    if (own == 0 || (!first.flight && Find_Bank(session, banks, own) == nullptr)) return first.number;
    return own;
}

Instrument_Question Question_About(const Session& session, const std::string& name, std::span<const Instrument_Bank> banks) {
    Instrument_Question question{.file_name = name, .banks = {}, .rows = {}};
    for (const Instrument_Bank& bank : banks)
        question.banks.push_back(
            {bank.number, bank.radiation.empty() ? "unknown" : bank.radiation, Told_Constants(bank), Told_Unused(bank)});
    for (int row = 1; row <= session.store.nperfiles(); ++row)
        question.rows.push_back({std::string(Trim(session.store.Info(row).file_name)), session.store.Pattern(row).title,
                                 Proposed_Bank(session, banks, row), true});
    return question;
}

Wrong_Bank Wrong_In(const Session& session, std::span<const Instrument_Bank> banks, const Instrument_Question& question) {
    bool any = false;
    for (std::size_t i = 0; i < question.rows.size(); ++i) {
        const auto& [file_name, title, number, chosen] = question.rows[i];
        if (!chosen) continue;
        any = true;
        if (number > 0 && Find_Bank(session, banks, number) != nullptr) continue;
        const bool other = std::any_of(banks.begin(), banks.end(), [&, n = number](const auto& bank) { return bank.number == n; });
        const std::string bank = std::to_string(number);
        return {other ? "Bank " + bank + " of " + question.file_name + " tells " + std::string(Told_Kind(!Of_Flight(session)))
                      : question.file_name + " has no bank " + bank + " for " + file_name,
                static_cast<int>(i) + 1};
    }
    return any ? Wrong_Bank{} : Wrong_Bank{"No row is chosen", 0};
}

// What becomes of the rows, for the status bar.
std::string Notice_Of(const Session& session, const std::string& name, std::span<const Row_Bank> rows) {
    std::vector<int> numbers;
    std::vector<const Instrument_Bank*> banks;
    for (const auto& [row, bank] : rows) {
        numbers.push_back(row);
        if (std::find(banks.begin(), banks.end(), bank) == banks.end()) banks.push_back(bank);
    }
    std::string text = "Constants" + Of_Profiles(session, numbers) + " from " + name;
    if (banks.size() == 1)
        return text + ": " + Told_Constants(*banks[0]) + (Told_Unused(*banks[0]).empty() ? "" : "; not used: ") + Told_Unused(*banks[0]);
    const auto unused = std::find_if(banks.begin(), banks.end(), [](const auto* bank) { return !Told_Unused(*bank).empty(); });
    if (unused != banks.end()) text += "; not used, of bank " + std::to_string((*unused)->number) + ": " + Told_Unused(**unused);
    return text;
}

std::string Equals(std::string_view name, double value, std::string_view unit) {
    return std::string(name) + " = " + IRealToString(static_cast<float>(value)) + std::string(unit);
}

}  // namespace

bool Takes_Constants(const Session& session) {
    return session.store.nperfiles() > 0 && (session.plot.xspace == X_Space::two_theta || session.plot.xspace == X_Space::tof);
}

int Number_Of_Bank(const Session& session, int row) {
    const int own = session.store.Pattern(row).bank;
    const PRF_Info_Add_Type& info = session.store.Info(row);
    if (own > 0 || !Trim(info.format).starts_with("GSAS")) return std::max(own, 0);
    Text_File file;  // the lone bank of a file, or its bank 1
    if (file.Open(session.config.Path(info.directory, info.file_name), head_bytes).failed) return 0;
    const std::vector<int> banks = Gsas_Banks(file.Text());
    if (banks.empty()) return 0;
    return std::find(banks.begin(), banks.end(), 1) != banks.end() ? 1 : banks.front();
}

const Instrument_Bank* Find_Bank(const Session& session, std::span<const Instrument_Bank> banks, int number) {
    for (const Instrument_Bank& bank : banks)
        if (bank.flight == Of_Flight(session) && (number == 0 || bank.number == number)) return &bank;
    return nullptr;
}

Status Read_Instrument_File(const std::string& path, std::vector<Instrument_Bank>& banks) {
    banks.clear();
    Text_File file;
    if (Status status = file.Open(path, most_instrument_bytes); status.failed) return Status::Fail_File(status.message);
    Status status = Read_Instrument_Parameters(file.Text(), banks);
    if (status.failed) status.message = "ERROR in file: " + std::string(File_Part(path)) + '\n' + status.message;
    return status;
}

std::string Told_Constants(const Instrument_Bank& bank) {
    if (bank.flight) return Equals("dtt1", bank.difC, " \u00b5s/\u00c5, ") + Equals("dtt2", bank.difA, " \u00b5s/\u00c5\u00b2");
    if (!(bank.lam2 > 0)) return Equals("lambda", bank.lam1, " \u00c5");
    return Equals("lambda 1", bank.lam1, " \u00c5, ") + Equals("lambda 2", bank.lam2, " \u00c5, ") + Equals("ratio", bank.ratio, "");
}

std::string Told_Unused(const Instrument_Bank& bank) {
    std::string text;
    if (bank.flight && bank.difB != 0) text = Equals("difB", bank.difB, " \u00b5s\u00c5");
    if (bank.zero != 0) text += (text.empty() ? "" : ", ") + Equals("zero", bank.zero, bank.flight ? " \u00b5s" : "\u00b0");
    return text;
}

void Give_Constants(Session& session, const std::string& what, std::span<const Row_Bank> rows) {
    std::vector<int> numbers;
    for (const Row_Bank& row : rows) numbers.push_back(row.row);
    Row_Change change(session, what + Of_Profiles(session, numbers), numbers);
    for (const auto& [row, bank] : rows) {
        std::array<float, 5>& conv = session.store.Pattern(row).conv;
        conv[0] = static_cast<float>(bank->flight ? bank->difC : bank->lam1);
        conv[1] = static_cast<float>(bank->flight ? bank->difA : bank->lam2);
        if (!bank->flight) conv[2] = static_cast<float>(bank->ratio);
    }
    change.Keep();
}

Status Constants_From_File(Session& session, Ask& ask, const std::string& name, std::string& notice) {
    if (Status status = Check_Rows(session); status.failed) return status;
    std::vector<std::string> files = {name};
    const File_Kind_Row& kind = Row_Of(File_Kind::constants);
    if (Trim(name).empty()) files = ask.Select_Files(kind.selector_title, Selector_Filter(kind));
    if (files.empty()) return Status::Cancel();
    if (files.size() > 1) return Status::Fail("Trying to select more than one file!");

    const std::string path = Absolute_Path(session.config, files.front()), shown = Name_Of(session, path);
    std::vector<Instrument_Bank> banks;
    if (Status status = Read_Instrument_File(path, banks); status.failed) return status;
    if (Find_Bank(session, banks, 0) == nullptr) return Other_Kind(session, shown);

    Instrument_Question question = Question_About(session, shown, banks);
    if (!ask.Banks_Of_Rows(question, [&](const Instrument_Question& choice) { return Wrong_In(session, banks, choice); }))
        return Status::Cancel();
    std::vector<Row_Bank> rows;
    for (std::size_t i = 0; i < question.rows.size(); ++i)
        if (question.rows[i].chosen) rows.push_back({static_cast<int>(i) + 1, Find_Bank(session, banks, question.rows[i].bank)});
    notice = Notice_Of(session, shown, rows);
    Give_Constants(session, "constants from " + shown, rows);
    MRU_Add(session, path);
    return Status::Done();
}

Open_Result Open_Constants_File(Session& session, Ask& ask, const std::string& name) {
    Open_Result result;
    const Status status = Constants_From_File(session, ask, name, result.notice);
    if (status.to_tell()) ask.Error(status);
    result.failed = status.to_tell();
    result.cancelled = status.cancelled;
    return result;
}

}  // namespace vntl
