#include "session/Documents.h"

#include <algorithm>

#include "base/RunTimeError.h"

namespace session {

void Documents::Add(Document& document) {
    const std::string key = std::to_string(document.ID);
    for (const auto& member : members_) {
        if (member.first == key) throw base::RunTimeError(base::errDuplicateKey);
    }
    members_.emplace_back(key, &document);
}

void Documents::Remove(const std::string& key) {
    const auto member =
        std::find_if(members_.begin(), members_.end(), [&](const auto& m) { return m.first == key; });
    if (member == members_.end()) throw base::RunTimeError(base::errInvalidCall);
    members_.erase(member);
}

std::vector<Document*> Documents::All() const {
    std::vector<Document*> all;
    for (const auto& member : members_) all.push_back(member.second);
    return all;
}

}  // namespace session
