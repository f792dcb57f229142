#pragma once

#include <QTextBrowser>
#include <QTreeWidget>
#include <vector>

#include "platform/qt/Form.h"
#include "shell/HelpLibrary.h"

class QLineEdit;

namespace shell {

// "Korvane Help": the contents of all help files, or what a search in them found, beside the page that is
// read. It stays open beside the other windows; Escape closes it.
class frmHelp : public platform::qt::Form {
    Q_OBJECT

  public:
    explicit frmHelp(HelpLibrary library);

    const HelpLibrary& Library() const { return library_; }
    void ShowPage(HelpPlace place);  // among the contents
    void ShowSearch(const std::string& query);
    // To the front and open to input, also while a form is shown modally.
    void BringUp();

  private:
    void ListContents();
    void ListFound();
    void ReadFound();
    void Read(HelpPlace place);
    void Mark(HelpPlace place);
    void Display(HelpPlace place);
    void MarkWords();
    void FollowLink(const QUrl& link);
    void Back_Click();
    QTreeWidgetItem* Line(QTreeWidgetItem* parent, HelpPlace place, const QString& text);

    const HelpLibrary library_;
    std::vector<HelpPlace> read_;  // the last one is shown
    QLineEdit* txtFind;
    QTreeWidget* lstPages;
    QTextBrowser* txtPage;
    QPushButton* back_ = nullptr;
};

}  // namespace shell
