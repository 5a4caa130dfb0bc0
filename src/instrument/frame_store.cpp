#include "instrument/frame_store.hpp"

#include <algorithm>
#include <functional>
#include <new>
#include <utility>

#include "base/text.hpp"
#include "instrument/data_directories.hpp"
#include "instrument/numor_parts.hpp"
#include "instrument/read_numor.hpp"

namespace vntl {

namespace {

std::size_t Bytes_Of(const Frame_Values& counts) { return counts.All().size_bytes(); }

std::size_t Size(int number) { return static_cast<std::size_t>(std::max(number, 0)); }

// What a run is told again by; the same bytes have the same one.
std::size_t Mark_Of(std::string_view text) { return std::hash<std::string_view>{}(text); }

// Memory may run out on a file that is larger than what is left of it.
Status Within_Memory(const std::string& file, const std::function<Status()>& work) {
    try {
        return With_File(work(), file);
    } catch (const std::bad_alloc&) {
        return Status::Fail_File("There is not enough memory for the run " + file);
    }
}

Frame_Values First_Frames(Frame_Values counts, std::size_t frames) {
    if (frames >= counts.frames()) return counts;
    Frame_Values part(counts.values(), frames);
    std::copy_n(counts.All().begin(), part.All().size(), part.All().begin());
    return part;
}

// An instrument that was built anew writes what it wrote before; its runs have room for four letters of its name.
std::string Machine_Of_Name(std::string_view name) {
    const std::string machine = Upper(Trim(name));
    return machine == "R6NEW" || machine == "R6NE" ? "R6" : machine;
}

Status Choose_Machine(const std::string& own, const std::string& file, const Diffractometer_Type& instrument, std::string& machine) {
    machine = Machine_Of_Name(instrument.name_inst);
    if (!Reader_Of_Machine(machine).empty()) return Status::Done();
    machine = Machine_Of_Name(own);
    if (!Reader_Of_Machine(machine).empty()) return Status::Done();
    machine.clear();
    return own.empty() ? Status::Fail("The file tells of no instrument: " + file) : With_File(No_SXTAL_Reader(own), file);
}

class Run_Of_Store final : public Frame_Source {
public:
    Run_Of_Store(Frame_Store& store, int index) : store_(store), index_(index) {}

    const SXTAL_Numor_Type& Run() const override { return store_.Run(index_); }
    int nx() const override { return store_.nx(index_); }
    int ny() const override { return store_.ny(index_); }
    Status Frame(int frame, Count_Matrix& counts) override { return store_.Frame(index_, frame, counts); }

private:
    Frame_Store& store_;
    int index_;
};

}  // namespace

// --- runs --------------------------------------------------------------------------------------------------------------------------

Status Frame_Store::Add(const std::string& file, const Diffractometer_Type& instrument) {
    return Within_Memory(file, [&] { return Append(file, instrument); });
}

Status Frame_Store::Append(const std::string& file, const Diffractometer_Type& instrument) {
    std::string text;
    Entry entry;
    entry.file = file;
    if (Status status = Read_Run_Bytes(file, text); status.failed) return status;
    if (Status status = Choose_Machine(Instrument_Of_Text(text), file, instrument, entry.machine); status.failed) return status;
    Status status = Read_Numor_Text(text, file, Reader_Of_Machine(entry.machine), entry.run);
    if (status.failed) return status;
    Frame_Shape shape;
    status = Shape_Of_Frame(entry.run.nbdata, entry.machine, instrument.np_horiz, instrument.np_vert, shape);
    if (status.failed) return status;
    entry.nx = shape.columns;
    entry.ny = shape.rows;
    entry.mark = Mark_Of(text);
    Frame_Values counts = First_Frames(std::exchange(entry.run.counts, {}), Size(Frames_In_Room(entry)));
    runs_.push_back(std::move(entry));
    Hold(runs_.back(), std::move(counts), 1);
    return status;
}

const SXTAL_Numor_Type& Frame_Store::Run(int index) const { return At(index).run; }
const std::string& Frame_Store::File(int index) const { return At(index).file; }
const std::string& Frame_Store::Machine(int index) const { return At(index).machine; }
int Frame_Store::nx(int index) const { return At(index).nx; }
int Frame_Store::ny(int index) const { return At(index).ny; }

int Frame_Store::Index_Of(int numor) const {
    const auto found = std::find_if(runs_.begin(), runs_.end(), [&](const Entry& entry) { return entry.run.numor == numor; });
    return found == runs_.end() ? 0 : static_cast<int>(found - runs_.begin()) + 1;
}

std::unique_ptr<Frame_Source> Frame_Store::Source(int index) { return std::make_unique<Run_Of_Store>(*this, index); }

// --- counts ------------------------------------------------------------------------------------------------------------------------

Status Frame_Store::Frame(int index, int frame, Count_Matrix& counts) {
    if (index < 1 || index > size()) return Status::Fail("There is no run " + std::to_string(index) + " of " + std::to_string(size()));
    Entry& entry = runs_[Size(index) - 1];
    if (frame < 1 || frame > entry.run.nframes)
        return With_File(Status::Fail("There is no frame " + std::to_string(frame) + " of " + std::to_string(entry.run.nframes)),
                         entry.file);
    return Within_Memory(entry.file, [&] { return Unfold(entry, frame, counts); });
}

Status Frame_Store::Unfold(Entry& entry, int frame, Count_Matrix& counts) {
    const bool held = entry.first > 0 && frame >= entry.first && Size(frame - entry.first) < entry.counts.frames();
    Frame_Values read;
    int first = entry.first;
    if (!held)
        if (Status status = Read_Again(entry, frame, read, first); status.failed) return status;
    const Frame_Values& from = held ? entry.counts : read;
    const Status status = Get_Counts(from.Frame(Size(frame - first)), entry.machine, entry.nx, entry.ny, counts);
    if (status.failed) return status;
    held ? void(entry.used = ++uses_) : Hold(entry, std::move(read), first);
    return status;
}

// The whole run where its counts have room, else the frames around the one that is wanted, so that steps to either side find theirs.
Status Frame_Store::Read_Again(const Entry& entry, int frame, Frame_Values& read, int& first) const {
    std::string text;
    if (Status status = Read_Run_Bytes(entry.file, text); status.failed) return status;
    if (Mark_Of(text) != entry.mark) return Status::Fail_File("The file has changed since it was read: " + entry.file);
    const int nframes = entry.run.nframes, kept = Frames_In_Room(entry);
    first = std::clamp(frame - kept / 2, 1, nframes - kept + 1);
    std::optional<Frame_Selection> wanted;
    if (kept < nframes) wanted = {first, first + kept - 1};
    SXTAL_Numor_Type run;
    Status status = Read_Numor_Text(text, entry.file, Reader_Of_Machine(entry.machine), run, wanted);
    if (status.ok()) read = std::move(run.counts);
    return status;
}

// At least the one that is asked for.
int Frame_Store::Frames_In_Room(const Entry& entry) const {
    const std::size_t frame = Size(entry.run.nbdata) * sizeof(float);
    return static_cast<int>(std::clamp<std::size_t>(most_bytes_ / frame, 1, Size(entry.run.nframes)));
}

// Keeps counts of a run from its frame `first` on, for which those of the runs used longest ago go; none where they alone are too many.
void Frame_Store::Hold(Entry& entry, Frame_Values counts, int first) {
    entry.used = ++uses_;
    entry.counts = {};
    entry.first = 0;
    if (Bytes_Of(counts) > most_bytes_) return;
    const std::size_t room = most_bytes_ - Bytes_Of(counts);
    for (std::size_t held = Bytes_Held(); held > room;) {
        Entry& oldest = *std::min_element(runs_.begin(), runs_.end(), [](const Entry& a, const Entry& b) {
            return std::pair(a.first == 0, a.used) < std::pair(b.first == 0, b.used);
        });
        held -= Bytes_Of(oldest.counts);
        oldest.counts = {};
        oldest.first = 0;
    }
    entry.counts = std::move(counts);
    entry.first = first;
}

std::size_t Frame_Store::Bytes_Held() const {
    std::size_t bytes = 0;
    for (const Entry& entry : runs_) bytes += Bytes_Of(entry.counts);
    return bytes;
}

}  // namespace vntl
