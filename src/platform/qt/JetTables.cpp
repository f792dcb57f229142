#include "platform/qt/JetTables.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QVariant>

#include "base/RunTimeError.h"
#include "base/ScopeExit.h"
#include "platform/jetreader/Tables.h"

namespace platform::qt {
namespace {

using jetreader::Item;
using jetreader::ItemKind;

constexpr int maxMilliseconds = 10'000;
constexpr qsizetype maxBytes = qsizetype{64} << 20;  // that the reader may send

[[noreturn]] void FailDamaged(const std::string& reason) {
    throw base::RunTimeError(errDatabaseFormat, "The database is damaged: " + reason + ".");
}

QString Name(std::string_view text) {
    const QString name = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return '"' + QString(name).replace('"', "\"\"") + '"';
}

// Everything that the reader writes until it ends.
QByteArray RunReader(const std::string& reader, const std::string& hostPath) {
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QString::fromStdString(reader), {QString::fromStdString(hostPath)}, QIODevice::ReadOnly);
    if (!process.waitForStarted()) {
        throw base::RunTimeError(errDatabaseFormat, "The program " + reader + " could not be started.");
    }
    const base::ScopeExit end([&] {
        process.kill();
        process.waitForFinished();
    });
    const QDeadlineTimer deadline(maxMilliseconds);
    const auto left = [&] { return static_cast<int>(deadline.remainingTime()); };
    QByteArray bytes;
    while (process.waitForReadyRead(left())) {
        bytes += process.readAllStandardOutput();
        if (bytes.size() > maxBytes) FailDamaged("its tables have no end");
    }
    process.waitForFinished(left());
    if (process.state() != QProcess::NotRunning) FailDamaged("reading it takes too long");
    return bytes + process.readAllStandardOutput();
}

// Fills a database from the reader's items.
class Filler {
  public:
    explicit Filler(SqlDatabase& into) : into_(into) {}

    void Take(const Item& item) {
        switch (item.Kind) {
            case ItemKind::Table:
                EndTable();
                table_ = Name(item.Text);
                return;
            case ItemKind::NumberColumn:
                columns_ << Name(item.Text) + " INTEGER";
                return;
            case ItemKind::TextColumn:
                // Texts are sorted as Jet does, without regard to case.
                columns_ << Name(item.Text) + " TEXT COLLATE NOCASE";
                return;
            case ItemKind::Value:
                return TakeField(
                    QString::fromUtf8(item.Text.data(), static_cast<qsizetype>(item.Text.size())));
            case ItemKind::Null:
                return TakeField(QVariant(QMetaType::fromType<QString>()));
            case ItemKind::Fault:
                FailDamaged(std::string(item.Text));
            case ItemKind::End:
                return EndTable();
        }
        FailDamaged("the reader is not of this version");
    }

  private:
    void TakeField(const QVariant& value) {
        if (!insert_) MakeTable();
        insert_->addBindValue(value);
        if (++fields_ < columns_.size()) return;
        SqlDatabase::Execute(*insert_);
        fields_ = 0;
    }

    void MakeTable() {
        into_.Execute("CREATE TABLE " + table_ + " (" + columns_.join(", ") + ")");
        const QStringList marks(columns_.size(), "?");
        insert_ = into_.Prepare("INSERT INTO " + table_ + " VALUES (" + marks.join(", ") + ")");
    }

    // A table without rows is made here.
    void EndTable() {
        if (!table_.isEmpty() && !insert_) MakeTable();
        insert_.reset();
        columns_.clear();
        table_.clear();
    }

    SqlDatabase& into_;
    QString table_;
    QStringList columns_;
    std::optional<QSqlQuery> insert_;
    qsizetype fields_ = 0;
};

}  // namespace

std::unique_ptr<SqlDatabase> ReadJetFile(const std::string& reader, const std::string& hostPath) {
    const QByteArray bytes = RunReader(reader, hostPath);
    auto database = std::make_unique<SqlDatabase>();
    database->Execute("BEGIN");
    Filler filler(*database);
    std::string_view rest(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    Item item{};
    bool isWhole = false;
    while (!isWhole && jetreader::TakeItem(rest, item)) {
        filler.Take(item);
        isWhole = item.Kind == ItemKind::End;
    }
    if (!isWhole) FailDamaged("its reader ended unexpectedly");
    database->Execute("COMMIT");
    return database;
}

}  // namespace platform::qt
