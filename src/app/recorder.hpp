// Writes down what the user does as a session script, statement by statement, so that nothing is lost when the program ends badly.
#pragma once

#include <string>
#include <vector>

#include "base/status.hpp"
#include "base/write_file.hpp"
#include "toolkit/window.hpp"

namespace vntl {

struct Application;

inline constexpr std::size_t max_script_size = 64u << 20;

// Whether a recording may stand there: not over one of the files that are to be read, nor over anything but another session script.
Status May_Record(const std::string& file, const std::vector<std::string>& sources);

class Recorder : public Witness {
public:
    explicit Recorder(Application& app) : app_(app) {}
    ~Recorder() override;
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    Status Open(const std::string& file);
    bool failed() const { return failed_; }             // some write failed, which was told
    void Begin(const std::vector<std::string>& files);  // the window stands; `files` are those of the command line

    void Saw_Message(const Message& message) override;
    void Saw_Field(int dialog, int field, const std::string& value) override;
    void Saw_Cell(int dialog, int field, int column, int row, const std::string& value) override;
    void Saw_Item(int dialog, int field, const std::string& path) override;
    void Saw_Front(int window) override;
    void Saw_Answer(const Message_Box& box, Box_Answer answer) override;
    void Saw_Files(const std::vector<std::string>& files) override;
    void Saw_Directory(const std::optional<std::string>& directory) override;
    void Saw_Colour(const std::optional<Colour>& colour) override;
    void Saw_Preference(const std::string& name, const std::string& value) { Statement({"pref", name, value}); }
    void Saw_Statement(const std::vector<std::string>& words) { Statement(words); }  // of a script, which no message tells

private:
    using Words = std::vector<std::string>;
    void Statement(Words words, const std::string& key = {});
    void Answer(const Words& words);                        // stands before the statement that led to the question
    void Replaceable(const std::string& key, Words words);  // takes the place of the statement before it, if that has the same key
    void Mouse(const Message& message);
    void List(const Message& message);
    void Put_Waiting();  // what waits is on disk too, and is written over when more is known of it
    void Settle();

    Application& app_;
    Growing_File file_;
    std::size_t settled_ = 0;       // the end of what is written for good
    std::string kept_, unsettled_;  // statements behind it that wait for room on the disk; with those that may still change
    std::vector<std::string> answers_;
    std::string waiting_, waiting_key_;  // the last statement, as long as answers to its questions may come
    bool on_disk_ = true, failed_ = false;
    bool button_down_ = false;
};

}  // namespace vntl
