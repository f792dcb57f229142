#include "kernel/StageGuard.h"

#include <exception>
#include <new>
#include <string>

namespace kernel {

namespace {

void Report(front::Report& said, std::string_view where) {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        said.Add(front::Code::DesignTooLarge, {}, "out of memory");
    } catch (const std::exception& fault) {
        said.Add(front::Code::InternalFault, {}, std::string(where) + ", " + fault.what());
    } catch (...) {
        said.Add(front::Code::InternalFault, {}, where);
    }
}

}  // namespace

void ReportFault(front::Report& said, std::string_view where) noexcept {
    try {
        Report(said, where);
    } catch (...) {
        return;  // not even the report has room: the entry's result tells that the run failed
    }
}

void SayStatus(front::Report& said, std::string_view text) noexcept {
    Guarded(said, "status", [&] {
        said.Status(text);
        return true;
    });
}

}  // namespace kernel
