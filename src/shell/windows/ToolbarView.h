#pragma once

#include <QObject>
#include <array>
#include <functional>
#include <string>

#include "shell/ToolbarModel.h"

class QAction;
class QToolBar;

namespace shell {

// Shows the toolbar's state in the toolbar of frmMain.
class ToolbarView : public QObject {
  public:
    explicit ToolbarView(QToolBar& bar);

    void Show(const ToolbarState& state);  // touches only what has changed

    std::function<void(const std::string& key)> OnClick;
    std::function<void(const std::string& tip)> OnRightClick;  // on a button that shows

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ShowButton(std::size_t index, const ButtonState& state);

    QToolBar& bar_;
    std::array<QAction*, ButtonCount> buttons_{};
    ToolbarState shown_;
};

}  // namespace shell
