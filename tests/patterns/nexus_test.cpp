// NeXus: files made by the library from known numbers, a real one beside the XRDML file of the same scan, damaged ones.
#include "patterns/nexus/nexus.hpp"

#include <functional>
#include <random>
#include <thread>

#include "patterns/nexus/nexus_stream.hpp"
#include "patterns/nexus_file.hpp"
#include "patterns/reading.hpp"
#include "patterns/xrdml/xrdml.hpp"

namespace vntl::test {
namespace {

using Patterns = std::vector<Diffraction_Pattern_Type>;
using Reals = std::vector<float>;
using Change = std::function<void(Nexus_File&)>;

const std::vector<double> four = {16, 25, 36, 49}, angles = {10, 10.5, 11, 11.5};

// An entry with data of four points, and what else is put into them.
std::string File(const Change& data) {
    Nexus_File file;
    file.Group("entry", "NXentry").Group("entry/data", "NXdata").Text("entry/data", "signal", "I");
    data(file);
    return file.Bytes();
}

std::string Four_Points(
    const Change& more = [](Nexus_File&) {}, hid_t type = H5T_IEEE_F64LE, bool packed = false) {
    return File([&](Nexus_File& file) {
        file.Values("entry/data/I", four, {4}, "", type, packed).Values("entry/data/two_theta", angles, {4}, "deg");
        file.Text("entry/data", "axes", "two_theta");
        more(file);
    });
}

Patterns All(const std::string& bytes) {
    Patterns patterns;
    Read_Notes notes;
    const Status status = Read_Nexus(bytes, patterns, notes);
    EXPECT_TRUE(status.ok()) << status.message;
    EXPECT_FALSE(patterns.empty());
    if (patterns.empty()) patterns.resize(1);
    return patterns;
}
Diffraction_Pattern_Type One(const std::string& bytes) { return All(bytes).front(); }

std::string Refusal(const std::string& bytes) {
    Patterns patterns;
    Read_Notes notes;
    const Status status = Read_Nexus(bytes, patterns, notes);
    EXPECT_TRUE(status.failed && patterns.empty());
    return status.message;
}

TEST(Nexus, ARealFileIsTheScanOfItsXrdml) {
    const std::string bytes = Real_File("formats/samples/nexus_nxdata_reduced.nxs");
    const std::string other = Real_File("formats/samples/panalytical_xrdml16_phi_fixed.xrdml");
    if (bytes.empty() || other.empty()) GTEST_SKIP();
    ASSERT_TRUE(Is_Nexus(bytes.substr(0, 64)));
    const auto p = One(bytes);
    Diffraction_Pattern_Type scan;
    ASSERT_TRUE(Read_Xrdml(other, scan).ok());
    EXPECT_EQ(p.npts, 5027);
    EXPECT_EQ(p.y, scan.y);
    EXPECT_EQ(p.sigma, scan.y);
    ASSERT_EQ(p.x.size(), scan.x.size());
    for (std::size_t i = 0; i < p.x.size(); ++i) ASSERT_NEAR(p.x[i], scan.x[i], 2e-5);
    EXPECT_EQ(p.conv, (std::array<float, 5>{1.540598f, 1.544426f, 0.5f, 1.39225f, 0}));
    EXPECT_EQ(p.radiation, "xrays_cw");
    EXPECT_FLOAT_EQ(p.count_time, 39.27f);
    EXPECT_TRUE(p.constant_step);
    ASSERT_NE(p.facts, nullptr);
    for (const auto& [name, value] : {std::pair{"Anode", "Cu"}, {"Voltage (kV)", "45"}, {"Scan axis", "Gonio"}})
        EXPECT_TRUE(std::any_of(p.facts->begin(), p.facts->end(), [&, n = name, v = value](const Head_Fact& fact) {
            return fact.name == n && fact.value == v;
        })) << name;
}

TEST(Nexus, NumbersOfEveryType) {
    for (const hid_t type :
         {H5T_STD_I16BE, H5T_STD_I32LE, H5T_STD_I64LE, H5T_STD_U8LE, H5T_STD_U64BE, H5T_IEEE_F32BE, H5T_IEEE_F32LE, H5T_IEEE_F64BE})
        for (const bool packed : {false, true}) EXPECT_EQ(One(Four_Points([](Nexus_File&) {}, type, packed)).y, (Reals{16, 25, 36, 49}));
}

TEST(Nexus, UnitsAndNamesTellWhatXIs) {
    struct Row {
        const char *name, *units;
        std::vector<double> x;
        const char* scat_var;
        Reals read;
    };
    const Row rows[] = {
        {"tth", "degrees", angles, "", {10, 10.5f, 11, 11.5f}},
        {"radial_axis", "rad", {0.1, 0.2, 0.3, 0.4}, "", {5.729578f, 11.459156f, 17.188734f, 22.918312f}},
        {"q", "1/nm", {10, 20, 30, 40}, "q-space", {1, 2, 3, 4}},
        {"Q", "\xC3\x85^{-1}", {1, 2, 3, 4}, "q-space", {1, 2, 3, 4}},
        {"d", "nm", {0.1, 0.2, 0.3, 0.4}, "d-spacing", {1, 2, 3, 4}},
        {"tof", "s", {1e-3, 2e-3, 3e-3, 4e-3}, "TOF", {1000, 2000, 3000, 4000}},
        {"t", "microseconds", {1, 2, 3, 4}, "TOF", {1, 2, 3, 4}},
        {"t", "s", {1, 2, 3, 4}, "Time", {1, 2, 3, 4}},
        {"phi", "deg", angles, "Angle", {10, 10.5f, 11, 11.5f}},
        {"q", "", {1, 2, 3, 4}, "q-space", {1, 2, 3, 4}},
        {"edges", "deg", {10, 11, 12, 14, 16}, "", {10.5f, 11.5f, 13, 15}},
    };
    for (const Row& row : rows) {
        const Reading reading = Read_By(
            Read_Nexus, File([&](Nexus_File& file) {
                file.Values("entry/data/I", four, {4}).Values(std::string("entry/data/") + row.name, row.x, {row.x.size()}, row.units);
                file.Texts("entry/data", "axes", {row.name});
            }));
        const auto p = Only(reading);
        EXPECT_EQ(reading.notes.warnings.size(), *row.units == '\0' ? 1u : 0u) << row.name;  // guessed
        EXPECT_EQ(p.constant_step, row.x.size() == 4) << row.name;
        EXPECT_EQ(p.scat_var, row.scat_var) << row.name;
        for (std::size_t i = 0; i < 4; ++i) EXPECT_FLOAT_EQ(p.x[i], row.read[i]) << row.name << row.units;
        EXPECT_EQ(p.xmax, p.x.back());
    }
    const auto named = One(File([](Nexus_File& file) {
        file.Values("entry/data/I", four, {4}).Values("entry/data/x", {10, 20, 30, 40}, {4}).Text("entry/data", "axes", "x");
        file.Text("entry/data/x", "long_name", "Momentum (nm^-1)");
    }));
    EXPECT_EQ(std::pair(named.scat_var, named.xmax), std::pair(std::string("q-space"), 4.0f));
}

TEST(Nexus, ErrorsBecomeVariances) {
    for (const char* const name : {"I_errors", "errors", "I_uncertainties", "uncertainties", "spread"})
        EXPECT_EQ(One(Four_Points([&](Nexus_File& file) {
                      file.Values(std::string("entry/data/") + name, {1, 2, 3, 4}, {4}).Text("entry/data/I", "uncertainties", "spread");
                  })).sigma,
                  (Reals{1, 4, 9, 16}))
            << name;
    EXPECT_EQ(One(Four_Points([](Nexus_File& file) { file.Values("entry/data/errors", {1, 2}, {2}); })).sigma, (Reals{16, 25, 36, 49}));
    const auto rate =
        One(Four_Points([](Nexus_File& file) { file.Text("entry/data/I", "units", "counts/s").Values("entry/count_time", {2}, {}, "s"); }));
    EXPECT_TRUE(rate.per_second);
    EXPECT_EQ(rate.sigma, (Reals{8, 12.5f, 18, 24.5f}));
}

TEST(Nexus, WhatTheEntryTells) {
    // 12.39842 keV are 1 angstrom, 81.8042 meV that of neutrons (both from h, c and m of CODATA 2018).
    struct Row {
        const char *kind, *path, *units, *probe;
        double value;
        float wavelength;
        const char* radiation;
    };
    const Row rows[] = {
        {"NXmonochromator", "wavelength", "angstrom", "x-ray", 0.4, 0.4f, "xrays_cw"},
        {"NXmonochromator", "wavelength", "nm", "neutron", 0.15, 1.5f, "neutrons_cw"},
        {"NXmonochromator", "energy", "keV", "synchrotron x-ray", 24.79684, 0.5f, "xrays_cw"},
        {"NXbeam", "incident_energy", "eV", "x-ray", 12398.42, 1, "xrays_cw"},
        {"NXbeam", "energy", "", "x-ray", 12398.42, 1, "xrays_cw"},
        {"NXbeam", "incident_energy", "meV", "neutron", 81.8042, 1, "neutrons_cw"},
        {"NXsource", "energy", "GeV", "x-ray", 6, 0, "xrays_cw"},             // of the electrons
        {"NXmonochromator", "wavelength", "m", "x-ray", 0.4, 0, "xrays_cw"},  // which none has
    };
    for (const Row& row : rows) {
        const auto p = One(Four_Points([&](Nexus_File& file) {
            file.Group("entry/sample", "NXsample")
                .Words("entry/sample/name", "LaB6")
                .Values("entry/sample/temperature", {26.85}, {}, "degC");
            file.Group("entry/instrument", "NXinstrument").Group("entry/instrument/a", row.kind);
            file.Words("entry/instrument/a/probe", row.probe)
                .Values(std::string("entry/instrument/a/") + row.path, {row.value}, {1}, row.units);
        }));
        EXPECT_NEAR(p.conv[0], row.wavelength, 2e-6) << row.path << row.units;
        EXPECT_EQ(p.radiation, row.radiation) << row.path << row.units;
        EXPECT_EQ(p.title, "LaB6");
        EXPECT_FLOAT_EQ(p.TSample, 300);
    }
    const auto with_lines = [](const char* axis, const char* units) {
        return One(File([&](Nexus_File& file) {
            file.Values("entry/data/I", four, {4}).Values("entry/data/x", angles, {4}, units).Text("entry/data", "axes", "x");
            file.Values(std::string("entry/") + axis, {0.154}, {}, "nm");
        }));
    };
    EXPECT_FLOAT_EQ(with_lines("k_alpha_two", "deg").conv[1], 1.54f);
    EXPECT_EQ(with_lines("wavelength", "us").conv[0], 0);  // flights have many
}

TEST(Nexus, FramesArePatterns) {
    const std::vector<double> six = {1, 2, 3, 4, 5, 6}, turned = {1, 4, 2, 5, 3, 6}, x = {10, 11, 12};
    for (const bool x_first : {false, true}) {
        const auto frames = All(File([&](Nexus_File& file) {
            file.Values("entry/data/I", x_first ? turned : six, {x_first ? 3u : 2u, x_first ? 2u : 3u})
                .Values("entry/data/tth", x, {3}, "deg");
            file.Values("entry/data/temperature", {300, 310.5}, {2}, "K").Words("entry/title", "Heating");
            file.Texts("entry/data", "axes",
                       x_first ? std::vector<std::string>{"tth", "."} : std::vector<std::string>{"temperature", "tth"});
        }));
        ASSERT_EQ(frames.size(), 2u);
        EXPECT_EQ(frames[0].y, (Reals{1, 2, 3}));
        EXPECT_EQ(frames[1].y, (Reals{4, 5, 6}));
        EXPECT_EQ(frames[1].x, (Reals{10, 11, 12}));
        EXPECT_EQ(frames[1].bank, 2);
        if (x_first) continue;
        EXPECT_EQ(frames[1].title, "Heating, frame 2, temperature = 310.5 K");
        EXPECT_EQ(frames[1].TSample, 310.5f);
    }
    // One frame alone is a pattern; edges may differ from frame to frame; what is beyond the most is told.
    for (const bool x_first : {false, true}) {
        const auto p = One(File([&](Nexus_File& file) {
            file.Values("entry/data/I", {1, 2, 3}, {x_first ? 3u : 1u, x_first ? 1u : 3u}).Values("entry/data/a", x, {3}, "K");
            file.Values("entry/data/tth", x, {3}, "deg");
            file.Texts("entry/data", "axes", x_first ? std::vector<std::string>{"tth", "."} : std::vector<std::string>{".", "tth"});
        }));
        EXPECT_EQ(p.title + '|' + p.scat_var, "|");
    }
    const auto own_edges = All(File([&](Nexus_File& file) {
        file.Values("entry/data/I", {1, 2, 3, 4}, {2, 2})
            .Values("entry/data/tth", six, {2, 3}, "deg")
            .Texts("entry/data", "axes", {".", "tth"});
    }));
    EXPECT_EQ(own_edges[1].x, (Reals{4.5f, 5.5f}));
    Patterns many;
    Read_Notes notes;
    ASSERT_TRUE(Read_Nexus(File([&](Nexus_File& file) {
                               file.Values("entry/data/I", std::vector<double>(40020, 7), {2001, 20});
                               file.Values("entry/data/tth", std::vector<double>(40020, 8), {2001, 20}, "deg");
                               file.Texts("entry/data", "axes", {".", "tth"});
                           }),
                           many, notes)
                    .ok());
    EXPECT_EQ(many.size(), 2000u);
    EXPECT_EQ(notes.warnings, std::vector<std::string>{"Of 2001 frames the first 2000 were opened"});
}

TEST(Nexus, OlderFilesMarkTheDataThemselves) {
    for (const char* const axes : {"", "x", "[x]"}) {
        Nexus_File file;
        file.Group("run", "NXentry").Group("run/b", "NXdata").Values("run/b/counts", four, {4}).Number("run/b/counts", "signal", 1);
        file.Values("run/b/x", angles, {4}, "degree").Number("run/b/x", "axis", 1).Values("run/b/another", four, {4});
        if (*axes != '\0') file.Text("run/b/counts", "axes", axes);
        EXPECT_EQ(One(file.Bytes()).x, (Reals{10, 10.5f, 11, 11.5f})) << axes;
    }
    Nexus_File by_units;  // x is what tells units and is no error
    by_units.Group("run", "NXentry").Group("run/b", "NXdata").Values("run/b/I", four, {4}).Number("run/b/I", "signal", 1);
    by_units.Values("run/b/I_error", four, {4}, "counts").Values("run/b/x", angles, {4}, "degree");
    EXPECT_EQ(One(by_units.Bytes()).x, (Reals{10, 10.5f, 11, 11.5f}));
    Nexus_File spectra;  // each over edges of its own, named behind the numbers of the spectra
    spectra.Group("w", "NXentry").Group("w/workspace", "NXdata").Values("w/workspace/values", four, {2, 2});
    spectra.Number("w/workspace/values", "signal", 1).Text("w/workspace/values", "axes", "axis2,axis1");
    spectra.Values("w/workspace/axis1", {1, 2, 3}, {3}, "dSpacing").Values("w/workspace/axis2", {7, 8}, {2});
    const auto patterns = All(spectra.Bytes());
    ASSERT_EQ(patterns.size(), 2u);
    EXPECT_EQ(patterns[1].x, (Reals{1.5f, 2.5f}));
    EXPECT_EQ(patterns[1].scat_var, "d-spacing");
    EXPECT_EQ(patterns[1].title, "frame 2, axis2 = 8");
}

TEST(Nexus, DefaultLeadsToTheData) {
    for (const auto& [first, second] : {std::pair{"b", "deep/result"}, {"b", ""}, {"b/deep/result", ""}}) {
        Nexus_File file;
        file.Group("a", "NXentry")
            .Group("a/data", "NXdata")
            .Group("b", "NXentry")
            .Group("b/deep", "NXprocess")
            .Group("b/deep/result", "NXdata");
        file.Text("/", "default", first);
        if (*second != '\0') file.Text("b", "default", second);
        for (const std::string group : {"a/data", "b/deep/result"}) {
            file.Text(group, "signal", "I").Text(group, "axes", "tth").Values(group + "/tth", angles, {4}, "deg");
            file.Values(group + "/I", group == "a/data" ? angles : four, {4});
        }
        file.Words("a/title", "the other one").Words("b/title", "the result");
        EXPECT_EQ(One(file.Bytes()).y[0], 16) << first;
        EXPECT_EQ(One(file.Bytes()).title, "the result") << first;
    }
}

TEST(Nexus, WhatIsNoPatternIsRefused) {
    const auto with = [](const std::vector<hsize_t>& shape, const char* axes) {
        return File([&](Nexus_File& file) {
            file.Values("entry/data/I", std::vector<double>(8, 1), shape).Text("entry/data", "axes", axes);
            file.Values("entry/data/x", {1, 2}, {2}, "V");
        });
    };
    Nexus_File plain, elsewhere;
    plain.Group("numbers", "").Values("numbers/x", angles, {4});
    elsewhere.Group("entry", "NXentry").Elsewhere("entry/data", "/tmp/other.h5", "/entry/data");
    const std::string good = Four_Points();
    const std::pair<std::string, std::string> rows[] = {
        {plain.Bytes(), "This HDF5 file holds no NXdata, and so no pattern"},
        {elsewhere.Bytes(), "The data of this HDF5 file lie in another one, to which it has a link: open that"},
        {File([](Nexus_File&) {}), "An NXdata of this file tells no signal, and so no pattern"},
        {with({2, 2, 2}, "."), "The signal \"I\" of this file has 3 dimensions: patterns have one or two"},
        {with({2, 4}, "."), "The signal \"I\" of this file is an image without an axis of patterns"},
        {with({8}, "."), "The signal \"I\" of this file has no axis"},
        {with({4, 2}, "x"), "The axis \"x\" of the data, in \"V\", is none of a pattern"},
        {File([](Nexus_File& file) { file.Outside("entry/data/I", "/etc/passwd"); }), "The signal \"I\" of this file lies in another file"},
        {File([](Nexus_File& file) {
             file.Values("entry/data/I", four, {4}).Values("entry/data/x", four, {4}, "m").Text("entry/data", "axes", "x");
         }),
         "The axis \"x\" of the data, in \"m\", is none of a pattern"},
        {File([](Nexus_File& file) { file.Words("entry/data/I", "text"); }), "The signal \"I\" of this file holds no numbers"},
        // A promise of numbers that were never written, or that no file of this size can hold.
        {File([](Nexus_File& file) { file.Values("entry/data/I", {}, {50'000'000}, "", H5T_IEEE_F64LE); }),
         "The signal \"I\" of this file holds no numbers"},
        {File([](Nexus_File& file) {
             file.Values("entry/data/I", {}, {1 << 14, 1 << 13});
         }),
         "The signal \"I\" of this file is larger than 512 MB"},
        {good.substr(0, good.size() / 2), "This HDF5 file is cut or damaged"},
        {"no HDF5", "This is no NeXus file: the signature of HDF5 is missing"},
    };
    for (const auto& [bytes, message] : rows) EXPECT_EQ(Refusal(bytes), message);
    EXPECT_FALSE(Is_Nexus(good.substr(0, 7)));
    EXPECT_TRUE(Is_Nexus(std::string(512, 'u') + good));
    EXPECT_EQ(One(std::string(512, 'u') + good).y[3], 49);
}

// An answer is believed where its arrays have the lengths that it tells.
TEST(Nexus, AnswersThatAreNotWholeAreRefused) {
    using Records = std::vector<std::pair<std::string, std::string>>;
    const std::string four_reals(16, '\0'), three_reals(12, '\0');
    const auto told = [&](const Records& more, const std::string& end = "END") {
        Records records = {{"SIGNAL", "I\t\t"}, {"AXIS", "tth\tdeg\t"}, {"SHAPE", "2\t2\t2"}, {"Y", four_reals}, {"X", four_reals}};
        records.insert(records.end(), more.begin(), more.end());
        records.emplace_back(end, "");
        std::string stream;
        for (const auto& [name, content] : records) {
            const auto head = nexus_stream::Head_Of_Record(name, content.size());
            stream +=
                std::string(head.begin(), head.end()) + content + std::string(nexus_stream::Padded(content.size()) - content.size(), '\0');
        }
        return Read_By(Read_Nexus_Stream, stream).status.ok();
    };
    EXPECT_TRUE(told({{"ERRORS", four_reals}, {"VALUES", four_reals.substr(8)}, {"LATER", "of another version"}}));
    for (const auto& record : Records{{"ERRORS", three_reals},
                                      {"VALUES", three_reals},
                                      {"X", four_reals + four_reals},
                                      {"Y", three_reals},
                                      {"SHAPE", "2\t0\t2"},
                                      {"SHAPE", "99999999\t99999999\t2"}})
        EXPECT_FALSE(told({record})) << record.first;
    EXPECT_FALSE(told({}, "LATER"));
}

// Whatever the library makes of them: a sentence or a pattern, from several threads at once.
TEST(Nexus, DamagedFilesEndInASentence) {
    const std::string good = Four_Points([](Nexus_File& file) { file.Words("entry/title", "a title"); }, H5T_STD_I32LE, true);
    const auto damage = [&](unsigned seed) {
        std::mt19937 random(seed);
        for (int i = 0; i < 20; ++i) {
            std::string bytes = good;
            for (int k = 0; k < 6; ++k) bytes[8 + random() % (bytes.size() - 8)] = static_cast<char>(random());
            Patterns patterns;
            Read_Notes notes;
            const Status status = Read_Nexus(bytes, patterns, notes);
            EXPECT_TRUE(status.failed ? !status.message.empty() && status.message.size() <= 150 : !patterns.empty()) << seed << ' ' << i;
        }
    };
    std::thread first(damage, 1), second(damage, 2);
    first.join(), second.join();
}

}  // namespace
}  // namespace vntl::test
