// Profile files of a refinement: any bytes give a whole row or a message, in bounded memory. The first byte tells whether the file ends in
// .xrf; files of pairs beside it hold what stands behind the last form feed.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <unistd.h>

#include "patterns/prf.hpp"
#include "patterns/prf_tools.hpp"

namespace {

using namespace vntl;

void Require(bool good) {
    if (!good) std::abort();
}

void Check_Points(const Diffraction_Pattern_Type& p) {
    const auto points = static_cast<std::size_t>(p.npts);
    Require(p.npts >= 1);
    for (const auto* array : {&p.x, &p.y, &p.ycalc, &p.bgr, &p.sigma}) Require(array->size() == points);
    for (const float x : p.x) Require(std::isfinite(x));
}

void Check_Reflections(const PRF_Info_Add_Type& info) {
    const auto n = static_cast<std::size_t>(info.nreflections);
    Require(info.nphases >= 0 && info.nphases <= max_phases && info.nreflections >= 0);
    Require(info.phase_value.size() == static_cast<std::size_t>(info.nphases));
    Require(info.refl_phase.size() == n && info.refl_code.size() == n && info.refl_tag.size() == n);
    Require(info.refl_position.size() == n && info.refl_label.size() == n);
    for (std::size_t i = 0; i < n; ++i) {
        Require(info.refl_phase[i] >= 1 && info.refl_phase[i] <= info.nphases);
        Require(info.refl_code[i] >= 1 && info.refl_code[i] <= info.nphases);
        Require(std::isfinite(info.refl_position[i]) && info.refl_label[i].size() <= 160);
    }
    Require(info.nexcl >= 0 && info.nexcl <= max_excluded_regions);
    for (std::size_t i = 0; i < static_cast<std::size_t>(info.nexcl); ++i) Require(info.excl_min[i] <= info.excl_max[i]);
}

// The fuzzed text as a file, which is all that a reader can open.
Status Open_Text(std::string_view text, Text_File& source) {
    const std::string name = "/tmp/fuzz_prf_pairs_" + std::to_string(getpid());
    std::FILE* file = std::fopen(name.c_str(), "wb");
    if (file == nullptr) return Status::Fail("no file");
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
    Status status = source.Open(name);
    std::remove(name.c_str());
    return status;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view all(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t gap = all.rfind('\f');
    const std::string_view text = all.substr(0, gap);
    const std::string_view beside = gap == std::string_view::npos ? std::string_view() : all.substr(gap + 1);

    Diffraction_Pattern_Type pattern;
    PRF_Info_Add_Type info;
    Prf_File file{text, Line_Cursor(text), [&](const std::string&, Text_File& source) { return Open_Text(beside, source); }, pattern, info};
    const Status status = Read_Prf_Text(file, (data[0] & 1) != 0);
    Require(status.failed != status.message.empty());
    if (status.failed) return 0;
    Check_Points(pattern);
    Check_Reflections(info);
    return 0;
}
