#include "project/ProjectTree.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>
#include <unordered_set>

#include "base/Text.h"
#include "base/modLib.h"

namespace project {
namespace {

using namespace std::string_view_literals;

constexpr std::array sources = {"PLD"sv, "SI"sv, "VHD"sv};
constexpr std::array simulatorFiles = {"SO"sv, "WO"sv, "SIM"sv};  // hang below SI

template <typename Table>
bool Has(const Table& table, std::string_view extension) {
    return std::find(table.begin(), table.end(), extension) != table.end();
}

bool BeginsWith(std::string_view name, std::string_view head) {
    return name.size() >= head.size() && base::EqualNoCase(name.substr(0, head.size()), head);
}

class Reader {
  public:
    Reader(const platform::FileSystem& files, const std::string& design) {
        tree_.push_back({.Key = "r", .Text = design, .Image = imageSource});
        if (design.empty()) return;
        head_ = design.substr(design.find_last_of("\\/") + 1) + ".";
        names_ = files.List(design + ".*");
        // A "*" or "?" in a design's name also brings the files of others; a host may leave the point out.
        std::erase_if(names_, [&](const std::string& name) { return !BeginsWith(name, head_); });
    }

    ProjectTree Read() {
        for (const std::string_view extension : sources) AddSource(extension);
        for (const std::string& name : names_) AddFile(name);
        return std::move(tree_);
    }

  private:
    // Of several names the exact one, else the first in the folder's order.
    void AddSource(std::string_view extension) {
        const std::string wanted = head_ + std::string(extension);
        const auto named = [&](auto equal) {
            return std::find_if(names_.begin(), names_.end(),
                                [&](const std::string& name) { return equal(name, wanted); });
        };
        auto name = named(std::equal_to<>());
        if (name == names_.end()) name = named(base::EqualNoCase);
        if (name == names_.end()) return;
        tree_.push_back({.Key = std::string(extension), .Text = *name, .Image = imageSource});
    }

    // Kept: extensions count as the disk spells them. A source in lower case is shown a second time, as a
    // file.
    void AddFile(const std::string& name) {
        const std::string_view extension = std::string_view(name).substr(name.rfind('.') + 1);
        if (Has(sources, extension)) return;
        const std::size_t parent = NodeOf(Has(simulatorFiles, extension) ? "SI" : "PLD");
        if (parent == 0) return;
        // With further points in the name the key is more than the extension: it must lead to this file.
        // Names that only differ in the case of the design's own name lead to one file and make one node.
        std::string key = name.substr(head_.size());
        if (!keys_.insert(key).second) return;
        tree_.push_back({.Key = std::move(key), .Text = name, .Image = imageFile, .Parent = parent});
    }

    // A source's node, 0 if there is none.
    std::size_t NodeOf(std::string_view source) const {
        for (std::size_t i = 1; i < tree_.size() && i <= sources.size(); ++i) {
            if (tree_[i].Parent == 0 && tree_[i].Key == source) return i;
        }
        return 0;
    }

    ProjectTree tree_;
    std::string head_;  // of the files' names
    std::vector<std::string> names_;
    std::unordered_set<std::string> keys_;
};

}  // namespace

ProjectTree ReadProjectTree(const platform::FileSystem& files, const std::string& design) {
    return Reader(files, design).Read();
}

std::string ProjectCaption(const std::string& design) { return "PROJECT: " + base::StripExtension(design); }

std::string ProjectFileOf(const ProjectTree& tree, std::size_t node) {
    return node == 0 ? "" : tree.at(0).Text + "." + tree.at(node).Key;
}

}  // namespace project
