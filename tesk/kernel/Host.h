#pragma once

#include <cstdint>

#include "front/Report.h"

// The host's one function, defined by the program that loads the kernel.
extern "C" std::int32_t SendMessageA(std::uint32_t handle, std::uint32_t message, std::uintptr_t wparam,
                                     std::intptr_t lparam);

namespace kernel {

// Passes a run's reports on to the windows of its record.
class HostListener : public front::Listener {
  public:
    HostListener(std::uint32_t status, std::uint32_t messages) : status_(status), messages_(messages) {}
    void Status(std::string_view text) override;
    void Info(std::string_view text) override;
    void Line(std::string_view text) override;
    void Error() override;
    void Warning() override;

  private:
    std::uint32_t status_;
    std::uint32_t messages_;
};

}  // namespace kernel
