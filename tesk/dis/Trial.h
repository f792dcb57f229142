#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "front/Run.h"

namespace dis {

// A text compiled in memory, without outputs.
class Trial {
  public:
    // `keep`: exclusive ors of the equations stay such in the rows.
    Trial(std::string_view text, std::string_view library, std::string_view complexLibrary = {},
          bool keep = false);
    ~Trial();

    bool Analyse();             // names and equations; false if there are errors
    const fit::Fit* Compile();  // all the way; null if there are errors
    std::string FirstError() const;
    const front::Design& Of() { return run_->Result(); }

  private:
    class Texts;
    std::unique_ptr<Texts> texts_;
    front::Listener silent_;
    std::unique_ptr<front::Run> run_;
};

}  // namespace dis
