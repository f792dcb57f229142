#include "platform/qt/ToolHost.h"

#include <unistd.h>

#include <QCoreApplication>
#include <algorithm>
#include <chrono>

#include "base/RunTimeError.h"
#include "platform/qt/ToolWatch.h"

namespace platform::qt {
namespace {

using std::chrono::steady_clock;
using toolhost::Channel;
using toolhost::Frame;
using toolhost::FrameKind;
using toolhost::Pack;

constexpr Clock::Milliseconds paintInterval{30};
constexpr Clock::Milliseconds noLimit{0};
constexpr Clock::Milliseconds freeLimit{10'000};

// For the length of a request: no other may be made meanwhile, such as by a timer.
class BusyScope {
  public:
    explicit BusyScope(bool& busy) : busy_(busy) { busy_ = true; }
    ~BusyScope() { busy_ = false; }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

  private:
    bool& busy_;
};

std::string WithExtension(const std::string& path) {
    const auto name = path.find_last_of("\\/") + 1;
    return path.find('.', name) == path.npos ? path + ".dll" : path;
}

}  // namespace

ToolHost::ToolHost(const Clock& clock, PathMap paths, std::string program, std::uint64_t memory)
    : clock_(clock), paths_(std::move(paths)), program_(std::move(program)), memory_(memory) {}

ToolHost::~ToolHost() = default;

std::string ToolHost::ProgramBeside() {
    return QCoreApplication::applicationDirPath().toStdString() + "/toolhost";
}

std::uint64_t ToolHost::HalfOfTheMachine() {
    return static_cast<std::uint64_t>(::sysconf(_SC_PHYS_PAGES)) *
           static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE)) / 2;
}

WindowHandle ToolHost::Register(MessageHandler handler) {
    handlers_[++nextHandle_] = std::move(handler);
    return nextHandle_;
}

void ToolHost::Unregister(WindowHandle handle) { handlers_.erase(handle); }

ToolLibraries::Module ToolHost::Load(const std::string& path) {
    if (busy_) return 0;
    const BusyScope busy(busy_);
    try {
        if (!child_) child_ = std::make_unique<ToolHostChild>(program_, memory_);
        const Module module = ++nextModule_;
        const Frame answer =
            Ask(FrameKind::Load, {Pack({module}), paths_.ToHost(WithExtension(path))}, noLimit);
        if (toolhost::Unpacker(answer.Payload).Number() != 0) {
            loaded_.insert(module);
            return module;
        }
    } catch (const base::RunTimeError&) {
        // A library that takes the host along while it loads is one that can't be loaded.
    }
    if (loaded_.empty()) EndChild();
    return 0;
}

void ToolHost::Free(Module module) {
    if (busy_ || loaded_.erase(module) == 0) return;
    const BusyScope busy(busy_);
    try {
        Ask(FrameKind::Free, {Pack({module})}, freeLimit);
    } catch (const base::RunTimeError&) {
        // Gone is freed.
    }
    if (loaded_.empty()) EndChild();
}

std::int32_t ToolHost::Call(Module module, const std::string& entry, std::span<std::uint8_t> record) {
    if (busy_) throw base::RunTimeError(base::errPermissionDenied);
    if (record.size() > toolhost::MaxRecordSize) throw base::RunTimeError(base::errInvalidCall);
    const bool isLoaded = loaded_.contains(module);
    const BusyScope busy(busy_);
    handlerError_ = nullptr;
    Frame answer{.Kind = FrameKind::NoEntry, .Payload = {}};
    if (isLoaded) {
        answer = Ask(FrameKind::Call,
                     {Pack({module, static_cast<std::uint32_t>(entry.size())}),
                      entry,
                      {reinterpret_cast<const char*>(record.data()), record.size()}},
                     noLimit);
    }
    if (answer.Kind != FrameKind::Returned) {
        throw base::RunTimeError(errNoEntryPoint, "The tool library has no entry point " + entry + ".");
    }
    toolhost::Unpacker result(answer.Payload);
    const auto value = static_cast<std::int32_t>(result.Number());
    if (result.Number() == 0) Fail("it wrote outside its record");
    std::copy_n(result.Rest().begin(), std::min(result.Rest().size(), record.size()), record.begin());
    if (handlerError_) std::rethrow_exception(std::exchange(handlerError_, nullptr));
    return value;
}

Frame ToolHost::Ask(FrameKind kind, std::initializer_list<std::string_view> parts, Milliseconds limit) {
    ToolWatch watch(clock_);
    child_->Send(kind, parts);  // a line that is broken shows when the answer is waited for
    return Await(watch, limit);
}

// The answer to what was asked. Messages that come before it are delivered, and the windows are painted
// about every paintInterval, be there messages or none.
Frame ToolHost::Await(ToolWatch& watch, Milliseconds limit) {
    auto lastPaint = steady_clock::now();
    Frame frame;
    for (;;) {
        const auto state = child_->Receive(frame, static_cast<int>(paintInterval.count()));
        if (state == Channel::State::Closed) Fail(child_->End());
        if (state == Channel::State::Ready) {
            if (frame.Kind != FrameKind::Message) return frame;
            Deliver(frame);
            watch.Heard();
        }
        if (limit != noLimit && watch.Silence() >= limit) Fail("no answer");
        if (steady_clock::now() - lastPaint < paintInterval) continue;
        if (!watch.GoOn()) Fail("it was stopped");
        lastPaint = steady_clock::now();
    }
}

void ToolHost::Deliver(const Frame& frame) {
    toolhost::Unpacker fields(frame.Payload);
    const auto found = handlers_.find(fields.Number());
    ToolMessage message;
    message.Number = fields.Number();
    const std::size_t firstSize = fields.Number();
    const std::size_t secondSize = fields.Number();
    message.First = fields.Text(firstSize);
    message.Second = fields.Text(secondSize);
    if (found != handlers_.end()) {
        const MessageHandler handler = found->second;  // a copy: it may unregister itself
        try {
            handler(message);
        } catch (...) {
            if (!handlerError_) handlerError_ = std::current_exception();
        }
    }
    child_->Send(FrameKind::Acknowledge, {});
}

void ToolHost::Fail(const std::string& how) {
    child_->Stop();
    EndChild();
    throw base::RunTimeError(errToolEnded, how);
}

void ToolHost::EndChild() {
    loaded_.clear();
    child_.reset();
}

}  // namespace platform::qt
