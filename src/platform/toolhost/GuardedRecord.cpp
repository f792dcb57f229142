#include "platform/toolhost/GuardedRecord.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace platform::toolhost {
namespace {

constexpr char pattern = '\xA5';
constexpr std::size_t alignment = 4;  // of a record: its widest field is a 32-bit number

std::size_t PageSize() { return static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)); }
std::size_t RoundUp(std::size_t size, std::size_t unit) { return (size + unit - 1) / unit * unit; }

}  // namespace

GuardedRecord::GuardedRecord(std::string_view record) : size_(record.size()) {
    const std::size_t page = PageSize();
    regionSize_ = RoundUp(size_ + page / 2, page);
    void* memory =
        ::mmap(nullptr, regionSize_ + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::bad_alloc();
    region_ = static_cast<char*>(memory);
    ::mprotect(region_ + regionSize_, page, PROT_READ);
    std::memset(region_, pattern, regionSize_);
    record_ = region_ + regionSize_ - RoundUp(size_, alignment);
    std::memcpy(record_, record.data(), size_);
}

GuardedRecord::~GuardedRecord() { ::munmap(region_, regionSize_ + PageSize()); }

bool GuardedRecord::IsIntact() const {
    const auto isPattern = [](char c) { return c == pattern; };
    return std::all_of(region_, record_, isPattern) &&
           std::all_of(record_ + size_, region_ + regionSize_, isPattern);
}

}  // namespace platform::toolhost
