// What a routine below the windows may ask or tell the user in the middle of its work.
//
// The caller passes an `Ask`; dialogs answer it in the program, a script or a test answers it elsewhere. No routine below the
// toolkit opens a box in any other way.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"

namespace vntl {

enum class Box_Buttons { ok = 0, ok_cancel, retry_cancel, yes_no, yes_no_cancel, abort_retry_ignore };
enum class Box_Icon { none = 0, stop, question, exclamation, information };
enum class Box_Answer { ok, cancel, retry, yes, no, abort, ignore };

// Titles that boxes share.
inline constexpr std::string_view error_title = "Error Message";
inline constexpr std::string_view information_title = "Information Message";
inline constexpr std::string_view warning_title = "Warning Message";

struct Message_Box {
    Box_Buttons buttons = Box_Buttons::ok;
    Box_Icon icon = Box_Icon::none;
    int default_button = 1;  // 1, 2 or 3: the button that has the focus
    std::string text;        // lines separated by '\n'
    std::string title;
    bool of_file = false;  // tells that a file could not be read or written
};

// Which format files have whose names do not tell it, and what their first lines tell of it.
struct Format_Question {
    int proposed = 1;                     // format code that is selected when the dialog opens, 0: each file as it is recognised
    std::string looks_like = {};          // name of the format that all of them were recognised as, empty for none
    int banks = 1;                        // patterns in the files
    int ranges = 0;                       // of scans in the files, that may be merged; 0 none
    bool differ = false;                  // they were recognised as different formats: each may be read by its own
    std::vector<std::string> files = {};  // their names, with the format of each where they differ
};
struct Format_Choice {
    int code = 1;            // 0: each file as it is recognised
    bool all_banks = false;  // each bank becomes a profile
    bool merge = false;      // the ranges of each file become one profile, in counts a second
};

// What carries x of a file to d: lambda 1 and lambda 2, or dtt1 and dtt2.
enum class Constants_Kind { wavelength, time_of_flight };
struct Conversion_Constants {
    std::string file_name;
    float first = 0, second = 0;
    float told = 0;  // wavelength that the title or the name of the file tells, 0 for none: proposed where `first` is none
};

// What is wrong with constants that a user gave, empty when nothing is, and the rows, from 1, whose first constant it is.
struct Wrong_Constants {
    std::string text;
    std::vector<int> rows;
};
using Constants_Check = std::function<Wrong_Constants(std::span<const Conversion_Constants>)>;

// Which rows take the constants of which bank of an instrument file.
struct Instrument_Question {
    struct Bank {
        int number = 0;
        std::string radiation, constants, unused;  // as they are told: what its rows would have, and what nothing makes use of
    };
    struct Row {
        std::string file_name, title;
        int bank = 0;  // number, 0 for none
        bool chosen = true;
    };
    std::string file_name;
    std::vector<Bank> banks;
    std::vector<Row> rows;  // of the store
};

// What is wrong with such a choice, empty when nothing is, and the row, from 1, whose bank it is; 0 for none.
struct Wrong_Bank {
    std::string text;
    int row = 0;
};
using Bank_Check = std::function<Wrong_Bank(const Instrument_Question&)>;

// A work of many steps: shows how far it is, and hears when the user wants it to end.
class Progress {
public:
    virtual ~Progress() = default;
    // `done` steps are done and `what` is in hand; false when the work is to end here.
    virtual bool Go_On(int /*done*/, std::string_view /*what*/) { return true; }
    virtual bool Cancelled() const { return false; }  // the user wants it to end

    // Waits for a work in another thread, and lets the window live meanwhile. `ready_within` waits for that time at most.
    virtual void Wait(const std::function<bool(std::chrono::milliseconds)>& ready_within) {
        while (!ready_within(std::chrono::milliseconds(1000))) continue;
    }
};

class Ask {
public:
    virtual ~Ask() = default;

    virtual Box_Answer Box(const Message_Box& box) = 0;

    // The files that the user selects, full paths in the order of the selector; empty when the selector was cancelled.
    // `filter` is text of label and pattern pairs, each followed by a vertical bar.
    virtual std::vector<std::string> Select_Files(std::string_view title, std::string_view filter) = 0;

    // The dialog "Format of the data file"; nothing on cancel.
    virtual std::optional<Format_Choice> Data_Format(const Format_Question& question) = 0;

    // The dialog "Raw Data (Efficiency Correction)": whether counts are divided by the efficiencies of their detectors; nothing on cancel.
    virtual std::optional<bool> Efficiency_Correction() { return true; }

    // The constants of one file, and of all rows in a table, asked again until `check` finds nothing wrong; false, and nothing changes, on
    // cancel.
    virtual bool Constants_Of_File(Constants_Kind, Conversion_Constants& /*file*/, const Constants_Check& /*check*/) { return false; }
    virtual bool Constants_Of_Rows(Constants_Kind, std::vector<Conversion_Constants>& /*rows*/, const Constants_Check& /*check*/) {
        return false;
    }

    // The rows and banks of the question, asked again until `check` finds nothing wrong; false on cancel. Where nobody is asked it is what
    // the question proposes.
    virtual bool Banks_Of_Rows(Instrument_Question& question, const Bank_Check& check) {
        const Wrong_Bank wrong = check(question);
        if (!wrong.text.empty()) Error(wrong.text);
        return wrong.text.empty();
    }

    // A work of `total` steps begins; it ends with the object.
    virtual std::unique_ptr<Progress> Start_Progress(std::string_view /*title*/, int /*total*/) { return std::make_unique<Progress>(); }

    void Error(std::string text) { Box({Box_Buttons::ok, Box_Icon::exclamation, 1, std::move(text), std::string(error_title)}); }
    void Error(const Status& status) {
        Box({Box_Buttons::ok, Box_Icon::exclamation, 1, status.message, std::string(error_title), status.of_file});
    }
    void Information(std::string text) {
        Box({Box_Buttons::ok, Box_Icon::information, 1, std::move(text), std::string(information_title)});
    }
    void Warning(std::string text) { Box({Box_Buttons::ok, Box_Icon::exclamation, 1, std::move(text), std::string(warning_title)}); }
};

}  // namespace vntl
