// What the desktop looks like, on which the windows stand.
#pragma once

namespace vntl {

bool Desktop_Is_Dark();  // its windows have light texts on dark ground

}  // namespace vntl
