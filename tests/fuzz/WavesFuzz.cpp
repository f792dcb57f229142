#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/RunTimeError.h"
#include "wavrik/TimeView.h"
#include "wavrik/WaveReaders.h"

namespace {

// What the window relies on.
void Check(const wavrik::Waves& waves) {
    wavrik::TimeView view;
    view.SetWidth(50);
    view.Show(waves.End);
    view.ZoomAt(20, 1.7);
    for (const wavrik::Signal& signal : waves.Signals) {
        wavrik::Time last = -1;
        for (const wavrik::Change& change : signal.Changes) {
            if (change.At <= last || change.At > waves.End || waves.TextOf(change.To).empty()) std::abort();
            last = change.At;
        }
        int at = 0;
        for (const wavrik::Span& span : wavrik::SpansOf(signal, view)) {
            if (span.From != at || span.To <= at || span.To > view.Width()) std::abort();
            at = span.To;
        }
        wavrik::MismatchesOf(signal, view);
    }
}

}  // namespace

// Any text is either refused with an error or makes waves that can be shown.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    // A short text can ask for millions of vectors, which is right and slow.
    if (data[0] % 3 == 0 && text.find("00000") != text.npos) return 0;
    try {
        switch (data[0] % 3) {
            case 0:
                Check(wavrik::ReadTests(text, wavrik::ReadFields(text)));
                break;
            case 1:
                Check(wavrik::ReadResults(text));
                break;
            default:
                Check(wavrik::ReadDump(text));
        }
    } catch (const base::RunTimeError&) {
    }
    return 0;
}
