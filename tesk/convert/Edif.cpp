#include <algorithm>
#include <deque>

#include "base/Text.h"
#include "base/modLib.h"
#include "convert/Failure.h"
#include "convert/Netlist.h"

namespace convert {
namespace {

constexpr std::size_t MaxDepth = 64;

// An expression of the file: a word or string, or a list that begins with a word.
struct Node {
    std::string_view Atom;
    std::vector<const Node*> Kids;
    bool IsList = false;
    int Line = 0;

    bool Is(std::string_view word) const {
        return IsList && !Kids.empty() && base::EqualNoCase(Kids[0]->Atom, word);
    }
    // The kid in a place; a word of nothing if there is none.
    const Node& At(std::size_t i) const {
        static const Node none;
        return i < Kids.size() ? *Kids[i] : none;
    }
    const Node* Find(std::string_view word) const {
        for (const Node* kid : Kids)
            if (kid->Is(word)) return kid;
        return nullptr;
    }
};

class Tree {
  public:
    explicit Tree(std::string_view text) : text_(text) { Build(); }
    const Node& Root() const { return *root_; }

  private:
    Node& Add(std::string_view atom, bool isList) {
        Node& node = nodes_.emplace_back();
        node.Atom = atom;
        node.IsList = isList;
        node.Line = line_;
        if (!open_.empty()) open_.back()->Kids.push_back(&node);
        return node;
    }

    void Build() {
        while (at_ < text_.size() && (root_ == nullptr || !open_.empty())) Step();
        if (root_ == nullptr) Fail(0, "this is no EDIF");
        if (!open_.empty()) Fail(open_.back()->Line, "a list is never closed");
    }

    void Step() {
        const char c = text_[at_];
        if (c == '\n') ++line_;
        if (base::IsBlankChar(c) && (c & 0x80) == 0) {
            ++at_;
        } else if (c == '(') {
            if (open_.size() >= MaxDepth) Fail(line_, "lists are nested more than 64 deep");
            Node& node = Add({}, true);
            if (root_ == nullptr) root_ = &node;
            open_.push_back(&node);
            ++at_;
        } else if (root_ == nullptr) {
            Fail(line_, "this is no EDIF");
        } else if (c == ')') {
            open_.pop_back();
            ++at_;
        } else {
            Add(TakeAtom(), false);
        }
    }

    std::string_view TakeAtom() {
        const bool isText = text_[at_] == '"';
        std::size_t end = isText ? text_.find('"', at_ + 1) : text_.find_first_of(" \t\r\n()\"", at_);
        if (end == text_.npos && isText) Fail(line_, "a string is never closed");
        end = std::min(end, text_.size());
        const std::string_view atom = text_.substr(at_ + isText, end - at_ - isText);
        line_ += static_cast<int>(std::count(atom.begin(), atom.end(), '\n'));
        at_ = end + isText;
        return atom;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    int line_ = 1;
    std::deque<Node> nodes_;
    std::vector<Node*> open_;
    const Node* root_ = nullptr;
};

// A name as a word or as (rename word "shown"); words that would begin with a digit have "&" before them.
std::string IdOf(const Node& name) { return base::Upper(name.Is("rename") ? name.At(1).Atom : name.Atom); }
std::string ShownOf(const Node& name) {
    std::string_view shown = name.Is("rename") ? name.At(2).Atom : name.Atom;
    if (base::StartsWith(shown, "&")) shown.remove_prefix(1);
    return std::string(shown);
}

class Reader {
  public:
    explicit Reader(const Node& root) : root_(root) {}

    Netlist Read() {
        if (!root_.Is("edif")) Fail(root_.Line, "this is no EDIF");
        const Node* version = root_.Find("edifVersion");
        if (version == nullptr || version->At(1).Atom != "2" || version->At(2).Atom != "0")
            Fail(version == nullptr ? root_.Line : version->Line, "only EDIF 2 0 0 is taken");
        for (const Node* library : root_.Kids) {
            if (!library->Is("library") && !library->Is("external")) continue;
            for (const Node* cell : library->Kids)
                if (cell->Is("cell")) cells_[IdOf(cell->At(1))] = cell;
        }
        const Node& top = Top();
        netlist_.Name = ShownOf(top.At(1));
        ReadView(*top.Find("view"));
        return std::move(netlist_);
    }

  private:
    static const Node* ContentsOf(const Node& cell) {
        const Node* view = cell.Find("view");
        return view == nullptr ? nullptr : view->Find("contents");
    }

    // The cell that the design names, else the last one with contents.
    const Node& Top() const {
        const Node* top = nullptr;
        if (const Node* design = root_.Find("design");
            design != nullptr && design->Find("cellRef") != nullptr) {
            const auto at = cells_.find(IdOf(design->Find("cellRef")->At(1)));
            if (at != cells_.end()) top = at->second;
        } else {
            for (const auto& [id, cell] : cells_)
                if (ContentsOf(*cell) != nullptr && (top == nullptr || cell->Line > top->Line)) top = cell;
        }
        if (top == nullptr || ContentsOf(*top) == nullptr) Fail(root_.Line, "no cell has contents");
        return *top;
    }

    void ReadView(const Node& view) {
        if (const Node* interface = view.Find("interface"))
            for (const Node* port : interface->Kids)
                if (port->Is("port")) ports_[IdOf(port->At(1))] = ShownOf(port->At(1));
        const Node& contents = *view.Find("contents");
        for (const Node* item : contents.Kids)
            if (item->Is("instance")) ReadInstance(*item);
        for (const Node* item : contents.Kids) {
            if (item->Is("net"))
                ReadNet(*item);
            else if (item->Is("netBundle") || item->Is("page"))
                Fail(item->Line, std::string(item->At(0).Atom) + " is not taken");
        }
    }

    void ReadInstance(const Node& instance) {
        const Node* view = instance.Find("viewRef");
        const Node* reference = view == nullptr ? nullptr : view->Find("cellRef");
        if (reference == nullptr) Fail(instance.Line, "an instance without cellRef");
        const auto cell = cells_.find(IdOf(reference->At(1)));
        Part part;
        part.Reference = ShownOf(instance.At(1));
        part.Line = instance.Line;
        part.Type = ShownOf(cell == cells_.end() ? reference->At(1) : cell->second->At(1));
        if (cell != cells_.end() && ContentsOf(*cell->second) != nullptr)
            Fail(instance.Line,
                 "the cell " + Shown(part.Type) + " within the design has contents of its own");
        if (!parts_.emplace(IdOf(instance.At(1)), netlist_.Parts.size()).second)
            Fail(instance.Line, "a second instance " + Shown(part.Reference));
        partCells_.push_back(cell == cells_.end() ? nullptr : cell->second);
        netlist_.Parts.push_back(std::move(part));
    }

    // The names by which a cell shows its ports.
    using PortNames = std::map<std::string, std::string>;
    static PortNames PortsOf(const Node& cell) {
        PortNames names;
        const Node* view = cell.Find("view");
        const Node* interface = view == nullptr ? nullptr : view->Find("interface");
        if (interface == nullptr) return names;
        for (const Node* port : interface->Kids)
            if (port->Is("port")) names.emplace(IdOf(port->At(1)), base::Upper(ShownOf(port->At(1))));
        return names;
    }

    std::string PortName(const Node* cell, const std::string& id) {
        const auto [at, isNew] = portNames_.try_emplace(cell);
        if (isNew && cell != nullptr) at->second = PortsOf(*cell);
        const auto name = at->second.find(id);
        if (name != at->second.end()) return name->second;
        return base::StartsWith(id, "&") ? id.substr(1) : id;
    }

    void ReadNet(const Node& net) {
        const Node* joined = net.Find("joined");
        if (joined == nullptr) Fail(net.Line, "a net without joined");
        // A net at a port has the port's name, by which the board knows it.
        std::string name = ShownOf(net.At(1));
        for (const Node* reference : joined->Kids)
            if (reference->Is("portRef") && reference->Find("instanceRef") == nullptr) {
                const auto port = ports_.find(IdOf(reference->At(1)));
                if (port == ports_.end())
                    Fail(reference->Line, "the port " + Shown(reference->At(1).Atom) + " is not declared");
                name = port->second;
                netlist_.Ports.insert(name);
            }
        if (!nets_.insert(name).second) Fail(net.Line, "a second net " + Shown(name));
        for (const Node* reference : joined->Kids) Join(*reference, name);
    }

    void Join(const Node& reference, const std::string& net) {
        const Node* instance = reference.Find("instanceRef");
        if (!reference.Is("portRef") || instance == nullptr) return;
        if (reference.At(1).IsList) Fail(reference.Line, "members of arrays are not taken");
        const auto part = parts_.find(IdOf(instance->At(1)));
        if (part == parts_.end())
            Fail(reference.Line, "the instance " + Shown(instance->At(1).Atom) + " is not declared");
        const std::string pin = PortName(partCells_[part->second], IdOf(reference.At(1)));
        if (!netlist_.Parts[part->second].Nets.emplace(pin, net).second)
            Fail(reference.Line, Shown(pin) + " of " + Shown(instance->At(1).Atom) + " is in two nets");
    }

    const Node& root_;
    Netlist netlist_;
    std::map<std::string, const Node*> cells_;
    std::map<std::string, std::string> ports_;
    std::map<std::string, std::size_t> parts_;
    std::vector<const Node*> partCells_;
    std::map<const Node*, PortNames> portNames_;
    std::set<std::string> nets_;
};

}  // namespace

Netlist ReadEdif(std::string_view text) {
    const Tree tree(text);
    return Reader(tree.Root()).Read();
}

}  // namespace convert
