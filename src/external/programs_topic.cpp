#include "external/programs_topic.hpp"

namespace vntl {

namespace {

Status Print_Programs(const Program_Suite& in_use, Words words, const Put_Line& put) {
    if (words.size() > 1) return Status::Fail("usage: print programs [WIND|LINU|MACO]");
    if (words.size() == 1 && !Has_Programs(words[0])) return Status::Fail("there is no system " + words[0]);
    const Program_Suite suite = words.empty() ? in_use : Suite_Of_System(words[0]);
    Json programs = Json::object();
    for (std::size_t role = 0; role < program_roles; ++role)
        programs[std::string(Name_Of(static_cast<Program_Role>(role)))] = suite.programs[role];
    put({{"programs", programs}});
    return Status::Done();
}

}  // namespace

Topic Programs_Topic(const Program_Suite& in_use) {
    return {"programs", [in_use](Words words, const Put_Line& put) { return Print_Programs(in_use, words, put); }};
}

}  // namespace vntl
