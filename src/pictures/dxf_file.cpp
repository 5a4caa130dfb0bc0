#include "pictures/dxf_file.hpp"

#include <algorithm>
#include <utility>

#include "drawing/font_table.hpp"

namespace vntl {
namespace {

// Fixed handles, below those of the spaces.
constexpr std::uint32_t nobody = 0, vport_table = 1, ltype_table = 2, layer_table = 3, style_table = 4, view_table = 5, ucs_table = 6,
                        appid_table = 7, dimstyle_table = 8, block_table = 9, root_dictionary = 0xa, group_dictionary = 0xb;

constexpr int millimetres = 4, foreground = 7;
constexpr int bold_flag = 1 << 25, italic_flag = 1 << 24;
constexpr double margin = 1.05;  // about the page when the drawing is opened

// Fonts that every system with a drawing program has, as wide as those of the other pictures, with published heights of capitals.
struct Named_Font {
    int font;
    const char *style, *family, *file, *bold, *italic, *bold_italic;
    double capitals;
    int pitch;
};
constexpr std::array<Named_Font, 4> fonts = {{
    {font_courier, "COURIER", "Courier New", "cour.ttf", "courbd.ttf", "couri.ttf", "courbi.ttf", 0.571, 0x31},
    {font_helvetica, "HELVETICA", "Arial", "arial.ttf", "arialbd.ttf", "ariali.ttf", "arialbi.ttf", 0.716, 0x22},
    {font_times, "TIMES", "Times New Roman", "times.ttf", "timesbd.ttf", "timesi.ttf", "timesbi.ttf", 0.662, 0x12},
    {font_symbol, "SYMBOL", "Arial", "arial.ttf", "arialbd.ttf", "ariali.ttf", "arialbi.ttf", 0.716, 0x22},
}};

struct Named_Style {
    Line_Style style;
    const char *name, *look;
};
constexpr std::array<Named_Style, 4> linetypes = {{
    {Line_Style::dotted, "PLOT_DOTTED", ". . . . . . . ."},
    {Line_Style::dashed, "PLOT_DASHED", "__ __ __ __ __"},
    {Line_Style::dot_dash, "PLOT_DOT_DASH", "__ . __ . __ ."},
    {Line_Style::dot_dot_dash, "PLOT_DOT_DOT_DASH", "__ . . __ . . __"},
}};

// Writes the parts of a file one after another.
class Parts {
public:
    explicit Parts(const Dxf_Drawing& drawing) : drawing_(drawing), next_handle_(drawing.next_handle) {}

    std::string Whole_File() {
        Tables();
        Blocks();
        Section("ENTITIES");
        out_.Append(drawing_.entities.text());
        End_Section();
        Objects();
        out_.Word(0, "EOF");
        const std::string rest = std::exchange(out_, {}).text();
        Header();  // last, for it names the first handle that is free
        Section("CLASSES");
        End_Section();
        return out_.text() + rest;
    }

private:
    void Section(const char* name) {
        out_.Word(0, "SECTION");
        out_.Word(2, name);
    }
    void End_Section() { out_.Word(0, "ENDSEC"); }

    // --- header -----------------------------------------------------------------------------------------------------------------
    void Variable(const char* name) { out_.Word(9, name); }
    void Variable(const char* name, int code, int value) {
        Variable(name);
        out_.Whole(code, value);
    }
    void Variable(const char* name, int code, const char* value) {
        Variable(name);
        out_.Word(code, value);
    }
    void Corner(const char* name, double x, double y, bool flat) {
        Variable(name);
        const Dxf_Place place = Rounded_Place({x, y});
        if (flat)
            out_.Vertices({&place, 1});
        else
            out_.Place(10, place);
    }

    void Header() {
        const Rect& page = drawing_.page;
        Section("HEADER");
        Variable("$ACADVER", 1, "AC1015");
        Variable("$DWGCODEPAGE", 3, "ANSI_1252");
        Corner("$INSBASE", 0, 0, false);
        Corner("$EXTMIN", page.x1, page.y1, false);
        Corner("$EXTMAX", page.x2, page.y2, false);
        Corner("$LIMMIN", page.x1, page.y1, true);
        Corner("$LIMMAX", page.x2, page.y2, true);
        Variable("$FILLMODE", 70, 1);
        Variable("$LTSCALE", 40, 1);
        Variable("$TEXTSTYLE", 7, "Standard");
        Variable("$CLAYER", 8, "0");
        Variable("$LUNITS", 70, 2);
        Variable("$MEASUREMENT", 70, 1);
        Variable("$INSUNITS", 70, millimetres);
        Variable("$LWDISPLAY", 290, 1);
        Variable("$TILEMODE", 70, 1);
        Variable("$HANDSEED");
        out_.Handle(5, next_handle_);
        End_Section();
    }

    // --- tables -----------------------------------------------------------------------------------------------------------------
    void Table(const char* name, std::uint32_t handle, std::size_t rows) {
        table_ = handle;
        out_.Word(0, "TABLE");
        out_.Word(2, name);
        out_.Handle(5, handle);
        out_.Handle(330, nobody);
        out_.Word(100, "AcDbSymbolTable");
        out_.Whole(70, static_cast<int>(rows));
    }
    void End_Table() { out_.Word(0, "ENDTAB"); }
    void Empty_Table(const char* name, std::uint32_t handle) {
        Table(name, handle, 0);
        End_Table();
    }

    void Row(const char* type, std::uint32_t handle, const char* class_name, std::string_view name, int handle_code = 5) {
        out_.Word(0, type);
        out_.Handle(handle_code, handle);
        out_.Handle(330, table_);
        out_.Word(100, "AcDbSymbolTableRecord");
        out_.Word(100, class_name);
        out_.Word(2, name);
    }
    void Row(const char* type, const char* class_name, std::string_view name) {
        Row(type, next_handle_++, class_name, name);
        out_.Whole(70, 0);
    }

    void Tables() {
        Section("TABLES");
        View_Of_Page();
        Linetypes();
        Layers();
        Styles();
        Empty_Table("VIEW", view_table);
        Empty_Table("UCS", ucs_table);
        Table("APPID", appid_table, 1);
        Row("APPID", "AcDbRegAppTableRecord", "ACAD");
        End_Table();
        Table("DIMSTYLE", dimstyle_table, 1);
        out_.Word(100, "AcDbDimStyleTable");
        Row("DIMSTYLE", next_handle_++, "AcDbDimStyleTableRecord", "Standard", 105);
        out_.Whole(70, 0);
        End_Table();
        Block_Records();
        End_Section();
    }

    // The page fills the window when the drawing is opened.
    void View_Of_Page() {
        const Rect& page = drawing_.page;
        const double width = page.x2 - page.x1, height = page.y2 - page.y1;
        constexpr double shape = 1.5;  // width to height of the window
        Table("VPORT", vport_table, 1);
        Row("VPORT", "AcDbViewportTableRecord", "*ACTIVE");
        const auto pair = [this](int code, double x, double y) {
            out_.Length(code, x);
            out_.Length(code + 10, y);
        };
        pair(10, 0, 0);
        pair(11, 1, 1);
        pair(12, 0.5 * (page.x1 + page.x2), 0.5 * (page.y1 + page.y2));
        out_.Place(16, Rounded_Place({0, 0}));
        out_.Place(17, Rounded_Place({0, 0}));
        out_.Length(40, margin * std::max(height, width / shape));
        out_.Length(41, shape);
        End_Table();
    }

    void Linetypes() {
        Table("LTYPE", ltype_table, 3 + linetypes.size());
        for (const char* name : {"ByBlock", "ByLayer", "Continuous"}) Linetype(name, "", {});
        for (const Named_Style& row : linetypes) Linetype(row.name, row.look, Dash_Pattern(row.style));
        End_Table();
    }
    void Linetype(const char* name, const char* look, std::span<const double> pattern) {
        Row("LTYPE", "AcDbLinetypeTableRecord", name);
        out_.Word(3, look);
        out_.Whole(72, 'A');
        out_.Whole(73, static_cast<int>(pattern.size()));
        double length = 0;
        for (const double part : pattern) length += part * drawing_.unit;
        out_.Length(40, length);
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            out_.Length(49, (i % 2 == 0 ? 1 : -1) * pattern[i] * drawing_.unit);  // dash and gap
            out_.Whole(74, 0);
        }
    }

    void Layers() {
        constexpr std::array<const char*, 6> layers = {"0", dxf_page, dxf_areas, dxf_lines, dxf_markers, dxf_texts};
        Table("LAYER", layer_table, layers.size());
        for (const char* name : layers) {
            Row("LAYER", "AcDbLayerTableRecord", name);
            out_.Whole(62, foreground);
            out_.Word(6, "Continuous");
            out_.Whole(370, -3);  // the default width of lines
        }
        End_Table();
    }

    void Styles() {
        constexpr int variants = 4;  // plain, bold, italic, both
        Table("STYLE", style_table, 1 + fonts.size() * variants);
        Dxf_Font standard = Dxf_Font_Of(font_helvetica, 0);
        standard.style = "Standard";
        Style(standard);
        for (const Named_Font& row : fonts)
            for (const int style : {0, style_bold, style_italic, style_bold | style_italic}) Style(Dxf_Font_Of(row.font, style));
        End_Table();
    }
    void Style(const Dxf_Font& font) {
        Row("STYLE", "AcDbTextStyleTableRecord", font.style);
        out_.Length(40, 0);  // no fixed height
        out_.Length(41, 1);
        out_.Length(50, 0);
        out_.Whole(71, 0);
        out_.Length(42, 2.5);
        out_.Word(3, font.file);
        out_.Word(4, "");
        out_.Word(1001, "ACAD");
        out_.Word(1000, font.family);
        out_.Whole(1071, font.flags);
    }

    void Block_Records() {
        Table("BLOCK_RECORD", block_table, 2 + drawing_.blocks.size());
        const auto record = [this](std::uint32_t handle, std::string_view name) {
            Row("BLOCK_RECORD", handle, "AcDbBlockTableRecord", name);
            out_.Handle(340, nobody);
        };
        record(dxf_model_space, "*Model_Space");
        record(dxf_paper_space, "*Paper_Space");
        for (const Dxf_Block& block : drawing_.blocks) record(block.handle, block.name);
        End_Table();
    }

    // --- blocks, objects --------------------------------------------------------------------------------------------------------
    void Blocks() {
        Section("BLOCKS");
        Block("*Model_Space", dxf_model_space, {});
        Block("*Paper_Space", dxf_paper_space, {});
        for (const Dxf_Block& block : drawing_.blocks) Block(block.name, block.handle, block.entities.text());
        End_Section();
    }
    void Block(const std::string& name, std::uint32_t owner, std::string_view entities) {
        const auto end_of_block = [&](const char* type, const char* class_name) {
            out_.Word(0, type);
            out_.Handle(5, next_handle_++);
            out_.Handle(330, owner);
            out_.Word(100, "AcDbEntity");
            if (owner == dxf_paper_space) out_.Whole(67, 1);
            out_.Word(8, "0");
            out_.Word(100, class_name);
        };
        end_of_block("BLOCK", "AcDbBlockBegin");
        out_.Word(2, name);
        out_.Whole(70, 0);
        out_.Place(10, Rounded_Place({0, 0}));
        out_.Word(3, name);
        out_.Word(1, "");
        out_.Append(entities);
        end_of_block("ENDBLK", "AcDbBlockEnd");
    }

    void Objects() {
        Section("OBJECTS");
        Dictionary(root_dictionary, nobody);
        out_.Word(3, "ACAD_GROUP");
        out_.Handle(350, group_dictionary);
        Dictionary(group_dictionary, root_dictionary);
        End_Section();
    }
    void Dictionary(std::uint32_t handle, std::uint32_t owner) {
        out_.Word(0, "DICTIONARY");
        out_.Handle(5, handle);
        out_.Handle(330, owner);
        out_.Word(100, "AcDbDictionary");
        out_.Whole(281, 1);
    }

    const Dxf_Drawing& drawing_;
    std::uint32_t next_handle_, table_ = nobody;
    Dxf_Groups out_;
};

}  // namespace

Dxf_Font Dxf_Font_Of(int font, int style) {
    const auto found = std::find_if(fonts.begin(), fonts.end(), [font](const Named_Font& row) { return row.font == font; });
    const Named_Font& row = found == fonts.end() ? fonts.front() : *found;
    const bool bold = (style & style_bold) != 0, italic = (style & style_italic) != 0;
    Dxf_Font named;
    named.style = std::string("PLOT_") + row.style + (bold ? "_BOLD" : "") + (italic ? "_ITALIC" : "");
    named.file = bold && italic ? row.bold_italic : bold ? row.bold : italic ? row.italic : row.file;
    named.family = row.family;
    named.capitals = row.capitals;
    named.flags = row.pitch | (bold ? bold_flag : 0) | (italic ? italic_flag : 0);
    return named;
}

std::string Dxf_Linetype(Line_Style style) {
    for (const Named_Style& row : linetypes)
        if (row.style == style) return row.name;
    return "Continuous";
}

std::string Dxf_File(const Dxf_Drawing& drawing) { return Parts(drawing).Whole_File(); }

}  // namespace vntl
