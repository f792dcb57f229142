#include "platform/qt/SqlDatabase.h"

#include <QSqlError>
#include <QSqlRecord>
#include <QVariant>
#include <charconv>
#include <vector>

#include "base/RunTimeError.h"
#include "base/Text.h"

namespace platform::qt {
namespace {

constexpr int errNoField = 3265;

// The engine's own words; those of the toolkit if it has none.
std::string Words(const QSqlError& error) {
    const QString words = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    return words.toStdString();
}

// All rows at once: they outlive the query, and the file is held no longer than needed.
class Rows : public Recordset {
  public:
    explicit Rows(QSqlQuery& query) {
        const QSqlRecord record = query.record();
        for (int i = 0; i < record.count(); ++i) fields_.push_back(record.fieldName(i).toStdString());
        while (query.next()) {
            for (int i = 0; i < record.count(); ++i) values_.push_back(Value(query.value(i)));
            ++count_;
        }
    }

    bool IsBof() const override { return count_ == 0; }
    bool IsEof() const override { return row_ == count_; }
    void MoveNext() override {
        if (!IsEof()) ++row_;
    }

    std::optional<std::string> Text(std::string_view field) const override { return At(field); }

    std::optional<std::int32_t> Number(std::string_view field) const override {
        const auto& text = At(field);
        if (!text) return std::nullopt;
        std::int32_t number = 0;
        const char* end = text->data() + text->size();
        const auto [stop, error] = std::from_chars(text->data(), end, number);
        return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
    }

  private:
    static std::optional<std::string> Value(const QVariant& value) {
        return value.isNull() ? std::nullopt : std::optional(value.toString().toStdString());
    }

    const std::optional<std::string>& At(std::string_view field) const {
        static constexpr int errNoCurrentRecord = 3021;
        if (IsEof()) throw base::RunTimeError(errNoCurrentRecord, "No current record.");
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            if (base::EqualNoCase(fields_[i], field)) return values_[row_ * fields_.size() + i];
        }
        throw base::RunTimeError(errNoField, "Item not found in this collection.");
    }

    std::vector<std::string> fields_;
    std::vector<std::optional<std::string>> values_;  // row by row
    std::size_t count_ = 0;
    std::size_t row_ = 0;
};

QString NextConnection() {
    static int count = 0;
    return QStringLiteral("database%1").arg(++count);
}

}  // namespace

SqlDatabase::SqlDatabase(const QString& connection) : connection_(connection) {}

SqlDatabase::SqlDatabase() : SqlDatabase(NextConnection()) { Open(":memory:", {}); }

SqlDatabase::SqlDatabase(const std::string& hostPath) : SqlDatabase(NextConnection()) {
    // A file that another program changes is waited for, but not for long: the window waits too.
    Open(QString::fromStdString(hostPath), "QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=200");
    const auto verdict = OpenRecordset("PRAGMA quick_check(1)");
    const std::string words = verdict->IsEof() ? "" : verdict->Text("quick_check").value_or("");
    if (words != "ok") throw base::RunTimeError(errDatabaseFormat, "The database is damaged: " + words);
}

SqlDatabase::~SqlDatabase() {
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(connection_);
}

void SqlDatabase::Open(const QString& name, const QString& options) {
    database_ = QSqlDatabase::addDatabase("QSQLITE", connection_);
    database_.setDatabaseName(name);
    database_.setConnectOptions(options);
    if (!database_.open()) throw base::RunTimeError(errQuery, Words(database_.lastError()));
}

std::unique_ptr<Recordset> SqlDatabase::OpenRecordset(const std::string& text) {
    QSqlQuery query = Prepare(QString::fromStdString(text));
    Execute(query);
    auto rows = std::make_unique<Rows>(query);
    // An error in the middle of the rows ends them.
    if (query.lastError().isValid()) throw base::RunTimeError(errQuery, Words(query.lastError()));
    return rows;
}

void SqlDatabase::Execute(const QString& statement) {
    QSqlQuery query = Prepare(statement);
    Execute(query);
}

QSqlQuery SqlDatabase::Prepare(const QString& statement) {
    QSqlQuery query(database_);
    query.setForwardOnly(true);
    if (!query.prepare(statement)) throw base::RunTimeError(errQuery, Words(query.lastError()));
    return query;
}

void SqlDatabase::Execute(QSqlQuery& prepared) {
    if (!prepared.exec()) throw base::RunTimeError(errQuery, Words(prepared.lastError()));
}

}  // namespace platform::qt
