#pragma once

#include "session/App.h"

namespace aids {

// The macros in the rows of CustUtils: a "MACRO*" is undefined, a "MACRO:text" types that text, a
// "MACROKS:row" plays recorded input, which lives as long as the program runs.
class KeyMacros : public session::Macros {
  public:
    // Enters itself into the hall.
    explicit KeyMacros(session::App& app);
    ~KeyMacros() override;

    void SetMacro(session::Document& document, std::int16_t row) override;
    void RunMacro(session::Document& document, std::int16_t row) override;
    void ChooseMacro(session::Document& document, std::int16_t row) override;

  private:
    session::CustomUtility& Slot(std::int16_t row);
    session::cKSMacros& Recording();  // of CurrentMacro
    void TakeSelection(session::Document& document, session::CustomUtility& slot);
    void StartRecording(std::int16_t row);
    void StartPlayback(std::int16_t row);
    std::optional<session::cKSMacro> NextEvent();

    session::App& app_;
    std::int16_t CurrentMacro = 0;
    bool RecordingUnderWay = false;
    std::size_t PlaybackPosition = 0;  // from 1, of the next event
};

}  // namespace aids
