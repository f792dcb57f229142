#include "support/Doubles.h"

#include <utility>

#include "base/RunTimeError.h"
#include "base/modLib.h"

namespace doubles {
namespace {

template <typename T>
std::optional<T> Next(std::deque<std::optional<T>>& script) {
    if (script.empty()) return std::nullopt;
    auto value = script.front();
    script.pop_front();
    return value;
}

}  // namespace

std::string Joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) all += text + "|";
    return all;
}

platform::Answer Dialogs::MessageBox(const platform::MessageBoxRequest& request) {
    Shown.push_back(request);
    if (!Answers.empty()) {
        const auto answer = Answers.front();
        Answers.pop_front();
        return answer;
    }
    const bool asksYes =
        request.Choice == platform::Buttons::YesNo || request.Choice == platform::Buttons::YesNoCancel;
    return asksYes ? platform::Answer::Yes : platform::Answer::Ok;
}

std::string Dialogs::TakeTexts() {
    std::string all;
    for (const auto& box : std::exchange(Shown, {})) all += box.Text + "|";
    return all;
}

std::optional<std::string> Dialogs::InputBox(const std::string&, const std::string&, const std::string&) {
    return Next(Inputs);
}
std::optional<std::string> Dialogs::OpenFile(const platform::FileDialogRequest& request) {
    FileRequests.push_back(request);
    return Next(Files);
}
std::optional<std::string> Dialogs::SaveFile(const platform::FileDialogRequest& request) {
    FileRequests.push_back(request);
    return Next(Files);
}
std::optional<platform::FontChoice> Dialogs::ChooseFont(const platform::FontChoice&) { return Next(Fonts); }
std::optional<std::int32_t> Dialogs::ChooseColor(std::int32_t) { return Next(Colors); }

std::optional<int> Printers::Choose(int flags) {
    Asked.push_back(flags);
    return Next(Choices);
}

std::optional<Registry::Key> Registry::Open(std::string_view key, Access) {
    if (!CanOpen || Keys.find(std::string(key)) == Keys.end()) return std::nullopt;
    open_.emplace_back(key);
    return static_cast<Key>(open_.size()) - 1;
}

std::optional<Registry::Key> Registry::Create(std::string_view key, std::string_view className) {
    if (!CanCreate) return std::nullopt;
    Keys[std::string(key)];
    Classes[std::string(key)] = className;
    open_.emplace_back(key);
    return static_cast<Key>(open_.size()) - 1;
}

const Registry::Value* Registry::Find(Key key, std::string_view name) const {
    if (key < 0 || key >= static_cast<Key>(open_.size())) return nullptr;
    const auto values = Keys.find(open_[static_cast<std::size_t>(key)]);
    if (values == Keys.end()) return nullptr;
    const auto value = values->second.find(std::string(name));
    return value == values->second.end() ? nullptr : &value->second;
}

std::optional<std::string> Registry::QueryText(Key key, std::string_view name) const {
    const Value* value = Find(key, name);
    if (value == nullptr || !std::holds_alternative<std::string>(*value)) return std::nullopt;
    return std::get<std::string>(*value);
}

std::optional<std::uint32_t> Registry::QueryNumber(Key key, std::string_view name) const {
    const Value* value = Find(key, name);
    if (value == nullptr || !std::holds_alternative<std::uint32_t>(*value)) return std::nullopt;
    return std::get<std::uint32_t>(*value);
}

bool Registry::Set(Key key, std::string_view name, Value value) {
    if (key < 0 || key >= static_cast<Key>(open_.size())) return false;
    Written.emplace_back(name);
    Keys[open_[static_cast<std::size_t>(key)]][std::string(name)] = std::move(value);
    return true;
}
bool Registry::SetText(Key key, std::string_view name, std::string_view value) {
    return Set(key, name, std::string(value));
}
bool Registry::SetNumber(Key key, std::string_view name, std::uint32_t value) {
    return Set(key, name, value);
}

Processes::Id Processes::Start(const std::string& commandLine) {
    if (FailWith != 0) throw base::RunTimeError(FailWith);
    Started.push_back(commandLine);
    return static_cast<Id>(Started.size());
}

void ToolLink::SetLinkMode(platform::LinkMode mode) {
    isOpen_ = false;
    if (mode == platform::LinkMode::None) return;
    Log.push_back(topic_);
    if (!Servers.contains(topic_)) throw base::RunTimeError(base::errNoForeignApplication);
    isOpen_ = true;
}

void ToolLink::LinkExecute(const std::string& command) {
    Log.push_back(topic_ + " " + command);
    const int error = !isOpen_ ? platform::errLinkClosed : OnCommand ? OnCommand(command) : 0;
    if (error != 0) throw base::RunTimeError(error);
}

platform::WindowHandle ToolLibraries::Register(platform::MessageHandler handler) {
    handlers_[++nextHandle_] = std::move(handler);
    return nextHandle_;
}

platform::ToolLibraries::Module ToolLibraries::Load(const std::string& path) {
    Log.push_back("load " + path);
    if (!Missing.empty() && path.ends_with(Missing)) return 0;
    modules_.push_back(path.substr(path.rfind('\\') + 1));
    return static_cast<Module>(modules_.size());
}

void ToolLibraries::Free(Module module) {
    Log.push_back("free " + (module == 0 ? std::string("0") : modules_.at(module - 1)));
}

std::int32_t ToolLibraries::Call(Module module, const std::string& entry, std::span<std::uint8_t> record) {
    Log.push_back("call " + modules_.at(module - 1) + " " + entry);
    Record.assign(record.begin(), record.end());
    return OnCall ? OnCall(entry, record) : 0;
}

void ToolLibraries::Send(platform::WindowHandle to, const platform::ToolMessage& message) {
    const auto handler = handlers_.find(to);
    if (handler != handlers_.end()) handler->second(message);
}

bool System::AppActivate(const std::string& title) {
    Activated.push_back(title);
    return true;
}

struct Clock::Alarm {
    Milliseconds Due;
    Milliseconds Interval;
    std::function<void()> Action;
};

namespace {

struct HeldTimer : platform::Timer {
    std::shared_ptr<void> Alarm;  // it lives as long as this
};

}  // namespace

std::unique_ptr<platform::Timer> Clock::Every(Milliseconds interval, std::function<void()> action) {
    auto alarm = std::make_shared<Alarm>();
    alarm->Due = now_ + interval;
    alarm->Interval = interval;
    alarm->Action = std::move(action);
    alarms_.push_back(alarm);
    auto timer = std::make_unique<HeldTimer>();
    timer->Alarm = alarm;
    return timer;
}

void Clock::Advance(Milliseconds time) {
    const Milliseconds end = now_ + time;
    for (;;) {
        std::shared_ptr<Alarm> next;
        std::erase_if(alarms_, [](const auto& alarm) { return alarm.expired(); });
        for (const auto& each : alarms_) {
            const auto alarm = each.lock();
            if (alarm->Due <= end && (next == nullptr || alarm->Due < next->Due)) next = alarm;
        }
        if (next == nullptr) break;
        now_ = next->Due;
        next->Due += next->Interval;
        next->Action();
    }
    now_ = end;
}

}  // namespace doubles
