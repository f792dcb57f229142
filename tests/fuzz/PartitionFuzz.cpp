#include <cstdint>
#include <string_view>

#include "zrx/Database.h"
#include "zrx/Document.h"
#include "zrx/SolutionFile.h"

// Any bytes as a .DOC (made whole and turned into a problem as far as it is sound), a device library, a list
// of solutions, an option string; the first byte tells which.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 4) {
        case 0: {
            zrx::Document document = zrx::ReadDocument(text);
            if (!document.Error.empty()) break;
            zrx::AddImplied(document.Design, nullptr);
            zrx::CompleteSums(document.Design);
            if (zrx::Split(document.Design, 3) > 0) zrx::CompleteSums(document.Design);
            zrx::Problem problem(document.Design, {{{}, 0, 0}});
            for (std::size_t item = 0; item < problem.Items(); ++item) problem.Place({item}, 0);
            break;
        }
        case 1:
            for (const auto& record : zrx::ReadDatabase(text).Records) zrx::LimitsOf(record);
            break;
        case 2:
            zrx::WriteSolutions(zrx::ReadSolutions(text));
            break;
        default:
            zrx::Options::Parse(text);
    }
    return 0;
}
