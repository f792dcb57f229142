#include <cstdio>
#include <exception>

#include "base/PosixFile.h"
#include "devpage/DevicePage.h"

// devpage LIBRARY COMPLEX: the page of the devices, to standard output.
int main(int argc, char** argv) {
    if (argc != 3) return 2;
    try {
        const auto library = fit::ReadLibrary(base::ReadWhole(argv[1], fit::LibraryLimits::FileBytes));
        for (const auto& message : library.Messages)
            std::fprintf(stderr, "%s:%d: %s\n", argv[1], message.At.Line, message.Text.c_str());
        if (!library.Ok()) return 1;
        const auto complex = cpld::ReadDevices(base::ReadWhole(argv[2], fit::LibraryLimits::FileBytes));
        std::fputs((devpage::DevicePage(library) + devpage::ComplexPage(complex)).c_str(), stdout);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
