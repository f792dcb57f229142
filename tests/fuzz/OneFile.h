#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "front/Parser.h"
#include "front/Run.h"

// The design T.PLD, and no other file.
class OneFile : public front::Files {
  public:
    explicit OneFile(std::string text) : text_(std::move(text)) {}
    std::optional<std::string> Read(std::string_view path, std::size_t) override {
        return path == "T.PLD" ? std::optional(text_) : std::nullopt;
    }
    std::string Write(std::string_view, std::string_view) override { return {}; }
    std::string Identity(std::string_view path) override { return std::string(path); }

  private:
    std::string text_;
};

// Whether the compiler reads a design without a fault of syntax.
inline bool Parses(const std::string& text) {
    OneFile files(text);
    front::Listener silent;
    front::Run run(files, silent);
    run.Base = "T";
    if (!front::ExpandStage(run)) return false;
    front::Parse(run.Source, run.Said, run.Syntax);
    return run.Ok();
}
