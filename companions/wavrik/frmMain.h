#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <string>

#include "platform/PathMap.h"
#include "platform/Registry.h"
#include "platform/qt/LinkServer.h"
#include "wavrik/Companion.h"
#include "wavrik/WavePane.h"

class QFileDialog;

namespace wavrik {

// The window. It is never behind a box of its own: messages stand in a line above the waves, and the file
// dialog lets it go, so that it can be closed and told what to do at any time.
class frmMain : public QMainWindow {
    Q_OBJECT

  public:
    explicit frmMain(platform::PathMap paths = platform::PathMap());

    // Takes the place that the settings tell; without one the window opens where the desktop puts it.
    void Place(platform::Registry& settings);
    // Shows the file, or tells what is wrong with it and leaves all as it is.
    void Open(const std::string& path);
    // False if it is none that is known. A file is opened when the caller has its answer.
    bool Execute(const std::string& command);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void AddMenus();
    void AskForFile();
    void Take(const Placement& place);
    void ComeToFront();
    void ShowState();
    void Jump(Way way);
    void Tell(const std::string& message);

    const platform::PathMap paths_;
    std::string path_;
    WavePane* pane_;
    QLabel* lblMessage_;
    QLabel* lblFile_;
    QLabel* lblTime_;
    QLabel* lblMismatches_;
    QPointer<QFileDialog> dialog_;
    std::optional<QSize> frameSize_;  // until the window has it
    platform::qt::LinkServer server_;
};

}  // namespace wavrik
