// The user's answers: boxes, selectors and dialogs on the screen, for routines that ask through `Ask`.
#pragma once

#include "base/ask.hpp"

namespace vntl {

struct Configuration;

class Ask_User : public Ask {
public:
    explicit Ask_User(Configuration& config) : config_(config) {}

    Box_Answer Box(const Message_Box& box) override;
    std::vector<std::string> Select_Files(std::string_view title, std::string_view filter) override;
    std::optional<Format_Choice> Data_Format(const Format_Question& question) override;
    std::optional<bool> Efficiency_Correction() override;
    bool Constants_Of_File(Constants_Kind kind, Conversion_Constants& file, const Constants_Check& check) override;
    bool Constants_Of_Rows(Constants_Kind kind, std::vector<Conversion_Constants>& rows, const Constants_Check& check) override;
    bool Banks_Of_Rows(Instrument_Question& question, const Bank_Check& check) override;
    std::unique_ptr<Progress> Start_Progress(std::string_view title, int total) override;

private:
    Configuration& config_;  // keeps where files were last chosen
};

}  // namespace vntl
