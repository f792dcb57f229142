#include "zrx/Library.h"

#include <chrono>
#include <new>

#include "kernel/Host.h"
#include "kernel/Paths.h"

namespace zrx {

namespace {

using Clock = std::chrono::steady_clock;

void Send(std::uint32_t handle, const std::string& line) {
    SendMessageA(handle, base::msgAddString, 0, reinterpret_cast<std::intptr_t>(line.c_str()));
}

// True until the time of the options is over, less a tenth for what is on its way. Shows a sign of life.
class Time {
  public:
    Time(std::uint32_t handle, int seconds)
        : handle_(handle), end_(Clock::now() + std::chrono::milliseconds(900) * seconds) {}

    bool GoesOn() {
        const auto now = Clock::now();
        if (now >= next_) {
            next_ = now + std::chrono::seconds(2);
            SendMessageA(handle_, base::msgInfo, reinterpret_cast<std::uintptr_t>("Searching"), 0);
        }
        return now < end_;
    }

  private:
    std::uint32_t handle_;
    Clock::time_point end_;
    Clock::time_point next_ = Clock::now();
};

}  // namespace

std::int32_t Run(const base::ZrxRecord* record, const std::function<std::size_t(const Call&)>& work) {
    if (record == nullptr) return 0;
    try {
        kernel::DiskFiles files;
        const Options options = Options::Parse(base::TextOf(record->szOptions));
        Time time(record->hWndMessages, options.Seconds);
        const Call call{files,
                        base::TextOf(record->szDesign),
                        base::TextOf(record->szDeviceFile),
                        base::TextOf(record->szDirectory),
                        options,
                        [&](const std::string& line) { Send(record->hWndMessages, line); },
                        [&](const std::string& line) { Send(record->hWndSolutions, line); },
                        [&] { return time.GoesOn(); }};
        return static_cast<std::int32_t>(work(call));
    } catch (const std::bad_alloc&) {
        SendMessageA(record->hWndMessages, base::msgAddString, 0,
                     reinterpret_cast<std::intptr_t>("Out of memory"));
    } catch (const std::exception& fault) {
        Send(record->hWndMessages, std::string("Internal fault: ") + fault.what());
    }
    return 0;
}

}  // namespace zrx
