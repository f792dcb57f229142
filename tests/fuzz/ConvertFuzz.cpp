#include <cstdint>
#include <cstdlib>
#include <string>

#include "convert/Backpin.h"
#include "convert/Converters.h"
#include "fuzz/OneFile.h"

namespace {

constexpr std::string_view cells =
    "CELL 00\nPINS 1 1A 2 1B 3 1Y ;\n1Y = !(1A & 1B) ;\n"
    "CELL 74\nPINS 1 D 2 C 3 Q 4 QN 5 E ;\nQ.D = D $ Q ;\nQ.CK = C ;\nQ.OE = E ;\nQN = !Q ;\n";

convert::Conversion Convert(int kind, std::string_view text) {
    switch (kind) {
        case 0:
            return convert::ConvertPla(text, "T");
        case 1:
            return convert::ConvertPalasm(text, "T");
        case 2:
            return convert::ConvertOntesk(text, "T");
        case 3:
            return convert::ConvertAhdl(text, "T");
        default:
            return convert::ConvertNetlist(text, "T", cells);
    }
}

}  // namespace

// Any text is refused or becomes a design that the compiler can read. A design keeps all but its pin numbers:
// floated twice it is the same, and a fit of nothing changes nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    try {
        if (data[0] % 7 == 5) {
            OneFile files(text);
            const std::string once = convert::Annotate(files, "T.PLD", convert::Annotation::Float, {}).Text;
            OneFile again(once);
            if (convert::Annotate(again, "T.PLD", convert::Annotation::Float, {}).Text != once) std::abort();
            if (convert::Annotate(files, "T.PLD", convert::Annotation::AssignAll, {}).Text != text)
                std::abort();
        } else if (data[0] % 7 == 6) {
            convert::ReadFitPins(text);
        } else if (!Parses(Convert(data[0] % 7, text).Text)) {
            std::abort();
        }
    } catch (const convert::Failure&) {
    }
    return 0;
}
