#include "patterns/lab/brml.hpp"

#include <algorithm>
#include <map>
#include <string>

#include "base/natural_order.hpp"
#include "base/text.hpp"
#include "base/zip_archive.hpp"
#include "patterns/lab/brml_document.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_told = 2000;  // documents that cannot be read

// "Experiment" and a number, as every directory of such an archive.
bool In_Experiment(std::string_view name) {
    const std::string_view directory = name.substr(0, name.find('/'));
    constexpr std::string_view word = "experiment";
    if (!Equal_No_Case(directory.substr(0, word.size()), word)) return false;
    return directory.substr(word.size()).find_first_not_of("0123456789") == std::string_view::npos;
}

bool Is_Document(std::string_view name, std::string_view begins, std::string_view ends) {
    const std::string both = Lower(Last_Parts(name, 2)), file = Lower(Last_Parts(name, 1));
    return both != file && In_Experiment(both) && file.starts_with(begins) && file.ends_with(ends);
}

bool Is_Raw_Data(std::string_view name) { return Is_Document(name, "rawdata", ".xml"); }
bool Is_Container(std::string_view name) { return Is_Document(name, "datacontainer", ".xml"); }
bool Is_Member(std::string_view name) {
    const bool collection = Equal_No_Case(Last_Parts(name, 1), "experimentCollection.xml");
    return collection || Is_Raw_Data(name) || Is_Document(name, "", "container.xml");
}

std::string_view Directory(std::string_view name) { return name.substr(0, name.size() - Last_Parts(name, 1).size()); }

// The places of the members that fit, as people order their names.
std::vector<std::size_t> Members(const Zip_Archive& archive, bool (*fits)(std::string_view)) {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < archive.Names().size(); ++i)
        if (fits(archive.Names()[i])) found.push_back(i);
    std::stable_sort(found.begin(), found.end(),
                     [&](std::size_t a, std::size_t b) { return Compare_Natural(archive.Names()[a], archive.Names()[b]) < 0; });
    return found;
}

// Those that the container names, in its order; all where it names none of them.
std::vector<std::size_t> Referenced(const Zip_Archive& archive, const std::vector<std::size_t>& members, const Brml_Container& container) {
    std::map<std::string, std::size_t> waiting;
    for (const std::size_t member : members) waiting.emplace(Lower(Last_Parts(archive.Names()[member], 2)), member);
    std::vector<std::size_t> named;
    for (const std::string& reference : container.raw_data) {
        const auto found = waiting.find(Lower(Last_Parts(Replace_All(reference, "\\", "/"), 2)));
        if (found == waiting.end()) continue;
        named.push_back(found->second);
        waiting.erase(found);
    }
    return named.empty() ? members : named;
}

// One directory of the archive after the other, each with its container and the documents that it names.
class Archive_Reader {
public:
    Archive_Reader(Zip_Archive& archive, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes)
        : archive_(archive), patterns_(patterns), notes_(notes) {}

    Status Read() {
        const std::vector<std::size_t> raw_data = Members(archive_, Is_Raw_Data);
        if (raw_data.empty()) return Status::Fail("This zip archive holds no scans of a diffractometer");
        for (const std::size_t member : Members(archive_, Is_Container)) containers_.emplace(Directory(archive_.Names()[member]), member);
        for (std::size_t first = 0, next = 0; first < raw_data.size(); first = next) {
            const std::string directory(Directory(archive_.Names()[raw_data[first]]));
            while (next < raw_data.size() && Directory(archive_.Names()[raw_data[next]]) == directory) ++next;
            Read_Directory(directory, {raw_data.begin() + first, raw_data.begin() + next});
        }
        Number();
        if (!patterns_.empty()) return Status::Done();
        const Status status = Status::Fail(notes_.failed.empty() ? "This file holds no scan" : notes_.failed.front());
        notes_.failed.clear();
        return status;
    }

private:
    void Read_Directory(const std::string& directory, const std::vector<std::size_t>& raw_data) {
        Brml_Container container;
        if (const auto found = containers_.find(directory); found != containers_.end()) {
            Status status = archive_.Unpack(found->second, bytes_);
            if (status.ok()) status = Read_Brml_Container(bytes_, container);
            if (status.failed) notes_.warnings.push_back("DataContainer.xml cannot be read: " + status.message);
        }
        for (const std::size_t member : Referenced(archive_, raw_data, container)) {
            Status status = archive_.Unpack(member, bytes_);
            if (status.ok()) status = Read_Brml_Raw_Data(bytes_, container, scans_, patterns_, notes_);
            if (status.failed && notes_.failed.size() < most_told)
                notes_.failed.push_back(std::string(Cut(Last_Parts(archive_.Names()[member], 1), 40)) + ": " + status.message);
        }
    }

    void Number() {
        const bool snapshots = patterns_.size() > static_cast<std::size_t>(scans_);  // several of one scan
        for (std::size_t i = 0; i < patterns_.size(); ++i) {
            Diffraction_Pattern_Type& p = patterns_[i];
            if (snapshots) p.bank = static_cast<std::int32_t>(i + 1);
            if (scans_ == 1 && !snapshots)
                p.bank = 0;
            else
                p.title = Numbered(p.title, static_cast<std::size_t>(p.bank));
        }
    }

    Zip_Archive& archive_;
    std::vector<Diffraction_Pattern_Type>& patterns_;
    Read_Notes& notes_;
    std::map<std::string, std::size_t> containers_;  // by their directories
    std::string bytes_;
    int scans_ = 0;
};

}  // namespace

bool Is_Brml(std::string_view head) { return Zip_Name_Fits(head, Is_Member); }

Status Read_Brml(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    patterns.clear();
    Zip_Archive archive;
    if (const Status status = archive.Open(bytes); status.failed) return status;
    return Archive_Reader(archive, patterns, notes).Read();
}

}  // namespace vntl
