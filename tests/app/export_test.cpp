// Pictures in files and on paper through the real program: every format by its button, what is refused, what stays, and the pictures that
// other programs make of the files beside ours.
#include "app/testing.hpp"

#include <sys/stat.h>

#include <algorithm>
#include <cmath>

namespace vntl {
namespace {

const std::string overwrite = "The file exist,\nDo you want overwrite it?", blank_name = "Incorrect Filename ";

class Export : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        fs::copy_file(Pattern("rising.xye"), directory / "rising.xye");
    }

    // Statements with ';' between them, with a pattern open.
    Run_Result Do(const std::string& statements, int status = 0, const std::string& environment = {}) {
        std::string text = "open rising.xye\n" + statements + '\n';
        std::replace(text.begin(), text.end(), ';', '\n');
        Run_Result run = Script(text, {}, environment);
        EXPECT_EQ(run.status, status) << statements << '\n' << run.errors;
        return run;
    }
    // Boxes behind the one about preferences.
    static std::vector<std::string> Boxes(const Run_Result& run) {
        std::vector<std::string> boxes = run.Boxes();
        if (!boxes.empty()) boxes.erase(boxes.begin());
        return boxes;
    }
    // The way to the options dialog of a format.
    static std::string Choose(const std::string& button, const std::string& name) {
        return "command 40044;set \"" + button + "\" 1;files \"" + name + "\";press OK;";
    }
    std::string Saved(const std::string& name) const { return Text_Of(directory / name); }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(directory)) {
            const std::string name = entry.path().filename();
            if (name != "home" && name != "rising.xye" && name != "script.vns" && name != "out.txt" && name != "err.txt")
                names.push_back(name);
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    bool Has(const std::string& tool) const { return std::system(("command -v " + tool + " >/dev/null 2>&1").c_str()) == 0; }
    bool Shell(const std::string& line) const {
        return std::system(("cd " + Quoted(directory) + " && " + line + " >/dev/null 2>&1").c_str()) == 0;
    }
    void Keep(const std::string& name) const { std::ofstream(directory / name) << "of old"; }
};

struct Format {
    const char *button, *ending, *magic;
};
constexpr Format formats[] = {{"PostScript (PS)", ".ps", "%!PS-Adobe-3.0"},     {"Scalable Vector Graphics (SVG)", ".svg", "<?xml"},
                              {"BMP, PCX or PNG", ".png", "\x89PNG"},           {"Autocad (DXF)", ".dxf", "0\nSECTION"},
                              {"Computer Graphics Metafile (CGM)", ".cgm", ""}, {"Portable Document Format (PDF)", ".pdf", "%PDF"},
                              {"Windows Metafile (XMF, EMF)", ".emf", "\x01"}};

TEST_F(Export, EveryFormatByItsButtonAndOneMoreByTheNameOfAnImage) {
    std::string script = "os WIND;";
    for (const Format& format : formats) script += Choose(format.button, std::string("plot") + format.ending[1]) + "press OK;";
    for (const char* name : {"image.bmp", "image.PCX", "image.jpg"}) script += Choose("BMP, PCX or PNG", name) + "press OK;";
    script += Choose(formats[6].button, "old.wmf") + "press OK;";
    EXPECT_EQ(Boxes(Do(script)), std::vector<std::string>());
    for (const Format& format : formats) {
        const std::string text = Saved(std::string("plot") + format.ending[1] + format.ending);
        EXPECT_TRUE(text.size() > 1000 && text.starts_with(format.magic)) << format.ending << ' ' << text.size();
    }
    EXPECT_TRUE(Saved("image.bmp").starts_with("BM") && Saved("image.PCX").starts_with("\x0a\x05") &&
                Saved("image.jpg").starts_with("\xff\xd8"));
    EXPECT_TRUE(Saved("old.wmf").starts_with("\xd7\xcd\xc6\x9a"));
    EXPECT_EQ(Names().size(), 11u);
}

TEST_F(Export, TheClipboardTakesAMetafile) {
    const std::string metafile = std::string("os WIND;") + Choose(formats[6].button, "clip");
    EXPECT_EQ(Boxes(Do(metafile + "set Clipboard 1;set Format 2;press OK")), std::vector<std::string>());
    EXPECT_EQ(Names().size(), 0u) << "nothing but the clipboard";
    const Run_Result linux_run = Do("command 40044;print dialog;set \"Windows Metafile (XMF, EMF)\" 1", 1);
    EXPECT_NE(linux_run.errors.find("disabled"), std::string::npos) << linux_run.errors;
}

// Only paper and files of the menu bear it.
TEST_F(Export, TheStamp) {
    if (!Has("pdftotext")) GTEST_SKIP() << "pdftotext is not there";
    Do(Choose(formats[5].button, "a.pdf") +
       "press OK;export b.pdf;os WIND;command 40122;set File c;press OK;os LINU;command 40122;press OK");
    const std::string stamp = "Vantrelo-2006 Version: 0.50";
    ASSERT_TRUE(Shell("pdftotext a.pdf") && Shell("pdftotext b.pdf"));
    EXPECT_NE(Saved("a.txt").find(stamp), std::string::npos) << Saved("a.txt");
    EXPECT_EQ(Saved("b.txt").find("Vantrelo"), std::string::npos);
    EXPECT_TRUE(Saved("c.pdf").starts_with("%PDF"));
    if (!Has("gs")) GTEST_SKIP() << "ghostscript is not there";
    ASSERT_TRUE(Shell("gs -q -dBATCH -dNOPAUSE -dSAFER -sDEVICE=txtwrite -o p.txt filename.ps"));
    EXPECT_NE(Saved("p.txt").find("0.50"), std::string::npos) << Saved("p.txt");
}

TEST_F(Export, CancelledOrKeptAtEachStep) {
    Keep("old.ps");
    Keep("filename.ps");
    const std::string to_options = Choose("PostScript (PS)", "new.ps");
    for (const std::string& steps : {std::string("command 40044;press Cancel"), std::string("command 40044;files cancel;press OK"),
                                     to_options + "press Cancel", to_options + "close", to_options + "files cancel;press ...;press Cancel",
                                     std::string("command 40122;press Cancel"), std::string("os WIND;command 40122;press Cancel")})
        EXPECT_EQ(Boxes(Do(steps)), std::vector<std::string>()) << steps;
    for (const std::string& steps :
         {Choose("PostScript (PS)", "old.ps"), to_options + "set File old;press OK;press Cancel",
          to_options + "files old.ps;press ...;press Cancel", std::string("command 40122;press OK;press Cancel")})
        EXPECT_EQ(Boxes(Do("answer no;" + steps)), std::vector<std::string>{overwrite}) << steps;
    EXPECT_EQ(Names(), (std::vector<std::string>{"filename.ps", "old.ps"}));
    EXPECT_EQ(Saved("old.ps") + Saved("filename.ps"), "of oldof old");

    // Once is enough to say yes, for the name that was asked about.
    EXPECT_EQ(Boxes(Do("answer yes;" + Choose("PostScript (PS)", "old.ps") + "press OK")).size(), 1u);
    EXPECT_TRUE(Saved("old.ps").starts_with("%!PS"));
    EXPECT_EQ(Boxes(Do("answer yes;" + to_options + "files filename.ps;press ...;press OK")).size(), 1u);
    EXPECT_TRUE(Saved("filename.ps").starts_with("%!PS"));
    EXPECT_EQ(Names().size(), 2u);
}

TEST_F(Export, NamesAndNumbersThatAreRefused) {
    fs::create_directories(directory / "dir.png");
    const std::string image = Choose("BMP, PCX or PNG", "new.png");
    for (const std::string& steps :
         {image + "set File \"\";press OK", image + "set File \"  \";press OK", std::string("command 40122;set File \"\";press OK"),
          std::string("os WIND;command 40122;set File \" \";press OK")})
        EXPECT_EQ(Boxes(Do(steps)), std::vector<std::string>{blank_name}) << steps;
    const struct {
        const char *dialog, *set;
        int field;
    } cases[] = {{"BMP, PCX or PNG", "set File dir.png", 4601},
                 {"BMP, PCX or PNG", "set File dir.png/", 4601},
                 {"BMP, PCX or PNG", "set \"Image width\" 0", 4603},
                 {"BMP, PCX or PNG", "set \"Image height\" 100000", 4604},
                 {"BMP, PCX or PNG", "set \"Image width\" 30000;set \"Image height\" 30000", 4603},
                 {"BMP, PCX or PNG", "set \"Density (dpi)\" 0", 4611},
                 {"BMP, PCX or PNG", "set \"Quality (1-100)\" 101", 4612},
                 {"Scalable Vector Graphics (SVG)", "set \"Image height\" -5", 4604},
                 {"Scalable Vector Graphics (SVG)", "set \"Image width\" 1e3", 4603},
                 {"PostScript (PS)", "set \"Stroke frequency\" 1", 4606},
                 {"Autocad (DXF)", "set Width nan", 4603},
                 {"Autocad (DXF)", "set \"X Pos\" 1e20", 4613},
                 {"Computer Graphics Metafile (CGM)", "set \"Font names\" \"A, B, C\"", 4617},
                 {"Computer Graphics Metafile (CGM)", "set \"Font names\" \"A, , C, D\"", 4617}};
    std::string script;
    std::vector<std::vector<int>> marked;
    for (const auto& one : cases) {
        script += Choose(one.dialog, "new") + one.set + ";press OK;print dialog;press Cancel;";
        marked.push_back({one.field});
    }
    script +=
        "os WIND;command 40122;set Left 300;press OK;print dialog;set Left -1;press OK;print dialog;set Left 10;set Scale 0;press OK;"
        "print dialog;set Scale 100;set File dir.png;press OK;print dialog;press Cancel;command 40044;press Cancel";
    marked.insert(marked.end(), {{4710}, {4710}, {4715}, {4702}});
    std::string text = "open rising.xye\n" + script + '\n';
    std::replace(text.begin(), text.end(), ';', '\n');
    const Run_Result run = Script(text);
    EXPECT_EQ(run.Marked(), marked) << run.output;
    EXPECT_EQ(Boxes(run).size(), marked.size());
    EXPECT_EQ(Names(), std::vector<std::string>{"dir.png"});
}

TEST_F(Export, WhatCannotBeWrittenIsToldAndTheOldFileStays) {
    std::string read_only;
    for (const Format& format : formats) {
        Keep(std::string("old") + format.ending);
        ::chmod((directory / (std::string("old") + format.ending)).c_str(), 0444);
        read_only += "answer yes;" + Choose(format.button, std::string("old") + format.ending) + "press OK;";
    }
    const Run_Result run = Do("os WIND;" + read_only, 1);
    const std::vector<std::string> boxes = Boxes(run);
    ASSERT_EQ(boxes.size(), 2 * std::size(formats)) << run.output;
    for (std::size_t i = 0; i < std::size(formats); ++i) {
        const std::string name = std::string("old") + formats[i].ending;
        EXPECT_EQ(boxes[2 * i + 1], "The picture cannot be written: " + (directory / name).string());
        ::chmod((directory / name).c_str(), 0644);
    }
    // Files may not grow beyond two kilobytes, as on a disk that is full.
    const Run_Result none_left = Script(
        "open rising.xye\nos WIND\nanswer yes\ncommand 40044\nset \"BMP, PCX or PNG\" 1\nfiles old.png\n"
        "press OK\npress OK\ncommand 40122\nset File new\npress OK\ncommand 40044\nfiles nowhere/new\npress "
        "OK\npress OK\n",
        {}, "sh -c 'trap \"\" XFSZ; ulimit -f 4; exec \"$@\"' sh");
    EXPECT_EQ(none_left.status, 1);
    const std::vector<std::string> told = Boxes(none_left);
    ASSERT_EQ(told.size(), 4u) << none_left.output;
    EXPECT_EQ(told[1], "The picture cannot be written: " + (directory / "old.png").string());
    EXPECT_EQ(told[2], "The page cannot be written: " + (directory / "new.pdf").string());
    EXPECT_EQ(told[3], "The picture cannot be written: " + (directory / "nowhere/new.ps").string());
    for (const Format& format : formats) EXPECT_EQ(Saved(std::string("old") + format.ending), "of old") << format.ending;
    EXPECT_EQ(Names().size(), std::size(formats));
}

// What the options do is told by the files.
TEST_F(Export, OptionsReachTheFile) {
    const Run_Result run =
        Do(Choose("BMP, PCX or PNG", "a") + "set \"For&mat :\" PCX;set Colours 3;set \"Image width\" 301;set \"Image height\" 207;" +
           "set \"Density (dpi)\" 300;press OK;" + Choose("BMP, PCX or PNG", "b.png") + "set \"For&mat :\" JPEG;print dialog;press OK;" +
           Choose("BMP, PCX or PNG", "c.png") + "set File c.bmp;print dialog;set Colours 4;press OK;" + Choose("PostScript (PS)", "d") +
           "set \"Ctrl/D terminator\" 1;set \"Change colours\" 3;press OK;" + Choose("Scalable Vector Graphics (SVG)", "e") +
           "set \"Image width\" 400;set \"Image height\" 300;press OK;" + Choose("Portable Document Format (PDF)", "f") +
           "set \"Image width\" 400;set \"Image height\" 300;press OK");
    EXPECT_EQ(Names(), (std::vector<std::string>{"a.pcx", "b.jpg", "c.bmp", "d.ps", "e.svg", "f.pdf"})) << run.output;
    const std::string pcx = Saved("a.pcx");
    EXPECT_EQ(pcx.substr(8, 8), std::string("\x2c\x01\xce\x00\x2c\x01\x2c\x01", 8)) << "last column and line, dots an inch";
    EXPECT_EQ(pcx[65], 4) << "planes";
    EXPECT_EQ(Saved("c.bmp")[28], 1) << "bits a pixel";
    EXPECT_TRUE(Saved("d.ps").ends_with("%%EOF\n\x04"));
    EXPECT_EQ(Saved("d.ps").find(" rg\n"), std::string::npos) << "no colour is set";
    EXPECT_NE(Saved("e.svg").find("width=\"300pt\" height=\"225pt\""), std::string::npos) << Saved("e.svg").substr(0, 300);
    EXPECT_NE(Saved("f.pdf").find("/MediaBox [ 0 0 300 225 ]"), std::string::npos);
}

// --- beside other programs ------------------------------------------------------------------------------------------------------------

// Pixels of a file of 24 bits, the top row first, red, green and blue each: of a PPM, and of a BMP.
std::string Pixels_Of_Ppm(const std::string& text, int width, int height) {
    const std::size_t size = 3u * static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return text.size() < size ? std::string() : text.substr(text.size() - size);
}
std::string Pixels_Of_Bmp(const std::string& text, int width, int height) {
    std::string pixels;
    const std::size_t line = (3u * static_cast<std::size_t>(width) + 3) / 4 * 4,
                      start = text.size() - line * static_cast<std::size_t>(height);
    for (int y = height - 1; y >= 0; --y)
        for (int x = 0; x < width; ++x)
            for (const std::size_t part : {2u, 1u, 0u})
                pixels += text[start + static_cast<std::size_t>(y) * line + 3u * static_cast<std::size_t>(x) + part];
    return pixels;
}

// Every form of picture, as our pixels and as drawings that others turn into pixels. What is left is how edges are smoothed.
TEST_F(Export, WhatOtherProgramsMakeOfTheDrawings) {
    constexpr int width = 900, height = 600;
    const struct {
        const char *tool, *line;
    } others[] = {{"gs", "gs -q -dBATCH -dNOPAUSE -dSAFER -sDEVICE=ppmraw -dTextAlphaBits=4 -dGraphicsAlphaBits=4 -r96 -o %.ps.ppm %.ps"},
                  {"pdftoppm", "pdftoppm -r 96 -singlefile %.pdf %.pdf"},
                  {"rsvg-convert", "rsvg-convert -f pdf -o %.svg.pdf %.svg && pdftoppm -r 96 -singlefile %.svg.pdf %.svg"}};
    const char* const endings[] = {".ps.ppm", ".pdf.ppm", ".svg.ppm"};
    for (const char* form : {"40508", "40028", "40031", "40227", "40125"}) {
        std::string script = "pref title_multi \"%% \\\\(a} %%EOF <b>&amp\u00b5\u00c5\u03a8\";pref contour_title " + std::string(180, 'W') +
                             ";open rising.xye;open rising.xye;open rising.xye;command " + std::string(form) + ";resize 900 600;";
        for (const char* ending : {"bmp", "ps", "pdf", "svg"}) script += "export " + std::string(form) + '.' + ending + ';';
        Do(script);
        const std::string ours = Pixels_Of_Bmp(Saved(std::string(form) + ".bmp"), width, height);
        for (std::size_t i = 0; i < std::size(others); ++i) {
            if (!Has(others[i].tool) || (i == 2 && !Has("pdftoppm"))) continue;
            std::string line = others[i].line;
            for (std::size_t at; (at = line.find('%')) != std::string::npos;) line.replace(at, 1, form);
            ASSERT_TRUE(Shell(line)) << line;
            const std::string theirs = Pixels_Of_Ppm(Saved(std::string(form) + endings[i]), width, height);
            ASSERT_EQ(theirs.size(), ours.size()) << line;
            double sum = 0;
            for (std::size_t k = 0; k < ours.size(); ++k)
                sum += std::abs(static_cast<int>(static_cast<unsigned char>(ours[k])) -
                                static_cast<int>(static_cast<unsigned char>(theirs[k])));
            const double difference = sum / static_cast<double>(ours.size());
            RecordProperty(std::string("mean_difference_") + others[i].tool + '_' + form, std::to_string(difference));
            EXPECT_LT(difference, 2.5) << others[i].tool << ", form of command " << form;
        }
    }
    for (const auto& other : others)
        if (!Has(other.tool)) GTEST_SKIP() << other.tool << " is not there";
}

// --- paper ---------------------------------------------------------------------------------------------------------------------------

TEST_F(Export, PrintingByOperatingSystem) {
    const Run_Result unknown = Do("os UNKN;command 40122;" + Choose("PostScript (PS)", "export") + "press OK");
    EXPECT_EQ(Boxes(unknown), std::vector<std::string>{"Error detecting the Operating System"});
    EXPECT_TRUE(Saved("export.ps").starts_with("%!PS"));
    for (const std::string system : {"LINU", "MACO"}) {
        Do("os " + system + ";command 40122;print dialog;set \"Ctrl/D terminator\" 1;press OK");
        const std::string page = Saved("filename.ps");
        EXPECT_TRUE(page.starts_with("%!PS-Adobe-3.0") && page.ends_with('\x04')) << system;
        EXPECT_NE(page.find("%%DocumentMedia: 297x210mm 842 595"), std::string::npos)
            << "a sheet of paper, across: " << page.substr(0, 400);
        fs::remove(directory / "filename.ps");
    }
    const Run_Result paper = Do("os WIND;command 40122;print dialog;set Paper Letter;set Portrait 1;set Scale 50;set Centre 0;press OK");
    const Json fields = paper.With("dialog").at(0)["fields"];
    EXPECT_EQ(paper.With("dialog").at(0)["title"], "Page Setup");
    const std::string page = Saved("filename.pdf");
    const bool across = page.find("/MediaBox [0 0 612 792]") != std::string::npos || page.find("/MediaBox [0 0 612.") != std::string::npos;
    EXPECT_TRUE(across) << page.substr(0, 1500);
}

// A page of colours at 72 dpi: where its picture stands.
TEST_F(Export, PlaceOfThePictureOnThePage) {
    if (!Has("pdftoppm")) GTEST_SKIP() << "pdftoppm is not there";
    const struct {
        const char* set;
        int left, top, right, bottom;  // points, of what is not white: from the margins and the window of 800 x 469
    } cases[] = {{"", 28, 67, 814, 528},
                 {"set Scale 50;", 225, 182, 617, 413},
                 {"set Scale 50;set Centre 0;", 28, 28, 421, 259},
                 {"set Left 0;set Top 0;set Right 0;set Bottom 0;set Centre 0;", 0, 0, 842, 494},
                 {"set Scale 200;", 28, 28, 814, 567}};
    for (const auto& one : cases) {
        Do("resize 800 469;os WIND;answer yes;command 40122;" + std::string(one.set) + "press OK");
        ASSERT_TRUE(Shell("pdftoppm -r 72 -singlefile filename.pdf page"));
        fs::remove(directory / "filename.pdf");
        const std::string raster = Saved("page.ppm");
        const std::size_t start = raster.size() - 842u * 595u * 3u;
        ASSERT_TRUE(raster.starts_with("P6\n842 595")) << raster.substr(0, 20);
        int left = 842, right = 0, top = 595, bottom = 0;
        for (int y = 0; y < 595; ++y)
            for (int x = 0; x < 842; ++x)
                if (static_cast<unsigned char>(raster[start + 3u * static_cast<std::size_t>(y * 842 + x)]) < 250) {
                    left = std::min(left, x), right = std::max(right, x + 1), top = std::min(top, y), bottom = std::max(bottom, y + 1);
                }
        EXPECT_NEAR(left, one.left, 1) << one.set;
        EXPECT_NEAR(top, one.top, 1) << one.set;
        EXPECT_NEAR(right, one.right, 1) << one.set;
        EXPECT_NEAR(bottom, one.bottom, 1) << one.set;
    }
}

}  // namespace
}  // namespace vntl
