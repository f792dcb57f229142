#include <cctype>
#include <sstream>

#include "drill/support/Desk.h"

// What the hands do.

namespace drill {
namespace {

// The key of the underlined letter.
std::string LetterOf(const std::string& caption) {
    const auto mark = caption.find('&');
    if (mark == caption.npos) throw Miss("no letter is underlined in \"" + caption + "\"");
    return std::string(1, static_cast<char>(std::tolower(static_cast<unsigned char>(caption.at(mark + 1)))));
}

}  // namespace

void Desk::Key(const std::string& chords, int times) {
    Note("Key " + chords + (times > 1 ? " x " + std::to_string(times) : ""));
    for (int i = 0; i < times; ++i) {
        std::istringstream each(chords);
        for (std::string chord; each >> chord;) hand_.Key(chord);
    }
}

void Desk::Type(const std::string& text) {
    Note("Type \"" + text + "\"");
    hand_.Type(text);
}

void Desk::TypeAtOnce(const std::string& text) {
    const int pause = std::exchange(hand_.Pause, 0);
    Type(text);
    hand_.Pause = pause;
}

void Desk::Open(const std::string& name) {
    KeyFor("Open", "ctrl+o");
    TypeAtOnce(PathOf(name) + "\n");
    WaitGone("Open");
    ExpectActive(CaptionOf(name));
}

void Desk::NewText() { Menu({"&File", "&New", "&Text File"}); }

void Desk::WaitMenus(std::size_t count) {
    Require(Within(Patience, [&] { return screen_.Menus().size() == count; }),
            count == 0 ? "the menu stays" : "the menu does not open");
    Settle();
}

// All but the last entry.
void Desk::OpenMenu(const Captions& path, bool byMouse) {
    for (std::size_t i = 0; i + 1 < path.size(); ++i) {
        const std::string& caption = path[i];
        if (byMouse) {
            ClickAt(Place(caption).center());
        } else {
            hand_.Key((i == 0 ? "alt+" : "") + LetterOf(caption));
        }
        WaitMenus(i + 1);
    }
}

void Desk::Menu(const Captions& path, const std::string& window) {
    Note("Menu " + path.front() + ", " + path.back());
    OpenMenu(path, false);
    Place(path.back());
    hand_.Key(LetterOf(path.back()));
    WaitMenus(0);
    if (!window.empty()) WaitWindow(window);
}

void Desk::MenuByMouse(const Captions& path, const std::string& window) {
    Note("MenuByMouse " + path.front() + ", " + path.back());
    OpenMenu(path, true);
    ClickAt(Place(path.back()).center());
    WaitMenus(0);
    if (!window.empty()) WaitWindow(window);
}

void Desk::KeyFor(const std::string& window, const std::string& chord) {
    Key(chord);
    WaitWindow(window);
}

void Desk::KeyAway(const std::string& window, const std::string& chord) {
    Key(chord);
    WaitGone(window);
}

void Desk::RunAndWait(const std::string& chord) {
    Key(chord);
    AcknowledgeRun();
}

void Desk::ExpectChecked(const Captions& path, bool isChecked) {
    Note("ExpectChecked " + path.back());
    OpenMenu(path, false);
    const QRect place = Place(path.back());
    const QImage box = screen_.Picture().copy(place.left() - 20, place.center().y() - 5, 20, 11);
    int dark = 0;
    for (int x = 0; x < box.width(); ++x)
        for (int y = 0; y < box.height(); ++y) dark += qGray(box.pixel(x, y)) < 100 ? 1 : 0;
    Require((dark > 8) == isChecked, path.back() + (isChecked ? " has no check mark" : " has a check mark"));
    Key("Escape", static_cast<int>(path.size()) - 1);
    WaitMenus(0);
    Key("Escape");
}

// The mouse then leaves the windows: no tip comes in the way.
void Desk::ClickAt(const QPoint& at, int count, int button) {
    hand_.Click(at, count, button);
    hand_.Move({0, 0});
}

void Desk::Button(const std::string& picture) {
    Note("Button " + picture);
    ClickAt(Place(Shape::Button(picture), "the enabled button " + picture).center());
}

void Desk::Click(const std::string& text, In where) {
    Note("Click " + text);
    ClickAt(Place(text, where).center());
}

void Desk::ClickEach(const Captions& texts) {
    for (const std::string& text : texts) Click(text);
}

void Desk::ClickFor(const std::string& window, const std::string& text) {
    Click(text);
    WaitWindow(window);
}

void Desk::ClickAway(const std::string& window, const std::string& button) {
    Click(button);
    WaitGone(window);
}

void Desk::CloseMain() {
    Note("CloseMain");
    constexpr QPoint cross(-8, -10);  // from the corner of the inside
    for (const Window& window : screen_.Windows())
        if (window.Id == main_.Id) ClickAt(window.Place.topRight() + cross);
}

void Desk::DoubleClick(const std::string& text, In where) {
    Note("DoubleClick " + text);
    ClickAt(Place(text, where).center(), 2);
}

void Desk::PopUp(const std::string& text, const std::string& entry, In where) {
    Note("PopUp " + text + ", " + entry);
    ClickAt(Place(text, where).center(), 1, 3);
    WaitMenus(1);
    ClickAt(Place(entry).center());
    WaitMenus(0);
}

void Desk::DragOver(const std::string& text, In where) {
    Note("DragOver " + text);
    const QRect place = Place(text, where);
    hand_.Drag({place.left(), place.center().y()}, {place.right() + 2, place.center().y()});
}

void Desk::Answer(const std::string& title, const std::string& text, const std::string& button) {
    WaitWindow(title);
    ExpectSeen(text);
    const Window box = screen_.Active();  // the one that says so: others may have the same title
    Click(button);
    WaitGone([&](const Window& window) { return window.Id == box.Id; }, "the box " + title);
}

// The tool's libraries are released afterwards; until then no window takes input.
void Desk::AcknowledgeRun() {
    WaitWindow("Compilation Results");
    ExpectSeen("OK");  // enabled: the run has ended
    KeyAway("Compilation Results", "Return");
    Require(Within(Patience, [&] { return !HasTool(); }), "the tool's process stays");
    Settle();
}

void Desk::AnswerFile(const std::string& title, const std::string& name) {
    WaitWindow(title);
    TypeAtOnce(name + "\n");
}

void Desk::AnswerInput(const std::string& title, const std::string& text) {
    WaitWindow(title);
    Type(text);
    KeyAway(title, "Return");
}

}  // namespace drill
