#pragma once

#include <string>
#include <utility>
#include <vector>

#include "session/Document.h"

namespace session {

// All open documents in the order of opening, keyed by ID as decimal text. Does not own the windows.
class Documents {
  public:
    void Add(Document& document);         // a key that is there already is error 457
    void Remove(const std::string& key);  // an unknown key is error 5
    std::size_t Count() const { return members_.size(); }

    // A copy of the members, safe against windows that close while a caller walks.
    std::vector<Document*> All() const;

  private:
    std::vector<std::pair<std::string, Document*>> members_;
};

}  // namespace session
