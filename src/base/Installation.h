#pragma once

#include <initializer_list>
#include <string>

// Where the running program lies, and what is installed with it. Host paths.
namespace base {

// The program's own file, whatever link it was started by; empty if the system does not tell.
std::string ProgramFile();

// The first of these names, such as "Shared/Cplds.dl", that is there in a folder around the program, the
// nearest first: around the name that it was started under, then around its own file. Without any, for the
// message of who can't read it: the last name, in the folder around that of the program.
std::string InstalledFile(std::initializer_list<const char*> names);

}  // namespace base
