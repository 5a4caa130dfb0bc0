#include <algorithm>
#include <iostream>

#include "app/startup.hpp"
#include "base/process.hpp"

int main(int argc, char** argv) {
    vntl::Begin_Process();
    const vntl::Start_Options line = vntl::Parse_Command_Line(argc, argv);
    if (line.exit_status) {
        std::ostream& stream = *line.exit_status == 0 ? std::cout : std::cerr;
        return stream << line.text << std::flush ? *line.exit_status : std::max(*line.exit_status, 1);
    }
    int toolkit_argc = 1;  // the rest is not the toolkit's to read
    return vntl::Run_Program(line, toolkit_argc, argv);
}
