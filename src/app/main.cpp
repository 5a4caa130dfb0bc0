#include <iostream>

#include "app/startup.hpp"

int main(int argc, char** argv) {
    const vntl::Command_Line line = vntl::Parse_Command_Line(argc, argv);
    if (line.exit_status) {
        (*line.exit_status == 0 ? std::cout : std::cerr) << line.text;
        return *line.exit_status;
    }
    int toolkit_argc = 1;  // the rest is not the toolkit's to read
    return vntl::Run_Program(line, toolkit_argc, argv);
}
