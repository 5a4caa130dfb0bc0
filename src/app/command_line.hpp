// The command line: what the program is asked to do at its start.
//
//   vantrelo [FILE [WIDTH [HEIGHT]]]
//   vantrelo FILE FILE...
//   vantrelo --export OUT [--size 1200x800] [--format NAME] FILE...
//   vantrelo --export out/%n.pdf --each [--size 160x100mm] [--dpi 300] FILE...
//   vantrelo --style NAME ...
//   vantrelo --script SCRIPT|- [FILE...]
//   vantrelo --record SCRIPT [FILE...]
//   vantrelo --spacegroup SYMBOL
//   vantrelo --reflections "A B C ALPHA BETA GAMMA" SYMBOL WAVELENGTH TTHMAX
//   vantrelo --numor FILE [INSTRUMENT]
//   vantrelo --instrument FILE [--ub "NINE NUMBERS" [--wave WAVELENGTH]]
//   vantrelo --help | --version
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "commands/file/export_picture.hpp"

namespace vntl {

struct Start_Options {
    std::vector<std::string> files;
    std::optional<std::string> width, height;  // as given: one that is no whole number falls back to the default
    std::string export_file;                   // not empty: draw the files and end
    bool each = false;                         // a picture of each file, called by `export_file` as by `Picture_Names`
    Picture_Size export_size;
    std::optional<int> format_code;
    std::string script;  // not empty: run a session script ("-" from standard input)
    std::string style;   // of the pictures, for this run; empty: the one that was chosen last
    std::string record;  // not empty: write what the user does to this session script

    std::optional<int> exit_status;  // the program ends at once with it; `text` is for standard output (0) or standard error
    std::string text;
};

Start_Options Parse_Command_Line(int argc, const char* const* argv);

}  // namespace vntl
