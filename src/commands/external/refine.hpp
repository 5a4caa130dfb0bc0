// Programs whose end is waited for, and whose result becomes a row: the refinement, and the simulation of a pair distribution.
#pragma once

#include <string>

namespace vntl {

struct Application;

// Asks for the control file, and for the data file where the job needs one and none has its name. Leaving a selector changes nothing.
void Run_Quendrix(Application&);

// Asks for the OSL file.
void Run_Radiox(Application&);
// Named as the program gets it; a relative name stands in the present directory.
void Run_Radiox_On(Application&, const std::string& osl_file);

}  // namespace vntl
