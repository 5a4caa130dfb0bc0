#include "commands/external/osl_dialog.hpp"

#include <iterator>
#include <vector>

#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/application.hpp"
#include "commands/external/refine.hpp"
#include "commands/external/start.hpp"
#include "commands/file/save_name.hpp"
#include "commands/modal.hpp"
#include "external/osl_panels.hpp"
#include "session/load.hpp"

namespace vntl {

namespace {

constexpr int osl_dialog = 213;
enum Osl_Field {
    button_run = 3,
    first_import = 2130,
    field_cell = 2135,
    field_group,
    field_atoms,
    first_number = 2140,
    field_name = 2150,
    radio_neutrons,
    radio_x_rays,
    frame_range,
    frame_job,
    frame_sharpening
};

struct Import {
    const char *button, *title, *filter, *mode, *format;
};
constexpr Import imports[] = {
    {"Import &Cif", "Import a CIF to a OSL file", "Select a CIF file (*.cif)|*.cif|", "CIF", "CIF"},
    {"Import &OSL", "Import a OSL file", "Select a OSL file (*.osl)|*.osl|", "OSL", "OSL"},
    {"Import &PCR", "Import a PCR file", "Select a PCR file (*.pcr)|*.pcr|", "PCR", "PCR"},
    {"Import S&HELX", "Import a SHELX file", "Select a SHELX file (*.res,*.inp)|*.res;*.inp;*.ins|", "SHX", "SHELX"}};

constexpr const char *cell_heads = "         a                  b                 c            alpha          beta           gamma",
                     *atoms_head =
                         "Atoms window.        Enter atom strings as:     Label     Species       x/a     y/b     z/c     Biso    Occ";
constexpr Save_Form osl_form = {"", "", "", "Over Write this file?", "Unable to write OSL file!"};

// --- resource ----------------------------------------------------------------------------------------------------------------------

Dialog_Field Number(std::size_t place) {
    return {.number = first_number + static_cast<int>(place), .kind = Field_Kind::real, .label = pdf_numbers[place].label, .width = 9};
}

// --- fields and values -------------------------------------------------------------------------------------------------------------

// A whole number is shown with its point: "20.0".
void Put_Number(int field, float value) {
    WDialogPutReal(field, value);
    const std::string text = WDialogGetString(field);
    if (text.find_first_of(".eE") == std::string::npos) WDialogPutString(field, text + ".0");
}

void Show_Panels(const Pdf_Input& pdf) {
    WDialogPutString(field_cell, pdf.pdf_cell_text);
    WDialogPutString(field_group, pdf.pdf_spgr_text);
    WDialogPutString(field_atoms, pdf.pdf_atoms_text);
}

void Fill(const Pdf_Input& pdf) {
    Show_Panels(pdf);
    for (std::size_t i = 0; i < pdf_numbers.size(); ++i) Put_Number(first_number + static_cast<int>(i), pdf.*pdf_numbers[i].value);
    WDialogPutString(field_name, pdf.pdf_osl_name);
    WDialogPutRadioButton(pdf.pdf_jobtype == x_rays ? radio_x_rays : radio_neutrons);
}

// A field without a number leaves the number as it was.
void Keep_Fields(Pdf_Input& pdf) {
    pdf.pdf_cell_text = WDialogGetString(field_cell);
    pdf.pdf_spgr_text = WDialogGetString(field_group);
    pdf.pdf_atoms_text = WDialogGetString(field_atoms);
    for (std::size_t i = 0; i < pdf_numbers.size(); ++i) {
        float& value = pdf.*pdf_numbers[i].value;
        value = WDialogGetReal(first_number + static_cast<int>(i)).value_or(value);
    }
    pdf.pdf_osl_name = Trim(WDialogGetString(field_name));
    pdf.pdf_jobtype = WDialogGetRadioButton(radio_neutrons) == radio_x_rays ? x_rays : neutrons;
}

// --- imports -----------------------------------------------------------------------------------------------------------------------

Status Read_Import(const Import& import, const std::string& file, Pdf_Input& pdf) {
    Crystal_Structure structure;
    const Status status = Read_Structure_File(file, structure, import.mode);
    if (status.failed && !Trim(status.message).empty()) return status;
    if (status.failed || structure.atoms.empty())
        return Status::Fail(std::string("The number of atoms is zero!, Check the ") + import.format + " file " + file);
    return Fill_Atoms_Panel(structure, file, pdf);
}

void Import_Structure(Application& app, const Import& import) {
    const std::string file = Choose_File(app, import.title, import.filter);
    if (file.empty()) return;
    Status status = Read_Import(import, file, app.pdf);
    WDialogSelect(osl_dialog);
    if (status.ok()) return Show_Panels(app.pdf);
    if (!Contains(status.message, file)) status.message += "\n" + file;
    app.ask.Error(Status::Fail_File(status.message));
}

// --- the file ----------------------------------------------------------------------------------------------------------------------

bool Numbers_Are_Right(const Pdf_Input& pdf) {
    for (std::size_t i = 0; i < pdf_numbers.size(); ++i)
        if (!Number_In_Field(first_number + static_cast<int>(i), pdf_numbers[i].label)) return false;
    const auto wrong = Find_Wrong_Number(pdf);
    if (wrong) Refuse_Field(first_number + static_cast<int>(wrong->place), wrong->why);
    return !wrong;
}

bool Structure_In_Panels(const Pdf_Input& pdf, Crystal_Structure& structure) {
    Osl_Panel faulty = Osl_Panel::cell;
    const Status status = Read_Atoms_Panel(pdf, structure, faulty);
    if (status.failed)
        Refuse_Field(faulty == Osl_Panel::cell ? field_cell : faulty == Osl_Panel::group ? field_group : field_atoms, status.message);
    return status.ok();
}

// False where the dialog stays: the user was told why, or wants to keep the file that is there.
bool Write_File(Application& app) {
    Crystal_Structure structure;
    if (!Numbers_Are_Right(app.pdf) || !Structure_In_Panels(app.pdf, structure)) return false;
    if (app.pdf.pdf_osl_name.empty()) return Refuse_Field(field_name, "The output OSL file needs a name"), false;
    const std::string file = Absolute_Path(app.session.config, app.pdf.pdf_osl_name);
    if (IOsFileExists(file) && !May_Overwrite(app.ask, osl_form.overwrite_title)) return false;
    Status status = Save_Text(osl_form, file, Osl_File_Text(app.pdf, structure));
    if (Note_Saved(app.session.interface, status, file).ok()) return true;
    if (!Contains(status.message, file)) status.message += "\n" + file;
    WDialogSelect(osl_dialog);
    WDialogMarkField(field_name, status.message);
    app.ask.Error(status);
    return false;
}

}  // namespace

Dialog_Resource Osl_Dialog_Resource() {
    std::vector<Dialog_Field> buttons;
    int number = first_import;
    for (const Import& import : imports) buttons.push_back({number++, Field_Kind::push_button, import.button});
    const Dialog_Page range{.rows = {{Number(0), Number(1), Number(2)}, {Number(3), Number(4), Number(5)}}};
    const Dialog_Page sharpening{.rows = {{Number(6)}, {Number(7)}}};
    const Dialog_Page job{.rows = {{{radio_neutrons, Field_Kind::radio, "&Neutrons", radio_neutrons}},
                                   {{radio_x_rays, Field_Kind::radio, "&X-rays", radio_neutrons}}}};
    const auto frame = [](int field, const char* label, const Dialog_Page& page) {
        return Dialog_Field{.number = field, .kind = Field_Kind::frame, .label = label, .pages = {page}};
    };
    return {osl_dialog,
            "Prepare a OSL file for Radiox",
            {buttons,
             {{.number = field_cell, .kind = Field_Kind::string, .label = cell_heads, .width = 66, .label_above = true}},
             {{.number = field_group, .kind = Field_Kind::string, .label = "&Space Group:", .width = 40}},
             {{.number = field_atoms, .kind = Field_Kind::text, .label = atoms_head, .width = 78, .rows_seen = 9}},
             {frame(frame_range, "Range and resolution", range), frame(frame_job, "Radiation", job)},
             {frame(frame_sharpening, "Sharpening", sharpening)},
             {{.number = field_name, .kind = Field_Kind::string, .label = "Name of the output OSL &file", .width = 40}},
             {{button_ok, Field_Kind::push_button, "Save OSL"},
              {button_run, Field_Kind::push_button, "&Run Radiox"},
              {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

bool Radiox_Osl_Dialog(Application& app, std::string& osl_file) {
    WDialogLoad(osl_dialog);
    Fill(app.pdf);
    WDialogShow(first_import, Show_Kind::modal);
    int pressed = 0;
    for (bool open = true; open;) {
        pressed = Run_Modal(osl_dialog);
        Keep_Fields(app.pdf);
        const int import = pressed - first_import;
        if (import >= 0 && import < static_cast<int>(std::size(imports)))
            Import_Structure(app, imports[import]);
        else
            open = pressed != button_cancel && !Write_File(app);
        WDialogSelect(osl_dialog);
    }
    WDialogUnload();
    osl_file = app.pdf.pdf_osl_name;
    return pressed == button_run;
}

void Prepare_Osl(Application& app) {
    std::string file;
    if (Radiox_Osl_Dialog(app, file)) Run_Radiox_On(app, file);
}

}  // namespace vntl
