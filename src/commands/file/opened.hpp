// The end of every command that opens files: the picture, the exit status, and the status bar.
#pragma once

namespace vntl {

struct Application;
struct Open_Result;

void Show_Opened(Application&, const Open_Result& result);

}  // namespace vntl
