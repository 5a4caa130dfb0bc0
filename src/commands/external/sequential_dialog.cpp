#include "commands/external/sequential_dialog.hpp"

#include <optional>

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "commands/application.hpp"
#include "commands/external/start.hpp"
#include "commands/file/save_name.hpp"
#include "commands/modal.hpp"
#include "external/sequential.hpp"
#include "session/load.hpp"

namespace vntl {

namespace {

constexpr int sequential_dialog = 161;
constexpr int control_field = 1611, select_control = 1612, code_field = 1613, first_field = 1614, last_field = 1615;
constexpr int first_mark = 1621, temperatures_field = 1631, select_temperatures = 1632, script_mark = 1633;
constexpr const char* marks[sequential_marks] = {"Save P&RF files", "Save &HKL files", "Save &MIC/SIZ/STR files", "Save D&IS files",
                                                 "Generate &CALC files"};
constexpr std::string_view control_extension = ".pcr";

// A field with a name that the user types, or chooses by a button. A chosen one is kept as it is while the field shows it, whatever the
// field shows of it.
struct Name_Field {
    int field;
    std::string chosen = {}, shown = {};

    std::string Name() const {
        const std::string text = WDialogGetString(field);
        return text == shown ? chosen : std::string(Trim(text));
    }
    void Show(std::string name, std::string as) {
        chosen = std::move(name);
        shown = std::move(as);
        WDialogPutString(field, shown);
    }
};

class Sequential_Fields {
public:
    explicit Sequential_Fields(Application& app) : app_(app) {}

    void Select_Control() {
        std::string file = Choose("Select PCR file", "Input PCR File (*.pcr)|*.pcr|");
        if (file.empty()) return;
        file.resize(file.size() - Extension_Of(file).size());
        control_.Show(file, file);
        if (!temperatures_.Name().empty()) Show_Temperatures(temperatures_.Name());
    }

    void Select_Temperatures() {
        const std::string file = Choose("Select Temperature file", "Input temp File |*.*|");
        if (!file.empty()) Show_Temperatures(file);
    }

    // What the fields tell, and the command; false below a field that is refused, or a script that was not written.
    bool Take(Command_Line& command) {
        const std::optional<Sequential_Input> input = Input();
        if (!input || (WDialogGetCheckBox(script_mark) != 0 && !Write_Script(*input))) return false;
        command = Suite_Of(app_).In_Suite(Program_Role::prg_refine).In(Directory());
        Add_Sequential(command, *input);
        return true;
    }

private:
    std::string Choose(std::string_view title, std::string_view filter) {
        const std::string file = Choose_File(app_, title, filter);
        WDialogSelect(sequential_dialog);
        return file;
    }

    char Separator() const { return app_.session.config.sep; }

    // With its full path; the extension that somebody types is none of the name.
    std::string Control() const {
        std::string name = control_.Name();
        if (name != control_.chosen && Equal_No_Case(Extension_Of(name), control_extension))
            name.resize(name.size() - control_extension.size());
        return name.empty() ? name : Absolute_Path(app_.session.config, name);
    }
    // The program runs there.
    std::string Directory() const {
        const std::string control = Control();
        return control.empty() ? IOsDirName() : Directory_Of(control, Separator());
    }

    void Show_Temperatures(const std::string& file) { temperatures_.Show(file, Name_Seen_From(Directory(), file, Separator())); }

    static std::optional<int> Number(int field, const std::string& name) {
        const std::optional<int> number = WDialogGetInteger(field);
        if (!number)
            Refuse_Field(field, name + ": \"" + WDialogGetString(field) + "\" is not a number from 0 to " +
                                    std::to_string(largest_sequential_number));
        return number;
    }

    std::optional<Sequential_Input> Input() const {
        const std::string control = Control();
        if (File_Part(control, Separator()).empty()) {
            Refuse_Field(control_field, "The name of the PCR file is missing.");
            return {};
        }
        const std::optional<int> first = Number(first_field, "First number");
        const std::optional<int> last = first ? Number(last_field, "Last number") : first;
        if (!last) return {};
        if (*last < *first) {
            Refuse_Field(last_field, "The last number is less than the first one.");
            return {};
        }
        Sequential_Input input;
        // A bare name that is typed stays one: the program runs where it is meant.
        const bool bare = Directory_Of(control_.Name(), Separator()).empty();
        input.control = bare ? std::string(File_Part(control, Separator())) : control;
        input.data_code = Trim(WDialogGetString(code_field));
        input.first = *first;
        input.last = *last;
        for (std::size_t k = 0; k < sequential_marks; ++k) input.keeps[k] = WDialogGetCheckBox(first_mark + static_cast<int>(k)) != 0;
        input.temperatures = Name_Seen_From(Directory(), temperatures_.Name(), Separator());
        return input;
    }

    // A script that was made here before is replaced without a question; what else bears its name may be somebody's work.
    bool May_Replace(const std::string& file) {
        Text_File old;
        constexpr std::size_t longest = 1 << 20;
        if (!IOsFileExists(file) || (old.Open(file, longest).ok() && Is_Sequential_Script(old.Text()))) return true;
        return app_.ask.Box({Box_Buttons::yes_no, Box_Icon::question, 2,
                             "This file was not made by this dialog, or was changed since:\n" + file + "\nDo you want to overwrite it?",
                             "Generate Script for QX-Seq"}) == Box_Answer::yes;
    }

    bool Write_Script(const Sequential_Input& input) {
        const std::string& system = app_.session.config.os_tag;
        const std::string file = Sequential_Script_Name(Control(), system), failure = "The script cannot be written: " + file;
        std::string text;
        Save_Form form;
        form.failure = failure;
        form.use = File_Use::run;
        Status status = Sequential_Script(input, system, text);
        if (status.ok()) {
            if (!May_Replace(file)) return false;
            status = Save_Text(form, file, text);
        }
        if (status.failed)
            Error_Box(status);
        else
            app_.session.interface.Passing_Text("The script was written: " + file);
        return status.ok();
    }

    Application& app_;
    Name_Field control_{control_field}, temperatures_{temperatures_field};
};

}  // namespace

Dialog_Resource Sequential_Dialog_Resource() {
    constexpr int name_width = 32, code_width = 24, number_width = 8;
    const auto name = [](int field, const char* label, int button, const char* button_label) {
        return std::vector<Dialog_Field>{{.number = field, .kind = Field_Kind::string, .label = label, .width = name_width},
                                         {button, Field_Kind::push_button, button_label}};
    };
    const auto number = [](int field, const char* label) {
        return Dialog_Field{
            .number = field, .kind = Field_Kind::integer, .label = label, .width = number_width, .lo = 0, .hi = largest_sequential_number};
    };
    Dialog_Resource resource{sequential_dialog, "Sequential mode of Quendrix:", {}};
    resource.rows = {name(control_field, "Enter &PCR filename :", select_control, "S&elect PCR file"),
                     {{.number = code_field, .kind = Field_Kind::string, .label = "&Data file code [.ext] :", .width = code_width}},
                     {number(first_field, "Enter &first number :")},
                     {number(last_field, "Enter &last number :")}};
    for (std::size_t k = 0; k < sequential_marks; ++k)
        resource.rows.push_back({{first_mark + static_cast<int>(k), Field_Kind::check_box, marks[k]}});
    resource.rows.push_back(
        name(temperatures_field, "File with &temperatures (if needed)", select_temperatures, "Select Temper&ature file"));
    resource.rows.push_back({{script_mark, Field_Kind::check_box, "Generate &Script for QX-Seq"}});
    resource.rows.push_back({{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}});
    return resource;
}

Status Sequential_Dialog(Application& app, Command_Line& command) {
    WDialogLoad(sequential_dialog);
    WDialogPutInteger(first_field, 1);
    WDialogPutInteger(last_field, 2);
    WDialogShow(control_field, Show_Kind::modal);
    Sequential_Fields fields(app);
    bool taken = false;
    for (int pressed = 0; pressed != button_cancel && !taken;) {
        pressed = Run_Modal(sequential_dialog);
        if (pressed == select_control)
            fields.Select_Control();
        else if (pressed == select_temperatures)
            fields.Select_Temperatures();
        else if (pressed == button_ok)
            taken = fields.Take(command);
    }
    WDialogUnload();
    return taken ? Status::Done() : Status::Cancel();
}

}  // namespace vntl
