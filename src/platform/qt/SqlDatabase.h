#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <memory>
#include <string>

#include "platform/Database.h"

namespace platform::qt {

constexpr int errNoDatabaseFile = 3024;
constexpr int errDatabaseFormat = 3343;
constexpr int errQuery = 3075;

// A connection to an SQLite file or, without a path, to a new database in memory.
class SqlDatabase : public Database {
  public:
    SqlDatabase();                                      // in memory
    explicit SqlDatabase(const std::string& hostPath);  // read only; checked from end to end
    ~SqlDatabase() override;
    SqlDatabase(const SqlDatabase&) = delete;
    SqlDatabase& operator=(const SqlDatabase&) = delete;

    std::unique_ptr<Recordset> OpenRecordset(const std::string& query) override;

    void Execute(const QString& statement);
    QSqlQuery Prepare(const QString& statement);
    static void Execute(QSqlQuery& prepared);  // throws with the engine's words

  private:
    explicit SqlDatabase(const QString& connection);  // a file that is refused gives its connection back
    void Open(const QString& name, const QString& options);

    QString connection_;
    QSqlDatabase database_;
};

}  // namespace platform::qt
