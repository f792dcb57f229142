#pragma once

#include <QTemporaryDir>
#include <functional>
#include <string>
#include <vector>

#include "drill/support/Eye.h"
#include "drill/support/Hand.h"
#include "drill/support/Screen.h"

namespace drill {

using Captions = std::vector<std::string>;  // of a menu and its entries: {"&File", "Save &As"}

// The installed program with an installation, a home and a display of its own, and the steps of a person who
// sits before it. A step waits until what it needs is there. If that does not come it throws Miss, which
// tells the steps so far, the open windows and where the picture of the screen lies. Captions have the "&" of
// their underlined letter; names of files are of the work folder.
class Desk {
  public:
    // Copies `installation`. Pictures are named `name` and go into the folder `pictures`.
    Desk(const std::string& installation, std::string pictures, std::string name);
    ~Desk();

    // What lies ready before the person comes.
    void Write(const std::string& name, const std::string& bytes);
    void UseKeyboard(const std::string& layout);  // "us" unless it is told before Start
    void SetSpeed(int millisecondsFromKeyToKey) { hand_.Pause = millisecondsFromKeyToKey; }
    void Start();
    void Launch(const Captions& files);      // by the launcher, with files to open
    void HandOver(const std::string& name);  // likewise, while the program runs
    void Launch();                           // no more than that: the main window may stay behind a box
    void FindMain();                         // and gives it its place
    void Kill();                             // as a crash ends it
    void Open(const std::string& name);      // by Ctrl+O, as fast as it goes
    void NewText();

    // Keys.
    void Key(const std::string& chords, int times = 1);  // "ctrl+a", "Down shift+End"
    void Type(const std::string& text);
    void TypeAtOnce(const std::string& text);                          // as fast as the display takes it
    void Menu(const Captions& path, const std::string& window = "");   // that it brings
    void KeyFor(const std::string& window, const std::string& chord);  // it brings the window
    void KeyAway(const std::string& window, const std::string& chord = "Escape");
    void RunAndWait(const std::string& chord = "F9");                     // until its window is acknowledged
    void AnswerFile(const std::string& title, const std::string& name);   // a file dialog
    void AnswerInput(const std::string& title, const std::string& text);  // a box with one field
    void AcknowledgeRun();                                                // "Compilation Results"

    // Mouse.
    void MenuByMouse(const Captions& path, const std::string& window = "");
    void Button(const std::string& picture);  // of the toolbar, once it is enabled: "copy"
    void Click(const std::string& text, In where = In::Captions);
    void ClickEach(const Captions& texts);  // one after another
    void ClickFor(const std::string& window, const std::string& text);
    void ClickAway(const std::string& window, const std::string& button = "OK");
    void DoubleClick(const std::string& text, In where = In::Document);
    void PopUp(const std::string& text, const std::string& entry, In where = In::Document);  // right button
    void CloseMain();                                                                        // by its cross
    void DragOver(const std::string& text, In where = In::Document);  // from the first letter to the last
    void Answer(const std::string& title, const std::string& text, const std::string& button);  // a box

    // Other programs.
    void SetClipboard(const std::string& text);

    // What must be, within the patience of a person.
    Window WaitWindow(const std::string& title);  // it has the keys
    void WaitGone(const std::string& title);
    void ExpectWindows(const std::vector<std::string>& titles);  // the oldest first
    void ExpectActive(const std::string& caption);               // a document: "Untitled 1"
    void ExpectSeen(const std::string& text, In where = In::Captions);
    void ExpectUnseen(const std::string& text, In where = In::Captions);
    void ExpectButton(const std::string& picture, bool isThere);
    void ExpectChecked(const Captions& path, bool isChecked);
    void ExpectFile(const std::string& name, const std::string& bytes);
    void ExpectPart(const std::string& name, const std::string& bytes);  // of a file that stands
    void ExpectNoFile(const std::string& name);
    void WaitFileEnding(const std::string& folder, const std::string& bytes);  // of some file there
    void ExpectClipboard(const std::string& text);
    void ExpectEnd();    // the program has ended by itself and without an error
    void ExpectAlive();  // a program that was started has not, unless it was expected
    void Require(bool holds, const std::string& what);

    void TakePicture(const std::string& name);
    std::string PathOf(const std::string& name) const;     // "/tmp/drill-x/A.TXT"
    std::string CaptionOf(const std::string& name) const;  // "C:\TMP\DRILL-X\A.TXT"
    std::string Read(const std::string& name) const;

  private:
    void Note(const std::string& step);
    void Settle();
    void WaitGone(const std::function<bool(const Window&)>& isIt, const std::string& what);
    void StartProgram(const std::string& program, const Captions& arguments);
    void OpenMenu(const Captions& path, bool byMouse);
    void ClickAt(const QPoint& at, int count = 1, int button = 1);
    void WaitMenus(std::size_t count);
    QRect Place(const Shape& shape, const std::string& what);
    QRect Place(const std::string& text, In where = In::Captions);
    std::vector<QRect> Places(const Shape& shape);
    QProcessEnvironment Environment() const;
    std::string Clipboard() const;
    bool HasTool() const;

    const std::string pictures_, name_;
    std::vector<std::string> steps_;
    QTemporaryDir folder_;
    Screen screen_;
    Hand hand_;
    QProcess program_;
    Window main_;
};

}  // namespace drill
