#include "commands/instrument/numor_header.hpp"

#include "base/text.hpp"
#include "commands/application.hpp"
#include "commands/external/start.hpp"
#include "commands/instrument/open_numors_command.hpp"
#include "commands/modal.hpp"
#include "instrument/read_numor.hpp"

namespace vntl {

namespace {

constexpr int header_dialog = 444;
enum Header_Field { file_label = 4455, listing_text };
constexpr int columns_seen = 84, lines_seen = 27;

void Show_Listing(const std::string& file, const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += To_Utf8(line) + '\n';
    WDialogLoad(header_dialog);
    WDialogPutString(file_label, Elide_Middle(file, columns_seen));
    WDialogPutString(listing_text, text);
    WDialogFieldState(listing_text, field_read_only);
    WDialogShow(button_ok, Show_Kind::modal);
    Run_Modal(header_dialog);
    WDialogUnload();
}

}  // namespace

Dialog_Resource Numor_Header_Dialog_Resource() {
    return {header_dialog,
            "Header of Numor",
            {{{file_label, Field_Kind::label, ""}},
             {{.number = listing_text,
               .kind = Field_Kind::text,
               .label = "Listing",
               .width = columns_seen,
               .rows_seen = lines_seen,
               .unseen_label = true}},
             {{button_ok, Field_Kind::push_button, "OK"}}}};
}

void View_Numor_Header(Application& app) {
    Find_Directories(app);
    const std::string file = Choose_File(app, "Select Numor to view its header", numor_filter);
    if (file.empty()) return;
    const std::string instrument = Instrument_Of_File(file);
    if (instrument.empty()) return;
    std::vector<std::string> lines;
    const Status status = List_Numor_File(file, instrument, lines);
    if (status.ok()) return Show_Listing(file, lines);
    app.failed = true;
    app.ask.Error(status);
}

}  // namespace vntl
