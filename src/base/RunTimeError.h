#pragma once

#include <stdexcept>
#include <string>

namespace base {

// The numbers that handlers of this system test, or that it raises itself.
enum ErrorNumber : int {
    errInvalidCall = 5,
    errOverflow = 6,
    errSubscript = 9,
    errTypeMismatch = 13,
    errFileNotFound = 53,
    errDiskFull = 61,
    errPermissionDenied = 70,
    errPathFileAccess = 75,
    errPathNotFound = 76,
    errNoForeignApplication = 282,
    errCancelled = 32755,  // a file, font or printer dialog with cancel as error
    errDuplicateKey = 457,
    errPrinter = 482,
};

// The one error idiom: an operation that can't go on throws this. A command that sets a trap catches it;
// what nobody traps ends where the toolkit called, and `Description` is shown.
class RunTimeError : public std::runtime_error {
  public:
    explicit RunTimeError(int number);  // with the standard description of the number
    RunTimeError(int number, const std::string& description);

    int Number() const { return number_; }
    const char* Description() const { return what(); }

  private:
    int number_;
};

// The standard description, such as "Overflow" for 6. Never empty.
std::string StandardDescription(int number);

}  // namespace base
