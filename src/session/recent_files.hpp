// The five files opened last, newest first.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace vntl {

struct Session;

inline constexpr int recent_file_slots = 5;
inline constexpr std::size_t recent_file_width = 200;

class Recent_Files {
public:
    // A path in slot k > 1 changes places with slot 1; a new one goes to slot 1 and the others move down. A path that a slot, or a
    // line of the list's file, cannot hold whole is left out.
    void Add(std::string_view path);
    const std::string& Slot(int slot) const { return slots_[static_cast<std::size_t>(slot - 1)]; }  // slot 1 to 5; "-" is empty

    // Takes the paths of the first five lines, passing over lines that are none; a file that cannot be read changes nothing.
    void Read(const std::string& file);
    void Write(const std::string& file) const;  // one path a line, empty slots left out

private:
    std::array<std::string, recent_file_slots> slots_{"-", "-", "-", "-", "-"};
};

void MRU_Add(Session&, const std::string& path);  // Add and MRU_Show
void MRU_Show(Session&);                          // labels and states of the five menu entries

}  // namespace vntl
