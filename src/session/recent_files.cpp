// The recent-files list and its file: one full path a line, newest first, at most five.
//
//   /home/ana/data/al2o3_300K.xye
//   /home/ana/data/al2o3_280K.xye
#include "session/recent_files.hpp"

#include <algorithm>
#include <vector>

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/write_file.hpp"
#include "session/session.hpp"

namespace vntl {
namespace {

constexpr std::string_view empty_slot = "-";

// A slot holds a whole path on one line; a path cut to the width would lead to another file, or to none.
bool Fits_A_Slot(std::string_view path) {
    const auto is_control = [](char c) { return static_cast<unsigned char>(c) < 32 || c == 127; };
    return !Trim(path).empty() && Trim(path) != empty_slot && Cut(path, recent_file_width).size() == path.size() &&
           std::none_of(path.begin(), path.end(), is_control);
}

}  // namespace

void Recent_Files::Add(std::string_view path) {
    if (!Fits_A_Slot(path)) return;
    const auto found = std::find_if(slots_.begin(), slots_.end(), [&](const std::string& slot) { return Trim(slot) == Trim(path); });
    if (found != slots_.end()) {
        std::swap(*found, slots_.front());
        return;
    }
    std::move_backward(slots_.begin(), slots_.end() - 1, slots_.end());
    slots_.front() = path;
}

void Recent_Files::Read(const std::string& file) {
    const auto lines = Read_Text_Lines(file);
    if (!lines) return;
    slots_.fill(std::string(empty_slot));
    const std::size_t last = std::min(lines->size(), slots_.size());
    for (std::size_t line = 0, slot = 0; line < last; ++line) {
        const std::string& path = (*lines)[line];
        if (Fits_A_Slot(path) && std::find(slots_.begin(), slots_.end(), path) == slots_.end()) slots_[slot++] = path;
    }
}

void Recent_Files::Write(const std::string& file) const {
    std::vector<std::string> lines;
    std::copy_if(slots_.begin(), slots_.end(), std::back_inserter(lines), [](const std::string& slot) { return slot != empty_slot; });
    Write_Text_Lines(file, lines);
}

void MRU_Add(Session& session, const std::string& path) {
    session.recent.Add(path);
    MRU_Show(session);
}

void MRU_Show(Session& session) {
    Interface_State& menu = session.interface;
    for (int slot = 1; slot <= recent_file_slots; ++slot) {
        const auto i = static_cast<std::size_t>(slot - 1);
        const std::string& path = session.recent.Slot(slot);
        const bool filled = path != empty_slot;
        menu.Label(recent_file_commands[i], std::to_string(slot) + ". " + (filled ? path : "<Empty>"));
        menu.Enable(recent_file_commands[i], filled);
    }
}

}  // namespace vntl
