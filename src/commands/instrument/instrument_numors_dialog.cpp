#include "commands/instrument/instrument_numors_dialog.hpp"

#include <algorithm>
#include <optional>

#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/application.hpp"
#include "commands/file/save_name.hpp"
#include "commands/modal.hpp"
#include "commands/select_files.hpp"
#include "instrument/instrument_names.hpp"
#include "instrument/numor_files.hpp"
#include "session/load.hpp"

namespace vntl {

namespace {

constexpr int numors_dialog = 442;
enum Numors_Field {
    instrument_menu = 4420,
    data_directory,
    browse_data,
    initial_numor,
    final_numor,
    plain_radio,
    compressed_radio,
    save_mark,
    file_name,
    monitor_number,
    columns_radio,
    instrument_5_radio,
    interval_number,
    code_mark,
    code_text,
    temperature_mark,
    rawmerge_directory,
    browse_rawmerge,
    only_mark,
    first_adding,  // in the order of Rawmerge_Adding
    block_number = first_adding + 4,
    file_frame,
    merging_frame,
    directory_label
};

constexpr const char* initial_label = "Initial Numor";
constexpr const char* final_label = "Final Numor";
constexpr const char* monitor_label = "Monitor for normalization in Rawmerge";
constexpr const char* interval_label = "Temperature interval to add numors (in K)";
constexpr const char* directory_text = "Directory for saving input file for Rawmerge and data files";
constexpr const char* block_label = "Number of numors in each block to be added";
constexpr const char* adding_labels[] = {"Save each Numor independently", "Add blocks of N Numors", "Add Numors into a single file",
                                         "Adds Numors with temperatures within a range of +/- dT"};
constexpr int largest_block = 9999;  // has four columns

// --- fields and values -------------------------------------------------------------------------------------------------------------

void Fill(const Numor_Series& series) {
    const auto names = Two_Axes_Instruments();
    const auto chosen = std::find(names.begin(), names.end(), series.runs.instrument);
    WDialogPutOption(instrument_menu, chosen == names.end() ? 1 : static_cast<int>(chosen - names.begin()) + 1);
    WDialogPutString(data_directory, series.runs.data_directory);
    WDialogPutInteger(initial_numor, series.runs.first);
    WDialogPutInteger(final_numor, series.runs.last);
    WDialogPutRadioButton(series.compressed ? compressed_radio : plain_radio);
    WDialogPutCheckBox(save_mark, series.saves_rawmerge);
    WDialogPutString(file_name, series.rawmerge_file);
    WDialogPutReal(monitor_number, series.runs.monitor);
    WDialogPutRadioButton(series.runs.instrument_5 ? instrument_5_radio : columns_radio);
    WDialogPutReal(interval_number, series.runs.interval);
    WDialogPutCheckBox(code_mark, series.runs.prepends_code);
    WDialogPutString(code_text, series.runs.codefile);
    WDialogPutCheckBox(temperature_mark, series.runs.appends_temperature);
    WDialogPutString(rawmerge_directory, series.rawmerge_directory);
    WDialogPutCheckBox(only_mark, series.only_rawmerge);
    WDialogPutRadioButton(first_adding + static_cast<int>(series.runs.adding));
    WDialogPutInteger(block_number, series.runs.block);
}

// What is no number is refused where it is used.
std::optional<int> Whole_In_Field(int field, const char* label, int largest) {
    const std::optional<int> number = WDialogGetInteger(field);
    if (!number)
        Refuse_Field(field,
                     std::string(label) + ": \"" + WDialogGetString(field) + "\" is not a number from 0 to " + std::to_string(largest));
    return number;
}

bool Take_Numbers(Numor_Series& series) {
    const std::optional<int> first = Whole_In_Field(initial_numor, initial_label, largest_numor);
    const std::optional<int> last = first ? Whole_In_Field(final_numor, final_label, largest_numor) : first;
    if (!last) return false;
    series.runs.first = *first;
    series.runs.last = *last;
    if (*last >= *first) return true;
    Refuse_Field(final_numor, "No Numors for allocating are present!!!");
    return false;
}

bool Take_Rawmerge_Numbers(Rawmerge_Input& runs) {
    const std::optional<float> monitor = Number_In_Field(monitor_number, monitor_label);
    const std::optional<float> interval = monitor ? Number_In_Field(interval_number, interval_label) : monitor;
    const std::optional<int> block = interval ? Whole_In_Field(block_number, block_label, largest_block) : std::nullopt;
    if (!block) return false;
    runs.monitor = *monitor;
    runs.interval = *interval;
    runs.block = *block;
    return true;
}

// Numbers of the other program are looked at where its file is wanted.
std::optional<Numor_Series> Series_In_Fields() {
    Numor_Series series;
    series.saves_rawmerge = WDialogGetCheckBox(save_mark) != 0;
    series.only_rawmerge = series.saves_rawmerge && WDialogGetCheckBox(only_mark) != 0;
    series.rawmerge_file = Trim(WDialogGetString(file_name));
    series.rawmerge_directory = Trim(WDialogGetString(rawmerge_directory));
    series.compressed = WDialogGetRadioButton(plain_radio) == compressed_radio;
    Rawmerge_Input& runs = series.runs;
    const auto names = Two_Axes_Instruments();
    const int instrument = WDialogGetMenu(instrument_menu);
    if (instrument >= 1 && instrument <= static_cast<int>(names.size())) runs.instrument = names[static_cast<std::size_t>(instrument) - 1];
    runs.data_directory = Trim(WDialogGetString(data_directory));
    runs.instrument_5 = WDialogGetRadioButton(columns_radio) == instrument_5_radio;
    runs.prepends_code = WDialogGetCheckBox(code_mark) != 0;
    runs.codefile = Trim(WDialogGetString(code_text));
    runs.appends_temperature = WDialogGetCheckBox(temperature_mark) != 0;
    runs.adding = static_cast<Rawmerge_Adding>(std::max(0, WDialogGetRadioButton(first_adding) - first_adding));
    if (!Take_Numbers(series)) return {};
    if (series.saves_rawmerge) {
        if (!Take_Rawmerge_Numbers(runs)) return {};
    } else {
        runs.monitor = WDialogGetReal(monitor_number).value_or(runs.monitor);
        runs.interval = WDialogGetReal(interval_number).value_or(runs.interval);
        runs.block = WDialogGetInteger(block_number).value_or(runs.block);
    }
    return series;
}

// --- the file of the other program -------------------------------------------------------------------------------------------------

void Refuse(const Rawmerge_Fault& fault) {
    constexpr struct {
        Rawmerge_Item item;
        int field;
        const char* label;
    } fields[] = {{Rawmerge_Item::data_directory, data_directory, "Data Directory"},
                  {Rawmerge_Item::monitor, monitor_number, monitor_label},
                  {Rawmerge_Item::codefile, code_text, "Codefile"},
                  {Rawmerge_Item::block, block_number, block_label},
                  {Rawmerge_Item::interval, interval_number, interval_label}};
    for (const auto& row : fields)
        if (row.item == fault.item) return Refuse_Field(row.field, std::string(row.label) + ": " + fault.why);
}

// The other program gets the full name of the directory: it runs where its file is.
std::string Full_Data_Directory(const Application& app, const Numor_Series& series) {
    const std::string& directory = series.runs.data_directory;
    return directory.empty() ? app.directories.KVR_data_directory : Absolute_Path(app.session.config, directory);
}

// Writes the file, and tells what was written in `told`. False below what is refused.
bool Write_Rawmerge(Application& app, const Numor_Series& series, std::string& told) {
    if (series.rawmerge_file.empty()) return Refuse_Field(file_name, "The input file for Rawmerge needs a name"), false;
    Rawmerge_Input input = series.runs;
    input.data_directory = Full_Data_Directory(app, series);
    std::string line;
    if (const auto fault = Rawmerge_Line(input, line)) return Refuse(*fault), false;
    const Configuration& config = app.session.config;
    const std::string& directory = series.rawmerge_directory;
    const std::string file = directory.empty() ? Absolute_Path(config, series.rawmerge_file)
                                               : Absolute_Path(config, series.rawmerge_file, Absolute_Path(config, directory));
    const std::string failure = "The input file for Rawmerge cannot be written: " + file;
    Save_Form form;
    form.failure = failure;
    const Status status = Save_Text(form, file, line + std::string(config.Line_End()));
    if (status.failed) {
        WDialogMarkField(file_name, status.message);
        app.ask.Error(status);
        return false;
    }
    told = "Input File for Rawmerge: " + series.rawmerge_file + " has been created \n";
    if (!directory.empty()) told += "The directory to store data files is: " + directory + '\n';
    told += "The written command line is: " + line;
    return true;
}

// --- what the dialog does ----------------------------------------------------------------------------------------------------------

void Browse_Data(Application& app) {
    const std::optional<std::string> directory = Select_Directory(app.session.config, "Select Data Directory");
    WDialogSelect(numors_dialog);
    if (!directory) return;
    std::optional<Numor_Range> range;
    const Status status = Numors_In_Directory(*directory, range);
    WDialogPutString(data_directory, *directory);
    if (status.failed) app.ask.Error(status);
    WDialogSelect(numors_dialog);
    if (!range) return;
    WDialogPutInteger(initial_numor, range->first);
    WDialogPutInteger(final_numor, range->last);
    WDialogPutRadioButton(range->compressed ? compressed_radio : plain_radio);
}

void Browse_Rawmerge(Application& app) {
    const std::optional<std::string> directory =
        Select_Directory(app.session.config, "Select Directory to store dat files and Rawmerge input file");
    WDialogSelect(numors_dialog);
    if (directory) WDialogPutString(rawmerge_directory, *directory);
}

// The file alone is a file.
void Couple_Marks(int field) {
    if (field == only_mark && WDialogGetCheckBox(only_mark) != 0) WDialogPutCheckBox(save_mark, 1);
    if (field == save_mark && WDialogGetCheckBox(save_mark) == 0) WDialogPutCheckBox(only_mark, 0);
}

// --- resource ----------------------------------------------------------------------------------------------------------------------

Dialog_Field Whole(int field, std::string label, int largest) {
    return {.number = field, .kind = Field_Kind::integer, .label = std::move(label), .width = 8, .lo = 0, .hi = largest};
}

Dialog_Field Radio(int field, const char* label, int group) { return {field, Field_Kind::radio, label, group}; }

Dialog_Page File_Page() {
    const auto text = [](int field, const char* label) {
        return Dialog_Field{.number = field, .kind = Field_Kind::string, .label = label, .unseen_label = true};
    };
    return {.rows = {{{save_mark, Field_Kind::check_box, "&Save file to run Rawmerge       File Name:"}, text(file_name, "File Name:")},
                     {{code_mark, Field_Kind::check_box, "&Prepend a CodeFile to names     Codefile:"}, text(code_text, "Codefile:")},
                     {{temperature_mark, Field_Kind::check_box, "Append the &Temperature (in 0.01K) to the name of the files"}},
                     {{directory_label, Field_Kind::label, std::string(directory_text) + ":"}},
                     {text(rawmerge_directory, directory_text), {browse_rawmerge, Field_Kind::push_button, ".Browse.."}},
                     {{only_mark, Field_Kind::check_box, "Save &only the Rawmerge file"}}}};
}

Dialog_Page Merging_Page() {
    const auto real = [](int field, const char* label, const char* format) {
        return Dialog_Field{.number = field, .kind = Field_Kind::real, .label = label, .format = format};
    };
    Dialog_Page page{
        .rows = {{real(monitor_number, monitor_label, "(f12.2)")},
                 {Radio(columns_radio, "&X,Y, Sigma", columns_radio), Radio(instrument_5_radio, "Inst=&5 Format", columns_radio)},
                 {real(interval_number, interval_label, "(f8.3)")}}};
    int field = first_adding;
    for (const char* label : adding_labels) page.rows.push_back({Radio(field++, label, first_adding)});
    page.rows.push_back({Whole(block_number, std::string(block_label) + ":", largest_block)});
    return page;
}

}  // namespace

Dialog_Resource Instrument_Numors_Dialog_Resource() {
    Dialog_Field instruments{.number = instrument_menu, .kind = Field_Kind::menu, .label = "&Instrument Name:", .width = 8};
    for (const std::string_view name : Two_Axes_Instruments()) instruments.choices.emplace_back(name);
    return {numors_dialog,
            "KVR 2-axes Diffractometer and Numors",
            {{instruments},
             {{.number = data_directory, .kind = Field_Kind::string, .label = "&Data Directory", .width = 40},
              {browse_data, Field_Kind::push_button, ".Browse..."}},
             {Whole(initial_numor, initial_label, largest_numor), Whole(final_numor, final_label, largest_numor)},
             {Radio(plain_radio, "&Un-Compressed", plain_radio), Radio(compressed_radio, "&Compressed", plain_radio)},
             {{.number = file_frame, .kind = Field_Kind::frame, .label = "Input of Rawmerge", .pages = {File_Page()}}},
             {{.number = merging_frame, .kind = Field_Kind::frame, .label = "What Rawmerge does", .pages = {Merging_Page()}}},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

Status Instrument_Numors_Dialog(Application& app) {
    WDialogLoad(numors_dialog);
    Fill(app.series);
    WDialogShow(instrument_menu, Show_Kind::modal);
    std::optional<Numor_Series> series;
    std::string told;
    for (int pressed = 0; pressed != button_cancel && !series;) {
        pressed = Run_Modal(numors_dialog, {.changed = Couple_Marks});
        if (pressed == browse_data) Browse_Data(app);
        if (pressed == browse_rawmerge) Browse_Rawmerge(app);
        if (pressed == button_ok) series = Series_In_Fields();
        if (series && series->saves_rawmerge && !Write_Rawmerge(app, *series, told)) series.reset();
        WDialogSelect(numors_dialog);
    }
    WDialogUnload();
    if (!series) return Status::Cancel();
    app.series = std::move(*series);
    if (!told.empty()) app.ask.Information(told);
    return Status::Done();
}

}  // namespace vntl
