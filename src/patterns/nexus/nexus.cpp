#include "patterns/nexus/nexus.hpp"

#include <chrono>

#include "base/program_answer.hpp"

namespace vntl {

bool Is_Nexus(std::string_view head) {
    using namespace std::string_view_literals;
    constexpr std::string_view signature = "\x89HDF\r\n\x1A\n"sv;
    for (const std::size_t place : {0, 512, 1024, 2048})
        if (head.size() >= place + signature.size() && head.substr(place, signature.size()) == signature) return true;
    return false;
}

Status Read_Nexus(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    constexpr std::chrono::seconds patience{20};
    if (!Is_Nexus(bytes)) return Status::Fail("This is no NeXus file: the signature of HDF5 is missing");
    const std::string program = Own_Program("vantrelo-nexus");
    if (program.empty()) return Status::Fail("The reader of NeXus files, vantrelo-nexus, is not installed beside the program");
    Program_Answer answer;
    switch (answer.Ask(program, bytes, patience)) {
        case Answer_End::answered:
            return Read_Nexus_Stream(answer.Bytes(), patterns, notes);
        case Answer_End::not_started:
            return Status::Fail("The reader of NeXus files, vantrelo-nexus, cannot be started");
        case Answer_End::too_late:
            return Status::Fail("Reading this HDF5 file took longer than 20 seconds and was given up");
        case Answer_End::broke_off:
            break;
    }
    return Status::Fail("This HDF5 file is damaged or too large: the library could not read it to its end");
}

}  // namespace vntl
