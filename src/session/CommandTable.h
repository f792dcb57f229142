#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/RunTimeError.h"

namespace session {

class Document;

// A command as its room hands it over: what a click on the menu entry does. An entry without a row stays
// disabled.
template <typename... Arguments>
struct Command {
    Command(std::string entry, std::function<void(Arguments...)> run, std::function<bool()> isEnabled = {})
        : Entry(std::move(entry)), Run(std::move(run)), IsEnabled(std::move(isEnabled)) {}

    std::string Entry;                      // control name
    std::function<void(Arguments...)> Run;  // the last argument: index in a control array, else -1
    std::function<bool()> IsEnabled;        // asked twice a second and before a menu opens; none: always
};

using MainCommand = Command<int>;                 // of the menu of frmMain
using DocumentCommand = Command<Document&, int>;  // of a document's menu

template <typename... Arguments>
class CommandTable {
  public:
    using Row = Command<Arguments...>;

    // A second row for an entry is error 457.
    void Add(std::vector<Row> rows) {
        for (Row& row : rows) {
            if (Find(row.Entry) != nullptr) throw base::RunTimeError(base::errDuplicateKey);
            rows_.push_back(std::move(row));
        }
    }

    const Row* Find(std::string_view entry) const {
        const auto row =
            std::find_if(rows_.begin(), rows_.end(), [&](const Row& r) { return r.Entry == entry; });
        return row == rows_.end() ? nullptr : &*row;
    }

    // There is such a command, and it can be called now.
    bool IsEnabled(std::string_view entry) const {
        const Row* row = Find(entry);
        return row != nullptr && (row->IsEnabled == nullptr || row->IsEnabled());
    }

    // Runs the command of an entry. Error 5 for an entry without one.
    void Run(const std::string& entry, Arguments... arguments) const {
        const Row* row = Find(entry);
        if (row == nullptr) throw base::RunTimeError(base::errInvalidCall, "No command " + entry);
        row->Run(arguments...);
    }

    const std::vector<Row>& Rows() const { return rows_; }

  private:
    std::vector<Row> rows_;
};

using MainCommands = CommandTable<int>;
using DocumentCommands = CommandTable<Document&, int>;

}  // namespace session
