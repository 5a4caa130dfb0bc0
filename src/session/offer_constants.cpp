#include "session/offer_constants.hpp"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "session/load.hpp"
#include "session/row_constants.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_names = 100'000;  // of a directory
constexpr std::size_t head_bytes = 8192, head_lines = 100;
constexpr std::size_t most_told = 10;
constexpr std::string_view extensions[] = {".instprm", ".prm", ".iparm"};

// The names of a directory, found whatever letters they are written in.
class Directory {
public:
    explicit Directory(const std::string& path) {
        std::error_code error;
        for (auto entry = std::filesystem::directory_iterator(path.empty() ? "/" : path, error);
             !error && entry != std::filesystem::directory_iterator() && names_.size() < most_names; entry.increment(error)) {
            std::string name = entry->path().filename().string();
            std::string small = Lower(name);
            names_.emplace(std::move(small), std::move(name));
        }
    }

    // As it is written there; one in the very letters before others. Empty for none.
    std::string Find(std::string_view name) const {
        const auto [first, last] = names_.equal_range(Lower(name));
        const auto same = std::find_if(first, last, [&](const auto& entry) { return entry.second == name; });
        return same != last ? same->second : first != last ? first->second : std::string();
    }

private:
    std::multimap<std::string, std::string> names_;
};

// The name of a file that a line of the head tells, without its directory: that was another machine's.
std::string Named_In_Head(const std::string& path) {
    Text_File file;
    if (file.Open(path, head_bytes).failed) return {};
    Line_Cursor lines(file.Text());
    std::string_view line;
    for (std::size_t i = 0; i < head_lines && lines.Next(line); ++i) {
        const std::string small = Lower(line);
        const std::size_t words = small.find("instrument parameter file"), colon = small.find_first_of(":=", words);
        if (words == std::string::npos || colon == std::string::npos) continue;
        const std::string name = Replace_All(Trim(line.substr(colon + 1)), "\\", "/");
        return std::string(Trim(File_Part(Replace_All(name, "\"", ""))));
    }
    return {};
}

// What is found beside patterns; each directory and each instrument file is looked at once.
class Search {
public:
    explicit Search(const Session& session) : session_(session) {}

    // The bank for a row, and the name of its file; null where nothing fits.
    std::pair<const Instrument_Bank*, std::string> For_Row(int row) {
        const PRF_Info_Add_Type& info = session_.store.Info(row);
        const Directory& directory = directories_.try_emplace(info.directory, info.directory).first->second;
        std::vector<std::string> names;
        const std::string_view name = info.file_name;
        for (const std::string_view extension : extensions)
            names.push_back(directory.Find(std::string(name.substr(0, name.rfind('.'))) + std::string(extension)));
        names.push_back(directory.Find(Named_In_Head(session_.config.Path(info.directory, info.file_name))));
        for (const std::string& found : names)
            if (!found.empty() && found != name)
                if (const Instrument_Bank* bank = Fitting(session_.config.Path(info.directory, found), row)) return {bank, found};
        return {nullptr, {}};
    }

private:
    // Nothing is guessed here: one of several banks of flight is the one that has the file's number.
    const Instrument_Bank* Fitting(const std::string& path, int row) {
        const auto [known, is_new] = files_.try_emplace(path);
        if (is_new)
            if (const Status status = Read_Instrument_File(path, known->second); status.failed) known->second.clear();
        const std::vector<Instrument_Bank>& banks = known->second;
        const Instrument_Bank* const first = Find_Bank(session_, banks, 0);
        if (first == nullptr) return nullptr;
        const int number = Number_Of_Bank(session_, row);
        if (const Instrument_Bank* own = number > 0 ? Find_Bank(session_, banks, number) : nullptr) return own;
        const bool only = banks.size() == 1 && session_.store.Pattern(row).bank == 0 && (number == 0 || !first->numbered);
        return !first->flight || only ? first : nullptr;
    }

    const Session& session_;
    std::map<std::string, Directory> directories_;
    std::map<std::string, std::vector<Instrument_Bank>> files_;
};

// Patterns that would have the same constants.
struct Offer {
    const Instrument_Bank* bank;
    std::string file, first_pattern;
    int patterns = 1;
};

std::string Told(const Offer& offer) {
    std::string text = offer.first_pattern;
    if (offer.patterns > 1) text += " and " + std::to_string(offer.patterns - 1) + " more";
    text += ": " + Told_Constants(*offer.bank) + ", from " + offer.file;
    if (offer.bank->numbered) text += " (bank " + std::to_string(offer.bank->number) + ')';
    const std::string unused = Told_Unused(*offer.bank);
    return unused.empty() ? text : text + "\nNot used: " + unused;
}

std::string Question_About(const std::vector<Offer>& offers) {
    std::string text = "Instrument files lie beside patterns that have no constants:";
    for (std::size_t i = 0; i < std::min(most_told, offers.size()); ++i) text += "\n\n" + Told(offers[i]);
    if (offers.size() > most_told) text += "\n\nand " + std::to_string(offers.size() - most_told) + " more";
    return text + "\n\nTake these constants?";
}

void Add(std::vector<Offer>& offers, const Instrument_Bank* bank, std::string file, const std::string& pattern) {
    const auto known = std::find_if(offers.begin(), offers.end(), [&](const Offer& offer) { return offer.bank == bank; });
    if (known != offers.end())
        ++known->patterns;
    else
        offers.push_back({bank, std::move(file), pattern});
}

}  // namespace

Open_Result Offer_Constants(Session& session, Ask& ask, Open_Result opened) {
    const Profile_Store& store = session.store;
    if (!Takes_Constants(session)) return opened;
    Search search(session);
    std::vector<Row_Bank> rows;
    std::vector<Offer> offers;
    for (int row = store.nperfiles() - std::clamp(opened.rows_added, 0, store.nperfiles()) + 1; row <= store.nperfiles(); ++row) {
        if (store.Pattern(row).conv[0] > 0 || !Trim(store.Info(row).format).starts_with("GSAS")) continue;
        auto [bank, file] = search.For_Row(row);
        if (bank == nullptr) continue;
        rows.push_back({row, bank});
        Add(offers, bank, std::move(file), std::string(Trim(store.Info(row).file_name)));
    }
    if (rows.empty()) return opened;
    if (ask.Box({Box_Buttons::yes_no, Box_Icon::question, 1, Question_About(offers), std::string(information_title)}) != Box_Answer::yes)
        return opened;
    Give_Constants(session, "constants of instrument files", rows);
    return opened;
}

}  // namespace vntl
