#include "dis/Trial.h"

#include "front/Complex.h"

namespace dis {
namespace {

constexpr std::string_view kBase = "design";
constexpr std::string_view kLibrary = "library";

}  // namespace

class Trial::Texts : public front::Files {
  public:
    Texts(std::string_view design, std::string_view library, std::string_view complexLibrary)
        : design_(design), library_(library), complexLibrary_(complexLibrary) {}

    std::optional<std::string> Read(std::string_view path, std::size_t maxBytes) override {
        const bool isComplex = path == front::ComplexLibrary(kLibrary);
        const auto& text = isComplex ? complexLibrary_ : path == kLibrary ? library_ : design_;
        const bool known = isComplex || path == kLibrary || path == std::string(kBase) + ".PLD";
        return known && text.size() <= maxBytes ? std::optional(text) : std::nullopt;
    }
    std::string Write(std::string_view, std::string_view) override { return {}; }
    std::string Identity(std::string_view path) override { return std::string(path); }

  private:
    std::string design_;
    std::string library_;
    std::string complexLibrary_;
};

Trial::Trial(std::string_view text, std::string_view library, std::string_view complexLibrary, bool keep)
    : texts_(std::make_unique<Texts>(text, library, complexLibrary)),
      run_(std::make_unique<front::Run>(*texts_, silent_)) {
    run_->Base = kBase;
    run_->Device = "&";
    run_->Library = kLibrary;
    run_->Options = front::Options::Parse(keep ? "m4kx" : "m4");
}

Trial::~Trial() = default;

bool Trial::Analyse() { return ExpandStage(*run_) && AnalyseStage(*run_) && run_->Ok(); }

const fit::Fit* Trial::Compile() {
    const bool good = Analyse() && BuildStage(*run_) && MinimiseStage(*run_) && WriteStage(*run_);
    return good && run_->Ok() && run_->Fit ? &run_->Fit->Result : nullptr;
}

std::string Trial::FirstError() const {
    for (const auto& message : run_->Said.Messages())
        if (message.Level == model::Severity::Error) return run_->Said.ListLine(message);
    return {};
}

}  // namespace dis
