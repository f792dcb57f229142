#include "platform/Link.h"

#include "base/ScopeExit.h"

namespace platform {

void Converse(ToolLink& link, const std::string& topic, const std::string& command) {
    const base::ScopeExit end([&] { link.SetLinkMode(LinkMode::None); });
    link.SetLinkMode(LinkMode::None);
    link.SetLinkTopic(topic);
    link.SetLinkMode(LinkMode::Manual);
    link.LinkExecute(command);
}

}  // namespace platform
