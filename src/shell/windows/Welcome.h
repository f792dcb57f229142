#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

class QAbstractButton;
class QMdiArea;
class QShortcut;

namespace shell {

// What to do next, in the middle of the empty area behind the child windows: texts that are clicked, or
// reached by Tab from the active child and pressed, each with a word about it.
class Welcome : public QWidget {
  public:
    struct Row {
        std::string Command;  // of the main window
        std::string Caption;
        std::string Hint;
    };
    // `run` gets the command of the row that is clicked.
    Welcome(QMdiArea& area, const std::vector<Row>& rows, const std::function<void(const std::string&)>& run);

    void Offer(bool isEmpty);  // shows it, or hides it and leaves Tab to the children

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void AddTabKeys();
    void Step(int step);  // from text to text, and to the active child behind the last

    QMdiArea& area_;
    std::vector<QAbstractButton*> texts_;
    std::vector<QShortcut*> tabKeys_;
};

}  // namespace shell
