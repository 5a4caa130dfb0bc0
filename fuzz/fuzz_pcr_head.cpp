// Heads of control files: any bytes tell a kind of job or a message, and what stands far behind does not count.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "external/refinement_job.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    bool needs = true, with_more = true;
    const vntl::Status status = vntl::Needs_Data(text, needs);
    if (status.failed == status.message.empty()) std::abort();
    if (text.find("!Job") == text.npos && text.find("NPATT") == text.npos && text.find('!') == text.npos && status.ok() && !needs)
        std::abort();
    const std::string longer = text + "\n1\n2\n3\n4\n5\n6\n7\n!Job\n2\n";
    if (status.ok() && (vntl::Needs_Data(longer, with_more).failed || with_more != needs)) std::abort();
    const vntl::Run_Names names = vntl::Names_Of_Run('/' + text);
    if (names.base.find('/') != names.base.npos || names.directory.empty()) std::abort();
    if (!names.Control_File().ends_with(names.base + ".pcr")) std::abort();
    return 0;
}
