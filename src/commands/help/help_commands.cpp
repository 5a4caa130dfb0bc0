// Menu "Help".
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/help/about.hpp"
#include "commands/help/gestures.hpp"

namespace vntl {

namespace {

void Show_About(Application& app) { About_Dialog(app.session.config); }
void Show_Gestures(Application&) { Gestures_Dialog(); }

constexpr Command commands[] = {
    {command::guide_ascii, "Quendrix user's guide (ASCII)", "", nullptr, "", "Open the guide of the suite"},
    {command::guide_html, "HTML format", "", nullptr, "", "Open the guide of the suite as pages"},
    {command::guide_pdf, "PDF file", "", nullptr, "", "Open the guide of the suite as a document"},
    {command::studio_guide, "Quendrix Studio user's guide", "", nullptr, "", "Open the guide of the studio"},
    {command::news_text, "QXnews Text Editor", "", nullptr, "", "Read the news of the suite"},
    {command::news_html, "QXnews HTML", "", nullptr, "", "Read the news of the suite as pages"},
    {command::program_news, "Vantrelo-2006 news?", "", nullptr, "", "Read the news of the program"},
    {command::download_suite, "Download Quendrix Suite", "", nullptr, "", "Open the page of downloads"},
    {command::download_program, "Download Vantrelo-2006", "", nullptr, "", "Open the page of downloads"},
    {command::web_site, "Vantrelo web site", "", nullptr, "", "Open the home page"},
    {command::gestures, "Mouse and keys", "gestures", Show_Gestures, "F1", "What the mouse and the keys do over the plot"},
    {command::about, "About", "about", Show_About, "", "Name, version and date of the program"},
};

std::vector<Dialog_Resource> Dialogs() { return {About_Dialog_Resource(), Gestures_Dialog_Resource()}; }

}  // namespace

Command_Family Help_Commands() { return {commands, Dialogs}; }

}  // namespace vntl
