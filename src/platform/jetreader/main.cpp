#include <glib.h>  // first: the next includes it in a place where its templates can't stand
#include <mdbtools.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/jetreader/Tables.h"

// jetreader FILE: writes the tables of a Jet file for the program (Tables.h).

namespace {

using platform::jetreader::ItemKind;

constexpr std::size_t fieldBytes = 65536;  // a longer text is told as a fault
constexpr unsigned maxColumns = 255;       // of a table of this engine
constexpr rlim_t maxSeconds = 5;           // of work

void Write(ItemKind kind, std::string_view text = "") {
    const auto length = static_cast<std::uint32_t>(text.size());
    std::fputc(static_cast<char>(kind), stdout);
    std::fwrite(&length, sizeof length, 1, stdout);
    std::fwrite(text.data(), 1, text.size(), stdout);
}

// A library that has met a damaged file is not asked for anything more.
[[noreturn]] void Fail(const std::string& reason) {
    Write(ItemKind::Fault, reason);
    std::fflush(stdout);
    std::_Exit(1);
}

void LimitWork() {
    const rlimit time{maxSeconds, maxSeconds};
    ::setrlimit(RLIMIT_CPU, &time);
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
#ifdef LIMIT_MEMORY
    const rlimit memory{rlim_t{512} << 20, rlim_t{512} << 20};
    ::setrlimit(RLIMIT_DATA, &memory);
#endif
}

bool IsInteger(int type) { return type == MDB_BYTE || type == MDB_INT || type == MDB_LONGINT; }
bool IsRaw(int type) { return type == MDB_OLE || type == MDB_BINARY; }

// The fields of the row that was fetched last.
class Row {
  public:
    explicit Row(MdbTableDef& table) : fields_(table.num_cols) {
        for (unsigned i = 0; i < table.num_cols; ++i) {
            auto* column = static_cast<MdbColumn*>(g_ptr_array_index(table.columns, i));
            Field& field = fields_[i];
            field.Bytes.resize(fieldBytes);
            field.IsRaw = IsRaw(column->col_type);
            const int number = static_cast<int>(i) + 1;
            if (mdb_bind_column(&table, number, field.Bytes.data(), &field.Length) < 0) {
                Fail("a column can't be read");
            }
            Write(IsInteger(column->col_type) ? ItemKind::NumberColumn : ItemKind::TextColumn, column->name);
        }
    }

    // An empty text is told as null: the library does not tell them apart.
    void WriteFields() const {
        for (const Field& field : fields_) {
            const auto length = static_cast<std::size_t>(field.Length);
            if (length + 1 >= fieldBytes) Fail("a text is too long");
            if (length == 0 || field.IsRaw) {
                Write(ItemKind::Null);
            } else {
                Write(ItemKind::Value, {field.Bytes.data(), length});
            }
        }
    }

  private:
    struct Field {
        std::vector<char> Bytes;
        int Length = 0;
        bool IsRaw = false;
    };
    std::vector<Field> fields_;
};

void WriteTable(MdbCatalogEntry& entry) {
    MdbTableDef* table = mdb_read_table(&entry);
    const std::string name = entry.object_name;
    if (table == nullptr) Fail("the table " + name + " can't be read");
    if (table->num_cols == 0 || table->num_cols > maxColumns || mdb_read_columns(table) == nullptr ||
        table->columns->len != table->num_cols) {
        Fail("the columns of " + name + " can't be read");
    }
    Write(ItemKind::Table, name);
    const Row row(*table);
    mdb_rewind_table(table);
    unsigned rows = 0;
    for (; mdb_fetch_row(table) != 0; ++rows) row.WriteFields();
    // The library passes over pages that it can't read.
    if (rows < table->num_rows) {
        Fail(std::to_string(rows) + " of " + std::to_string(table->num_rows) + " rows of " + name +
             " can be read");
    }
    mdb_free_tabledef(table);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    LimitWork();
    MdbHandle* file = mdb_open(argv[1], MDB_NOFLAGS);
    if (file == nullptr) Fail("its first page can't be read");
    mdb_set_bind_size(file, fieldBytes);
    if (mdb_read_catalog(file, MDB_TABLE) == nullptr) Fail("its list of tables can't be read");
    for (unsigned i = 0; i < file->num_catalog; ++i) {
        auto& entry = *static_cast<MdbCatalogEntry*>(g_ptr_array_index(file->catalog, i));
        if (entry.object_type == MDB_TABLE && mdb_is_user_table(&entry) != 0) WriteTable(entry);
    }
    Write(ItemKind::End);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
