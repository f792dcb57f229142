#include "drill/support/Desk.h"

#include <QDir>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace drill {
namespace {

namespace fs = std::filesystem;

constexpr auto lastSteps = 12;  // of a report
const QRect mainPlace(10, 30, 1000, 690);

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

std::string Joined(const std::vector<std::string>& parts, const char* between) {
    std::string text;
    for (const std::string& part : parts) text += (text.empty() ? "" : between) + part;
    return text;
}

// For a report: line ends and other signs without a picture are spelled out.
std::string Spelled(const std::string& bytes) {
    std::string text;
    for (const char c : bytes) {
        if (c == '\r' || c == '\n' || c == '\t')
            text += c == '\r' ? "\\r" : c == '\t' ? "\\t" : "\\n\n    ";
        else
            text += c;
    }
    return text;
}

std::string Differing(const std::string& wanted, const std::string& found) {
    return "\n  wanted:\n    " + Spelled(wanted) + "\n  found:\n    " + Spelled(found);
}

// The same as Within, for what is looked for on pictures.
template <class Condition>
bool WithinPictures(Condition holds) {
    constexpr unsigned long rest = 30;  // milliseconds from one to the next
    return Within(Patience, holds, rest);
}

}  // namespace

Desk::Desk(const std::string& installation, std::string pictures, std::string name)
    : pictures_(std::move(pictures)),
      name_(std::move(name)),
      folder_(QDir::tempPath() + "/drill-XXXXXX"),
      screen_(folder_.path().toStdString()),
      hand_(screen_.X()) {
    fs::create_directories(pictures_);
    fs::remove(pictures_ + "/" + name_ + ".png");
    fs::copy(installation, PathOf(".place"), fs::copy_options::recursive);
    fs::create_directories(PathOf(".home/run"));
    fs::permissions(PathOf(".home/run"), fs::perms::owner_all);
    UseKeyboard("us");
}

Desk::~Desk() {
    program_.kill();
    program_.waitForFinished();
}

std::string Desk::PathOf(const std::string& name) const {
    return folder_.filePath(name.c_str()).toStdString();
}

std::string Desk::CaptionOf(const std::string& name) const {
    std::string caption = "C:" + PathOf(name);
    std::replace(caption.begin(), caption.end(), '/', '\\');
    std::transform(caption.begin(), caption.end(), caption.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return caption;
}

std::string Desk::Read(const std::string& name) const {
    std::ifstream file(PathOf(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Desk::Write(const std::string& name, const std::string& bytes) {
    fs::create_directories(fs::path(PathOf(name)).parent_path());
    std::ofstream(PathOf(name), std::ios::binary) << bytes;
}

QProcessEnvironment Desk::Environment() const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString home = folder_.filePath(".home");
    const std::pair<const char*, QString> values[] = {
        {"DISPLAY", QString::fromStdString(screen_.Name())},
        {"QT_QPA_PLATFORM", "xcb"},
        {"LC_ALL", "C.UTF-8"},
        // The toolkit would start a bus and wait for services that nobody offers here.
        {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
        {"HOME", home},
        {"XDG_CONFIG_HOME", home + "/config"},
        {"XDG_STATE_HOME", home + "/state"},
        {"XDG_DATA_HOME", home + "/data"},
        {"XDG_RUNTIME_DIR", home + "/run"}};
    for (const auto& [name, value] : values) environment.insert(name, value);
    return environment;
}

void Desk::UseKeyboard(const std::string& layout) {
    QProcess tool;
    tool.setProcessEnvironment(Environment());
    tool.start("setxkbmap", {QString::fromStdString(layout)});
    Require(tool.waitForFinished() && tool.exitCode() == 0, "no keyboard " + layout);
}

void Desk::Start() {
    Launch();
    FindMain();
}

void Desk::Launch() { StartProgram("Korvane/Korvane", {}); }

void Desk::Launch(const Captions& files) { StartProgram("bin/korvane", files); }

void Desk::HandOver(const std::string& name) {
    Note("HandOver " + name);
    QProcess launcher;
    launcher.setProcessEnvironment(Environment());
    launcher.start(folder_.filePath(".place/bin/korvane"), {folder_.filePath(name.c_str())});
    Require(launcher.waitForFinished() && launcher.exitCode() == 0, "the file is not taken");
}

void Desk::StartProgram(const std::string& program, const Captions& arguments) {
    Note("Launch " + program);
    program_.setProcessEnvironment(Environment());
    program_.setWorkingDirectory(folder_.path());
    program_.setProcessChannelMode(QProcess::MergedChannels);
    program_.setStandardOutputFile(folder_.filePath("program.log"), QIODevice::Append);
    EndWithUs(program_);
    QStringList names;
    for (const std::string& argument : arguments) names << QString::fromStdString(argument);
    program_.start(folder_.filePath(".place/") + program.c_str(), names);
    Require(program_.waitForStarted(), "the program can't be started");
}

void Desk::FindMain() {
    main_ = WaitWindow("Korvane");
    Require(Within(Patience,
                   [&] {
                       screen_.Place(main_, mainPlace);
                       Settle();  // the program may have a place of its own in mind
                       return screen_.Active().Place.size() == mainPlace.size();
                   }),
            "the main window does not stay as large as it is made");
}

void Desk::Kill() {
    Note("Kill");
    program_.kill();
    program_.waitForFinished();
    main_ = {};
}

void Desk::ExpectEnd() {
    Require(program_.waitForFinished(std::chrono::milliseconds(Patience).count()),
            "the program does not end");
    Require(program_.exitStatus() == QProcess::NormalExit && program_.exitCode() == 0,
            "the program ended with " + std::to_string(program_.exitCode()) + "\n" + Read("program.log"));
    main_ = {};
}

void Desk::ExpectAlive() {
    if (main_.Id == 0) return;
    Require(!program_.waitForFinished(0) && program_.state() == QProcess::Running,
            "the program has ended\n" + Read("program.log"));
}

void Desk::Note(const std::string& step) { steps_.push_back(step); }

void Desk::Require(bool holds, const std::string& what) {
    if (holds) return;
    TakePicture(name_);
    std::string report = what + "\n  the screen: " + pictures_ + "/" + name_ + ".png\n  windows:";
    for (const Window& window : screen_.Windows()) report += " " + Quoted(window.Title);
    report += ", the keys go to " + Quoted(screen_.Active().Title) + "\n  steps so far: ";
    const auto first = steps_.size() > lastSteps ? steps_.end() - lastSteps : steps_.begin();
    throw Miss(report + Joined({first, steps_.end()}, "; "));
}

void Desk::TakePicture(const std::string& name) {
    screen_.Picture().save(QString::fromStdString(pictures_ + "/" + name + ".png"));
}

void Desk::Settle() { screen_.Settle(main_); }

Window Desk::WaitWindow(const std::string& title) {
    Window window;
    const bool came = Within(Patience, [&] {
        window = screen_.Active();
        return window.Id != 0 && window.Title == title;
    });
    Require(came, "the window " + Quoted(title) + " does not come");
    Settle();
    return window;
}

void Desk::WaitGone(const std::string& title) {
    WaitGone([&](const Window& window) { return window.Title == title; }, "the window " + Quoted(title));
}

// Until another window has the keys, if there is one.
void Desk::WaitGone(const std::function<bool(const Window&)>& isIt, const std::string& what) {
    const bool went = Within(Patience, [&] {
        const auto windows = screen_.Windows();
        if (std::any_of(windows.begin(), windows.end(), isIt)) return false;
        const Window active = screen_.Active();
        return windows.empty() || (active.Id != 0 && !isIt(active));
    });
    Require(went, what + " stays");
    Settle();
}

bool Desk::HasTool() const {
    for (const auto& process : fs::directory_iterator("/proc")) {
        std::ifstream file(process.path() / "stat");
        std::string id, name, state;
        qint64 parent = 0;
        if (file >> id >> name >> state >> parent && name == "(toolhost)" && parent == program_.processId())
            return true;
    }
    return false;
}

void Desk::ExpectFile(const std::string& name, const std::string& bytes) {
    Note("ExpectFile " + name);
    if (Within(Patience, [&] { return Read(name) == bytes; })) return;
    Require(false, "the file " + name + " is not as it should be" + Differing(bytes, Read(name)));
}

void Desk::ExpectPart(const std::string& name, const std::string& bytes) {
    Require(Read(name).find(bytes) != std::string::npos, Quoted(bytes) + " is not in\n" + Read(name));
}

// What begins with a dot has not got its name yet.
void Desk::WaitFileEnding(const std::string& folder, const std::string& bytes) {
    Note("WaitFileEnding " + folder);
    const auto ends = [&](const std::string& name) {
        return name[0] != '.' && Read(folder + "/" + name).ends_with(bytes);
    };
    const bool came = Within(Patience, [&] {
        if (!fs::exists(PathOf(folder))) return false;
        const fs::directory_iterator files(PathOf(folder));
        return std::any_of(begin(files), end(files),
                           [&](const auto& file) { return ends(file.path().filename().string()); });
    });
    Require(came, "no file in " + folder + " ends as it should");
}

void Desk::ExpectNoFile(const std::string& name) {
    Settle();
    Require(!fs::exists(PathOf(name)), "the file " + name + " should not be there");
}

std::string Desk::Clipboard() const {
    QProcess tool;
    tool.setProcessEnvironment(Environment());
    tool.start("xclip", {"-selection", "clipboard", "-out"});
    tool.waitForFinished();
    return tool.readAllStandardOutput().toStdString();
}

void Desk::ExpectClipboard(const std::string& text) {
    Note("ExpectClipboard");
    if (Within(Patience, [&] { return Clipboard() == text; })) return;
    Require(false, "the clipboard is not as it should be" + Differing(text, Clipboard()));
}

void Desk::SetClipboard(const std::string& text) {
    Note("SetClipboard");
    Settle();
    QProcess tool;
    tool.setProcessEnvironment(Environment());
    tool.setStandardOutputFile(QProcess::nullDevice());  // it stays behind to hand the text out
    tool.start("xclip", {"-selection", "clipboard", "-in"});
    tool.write(text.data(), static_cast<qint64>(text.size()));
    tool.closeWriteChannel();
    Require(tool.waitForFinished() && Within(Patience, [&] { return Clipboard() == text; }),
            "another program can't fill the clipboard");
    Settle();
}

void Desk::ExpectWindows(const std::vector<std::string>& titles) {
    const bool came = Within(Patience, [&] {
        std::vector<std::string> found;
        for (const Window& window : screen_.Windows()) found.push_back(window.Title);
        return found == titles;
    });
    Require(came, "other windows are open than " + Joined(titles, ", "));
}

void Desk::ExpectActive(const std::string& caption) {
    Note("ExpectActive " + Quoted(caption));
    Place(caption, In::Title);
}

void Desk::ExpectSeen(const std::string& text, In where) {
    Note("ExpectSeen " + Quoted(text));
    Place(text, where);
}

void Desk::ExpectUnseen(const std::string& text, In where) {
    Note("ExpectUnseen " + Quoted(text));
    Settle();
    const Shape shape = Shape::Text(text, where);
    Require(WithinPictures([&] { return Places(shape).empty(); }), Quoted(text) + " is still seen");
}

void Desk::ExpectButton(const std::string& picture, bool isThere) {
    Note("ExpectButton " + picture);
    Settle();
    const Shape shape = Shape::Button(picture);
    Require(WithinPictures([&] { return Places(shape).empty() != isThere; }),
            "the button " + picture + (isThere ? " is not seen" : " is seen"));
}

// In the innermost menu, or in the window that has the keys.
std::vector<QRect> Desk::Places(const Shape& shape) {
    const auto menus = screen_.Menus();
    return shape.FindIn(screen_.Picture(), menus.empty() ? screen_.Active().Place : menus.back().Place);
}

QRect Desk::Place(const Shape& shape, const std::string& what) {
    std::vector<QRect> places;
    Settle();
    Require(WithinPictures([&] { return !(places = Places(shape)).empty(); }), what + " is not seen");
    return places.front();
}

QRect Desk::Place(const std::string& text, In where) { return Place(Shape::Text(text, where), Quoted(text)); }

}  // namespace drill
