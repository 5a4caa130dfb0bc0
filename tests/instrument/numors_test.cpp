// Runs of every instrument, laid out in every way that files have, against the numbers that they were written from.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <numeric>
#include <sstream>

#include "base/text.hpp"
#include "instrument/numor_blocks.hpp"
#include "instrument/numor_text.hpp"
#include "instrument/read_numor.hpp"

namespace vntl {
namespace {

std::vector<long long> Some_Counts(std::size_t n, std::size_t seed) {
    std::vector<long long> counts(n);
    for (std::size_t i = 0; i < n; ++i) counts[i] = static_cast<long long>((i + 17 * seed) * 7919 % 90001);
    return counts;
}

std::vector<Numor_Frame> Some_Frames(std::size_t n, std::size_t nbdata, std::size_t nbang = 1) {
    std::vector<Numor_Frame> frames(n);
    for (std::size_t i = 0; i < n; ++i) {
        const auto step = static_cast<double>(i);
        frames[i] = {.time = 30 + step, .monitor = 10000 + 7 * step, .counts = Some_Counts(nbdata, i)};
        frames[i].angles.clear();
        for (std::size_t k = 0; k < nbang; ++k) frames[i].angles.push_back(-20.25 + 0.125 * step + 30 * static_cast<double>(k));
    }
    return frames;
}

Numor_Text Some_Run(const std::string& instrument) {
    const std::tuple<const char*, std::size_t, std::size_t> sizes[] = {
        {"R3A", 5, 25}, {"R3B", 1, 400}, {"R5B", 4, 256}, {"R8", 9, 64}, {"R22", 1, 800}};
    for (const auto& [name, frames, nbdata] : sizes)
        if (instrument == name) return Numor_Text::Of(instrument, Some_Frames(frames, nbdata));
    return Numor_Text::Of(instrument.substr(0, 3), Some_Frames(6, 1024, 4));
}

template <class Numor>
Numor Read(const std::string& text, const std::string& instrument) {
    Numor numor;
    const Status status = Read_Numor_Text(text, "run", instrument, numor);
    EXPECT_TRUE(status.ok()) << instrument << ": " << status.message;
    return numor;
}

std::vector<float> All(const Frame_Values& values) { return {values.All().begin(), values.All().end()}; }

auto Texts(const Numor_Head& n) { return std::tuple(n.header, n.instrm, n.title, n.scantype); }

void Expect_Same(const Numor_Head& a, const Numor_Head& b, const std::string& what) {
    const auto numbers = [](const Numor_Head& n) {
        return std::tuple(n.numor, n.manip, n.icalc, n.angles, n.scans, n.wave, n.conditions, n.icdesc, n.nbdata, n.nframes, n.nbang);
    };
    const auto frames = [](const Numor_Head& n) { return std::tuple(n.monitor, n.time, All(n.tmc_ang), All(n.counts)); };
    EXPECT_TRUE(Texts(a) == Texts(b) && numbers(a) == numbers(b) && frames(a) == frames(b)) << what;
}

// What was put into the frames of a run is what is read.
void Expect_Frames(const Numor_Head& numor, const std::vector<Numor_Frame>& frames, std::size_t first = 0) {
    ASSERT_EQ(std::pair(numor.counts.frames(), numor.tmc_ang.frames()), std::pair(frames.size() - first, frames.size() - first));
    ASSERT_EQ(numor.tmc_ang.values(), frame_angle + static_cast<std::size_t>(numor.nbang));
    for (std::size_t i = first; i < frames.size(); ++i) {
        const std::span<const float> counts = numor.counts.Frame(i - first), told = numor.tmc_ang.Frame(i - first);
        EXPECT_EQ(std::vector<float>(counts.begin(), counts.end()), std::vector<float>(frames[i].counts.begin(), frames[i].counts.end()));
        EXPECT_EQ(told[frame_total], static_cast<float>(std::accumulate(frames[i].counts.begin(), frames[i].counts.end(), 0ll)));
        EXPECT_FLOAT_EQ(told[frame_time], static_cast<float>(frames[i].time));
        EXPECT_FLOAT_EQ(told[frame_monitor], static_cast<float>(frames[i].monitor));
        for (std::size_t k = 0; k < frames[i].angles.size(); ++k)
            EXPECT_NEAR(told[frame_angle + k], frames[i].angles[k], 1e-5) << "frame " << i << " angle " << k;
    }
}

const char* const powder_instruments[] = {"R3A", "R3B", "R5B", "R8", "R22"};
const char* const crystal_instruments[] = {"R6", "R11", "R17", "R18", "R18_HB"};

std::string Eight(int value) {
    const std::string digits = std::to_string(value);
    return std::string(8 - digits.size(), ' ') + digits;
}

TEST(Numors, Every_Instrument_Reads_Its_Frames_And_Texts) {
    for (const std::string instrument : powder_instruments) {
        Numor_Text run = Some_Run(instrument);
        const auto numor = Read<Powder_Numor_Type>(run.Text(), " " + Lower(instrument) + " ");
        Expect_Frames(numor, run.frames);
        using Four = std::tuple<std::string, std::string, std::string, std::string>;
        EXPECT_EQ(Texts(numor), Four("user            26-Nov-05 10:20:", instrument, "powder at 300 K", "2theta"));
        EXPECT_EQ(std::tuple(numor.numor, numor.nbdata, numor.nframes, numor.scans[0]),
                  std::tuple(123456, run.frames[0].counts.size(), run.frames.size(), -20.25f));
    }
    for (const std::string instrument : crystal_instruments) {
        Numor_Text run = Some_Run(instrument);
        run.scantype = "q-scan";
        const auto numor = Read<SXTAL_Numor_Type>(run.Text(), instrument);
        Expect_Frames(numor, run.frames);
        EXPECT_EQ(numor.scantype + numor.notice, "q-scan => Reading ASCII files");
        EXPECT_EQ(std::pair(numor.time, numor.monitor), std::pair(30 * 6 + 15.0f, 10000 + 7 * 2.5f));
    }
}

// Words of the header, each by a value that tells its number.
TEST(Numors, Header_Words) {
    const auto numbered = [](Numor_Text run) {
        for (std::size_t word = 1; word <= 52; ++word) run.F(word) = static_cast<double>(word) + 0.5;
        return run;
    };
    const auto from = [](float first) { return std::array<float, 3>{first, first + 1, first + 2}; };
    for (const std::string instrument : {"R3A", "R3B", "R5B"}) {
        Numor_Text run = numbered(Some_Run(instrument));
        const auto n = Read<Powder_Numor_Type>(run.Text(), instrument);
        EXPECT_EQ(std::tuple(n.manip, n.icalc, n.icdesc[6], n.wave),
                  std::tuple(2, instrument == "R3A" ? 0 : 3, instrument == "R3B" ? 31 : 0, 18.5f));
        EXPECT_EQ(n.angles, (std::array<float, 5>{4.5f, 5.5f, 6.5f, 7.5f, 8.5f}));
        EXPECT_EQ(n.scans, (std::array<float, 3>{-20.25f, 37.5f, 38.5f}));
        EXPECT_EQ(n.conditions, (std::array<float, 5>{46.5f, 47.5f, 48.5f, 49.5f, 50.5f}));
    }
    const auto r22 = Read<Powder_Numor_Type>(numbered(Some_Run("R22")).Text(), "R22");
    EXPECT_EQ(std::tuple(r22.wave, r22.monitor, r22.time), std::tuple(1.5f, 51.5f, 52.5f));
    EXPECT_EQ(r22.conditions, (std::array<float, 5>{2.5f, 3.5f, 4.5f}));
    EXPECT_EQ(r22.scans, (std::array<float, 3>{-20.25f, 0.2f, 38.5f}));
    const auto r8 = Read<Powder_Numor_Type>(numbered(Some_Run("R8")).Text(), "R8");
    EXPECT_EQ(std::tuple(r8.monitor, r8.scans[0], r8.time), std::tuple(1.5f, 12.5f, 30.0f));
    EXPECT_EQ(r8.conditions, (std::array<float, 5>{}));

    const auto c = Read<SXTAL_Numor_Type>(numbered(Some_Run("R6")).Text(), "R6");
    EXPECT_EQ(std::tuple(c.hmin, c.hmax, c.dh), std::tuple(from(1.5f), from(22.5f), from(25.5f)));
    EXPECT_EQ(c.ub, (std::array<std::array<float, 3>, 3>{from(9.5f), from(12.5f), from(15.5f)}));
    EXPECT_EQ(std::tuple(c.phi, c.chi, c.omega, c.gamma, c.psi), std::tuple(4.5f, 5.5f, 6.5f, 7.5f, 8.5f));
    EXPECT_EQ(std::tuple(c.coupling, c.wave, c.scans[2], c.conditions[4]), std::tuple(43.5f, 18.5f, 38.5f, 50.5f));
    EXPECT_EQ(std::tuple(c.manip, c.icalc, c.icdesc[0], c.nbang), std::tuple(2, 3, 25, 4));
}

using R = Numor_Text;
const std::pair<const char*, void (*)(R&)> layouts[] = {
    {"markers of ten letters", [](R& r) { r.marker = 10; }},
    {"no trailing blanks", [](R& r) { r.cut_blanks = true; }},
    {"CR LF", [](R& r) { r.line_end = "\r\n"; }},
    {"CR", [](R& r) { r.line_end = "\r"; }},
    {"wide integers", [](R& r) { r.counts_letter = 'J'; }},
    {"reals first", [](R& r) { r.reals_first = true; }},
    {"no labels", [](R& r) { r.labels = false; }},
    {"frame markers", [](R& r) { r.frame_markers = true, r.one_block = false; }},
    {"no subscans", [](R& r) { r.subscans = false; }},
    {"subscans", [](R& r) { r.subscans = true, r.one_block = false; }},
    {"groups of integers", [](R& r) { r.groups = Numor_Groups::own_integers, r.one_block = false; }},
    {"groups of reals", [](R& r) { r.groups = Numor_Groups::own_reals, r.one_block = false; }},
    {"all", [](R& r) { r.marker = 33, r.cut_blanks = r.frame_markers = true, r.counts_letter = 'J', r.one_block = false; }}};

TEST(Numors, Layouts_Give_The_Same_Record) {
    const auto compare = [](const std::string& instrument, const auto& read) {
        const auto usual = read(Some_Run(instrument).Text());
        for (const auto& [name, change] : layouts) {
            Numor_Text run = Some_Run(instrument);
            change(run);
            Expect_Same(usual, read(run.Text()), instrument + ", " + name);
        }
    };
    for (const std::string instrument : powder_instruments)
        compare(instrument, [&](const std::string& text) { return Read<Powder_Numor_Type>(text, instrument); });
    for (const std::string instrument : crystal_instruments)
        compare(instrument, [&](const std::string& text) { return Read<SXTAL_Numor_Type>(text, instrument); });
}

TEST(Numors, Columns_That_Were_Edited_By_Hand) {
    const std::string text = Some_Run("R3A").Text();
    const auto usual = Read<Powder_Numor_Type>(text, "R3A");
    std::string tabs;
    std::istringstream lines(text);
    for (std::string line, word; std::getline(lines, line); tabs += line + '\n') {
        if (line.find_first_not_of("0123456789 -") != std::string::npos) continue;
        std::istringstream words(std::exchange(line, {}));
        while (words >> word) line += (line.empty() ? "" : "\t") + word;
    }
    const std::string fed = Replace_All(text, "\n", "\n\f");
    Expect_Same(usual, Read<Powder_Numor_Type>(tabs, "R3A"), "TABs");
    Expect_Same(usual, Read<Powder_Numor_Type>(fed, "R3A"), "form feeds");
    Expect_Same(usual, Read<Powder_Numor_Type>("\xEF\xBB\xBF" + text + "\x1a", "R3A"), "marks of the text");
    Expect_Same(usual, Read<Powder_Numor_Type>(text.substr(0, text.find_last_not_of(" \n") + 1), "R3A"), "no last line end");
}

TEST(Numors, Large_Counts_And_Adjacent_Columns) {
    Numor_Text run = Numor_Text::Of("R3B", {{.counts = {99999999, 12345678, 0, 7}}});
    Expect_Frames(Read<Powder_Numor_Type>(run.Text(), "R3B"), run.frames);
    run.counts_letter = 'J';
    run.frames[0].counts = {2147483647, 1000000000, 3, 1234567890};
    run.frames[0].angles = {10};
    Expect_Frames(Read<Powder_Numor_Type>(run.Text(), "R3B"), run.frames);
}

TEST(Numors, What_A_File_Leaves_Out) {
    // R22 without an I block has as many counts as its block; time and monitor stand in the header or in a group.
    Numor_Text r22 = Some_Run("R22");
    r22.F(51) = r22.F(52) = 77;
    const auto whole = Read<Powder_Numor_Type>(r22.Text(), "R22");
    r22.header_integers = false;
    for (const bool subscans : {true, false}) {
        r22.subscans = subscans;
        for (const Numor_Groups groups : {Numor_Groups::own_reals, Numor_Groups::own_integers}) {
            r22.groups = groups;
            Expect_Same(whole, Read<Powder_Numor_Type>(r22.Text(), "R22"), "R22 without header integers");
        }
    }
    r22.groups = Numor_Groups::none;
    auto bare = Read<Powder_Numor_Type>(r22.Text(), "R22");
    EXPECT_EQ(std::tuple(bare.nbdata, bare.monitor, bare.time, bare.tmc_ang.Frame(0)[frame_time]), std::tuple(800, 77.0f, 77.0f, 77.0f));
    EXPECT_EQ(std::tuple(bare.scans[0], bare.tmc_ang.Frame(0)[frame_angle]), std::tuple(-20.25f, -20.25f));
    r22.groups = Numor_Groups::own_reals;
    r22.reals.resize(38);
    bare = Read<Powder_Numor_Type>(r22.Text(), "R22");
    EXPECT_EQ(std::tuple(bare.monitor, bare.time), std::tuple(10000.0f, 30.0f));

    // R8: nine blocks or one, with or without an I block; a second F block is a group or tells temperatures.
    Numor_Text r8 = Some_Run("R8");
    r8.groups = Numor_Groups::none;
    r8.subscans = false;
    r8.more_reals = {300, 299.5, 298.25};
    for (const bool one_block : {true, false})
        for (const bool integers : {true, false}) {
            r8.one_block = one_block, r8.header_integers = integers;
            const auto numor = Read<Powder_Numor_Type>(r8.Text(), "R8");
            EXPECT_EQ(numor.conditions, (std::array<float, 5>{300, 299.5f, 298.25f}));
            EXPECT_EQ(std::tuple(numor.counts.frames(), numor.counts.values(), numor.monitor, numor.time),
                      std::tuple(std::size_t{9}, std::size_t{64}, 10000.0f, 0.0f));
            EXPECT_EQ(numor.counts.Frame(8)[63], static_cast<float>(r8.frames[8].counts[63]));
            for (std::size_t bank = 0; bank < 9; ++bank)
                EXPECT_FLOAT_EQ(numor.tmc_ang.Frame(bank)[frame_angle], -20.25f + 15 * static_cast<float>(bank));
        }
    double total = 0;
    for (const Numor_Frame& frame : r8.frames) total += static_cast<double>(std::accumulate(frame.counts.begin(), frame.counts.end(), 0ll));
    r8.more_reals = {25000, 4321, total, -19500};  // by its total a group
    const auto grouped = Read<Powder_Numor_Type>(r8.Text(), "R8");
    EXPECT_EQ(std::tuple(grouped.time, grouped.conditions[0], grouped.tmc_ang.Frame(0)[frame_angle], grouped.scans[0]),
              std::tuple(25.0f, 0.0f, -19.5f, -20.25f));

    // R3B without a step in its scan, and without counts.
    Numor_Text r3b = Some_Run("R3B");
    r3b.F(37) = 0;
    EXPECT_FLOAT_EQ(Read<Powder_Numor_Type>(r3b.Text(), "R3B").scans[1], 0.2f);
    r3b = Numor_Text::Of("R3B", {{.counts = {}}});
    const auto none = Read<Powder_Numor_Type>(r3b.Text(), "R3B");
    EXPECT_EQ(std::tuple(none.nbdata, none.nframes, none.counts.All().size()), std::tuple(0, 1, std::size_t{0}));

    // Angles of frames of which no group tells are those of the scan.
    Numor_Text r3a = Some_Run("R3A");
    r3a.groups = Numor_Groups::none;
    for (const bool one_block : {true, false}) {
        r3a.one_block = one_block;
        const auto numor = Read<Powder_Numor_Type>(r3a.Text(), "R3A");
        for (std::size_t i = 0; i < 5; ++i) EXPECT_FLOAT_EQ(numor.tmc_ang.Frame(i)[frame_angle], -20.25f + 0.125f * static_cast<float>(i));
    }

    // A second F block of the header is no group of the first frame.
    Numor_Text r6 = Some_Run("R6");
    r6.groups = Numor_Groups::none, r6.frame_markers = true;
    r6.more_reals = {1000, 2000, 3000, 4000};
    EXPECT_EQ(Read<SXTAL_Numor_Type>(r6.Text(), "R6").tmc_ang.Frame(0)[frame_time], 0);

    // Texts shorter than 80 characters hold no kind of scan; letters may be those of Latin-1. The name has four characters.
    const std::string text = Replace_All(Replace_All(Some_Run("R3A").Text(), "powder", "\xE9tude "), "R3A user", "R3AXuser");
    const auto named = Read<Powder_Numor_Type>(text, "R3A");
    EXPECT_EQ(named.title + '|' + named.instrm, "\xC3\xA9tude  at 300 K|R3AX");
    const auto shorter = Read<Powder_Numor_Type>(Replace_All(text, "      80       1", "      40       1"), "R3A");
    EXPECT_EQ(shorter.title + '|' + shorter.scantype, "\xC3\xA9tude  at 300 K|");
}

TEST(Numors, Selected_Frames_Are_Those_Of_The_Whole_Run) {
    for (const bool one_block : {true, false})
        for (const Numor_Groups groups : {Numor_Groups::own_reals, Numor_Groups::own_integers}) {
            Numor_Text run = Some_Run("R18");
            run.groups = groups;
            run.one_block = one_block;
            run.frame_markers = true;
            SXTAL_Numor_Type numor;
            const Status status = Read_Numor_Text(run.Text(), "run", "R18", numor, Frame_Selection{3, 6});
            ASSERT_TRUE(status.ok()) << status.message;
            EXPECT_EQ(numor.nframes, 4);
            if (one_block)
                EXPECT_EQ(numor.counts.Frame(0)[5], static_cast<float>(run.frames[2].counts[5]));
            else
                Expect_Frames(numor, run.frames, 2);
        }
}

// Ways to spoil a run of an instrument, and what is told of it then.
TEST(Numors, Faults) {
    using Spoil = std::function<std::string(Numor_Text)>;
    const auto bad = [](char letter) { return std::string(" A bad Block ") + letter + "-Type has been found"; };
    const std::string r3a = "Counts problems in Numor format for R3A Instrument", group = " Problem reading Time, Monitor, Counts, Angles ";
    const std::string counts = " Problem reading Counts in ", of_numor = counts + "Numor: 123456",
                      bank = " Problem reading Counts for Detector ";
    const std::string lines = " Problems trying to read the Numor for ", point = "This numor was made using Point detector in the ";
    const auto edited = [](auto change) {
        return [change](const R& run) {
            std::string text = run.Text();
            change(text);
            return text;
        };
    };
    const auto changed = [](auto change) { return [change](R run) { return change(run), run.Text(); }; };
    const auto is = [&](const std::string& by) { return edited([by](std::string& text) { text = by; }); };
    const auto replaced = [&](const std::string& part, const std::string& by) {
        return edited([=](std::string& text) { text = Replace_All(text, part, by); });
    };
    const auto letters = [&](char letter, std::size_t n) { return replaced(std::string(80, letter), std::string(n, letter)); };
    const auto last_value = [&](const char* value) {
        return edited([value](std::string& text) { text.replace(text.find_last_not_of(" \n") - 7, 8, value); });
    };
    const auto word = [&](std::size_t number, int value) { return changed([=](R& run) { run.I(number) = value; }); };
    // The time of the first frame, 30 s.
    const Spoil bad_group = edited([](std::string& text) { text.replace(text.rfind("  3.0000000"), 16, std::string(16, '*')); });
    const Spoil half = edited([](std::string& text) { text.resize(text.size() * 7 / 10); });
    const Spoil no_integers = edited([](std::string& text) { text.resize(text.find("IIII")); });
    const Spoil four_banks = changed([](R& run) { run.frames.resize(4); });
    const Spoil negative = last_value("      -1"), stars = last_value("********");
    const Spoil no_markers = [&](R run) { return run.frame_markers = true, letters('V', 9)(run); };
    const Spoil long_markers = [&](R run) { return run.counts_letter = 'J', letters('J', 81)(run); };
    const std::string r_marker(80, 'R'), a_marker(80, 'A');
    const struct {
        const char* instrument;
        std::vector<Spoil> spoils;
        std::string message;
    } faults[] = {
        {"R3A", {letters('R', 9), is(r_marker + "\n"), is(a_marker + "\n      80       1\nlabel\nR3A\n")}, bad('R')},
        {"R3A", {letters('A', 9)}, bad('A')},
        {"R3A", {letters('I', 9), no_integers}, bad('I')},
        {"R3A", {letters('F', 9)}, bad('F')},
        {"R3B", {letters('S', 9)}, bad('S')},
        {"R6", {no_markers}, bad('V')},
        {"R3B", {long_markers}, bad('J')},
        {"R3A", {is(r_marker + "\n  123456       2\none\n")}, "  Impossible to read a line for this block!"},
        {"R3A", {replaced("      80       1", "      80       3")}, " Impossible to read a line for this block!"},
        {"R3A", {is("")}, lines + "R3A Instrument in file run"},
        {"R18_HB", {is("no run at all\n1 2 3\n")}, lines + "R18_HB Instrument in file run"},
        {"R3A", {is(Some_Run("R3B").Text())}, "This numor does not correspond with R3A Format"},
        {"R18_HB", {is(Some_Run("R17").Text())}, "This numor does not correspond with R18_HB Format"},
        {"R3A", {word(7, 99999999), word(7, 6), word(7, 0), word(7, -5), word(24, 2147483647), word(24, -2147483647)}, r3a},
        {"R3A", {stars, negative, half}, r3a},
        {"R3B", {half, stars, word(24, 99999999)}, of_numor},
        {"R3B", {bad_group}, group + "parameters in Numor: 123456"},
        {"R22", {negative}, of_numor},
        {"R5B", {stars}, counts + "Frame: 4"},
        {"R5B", {word(7, 99999999)}, counts + "Frame: 5"},
        {"R5B", {half}, counts + "Frame: 3"},
        {"R5B", {bad_group}, group + "parameters in Frame: 1"},
        {"R8", {stars}, bank + "9 for R8 Instrument"},
        {"R8", {four_banks}, bank + "5 for R8 Instrument"},
        {"R6", {word(7, 99999999)}, counts + "Frame: 7"},
        {"R6", {bad_group}, group + "parameters in Frame: 1"},
        {"R6", {negative}, counts + "Frame: 6"},
        {"R11", {word(24, 1)}, point + "R11 Instrument"},
        {"R17", {word(24, 1)}, point + "R17 Instrument"},
    };
    for (const auto& [instrument, spoils, message] : faults)
        for (const Spoil& spoil : spoils) {
            const std::string text = spoil(Some_Run(instrument));
            Powder_Numor_Type powder;
            SXTAL_Numor_Type crystal;
            const Status status = Is_Powder_Numor_Instrument(instrument) ? Read_Numor_Text(text, "run", instrument, powder)
                                                                         : Read_Numor_Text(text, "run", instrument, crystal);
            EXPECT_TRUE(status.failed && status.message == message) << status.message << '\n' << message << '\n' << &spoil - spoils.data();
        }
    // What could be read stays: here the four whole frames in front of the fault.
    Powder_Numor_Type numor;
    EXPECT_TRUE(Read_Numor_Text(stars(Some_Run("R5B")), "run", "R5B", numor).failed);
    EXPECT_EQ(std::tuple(numor.numor, numor.nframes, numor.counts.frames()), std::tuple(123456, 3, std::size_t{3}));
    SXTAL_Numor_Type crystal;
    for (const Frame_Selection wrong : {Frame_Selection{0, 1}, {3, 2}, {1, 7}, {-1, 99999999}})
        EXPECT_EQ(Read_Numor_Text(Some_Run("R6").Text(), "run", "R6", crystal, wrong).message, " Invalid frames selection.");
    EXPECT_EQ(Read_Numor_Text("", "run", "R6", numor).message, " Not Implemented for the Powder Instrument name: R6");
    EXPECT_EQ(Read_Numor_Text("", "run", " r3a", crystal).message, " Not Implemented for the SXTAL Instrument name: R3A");
}

TEST(Numors, Files) {
    const std::string file = ::testing::TempDir() + "vantrelo_numor_123456";
    const auto write = [&](const std::string& text) { std::ofstream(file, std::ios::binary) << text; };
    Powder_Numor_Type numor;
    SXTAL_Numor_Type crystal;
    const std::string compressed = " Numor file is compressed. Please uncompress the numor before to use the program ";
    EXPECT_EQ(Read_Numor("/data/123456.Z", "R3A", numor).message, compressed);
    EXPECT_EQ(Read_Numor("/data/123456.Z ", "R6", crystal).message, compressed);
    EXPECT_EQ(Read_Numor(file + "x", "R22", numor).message, " Problems trying to read the Numor for R22 Instrument in file " + file + "x");

    Numor_Text run = Some_Run("R6");
    run.frame_markers = true;
    write(run.Text());
    ASSERT_TRUE(Read_Numor(file, "R6", crystal).ok());
    Expect_Frames(crystal, run.frames);
    int headers = 0, frames = 0;
    EXPECT_TRUE(Read_Frames_Index(file, headers, frames).ok());
    const std::string text = run.Text(), head = text.substr(0, text.find("VVVV"));
    EXPECT_EQ(std::pair(headers, frames), std::pair(static_cast<int>(std::count(head.begin(), head.end(), '\n')), 6));
    write(Some_Run("R6").Text());
    EXPECT_EQ(Read_Frames_Index(file, headers, frames).message, file + " has no frame.");
    write(std::string(80, 'V') + '\n');
    EXPECT_EQ(Read_Frames_Index(file, headers, frames).message, file + " has no header.");
    std::filesystem::remove(file);
    EXPECT_EQ(Read_Frames_Index(file, headers, frames).message, file + " does not exist.");
}

TEST(Numors, Are_Known_By_Their_Beginning) {
    const std::string text = Some_Run("R18").Text();
    EXPECT_TRUE(Looks_Like_Numor(text) && Looks_Like_Numor(text.substr(0, 90)));
    EXPECT_EQ(Instrument_Of_Text(text) + Instrument_Of_Text(text.substr(0, 700)), "R18R18");
    for (const std::string other : {"", "RRR\n 1 2\n", "RRRRRRRRRRRR\nno number\n", "AAAAAAAAAAAA\n      80       1\nR3A\n"})
        EXPECT_TRUE(!Looks_Like_Numor(other) && Instrument_Of_Text(other).empty()) << other;
}

TEST(Numors, Frames_Unfold_Into_Matrices) {
    std::vector<float> counts(12);
    for (std::size_t i = 0; i < counts.size(); ++i) counts[i] = static_cast<float>(i) + 0.4f;
    Count_Matrix matrix;
    ASSERT_TRUE(Get_Counts(counts, " R18_HB", 4, 3, matrix).ok());
    for (int i = 0; i < 12; ++i) EXPECT_EQ(matrix.At(i % 3, i / 3), i);
    ASSERT_TRUE(Get_Counts(counts, "r6", 4, 3, matrix).ok());
    for (int i = 0; i < 12; ++i) EXPECT_EQ(matrix.At(i / 4, i % 4), i);
    ASSERT_TRUE(Get_Counts(counts, "R1106", 99, 99, matrix).ok());
    EXPECT_EQ(std::tuple(matrix.rows, matrix.columns, matrix.At(5, 1)), std::tuple(6, 2, 11));
    counts.resize(9);
    counts[3] = 3e9f;
    ASSERT_TRUE(Get_Counts(counts, "r11", 0, 0, matrix).ok());
    EXPECT_EQ(std::tuple(matrix.rows, matrix.columns, matrix.At(1, 0)), std::tuple(3, 3, 2147483647));

    const auto refused = [&](const char* machine, int nx, int ny) { return Get_Counts(counts, machine, nx, ny, matrix).message; };
    EXPECT_EQ(refused("R18_VB", 3, 3), "Can't read R18 Vertical Banana Detector data!");
    for (const char* machine : {"r3a", "", "r19", "r6new", "r6123", "11"})
        EXPECT_EQ(refused(machine, 3, 3), "Error in Get_Counts: Unknown machine!") << machine;
    for (const auto& [nx, ny] : {std::pair(3, 4), {2147483647, 2147483647}}) EXPECT_TRUE(Contains(refused("r18", nx, ny), "9 counts"));
    for (const auto& [nx, ny] : {std::pair(0, 3), {3, 0}, {-3, -3}}) EXPECT_EQ(refused("r18", nx, ny), "Pixels by Frame is zero!!!");
    EXPECT_TRUE(Contains(refused("r11_99", 3, 3), "27 x 0"));  // no detector has more lines
    counts.clear();
    EXPECT_EQ(refused("r6", 3, 3), "Pixels by Frame is zero!!!");
    EXPECT_EQ(matrix.At(1, 0), 2147483647) << "it stays";

    // More columns than are unfolded at a time.
    counts.resize(37 * 41);
    for (std::size_t i = 0; i < counts.size(); ++i) counts[i] = static_cast<float>(i);
    ASSERT_TRUE(Get_Counts(counts, "r17", 41, 37, matrix).ok());
    for (int i = 0; i < 37 * 41; ++i) ASSERT_EQ(matrix.At(i % 37, i / 37), i);
}

TEST(Numors, Listing) {
    Numor_Text run = Some_Run("R3A");
    run.F(46) = 299.5, run.F(47) = 298.5, run.F(48) = 297.5, run.F(50) = 5;
    const std::vector<std::string> lines = Write_Numor_Info(Read<Powder_Numor_Type>(run.Text(), "R3A"));
    const std::string rule = std::string(80, '-') + '\n', head = " ---  Header Information about the NUMOR: 123456 of instrument R3A\n";
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    EXPECT_EQ(text, rule + head + rule + R"( HEADER:            user            26-Nov-05 10:20:
 INTRUMENT:         R3A
 TITLE:             powder at 300 K
 SCAN_TYPE:         2theta
 SCAN_START:              -20.2500
 SCAN_STEP :                0.1250
 MONITOR:               10014.0000
 TIME(seg):               160.0000
 Temp-SETPNT:             299.5000 Kelvin
 Temp-REGUL.:             298.5000 Kelvin
 Temp-SAMPLE:             297.5000 Kelvin
 Magnetic Field:            5.0000
)");
    Numor_Text crystal = Some_Run("R6");
    crystal.F(1) = -3, crystal.F(3) = 3e20;
    const std::vector<std::string> more = Write_Numor_Info(Read<SXTAL_Numor_Type>(crystal.Text(), "R6"));
    ASSERT_EQ(more.size(), lines.size() + 10);
    EXPECT_EQ(more[1], " ---  Information about the NUMOR: 123456 of instrument R6");
    EXPECT_EQ(more[20], " HKL(Min.):                -3.0000          0.0000    3.000000E+20");
    EXPECT_EQ(more[24], " DELTA-hkl:                 0.0000          0.0000          0.0000");
}

// What stands in front of the counts, told from them and from one another by their numbers.
TEST(Numors, Groups_Of_Every_Kind_Are_Told_From_Counts) {
    using Integers = std::vector<int>;
    const struct {
        std::vector<Integers> blocks;
        float monitor, total, angle;  // of frame 2; monitor -1: refused
    } cases[] = {
        {{{60000, 900, 10, 11000}, {1, 2, 3, 4}, {60000, 901, 26, 11500}, {5, 6, 7, 8}}, 901, 26, 11.5f},  // as many cells as values
        {{{60000, 900, 11000}, {1, 2, 3, 4}, {60000, 901, 11500}, {5, 6, 7, 8}}, 901, 26, 11.5f},          // no total
        {{{60000, 900, 10}, {1, 2, 3, 4}, {60000, 901, 26}, {5, 6, 7, 8}}, 901, 26, 10.5f},                // no angle
        {{{60000, 900, 0}, {1, 2, 3, 4}, {60000, 901, 27}, {5, 6, 7, 8}}, 901, 27, 10.5f},                 // a total of another count
        {{{60000, 900, 0}, {1, 2, 3, 4}, {60000, 901, 900000}, {5, 6, 7, 8}}, 901, 900000, 10.5f},         // 900 degrees
        {{{900, 60000, 11000, 1, 2, 3, 4, 901, 60000, 11500, 5, 6, 7, 8}}, 901, 26, 11.5f},                // among the counts
        {{{1, 2, 3, 4, 5, 6, 7, 8}}, 0, 26, 10.5f},                                                        // none
        {{{1, 2, 3, 4, 5, 6, 7, 8, 9}}, -1, 0, 0},
        {{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}}, -1, 0, 0},
    };
    Numor_Text header = Numor_Text::Of("R5B", {});
    header.I(5) = 1, header.I(7) = 2, header.I(24) = 4;
    header.F(36) = 10, header.F(37) = 0.5;
    for (const auto& c : cases) {
        std::string text = header.Text();
        for (const Integers& block : c.blocks) {
            text += std::string(80, 'I') + '\n' + Eight(static_cast<int>(block.size())) + Eight(0) + '\n';
            for (std::size_t i = 0; i < block.size(); ++i) text += Eight(block[i]) + (i % 10 == 9 || i + 1 == block.size() ? "\n" : "");
        }
        Powder_Numor_Type numor;
        const Status status = Read_Numor_Text(text, "run", "R5B", numor);
        const std::string what = std::to_string(c.blocks[0].size()) + " and " + std::to_string(c.blocks.back().back());
        ASSERT_EQ(status.failed, c.monitor < 0) << what << status.message;
        if (status.failed) continue;
        const auto told = numor.tmc_ang.Frame(1);
        EXPECT_EQ(std::tuple(told[frame_monitor], told[frame_total], told[frame_angle]), std::tuple(c.monitor, c.total, c.angle)) << what;
        EXPECT_EQ(numor.counts.Frame(1)[3], 8) << what;
    }
}

}  // namespace
}  // namespace vntl
