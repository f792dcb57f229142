#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// The rows that a query gave, with a mark on the first one; a query without rows stands at both ends at once.
// A field that the query does not have is error 3265.
class Recordset {
  public:
    virtual ~Recordset() = default;

    virtual bool IsBof() const = 0;  // the beginning-of-file mark: only without rows
    virtual bool IsEof() const = 0;  // behind the last row
    virtual void MoveNext() = 0;

    // Of the marked row; names in any case of letters. Null is nothing.
    virtual std::optional<std::string> Text(std::string_view field) const = 0;
    virtual std::optional<std::int32_t> Number(std::string_view field) const = 0;  // nor what is no number
};

// An open database, read only. It closes with the object.
class Database {
  public:
    virtual ~Database() = default;

    // Throws base::RunTimeError with the engine's words.
    virtual std::unique_ptr<Recordset> OpenRecordset(const std::string& query) = 0;
};

class DatabaseEngine {
  public:
    virtual ~DatabaseEngine() = default;

    // Of a file under its logic path. Throws base::RunTimeError with the engine's words: 3024 no such file,
    // 3343 no database of a kind that it knows or a damaged one; a file that another program holds is an
    // error too.
    virtual std::unique_ptr<Database> OpenDatabase(const std::string& path) = 0;
};

}  // namespace platform
