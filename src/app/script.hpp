// Session scripts: a text acts in a user's place, through the same windows.
//
//   # draw a zoomed pattern
//   open examples/corundum_cuka.xye
//   command 40137
//   print state
//   export picture.png
//
// One statement a line, `#` comments, double quotes around words with blanks; inside them \" and \\, and \n and \r for line breaks.
#pragma once

#include <deque>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/window.hpp"

namespace vntl {

struct Application;
class Recorder;

struct Statement {
    int line = 0;
    std::vector<std::string> words;
};

// The words of one line: none for a blank or comment line. Fails on a quote that is not closed.
Status Parse_Statement(std::string_view line, std::vector<std::string>& words);

// The line of these words, which Parse_Statement takes apart into them again.
std::string Statement_Line(const std::vector<std::string>& words);

std::string_view Answer_Name(Box_Answer answer);  // as `answer` takes it
std::optional<Box_Answer> Answer_Of_Name(std::string_view name);

// Runs the statements of a script, one each time that the innermost message loop has nothing to do, and answers boxes and selectors.
// Failures are named on `errors` with their line, and so is a session that contradicts itself after a statement; boxes and prints go to
// `output` as JSON lines.
class Script_Runner : public Stand_In {
public:
    Script_Runner(Application& app, std::string text, std::ostream& output, std::ostream& errors);
    ~Script_Runner() override;
    Script_Runner(const Script_Runner&) = delete;
    Script_Runner& operator=(const Script_Runner&) = delete;

    bool failed() const { return failed_; }  // some statement failed, or a box told of a file that could not be read or written

    // Whether every line of the file is a statement, a comment or blank. Comments alone are a script only where its name ends in .vns.
    static bool Is_Script(std::string_view text, std::string_view name);

    // Where a script is recorded: told of what changes the program without a message.
    void Record_To(Recorder& recorder) { recorder_ = &recorder; }

    Box_Answer Answer_Box(const Message_Box& box) override;
    std::vector<std::string> Answer_Select(Select_Kind kind) override;
    std::optional<std::string> Answer_Directory() override;
    std::optional<Colour> Answer_Colour() override;

private:
    using Words = std::vector<std::string>;
    struct Kind_Of_Statement;
    static const std::vector<Kind_Of_Statement>& Kinds();

    bool Step();          // runs the next statement; false when there is nothing left to do
    bool Step_In_Wait();  // the same while another program is waited for
    void At_End();
    void Run(const Statement& statement);
    void Fail(int line, const std::string& why);

    Status Open(const Words&);
    Status Files(const Words&);
    Status Directory(const Words&);
    Status Colour_Choice(const Words&);
    Status Command_Number(const Words&);
    Status Drop(const Words&);
    Status Set(const Words&);
    Status Cell(const Words&);
    Status Select_Item(const Words&);
    Status Press(const Words&);
    Status Front(const Words&);
    Status Answer(const Words&);
    Status Mouse(const Words&);
    Status Key(const Words&);
    Status Resize(const Words&);
    Status Timer(const Words&);
    Status Close(const Words&);
    Status Programs(const Words&);
    Status Pref(const Words&);
    Status Style(const Words&);
    Status Set_Apart(const Words&);
    Status Os(const Words&);
    Status Print(const Words&);
    Status Export(const Words&);
    Status Exit(const Words&);
    Status Quit(const Words&);
    Status List(const Words&);

    Status Post_Command(int id);
    Status Field_Number(const std::string& name, int& number) const;
    void Check_Session();
    std::string Absolute(const std::string& name) const;

    struct Waiting_Answer {
        int line;
        Box_Answer answer;
    };

    Application& app_;
    std::ostream& output_;
    std::ostream& errors_;
    Recorder* recorder_ = nullptr;
    std::string start_directory_;
    std::vector<std::string> lines_;
    std::size_t next_ = 0;
    int line_ = 0;       // of the statement that ran last
    int cancelled_ = 0;  // dialog that was told last that the script is over
    bool failed_ = false;
    std::deque<Waiting_Answer> answers_;
    std::deque<std::vector<std::string>> selections_;  // an empty one cancels
    std::deque<std::string> directories_;
    std::deque<Colour> colours_;
};

}  // namespace vntl
