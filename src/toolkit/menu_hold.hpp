// Menus while the program serves none of them.
#pragma once

namespace vntl {

// Menus and toolbars of all windows are grey as long as the object lives.
class Menu_Hold {
public:
    Menu_Hold();
    ~Menu_Hold();
    Menu_Hold(const Menu_Hold&) = delete;
    Menu_Hold& operator=(const Menu_Hold&) = delete;
};

}  // namespace vntl
