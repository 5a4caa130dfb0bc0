// Instrument parameter files: any bytes give banks that have constants to use, or a message, in bounded memory.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "patterns/instrument_parameters.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::vector<vntl::Instrument_Bank> banks;
    const vntl::Status status = vntl::Read_Instrument_Parameters(text, banks);
    if (status.ok() == banks.empty() || banks.size() > 2000 || (status.ok() && !vntl::Is_Instrument_Parameters(text))) std::abort();
    if (status.failed && (status.message.empty() || status.message.size() > 150)) std::abort();
    for (const vntl::Instrument_Bank& bank : banks) {
        const double first = bank.flight ? bank.difC : bank.lam1;
        if (!(first > 0) || bank.number < 1 || bank.lam2 < 0 || (bank.lam2 == 0 && bank.ratio != 0)) std::abort();
        for (const double value : {bank.difA, bank.difB, bank.zero, bank.two_theta, bank.flight_path, bank.polarisation, bank.ratio})
            if (!std::isfinite(value)) std::abort();
    }
    return 0;
}
