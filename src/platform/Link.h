#pragma once

#include <string>

#include "base/RunTimeError.h"

namespace platform {

// Further errors of a link, beside 282 (nobody listens on the topic).
inline constexpr int errLinkRefused = 285;  // the tool does not carry the command out
inline constexpr int errLinkSilent = 286;   // no answer in time; the command may still be carried out
inline constexpr int errLinkClosed = 292;   // the tool has gone away, or there is no conversation

enum class LinkMode { None = 0, Manual = 2 };

// The client end of a conversation with a tool that runs. What fails throws base::RunTimeError; no call takes
// longer than a second.
class ToolLink {
  public:
    virtual ~ToolLink() = default;

    virtual void SetLinkTopic(const std::string& topic) = 0;  // service + "|" + topic: "Wavrik|frmMain"
    virtual void SetLinkMode(LinkMode mode) = 0;              // None ends the conversation, Manual begins one
    virtual void LinkExecute(const std::string& command) = 0;  // returns when the tool has accepted it
};

// A conversation of one command, which is over when this returns or throws.
void Converse(ToolLink& link, const std::string& topic, const std::string& command);

}  // namespace platform
