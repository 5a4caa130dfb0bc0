// Tells on standard output what patterns the NeXus file on standard input holds: a program of its own, for damaged files may bring the
// library down, and because the library is too large for the start of a program that seldom needs it.
#include <hdf5.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <span>
#include <string>

#include "base/text.hpp"
#include "nexus/facts.hpp"
#include "nexus/plot_data.hpp"
#include "patterns/nexus_stream.hpp"

namespace {

using namespace vntl;
using namespace vntl::nexus;

constexpr rlim_t seconds = 20;
constexpr rlim_t most_memory = rlim_t{2} << 30;  // two arrays of 512 MB in hand, and those of single precision
constexpr rlim_t most_output = rlim_t{1} << 30;

void Limit(int what, rlim_t most) {
    rlimit limit{};
    if (getrlimit(static_cast<__rlimit_resource_t>(what), &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max == RLIM_INFINITY ? most : std::min(most, limit.rlim_max);
    setrlimit(static_cast<__rlimit_resource_t>(what), &limit);
}

void Keep_Within_Bounds() {
    Limit(RLIMIT_CORE, 0);
    Limit(RLIMIT_CPU, seconds);
    Limit(RLIMIT_FSIZE, most_output);
#ifndef VANTRELO_SHADOW_MEMORY
    Limit(RLIMIT_AS, most_memory);
#endif
}

// Standard output, as records. What cannot be written any more ends the program.
class Teller {
public:
    void Tell(std::string_view name, std::string_view content) {
        const auto head = nexus_stream::Head_Of_Record(name, content.size());
        Write({head.data(), head.size()});
        Write(content);
        Write(std::string_view("\0\0\0\0\0\0\0\0", nexus_stream::Padded(content.size()) - content.size()));
    }
    void Tell(std::string_view name, const std::vector<float>& numbers) {
        Flush();
        Tell(name, std::string_view(reinterpret_cast<const char*>(numbers.data()), numbers.size() * sizeof(float)));
    }
    // Fields of a record hold neither TABs nor line ends.
    void Tell_Fields(std::string_view name, std::vector<std::string> fields) {
        std::string content;
        for (std::string& field : fields) {
            for (char& c : field)
                if (static_cast<unsigned char>(c) < ' ') c = ' ';
            content += (&field == fields.data() ? "" : "\t") + field;
        }
        Tell(name, std::string_view(content));
    }
    void Flush() {
        Send(waiting_);
        waiting_.clear();
    }

private:
    void Write(std::string_view bytes) {
        constexpr std::size_t small = 4096;
        if (bytes.size() < small) {
            waiting_ += bytes;
            return;
        }
        Flush();
        Send(bytes);
    }
    static void Send(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t written = write(STDOUT_FILENO, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) _exit(EXIT_FAILURE);
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }

    std::string waiting_;
};

// The first `frames` of frames, each with its points in a row, whichever dimension stands first in the file.
void Lay_In_Rows(std::vector<float>& numbers, const Plot_Data& data, std::size_t frames) {
    if (data.x_first && numbers.size() == data.count * data.points) {
        std::vector<float> rows(frames * data.points);
        for (std::size_t frame = 0; frame < frames; ++frame)
            for (std::size_t i = 0; i < data.points; ++i) rows[frame * data.points + i] = numbers[i * data.count + frame];
        numbers = std::move(rows);
    }
    if (data.count > 0 && numbers.size() > frames * data.points) numbers.resize(frames * data.points);
}

std::vector<std::string> Names(const Array& array) {
    return {array.name, Attribute_Text(array.data_set, "units"), Attribute_Text(array.data_set, "long_name")};
}

bool Tell_Data(const Plot_Data& data, Teller& teller) {
    const std::size_t frames = std::min(data.count, nexus_stream::most_frames);
    teller.Tell_Fields("SIGNAL", Names(data.signal));
    teller.Tell_Fields("AXIS", Names(data.x));
    if (data.frames) teller.Tell_Fields("FRAMES", Names(data.frames));
    teller.Tell_Fields("SHAPE", {std::to_string(frames), std::to_string(data.points), std::to_string(data.count)});
    std::vector<float> numbers = Numbers(data.signal.data_set, data.signal.form);
    if (numbers.empty()) return false;
    Lay_In_Rows(numbers, data, frames);
    teller.Tell("Y", numbers);
    if (data.errors) {
        numbers = Numbers(data.errors.data_set, data.errors.form);
        Lay_In_Rows(numbers, data, frames);
        if (!numbers.empty()) teller.Tell("ERRORS", numbers);
    }
    numbers = Numbers(data.x.data_set, data.x.form);
    if (numbers.empty()) return false;
    if (data.x.form.shape.size() == 2) numbers.resize(numbers.size() / data.count * frames);
    teller.Tell("X", numbers);
    if (data.frames) {
        numbers = Numbers(data.frames.data_set, data.frames.form);
        numbers.resize(std::min(numbers.size(), frames));
        if (!numbers.empty()) teller.Tell("VALUES", numbers);
    }
    return true;
}

void Tell_File(Teller& teller) {
    constexpr std::string_view damaged = "This HDF5 file is cut or damaged";
    constexpr std::string_view damaged_data = "The data of this HDF5 file are damaged, or packed in a way that is not known here";
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    const Handle file = Open_Standard_Input();
    if (!file) return teller.Tell("REFUSED", damaged);
    const Handle root = Open_Object(file.get(), "/");
    if (!Is_Group(root)) return teller.Tell("REFUSED", damaged);
    const Found found = Find_Plot_Data(root);
    if (!found.data) return teller.Tell("REFUSED", std::string_view(found.refusal));
    Tell_Facts(found.entry, [&](const Fact& fact) { teller.Tell_Fields("FACT", {fact.path, fact.kind, fact.units, fact.value}); });
    if (!Tell_Data(*found.data, teller)) return teller.Tell("REFUSED", damaged_data);
    teller.Tell("END", std::string_view());
}

}  // namespace

int main() {
    Keep_Within_Bounds();
    Teller teller;
    try {
        Tell_File(teller);
        teller.Flush();
    } catch (const std::exception&) {  // no memory within the bounds
        _exit(EXIT_FAILURE);
    }
    _exit(EXIT_SUCCESS);  // the library has nothing to put in order: it wrote no file
}
