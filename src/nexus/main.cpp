// Tells on standard output what patterns the NeXus file on standard input holds: a program of its own, for damaged files may bring the
// library down, and because the library is too large for the start of a program that seldom needs it.
#include <hdf5.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <span>
#include <string>

#include "base/text.hpp"
#include "nexus/facts.hpp"
#include "nexus/plot_data.hpp"
#include "patterns/nexus/nexus_stream.hpp"

namespace {

using namespace vntl;
using namespace vntl::nexus;

// Seconds of work: a sound file takes milliseconds, and 512 MB that unpack from next to nothing less than three seconds. In a damaged one
// the library may go round without end.
constexpr rlim_t least_seconds = 3, most_seconds = 20, bytes_a_second = 4 << 20;
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
    struct stat input {};
    fstat(STDIN_FILENO, &input);
    Limit(RLIMIT_CPU, std::min(least_seconds + static_cast<rlim_t>(std::max<off_t>(input.st_size, 0)) / bytes_a_second, most_seconds));
    Limit(RLIMIT_FSIZE, most_output);
#ifndef VANTRELO_SHADOW_MEMORY
    Limit(RLIMIT_AS, most_memory);
#endif
}

// Standard output, as records. What cannot be written any more ends the program.
class Teller {
public:
    void Tell(std::string_view name, std::string_view content) {
        Begin(name, content.size());
        Write(content);
        Pad(content.size());
    }
    // The first `most` numbers of an array. The record that was begun cannot be taken back: where they cannot be read, the program ends.
    void Tell(std::string_view name, const Array& array, std::size_t most) {
        Begin(name, most * sizeof(float));
        if (!Read_Numbers(array.data_set, most, [this](std::span<const float> numbers) { Write(Bytes(numbers)); })) _exit(EXIT_FAILURE);
        Pad(most * sizeof(float));
    }
    void Tell(std::string_view name, std::span<const float> numbers) { Tell(name, Bytes(numbers)); }
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
    static std::string_view Bytes(std::span<const float> numbers) {
        return {reinterpret_cast<const char*>(numbers.data()), numbers.size_bytes()};
    }
    void Begin(std::string_view name, std::size_t length) {
        const auto head = nexus_stream::Head_Of_Record(name, length);
        Write({head.data(), head.size()});
    }
    void Pad(std::size_t length) { Write(std::string_view("\0\0\0\0\0\0\0\0", nexus_stream::Padded(length) - length)); }
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

// The first frames of an array, each with its points in a row, whichever dimension stands first in the file.
void Tell_Frames(std::string_view name, const Array& array, const Plot_Data& data, std::size_t frames, Teller& teller) {
    if (!data.x_first) return teller.Tell(name, array, std::max<std::size_t>(frames, 1) * data.points);
    std::vector<float> rows(frames * data.points);
    std::size_t at = 0;
    const bool read = Read_Numbers(array.data_set, array.form.points, [&](std::span<const float> numbers) {
        for (const float number : numbers) {
            const std::size_t frame = at % data.count, point = at / data.count;
            if (frame < frames) rows[frame * data.points + point] = number;
            ++at;
        }
    });
    if (!read) _exit(EXIT_FAILURE);
    teller.Tell(name, rows);
}

std::vector<std::string> Names(const Array& array) {
    return {array.name, Attribute_Text(array.data_set, "units"), Attribute_Text(array.data_set, "long_name")};
}

void Tell_Data(const Plot_Data& data, Teller& teller) {
    const std::size_t frames = std::min(data.count, nexus_stream::most_frames);
    teller.Tell_Fields("SIGNAL", Names(data.signal));
    teller.Tell_Fields("AXIS", Names(data.x));
    if (data.frames) teller.Tell_Fields("FRAMES", Names(data.frames));
    teller.Tell_Fields("SHAPE", {std::to_string(frames), std::to_string(data.points), std::to_string(data.count)});
    Tell_Frames("Y", data.signal, data, frames, teller);
    if (data.errors) Tell_Frames("ERRORS", data.errors, data, frames, teller);
    const bool of_each = data.x.form.shape.size() == 2;
    teller.Tell("X", data.x, of_each ? data.x.form.points / data.count * frames : data.x.form.points);
    if (data.frames) teller.Tell("VALUES", data.frames, frames);
}

void Tell_File(Teller& teller) {
    constexpr std::string_view damaged = "This HDF5 file is cut or damaged";
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    const Handle file = Open_Standard_Input();
    if (!file) return teller.Tell("REFUSED", std::string_view(damaged));
    const Handle root = Open_Object(file.get(), "/");
    if (!Is_Group(root)) return teller.Tell("REFUSED", std::string_view(damaged));
    const Found found = Find_Plot_Data(root);
    if (!found.data) return teller.Tell("REFUSED", std::string_view(found.refusal));
    Tell_Facts(found.entry, [&](const Fact& fact) { teller.Tell_Fields("FACT", {fact.path, fact.kind, fact.units, fact.value}); });
    Tell_Data(*found.data, teller);
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
