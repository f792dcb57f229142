#pragma once

#include <QObject>
#include <memory>
#include <string>

#include "session/App.h"

namespace shell {

class frmHelp;

// Help files and topics on the screen, in one window.
class Help : public QObject {
  public:
    explicit Help(session::App& app);
    ~Help() override;

    // "Contents" to "Zonerex" of the Help menu; not the list of the chip maker's files.
    void AddCommands();

    // The page of a topic in the application's help, or what a search for it finds.
    void ShowHelpTopic(const std::string& topic);

  protected:
    // F1 in a form shows the topic of that form, and goes no further.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    enum class Command { Contents = 3, Key = 257, PartialKey = 261 };

    void WinHelp(const std::string& file, Command command, const std::string& key = {});  // tells of errors
    void Open(const std::string& file, Command command, const std::string& key);
    void ShowApplicationHelp(Command command);
    frmHelp& Viewer();

    session::App& app_;
    std::unique_ptr<frmHelp> viewer_;  // from the first use on
};

}  // namespace shell
