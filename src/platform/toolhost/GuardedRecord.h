#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform::toolhost {

// A copy of a record in memory of its own that shows up writing outside it: right behind lies a page that
// can only be read (as zeros: a text that fills the last field still ends), in front a pattern.
class GuardedRecord {
  public:
    explicit GuardedRecord(std::string_view record);
    ~GuardedRecord();
    GuardedRecord(const GuardedRecord&) = delete;
    GuardedRecord& operator=(const GuardedRecord&) = delete;

    void* Address() const { return record_; }
    std::string_view Bytes() const { return {record_, size_}; }
    bool IsIntact() const;  // the pattern around it is as it was

  private:
    char* region_ = nullptr;
    std::size_t regionSize_ = 0;  // bytes that can be written
    char* record_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace platform::toolhost
