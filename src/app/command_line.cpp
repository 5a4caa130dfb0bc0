#include "app/command_line.hpp"

#include <CLI/CLI.hpp>
#include <sstream>

#include "app/crystal_listing.hpp"
#include "app/instrument_listing.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "patterns/read_pattern.hpp"
#include "session/configuration.hpp"
#include "session/desk/picture_names.hpp"

namespace vntl {

namespace {

// A double quote as first character and one as last become blanks, and the text is shifted left.
std::string Without_Quotes(std::string text) {
    if (!text.empty() && text.front() == '"') text.front() = ' ';
    if (!text.empty() && text.back() == '"') text.back() = ' ';
    return std::string(Trim(text));
}

bool Is_Size(const std::string& text) {
    int value = 0;
    return Parse_Integer(text, value) && !IOsFileExists(text);
}

// Arguments 2 and 3 are the size of the window when they are whole numbers and no such files exist. A second or third argument
// that is neither a number nor a file is an unreadable size.
void Take_Window_Size(Start_Options& line) {
    const std::size_t n = line.files.size();
    if (n < 2 || n > 3) return;
    bool any_size = false;
    for (std::size_t i = 1; i < n; ++i) {
        any_size |= Is_Size(line.files[i]);
        if (IOsFileExists(line.files[i])) return;
    }
    if (!any_size) return;
    line.width = line.files[1];
    if (n == 3) line.height = line.files[2];
    line.files.resize(1);
}

// "1200x800" or "160x100mm".
bool Take_Export_Size(Picture_Size& target, std::string size) {
    target.millimetres = size.size() > 2 && Equal_No_Case(std::string_view(size).substr(size.size() - 2), "mm");
    if (target.millimetres) size.resize(size.size() - 2);
    const std::size_t cross = size.find_first_of("xX");
    if (cross == std::string::npos) return false;
    const auto side = [&target](std::string_view text, double& value) {
        int pixels = 0;
        if (target.millimetres) return Parse_Real(Trim(text), value);
        if (!Parse_Integer(text, pixels)) return false;
        value = pixels;
        return true;
    };
    return side(std::string_view(size).substr(0, cross), target.width) && side(std::string_view(size).substr(cross + 1), target.height) &&
           target.width > 0 && target.height > 0;
}

// The size and density of exported pictures; what is wrong with their words, empty for nothing.
std::string Take_Export_Words(Start_Options& line, const std::string& size, const std::string& dots) {
    constexpr int usual_dots = 300, most_dots = 10000;
    Picture_Size& target = line.export_size;
    if (!size.empty() && !Take_Export_Size(target, size))
        return "--size takes two whole numbers, such as 1200x800, or two lengths, such as 160x100mm";
    if (target.millimetres) target.dots_per_inch = usual_dots;
    if (!dots.empty() && !(Parse_Integer(dots, target.dots_per_inch) && target.dots_per_inch >= 1 && target.dots_per_inch <= most_dots))
        return "--dpi takes a whole number from 1 to 10000";
    if (!line.each) return {};
    return Picture_Names(line.export_file).Check(line.files.size()).message;
}

std::optional<int> Format_Code(const std::string& name) {
    for (const Pattern_Format& format : Pattern_Formats())
        if (Equal_No_Case(format.mode, name)) return format.code;
    return {};
}

Start_Options Ending(int status, std::string text) {
    Start_Options line;
    line.exit_status = status;
    line.text = std::move(text);
    return line;
}

// What `list` puts into a text for standard output, or its refusal for standard error.
template <class What>
Start_Options Listing(Status (*list)(const What&, std::string&), const What& what) {
    std::string text;
    const Status status = list(what, text);
    return status.failed ? Ending(1, "vantrelo: " + std::string(Trim(status.message)) + '\n') : Ending(0, std::move(text));
}

}  // namespace

Start_Options Parse_Command_Line(int argc, const char* const* argv) {
    Start_Options line;
    std::string size, dots, format, group;
    std::vector<std::string> reflections, numor;
    Instrument_Request instrument;
    CLI::App parser("Vantrelo draws and compares powder diffraction patterns.", "vantrelo");
    parser.footer(
        "Forms: vantrelo [FILE [WIDTH [HEIGHT]]]\n"
        "       vantrelo FILE FILE...\n"
        "       vantrelo --export OUT [--size 1200x800] [--format NAME] FILE...\n"
        "       vantrelo --export out/%n.pdf --each [--size 160x100mm] [--dpi 300] FILE...\n"
        "       vantrelo --script SCRIPT|- [FILE...]\n"
        "       vantrelo --record SCRIPT [FILE...]\n"
        "       vantrelo --spacegroup SYMBOL\n"
        "       vantrelo --reflections \"A B C ALPHA BETA GAMMA\" SYMBOL WAVELENGTH TTHMAX\n"
        "       vantrelo --numor FILE [INSTRUMENT]\n"
        "       vantrelo --instrument FILE [--ub \"NINE NUMBERS\" [--wave WAVELENGTH]]");
    const Configuration identity;
    parser.set_version_flag("--version", identity.program_name + ' ' + identity.program_version + ' ' + identity.program_date);
    parser.add_option("--export", line.export_file, "Draw the patterns to this file (.png .svg .pdf .ps) and end")->option_text("OUT");
    parser.add_flag("--each", line.each, "A picture of each file: in OUT \"%n\" is its name, \"%e\" its extension, \"%%\" a percent sign");
    parser
        .add_option("--size", size, "Size of the exported picture in pixels, 1200x800 if not given, or in millimetres, such as 160x100mm")
        ->option_text("WxH[mm]");
    parser.add_option("--dpi", dots, "Dots an inch of an exported bit image, 300 for a size in millimetres if not given")->option_text("N");
    parser.add_option("--format", format, "Format of the exported files, instead of the recognised one")->option_text("NAME");
    parser.add_option("--script", line.script, "Run a session script, \"-\" from standard input, and end")->option_text("SCRIPT");
    parser.add_option("--record", line.record, "Write what the user does as a session script")->option_text("SCRIPT");
    parser.add_option("--style", line.style, "Style of the pictures: Default, Paper, Screen, Dark, or a settings file (.set)")
        ->option_text("NAME");
    parser.add_option("--spacegroup", group, "List a space group: number, Hermann-Mauguin or Hall symbol, and end")->option_text("SYMBOL");
    parser.add_option("--reflections", reflections, "List h k l, multiplicity, d and 2theta of a cell and a space group, and end")
        ->type_size(4)  // taken whatever they begin with: a Hall symbol may begin with a sign
        ->option_text("CELL SYMBOL WAVELENGTH TTHMAX");
    parser.add_option("--numor", numor, "List the header of a neutron run, and end")->expected(1, 2)->option_text("FILE [INSTRUMENT]");
    parser.add_option("--instrument", instrument.file, "List an instrument and its orientation, and end")->option_text("FILE");
    parser.add_option("--ub", instrument.ub, "Write this orientation matrix, row by row, into the instrument's file first")
        ->option_text("\"NINE NUMBERS\"");
    parser.add_option("--wave", instrument.wave, "Write this wavelength as well")->option_text("WAVELENGTH");
    parser.add_option("files", line.files, "Patterns to open")->option_text("FILE...");
    try {
        parser.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::ostringstream out, err;
        const bool failed = parser.exit(error, out, err) != 0;
        return failed ? Ending(2, "vantrelo: " + err.str()) : Ending(0, out.str());
    }
    if (parser.count("--spacegroup") > 0) return Listing(List_Group, group);
    if (parser.count("--reflections") > 0) return Listing(List_Reflections, reflections);
    if (parser.count("--numor") > 0) return Listing(List_Numor, numor);
    if (parser.count("--instrument") == 0 && (instrument.ub || instrument.wave))
        return Ending(2, "vantrelo: --ub and --wave belong to --instrument\n");
    if (instrument.wave && !instrument.ub) return Ending(2, "vantrelo: --wave belongs to --ub\n");
    if (parser.count("--instrument") > 0) return Listing(List_Instrument, instrument);
    for (std::string& file : line.files) file = Without_Quotes(std::move(file));
    const bool exporting = parser.count("--export") > 0;
    const bool scripted = parser.count("--script") > 0, recording = parser.count("--record") > 0;
    if (exporting && (line.export_file.empty() || line.files.empty()))
        return Ending(2, "vantrelo: --export needs a file to write and a pattern\n");
    if (exporting && (scripted || recording)) return Ending(2, "vantrelo: --export excludes --script and --record\n");
    if (recording && line.record.empty()) return Ending(2, "vantrelo: --record needs a file to write\n");
    if (parser.count("--style") > 0 && Trim(line.style).empty()) return Ending(2, "vantrelo: --style needs the name of a style\n");
    if (scripted && line.script.empty()) return Ending(2, "vantrelo: --script needs a file, or - for standard input\n");
    if (!exporting && (!size.empty() || !format.empty())) return Ending(2, "vantrelo: --size and --format belong to --export\n");
    if (!exporting && (!dots.empty() || line.each)) return Ending(2, "vantrelo: --dpi and --each belong to --export\n");
    if (const std::string wrong = Take_Export_Words(line, size, dots); !wrong.empty()) return Ending(2, "vantrelo: " + wrong + '\n');
    if (!format.empty() && !(line.format_code = Format_Code(format))) return Ending(2, "vantrelo: unknown format " + format + '\n');
    if (!exporting && !scripted && !recording) Take_Window_Size(line);
    return line;
}

}  // namespace vntl
