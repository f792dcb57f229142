#pragma once

#include <QObject>

#include "session/App.h"

namespace shell {

// F1 in a form shows the topic of that form, and goes no further.
class HelpFilter : public QObject {
  public:
    explicit HelpFilter(session::App& app);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    session::App& app_;
};

}  // namespace shell
