#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "convert/Formula.h"

// The design text that the converters write.
namespace convert {

// Gives each foreign name one that the compiler takes: letters, digits and "_", at most 31, no word of the
// language; what differs stays different, in lists with weights by index, too.
class NameMaker {
  public:
    // The name for what `key` identifies, made from `wanted` when it is asked for first.
    const std::string& Of(const std::string& key, std::string_view wanted);
    const std::string& Of(const std::string& key) { return Of(key, key); }

  private:
    bool Claim(const std::string& name);

    std::map<std::string, std::string> names_;
    std::set<std::string> taken_;
    std::map<std::string, int> tried_;
};

constexpr int MaxPin = 1024;

struct Pin {
    std::string Name;
    int Number = 0;  // 0: the fitter chooses
    bool ActiveLow = false;
};

struct PldFile {
    std::string Name, Partno, Date, Revision, Designer, Company, Device = "virtual";
    std::string Origin;  // one line for the comment at the head
    std::vector<Pin> Pins;
    std::vector<std::string> Nodes;
    std::string Body;

    // Throws Failure for more than the compiler takes.
    void AddEquation(const std::string& target, const Formula& value);
    std::string Text() const;
};

// The mnemonic of a part as its maker spells it, "virtual" if the device library has nothing like it.
std::string DeviceOf(std::string_view part);

}  // namespace convert
