#include "base/RunTimeError.h"

namespace base {

RunTimeError::RunTimeError(int number) : RunTimeError(number, StandardDescription(number)) {}

RunTimeError::RunTimeError(int number, const std::string& description)
    : std::runtime_error(description.empty() ? StandardDescription(number) : description), number_(number) {}

std::string StandardDescription(int number) {
    switch (number) {
        case errInvalidCall:
            return "Invalid procedure call or argument";
        case errOverflow:
            return "Overflow";
        case errSubscript:
            return "Subscript out of range";
        case errTypeMismatch:
            return "Type mismatch";
        case errFileNotFound:
            return "File not found";
        case errDiskFull:
            return "Disk full";
        case errPermissionDenied:
            return "Permission denied";
        case errPathFileAccess:
            return "Path/File access error";
        case errPathNotFound:
            return "Path not found";
        case errNoForeignApplication:
            return "No foreign application responded to a DDE initiate";
        case errCancelled:
            return "Cancel was selected.";
        case errDuplicateKey:
            return "This key is already associated with an element of this collection";
        case errPrinter:
            return "Printer error";
        default:
            return "Application-defined or object-defined error";
    }
}

}  // namespace base
