// Menu "Help".
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/external/start.hpp"
#include "commands/help/about.hpp"
#include "commands/help/gestures.hpp"
#include "external/web_pages.hpp"

namespace vntl {

namespace {

void Show_About(Application& app) { About_Dialog(app.session.config); }
void Show_Gestures(Application&) { Gestures_Dialog(); }

void Open_Document(Application& app, Program_Role role, std::string_view name) { Open_With(app, role, Suite_Of(app).Document(name)); }
void Open_Guide_Html(Application& app) { Open_Document(app, Program_Role::cmd_browser, "qx_frame.htm"); }
void Open_Guide_Pdf(Application& app) { Open_Document(app, Program_Role::cmd_pdf, "Quendrix_Manual.pdf"); }
void Open_Studio_Guide(Application& app) { Open_Document(app, Program_Role::cmd_pdf, "Manual_Quendrix_Studio.pdf"); }
void Open_News_Html(Application& app) { Open_Document(app, Program_Role::cmd_browser, "Quendrix_News.htm"); }

template <const std::string_view& page>
void Open_Page(Application& app) {
    Open_With(app, Program_Role::cmd_browser, page);
}
template <const std::string_view& page>
constexpr auto opens = page.empty() ? nullptr : Open_Page<page>;

constexpr Command commands[] = {
    {command::guide_html, "HTML format", "", Open_Guide_Html, "", "Open the guide of the suite as pages"},
    {command::guide_pdf, "PDF file", "", Open_Guide_Pdf, "", "Open the guide of the suite as a document"},
    {command::studio_guide, "Quendrix Studio user's guide", "", Open_Studio_Guide, "", "Open the guide of the studio"},
    {command::news_html, "QXnews HTML", "", Open_News_Html, "", "Read the news of the suite as pages"},
    {command::download_suite, "Download Quendrix Suite", "", opens<suite_download_page>, "", "Open the page of downloads"},
    {command::download_program, "Download Vantrelo-2006", "", opens<program_download_page>, "", "Open the page of downloads"},
    {command::web_site, "Vantrelo web site", "", opens<home_page>, "", "Open the home page"},
    {command::gestures, "Mouse and keys", "gestures", Show_Gestures, "F1", "What the mouse and the keys do over the plot"},
    {command::about, "About", "about", Show_About, "", "Name, version and date of the program"},
};

std::vector<Dialog_Resource> Dialogs() { return {About_Dialog_Resource(), Gestures_Dialog_Resource()}; }

}  // namespace

Command_Family Help_Commands() { return {commands, Dialogs}; }

}  // namespace vntl
