#pragma once

#include <initializer_list>
#include <string>

// Where the running program lies, and what is installed with it. Host paths.
namespace base {

// The program's own file, whatever link it was started by; empty if the system does not tell.
std::string ProgramFile();

// The first of these names, such as "Shared/Cplds.dl", that is there in the program's folder or in one around
// it, the nearest first. Without any, for the message of who can't read it: the last name, in the folder
// around the program's own.
std::string InstalledFile(std::initializer_list<const char*> names);

}  // namespace base
