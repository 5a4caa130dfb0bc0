// Runs with pictures in files, against the counts that they were written from, whatever the memory has room for.
#include "instrument/frame_store.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "base/text.hpp"
#include "instrument/numor_text.hpp"

namespace vntl {
namespace {

namespace fs = std::filesystem;

constexpr int nx = 4, ny = 3;

int Count(int numor, int frame, int i) { return numor % 100 * 10000 + frame * 100 + i; }

Numor_Text Run_Of(const std::string& instrument, int numor, int nframes, int nbdata = nx * ny) {
    std::vector<Numor_Frame> frames(static_cast<std::size_t>(nframes));
    for (int f = 0; f < nframes; ++f) {
        Numor_Frame& frame = frames[static_cast<std::size_t>(f)];
        frame.angles = {10 + 0.1 * f, 1, 2, 3};
        for (int i = 0; i < nbdata; ++i) frame.counts.push_back(Count(numor, f + 1, i));
    }
    Numor_Text run = Numor_Text::Of(instrument, std::move(frames));
    run.numor = numor;
    return run;
}

Diffractometer_Type Instrument(const std::string& name, int np_horiz = nx, int np_vert = ny) {
    Diffractometer_Type instrument;
    instrument.name_inst = name;
    instrument.np_horiz = np_horiz, instrument.np_vert = np_vert;
    return instrument;
}

class Frame_Stores : public testing::Test {
protected:
    void SetUp() override { fs::create_directories(root); }
    void TearDown() override { fs::remove_all(root); }

    std::string Make(const std::string& name, const std::string& text) const {
        std::ofstream(root / name, std::ios::binary) << text;
        return root / name;
    }
    std::string Make(const Numor_Text& run) const { return Make(std::to_string(run.numor), run.Text()); }

    // Whether a frame has the counts that Run_Of wrote, column by column or row by row.
    static bool Is_Right(Frame_Store& store, int index, int frame, bool by_rows = false) {
        Count_Matrix counts;
        if (store.Frame(index, frame, counts).failed || counts.columns != store.nx(index) || counts.rows != store.ny(index)) return false;
        for (int row = 0; row < counts.rows; ++row)
            for (int column = 0; column < counts.columns; ++column) {
                const int i = by_rows ? row * counts.columns + column : column * counts.rows + row;
                if (counts.At(row, column) != Count(store.Run(index).numor, frame, i)) return false;
            }
        return true;
    }

    const fs::path root = fs::temp_directory_path() / ("frame_store_" + std::to_string(::getpid()));
};

TEST_F(Frame_Stores, UnfoldTheFramesOfEveryMachine) {
    struct Case {
        Diffractometer_Type current;
        const char *own, *machine;
        int columns, rows;
        bool by_rows;
    };
    const Case cases[] = {{Instrument("", 0, 0), "R6", "R6", 5, 5, true},       {Instrument("r11 ", 9, 9), "R11", "R11", 4, 4, true},
                          {Instrument("R11"), "R11", "R11", 4, 3, true},        {Instrument("R1102", 0, 0), "R11", "R1102", 6, 2, true},
                          {Instrument("R18_HB"), "R18", "R18_HB", 4, 3, false}, {Instrument("R3A"), "R18", "R18", 4, 3, false},
                          {Instrument("R6new", 0, 0), "R6", "R6", 5, 5, true}};
    Frame_Store store;
    for (int i = 0; i < static_cast<int>(std::size(cases)); ++i) {
        const Case& c = cases[i];
        const std::string file = Make(Run_Of(c.own, 123401 + i, 3, c.columns * c.rows));
        const Status status = store.Add(file, c.current);
        ASSERT_TRUE(status.ok()) << status.message;
        const int last = store.size();
        EXPECT_EQ(std::tuple(store.Machine(last), store.nx(last), store.ny(last), store.File(last)),
                  std::tuple(c.machine, c.columns, c.rows, file));
        for (const int frame : {1, 3}) EXPECT_TRUE(Is_Right(store, last, frame, c.by_rows)) << c.machine << ' ' << frame;
        EXPECT_TRUE(store.Run(last).nframes == 3 && store.Run(last).tmc_ang.frames() == 3u && store.Run(last).counts.frames() == 0u);
        EXPECT_EQ(store.Index_Of(123401 + i), last);
    }
    EXPECT_EQ(store.Index_Of(1), 0);
    const std::unique_ptr<Frame_Source> source = store.Source(4);
    Count_Matrix counts;
    ASSERT_TRUE(source->Frame(2, counts).ok());
    EXPECT_EQ(std::tuple(source->Run().numor, source->nx(), source->ny(), counts.At(1, 5)), std::tuple(123404, 6, 2, Count(4, 2, 11)));
}

TEST_F(Frame_Stores, GiveTheSameFramesWithLittleMemory) {
    constexpr std::size_t frame_bytes = nx * ny * sizeof(float);
    const int nframes[] = {4, 20, 1, 6};
    // Of all, of most, of less than one run, of less than a frame.
    for (const std::size_t most : {1000 * frame_bytes, 10 * frame_bytes + 5, 3 * frame_bytes, frame_bytes - 1, std::size_t{0}}) {
        Frame_Store store(most);
        for (int i = 0; i < 8; ++i) {
            Numor_Text run = Run_Of("R17", 100001 + i, nframes[i / 2]);
            run.one_block = i % 2 == 1, run.groups = run.one_block ? Numor_Groups::in_counts : Numor_Groups::own_reals;
            ASSERT_TRUE(store.Add(Make(run), Instrument("R17")).ok());
            EXPECT_LE(store.Bytes_Held(), most);
        }
        std::mt19937 dice(7);
        for (int step = 0; step < 200; ++step) {
            const int index = static_cast<int>(dice() % 8) + 1, frame = static_cast<int>(dice() % 20) % nframes[(index - 1) / 2] + 1;
            ASSERT_TRUE(Is_Right(store, index, frame)) << most << ": " << index << ' ' << frame;
            ASSERT_LE(store.Bytes_Held(), most);
        }
    }

    // Whose counts are held is told by files that are gone.
    Frame_Store store(10 * frame_bytes);
    for (int numor = 1; numor <= 3; ++numor) ASSERT_TRUE(store.Add(Make(Run_Of("R17", numor, 4)), Instrument("R17")).ok());
    EXPECT_EQ(store.Bytes_Held(), 8 * frame_bytes);
    fs::remove(root / "2");
    EXPECT_TRUE(Is_Right(store, 2, 1));  // so that the third is the one used longest ago
    EXPECT_TRUE(Is_Right(store, 1, 1));
    for (const char* numor : {"1", "3"}) fs::remove(root / numor);
    EXPECT_TRUE(Is_Right(store, 1, 4) && Is_Right(store, 2, 4));
    EXPECT_FALSE(Is_Right(store, 3, 1));

    ASSERT_TRUE(store.Add(Make(Run_Of("R17", 4, 20)), Instrument("R17")).ok());
    EXPECT_EQ(store.Bytes_Held(), 10 * frame_bytes);
    EXPECT_TRUE(Is_Right(store, 4, 12));
    fs::remove(root / "4");
    for (int frame = 1; frame <= 20; ++frame) EXPECT_EQ(Is_Right(store, 4, frame), frame >= 7 && frame <= 16) << frame;
}

TEST_F(Frame_Stores, TellOfFilesThatChanged) {
    Frame_Store store(0);
    const Numor_Text run = Run_Of("R18", 7, 4);
    const std::string file = Make(run), text = run.Text();
    ASSERT_TRUE(store.Add(file, Instrument("R18")).ok());
    std::string other = text;
    other[other.find_last_of("0123456789")] ^= 1;
    for (const std::string& changed :
         {Run_Of("R18", 7, 3).Text(), Run_Of("R18", 7, 5).Text(), other, text.substr(0, 2000), std::string()}) {
        Make("7", changed);
        Count_Matrix counts{.rows = 1, .columns = 1, .counts = {9}};
        EXPECT_EQ(store.Frame(1, 2, counts).message, "The file has changed since it was read: " + file);
        EXPECT_EQ(counts.At(0, 0), 9);
    }
    fs::remove(file);
    Count_Matrix counts;
    EXPECT_TRUE(Contains(store.Frame(1, 2, counts).message, file));
    Make("7", text);
    EXPECT_TRUE(Is_Right(store, 1, 4));
    for (const int frame : {0, 5, -1}) EXPECT_TRUE(Contains(store.Frame(1, frame, counts).message, "There is no frame"));
    for (const int index : {0, 2, -1}) EXPECT_TRUE(Contains(store.Frame(index, 1, counts).message, "There is no run"));
}

TEST_F(Frame_Stores, RefuseWhatIsNoRunWithPictures) {
    const auto told = [](int word, int value, const char* instrument = "R18") {
        Numor_Text run = Run_Of(instrument, 9, 4);
        run.I(static_cast<std::size_t>(word)) = value;
        return run.Text();
    };
    const std::string whole = Run_Of("R18", 9, 4).Text();
    std::string no_number = whole;
    no_number.replace(no_number.rfind("90301"), 5, "  NaN");
    const struct {
        std::string text;
        Diffractometer_Type current;
        std::string message;
    } cases[] = {{whole.substr(0, whole.size() - 90), Instrument("R18"), " Problem reading Counts in Frame: 4"},
                 {told(7, 100'000'000), Instrument("R18"), " Problem reading Counts in Frame: 5"},
                 {told(7, 0), Instrument("R18"), " Problem reading Counts in Frame: 1"},
                 {told(24, 1, "R11"), Instrument("R11"), "This numor was made using Point detector in the R11 Instrument"},
                 {no_number, Instrument("R18"), " Problem reading Counts in Frame: 3"},
                 {whole, Instrument("R18", 5, 3), "Error in Get_Counts: a frame holds 12 counts, and the detector has 3 x 5 pixels"},
                 {Run_Of("R6", 9, 2).Text(), Instrument("", 0, 0), "Pixels by Frame is zero!!!"},
                 {whole, Instrument("r18_vb"), "Can't read R18 Vertical Banana Detector data!"},
                 {whole, Instrument("R6"), "This numor does not correspond with R6 Format"},
                 {Run_Of("R22", 9, 1).Text(), Instrument("R22"), " Not Implemented for the SXTAL Instrument name: R22"},
                 {"", Instrument(""), "The file tells of no instrument: "},
                 {"\x1f\x9d", Instrument("R6"), "The compressed data break off: "}};
    Frame_Store store;
    ASSERT_TRUE(store.Add(Make(Run_Of("R18", 8, 2)), Instrument("R18")).ok());
    for (const auto& c : cases) {
        const std::string file = Make("9", c.text);
        const Status status = store.Add(file, c.current);
        EXPECT_TRUE(status.message.starts_with(c.message) && Contains(status.message, file)) << c.message << ": " << status.message;
        EXPECT_EQ(store.size(), 1);
    }
    EXPECT_TRUE(Contains(store.Add(root, Instrument("R18")).message, root.string()));
    EXPECT_TRUE(Is_Right(store, 1, 2));
    EXPECT_TRUE(Contains(store.Add(Make(Run_Of("R22", 9, 1)), Instrument("")).message, "R22"));
    EXPECT_EQ(store.size(), 1);
}

}  // namespace
}  // namespace vntl
