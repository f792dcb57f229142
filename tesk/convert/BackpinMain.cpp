#include "convert/Backpin.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>

#include "base/Text.h"
#include "convert/Failure.h"
#include "convert/Program.h"
#include "kernel/Paths.h"

namespace {

constexpr std::size_t MaxDocument = 64u << 20;

convert::FitPins Fit(const convert::BackpinCommand& command) {
    const std::string document = convert::FileOf(command.Design + ".DOC");
    const auto text = kernel::DiskFiles().Read(document, MaxDocument);
    if (!text) convert::Fail(0, document + " is not there: compile for a device, with its document");
    try {
        convert::FitPins fit = convert::ReadFitPins(*text);
        if (!base::EqualNoCase(command.Device, "virtual") && !base::EqualNoCase(command.Device, fit.Device))
            convert::Fail(0, "it is of a run for " + fit.Device + ", not " + command.Device);
        return fit;
    } catch (const convert::Failure& failure) {
        convert::Fail(0, document + ": " + failure.What);
    }
}

void Work(const convert::BackpinCommand& command) {
    const bool isFloat = command.What == convert::Annotation::Float;
    const convert::FitPins fit = isFloat ? convert::FitPins() : Fit(command);
    const std::string source = convert::FileOf(command.Design + ".PLD");
    kernel::DiskFiles files;
    const convert::Annotated result = convert::Annotate(files, source, command.What, fit);
    const std::string refusal = files.Write(source, result.Text);
    if (!refusal.empty()) convert::Fail(0, source + " is not written: " + refusal);
    for (const std::string& note : result.Notes) std::fprintf(stderr, "backpin: %s\n", note.c_str());
}

}  // namespace

int main(int count, char** values) {
    try {
        Work(convert::ReadBackpinCommand({values + 1, values + count}));
        return base::exitDone;
    } catch (const convert::Failure& failure) {
        const std::string line = failure.Line > 0 ? "line " + std::to_string(failure.Line) + ": " : "";
        std::fprintf(stderr, "backpin: %s%s\n", line.c_str(), failure.What.c_str());
        return base::exitErrors;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "backpin: internal error: %s\n", error.what());
        return base::exitFault;
    }
}
