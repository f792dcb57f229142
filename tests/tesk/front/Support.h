#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "front/Run.h"

// Compiles texts without a disk, and reads the .PLA that comes out.

class MemoryFiles : public front::Files {
  public:
    std::optional<std::string> Read(std::string_view path, std::size_t maxBytes) override;
    std::string Write(std::string_view path, std::string_view bytes) override;
    std::string Identity(std::string_view path) override { return std::string(path); }
    std::map<std::string, std::string> Texts;
};

struct Compiled {
    MemoryFiles Files;
    front::Listener Silent;
    std::unique_ptr<front::Run> Run;

    std::vector<std::string> Lines() const;  // of the message list, the header's warnings left out
    std::vector<std::string> Codes() const;  // "1201ta:7", number and line, in the same way
    std::string Text(const std::string& extension) const { return Files.Texts.at("T" + extension); }
};

// A file of the installation's data.
std::string DataText(const std::string& name);

// `body` gets a whole header in front of it (on one line: the body begins in line 2).
std::unique_ptr<Compiled> Compile(const std::string& body, const std::string& options = "bm1",
                                  const std::map<std::string, std::string>& others = {});
// A text as it is. The device library is the file "tesk.dl".
std::unique_ptr<Compiled> CompileWhole(const std::string& text, const std::string& options = "bm1",
                                       const std::map<std::string, std::string>& others = {});
// For a device of the library that is installed; the body begins in line 2.
std::unique_ptr<Compiled> CompileFor(const std::string& device, const std::string& body,
                                     const std::string& options);

// A Berkeley table, read anew from its text.
struct Table {
    explicit Table(const std::string& text);
    // '0', '1', or '-' for the output at a point; names that are not given are 0.
    char At(const std::string& output, const std::map<std::string, bool>& point) const;
    std::size_t Terms(const std::string& output) const;

    std::vector<std::string> Inputs;
    std::vector<std::string> Outputs;
    std::vector<std::pair<std::string, std::string>> Rows;

  private:
    std::size_t Column(const std::string& output) const;
};

// An output's values from 0 of its inputs on, as Column tells them; empty: there is no such output.
struct Way {
    std::string Output;
    std::vector<std::string> Inputs;
    std::string Values;
};
// What a design without errors computes.
void ExpectWays(const Compiled& done, const std::vector<Way>& ways);

// One character a value of the inputs, counted up from 0 with the first name as the most significant bit.
std::string Column(const Table& table, const std::string& output, const std::vector<std::string>& inputs);
