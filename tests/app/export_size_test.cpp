// How large pictures in files are, in what style, and what they are called: the fields that follow one another, what is remembered, and
// pictures of many files at once.
#include <algorithm>
#include <cmath>

#include "app/testing.hpp"

namespace vntl {
namespace {

class Export_Size : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        for (const char* name : {"rising.xye", "falling.xye"}) fs::copy_file(Pattern("rising.xye"), directory / name);
    }
    Run_Result Do(const std::string& statements, int status = 0) {
        std::string text = "open rising.xye\n" + statements + '\n';
        std::replace(text.begin(), text.end(), ';', '\n');
        Run_Result run = Script(text);
        EXPECT_EQ(run.status, status) << statements << '\n' << run.errors;
        return run;
    }
    static std::string Choose(const std::string& button, const std::string& name) {
        return "command 40044;set \"" + button + "\" 1;files \"" + name + "\";press OK;";
    }
    std::string Saved(const std::string& name) const { return Text_Of(directory / name); }
    std::string Of_Shell(const std::string& line) const {
        if (std::system(("cd " + Quoted(directory) + " && " + line + " >shell.txt 2>&1").c_str()) != 0) return {};
        return Saved("shell.txt");
    }
};

// Bytes of a number in the order of the network, or of small computers.
unsigned Number_At(const std::string& bytes, std::size_t at, bool network) {
    unsigned value = 0;
    for (std::size_t k = 0; k < 4 && at + k < bytes.size(); ++k)
        value |= static_cast<unsigned>(static_cast<unsigned char>(bytes[at + k])) << 8 * (network ? 3 - k : k);
    return value;
}

TEST_F(Export_Size, MillimetresAndPixelsFollowOneAnother) {
    // What is done, and then width and height in millimetres, in pixels, and the dots an inch: 1 inch is 25.4 mm.
    const struct {
        const char* done;
        std::vector<std::string> fields;
    } cases[] = {{"", {"160.00", "106.67", "1890", "1260", "300"}},
                 {"set \"Width (mm)\" 80", {"80", "53.33", "945", "630", "300"}},
                 {"set \"Density (dpi)\" 600", {"80", "53.33", "1890", "1260", "600"}},
                 {"set \"Image width\" 600", {"25.40", "53.34", "600", "1260", "600"}},
                 {"set \"Density (dpi)\" 300", {"50.80", "106.68", "600", "1260", "300"}},
                 {"set \"Keep shape\" 0;set \"Width (mm)\" 127", {"127", "106.68", "1500", "1260", "300"}},
                 {"set \"Keep shape\" 1;set \"Height (mm)\" 213.36", {"254.00", "213.36", "3000", "2520", "300"}},
                 {"set \"Width (mm)\" nan", {"nan", "213.36", "3000", "2520", "300"}},
                 {"set \"Image height\" 1260", {"254.00", "106.68", "3000", "1260", "300"}}};
    std::string script = Choose("BMP, PCX or PNG", "a.png");
    for (const auto& one : cases) script += std::string(one.done) + (*one.done == '\0' ? "" : ";") + "print dialog;";
    const std::vector<Json> dialogs =
        Do(script + "set \"Width (mm)\" 8000;press OK;print dialog;set \"Height (mm)\" 0;press OK;print dialog;press Cancel", 1)
            .With("dialog");
    ASSERT_EQ(dialogs.size(), std::size(cases) + 2);
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        std::vector<std::string> fields;
        for (const char* label : {"Width (mm)", "Height (mm)", "Image width", "Image height", "Density (dpi)"})
            fields.push_back(Field_Value(dialogs[i], label));
        EXPECT_EQ(fields, cases[i].fields) << cases[i].done;
    }
    Run_Result refused;
    refused.lines.assign(dialogs.end() - 2, dialogs.end());
    EXPECT_EQ(refused.Marked(), (std::vector<std::vector<int>>{{4622}, {4623}})) << "too large a picture, and no height";
}

// Told by other programs, or by the heads of the files.
TEST_F(Export_Size, PagesAndImagesHaveTheirSizeOnPaper) {
    for (const char* name : {"a.png", "a.bmp", "a.svg", "a.pdf", "a.ps"})
        EXPECT_EQ(Run({"--export", name, "--size", "80x50.8MM", "--dpi", "254", "rising.xye"}).status, 0) << name;
    const std::string png = Saved("a.png"), bmp = Saved("a.bmp");
    const std::size_t density = png.find("pHYs");
    ASSERT_NE(density, std::string::npos);
    EXPECT_EQ(Number_At(png, 16, true), 800u);
    EXPECT_EQ(Number_At(png, 20, true), 508u);
    EXPECT_EQ(Number_At(png, density + 4, true), 10000u) << "dots a metre";
    EXPECT_EQ(png[density + 12], 1) << "of a metre";
    EXPECT_EQ(Number_At(bmp, 38, false), 10000u);
    EXPECT_NE(Saved("a.svg").find("width=\"226.77"), std::string::npos) << "80 mm are 226.77 points";
    EXPECT_NE(Saved("a.svg").find("height=\"144pt\""), std::string::npos);
    EXPECT_NE(Saved("a.pdf").find("/MediaBox [ 0 0 226.77"), std::string::npos) << Saved("a.pdf").substr(0, 600);
    EXPECT_NE(Saved("a.ps").find("%%BoundingBox: "), std::string::npos);
    const std::string told = Of_Shell("pdfinfo a.pdf");
    EXPECT_TRUE(told.empty() || told.find("226.77") != std::string::npos) << told;

    Run({"--export", "b.png", "--size", "300x200", "--dpi", "150", "rising.xye"});
    EXPECT_EQ(Number_At(Saved("b.png"), 16, true), 300u) << "pixels stay pixels";
    Run({"--export", "c.png", "--size", "25.4x25.4mm", "rising.xye"});
    EXPECT_EQ(Number_At(Saved("c.png"), 16, true), 300u) << "300 dots an inch";
    for (const std::vector<std::string>& wrong : {std::vector<std::string>{"--size", "0x5mm"},
                                                  {"--size", "5mm"},
                                                  {"--size", "1e3x2"},
                                                  {"--size", "-1x2mm"},
                                                  {"--dpi", "0"},
                                                  {"--dpi", "1.5"},
                                                  {"--dpi", "20000"},
                                                  {"--size", "nanx5mm"}}) {
        std::vector<std::string> arguments = {"--export", "d.png", "rising.xye"};
        arguments.insert(arguments.end(), wrong.begin(), wrong.end());
        EXPECT_EQ(Run(arguments).status, 2) << wrong[1];
    }
    EXPECT_EQ(Run({"--export", "d.png", "--size", "9000x9000mm", "rising.xye"}).status, 1) << "too large";
    EXPECT_FALSE(fs::exists(directory / "d.png"));
}

// Pixels of an image of 200 dots an inch beside what another program makes of the drawing of the same size: lines, markers and texts have
// the same size.
TEST_F(Export_Size, AnImageLooksLikeTheDrawingOfItsSize) {
    for (const char* name : {"a.bmp", "a.pdf"})
        EXPECT_EQ(Run({"--export", name, "--size", "127x88.9mm", "--dpi", "200", "rising.xye"}).status, 0);
    if (std::system("command -v pdftoppm >/dev/null 2>&1") != 0) GTEST_SKIP() << "pdftoppm is not there";
    Of_Shell("pdftoppm -r 200 -singlefile a.pdf a");
    constexpr std::size_t width = 1000, height = 700;
    const std::string theirs = Saved("a.ppm"), ours = Saved("a.bmp");
    ASSERT_TRUE(theirs.size() > 3 * width * height && ours.size() > 3 * width * height);
    double sum = 0;
    for (std::size_t y = 0; y < height; ++y)
        for (std::size_t k = 0; k < 3 * width; ++k) {
            const std::size_t part = k / 3 * 3 + 2 - k % 3;  // blue first, and the lowest line
            sum += std::abs(static_cast<int>(static_cast<unsigned char>(theirs[theirs.size() - 3 * width * (height - y) + k])) -
                            static_cast<int>(static_cast<unsigned char>(ours[ours.size() - 3 * width * (y + 1) + part])));
        }
    EXPECT_LT(sum / (3 * width * height), 2.5);
}

TEST_F(Export_Size, TheNextPictureIsAsTheLastOne) {
    fs::create_directories(directory / "home/.qxs");
    fs::create_directories(directory / "pictures");
    const std::string image = Choose("BMP, PCX or PNG", "pictures/a.png");
    Do(image + "set \"Width (mm)\" 90;set \"Density (dpi)\" 127;set Style Default;press OK;exit");
    EXPECT_EQ(Number_At(Saved("pictures/a.png"), 16, true), 450u);
    const auto fields_of = [&](const std::string& button) {
        const std::vector<Json> dialogs = Do(Choose(button, "b") + "print dialog;press Cancel").With("dialog");
        std::string fields;
        for (const char* label : {"Width (mm)", "Height (mm)", "Style"}) fields += Field_Value(dialogs.at(0), label) + ' ';
        return fields;
    };
    EXPECT_EQ(fields_of("BMP, PCX or PNG"), "90.00 60.00 Default ");
    EXPECT_EQ(fields_of("Portable Document Format (PDF)"), "90.00 60.00 Default ");
    EXPECT_NE(Saved("home/.qxs/vantrelo.desk").find("export_folder " + (directory / "pictures").string() + '\n'), std::string::npos);
    // What was cancelled is not remembered.
    Do("answer yes;" + image + "set \"Width (mm)\" 45;press Cancel;exit");
    EXPECT_EQ(fields_of("PostScript (PS)"), "90.00 60.00 Default ");
}

TEST_F(Export_Size, APictureOfEachFile) {
    fs::create_directories(directory / "more");
    fs::copy_file(Pattern("calculated.xys"), directory / "more/rising.xye");
    const Run_Result run =
        Run({"--export", "out/new/%n 100%%.bmp", "--each", "rising.xye", "missing.xye", "more/rising.xye", "falling.xye"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("missing.xye"), std::string::npos) << run.errors;
    EXPECT_EQ(run.errors.find("falling.xye"), std::string::npos) << run.errors;
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory / "out/new")) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"falling 100%.bmp", "rising 100%.bmp", "rising 100%_2.bmp"}));
    // Each is what the program makes of that file alone.
    for (const auto& [picture, file] : {std::pair{"rising 100%.bmp", "rising.xye"}, {"rising 100%_2.bmp", "more/rising.xye"}}) {
        Run({"--export", "alone.bmp", file});
        EXPECT_TRUE(Saved("alone.bmp") == Saved(std::string("out/new/") + picture)) << picture;
    }
    for (const std::vector<std::string>& wrong : {std::vector<std::string>{"--export", "one.bmp", "--each", "rising.xye", "falling.xye"},
                                                  {"--export", "%q.bmp", "--each", "rising.xye"},
                                                  {"--each", "rising.xye"},
                                                  {"--dpi", "300", "rising.xye"}})
        EXPECT_EQ(Run(wrong).status, 2) << wrong[1];
    const Run_Result ending = Run({"--export", "gif/%n.gif", "--each", "rising.xye", "falling.xye"});
    EXPECT_EQ(ending.status, 1);
    EXPECT_EQ(std::count(ending.errors.begin(), ending.errors.end(), '\n'), 1) << "told once: " << ending.errors;
    EXPECT_FALSE(fs::exists(directory / "gif"));
}

}  // namespace
}  // namespace vntl
